"""LibreOffice's values of formulas: a path on each line of standard input, and on standard output a
line of JSON for each, [[sheet from 0, row from 1, column from 1, formula, value], ...], or null where
LibreOffice does not open it. A value is a number, a text, or {"error": number}. The first argument is
a folder for the profile."""

import json
import os
import pathlib
import sys

sys.path.append(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "..", "scripts"))
import libreoffice  # noqa: E402
import uno  # noqa: E402,F401  which makes the next imports possible
from com.sun.star.lang import DisposedException  # noqa: E402
from com.sun.star.uno import Exception as OfficeError  # noqa: E402

_FORMULAS = 16  # com.sun.star.sheet.CellFlags.FORMULA


def values(office, path):
    try:
        document = libreoffice.load(office, pathlib.Path(path))
    except DisposedException:  # it crashed
        sys.exit(1)
    except OfficeError:
        return None
    if document is None:
        return None
    try:
        document.calculateAll()
        return [cell for index in range(document.Sheets.Count)
                for cell in _of_sheet(document.Sheets.getByIndex(index), index)]
    except AttributeError:  # a text, or whatever else it took the file for
        return None
    finally:
        document.close(True)


def _of_sheet(sheet, index):
    for area in sheet.queryContentCells(_FORMULAS).RangeAddresses:
        cells = sheet.getCellRangeByPosition(area.StartColumn, area.StartRow, area.EndColumn,
                                             area.EndRow)
        for row, line in enumerate(zip(cells.FormulaArray, cells.DataArray)):
            for column, (formula, value) in enumerate(zip(*line)):
                error = cells.getCellByPosition(column, row).getError()
                yield (index, area.StartRow + row + 1, area.StartColumn + column + 1, formula,
                       {"error": error} if error else value)


def main():
    with libreoffice.desktop(sys.argv[1]) as office:
        print("ready", flush=True)
        for line in sys.stdin:
            print(json.dumps(values(office, line.rstrip("\n"))), flush=True)


if __name__ == "__main__":
    main()
