"""Writes a neutral workbook as .xls: a palette for its colours, what the format lacks left out."""

import io

import xlwt
from xlwt.Style import XFStyle, excel_default_palette_b8

from .sheet import Formula
from .xlsx_file import pixels

LINES = {"thin": 1, "medium": 2, "dashed": 3, "dotted": 4, "thick": 5, "double": 6, "hair": 7}
ACROSS = {None: 0, "left": 1, "center": 2, "right": 3, "centerContinuous": 6}
DOWN = {"top": 0, "center": 1, None: 2, "bottom": 2}
FIRST, LAST = 8, 63  # the indexes of the palette


def write(book, path):
    file = xlwt.Workbook(encoding="utf-8", style_compression=2)
    for font in file._Workbook__styles._font_id2x:
        font.name, font.height = book.font, round(book.size * 20)
    colors = _Palette(file, book)
    styles = {}
    for sheet in book.sheets:
        _write_sheet(file.add_sheet(sheet.name, cell_overwrite_ok=False), sheet, styles, colors)
    file.set_active_sheet(next(n for n, sheet in enumerate(book.sheets) if not sheet.hidden))
    file.save(str(path))


class _Palette:
    """Gives every colour of the workbook an index: that of the usual palette, else a changed one."""

    def __init__(self, file, book):
        self._file = file
        self._index = {}
        usual = {f"{value >> 8:06X}": FIRST + n for n, value in reversed(
            list(enumerate(excel_default_palette_b8)))}
        used = _colors(book)
        for index, color in book.palette or ():
            self._set(index, color)
            usual = {name: at for name, at in usual.items() if at != index}
        taken = set(self._index.values())
        for color in used:
            if color in usual and color not in self._index:
                self._index[color] = usual[color]
                taken.add(usual[color])
        free = iter([index for index in range(LAST, FIRST - 1, -1) if index not in taken])
        for color in used:
            if color not in self._index:
                self._set(next(free), color)

    def _set(self, index, color):
        value = int(color, 16)
        self._file.set_colour_RGB(index, value >> 16, value >> 8 & 255, value & 255)
        self._index[color] = index

    def __getitem__(self, color):
        return self._index[color]


def _colors(book):
    """Every colour of the workbook, in a fixed order."""
    found = set()
    for sheet in book.sheets:
        for style in {cell.style for cell in sheet.cells.values()}:
            found.update({style.color, style.fill} - {None})
            for edge in (style.left, style.right, style.top, style.bottom):
                if edge:
                    found.add(edge[1])
    return sorted(found)


def _write_sheet(target, sheet, styles, colors):
    for (row, column), cell in sorted(sheet.cells.items()):
        if cell.style not in styles:
            styles[cell.style] = _style(cell.style, colors)
        value = cell.value
        if isinstance(value, Formula):
            value = xlwt.Formula(value)
        target.write(row - 1, column - 1, value, styles[cell.style])
    for top, left, bottom, right in sheet.merges:
        target.merged_ranges.append((top - 1, bottom - 1, left - 1, right - 1))
    for column, width in sheet.widths.items():
        target.col(column - 1).width = round(width * 256)
    for column in sheet.hidden_columns:
        target.col(column - 1).hidden = True
    for row, height in sheet.heights.items():
        target.row(row - 1).height_mismatch = True
        target.row(row - 1).height = round(height * 20)
    for row in sheet.hidden_rows:
        target.row(row - 1).hidden = True
    for picture in sheet.pictures:
        data = io.BytesIO()
        pixels(picture).save(data, "BMP")
        target.insert_bitmap_data(data.getvalue(), picture.row - 1, picture.column - 1)
    _set_up(target, sheet)


def _set_up(target, sheet):
    target.show_grid = sheet.gridlines
    target.cols_right_to_left = sheet.right_to_left
    target.normal_magn = sheet.zoom
    if sheet.frozen:
        target.panes_frozen = True
        target.horz_split_pos, target.vert_split_pos = sheet.frozen
    target.visibility = 1 if sheet.hidden else 0
    target.portrait = not sheet.landscape
    target.paper_size_code = 9
    target.fit_num_pages = 1 if sheet.one_page else 0
    # Not through header_str and footer_str, which do not take texts with other letters than ASCII.
    target._Worksheet__header_str = f"&C{sheet.header}" if sheet.header else ""
    target._Worksheet__footer_str = f"&C{sheet.footer}" if sheet.footer else ""


def _style(style, colors):
    made = XFStyle()
    made.num_format_str = style.number
    font = made.font
    font.name, font.height = style.font, round(style.size * 20)
    font.bold, font.italic, font.underline = style.bold, style.italic, int(style.underline)
    font.colour_index = colors[style.color]
    if style.fill:
        made.pattern.pattern = 1
        made.pattern.pattern_fore_colour = colors[style.fill]
    for name in ("left", "right", "top", "bottom"):
        edge = getattr(style, name)
        if edge:
            setattr(made.borders, name, LINES[edge[0]])
            setattr(made.borders, f"{name}_colour", colors[edge[1]])
    place = made.alignment
    place.horz, place.vert = ACROSS[style.across], DOWN[style.down]
    place.wrap, place.shri, place.inde = int(style.wrap), int(style.shrink), style.indent
    place.rota = style.turned if style.turned >= 0 else 90 - style.turned
    return made
