"""An OOXML package as a zip directory, content types, relationships and XML trees.

Reads with the standard library alone and takes nothing for granted about part names.
"""

import functools
import io
import posixpath
import re
import zipfile
from collections import namedtuple
from urllib.parse import unquote
from xml.etree import ElementTree

Rel = namedtuple("Rel", "id kind target external type")  # kind: the type's last word
Sheet = namedtuple("Sheet", "name sheet_id state part kind")

CONTENT_TYPES = "[Content_Types].xml"


def local(name):
    """The name of an element or attribute without its namespace."""
    return name.rpartition("}")[2]


def namespace(name):
    return name[1:].partition("}")[0] if name.startswith("{") else ""


def is_true(text):
    return text in ("1", "true", "on")


def rels_name(part):
    folder, base = posixpath.split(part)
    return posixpath.join(folder, "_rels", base + ".rels")


def rels_owner(name):
    """The part that a relationship part belongs to; "" is the package."""
    folder, base = posixpath.split(name)
    return posixpath.join(posixpath.dirname(folder), base[:-len(".rels")])


def _plain(name):
    return name.replace("\\", "/").lstrip("/")


class Package:
    def __init__(self, path):
        self.path = path
        with open(path, "rb") as file:
            self.zip = zipfile.ZipFile(io.BytesIO(file.read()))
        entries = [entry for entry in self.zip.infolist() if not entry.filename.endswith("/")]
        self.names = [_plain(entry.orig_filename) for entry in entries]
        self._entries = dict(zip(self.names, entries))
        self._spelling = {}  # of names that differ in case only, the first
        for name in self.names:
            self._spelling.setdefault(name.lower(), name)
        self._trees = {}
        self._rels = {}

    def __contains__(self, name):
        return self.spelling(name) is not None

    def spelling(self, name):
        """A part's name as the zip directory spells it, or None where there is no such part."""
        if name in self._entries:
            return name
        return self._spelling.get(name.lower()) or self._spelling.get(unquote(name).lower())

    def read(self, name):
        return self.zip.read(self._entries[self.spelling(name)])

    def tree(self, name):
        """The part's root element; a part that is not well-formed raises ParseError."""
        key = self.spelling(name)
        if key not in self._trees:
            self._trees[key] = ElementTree.fromstring(self.read(name))
        return self._trees[key]

    @functools.cached_property
    def _types(self):
        defaults, overrides = {}, {}
        for element in self.tree(CONTENT_TYPES):
            if local(element.tag) == "Default":
                defaults[element.get("Extension", "").lower()] = element.get("ContentType", "")
            elif local(element.tag) == "Override":
                name = _plain(element.get("PartName", "")).lower()
                overrides[name] = element.get("ContentType", "")
        return defaults, overrides

    def content_type(self, name):
        """The part's content type, or "" where it has none."""
        defaults, overrides = self._types
        own = overrides.get(name.lower())
        return own if own is not None else defaults.get(name.lower().rpartition(".")[2], "")

    def is_xml(self, name):
        return (name.lower().endswith((".xml", ".rels", ".vml"))
                or self.content_type(name).endswith("xml"))

    def rels(self, part):
        """The relationships of a part ("" is the package), by id."""
        if part not in self._rels:
            self._rels[part] = self._read_rels(part)
        return self._rels[part]

    def _read_rels(self, part):
        name = rels_name(part)
        found = {}
        if name not in self:
            return found
        for element in self.tree(name):
            if local(element.tag) != "Relationship":
                continue
            target = element.get("Target", "")
            external = element.get("TargetMode") == "External"
            if not external and not target.startswith("#"):
                base = posixpath.dirname(part)
                joined = posixpath.normpath(posixpath.join("/", base, _backslashes(target)))
                target = joined.split("#")[0].lstrip("/")
                target = self.spelling(target) or target
            kind = element.get("Type", "").rpartition("/")[2]
            found[element.get("Id", "")] = Rel(element.get("Id", ""), kind, target, external,
                                               element.get("Type", ""))
        return found

    def first_related(self, part, kind):
        return next((rel.target for rel in self.rels(part).values()
                     if rel.kind == kind and not rel.external), None)

    @functools.cached_property
    def workbook(self):
        return self.first_related("", "officeDocument")

    @functools.cached_property
    def properties(self):
        """The part that lists the titles; a strict workbook spells the relationship otherwise."""
        return (self.first_related("", "extended-properties")
                or self.first_related("", "extendedProperties"))

    @functools.cached_property
    def sheets(self):
        """The workbook's sheets in their order, of all kinds."""
        rels = self.rels(self.workbook)
        found = []
        for element in self.tree(self.workbook).iter():
            if local(element.tag) != "sheet" or element.get("sheetId") is None:
                continue
            rid = next((value for key, value in element.attrib.items()
                        if local(key) == "id" and namespace(key)), None)
            rel = rels.get(rid)
            found.append(Sheet(element.get("name"), element.get("sheetId"),
                               element.get("state", "visible"), rel and rel.target,
                               rel.kind if rel else ""))
        return found

    def closure(self, part):
        """The parts that a part reaches by internal relationships, itself first."""
        found, waiting = [], [part]
        while waiting:
            name = waiting.pop(0)
            if name in found or name not in self or name == self.workbook:
                continue
            found.append(name)
            waiting += [rel.target for rel in self.rels(name).values() if not rel.external]
        return found


def _backslashes(target):
    return target.replace("\\", "/")


_CELL = re.compile(r"\$?([A-Za-z]{1,3})\$?(\d+)$")


def column_number(letters):
    number = 0
    for letter in letters.upper():
        number = number * 26 + ord(letter) - 64
    return number


def column_letters(number):
    letters = ""
    while number:
        number, rest = divmod(number - 1, 26)
        letters = chr(65 + rest) + letters
    return letters


def cell_position(text):
    """Row and column of "B6"."""
    match = _CELL.match(text)
    return int(match[2]), column_number(match[1])


def cell_name(position):
    return column_letters(position[1]) + str(position[0])


def area_bounds(text):
    """First row, first column, last row, last column of "A1:C3" or "A1"."""
    first, _, last = text.partition(":")
    top, left = cell_position(first)
    bottom, right = cell_position(last or first)
    return min(top, bottom), min(left, right), max(top, bottom), max(left, right)


def inside(position, bounds):
    return bounds[0] <= position[0] <= bounds[2] and bounds[1] <= position[1] <= bounds[3]
