"""What an .xls file says itself: the values that its cells have there, and the full colours of fills."""

import os

import xlrd

import xls_colors
from office_sheets import text_of

_SOLID = 1  # [MS-XLS] 2.5.66 (FillPattern)


def facts_of(path):
    """Of each sheet by its name: types and values of its cells, as an .xlsx file writes them, and the
    full colours of their fills, each by "B6". Nothing of a file that cannot be read so."""
    book = _open(path)
    if book is None:
        return {}
    fills = _fills_of_formats(path, book)
    return {sheet.name: (dict(_results(sheet)), dict(_fills(sheet, fills))) for sheet in book.sheets()}


def _open(path):
    with open(os.devnull, "w", encoding="utf-8") as log:
        for formats in (True, False):
            try:
                return xlrd.open_workbook(str(path), logfile=log, formatting_info=formats)
            except Exception:  # the corpus has damaged files, and xlrd many ways to say so
                pass
    return None


def _fills_of_formats(path, book):
    """By numbers of XF; of a pattern two colours are mixed, which is not told."""
    return {number: fill for number, fill in xls_colors.full_fills(path).items()
            if number < len(book.xf_list)
            and (fill.is_gradient or book.xf_list[number].background.fill_pattern == _SOLID)}


def _fills(sheet, fills):
    for row in range(sheet.nrows if fills else 0):
        for column in range(sheet.row_len(row)):
            fill = fills.get(sheet.cell_xf_index(row, column))
            if fill:
                yield text_of(column, row), fill


def _results(sheet):
    for row in range(sheet.nrows):
        for column, cell in enumerate(sheet.row(row)):
            address = text_of(column, row)
            if cell.ctype in (xlrd.XL_CELL_NUMBER, xlrd.XL_CELL_DATE):
                yield address, ("n", f"{cell.value:.15g}")
            elif cell.ctype == xlrd.XL_CELL_BOOLEAN:
                yield address, ("b", str(cell.value))
            elif cell.ctype == xlrd.XL_CELL_ERROR:
                yield address, ("e", xlrd.error_text_from_code.get(cell.value, ""))
            elif cell.ctype == xlrd.XL_CELL_TEXT:
                yield address, ("str", cell.value)
