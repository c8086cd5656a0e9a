"""Checks that the .xlsx and the .xls of a design say the same, with openpyxl and xlrd."""

import pathlib
import tempfile

import openpyxl
from openpyxl.cell import Cell

import designs
import filled


def compare_formats(problems, seed, count):
    with tempfile.TemporaryDirectory(prefix="two-formats-") as scratch:
        for number in range(count):
            pair = [
                next(designs.designs(seed, 1, ending, scratch, first=number)) for ending in ("xlsx", "xls")
            ]
            new = openpyxl.load_workbook(pair[0].path)
            old = filled.open_xls(pair[1].path, formatting_info=True)
            problems.check(new.sheetnames == old.sheet_names(), pair[0].name, "has other sheets as .xls")
            for sheet in new.worksheets:
                _compare_sheets(problems, f"{pair[0].name} {sheet.title}:", sheet, old,
                                old.sheet_by_name(sheet.title))
            for made in pair:
                pathlib.Path(made.path).unlink()


def _compare_sheets(problems, where, new, book, old):
    merges = sorted(
        (area.min_row, area.min_col, area.max_row, area.max_col) for area in new.merged_cells.ranges)
    problems.check(
        merges == sorted((top + 1, left + 1, bottom, right) for top, bottom, left, right in old.merged_cells),
        where, "other merged cells")
    for letter, dimension in new.column_dimensions.items():
        column = openpyxl.utils.column_index_from_string(letter) - 1
        width = old.colinfo_map[column].width / 256 if column in old.colinfo_map else None
        problems.check(dimension.hidden or width is not None and abs(width - dimension.width) < 0.01,
                       where, "column", letter, "is", dimension.width, "and", width)
    for row in new.iter_rows():
        for cell in row:
            if cell.has_style and isinstance(cell, Cell):  # covered cells lose their styles when read
                _compare_cells(problems, f"{where} {cell.coordinate}", cell, book, old)


def _compare_cells(problems, where, cell, book, old):
    style = book.xf_list[old.cell_xf_index(cell.row - 1, cell.column - 1)]
    font = book.font_list[style.font_index]
    new = cell.font
    problems.check((font.name, font.height / 20, bool(font.bold), bool(font.italic)) ==
                   (new.name, new.size, bool(new.b), bool(new.i)), where, "has another font")
    problems.check(_colored(book, font.colour_index) == new.color.rgb[2:], where, "has another ink")
    filled_new = cell.fill.fgColor.rgb[2:] if cell.fill.fill_type else None
    filled_old = _colored(book,
                          style.background.pattern_colour_index) if style.background.fill_pattern else None
    problems.check(filled_new == filled_old, where, "is filled with", filled_new, "and", filled_old)
    problems.check(book.format_map[style.format_key].format_str == cell.number_format, where,
                   "has another format")
    problems.check(style.alignment.rotation == (cell.alignment.textRotation or 0), where,
                   "is turned otherwise")
    if isinstance(cell.value, str) and not cell.value.startswith("="):
        problems.check(old.cell_value(cell.row - 1, cell.column - 1) == cell.value, where, "has another text")


def _colored(book, index):
    color = book.colour_map.get(index)
    return "000000" if color is None else "%02X%02X%02X" % color
