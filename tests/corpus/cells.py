"""The cells of a worksheet part, read from its XML."""

import functools
import re

from openpyxl.formula.translate import Translator

from opc import area_bounds, cell_name, cell_position, is_true, local

_ESCAPE = re.compile(r"_x([0-9A-Fa-f]{4})_")


class Cell:
    """A cell as the file has it: type, style, value text, formula and what else it carries."""

    __slots__ = ("kind", "style", "value", "formula", "other")

    def __init__(self, element):
        self.kind = element.get("t", "n")
        self.style = int(element.get("s", "0"))
        self.other = {key: value for key, value in element.attrib.items()
                      if local(key) not in ("r", "t", "s")}
        self.value = self.formula = None
        for child in element:
            name = local(child.tag)
            if name == "v":
                self.value = child.text or ""
            elif name == "is":
                self.value = string_text(child)
            elif name == "f":
                self.formula = child


def unescape(text):
    return _ESCAPE.sub(lambda match: chr(int(match[1], 16)), text)


def string_text(element):
    """The text of a string item or an inline string, without phonetic runs."""
    texts = []
    for child in element:
        if local(child.tag) == "t":
            texts.append(child.text or "")
        elif local(child.tag) == "r":
            texts += [grandchild.text or "" for grandchild in child
                      if local(grandchild.tag) == "t"]
    return unescape("".join(texts))


class SheetCells:
    """Cells, rows, columns and the areas that decide whether a cell can be written."""

    def __init__(self, root):
        self.root = root
        self.cells = {}
        self.rows = {}
        self.row_order = []
        self.in_order = True
        data = next((child for child in root if local(child.tag) == "sheetData"), None)
        number = 0
        for row in data if data is not None else ():
            if local(row.tag) != "row":
                continue
            number = int(row.get("r", number + 1))
            self.rows[number] = row
            self.row_order.append(number)
            self._read_row(number, row)
        self.in_order &= self.row_order == sorted(set(self.row_order))

    def _read_row(self, number, row):
        column = 0
        for element in row:
            if local(element.tag) != "c":
                continue
            before, where = column, element.get("r")
            column = cell_position(where)[1] if where else column + 1
            self.in_order &= column > before and (not where or cell_position(where)[0] == number)
            self.cells[number, column] = Cell(element)

    def _children(self, *path):
        found = [self.root]
        for name in path:
            found = [child for element in found for child in element if local(child.tag) == name]
        return found

    @functools.cached_property
    def merges(self):
        return [area_bounds(element.get("ref")) for element in
                self._children("mergeCells", "mergeCell")]

    @functools.cached_property
    def is_protected(self):
        return any(is_true(element.get("sheet")) for element in self._children("sheetProtection"))

    @functools.cached_property
    def protected_ranges(self):
        return [area_bounds(area) for element in
                self._children("protectedRanges", "protectedRange")
                for area in element.get("sqref", "").split()]

    @functools.cached_property
    def column_styles(self):
        return [(int(element.get("min")), int(element.get("max")), int(element.get("style", "0")))
                for element in self._children("cols", "col")]

    def array_areas(self, kind):
        """Areas of the formulas of a kind ("array", "dataTable"), with the master's position."""
        return [(area_bounds(cell.formula.get("ref")), where) for where, cell in self.cells.items()
                if cell.formula is not None and cell.formula.get("t") == kind
                and cell.formula.get("ref")]

    def style_at(self, position):
        """The format that a value written there has: the cell's own, its row's, its column's."""
        cell = self.cells.get(position)
        if cell is not None:
            return cell.style
        row = self.rows.get(position[0])
        if row is not None and is_true(row.get("customFormat")):
            return int(row.get("s", "0"))
        return next((style for first, last, style in self.column_styles
                     if first <= position[1] <= last), 0)

    @functools.cached_property
    def formula_texts(self):
        """The formula of every formula cell; shared formulas are written out."""
        masters, texts = {}, {}
        for where, cell in sorted(self.cells.items()):
            formula = cell.formula
            if formula is None:
                continue
            text = formula.text or ""
            if formula.get("t") == "shared":
                index = formula.get("si")
                if text:
                    masters[index] = (where, text)
                elif index in masters:
                    text = _moved(*masters[index], where)
            texts[where] = text
        return texts


@functools.lru_cache(maxsize=4096)
def _moved(origin, text, where):
    return Translator("=" + text, cell_name(origin)).translate_formula(cell_name(where))[1:]


def shared_strings(package):
    """The workbook's string items as elements; empty where there is no such part."""
    part = package.first_related(package.workbook, "sharedStrings")
    if part is None or part not in package:
        return []
    return [element for element in package.tree(part) if local(element.tag) == "si"]


def locked_styles(package):
    """For each cell format, whether it locks its cell."""
    part = package.first_related(package.workbook, "styles")
    if part is None or part not in package:
        return []
    formats = [xf for element in package.tree(part) if local(element.tag) == "cellXfs"
               for xf in element if local(xf.tag) == "xf"]
    return [not any(local(child.tag) == "protection" and child.get("locked") in ("0", "false")
                    for child in xf) for xf in formats]
