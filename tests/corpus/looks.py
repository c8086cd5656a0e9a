"""What a workbook's cells hold and how they look, in one form for .xlsx and .xls.

openpyxl reads the .xlsx, xlrd the .xls: neither knows the other's format, nor this program.
"""

from dataclasses import dataclass

import openpyxl
import xlrd
from openpyxl.styles.numbers import BUILTIN_FORMATS
from openpyxl.utils import get_column_letter

from cells import SheetCells
from opc import Package

THEME_TEXT = 1  # the only theme colour that the templates use: the text of unformatted cells
HORIZONTAL = (None, "left", "center", "right", "fill", "justify", "centerContinuous",
              "distributed")
VERTICAL = ("top", "center", "bottom", "justify", "distributed")
LINES = (None, "thin", "medium", "dashed", "dotted", "thick", "double", "hair")
SIDES = ("left", "right", "top", "bottom")
SYSTEM_COLORS = {64: "000000", 0x7FFF: "000000"}


@dataclass
class Look:
    """The format of a cell. Sizes in points, colours as six hexadecimal digits or None."""

    number_format: str
    font: tuple
    fill: str
    borders: tuple
    alignment: tuple
    is_locked: bool


@dataclass
class SheetLook:
    name: str
    values: dict   # of the cells that are not empty, by (row, column) from 1
    looks: dict    # of the cells that the file has
    default: Look
    merges: set
    widths: dict   # of columns, in characters of the default font
    heights: dict  # of rows, in points

    def look(self, place):
        return self.looks.get(place, self.default)


def read(path):
    return _read_xls(path) if path.endswith(".xls") else _read_xlsx(path)


# ------------------------------------------------------------- .xlsx

def _read_xlsx(path):
    book = openpyxl.load_workbook(path)
    package = Package(path)
    roots = {sheet.name: package.tree(sheet.part) for sheet in package.sheets}
    return [_xlsx_sheet(book, sheet, SheetCells(roots[sheet.title])) for sheet in book.worksheets]


def _xlsx_sheet(book, sheet, cells):
    """Formats come by the file's own numbers: openpyxl drops those of cells under a merge."""
    known = {number: _xlsx_look(book, book._cell_styles[number])
             for number in cells.used_styles | {0}}
    values = {(cell.row, cell.column): _plain(cell.value) for row in sheet.iter_rows()
              for cell in row if cell.value is not None and cell.data_type != "f"}
    widths = {}
    for dimension in sheet.column_dimensions.values():
        for column in range(dimension.min, dimension.max + 1):
            widths[column] = dimension.width
    return SheetLook(sheet.title, values,
                     {place: known[cell.style] for place, cell in cells.cells.items()}, known[0],
                     {str(area) for area in sheet.merged_cells.ranges}, widths,
                     {number: row.height for number, row in sheet.row_dimensions.items()
                      if row.height})


def _xlsx_look(book, style):
    font, fill, align, border, lock = (
        book._fonts[style.fontId], book._fills[style.fillId],
        book._alignments[style.alignmentId], book._borders[style.borderId],
        book._protections[style.protectionId])
    number_format = book._number_formats[style.numFmtId - 164] if style.numFmtId >= 164 \
        else BUILTIN_FORMATS[style.numFmtId]
    return Look(number_format,
                (font.name, float(font.sz), bool(font.b), bool(font.i), bool(font.strike),
                 _xlsx_color(font.color)),
                _xlsx_color(fill.fgColor) if fill.patternType == "solid" else None,
                tuple(_xlsx_line(getattr(border, side)) for side in SIDES),
                (None if align.horizontal == "general" else align.horizontal,
                 align.vertical or "bottom", bool(align.wrap_text), bool(align.shrink_to_fit),
                 int(align.indent or 0)),
                bool(lock.locked))


def _xlsx_line(side):
    return (side.style, _xlsx_color(side.color)) if side is not None and side.style else None


def _xlsx_color(color):
    if color is None or (color.type == "theme" and color.theme == THEME_TEXT):
        return "000000"
    return color.rgb[-6:] if color.type == "rgb" else f"{color.type} {color.value}"


# -------------------------------------------------------------- .xls

def _read_xls(path):
    with open("/dev/null", "w", encoding="utf-8") as silence:
        book = xlrd.open_workbook(path, formatting_info=True, logfile=silence)
    return [_xls_sheet(book, sheet) for sheet in book.sheets()]


def _xls_sheet(book, sheet):
    values, looks = {}, {}
    known = {}
    for row in range(sheet.nrows):
        for column in range(sheet.ncols):
            index = sheet.cell_xf_index(row, column)
            if index not in known:
                known[index] = _xls_look(book, book.xf_list[index])
            looks[row + 1, column + 1] = known[index]
            cell = sheet.cell(row, column)
            if cell.ctype not in (xlrd.XL_CELL_EMPTY, xlrd.XL_CELL_BLANK):
                values[row + 1, column + 1] = _plain(cell.value)
    widths = {column + 1: info.width / 256 for column, info in sheet.colinfo_map.items()}
    heights = {row + 1: info.height / 20 for row, info in sheet.rowinfo_map.items()}
    merges = {f"{get_column_letter(left + 1)}{top + 1}:{get_column_letter(right)}{bottom}"
              for top, bottom, left, right in sheet.merged_cells}
    default = _xls_look(book, book.xf_list[15])
    return SheetLook(sheet.name, values, looks, default, merges, widths, heights)


def _xls_look(book, xf):
    font, align = book.font_list[xf.font_index], xf.alignment
    fill = xf.background
    lines = tuple(_xls_line(book, xf.border, side) for side in SIDES)
    return Look(book.format_map[xf.format_key].format_str,
                (font.name, font.height / 20, font.weight > 500, bool(font.italic),
                 bool(font.struck_out), _xls_color(book, font.colour_index)),
                _xls_color(book, fill.pattern_colour_index) if fill.fill_pattern == 1 else None,
                lines,
                (HORIZONTAL[align.hor_align], VERTICAL[align.vert_align],
                 bool(align.text_wrapped), bool(align.shrink_to_fit), align.indent_level),
                bool(xf.protection.cell_locked))


def _xls_line(book, border, side):
    style = LINES[getattr(border, f"{side}_line_style")]
    return style and (style, _xls_color(book, getattr(border, f"{side}_colour_index")))


def _xls_color(book, index):
    rgb = book.colour_map.get(index)
    return SYSTEM_COLORS.get(index) if rgb is None else "".join(f"{part:02X}" for part in rgb)


def _plain(value):
    """A value as both readers agree on it: numbers as float."""
    return value if isinstance(value, str) else float(value)
