"""The comparison of an .xlsx with an .xls finds each thing that one of them has otherwise."""

import os
import tempfile
import unittest

import openpyxl
from openpyxl.formatting.rule import CellIsRule
from openpyxl.styles import Alignment, Border, Font, PatternFill, Protection, Side
from openpyxl.worksheet.datavalidation import DataValidation

from check_two_formats import office_failures

RED = PatternFill("solid", fgColor="FFB4472F")


def style(**parts):
    return lambda sheet: [setattr(sheet["B2"], name, part) for name, part in parts.items()]


CHANGES = (
    style(value=6), style(value="5"), style(value="=5"), style(number_format="0.0"),
    style(font=Font(bold=True)), style(fill=RED), style(border=Border(bottom=Side("thin"))),
    style(alignment=Alignment(indent=1)), style(protection=Protection(locked=False)),
    lambda sheet: sheet.merge_cells("D5:E5"),
    lambda sheet: setattr(sheet.column_dimensions["B"], "width", 20),
    lambda sheet: setattr(sheet.row_dimensions[2], "height", 30),
    lambda sheet: sheet.conditional_formatting.add("A1:A9", CellIsRule("equal", ["1"], fill=RED)),
    lambda sheet: sheet.add_data_validation(DataValidation("whole", sqref="C3")),
    lambda sheet: setattr(sheet, "freeze_panes", "B2"),
    lambda sheet: setattr(sheet, "print_area", "A1:C3"),
    lambda sheet: setattr(sheet.page_setup, "orientation", "landscape"),
    lambda sheet: setattr(sheet.oddFooter.center, "text", "&P"),
    lambda sheet: setattr(sheet, "title", "Another"),
    lambda sheet: sheet.parent.move_sheet(sheet, 1),
)


def save(path, change=None):
    book = openpyxl.Workbook()
    book.active["B2"] = 5
    book.create_sheet("Second")
    for sheet in book.worksheets:
        sheet.sheet_properties.tabColor = "FF0000"
        sheet.sheet_properties.pageSetUpPr = openpyxl.worksheet.properties.PageSetupProperties()
    if change:
        change(book.active)
    book.save(path)


class FormatsTest(unittest.TestCase):
    def test_every_change_is_found(self):
        with tempfile.TemporaryDirectory() as folder:
            one, other = os.path.join(folder, "one.xlsx"), os.path.join(folder, "other.xlsx")
            save(one)
            for number, change in enumerate((None, *CHANGES)):
                save(other, change)
                found = list(office_failures(one, other))
                self.assertEqual(bool(found), bool(change), (number, found))


if __name__ == "__main__":
    unittest.main()
