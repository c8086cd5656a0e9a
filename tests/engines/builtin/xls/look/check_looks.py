#!/usr/bin/env python3
"""Compares what the program reads of the looks of .xls workbooks with what xlrd reads.

    check_looks.py --dump PROGRAM --corpus FOLDER [FILE...]

Every cell's value, font, fill, border, alignment and number format, and the sizes of columns and
rows, merges, breaks and rich texts of every sheet are compared. Colours of newer records, which
xlrd does not know, are computed here. Ends with 1 if anything differs.
"""

import argparse
import colorsys
import io
import json
import pathlib
import re
import struct
import subprocess
import sys
import zipfile

import xlrd

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[4] / "places"))
from corpus_status import without_corpus  # noqa: E402

OFFICE = ["ffffff", "000000", "eeece1", "1f497d", "4f81bd", "c0504d", "9bbb59", "8064a2", "4bacc6",
          "f79646", "0000ff", "800080"]
THEME_NAMES = ["lt1", "dk1", "lt2", "dk2", "accent1", "accent2", "accent3", "accent4", "accent5",
               "accent6", "hlink", "folHlink"]
UNDERLINES = {0: 0, 1: 1, 2: 2, 0x21: 3, 0x22: 4}
# Codes that depend on the language, which xlrd has as in some other one: the files hold only their numbers.
BUILT_IN_IDS = set(range(0, 60))


def records(stream):
    at = 0
    while at + 4 <= len(stream):
        kind, size = struct.unpack_from("<HH", stream, at)
        yield kind, stream[at + 4:at + 4 + size]
        at += 4 + size


def theme_colors(data):
    try:
        with zipfile.ZipFile(io.BytesIO(data)) as package:
            text = package.read("theme/theme/theme1.xml").decode("utf-8")
    except (zipfile.BadZipFile, KeyError):
        return OFFICE
    colors = []
    for index, name in enumerate(THEME_NAMES):
        found = re.search(rf"<a:{name}>.*?(?:lastClr|srgbClr val)=\"([0-9A-Fa-f]{{6}})\"", text, re.S)
        colors.append(found.group(1).lower() if found else OFFICE[index])
    return colors


def tinted(color, tint):
    if not tint:
        return color
    hue, light, saturation = colorsys.rgb_to_hls(*(int(color[i:i + 2], 16) / 255 for i in (0, 2, 4)))
    light = light * (1 + tint) if tint < 0 else light * (1 - tint) + tint
    return "".join(f"{round(part * 255):02x}" for part in colorsys.hls_to_rgb(hue, light, saturation))


def checksum(data):
    """[MS-OSHARED] 2.4.3"""
    table = []
    for value in range(256):
        value <<= 24
        for _ in range(8):
            value = (value << 1 ^ 0xAF if value & 0x80000000 else value << 1) & 0xFFFFFFFF
        table.append(value & 0xFFFF)
    result = 0
    for byte in data:
        result = (result << 8 & 0xFFFFFFFF) ^ table[result >> 24 ^ byte]
    return result


class Extensions:
    """The colours, indents and formats that the globals hold and xlrd does not show."""

    def __init__(self, stream):
        self.colors, self.indents, self.formats, self.gradients = {}, {}, set(), set()
        theme = OFFICE
        raw, formats, expected = [], b"", None
        for kind, data in records(stream):
            if kind == 0x0A:
                break
            if kind == 0x041E:
                self.formats.add(struct.unpack_from("<H", data)[0])
            elif kind == 0x0896 and len(data) > 16:
                theme = theme_colors(data[16:])
            elif kind == 0xE0:
                formats += data
            elif kind == 0x087C:
                expected, = struct.unpack_from("<I", data, 16)
            elif kind == 0x087D:
                raw.append(data)
        if expected not in (None, checksum(formats)):
            return  # the formats were changed since
        for data in raw:
            self.add(data, theme)

    def add(self, data, theme):
        index, = struct.unpack_from("<H", data, 14)
        count, = struct.unpack_from("<H", data, 18)
        at = 20
        for _ in range(count):
            kind, size = struct.unpack_from("<HH", data, at)
            if kind in (4, 5, 7, 8, 9, 10, 11, 13):
                how, tint, value = struct.unpack_from("<HhI", data, at + 4)
                if how == 2:
                    color = data[at + 8:at + 11].hex()
                    self.colors[index, kind] = tinted(color, tint / 32767)
                elif how == 3 and value < len(theme):
                    self.colors[index, kind] = tinted(theme[value], tint / 32767)
                else:
                    self.colors[index, kind] = "?"
            elif kind == 15:
                self.indents[index] = struct.unpack_from("<H", data, at + 4)[0]
            elif kind == 6:
                self.gradients.add(index)
            at += size


def near(ours, theirs):
    if theirs == "?" or ours == theirs:
        return True
    if ours is None or theirs is None:
        return False
    return all(abs(int(ours[i:i + 2], 16) - int(theirs[i:i + 2], 16)) <= 1 for i in (0, 2, 4))


class Comparison:
    def __init__(self, name, ours, book):
        self.name, self.ours, self.book = name, ours, book
        self.extensions = Extensions(bytes(book.mem[book.base:]))
        self.differences = []
        self.compared = 0
        self.styles = set()

    def note(self, where, what, ours, theirs):
        self.differences.append(f"{self.name} {where}: {what}: {ours!r}, xlrd has {theirs!r}")

    def same(self, where, what, ours, theirs):
        self.compared += 1
        if ours != theirs:
            self.note(where, what, ours, theirs)

    def color(self, index, background=False):
        """A colour of the palette; None is the automatic one."""
        if index >= 0x40:
            other = 0x40 if background else 0x41
            return {0x40: "000000", 0x41: "ffffff"}[index] if index == other else None
        rgb = self.book.colour_map.get(index)
        return None if rgb is None else "%02x%02x%02x" % rgb

    def same_color(self, where, what, ours, index, format_index, kind, background=False):
        theirs = self.extensions.colors.get((format_index, kind), self.color(index, background))
        self.compared += 1
        if not near(ours, theirs):
            self.note(where, what, ours, theirs)

    def font(self, where, ours, index, format_index=None):
        fonts = self.book.font_list
        if not fonts:
            return self.same(where, "font", (ours["name"], ours["size"]), ("Arial", 10))
        font = fonts[index if index < len(fonts) else 0]
        self.same(where, "font", ours["name"], font.name)
        self.same(where, "size", ours["size"], font.height / 20)
        self.same(where, "bold", ours["bold"], font.weight > 550)
        self.same(where, "italic", ours["italic"], bool(font.italic))
        self.same(where, "strike", ours["strike"], bool(font.struck_out))
        self.same(where, "underline", ours["underline"], UNDERLINES.get(font.underline_type, 0))
        self.same(where, "position", ours["position"], font.escapement)
        self.same_color(where, "font colour", ours["color"], font.colour_index, format_index, 13)

    def fill(self, where, ours, fill, index):
        pattern, foreground, background, gradient = ours
        self.same(where, "gradient", gradient, index in self.extensions.gradients)
        self.same(where, "pattern", pattern, fill.fill_pattern)
        if pattern == 1:
            if fill.pattern_colour_index == 0x41:
                self.same(where, "fill", foreground, "ffffff")
            else:
                self.same_color(where, "fill", foreground, fill.pattern_colour_index, index, 4, True)
        elif pattern:
            self.same_color(where, "pattern colour", foreground, fill.pattern_colour_index, index, 4)
            self.same_color(where, "background", background, fill.background_colour_index, index, 5, True)

    def border(self, where, ours, border, index):
        sides = [("left", 9), ("right", 10), ("top", 7), ("bottom", 8)]
        for (side, kind), (line, color) in zip(sides, ours):
            self.same(where, side, line, getattr(border, side + "_line_style"))
            if line:
                self.same_color(where, side + " colour", color, getattr(border, side + "_colour_index"), index,
                                kind)
        self.same(where, "diagonal down", ours[5], bool(border.diag_down))
        self.same(where, "diagonal up", ours[6], bool(border.diag_up))
        if ours[5] or ours[6]:
            self.same(where, "diagonal", ours[4][0], border.diag_line_style)

    def alignment(self, where, ours, theirs, index):
        rotation = theirs.rotation
        if 90 < rotation <= 180:
            rotation = 90 - rotation
        self.same(where, "horizontal", ours[0], theirs.hor_align)
        self.same(where, "vertical", ours[1], theirs.vert_align)
        self.same(where, "wrap", ours[2], bool(theirs.text_wrapped))
        self.same(where, "shrink", ours[3], bool(theirs.shrink_to_fit))
        self.same(where, "indent", ours[4], self.extensions.indents.get(index, theirs.indent_level))
        self.same(where, "rotation", ours[5], rotation)
        self.same(where, "reading order", ours[6], theirs.text_direction)

    def style(self, where, ours, index):
        """The looks of a format are compared once for each sheet."""
        key = (where.split("!")[0], json.dumps(ours, sort_keys=True), index)
        if key in self.styles:
            return
        self.styles.add(key)
        xf = self.book.xf_list[index]
        self.font(where, ours["font"], xf.font_index, index)
        self.fill(where, ours["fill"], xf.background, index)
        self.border(where, ours["border"], xf.border, index)
        self.alignment(where, ours["align"], xf.alignment, index)
        if xf.format_key in self.extensions.formats:
            self.same(where, "number format", ours["format"], self.book.format_map[xf.format_key].format_str)

    def value(self, where, kind, value, cell):
        types = {None: (0, 6), "number": (2, 3), "text": (1,), "bool": (4,), "error": (5,)}
        if kind is None and cell.ctype == 1 and cell.value == "":
            return  # a formula whose result is not stored
        if kind == "text" and value == "" and cell.ctype in (0, 6):
            return
        self.compared += 1
        if cell.ctype not in types[kind]:
            return self.note(where, "kind", kind, cell.ctype)
        if kind == "number" and value is not None and value != cell.value:
            self.note(where, "number", value, cell.value)
        elif kind == "text" and value != cell.value.encode("utf-16-le", "surrogatepass").decode(
                "utf-16-le", "replace"):
            self.note(where, "text", value, cell.value)
        elif kind in ("bool", "error") and int(value) != cell.value:
            self.note(where, kind, value, cell.value)

    def rich_text(self, where, text, runs, theirs):
        units = text.encode("utf-16-le")
        expected = {}
        for begin, font in theirs:
            if begin * 2 < len(units):
                expected[len(units[:begin * 2].decode("utf-16-le", "replace").encode("utf-8"))] = font
        self.same(where, "runs", [begin for begin, _ in runs], sorted(expected))
        for begin, font in runs:
            if begin in expected:
                self.font(where, font, expected[begin])

    def cells(self, ours, theirs):
        found = {}
        for row, column, style, rich, _, kind, value in ours["cells"]:
            where = f"{theirs.name}!{xlrd.cellname(row - 1, column - 1)}"
            found[row - 1, column - 1] = True
            if row > theirs.nrows or column > theirs.row_len(row - 1):
                self.note(where, "cell", kind, None)
                continue
            cell = theirs.cell(row - 1, column - 1)
            self.value(where, kind, value, cell)
            self.style(where, ours["styles"][style], cell.xf_index)
            runs = theirs.rich_text_runlist_map.get((row - 1, column - 1))
            self.same(where, "rich text", rich >= 0, bool(runs) and any(
                begin < len(cell.value) for begin, _ in runs))
            if rich >= 0 and runs:
                self.rich_text(where, value, ours["rich"][rich], runs)
        for row in range(theirs.nrows):
            for column in range(theirs.row_len(row)):
                if theirs.cell_type(row, column) != 0 and (row, column) not in found:
                    self.note(f"{theirs.name}!{xlrd.cellname(row, column)}", "cell", None,
                              theirs.cell_value(row, column))

    def sizes(self, ours, theirs):
        where = theirs.name
        columns = {}
        for first, last, width, hidden, style in ours["columns"]:
            for column in range(first - 1, last):
                columns[column] = (width, hidden, style)
        for column, info in theirs.colinfo_map.items():
            if column > 255:
                continue
            mine = columns.pop(column, None)
            if mine is None:
                self.note(where, f"column {column}", None, info.width)
                continue
            self.same(where, f"width of column {column}", mine[0], info.width / 256)
            self.same(where, f"hidden column {column}", mine[1], bool(info.hidden) or info.width == 0)
            self.style(f"{where}!column {column}", ours["styles"][mine[2]], info.xf_index)
        self.same(where, "other columns", columns, {})
        rows = {row - 1: rest for row, *rest in ours["rows"]}
        for row, info in theirs.rowinfo_map.items():
            mine = rows.get(row)
            if mine is None:
                self.note(where, f"row {row}", None, info.height)
                continue
            height = None if info.has_default_height or info.height == 0 else info.height / 20
            self.same(where, f"height of row {row}", mine[0], height)
            self.same(where, f"hidden row {row}", mine[1], bool(info.hidden))
            self.same(where, f"height of row {row} by hand", mine[2], bool(info.height_mismatch))
            self.same(where, f"format of row {row}", mine[3] is not None, bool(info.has_default_xf_index))
            if mine[3] is not None:
                self.style(f"{where}!row {row}", ours["styles"][mine[3]], info.xf_index)
        if theirs.defcolwidth is not None:
            self.same(where, "default width", ours["baseWidth"], theirs.defcolwidth)
        if theirs.standardwidth is not None:
            self.same(where, "standard width", ours["standardWidth"], theirs.standardwidth / 256)
        if theirs.default_row_height is not None and theirs.default_row_height > 0:
            self.same(where, "default height", ours["defaultRowHeight"], theirs.default_row_height / 20)

    def view(self, ours, theirs):
        left, grid, zeros, formulas, rows, columns = ours["view"]
        self.same(theirs.name, "right to left", left, bool(theirs.columns_from_right_to_left))
        self.same(theirs.name, "grid lines", grid, bool(theirs.show_grid_lines))
        self.same(theirs.name, "zeros", zeros, bool(theirs.show_zero_values))
        self.same(theirs.name, "formulas", formulas, bool(theirs.show_formulas))
        if theirs.panes_are_frozen and theirs.has_pane_record:
            self.same(theirs.name, "frozen", (rows, columns),
                      (theirs.horz_split_pos, theirs.vert_split_pos))

    def merges(self, ours, theirs):
        expected = {(top + 1, left + 1, bottom, right) for top, bottom, left, right in theirs.merged_cells
                    if bottom - top > 1 or right - left > 1}
        found = {tuple(merge) for merge in ours["merges"]}
        for merge in expected - found:
            overlaps = any(m[0] <= merge[2] and merge[0] <= m[2] and m[1] <= merge[3] and merge[1] <= m[3]
                           for m in found)
            if not overlaps:
                self.note(theirs.name, "merge", None, merge)
        for merge in found - expected:
            self.note(theirs.name, "merge", merge, None)

    def page(self, ours, theirs):
        rows = sorted({row + 1 for row, _, _ in theirs.horizontal_page_breaks if row})
        columns = sorted({column + 1 for column, _, _ in theirs.vertical_page_breaks if column})
        self.same(theirs.name, "row breaks", ours["page"]["rowBreaks"], rows)
        self.same(theirs.name, "column breaks", ours["page"]["columnBreaks"], columns)

    def sheets(self):
        self.same("", "1904", self.ours["date1904"], bool(self.book.datemode))
        kinds = [kind for kind, _, _ in self.ours["sheets"]]
        by_name = {sheet["name"]: (kind, sheet) for kind, _, sheet in self.ours["sheets"]}
        for theirs in map(self.book.sheet_by_index, range(self.book.nsheets)):
            kind, ours = by_name.get(theirs.name, (None, None))
            if ours is None:
                self.note(theirs.name, "sheet", None, theirs.name)
            elif kind == 0:
                for compare in (self.cells, self.sizes, self.view, self.merges, self.page):
                    compare(ours, theirs)
        return len(kinds)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--dump", required=True)
    parser.add_argument("--corpus", type=pathlib.Path)
    parser.add_argument("--most", type=int, default=5, help="differences that are shown for a workbook")
    parser.add_argument("files", nargs="*", type=pathlib.Path)
    options = parser.parse_args()
    files = options.files or sorted((options.corpus / "xls").glob("*.xls"))
    if not files:
        return without_corpus(options.corpus)
    differing = compared = skipped = 0
    for path in files:
        dumped = subprocess.run([options.dump, str(path)], capture_output=True, timeout=300, check=False)
        try:
            book = xlrd.open_workbook(str(path), formatting_info=True, on_demand=True,
                                      logfile=io.StringIO())
        except Exception as error:  # whatever it cannot read
            print(f"{path.name}: xlrd refuses it: {error}")
            skipped += 1
            continue
        if dumped.returncode != 0:
            print(f"{path.name}: {dumped.stderr.decode('utf-8', 'replace').strip()}")
            differing += 1
            continue
        comparison = Comparison(path.name, json.loads(dumped.stdout), book)
        comparison.sheets()
        compared += comparison.compared
        if comparison.differences:
            differing += 1
            for line in comparison.differences[:options.most]:
                print(line)
            if len(comparison.differences) > options.most:
                print(f"{path.name}: {len(comparison.differences)} differences")
    print(f"{len(files)} workbooks, {compared} values compared, {skipped} not read by xlrd, {differing} differ")
    return 1 if differing else 0


if __name__ == "__main__":
    sys.exit(main())
