"""Mutations of the markup of any part: attributes, elements, encodings, entities, blanks."""

import re

import xml_text
from mutation import Kinds, numbers
from one_change import one_change
from xlsx_book import set_text, text_of

KINDS = Kinds()
_NUMBER = re.compile(r"-?\d+(\.\d+)?$")


def _part(book, random):
    """(entry, text, None) of a part with markup; None where there is none."""
    entry = book.any_xml(random)
    return (entry, text_of(entry), None) if entry and entry.data else None


def _elements_by_name(text):
    by_name = {}
    for element in xml_text.elements(text):
        by_name.setdefault(element.name, []).append(element)
    return by_name


def _one_of(by_name, random):
    """What is chosen differs between elements more than between cells: first an element's name,
    then one of that name."""
    return random.choice(by_name[random.choice(sorted(by_name))])


def _element(book, random):
    """(entry, text, an element) or None."""
    chosen = _part(book, random)
    by_name = _elements_by_name(chosen[1]) if chosen else {}
    return (*chosen[:2], _one_of(by_name, random)) if by_name else None


def _attribute(book, random, *, serves=lambda value: True):
    """(entry, text, an attribute whose value serves) or None."""
    chosen = _part(book, random)
    by_name = _elements_by_name(chosen[1]) if chosen else {}
    for _ in range(8 if by_name else 0):
        entry, text, _ = chosen
        found = [attribute for attribute in xml_text.attributes(text, _one_of(by_name, random))
                 if serves(xml_text.value(text, attribute))]
        if found:
            return entry, text, random.choice(found)
    return None


def _number(book, random):
    return _attribute(book, random, serves=_NUMBER.match)


_in_part = one_change(KINDS, _part)
_in_element = one_change(KINDS, _element)
_in_attribute = one_change(KINDS, _attribute)
_in_number = one_change(KINDS, _number)


# ------------------------------------------------------------- attributes

@_in_attribute
def drop_attribute(text, attribute, _random):
    return text[:attribute.start] + text[attribute.end:]


@_in_attribute
def attribute_twice(text, attribute, _random):
    twin = text[attribute.start:attribute.end]
    return text[:attribute.end] + twin + text[attribute.end:]


@_in_number
def attribute_number(text, attribute, random):
    """Enormous, negative, broken and odd numbers."""
    return xml_text.with_value(text, attribute, numbers(random))


@_in_attribute
def attribute_value(text, attribute, random):
    return xml_text.with_value(text, attribute, random.choice((
        "", " ", "A1", "ZZZZ9", "$A$1:$XFD$1048576", "#REF!", "true", "x" * 70000, "&lt;&amp;&gt;",
        "A1:B2 C3", "A1 A1 A1", "\U0001f600", "..", "\u00a0", "'", "]", "[1]Sheet1!A1")))


@_in_attribute
def attribute_as_references(text, attribute, random):
    """The same value in character references: legal everywhere."""
    value = xml_text.value(text, attribute)
    form = random.choice(("&#{};", "&#x{:x};", "&#x0000{:X};"))
    if "&" in value or any("\udc80" <= char <= "\udcff" for char in value):
        return None
    spelled = "".join(form.format(ord(char)) if random.random() < 0.6 else char for char in value)
    return xml_text.with_value(text, attribute, spelled)


@_in_attribute
def bad_reference(text, attribute, random):
    return xml_text.with_value(text, attribute, random.choice((
        "&#0;", "&#x110000;", "&#xD800;", "&unknown;", "&", "&#;", "&#x;", "&#99999999999;",
        "&amp", "&#1;")))


@_in_attribute
def bytes_in_attribute(text, attribute, random):
    """Bytes that are no UTF-8."""
    raw = random.choice((b"\xff", b"\xc3", b"\xed\xa0\x80", b"\xf4\x90\x80\x80", b"\x80",
                         b"\xc0\x80", b"\0", b"\1", b"\xef\xbf\xbf"))
    value = xml_text.value(text, attribute) + raw.decode("utf-8", "surrogateescape")
    return xml_text.with_value(text, attribute, value)


@_in_attribute
def entity(text, attribute, random):
    """A declared entity in an attribute: of a letter, of a file, or of many entities."""
    text = xml_text.with_value(text, attribute, "&e;")
    declared = random.choice((
        '<!ENTITY e "1">', '<!ENTITY e SYSTEM "file:///etc/passwd">',
        "".join(f'<!ENTITY e{i} "{f"&e{i + 1};" * 10}">' for i in range(9))
        + '<!ENTITY e9 "lol"><!ENTITY e "&e0;">', '<!ENTITY e "&e;">'))
    at = text.find("?>") + 2 if text.startswith("<?xml") else 0
    return f"{text[:at]}<!DOCTYPE a [{declared}]>{text[at:]}"


# --------------------------------------------------------------- elements

@_in_element
def drop_element(text, element, _random):
    return text[:element.start] + text[element.end:]


@_in_element
def drop_tag(text, element, random):
    """A start tag without an end tag, or the other way round."""
    end_tag = text.rfind("</", element.open_end, element.end)
    cut = (element.start, element.open_end) if end_tag < 0 or random.random() < 0.5 \
        else (end_tag, element.end)
    return text[:cut[0]] + text[cut[1]:]


@_in_element
def element_twice(text, element, random):
    count = random.choice((1, 1, 2, 50)) if element.end - element.start < 5000 else 1
    twins = text[element.start:element.end] * count
    return text[:element.end] + twins + text[element.end:]


@_in_part
def swap_elements(text, random):
    found = xml_text.elements(text)
    if len(found) < 2:
        return None
    one, other = sorted(random.sample(found, 2), key=lambda element: element.start)
    if one.end > other.start:
        return None
    return (text[:one.start] + text[other.start:other.end] + text[one.end:other.start]
            + text[one.start:one.end] + text[other.end:])


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


@_in_element
def rename_element(text, element, random):
    at = text.find(element.name, element.start)
    new = random.choice(("x", element.name.upper(), element.name[:-1] or "y", "a:b", "row", "c"))
    return text[:at] + new + text[at + len(element.name):]


@_in_element
def nest_deep(text, element, random):
    depth = random.choice((10, 300, 5000, 100_000))
    closed = random.random() < 0.8
    nest = "<a>" * depth + ("</a>" * depth if closed else "")
    return text[:element.open_end] + nest + text[element.open_end:]


@_in_part
def cut_text(text, random):
    return text[:random.randrange(len(text))]


@_in_part
def drop_bytes(text, random):
    at, count = random.randrange(len(text)), random.choice((1, 1, 2, 50))
    return text[:at] + text[at + count:]


# -------------------------------------------------- what means the same

@KINDS
def other_encoding(book, random):
    entry, text, _ = _part(book, random) or (None, "", None)
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


@_in_part
def blanks(text, random):
    """Blanks between elements, and in tags."""
    blank = random.choice((" ", "\n\t ", "\r\n", "\r", " " * 200))
    if len(text) * len(blank) > 4_000_000:
        blank = "\n"
    text = text.replace("/>", blank + "/>") if random.random() < 0.5 else text.replace(
        "><", f">{blank}<")
    return re.sub(r'="', ' = "', text) if random.random() < 0.3 else text


@_in_part
def remarks(text, random):
    """Comments, instructions and CDATA between elements, with markup in them."""
    remark = random.choice(("<!-- <c r='A1'> -->", "<?a b='<row>'?>", "<!---->",
                            "<!-- > ' \" &bad; -->", "<![CDATA[<sheetData>]]>", "<!-- -- -->"))
    places = [match.end() for match in re.finditer(r">(?=<)", text[:200_000])]
    if not places:
        return None
    for at in sorted(random.sample(places, min(len(places), random.choice((1, 3, 100)))),
                     reverse=True):
        text = text[:at] + remark + text[at:]
    return text


@_in_part
def text_as_cdata(text, _random):
    changed = re.sub(r">([^<>&]+)</", r"><![CDATA[\1]]></", text[:xml_text.LONGEST])
    return changed + text[xml_text.LONGEST:]


@_in_part
def single_quotes(text, _random):
    return re.sub(r'="([^"\'<>]*)"', r"='\1'", text)


@_in_part
def other_prefix(text, random):
    """The part's own namespace under a prefix, or under many."""
    prefix = random.choice(("x", "main", "_", "a.b-c", "\u00fc", "xml", "xmlns"))
    text = re.sub(r"<(/?)([A-Za-z_][\w.-]*)(?=[\s/>])", rf"<\1{prefix}:\2", text)
    return text.replace(" xmlns=", f" xmlns:{prefix}=", 1)


@_in_element
def many_namespaces(text, element, random):
    count = random.choice((10, 1000, 10_000))
    at = re.compile(r"<[\w.:-]+").match(text, element.start).end()
    declared = "".join(f' xmlns:n{number}="urn:{number}"' for number in range(count))
    return text[:at] + declared + text[at:]


@_in_part
def other_namespace(text, random):
    found = list(re.finditer(r'xmlns(:\w+)?="([^"]*)"', text))
    if not found:
        return None
    match = random.choice(found)
    new = random.choice(("", "urn:other", match[2] + "/", "http://purl.oclc.org/ooxml/"
                                                          "spreadsheetml/main"))
    return text[:match.start(2)] + new + text[match.end(2):]
