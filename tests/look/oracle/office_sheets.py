"""What LibreOffice knows of a sheet: places, sizes and texts of cells, and a picture of it."""

import contextlib
import pathlib
import re

import uno
from com.sun.star.awt import Size
from com.sun.star.beans import PropertyValue
from com.sun.star.table import CellRangeAddress
from com.sun.star.uno import RuntimeException

PIXELS = 96 / 2540           # of a hundredth of a millimetre
LARGEST_PAGE = 100_000       # hundredths of a millimetre that a page of LibreOffice may have
TWIP = 2540 / 1440           # in hundredths of a millimetre
CELL_MARGIN = 35             # hundredths of a millimetre between the edge of a cell and its text
_FORMATS = 23                # com.sun.star.sheet.CellFlags: VALUE, DATETIME, STRING, FORMULA
_ADDRESS = re.compile(r"([A-Z]+)([0-9]+)$")


def address_of(text):
    """Column and row from 0 of "B6"."""
    letters, digits = _ADDRESS.match(text).groups()
    column = 0
    for letter in letters:
        column = column * 26 + ord(letter) - 64
    return column - 1, int(digits) - 1


def text_of(column, row):
    letters = ""
    column += 1
    while column:
        column, rest = divmod(column - 1, 26)
        letters = chr(65 + rest) + letters
    return f"{letters}{row + 1}"


def visible_sheets(document):
    return [sheet for sheet in document.Sheets if sheet.IsVisible]


def measure(sheet, column, row, merges=True):
    """Box in pixels and displayed text of a cell, or of the merged cells that begin there if `merges`."""
    cell = sheet.getCellByPosition(column, row)
    area = cell
    if cell.IsMerged and merges:
        area = sheet.createCursorByRange(cell)
        area.collapseToMergedArea()
    position, size = area.Position, area.Size
    return ([position.X * PIXELS, position.Y * PIXELS, size.Width * PIXELS, size.Height * PIXELS],
            cell.String)


def filled_cells(sheet, limit):
    """Addresses of cells that have a content, at most `limit` of them."""
    found = []
    for area in sheet.queryContentCells(_FORMATS).RangeAddresses:
        for row in range(area.StartRow, area.EndRow + 1):
            for column in range(area.StartColumn, area.EndColumn + 1):
                found.append((column, row))
                if len(found) == limit:
                    return found
    return found


def save_page(document, sheet, last, path):
    """Saves the cells from A1 to `last` (column and row from 0) of a sheet as one PDF page in the
    coordinates of the sheet. Returns False if the page would be too large."""
    area = sheet.getCellRangeByPosition(0, 0, *last)
    width, height = area.Size.Width, area.Size.Height
    if not 0 < width < LARGEST_PAGE or not 0 < height < LARGEST_PAGE:
        return False
    style = document.StyleFamilies.getByName("PageStyles").getByName(sheet.PageStyle)
    for name in ("Left", "Right", "Top", "Bottom"):
        setattr(style, name + "Margin", 0)
        setattr(style, name + "BorderDistance", 0)
    for name in ("HeaderIsOn", "FooterIsOn", "PrintGrid", "PrintHeaders", "CenterHorizontally",
                 "CenterVertically"):
        setattr(style, name, False)
    style.IsLandscape = False
    style.Size = Size(width + 20, height + 20)
    style.PageScale = 100
    for index, other in enumerate(document.Sheets):
        address = CellRangeAddress(index, 0, 0, *last)
        other.setPrintAreas((address,) if other.Name == sheet.Name else ())
    sheet.removeAllManualPageBreaks()
    sheet.setPrintTitleColumns(False)
    sheet.setPrintTitleRows(False)
    show_as_measured(area)
    document.storeToURL(
        pathlib.Path(path).resolve().as_uri(),
        (PropertyValue("FilterName", 0, "calc_pdf_Export", 0),
         PropertyValue("FilterData", 0, uno.Any("[]com.sun.star.beans.PropertyValue", (
             PropertyValue("Selection", 0, area, 0),
             PropertyValue("ExportBookmarks", 0, False, 0))), 0)))
    return True


def show_as_measured(area):
    """Takes two habits of LibreOffice's from cells that will be printed: the margins of those of .xls
    files, and sizes without their parts of hundredths of a millimetre."""
    widths, heights = _sizes(area.Columns, "Width"), _sizes(area.Rows, "Height")
    _use_one_margin(area)
    _set_printed_sizes(area.Columns, "Width", widths)
    _set_printed_sizes(area.Rows, "Height", heights)


def _use_one_margin(area):
    """Gives cells the margin that those of an .xlsx file have.

    The filter for .xls sets twice as much on all four sides. Neither format stores a margin, and
    Excel draws one design alike from both. A sheet that is protected by a password keeps its own."""
    if area.Spreadsheet.isProtected():
        with contextlib.suppress(RuntimeException):
            area.Spreadsheet.unprotect("")
    for side in ("Left", "Right", "Top", "Bottom"):
        area.setPropertyValue(f"Para{side}Margin", CELL_MARGIN)


def _sizes(lines, name):
    """Widths of columns or heights of rows, in twips, 0 for hidden ones."""
    lines = [lines.getByIndex(index) for index in range(lines.Count)]
    return [round(line.getPropertyValue(name) / TWIP) if line.IsVisible else 0 for line in lines]


def _set_printed_sizes(lines, name, sizes):
    """Sets widths of columns or heights of rows so that they are printed where they are measured.

    LibreOffice prints each with whole hundredths of a millimetre and drops the rest. Over 200 rows
    that is 7 pixels, although it tells their positions exactly. So what was dropped is added to the
    next. Rows that fit their texts get the heights again that they had before."""
    rest = 0.0
    for index, size in enumerate(sizes):
        if not size:
            continue
        wanted = size * TWIP + rest
        twips = min((size, size + 1), key=lambda each: abs(int(each * TWIP) - wanted))
        rest = wanted - int(twips * TWIP)
        line, value = lines.getByIndex(index), round(twips * TWIP)
        if line.getPropertyValue(name) != value:
            line.setPropertyValue(name, value)
