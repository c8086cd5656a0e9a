"""What an .xls file says itself: the values that its cells have there."""

import os

import xlrd

from office_sheets import text_of


def results_of(path):
    """Of each sheet by its name: types and values of its cells, as an .xlsx file writes them, by "B6".
    Nothing of a file that cannot be read so."""
    with open(os.devnull, "w", encoding="utf-8") as log:
        try:
            book = xlrd.open_workbook(str(path), logfile=log)
        except Exception:  # the corpus has damaged files, and xlrd many ways to say so
            return {}
    return {sheet.name: dict(_results(sheet)) for sheet in book.sheets()}


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
