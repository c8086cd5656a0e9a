"""Mutations of the package: parts, their types, and the relationships between them."""

import posixpath

import xml_text
from mutation import Kinds
from one_change import one_change
from xlsx_book import set_text, text_of
from xlsx_zip_mutations import spellings

KINDS = Kinds()
RELATIONSHIPS = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
DRAWING_TYPE = "application/vnd.openxmlformats-officedocument.drawing+xml"
_LINK_KINDS = ("drawing", "table", "chart", "comments", "worksheet", "theme", "styles", "oleObject",
               "image", "vmlDrawing", "sharedStrings", "calcChain", "hyperlink", "customXml",
               "ctrlProp", "printerSettings", "package", "pivotTable", "unheard-of")


def _some_rels(book, random):
    kinds = [kind for kind in ("workbook rels", "sheet rels", "sheet rels", "rels")
             if book.of_kind(kind)]
    return book.one(random, random.choice(kinds)) if kinds else None


def _link(book, random):
    """(entry, text, a relationship); None where there is none."""
    entry = _some_rels(book, random)
    if entry is None:
        return None
    text = text_of(entry)
    found = xml_text.elements(text, "Relationship")
    return (entry, text, random.choice(found)) if found else None


_in_link = one_change(KINDS, _link)


def owner_of(rels):
    """The name of the part that a part of relationships belongs to."""
    folder, base = posixpath.split(rels.text_name)
    return posixpath.join(posixpath.dirname(folder), base.removesuffix(".rels"))


def _set_link(book, random, name, make):
    """Gives an attribute of a relationship the value that `make(old, owner)` gives."""
    chosen = _link(book, random)
    if chosen is None:
        return None
    entry, text, link = chosen
    old = xml_text.attribute(text, link, name)
    new = make(xml_text.value(text, old) if old else "", owner_of(entry))
    set_text(entry, xml_text.set_attribute(text, link, name, new))
    return f"{entry.text_name} {new[:40]}"


def add_link(book, part, number, kind, target, mode=""):
    rels = book.rels_of(part)
    link = f'<Relationship Id="{number}" Type="{RELATIONSHIPS}{kind}" Target="{target}"{mode}/>'
    rels.data = rels.data.replace(b"</Relationships>", link.encode() + b"</Relationships>")


# ------------------------------------------------------------------ parts

@KINDS
def drop_part(book, random):
    entry = random.choice(book.entries) if book.entries else None
    if entry is None:
        return None
    book.entries.remove(entry)
    return entry.text_name


@KINDS
def drop_what_is_linked(book, random):
    """A part that something leads to is gone, with its type or without."""
    chosen = _link(book, random)
    if chosen is None:
        return None
    entry, text, link = chosen
    target = xml_text.attribute(text, link, "Target")
    base = posixpath.basename(xml_text.value(text, target)) if target else ""
    gone = [part for part in book.entries if posixpath.basename(part.text_name) == base]
    if not gone:
        return None
    book.entries.remove(gone[0])
    if random.random() < 0.5:
        _drop_override(book, gone[0].text_name)
    return gone[0].text_name


def _drop_override(book, name):
    types = book.types()
    text = text_of(types) if types else ""
    for element in xml_text.elements(text, "Override"):
        part = xml_text.attribute(text, element, "PartName")
        if part and xml_text.value(text, part).lstrip("/") == name:
            set_text(types, text[:element.start] + text[element.end:])
            return


@KINDS
def empty_part(book, random):
    entry = book.any_xml(random)
    if entry is None:
        return None
    entry.data = random.choice((b"", b" ", b"\0", b"<a/>", b"<?xml version='1.0'?>",
                                b"\xef\xbb\xbf"))
    return entry.text_name


@KINDS
def random_part(book, random):
    entry = book.any_xml(random)
    if entry is None:
        return None
    entry.data = random.randbytes(random.choice((1, 100, 10000)))
    return entry.text_name


@KINDS
def swap_parts(book, random):
    one, other = book.any_xml(random), book.any_xml(random)
    if one is None or one is other:
        return None
    one.data, other.data = other.data, one.data
    return f"{one.text_name} and {other.text_name}"


@KINDS
def rename_part(book, random):
    """A part under another name; what leads to it keeps the old one."""
    entry = book.any_xml(random)
    if entry is None:
        return None
    old = entry.text_name
    entry.name = posixpath.join(posixpath.dirname(old), "other.xml").encode()
    return old


# ---------------------------------------------------------- relationships

@_in_link
def drop_link(text, link, _random):
    return text[:link.start] + text[link.end:]


@_in_link
def link_twice(text, link, random):
    twin = text[link.start:link.end]
    if random.random() < 0.5:
        number = xml_text.attribute(text, link, "Id")
        if number:
            twin = twin.replace(xml_text.value(text, number), "rIdTwin", 1)
    return text[:link.end] + twin + text[link.end:]


@KINDS
def link_id_twice(book, random):
    entry = _some_rels(book, random)
    text = text_of(entry) if entry else ""
    found = xml_text.elements(text, "Relationship")
    if len(found) < 2:
        return None
    one, other = random.sample(found, 2)
    number = xml_text.attribute(text, one, "Id")
    if number is None:
        return None
    set_text(entry, xml_text.set_attribute(text, other, "Id", xml_text.value(text, number)))
    return entry.text_name


@KINDS
def link_to_nothing(book, random):
    return _set_link(book, random, "Target", lambda old, owner: random.choice(
        ("nothing.xml", "../nothing/nothing.xml", "", "/", "..", "#", "#Sheet1!A1",
         "../../../../../etc/passwd", "\\nothing", "nothing%00.xml", "x" * 5000)))


@KINDS
def link_to_owner(book, random):
    """A cycle of one part."""
    return _set_link(book, random, "Target", lambda old, owner: "/" + owner)


@KINDS
def link_elsewhere(book, random):
    other = book.any_xml(random)
    if other is None:
        return None
    return _set_link(book, random, "Target", lambda old, owner: "/" + other.text_name)


@KINDS
def spell_link_otherwise(book, random):
    return _set_link(book, random, "Target", lambda old, owner: random.choice(
        (*spellings(old.encode("utf-8", "surrogateescape"), random), old.swapcase().encode(
            "utf-8", "surrogateescape"))).decode("utf-8", "surrogateescape"))


@KINDS
def link_kind(book, random):
    return _set_link(book, random, "Type",
                     lambda old, owner: RELATIONSHIPS + random.choice(_LINK_KINDS))


@KINDS
def link_mode(book, random):
    return _set_link(book, random, "TargetMode",
                     lambda old, owner: random.choice(("External", "Internal", "", "external")))


@KINDS
def link_id(book, random):
    return _set_link(book, random, "Id", lambda old, owner: random.choice(
        ("", "rId1", "rId0", "rId99999999999", old.lower(), old + " ", "\u00fc", "1", "x" * 300)))


@KINDS
def add_some_link(book, random):
    """A sheet owns another part: a sheet, the workbook, itself, the strings, or one of its own."""
    sheet, target = book.one(random, "sheet"), book.any_xml(random)
    if sheet is None or target is None:
        return None
    add_link(book, sheet, "rIdMore", random.choice(_LINK_KINDS), "/" + target.text_name,
             random.choice(("", "", "", ' TargetMode="External"')))
    return f"{sheet.text_name} to {target.text_name}"


@KINDS
def many_links(book, random):
    sheet = book.one(random, "sheet")
    if sheet is None:
        return None
    count = random.choice((100, 1000, 3000))
    target = random.choice(("nothing.xml", "/" + sheet.text_name))
    for number in range(count):
        add_link(book, sheet, f"rIdMany{number}", "hyperlink" if number % 2 else "drawing", target)
    return f"{sheet.text_name} {count}"


# -------------------------------------------------------------- ownership

@KINDS
def chain(book, random):
    """Parts of which each owns the next; the last may own the first."""
    sheet = book.one(random, "sheet")
    if sheet is None:
        return None
    count, is_ring = random.choice((2, 10, 100, 600)), random.random() < 0.5
    add_chain(book, sheet, count, is_ring)
    return f"{sheet.text_name} {count}{' ring' if is_ring else ''}"


def add_chain(book, sheet, count, is_ring):
    add_link(book, sheet, "rIdChain", "drawing", "/xl/drawings/chain0.xml")
    for number in range(count):
        name = f"xl/drawings/chain{number}.xml"
        book.add(name, b'<xdr:wsDr xmlns:xdr="http://schemas.openxmlformats.org/drawingml/2006/'
                       b'spreadsheetDrawing"/>')
        book.add_type(name, DRAWING_TYPE)
        following = number + 1 if number + 1 < count else 0
        if following or is_ring:
            add_link(book, book.entries[-1], "rId1", "drawing", f"chain{following}.xml")


@KINDS
def one_part_in_many_spellings(book, random):
    sheet = book.one(random, "sheet")
    owned = book.any_xml(random)
    if sheet is None or owned is None:
        return None
    name, count = owned.text_name, random.choice((3, 20, 200))
    for number in range(count):
        letters = [letter.upper() if number >> index & 1 else letter
                   for index, letter in enumerate(name)]
        add_link(book, sheet, f"rIdSpelled{number}", random.choice(_LINK_KINDS),
                 "/" + "".join(letters))
    return f"{name} {count}"


# ------------------------------------------------------------------ types

def _type(book, random):
    types = book.types()
    text = text_of(types) if types else ""
    found = xml_text.elements(text, "Override", "Default")
    return (types, text, random.choice(found)) if found else None


_in_type = one_change(KINDS, _type)


@_in_type
def drop_type(text, element, _random):
    return text[:element.start] + text[element.end:]


@_in_type
def type_twice(text, element, random):
    twin = text[element.start:element.end]
    if random.random() < 0.5:
        twin = twin.replace("+xml", "+other+xml")
    return text[:element.end] + twin + text[element.end:]


@KINDS
def type_of_nothing(book, random):
    book.add_type("xl/nothing.xml", random.choice((
        DRAWING_TYPE, "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml",
        "application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml")))
    return "xl/nothing.xml"


@_in_type
def other_type(text, element, random):
    other = random.choice(xml_text.elements(text, "Override", "Default"))
    given = xml_text.attribute(text, other, "ContentType")
    new = xml_text.value(text, given) if given and random.random() < 0.7 else \
        random.choice(("", "text/plain", "application/vnd.ms-excel.sheet.binary.macroEnabled.main"))
    return xml_text.set_attribute(text, element, "ContentType", new)


@_in_type
def other_part_of_type(text, element, random):
    found = xml_text.attribute(text, element, "PartName")
    if found is None:
        return None
    old = xml_text.value(text, found)
    new = random.choice((old.upper(), old.lstrip("/"), "/" + old, old + "x", "", "/",
                         *(name.decode("utf-8", "replace")
                           for name in spellings(old.encode("utf-8", "replace"), random))))
    return xml_text.with_value(text, found, new)
