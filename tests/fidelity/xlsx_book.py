"""What the measuring code knows of an .xlsx workbook, formats resolved to what they look like."""
import functools
import hashlib

from cells import SheetCells, shared_strings, string_text
from counts import defined_names
from formulas import SELF, Names
from opc import Package, is_true, local

BLACK, WHITE = "000000", "FFFFFF"


def kids(element, *path):
    """The elements at the end of a path of local names."""
    found = [] if element is None else [element]
    for name in path:
        found = [child for each in found for child in each if local(child.tag) == name]
    return found


def first(element, *path):
    return next(iter(kids(element, *path)), None)


def deep(element, *names):
    return [each for each in element.iter() if local(each.tag) in names]


def text_of(element, *names):
    """The texts of the descendants of these names, joined."""
    return "".join(each.text or "" for each in deep(element, *names))


def attribute(element, name):
    """An attribute of any namespace."""
    if element is None:
        return None
    return next((value for key, value in element.attrib.items() if local(key) == name), None)


class Styles:
    """Cell formats and differential formats, resolved."""

    def __init__(self, package):
        part = package.first_related(package.workbook, "styles")
        self.root = package.tree(part)
        theme = package.first_related(package.workbook, "theme")
        scheme = deep(package.tree(theme), "clrScheme")[0] if theme else ()
        colors = [attribute(color, "lastClr") or attribute(color, "val")
                  for entry in scheme for color in entry]
        self.theme = [colors[number] for number in (1, 0, 3, 2)] + colors[4:] if colors else []
        self.numbers = {item.get("numFmtId"): item.get("formatCode")
                        for item in kids(self.root, "numFmts", "numFmt")}

    def color(self, element, default=None):
        if element is None or is_true(element.get("auto")):
            return default
        if element.get("rgb"):
            return element.get("rgb")[-6:].upper()
        if element.get("theme") and int(element.get("theme")) < len(self.theme):
            return self.theme[int(element.get("theme"))].upper()
        number = int(element.get("indexed", "64"))
        return {8: BLACK, 9: WHITE}.get(number & 7 | 8 if number < 8 else number, default)

    def font(self, element):
        flags = tuple(name for name in ("b", "i", "u", "strike") if first(element, name) is not None
                      and first(element, name).get("val", "1") not in ("0", "false", "none"))
        name, size = first(element, "name"), first(element, "sz")
        return (name is not None and name.get("val"), size is not None and float(size.get("val")),
                flags, self.color(first(element, "color"), BLACK))

    def fill(self, element):
        """Pattern and colours; a gradient is a pattern of its own."""
        pattern = first(element, "patternFill")
        if pattern is None:
            return ("gradient",) if first(element, "gradientFill") is not None else None
        kind = pattern.get("patternType", "none")
        if kind in ("none", "gray125"):
            return None
        front = self.color(first(pattern, "fgColor"))
        return (kind, front) if kind == "solid" else (kind, front,
                                                      self.color(first(pattern, "bgColor")))

    def borders(self, element):
        found = {}
        for side in ("left", "right", "top", "bottom"):
            line = first(element, side)
            if line is not None and line.get("style", "none") != "none":
                found[side] = line.get("style"), self.color(first(line, "color"), BLACK)
        return found or None

    def diagonal(self, element):
        line = first(element, "diagonal")
        if line is None or line.get("style", "none") == "none":
            return None
        return (is_true(element.get("diagonalUp")), is_true(element.get("diagonalDown")),
                line.get("style"), self.color(first(line, "color"), BLACK))

    def number(self, identifier):
        code = self.numbers.get(identifier, f"built in {identifier}")
        code = {"built in 1": "0", "built in 2": "0.00", "built in 4": "#,##0.00"}.get(code, code)
        return None if code in ("built in 0", "General") else code.replace("\\", "").lower()

    @functools.lru_cache(maxsize=None)
    def format(self, index):
        """What a cell format looks like, by aspect; None for what a plain cell has."""
        xf = kids(self.root, "cellXfs", "xf")[index]
        fonts, fills, borders = (kids(self.root, *path) for path in (
            ("fonts", "font"), ("fills", "fill"), ("borders", "border")))
        fill = self.fill(fills[int(xf.get("fillId", "0"))])
        solid = fill and fill[0] == "solid"
        border = borders[int(xf.get("borderId", "0"))]
        return {"fonts": self._other_than_plain(fonts, int(xf.get("fontId", "0"))),
                "fills": fill if solid else None, "patterned fills": None if solid else fill,
                "borders": self.borders(border), "diagonal borders": self.diagonal(border),
                "number formats": self.number(xf.get("numFmtId", "0")),
                "alignment": self._alignment(first(xf, "alignment")),
                "locking": self._locking(first(xf, "protection"))}

    def _other_than_plain(self, fonts, index):
        font = self.font(fonts[index])
        plain = int(kids(self.root, "cellXfs", "xf")[0].get("fontId", "0"))
        return None if font == self.font(fonts[plain]) else font

    @staticmethod
    def _alignment(element):
        if element is None:
            return None
        found = {name: value for name, value, plain in (
            ("horizontal", element.get("horizontal"), ("general", None)),
            ("vertical", element.get("vertical"), ("bottom", None)),
            ("turned", element.get("textRotation"), ("0", None)),
            ("indent", element.get("indent"), ("0", None)),
            ("wrapped", is_true(element.get("wrapText")), (False,)),
            ("shrunk", is_true(element.get("shrinkToFit")), (False,))) if value not in plain}
        return found or None

    @staticmethod
    def _locking(element):
        if element is None:
            return None
        found = (element.get("locked") in ("0", "false"), is_true(element.get("hidden")))
        return found if any(found) else None

    def rule_format(self, dxf):
        """What a conditional format changes: bold, text colour, fill colour."""
        if dxf is None:
            return None
        font, pattern = first(dxf, "font"), first(dxf, "fill", "patternFill")
        bold = font is not None and first(font, "b") is not None \
            and first(font, "b").get("val", "1") not in ("0", "false")
        back = first(pattern, "bgColor")
        return (bold, self.color(first(font, "color")),
                self.color(back if back is not None else first(pattern, "fgColor")))

    def dxf(self, index):
        return None if index is None else kids(self.root, "dxfs", "dxf")[int(index)]


class Book:
    """A workbook; its sheets in their order."""

    def __init__(self, path):
        self.package = Package(path)
        self.styles = Styles(self.package)
        self.strings = shared_strings(self.package)
        self.sheets = [Sheet(self, index) for index in range(len(self.package.sheets))]
        self.names = defined_names(self.package)

    def sheet(self, name):
        return next((sheet for sheet in self.sheets if sheet.name == name), None)


class Sheet:
    """A sheet with what hangs on it."""

    def __init__(self, book, index):
        self.book, self.index = book, index
        self.package, self.styles = book.package, book.styles
        self.name, self.part = self.package.sheets[index].name, self.package.sheets[index].part

    @functools.cached_property
    def root(self):
        return self.package.tree(self.part)

    @functools.cached_property
    def cells(self):
        return SheetCells(self.root)

    def related(self, kind, owner=None):
        """The parts of a kind that belong to the sheet, or to another part."""
        return [rel.target for rel in self.package.rels(owner or self.part).values()
                if rel.kind == kind and not rel.external and rel.target in self.package]

    def target(self, owner, identifier):
        """What a relationship leads to, or None where it leads nowhere."""
        rel = self.package.rels(owner).get(identifier)
        if rel is None or not (rel.external or rel.target.startswith("#")
                               or rel.target in self.package):
            return None
        return rel.target

    def digest(self, part):
        """Stands for a part's bytes."""
        return part and hashlib.sha256(self.package.read(part)).hexdigest()[:12]

    @functools.cached_property
    def tables(self):
        found = [self.package.tree(part) for part in self.related("table")]
        return sorted(found, key=lambda table: table.get("ref"))

    @functools.cached_property
    def _names(self):
        tables = {table.get("displayName"): f"{SELF}{number}"
                  for number, table in enumerate(self.tables)}
        return Names({self.name: SELF}, tables)

    def neutral(self, formula):
        """A formula as any sheet would have it. That it names its own sheet, or does not, is one."""
        text = self._names.neutral((formula or "").lstrip("="))
        return text.replace(f"\u27e6{SELF}\u27e7!", "")

    def own_target(self, formula):
        """Like neutral(); empty where the formula does not name this sheet."""
        return self.neutral(formula) if SELF in self._names.neutral(formula or "") else ""

    def value(self, cell):
        """A cell's value as type and text."""
        if cell.kind == "s":
            return "text", string_text(self.book.strings[int(cell.value)])
        if cell.kind in ("inlineStr", "str"):
            return "text", cell.value
        if cell.value is None:
            return None
        return {"b": "logical", "e": "error"}.get(cell.kind, "number"), float(cell.value) \
            if cell.kind in ("n", "b") else cell.value
