"""Judges the looks of .xlsx workbooks by what openpyxl reads of the same files.

    check_looks.py --dump LOOK_DUMP (--corpus FOLDER | FILE...)

Compares every cell's value, formula and style, every column's width, every row's height, merges,
conditional formats and page set-up, and prints what differs."""

import argparse
import collections
import datetime
import json
import pathlib
import subprocess
import sys
import warnings
import xml.etree.ElementTree as ElementTree

import openpyxl
import openpyxl.worksheet.page
from openpyxl.styles.colors import COLOR_INDEX, Color
from openpyxl.styles.fonts import DEFAULT_FONT
from openpyxl.utils import get_column_letter
from openpyxl.utils.datetime import to_excel

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[4] / "places"))
from corpus_status import without_corpus  # noqa: E402


PATTERNS = ["none", "solid", "mediumGray", "darkGray", "lightGray", "darkHorizontal", "darkVertical",
            "darkDown", "darkUp", "darkGrid", "darkTrellis", "lightHorizontal", "lightVertical",
            "lightDown", "lightUp", "lightGrid", "lightTrellis", "gray125", "gray0625"]
LINES = ["none", "thin", "medium", "dashed", "dotted", "thick", "double", "hair", "mediumDashed",
         "dashDot", "mediumDashDot", "dashDotDot", "mediumDashDotDot", "slantDashDot"]
HORIZONTAL = ["general", "left", "center", "right", "fill", "justify", "centerContinuous",
              "distributed"]
VERTICAL = ["top", "center", "bottom", "justify", "distributed"]
UNDERLINES = ["none", "single", "double", "singleAccounting", "doubleAccounting"]
POSITIONS = ["baseline", "superscript", "subscript"]
ERRORS = {0x00: "#NULL!", 0x07: "#DIV/0!", 0x0F: "#VALUE!", 0x17: "#REF!", 0x1D: "#NAME?",
          0x24: "#NUM!", 0x2A: "#N/A", 0x2B: "#GETTING_DATA", 0x2D: "#SPILL!", 0x32: "#CALC!"}
KINDS = ["expression", "cellIs", "containsText", "notContainsText", "beginsWith", "endsWith",
         "containsBlanks", "notContainsBlanks", "containsErrors", "notContainsErrors",
         "duplicateValues", "uniqueValues", "top10", "aboveAverage", "timePeriod", "colorScale",
         "dataBar", "iconSet"]

# The codes of built-in formats that openpyxl takes from ECMA-376, where Excel has others.
CODES = {"mm-dd-yy": "m/d/yyyy", "m/d/yy h:mm": "m/d/yyyy h:mm", "mmss.0": "mm:ss.0"}
ACCOUNTING = {42, 44, 5, 6, 7, 8}  # openpyxl leaves semicolons and backslashes out

DRAWING = "{http://schemas.openxmlformats.org/drawingml/2006/main}"
THEME_ORDER = ["lt1", "dk1", "lt2", "dk2", "accent1", "accent2", "accent3", "accent4", "accent5",
               "accent6", "hlink", "folHlink"]
DEFAULT_THEME = ["FFFFFF", "000000", "EEECE1", "1F497D", "4F81BD", "C0504D", "9BBB59", "8064A2",
                 "4BACC6", "F79646", "0000FF", "800080"]


def theme_colors(book):
    colors = list(DEFAULT_THEME)
    fonts = {}
    if not book.loaded_theme:
        return colors, fonts
    root = ElementTree.fromstring(book.loaded_theme)
    scheme = root.find(f".//{DRAWING}clrScheme")
    for child in scheme if scheme is not None else []:
        name = child.tag.removeprefix(DRAWING)
        if name not in THEME_ORDER or len(child) == 0:
            continue
        value = child[0].get("lastClr") or child[0].get("val")
        if len(value) == 6:
            colors[THEME_ORDER.index(name)] = value.upper()
    for name in ("major", "minor"):
        latin = root.find(f".//{DRAWING}{name}Font/{DRAWING}latin")
        others = {font.get("typeface") for font in root.iter(f"{DRAWING}font")}
        others |= {font.get("typeface") for font in root.iter(f"{DRAWING}ea")}
        if latin is not None and latin.get("typeface"):
            fonts[name] = (latin.get("typeface"), others)
    return colors, fonts


def tinted(color, tint):
    """ECMA-376 18.8.19, with the colour model of Python's library."""
    import colorsys
    if not tint:
        return color
    red, green, blue = (int(color[at:at + 2], 16) / 255 for at in (0, 2, 4))
    hue, light, saturation = colorsys.rgb_to_hls(red, green, blue)
    light = light * (1 + tint) if tint < 0 else light * (1 - tint) + tint
    return "".join(f"{int(part * 255 + 0.5):02X}"
                   for part in colorsys.hls_to_rgb(hue, min(max(light, 0), 1), saturation))


def near(left, right):
    if left is None or right is None:
        return left == right
    return all(abs(int(left[at:at + 2], 16) - int(right[at:at + 2], 16)) <= 1 for at in (0, 2, 4))


class Judge:
    """One workbook."""

    def __init__(self, path, dump):
        self.path = path
        self.dump = dump
        self.differences = collections.Counter()
        self.examples = {}
        self.judged = 0
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            self.book = openpyxl.load_workbook(path)
            self.values = openpyxl.load_workbook(path, data_only=True)
        self.theme, self.fonts = theme_colors(self.book)
        self.palette = list(getattr(self.book, "_colors", None) or COLOR_INDEX)
        self.has_no_fonts = list(self.book._fonts) == [DEFAULT_FONT]
        self.styles = {}

    def differ(self, what, where, ours, theirs):
        self.differences[what] += 1
        self.examples.setdefault(what, f"{where}: {ours!r} instead of {theirs!r}")

    def same(self, what, where, ours, theirs):
        self.judged += 1
        if ours != theirs:
            self.differ(what, where, ours, theirs)

    def color(self, color):
        if color is None or color.type == "auto":
            return None
        if color.type == "theme":
            if color.theme >= len(self.theme):
                return None
            return tinted(self.theme[color.theme], color.tint)
        if color.type == "indexed":
            if color.indexed >= 64 or color.indexed >= len(self.palette):
                return None
            return tinted(self.palette[color.indexed][-6:].upper(), color.tint)
        return tinted(color.rgb[-6:].upper(), color.tint)

    def same_color(self, what, where, ours, color):
        if ours is None and (color == Color() or self.has_no_fonts and color == DEFAULT_FONT.color):
            return  # openpyxl takes a missing colour for black
        self.judged += 1
        if not near(ours, self.color(color)):
            self.differ(what, where, ours, self.color(color))

    def font_name(self, font):
        if font.scheme in self.fonts:
            name, others = self.fonts[font.scheme]
            return font.name if font.name in others else name
        return font.name

    def font(self, where, ours, font):
        if font.name:
            self.same("font name", where, ours["name"], self.font_name(font))
        if font.sz:
            self.same("font size", where, ours["size"], font.sz)
        self.same("bold", where, ours["bold"], bool(font.b))
        self.same("italic", where, ours["italic"], bool(font.i))
        self.same("strike", where, ours["strike"], bool(font.strike))
        self.same("underline", where, UNDERLINES[ours["underline"]], font.u or "none")
        self.same("position", where, POSITIONS[ours["position"]], font.vertAlign or "baseline")
        self.same_color("font colour", where, ours["color"], font.color)

    def fill(self, where, ours, fill):
        if fill.tagname == "gradientFill":
            self.same("gradient", where, ours["gradient"], True)
            return
        pattern = fill.patternType or "none"
        self.same("pattern", where, PATTERNS[ours["pattern"]], pattern)
        if pattern == "none":
            return
        if self.color(fill.fgColor) is not None:
            self.same_color("fill colour", where, ours["fore"], fill.fgColor)
        if pattern != "solid":
            self.same_color("fill background", where, ours["back"], fill.bgColor)

    def border(self, where, ours, border):
        for side in ("left", "right", "top", "bottom", "diagonal"):
            line = getattr(border, side)
            style = (line.style if line is not None else None) or "none"
            self.same("border", where, LINES[ours[side][0]], style)
            if style != "none":
                self.same_color("border colour", where, ours[side][1], line.color)
        self.same("diagonal", where, [ours["diagonalUp"], ours["diagonalDown"]],
                  [bool(border.diagonalUp), bool(border.diagonalDown)])

    def alignment(self, where, ours, alignment):
        self.same("horizontal", where, HORIZONTAL[ours["horizontal"]],
                  alignment.horizontal or "general")
        self.same("vertical", where, VERTICAL[ours["vertical"]], alignment.vertical or "bottom")
        self.same("wrap", where, ours["wrap"], bool(alignment.wrap_text))
        self.same("shrink", where, ours["shrink"], bool(alignment.shrink_to_fit))
        self.same("indent", where, ours["indent"], int(alignment.indent or 0))
        rotation = alignment.textRotation or 0
        if 90 < rotation <= 180:
            rotation = 90 - rotation
        self.same("rotation", where, ours["rotation"], rotation)
        self.same("reading order", where, ours["readingOrder"], int(alignment.readingOrder or 0))

    def style(self, where, index, styles, cell):
        key = (id(styles), index, tuple(cell._style), cell.coordinate in self.merged)
        if key in self.styles:
            self.same("style", where, self.styles[key], True)
            return
        before = sum(self.differences.values())
        ours = styles[index]
        self.font(where, ours["font"], cell.font)
        self.fill(where, ours["fill"], cell.fill)
        # openpyxl draws the borders of a merge's other cells at its first one.
        if cell.coordinate not in self.merged:
            self.border(where, ours, cell.border)
        self.alignment(where, ours, cell.alignment)
        code = cell.number_format or "General"
        if cell._style.numFmtId not in ACCOUNTING:
            self.same("number format", where, ours["numberFormat"], CODES.get(code, code))
        self.styles[key] = sum(self.differences.values()) == before

    def value(self, where, ours, cell):
        theirs = cell.value
        if isinstance(ours, dict):
            ours = ERRORS[ours["error"]]
        if isinstance(theirs, (datetime.datetime, datetime.date, datetime.time,
                               datetime.timedelta)):
            theirs = to_excel(theirs, self.book.epoch)
        if isinstance(theirs, str) and ours is not None and not isinstance(ours, str):
            try:
                theirs = float(theirs)
            except ValueError:
                pass
        numbers = isinstance(ours, (int, float)) and isinstance(theirs, (int, float)) and \
            not isinstance(ours, bool)
        if numbers and abs(ours - theirs) <= 1e-5 * max(1, abs(ours)):
            theirs = ours  # dates go through datetime, which has microseconds
        if ours == "" and theirs is None:
            theirs = ours
        self.same("value", where, ours, theirs)

    def formula(self, where, ours, cell):
        theirs = None
        if cell.data_type == "f":
            theirs = str(cell.value).removeprefix("=") or None
        self.same("formula", where, ours, theirs)

    def cells(self, sheet, theirs, values):
        ours = {(cell[0], cell[1]): cell for cell in sheet["cells"]}
        for address, cell in theirs._cells.items():
            if type(cell).__name__ == "MergedCell":
                continue  # openpyxl forgets what these have
            where = f"{theirs.title}!{get_column_letter(address[1])}{address[0]}"
            mine = ours.get(address)
            self.same("cell", where, mine is not None, True)
            if mine is None:
                continue
            self.style(where, mine[2], sheet["styles"], cell)
            self.formula(where, mine[4], cell)
            stored = values._cells.get(address)
            if stored is not None:
                self.value(where, mine[3], stored)
        extra = [address for address in ours if address not in theirs._cells]
        self.same("cells that are not there", theirs.title, extra[:3], [])

    def sizes(self, sheet, theirs):
        widths = {}
        for first, last, width, hidden in sheet["columns"]:
            for column in range(first, min(last, 300) + 1):
                widths[column] = (width, hidden)
        for letter, column in theirs.column_dimensions.items():
            if column.min is None:
                continue
            for at in range(column.min, min(column.max, 300) + 1):
                where = f"{theirs.title}!{get_column_letter(at)}"
                width, hidden = widths.get(at, (None, False))
                if column.customWidth or width is not None:
                    self.same("width", where, width, column.width)
                self.same("hidden column", where, hidden, bool(column.hidden))
        heights = {row: (height, hidden) for row, height, hidden in sheet["rows"]}
        for at, row in theirs.row_dimensions.items():
            height, hidden = heights.get(at, (None, False))
            self.same("height", f"{theirs.title}!{at}", height, row.height)
            self.same("hidden row", f"{theirs.title}!{at}", hidden, bool(row.hidden))

    def conditions(self, sheet, theirs):
        ours = sorted((KINDS[rule["kind"]], rule["priority"], tuple(rule["formulas"]))
                      for one in sheet["conditions"] for rule in one["rules"])
        names = sorted((rule.type, rule.priority, tuple(f.strip().removeprefix("=")
                                                        for f in rule.formula))
                       for one in theirs.conditional_formatting for rule in one.rules)
        for name in names:  # openpyxl does not know those of extension lists
            self.same("conditional format", theirs.title, name in ours, True)

    def page(self, sheet, theirs):
        ours = sheet["page"]
        setup = theirs.page_setup
        self.same("paper", theirs.title, ours["paper"], int(setup.paperSize or 1))
        self.same("landscape", theirs.title, ours["landscape"], setup.orientation == "landscape")
        self.same("scale", theirs.title, ours["scale"], int(setup.scale or 100))
        self.same("fits", theirs.title, ours["fits"],
                  bool(theirs.sheet_properties.pageSetUpPr and
                       theirs.sheet_properties.pageSetUpPr.fitToPage))
        self.same("row breaks", theirs.title, ours["rowBreaks"],
                  sorted({one.id + 1 for one in theirs.row_breaks.brk}))
        areas = theirs.print_area
        if areas:
            text = ",".join(one.split("!")[-1] for one in areas.split(",")) \
                if isinstance(areas, str) else ",".join(areas)
            self.same("print area", theirs.title, ",".join(ours["areas"]), text.replace("$", ""))
        margins = theirs.page_margins
        if margins == openpyxl.worksheet.page.PageMargins():
            return  # it may have none: openpyxl takes those of older versions then
        for side in ("left", "right", "top", "bottom", "header", "footer"):
            self.same("margin " + side, theirs.title, round(ours[side], 6),
                      round(getattr(margins, side), 6))

    def view(self, sheet, theirs):
        view = theirs.sheet_view
        self.same("grid lines", theirs.title, sheet["grid"], view.showGridLines is not False)
        self.same("right to left", theirs.title, sheet["rightToLeft"], bool(view.rightToLeft))
        self.same("zeros", theirs.title, sheet["zeros"], view.showZeros is not False)
        pane = view.pane
        frozen = [0, 0]
        if pane is not None and pane.state in ("frozen", "frozenSplit"):
            frozen = [int(pane.ySplit or 0), int(pane.xSplit or 0)]
        self.same("frozen", theirs.title, sheet["frozen"], frozen)
        standard = theirs.sheet_format
        self.same("standard width", theirs.title, sheet["standardWidth"], standard.defaultColWidth)
        if sheet["defaultRowHeight"] is not None:
            self.same("row height", theirs.title, sheet["defaultRowHeight"],
                      standard.defaultRowHeight)

    def merges(self, sheet, theirs):
        self.same("merges", theirs.title, sorted(sheet["merges"]),
                  sorted(str(one) for one in theirs.merged_cells.ranges))

    def run(self):
        names = [sheet.title for sheet in self.book.worksheets
                 if sheet.title not in self.dump["others"]]
        ours = {sheet["name"]: sheet for sheet in self.dump["sheets"]}
        self.same("sheets", self.path.name, list(ours), names)
        for sheet in self.book.worksheets:
            mine = ours.get(sheet.title)
            if mine is None:
                continue
            self.merged = {str(one).split(":")[0] for one in sheet.merged_cells.ranges}
            self.cells(mine, sheet, self.values[sheet.title])
            self.sizes(mine, sheet)
            self.merges(mine, sheet)
            self.conditions(mine, sheet)
            self.page(mine, sheet)
            self.view(mine, sheet)


def dumps(program, files):
    for path in files:
        done = subprocess.run([*program, path], capture_output=True, check=True)
        yield path, json.loads(done.stdout)


def judge_file(path, dump):
    """What differs, or why openpyxl does not open the file."""
    try:
        judge = Judge(path, dump)
        if not judge.book.worksheets and not judge.book.chartsheets:
            return None, "it reads no sheets of the strict form"
    except Exception as error:  # whatever it is, that file cannot be judged
        return None, str(error) or type(error).__name__
    judge.run()
    return judge, None


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--dump", nargs="+", required=True)
    parser.add_argument("--corpus", type=pathlib.Path)
    parser.add_argument("--verbose", action="store_true")
    parser.add_argument("files", nargs="*", type=pathlib.Path)
    options = parser.parse_args()
    files = options.files
    if options.corpus:
        if not options.corpus.is_dir():
            return without_corpus(options.corpus)
        files += sorted((options.corpus / "xlsx").rglob("*.xls[xm]"))
    differing = 0
    judged = collections.Counter()
    for path, dump in dumps(options.dump, files):
        if "error" in dump:
            print(f"{path.name}: not opened: {dump['error']}")
            differing += 1
            continue
        judge, reason = judge_file(path, dump)
        if judge is None:
            judged["files that openpyxl does not open"] += 1
            if options.verbose:
                print(f"{path.name}: openpyxl: {reason}")
            continue
        judged["files"] += 1
        judged["facts"] += judge.judged
        differing += bool(judge.differences)
        for what, count in judge.differences.items():
            print(f"{path.name}: {what}: {count}, such as {judge.examples[what]}")
    print(f"{dict(judged)}, {differing} with differences")
    return 1 if differing or not judged["facts"] else 0


if __name__ == "__main__":
    sys.exit(main())
