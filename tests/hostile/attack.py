#!/usr/bin/env python3
"""Runs the program over a folder of hostile workbooks and judges what it does.

usage: attack.py --cli PROGRAM --attack FOLDER [--sanitized] [--keep DIR] [--jobs N]

Each workbook's first worksheet is the monthly model. Exit code 0: no failure; 1: failures; 77:
there is no such folder, and the project's own damaged workbooks passed.
"""

import os
import re
import shutil
import sys
import tempfile
import time
import zipfile
from dataclasses import dataclass, field

import parameters
import runner
from corpus_modules import biff
from judge import Program
from mutate import SKIPPED, corpus_is_absent, own_workbooks, read_options
from xls_writer import XlsBook

_SHEET = re.compile(rb"<(?:\w+:)?sheet\s[^>]*?name\s*=\s*[\"']([^\"'<>]*)[\"']")


@dataclass
class Attack:
    """A workbook as it is."""

    file_name: str
    data: bytes
    parameters: str
    mutations: list = field(default_factory=list)

    def told(self):
        return self.file_name


def first_sheet(path):
    """The name of the first sheet that some reader finds; in damaged files, of the first entry."""
    for read in (_by_reader, _by_entry):
        try:
            return read(path)
        except Exception:  # the next one may find it
            continue
    return "Sheet1"


def _by_reader(path):
    return parameters.sheet_names(path)[0]


def _by_entry(path):
    if parameters.suffix_of(path) == ".xls":
        data = XlsBook(path).of_kind(biff.BOUNDSHEET)[0].data
        return biff.unicode_text(data, 8, data[6], data[7] & 1)[0]
    with zipfile.ZipFile(path) as container:
        name = next(name for name in container.namelist() if name.lower().endswith("workbook.xml"))
        return _SHEET.search(container.read(name))[1].decode()


def make(path):
    with open(path, "rb") as file:
        data = file.read()
    return Attack(os.path.basename(path), data, parameters.text(first_sheet(path),
                                                                parameters.PLAIN))


def workbooks(folder):
    return sorted(os.path.join(folder, name) for name in os.listdir(folder)
                  if name.endswith((".xlsx", ".xls")))


def damaged_copies(folder):
    """The project's own workbooks, each cut in half and each with a byte changed in its middle."""
    made = []
    for path in own_workbooks():
        with open(path, "rb") as file:
            data = file.read()
        middle = len(data) // 2
        for number, damaged in enumerate((data[:middle], data[:middle] + b"\xff"
                                          + data[middle + 1:])):
            made.append(os.path.join(folder, f"{number}-{os.path.basename(path)}"))
            with open(made[-1], "wb") as file:
                file.write(damaged)
    return made


def main():
    parser = read_options(__doc__.splitlines()[0])
    parser.add_argument("--attack", required=True)
    options = parser.parse_args()
    absent = not os.path.isdir(options.attack)
    if absent and corpus_is_absent(options.attack, "HOSTILE WORKBOOKS"):
        return 1
    begin = time.monotonic()
    work = tempfile.mkdtemp(prefix="orrery-hostile-")
    try:
        paths = damaged_copies(work) if absent else workbooks(options.attack)
        if options.sanitized:  # time is judged as shipped
            paths = [path for path in paths if not os.path.basename(path).startswith("time-")]
        outcomes = runner.judge_all(
            Program([os.path.abspath(options.cli)], options.sanitized), make, paths, work,
            options.keep or os.path.join(work, "kept"), options.jobs)
    finally:
        shutil.rmtree(work, ignore_errors=True)
    runner.print_table(outcomes)
    runner.print_failures(outcomes)
    print(f"{len(runner.failing(outcomes))} of {len(outcomes)} workbooks fail, "
          f"{time.monotonic() - begin:.0f} s")
    if runner.failing(outcomes) or not outcomes:
        return 1
    return SKIPPED if absent else 0


if __name__ == "__main__":
    sys.exit(main())
