"""Makes the large workbooks that look.py opens.

usage: look_sheets.py FOLDER
"""
import pathlib
import random
import sys

import xlsxwriter
import xlwt

COLUMNS = 20
CELLS = (1_000, 10_000, 100_000)
MOST_XLS_ROWS = 65_536
LARGE_MEBIBYTES = 50


def text(number):
    return f"Cell {number}"


def content(row, column):
    """A text, a whole number, an amount, or a date, as lists that people keep have them."""
    number = row * COLUMNS + column
    return (text(number), number, number / 7, 46_000 + number % 400)[column % 4]


def make_xlsx(path, cells, columns=COLUMNS):
    book = xlsxwriter.Workbook(path, {"constant_memory": True})
    sheet = book.add_worksheet("List")
    formats = [book.add_format(one) for one in
               ({"bold": True}, {"border": 1}, {"num_format": "#,##0.00"},
                {"num_format": "d mmm yyyy", "bg_color": "#DDEEFF"})]
    for row in range(cells // columns):
        for column in range(columns):
            sheet.write(row, column, content(row, column), formats[column % 4])
    book.close()


def make_xls(path, cells, columns=COLUMNS):
    book = xlwt.Workbook()
    sheet = book.add_sheet("List")
    styles = [xlwt.easyxf(*one) for one in
              (("font: bold on",), ("borders: left thin, right thin, top thin, bottom thin",),
               ("", "#,##0.00"), ("pattern: pattern solid, fore_colour ice_blue", "d mmm yyyy"))]
    rows = cells // columns
    assert rows <= MOST_XLS_ROWS
    for row in range(rows):
        for column in range(columns):
            sheet.write(row, column, content(row, column), styles[column % 4])
        if row % 1000 == 0:
            sheet.flush_row_data()
    book.save(str(path))


def make_large(path):
    """A workbook of that many MiB on the disk: numbers without a pattern do not shrink."""
    chance = random.Random(1)
    book = xlsxwriter.Workbook(path, {"constant_memory": True})
    for number in range(1, 6):
        sheet = book.add_worksheet(f"List {number}")
        for row in range(LARGE_ROWS):
            for column in range(COLUMNS):
                sheet.write_number(row, column, chance.random())
    book.close()


# Five sheets of 20 columns; a number takes 12.72 bytes of the compressed sheet.
LARGE_ROWS = LARGE_MEBIBYTES * 2**20 // 1272


def make_all(folder):
    folder.mkdir(parents=True, exist_ok=True)
    for cells in CELLS:
        make_once(folder / f"{cells}.xlsx", lambda path: make_xlsx(path, cells))
        make_once(folder / f"{cells}.xls", lambda path: make_xls(path, cells))
    make_once(folder / "tall.xls", lambda path: make_xls(path, MOST_XLS_ROWS * 2, 2))
    make_once(folder / "large.xlsx", make_large)


def make_once(path, make):
    """The large workbook takes a minute."""
    if not path.exists():
        unfinished = path.with_suffix(".part" + path.suffix)
        make(unfinished)
        unfinished.rename(path)


if __name__ == "__main__":
    make_all(pathlib.Path(sys.argv[1]))
