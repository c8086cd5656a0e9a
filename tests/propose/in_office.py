"""Opens designs in LibreOffice and reads a few cells of their pages."""

import pathlib
import sys

import designs
from designs.sheet import Formula

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))
import libreoffice  # noqa: E402


def check_in_office(problems, seed, count, folder):
    wanted = [number for number in range(100) if designs.design(seed, number).pages][:count]
    with libreoffice.desktop(folder) as office:
        for place, number in enumerate(wanted):
            ending = ("xlsx", "xls")[place % 2]
            for design in designs.designs(seed, 1, ending, first=number):
                document = libreoffice.load(office, design.path)
                problems.check(document is not None, design.path.name, "is not opened by LibreOffice")
                if document is not None:
                    _check(problems, design, document)
                    document.close(True)


def _check(problems, design, document):
    names = list(document.Sheets.ElementNames)
    problems.check(names == [sheet.name for sheet in design.book.sheets], design.path.name, "has", names)
    for page in design.pages.values():
        sheet = document.Sheets.getByName(page.sheet.name)
        for block in page.blocks:
            for row, column in [*block.weekdays, *([block.month] if block.month else [])]:
                value = page.sheet.cells[row, column].value
                shown = sheet.getCellByPosition(column - 1, row - 1).String
                if isinstance(value, str) and not isinstance(value, Formula):
                    problems.check(shown == value, design.path.name, row, column, "shows", shown, "for",
                                   value)
        areas = len(page.sheet.merges)
        problems.check(areas == _merged(sheet, page.sheet), design.path.name, "does not merge as designed")


def _merged(sheet, design):
    return sum(sheet.getCellByPosition(left - 1, top - 1).IsMerged for top, left, _, _ in design.merges)
