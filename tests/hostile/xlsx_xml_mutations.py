"""Mutations of the markup of any part: attributes, elements, encodings, entities, blanks."""

import re

import xml_text
from mutation import Kinds, numbers
from xlsx_book import set_text, text_of

KINDS = Kinds()
_NUMBER = re.compile(r"-?\d+(\.\d+)?$")


def _part(book, random):
    """(entry, text) of a part with markup, or (None, "")."""
    entry = book.any_xml(random)
    return (entry, text_of(entry)) if entry else (None, "")


def _attribute(book, random, *, numeric=False):
    """(entry, text, an attribute) or None. What is chosen differs between elements more than
    between cells: first an element's name, then one of that name."""
    entry, text = _part(book, random)
    by_name = {}
    for element in xml_text.elements(text):
        by_name.setdefault(element.name, []).append(element)
    for _ in range(8 if by_name else 0):
        element = random.choice(by_name[random.choice(sorted(by_name))])
        found = [attribute for attribute in xml_text.attributes(text, element)
                 if not numeric or _NUMBER.match(xml_text.value(text, attribute))]
        if found:
            return entry, text, random.choice(found)
    return None


def _element(book, random):
    entry, text = _part(book, random)
    by_name = {}
    for element in xml_text.elements(text):
        by_name.setdefault(element.name, []).append(element)
    if not by_name:
        return None
    return entry, text, random.choice(by_name[random.choice(sorted(by_name))])


def _told(entry, text, attribute):
    return f"{entry.text_name} {text[attribute.start:attribute.end][:60].strip()}"


# ------------------------------------------------------------- attributes

@KINDS
def drop_attribute(book, random):
    chosen = _attribute(book, random)
    if chosen is None:
        return None
    entry, text, attribute = chosen
    set_text(entry, text[:attribute.start] + text[attribute.end:])
    return _told(entry, text, attribute)


@KINDS
def attribute_twice(book, random):
    chosen = _attribute(book, random)
    if chosen is None:
        return None
    entry, text, attribute = chosen
    twin = text[attribute.start:attribute.end]
    set_text(entry, text[:attribute.end] + twin + text[attribute.end:])
    return _told(entry, text, attribute)


@KINDS
def attribute_number(book, random):
    """Enormous, negative, broken and odd numbers."""
    chosen = _attribute(book, random, numeric=True)
    if chosen is None:
        return None
    entry, text, attribute = chosen
    set_text(entry, xml_text.with_value(text, attribute, numbers(random)))
    return _told(entry, text, attribute)


@KINDS
def attribute_value(book, random):
    chosen = _attribute(book, random)
    if chosen is None:
        return None
    entry, text, attribute = chosen
    set_text(entry, xml_text.with_value(text, attribute, random.choice((
        "", " ", "A1", "ZZZZ9", "$A$1:$XFD$1048576", "#REF!", "true", "x" * 70000, "&lt;&amp;&gt;",
        "A1:B2 C3", "A1 A1 A1", "\U0001f600", "..", "\u00a0", "'", "]", "[1]Sheet1!A1"))))
    return _told(entry, text, attribute)


@KINDS
def attribute_as_references(book, random):
    """The same value in character references: legal everywhere."""
    chosen = _attribute(book, random)
    if chosen is None:
        return None
    entry, text, attribute = chosen
    value = xml_text.value(text, attribute)
    form = random.choice(("&#{};", "&#x{:x};", "&#x0000{:X};"))
    if "&" in value or any("\udc80" <= char <= "\udcff" for char in value):
        return None
    spelled = "".join(form.format(ord(char)) if random.random() < 0.6 else char for char in value)
    set_text(entry, xml_text.with_value(text, attribute, spelled))
    return _told(entry, text, attribute)


@KINDS
def bad_reference(book, random):
    chosen = _attribute(book, random)
    if chosen is None:
        return None
    entry, text, attribute = chosen
    set_text(entry, xml_text.with_value(text, attribute, random.choice((
        "&#0;", "&#x110000;", "&#xD800;", "&unknown;", "&", "&#;", "&#x;", "&#99999999999;",
        "&amp", "&#1;"))))
    return _told(entry, text, attribute)


@KINDS
def bytes_in_attribute(book, random):
    """Bytes that are no UTF-8."""
    chosen = _attribute(book, random)
    if chosen is None:
        return None
    entry, text, attribute = chosen
    raw = random.choice((b"\xff", b"\xc3", b"\xed\xa0\x80", b"\xf4\x90\x80\x80", b"\x80",
                         b"\xc0\x80", b"\0", b"\1", b"\xef\xbf\xbf"))
    value = xml_text.value(text, attribute) + raw.decode("utf-8", "surrogateescape")
    set_text(entry, xml_text.with_value(text, attribute, value))
    return _told(entry, text, attribute)


@KINDS
def entity(book, random):
    """A declared entity in an attribute: of a letter, of a file, or of many entities."""
    chosen = _attribute(book, random)
    if chosen is None:
        return None
    entry, text, attribute = chosen
    text = xml_text.with_value(text, attribute, "&e;")
    declared = random.choice((
        '<!ENTITY e "1">', '<!ENTITY e SYSTEM "file:///etc/passwd">',
        "".join(f'<!ENTITY e{i} "{f"&e{i + 1};" * 10}">' for i in range(9))
        + '<!ENTITY e9 "lol"><!ENTITY e "&e0;">', '<!ENTITY e "&e;">'))
    at = text.find("?>") + 2 if text.startswith("<?xml") else 0
    set_text(entry, f"{text[:at]}<!DOCTYPE a [{declared}]>{text[at:]}")
    return entry.text_name


# --------------------------------------------------------------- elements

@KINDS
def drop_element(book, random):
    chosen = _element(book, random)
    if chosen is None:
        return None
    entry, text, element = chosen
    set_text(entry, text[:element.start] + text[element.end:])
    return f"{entry.text_name} {element.name}"


@KINDS
def drop_tag(book, random):
    """A start tag without an end tag, or the other way round."""
    chosen = _element(book, random)
    if chosen is None:
        return None
    entry, text, element = chosen
    end_tag = text.rfind("</", element.open_end, element.end)
    cut = (element.start, element.open_end) if end_tag < 0 or random.random() < 0.5 \
        else (end_tag, element.end)
    set_text(entry, text[:cut[0]] + text[cut[1]:])
    return f"{entry.text_name} {element.name}"


@KINDS
def element_twice(book, random):
    chosen = _element(book, random)
    if chosen is None:
        return None
    entry, text, element = chosen
    count = random.choice((1, 1, 2, 50)) if element.end - element.start < 5000 else 1
    twins = text[element.start:element.end] * count
    set_text(entry, text[:element.end] + twins + text[element.end:])
    return f"{entry.text_name} {element.name} {count}"


@KINDS
def swap_elements(book, random):
    entry, text = _part(book, random)
    found = xml_text.elements(text)
    if len(found) < 2:
        return None
    one, other = sorted(random.sample(found, 2), key=lambda element: element.start)
    if one.end > other.start:
        return None
    set_text(entry, text[:one.start] + text[other.start:other.end] + text[one.end:other.start]
             + text[one.start:one.end] + text[other.end:])
    return f"{entry.text_name} {one.name} and {other.name}"


@KINDS
def move_element(book, random):
    """An element into another, or to another part."""
    chosen, target = _element(book, random), _element(book, random)
    if chosen is None or target is None:
        return None
    entry, text, element = chosen
    moved = text[element.start:element.end][:100_000]
    other, into, place = target
    if other is entry and element.start < place.open_end <= element.end:
        return None
    set_text(other, into[:place.open_end] + moved + into[place.open_end:])
    return f"{entry.text_name} {element.name} to {other.text_name} {place.name}"


@KINDS
def rename_element(book, random):
    chosen = _element(book, random)
    if chosen is None:
        return None
    entry, text, element = chosen
    at = text.find(element.name, element.start)
    new = random.choice(("x", element.name.upper(), element.name[:-1] or "y", "a:b", "row", "c"))
    set_text(entry, text[:at] + new + text[at + len(element.name):])
    return f"{entry.text_name} {element.name} as {new}"


@KINDS
def nest_deep(book, random):
    chosen = _element(book, random)
    if chosen is None:
        return None
    entry, text, element = chosen
    depth = random.choice((10, 300, 5000, 100_000))
    closed = random.random() < 0.8
    nest = "<a>" * depth + ("</a>" * depth if closed else "")
    set_text(entry, text[:element.open_end] + nest + text[element.open_end:])
    return f"{entry.text_name} {element.name} {depth}"


@KINDS
def cut_text(book, random):
    entry, text = _part(book, random)
    if not text:
        return None
    set_text(entry, text[:random.randrange(len(text))])
    return entry.text_name


@KINDS
def drop_bytes(book, random):
    entry, text = _part(book, random)
    if not text:
        return None
    at, count = random.randrange(len(text)), random.choice((1, 1, 2, 50))
    set_text(entry, text[:at] + text[at + count:])
    return f"{entry.text_name} {count}"


# -------------------------------------------------- what means the same

@KINDS
def other_encoding(book, random):
    entry, text = _part(book, random)
    if not text or "\udc80" <= max(text) <= "\udcff":
        return None
    bare = re.sub(r"^<\?xml[^>]*\?>", "", text.lstrip("\ufeff"))
    name, codec = random.choice((("UTF-16", "utf-16"), ("UTF-16BE", "utf-16-be"),
                                 ("UTF-16", "utf-16-le"), ("UTF-8", "utf-8-sig"),
                                 ("ISO-8859-1", "latin-1"), ("UTF-16", "utf-8"),
                                 ("UTF-8", "latin-1"), ("unheard-of", "utf-8"),
                                 ("UTF-32", "utf-32"), ("windows-1252", "cp1252"), ("", "utf-16")))
    declaration = f'<?xml version="1.0" encoding="{name}"?>' if name else ""
    entry.data = (declaration + bare).encode(codec, "replace")
    return f"{entry.text_name} {name} in {codec}"


@KINDS
def blanks(book, random):
    """Blanks between elements, and in tags."""
    entry, text = _part(book, random)
    if not text:
        return None
    blank = random.choice((" ", "\n\t ", "\r\n", "\r", " " * 200))
    if len(text) * len(blank) > 4_000_000:
        blank = "\n"
    text = text.replace("/>", blank + "/>") if random.random() < 0.5 else text.replace(
        "><", f">{blank}<")
    set_text(entry, re.sub(r'="', ' = "', text) if random.random() < 0.3 else text)
    return f"{entry.text_name} {blank[:5]!r}"


@KINDS
def remarks(book, random):
    """Comments, instructions and CDATA between elements, with markup in them."""
    entry, text = _part(book, random)
    remark = random.choice(("<!-- <c r='A1'> -->", "<?a b='<row>'?>", "<!---->",
                            "<!-- > ' \" &bad; -->", "<![CDATA[<sheetData>]]>", "<!-- -- -->"))
    if not text:
        return None
    places = [match.end() for match in re.finditer(r">(?=<)", text[:200_000])]
    if not places:
        return None
    for at in sorted(random.sample(places, min(len(places), random.choice((1, 3, 100)))),
                     reverse=True):
        text = text[:at] + remark + text[at:]
    set_text(entry, text)
    return f"{entry.text_name} {remark}"


@KINDS
def text_as_cdata(book, random):
    entry, text = _part(book, random)
    if not text:
        return None
    changed = re.sub(r">([^<>&]+)</", r"><![CDATA[\1]]></", text[:xml_text.LONGEST])
    set_text(entry, changed + text[xml_text.LONGEST:])
    return entry.text_name


@KINDS
def single_quotes(book, random):
    entry, text = _part(book, random)
    if not text:
        return None
    set_text(entry, re.sub(r'="([^"\'<>]*)"', r"='\1'", text))
    return entry.text_name


@KINDS
def other_prefix(book, random):
    """The part's own namespace under a prefix, or under many."""
    entry, text = _part(book, random)
    if not text:
        return None
    prefix = random.choice(("x", "main", "_", "a.b-c", "\u00fc", "xml", "xmlns"))
    text = re.sub(r"<(/?)([A-Za-z_][\w.-]*)(?=[\s/>])", rf"<\1{prefix}:\2", text)
    set_text(entry, text.replace(" xmlns=", f" xmlns:{prefix}=", 1))
    return f"{entry.text_name} {prefix}"


@KINDS
def many_namespaces(book, random):
    chosen = _element(book, random)
    if chosen is None:
        return None
    entry, text, element = chosen
    count = random.choice((10, 1000, 10_000))
    at = re.compile(r"<[\w.:-]+").match(text, element.start).end()
    declared = "".join(f' xmlns:n{number}="urn:{number}"' for number in range(count))
    set_text(entry, text[:at] + declared + text[at:])
    return f"{entry.text_name} {count}"


@KINDS
def other_namespace(book, random):
    entry, text = _part(book, random)
    found = list(re.finditer(r'xmlns(:\w+)?="([^"]*)"', text))
    if not found:
        return None
    match = random.choice(found)
    new = random.choice(("", "urn:other", match[2] + "/", "http://purl.oclc.org/ooxml/"
                                                          "spreadsheetml/main"))
    set_text(entry, text[:match.start(2)] + new + text[match.end(2):])
    return f"{entry.text_name} {match[2][-40:]}"
