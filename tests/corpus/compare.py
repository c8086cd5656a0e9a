"""Whether one sheet, with everything that belongs to it, equals another one.

Parts are compared as trees, following the relationships. What may differ is listed here, with
its reason; everything else is a difference.
"""

import re

import vml
from cells import SheetCells
from opc import local, namespace
from workbook import SHOWN_TEXTS

# A written cell changes these; they are checked on their own.
_DERIVED_ELEMENTS = {"dimension", "sheetData", "totalsRowFormula"}
_IGNORED_ATTRIBUTES = {
    "sheetPr": {"codeName"},          # must differ in a copy: checked for being unique
    "sheetView": {"tabSelected"},     # only one sheet is selected: checked on its own
    "table": {"id", "name", "displayName"},   # must differ in a copy: checked for being unique
    # Follow the written header and totals cells: the names are checked against the header cells.
    "tableColumn": {"name", "totalsRowLabel", "totalsRowFunction"},
    "threadedComment": {"id", "parentId"},    # may differ in a copy: checked against the comments
    "slicer": {"name"},               # must differ in a copy: checked for being unique
    "pivotTableDefinition": {"name"},
}
# The numbers of shapes of a VML drawing, where other elements have them; a copy has other blocks.
_SHAPES = {"control": "shapeId", "oleObject": "shapeId", "cNvPr": "id", "stCxn": "id",
           "endCxn": "id"}
# An element of an XML map is mapped once: a copy's cells and tables are not.
_MAPPED_CELLS = "tableSingleCells"
_MAPPING = {"table": {"tableType", "connectionId"}, "tableColumn": {"uniqueName"}}
_MAPPED_COLUMN = "xmlColumnPr"
_GUID = re.compile(r"\{[0-9A-Fa-f]{8}(?:-[0-9A-Fa-f]{4}){3}-[0-9A-Fa-f]{12}\}")
_RELATED = re.compile(r"/relationships$")
_NO_FORMULAS = {"t", "v"}  # texts, and values kept beside a formula
_SHARED = ("image/",)


class Side:
    """One of the two sheets: its package and the names that stand for its own."""

    def __init__(self, package, names):
        self.package = package
        self.names = names


class SheetComparison:
    def __init__(self, left, right, is_copy=False):
        self.left, self.right, self.is_copy = left, right, is_copy
        self._unmapped = False  # of the parts that are compared: the right one is mapped no more
        self.failures = []
        self._seen = set()
        self._waiting = []

    def run(self, left_part, right_part):
        """Compares two sheets and all that they reach; returns the failures."""
        self._pair(left_part, right_part)
        while self._waiting and len(self.failures) < 20:
            self._compare_parts(*self._waiting.pop(0))
        return self.failures

    def pairs(self):
        return self._seen

    def _fail(self, where, what):
        self.failures.append(f"{where}: {what}")

    def _pair(self, left_part, right_part):
        if (left_part, right_part) not in self._seen:
            self._seen.add((left_part, right_part))
            self._waiting.append((left_part, right_part))

    def _compare_parts(self, left_part, right_part):
        left, right = self.left.package, self.right.package
        if left_part not in left:  # a link that leads nowhere in the input
            return
        if right_part not in right:
            self._fail(right_part, "is missing")
            return
        if left.content_type(left_part) != right.content_type(right_part):
            self._fail(right_part, f"content type {right.content_type(right_part)!r}, should be "
                                   f"{left.content_type(left_part)!r}")
        if left.content_type(left_part).startswith(_SHARED) and left_part != right_part:
            self._fail(right_part, f"a picture was doubled, {left_part} serves both sheets")
        self._related = ([], [])
        if left.read(left_part) != right.read(right_part):
            self._compare_trees(left_part, right_part)
        elif left.is_xml(left_part):
            self._same_bytes(left_part, right_part)
        self._pair_relationships(left_part, right_part)

    def _compare_trees(self, left_part, right_part):
        if not self.left.package.is_xml(left_part):
            self._fail(right_part, f"differs from {left_part}")
            return
        try:
            left_tree = self.left.package.tree(left_part)
        except SyntaxError:  # a VML drawing of old, which is not XML: only its bytes can be judged
            sides = [vml.neutral(side.package.read(part)) for side, part in
                     ((self.left, left_part), (self.right, right_part))]
            if sides[0] != sides[1]:
                self._fail(right_part, f"differs from {left_part}, which is not well-formed")
            return
        self._unmapped = self.is_copy and left_tree.get("tableType") == "xml"
        self._elements(left_tree, self.right.package.tree(right_part), right_part)

    def _same_bytes(self, left_part, right_part):
        """Equal texts: their formulas must not name the sheet of one side."""
        try:
            tree = self.right.package.tree(right_part)
        except SyntaxError:
            return
        self._elements(tree, tree, right_part)

    def _elements(self, left, right, where):
        if left.tag != right.tag:
            self._fail(where, f"{local(right.tag)} stands where {local(left.tag)} should")
            return
        where = f"{where}/{local(left.tag)}"
        self._attributes(left, right, where)
        formula = local(left.tag) not in _NO_FORMULAS
        if self._text(left.text, "left", formula) != self._text(right.text, "right", formula):
            self._fail(where, f"text {right.text!r}, should be like {left.text!r}")
        left_children = [child for child in left if local(child.tag) not in _DERIVED_ELEMENTS
                         and not (self._unmapped and local(child.tag) == _MAPPED_COLUMN)]
        right_children = [child for child in right if local(child.tag) not in _DERIVED_ELEMENTS]
        if len(left_children) != len(right_children):
            self._fail(where, f"has {_listed(right_children)}, should have "
                              f"{_listed(left_children)}")
            return
        for left_child, right_child in zip(left_children, right_children):
            self._elements(left_child, right_child, where)

    def _text(self, text, side, formula=True):
        text = _GUID.sub("{guid}", (text or "").strip())
        text = vml.neutral(text.encode()).decode() if "_x0000_s" in text else text
        if formula:
            names = self.left.names if side == "left" else self.right.names
            text = names.neutral(text)
        return text

    def _attributes(self, left, right, where):
        ignored = _IGNORED_ATTRIBUTES.get(local(left.tag), ())
        for key in sorted({*left.attrib, *right.attrib}):
            # Revision marks ("uid") name an edit, not the sheet.
            if local(key) in ignored or "/revision" in namespace(key):
                continue
            mine, other = left.get(key), right.get(key)
            if self._unmapped and key in _MAPPING.get(local(left.tag), ()):
                mine = None
            mine, other = (_without_block(left, key, value) for value in (mine, other))
            if _RELATED.search(namespace(key)) or local(key) == "relid":
                self._related[0].append(mine)
                self._related[1].append(other)
                if (mine is None) != (other is None):
                    self._fail(where, f"{local(key)} is {other}, should be like {mine}")
            elif (mine is None) != (other is None) \
                    or self._text(mine, "left", local(key) not in SHOWN_TEXTS) \
                    != self._text(other, "right", local(key) not in SHOWN_TEXTS):
                self._fail(where, f"{local(key)}={other!r}, should be like {mine!r}")

    def _pair_relationships(self, left_part, right_part):
        """Pairs what the parts reach: by the ids met in the text, else by kind and order."""
        left = {key: rel for key, rel in self.left.package.rels(left_part).items()
                if not (self.is_copy and rel.kind == _MAPPED_CELLS)}
        right = dict(self.right.package.rels(right_part))
        pairs = []
        for mine, other in zip(*self._related):
            if mine in left and other in right:
                pairs.append((left[mine], right[other]))
            elif (mine in left) != (other in right):
                self._fail(right_part, f"relationship {other} leads nowhere")
        for mine, other in pairs:
            left.pop(mine.id, None)
            right.pop(other.id, None)
        remaining = [sorted(side.values(), key=lambda rel: (rel.kind, len(rel.id), rel.id))
                     for side in (left, right)]
        if [rel.kind for rel in remaining[0]] != [rel.kind for rel in remaining[1]]:
            self._fail(right_part, f"has relationships {[rel.kind for rel in remaining[1]]}, "
                                   f"should have {[rel.kind for rel in remaining[0]]}")
        for mine, other in pairs + list(zip(*remaining)):
            self._relationship(mine, other, right_part)

    def _relationship(self, mine, other, right_part):
        if (mine.kind, mine.external) != (other.kind, other.external):
            self._fail(right_part, f"relationship {other.id} is {other.kind}, should be "
                                   f"{mine.kind}")
        elif mine.external or mine.target.startswith("#"):
            if self._text(mine.target, "left") != self._text(other.target, "right"):
                self._fail(right_part, f"link {other.target!r}, should be like {mine.target!r}")
        elif mine.kind == "pivotCacheDefinition":
            pass  # the workbook's own, shared by the sheets
        else:
            self._pair(mine.target, other.target)


def _without_block(element, key, value):
    """The value of an attribute; the number of a VML shape within its block, of blocks their count."""
    if (local(element.tag), key) == ("idmap", "data") and value:
        return str(len(value.split(",")))
    if _SHAPES.get(local(element.tag)) == key and (value or "").isdigit():
        return vml.in_block(value)
    return value


def _listed(elements):
    return [local(element.tag) for element in elements][:30]


def compare_cells(left, right, names, written, either, strip_values):
    """Compares two sheets' cells except the written ones; yields failures.

    `names` are the two sides' Names. With `strip_values` formula cells must have no value left;
    elsewhere they may have lost it."""
    changed = {*written, *either}
    left_formulas, right_formulas = left.formula_texts, right.formula_texts
    for where in sorted({*left.cells, *right.cells} - changed):
        mine, other = left.cells.get(where), right.cells.get(where)
        if mine is None or other is None:
            yield f"cell {where} {'appeared' if mine is None else 'is gone'}"
            continue
        if (mine.style, mine.other) != (other.style, other.other):
            yield f"cell {where}: format {other.style} {other.other}, was {mine.style} {mine.other}"
        if mine.formula is None and other.formula is None:
            if (mine.kind, mine.value) != (other.kind, other.value):
                yield f"cell {where}: value {other.kind} {other.value!r}, was {mine.value!r}"
            continue
        yield from _formula_failures(where, (mine, other), names,
                                     (left_formulas.get(where), right_formulas.get(where)))
        if other.value is not None and strip_values:
            yield f"cell {where}: the formula has a stale value {other.value!r}"
        elif other.value is not None and other.value != mine.value:
            yield f"cell {where}: the formula has another value {other.value!r}"


def _formula_failures(where, cells, names, texts):
    if None in texts:
        yield f"cell {where}: formula {texts[1]!r}, was {texts[0]!r}"
        return
    if names[0].neutral(texts[0]) != names[1].neutral(texts[1]):
        yield f"cell {where}: formula {texts[1]!r}, should be like {texts[0]!r}"
    kinds = [{key: value for key, value in cell.formula.attrib.items()
              if key not in ("si", "ref") or cell.formula.get("t") in ("array", "dataTable")}
             for cell in cells]
    for kind in kinds:
        if kind.get("t") == "shared":  # may become a formula of its own when its master went
            del kind["t"]
    if kinds[0] != kinds[1]:
        yield f"cell {where}: formula attributes {kinds[1]}, were {kinds[0]}"


def compare_rows(left, right, new_rows):
    """Rows keep their attributes; new rows appear only where cells were written."""
    for number in sorted({*left.rows, *right.rows}):
        if number not in right.rows:
            yield f"row {number} is gone"
        elif number not in left.rows:
            if number not in new_rows:
                yield f"row {number} appeared"
        else:
            sides = [{key: value for key, value in side.rows[number].attrib.items()
                      if local(key) not in ("spans", "r") and "/revision" not in namespace(key)}
                     for side in (left, right)]
            if sides[0] != sides[1]:
                yield f"row {number}: {sides[1]}, was {sides[0]}"


def cells_of(package, part):
    return SheetCells(package.tree(part))
