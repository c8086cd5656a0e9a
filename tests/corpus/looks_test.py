"""Tests of the comparison of an .xlsx with an .xls: the same design agrees, each change is found."""

import os
import tempfile
import unittest

import xlsxwriter
import xlwt

import looks
from check_two_formats import file_failures

RED = (0xB4, 0x47, 0x2F)
STYLE = ("font: name Calibri, height {height}, bold {bold}, colour {color}; align: horiz left, "
         "vert top, indent 1; borders: bottom {line}, bottom_colour red; "
         "pattern: pattern solid, fore_colour red")


def write_xlsx(path):
    with xlsxwriter.Workbook(path) as book:
        sheet = book.add_worksheet("Page")
        style = book.add_format({
            "font_name": "Calibri", "font_size": 12, "bold": True, "font_color": "#B4472F",
            "align": "left", "valign": "top", "indent": 1, "bottom": 2,
            "bottom_color": "#B4472F", "bg_color": "#B4472F", "num_format": "0.0"})
        sheet.write(1, 1, 5, style)
        sheet.write(2, 2, "text", style)
        sheet.merge_range("D5:E5", "wide", style)
        sheet.set_row(1, 30)
        sheet.set_column(1, 1, 20 - 0.7109375)  # the width that is written is 20


def write_xls(path, value=5, merged=5, height=30, width=20, number_format="0.0", **style):
    book = xlwt.Workbook(style_compression=2)
    book.set_colour_RGB(10, *RED)
    normal = xlwt.easyxf("font: name Calibri, height 220")
    sheet = book.add_sheet("Page")
    look = xlwt.easyxf(STYLE.format(**{"height": 240, "bold": "on", "color": "red",
                                       "line": "medium", **style}), number_format)
    for row in range(5):
        for column in range(5):
            sheet.write(row, column, None, normal)
    sheet._cell_overwrite_ok = True
    sheet.write(1, 1, value, look)
    sheet.write(2, 2, "text", look)
    sheet.write_merge(4, 4, 3, merged - 1, "wide", look)
    sheet.row(1).height_mismatch, sheet.row(1).height = True, height * 20
    sheet.col(1).width = width * 256
    book.save(path)


class LooksTest(unittest.TestCase):
    def failures(self, **changes):
        with tempfile.TemporaryDirectory() as name:
            new, old = os.path.join(name, "a.xlsx"), os.path.join(name, "a.xls")
            write_xlsx(new)
            write_xls(old, **changes)
            one, other = looks.read(new), looks.read(old)
        return list(file_failures(one, other))

    def test_one_design_in_two_formats_agrees(self):
        self.assertEqual(self.failures(), [])

    def test_every_change_is_found(self):
        for changes in ({"value": 6}, {"merged": 4}, {"height": 31}, {"width": 21},
                        {"number_format": "0"}, {"height": 15}, {"bold": "off"},
                        {"color": "blue"}, {"line": "thin"}):
            self.assertNotEqual(self.failures(**changes), [], changes)


if __name__ == "__main__":
    unittest.main()
