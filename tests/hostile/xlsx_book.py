"""An .xlsx workbook that is mutated: its parts, and which of them are what."""

import posixpath
import re

from zip_container import Entry, read_container

_KINDS = (("types", re.compile(r"^\[content_types\]\.xml$", re.I)),
          ("workbook rels", re.compile(r"workbook[^/]*\.xml\.rels$", re.I)),
          ("sheet rels", re.compile(r"worksheets/_rels/[^/]*\.rels$", re.I)),
          ("rels", re.compile(r"\.rels$", re.I)),
          ("workbook", re.compile(r"(^|/)workbook[^/]*\.xml$", re.I)),
          ("sheet", re.compile(r"worksheets/[^/]*\.xml$", re.I)),
          ("strings", re.compile(r"sharedstrings[^/]*\.xml$", re.I)),
          ("styles", re.compile(r"styles[^/]*\.xml$", re.I)),
          ("table", re.compile(r"tables/[^/]*\.xml$", re.I)),
          ("vml", re.compile(r"\.vml$", re.I)),
          ("xml", re.compile(r"\.xml$", re.I)),
          ("other", re.compile("")))

# How often a kind is chosen when any XML part serves: what the program writes more often.
_WEIGHTS = {"types": 2, "workbook rels": 2, "sheet rels": 3, "rels": 1, "workbook": 4, "sheet": 5,
            "strings": 2, "styles": 1, "table": 3, "vml": 1, "xml": 3}


def kind_of(name):
    plain = name.replace("\\", "/")
    return next(kind for kind, pattern in _KINDS if pattern.search(plain))


class XlsxBook:
    def __init__(self, path):
        self.container = read_container(path)

    @property
    def entries(self):
        return self.container.entries

    def to_bytes(self):
        return self.container.to_bytes()

    def of_kind(self, *kinds):
        return [entry for entry in self.entries if kind_of(entry.text_name) in kinds]

    def any_xml(self, random):
        """A part with markup; None where there is none."""
        kinds = [kind for kind in _WEIGHTS if self.of_kind(kind)]
        if not kinds:
            return None
        kind = random.choices(kinds, [_WEIGHTS[kind] for kind in kinds])[0]
        return random.choice(self.of_kind(kind))

    def one(self, random, *kinds):
        found = self.of_kind(*kinds)
        return random.choice(found) if found else None

    def find(self, name):
        return next((entry for entry in self.entries if entry.text_name == name), None)

    def add(self, name, data):
        self.entries.append(Entry(name.encode(), data))

    def types(self):
        return next(iter(self.of_kind("types")), None)

    def add_type(self, name, content_type):
        types = self.types()
        if types:
            types.data = types.data.replace(
                b"</Types>", f'<Override PartName="/{name}" ContentType="{content_type}"/>'
                             "</Types>".encode())

    def rels_of(self, part):
        """The entry of a part's relationships, made where there is none."""
        folder, base = posixpath.split(part.text_name)
        name = posixpath.join(folder, "_rels", base + ".rels")
        found = self.find(name)
        if found is None:
            self.add(name, b'<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/'
                           b'relationships"></Relationships>')
            found = self.entries[-1]
        return found


def text_of(entry):
    """A part's text; bytes that are no UTF-8 come back as they were."""
    return entry.data.decode("utf-8", "surrogateescape")


def set_text(entry, text):
    entry.data = text.encode("utf-8", "surrogateescape")
