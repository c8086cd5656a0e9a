"""Macros of copied sheets as LibreOffice sees them."""

import pathlib
import sys
import tempfile
import unittest

from calendars import CODE_NAMES, MONTHS, MacrosProgram
from make_macros import MODULES

sys.path.append(str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))
import libreoffice  # noqa: E402


def seen_by_office(path):
    """The code names of the sheets, and the lines of each module, by name."""
    with tempfile.TemporaryDirectory() as folder, libreoffice.desktop(folder) as office:
        document = libreoffice.load(office, path)
        sheets = {sheet.Name: sheet.CodeName for sheet in document.Sheets}
        libraries = document.BasicLibraries
        libraries.loadLibrary("VBAProject")
        library = libraries.getByName("VBAProject")
        modules = {name: library.getByName(name).splitlines() for name in library.ElementNames}
        document.close(True)
    return sheets, modules


def has(lines, part):
    return any(lines[at:at + len(part)] == part for at in range(len(lines)))


class Office(MacrosProgram):
    def test_every_month_of_an_xls_calendar_has_the_code(self):
        self.judge()

    def test_every_month_of_an_xlsx_calendar_has_the_code(self):
        self.template = self.home / "macros.xlsx"
        self.judge()

    def judge(self):
        _, path = self.make()
        sheets, modules = seen_by_office(path)
        self.assertEqual({name: sheets[name] for name in MONTHS}, dict(zip(MONTHS, CODE_NAMES)))
        self.assertEqual(set(modules), {*CODE_NAMES, "ThisWorkbook", "Sheet2", "Module1"})
        code = {module.name: module.code.splitlines() for module in MODULES}
        for name in CODE_NAMES:
            self.assertTrue(has(modules[name], code["Sheet1"]), name)
        for name in ("ThisWorkbook", "Module1"):
            self.assertTrue(has(modules[name], code[name]), name)


if __name__ == "__main__":
    unittest.main()
