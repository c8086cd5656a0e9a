"""Calendars from the template with macros, made by the command-line program."""

import calendar
import os
import pathlib
import shutil
import sys

_TESTS = pathlib.Path(__file__).resolve().parents[1]
sys.path += [str(_TESTS / folder) for folder in ("cli", "corpus", "hostile")]
from program import Program  # noqa: E402

DATA = pathlib.Path(__file__).resolve().parent / "data"
MONTHS = list(calendar.month_name)[1:]
# Of the sheets of the twelve months: the first is the template's, which has Sheet1 and Sheet2.
CODE_NAMES = ["Sheet1", *[f"Sheet{number}" for number in range(3, 14)]]


class MacrosProgram(Program):
    def setUp(self):
        super().setUp()
        for name in ("macros.xls", "macros.xlsx", "macros.ini"):
            shutil.copy(DATA / name, self.home)
        self.template = self.home / "macros.xls"

    def make(self, *arguments):
        """Makes the calendar of 2027. Returns what the program printed, and the calendar."""
        result = self.generate(self.template, "2027", "--engine", "builtin", *arguments)
        self.assertEqual(result.returncode, 0, result.stderr)
        return result, self.output / f"2027{self.template.name}"


def write(path, data):
    with open(path, "wb") as file:
        file.write(data)
    os.utime(path)
