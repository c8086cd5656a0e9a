"""What is wrong with an OOXML package, read by the standard library alone.

A finding is (kind, what it concerns...); it leaves out what differs between a sheet and its copy,
so that damage that was there before is the same finding afterwards.
"""

import hashlib
import io
import posixpath
import zipfile
import zlib
from collections import Counter
from urllib.parse import unquote
from xml.etree import ElementTree
from xml.parsers import expat

import vml

# Of the content of such a part nothing is known; what is wrong with it shows when it is mended.
UNREADABLE = "part cannot be unpacked"
CONTENT_TYPES = "[content_types].xml"
_END, _END_SIZE = b"PK\5\6", 22  # of a directory
_LONGEST = 64 << 20   # bytes of a part that are read
_LONGEST_ALL = 256 << 20


def findings(path):
    """A set of findings; raises where the container itself is not to be read."""
    with _opened(path) as container:
        return set(_Package(container).findings())


def _opened(path):
    """The container; where its directory is empty, by the directory that stands before."""
    with open(path, "rb") as file:
        data = file.read()
    while True:
        container = zipfile.ZipFile(io.BytesIO(data))
        if container.namelist():
            return container
        data = data[:data.rindex(_END) + len(_END) - 1]
        data = data[:data.rindex(_END) + _END_SIZE]  # raises where there is none


def _is_well_formed(data):
    """Whether a part is XML to a reader that does not know about namespaces."""
    try:
        expat.ParserCreate().Parse(data, True)
    except (expat.ExpatError, ValueError, LookupError):
        return False
    return True


def _local(name):
    return name.rpartition("}")[2]


def _plain(name):
    return unquote(name.replace("\\", "/")).lstrip("/").lower()


class _Package:
    def __init__(self, container):
        self.parts, self.found, self.trees = {}, [], {}
        self.drawings = []  # VML: owner and part
        names = Counter()
        left = _LONGEST_ALL
        for entry in container.infolist():
            name = _plain(entry.filename)
            if name.endswith("/"):
                continue
            names[name] += 1
            data = self._read(container, entry, name, min(left, _LONGEST))
            left -= len(data or b"")
            self.parts.setdefault(name, data)
        self.found += [("part twice in the container", name)
                       for name, count in names.items() if count > 1]

    def _read(self, container, entry, name, longest):
        try:
            with container.open(entry) as file:
                data = file.read(longest + 1)
        except (zipfile.BadZipFile, zlib.error, NotImplementedError, RuntimeError, EOFError,
                OSError, ValueError) as error:
            self.found.append((UNREADABLE, name, type(error).__name__))
            return None
        if len(data) > longest:
            raise MemoryError
        return data

    def findings(self):
        yield from self.found
        yield from self._ill_formed()
        yield from self._types()
        for name in list(self.trees):
            if name.endswith(".rels"):
                yield from self._relationships(name)
        yield from self._workbook()
        yield from self._tables()
        yield from self._shapes()

    def _is_xml(self, name):
        return name.endswith((".xml", ".rels", ".vml"))

    def _ill_formed(self):
        """A damaged part that is as it was is no new finding, wherever a copy of it lies."""
        for name, data in self.parts.items():
            if data is None or not self._is_xml(name):
                continue
            extension = posixpath.splitext(name)[1]
            try:
                self.trees[name] = ElementTree.fromstring(data)
            except (SyntaxError, ValueError, LookupError):
                if _is_well_formed(data):
                    yield "prefix without a namespace", extension
                else:
                    digest = hashlib.sha256(vml.neutral(data)).hexdigest()
                    yield "not well-formed", extension, digest[:12]

    def _types(self):
        root = self.trees.get(CONTENT_TYPES)
        if root is None:
            if CONTENT_TYPES not in self.parts:
                yield ("no content types",)
            return
        defaults, overrides = Counter(), Counter()
        for element in root:
            if _local(element.tag) == "Default":
                defaults[element.get("Extension", "").lower()] += 1
            elif _local(element.tag) == "Override":
                overrides[_plain(element.get("PartName", ""))] += 1
        for part, count in overrides.items():
            if count > 1:
                yield "type twice", part
            if part not in self.parts:
                yield "type of nothing", part
        yield from (("type of an extension twice", name)
                    for name, count in defaults.items() if count > 1)
        yield from (("part without a type", posixpath.splitext(part)[1]) for part in self.parts
                    if part != CONTENT_TYPES and part not in overrides
                    and part.rpartition(".")[2] not in defaults)

    def _relationships(self, name):
        folder, base = posixpath.split(name)
        owner = posixpath.join(posixpath.dirname(folder), base[:-len(".rels")])
        ids = Counter()
        for element in self.trees[name]:
            if _local(element.tag) != "Relationship":
                continue
            ids[element.get("Id")] += 1
            target = element.get("Target", "")
            if element.get("TargetMode") == "External" or target.startswith("#"):
                continue
            target = self._target(owner, target)
            if target.endswith(".vml"):
                self.drawings.append((owner, target))
            if target not in self.parts:
                yield "link to nothing", element.get("Type", "").rpartition("/")[2], target
        kind = "" if not owner else posixpath.basename(posixpath.dirname(owner))
        yield from (("link id twice", kind, number) for number, count in ids.items() if count > 1)
        if owner and owner not in self.parts:
            yield "relationships of nothing", owner

    def _target(self, owner, target):
        joined = posixpath.join("/", posixpath.dirname(owner), target.replace("\\", "/"))
        return _plain(posixpath.normpath(joined.partition("#")[0]))

    def _workbook(self):
        for tree in self.trees.values():
            if _local(tree.tag) == "workbook":
                yield from _workbook_findings(tree)

    def _tables(self):
        roots = [tree for tree in self.trees.values() if _local(tree.tag) == "table"]
        for attribute in ("id", "displayName"):
            counted = Counter((tree.get(attribute) or "").lower() for tree in roots)
            if any(count > 1 for count in counted.values()):
                yield "table twice", attribute  # its copies have that in common

    def _shapes(self):
        """A block belongs to one drawing; many writers give those of one sheet the same."""
        owners = {}
        for owner, target in self.drawings:
            for block in vml.blocks(self.parts.get(target) or b""):
                owners.setdefault(block, set()).add(owner)
        if any(len(sheets) > 1 for sheets in owners.values()):
            yield ("block of shapes twice",)


def _workbook_findings(tree):
    sheets = [element for element in tree.iter() if _local(element.tag) == "sheet"]
    for attribute in ("name", "sheetId"):
        counted = Counter((sheet.get(attribute) or "").casefold() for sheet in sheets)
        yield from ((f"sheet {attribute} twice", value)
                    for value, count in counted.items() if count > 1)
    if not sheets:
        yield ("no sheets",)
    names = Counter(((name.get("name") or "").casefold(), name.get("localSheetId"))
                    for name in tree.iter() if _local(name.tag) == "definedName")
    yield from (("defined name twice", name) for (name, _), count in names.items() if count > 1)
    yield from (("defined name of no sheet", name) for name, scope in names
                if scope is not None and not (scope.strip().isdigit()
                                              and int(scope) < len(sheets)))
