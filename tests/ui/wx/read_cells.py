"""Prints the values of cells in a workbook, one per line: read_cells.py FILE SHEET CELL...

Reads .xlsx with openpyxl and .xls with xlrd, which are independent of the program.
"""
import sys

import openpyxl
from openpyxl.utils.cell import coordinate_from_string, column_index_from_string
import xlrd


def reader(file, sheet):
    if file.endswith(".xlsx"):
        cells = openpyxl.load_workbook(file)[sheet]
        return lambda cell: cells[cell].value
    cells = xlrd.open_workbook(file).sheet_by_name(sheet)

    def value(cell):
        column, row = coordinate_from_string(cell)
        return cells.cell_value(row - 1, column_index_from_string(column) - 1)
    return value


def main():
    file, sheet, *names = sys.argv[1:]
    value = reader(file, sheet)
    for name in names:
        found = value(name)
        whole = isinstance(found, float) and found.is_integer()
        print(int(found) if whole else "" if found is None else found)


main()
