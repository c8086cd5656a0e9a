"""Places in the text of an XML part: elements and attributes, found without a parser so that the
rest of the text stays as it is."""

import re
from typing import NamedTuple

_TAG = re.compile(r"<(/?)([A-Za-z_][\w.:-]*)((?:[^<>\"']|\"[^\"]*\"|'[^']*')*?)(/?)>")
_ATTRIBUTE = re.compile(r"\s([\w.:-]+)\s*=\s*(\"[^\"]*\"|'[^']*')")
LONGEST = 400_000  # characters of a part that are searched


class Element(NamedTuple):
    name: str      # without its prefix
    start: int
    open_end: int  # behind its start tag
    end: int       # behind the element


class Attribute(NamedTuple):
    name: str
    start: int     # of the blank before it
    end: int
    value_start: int
    value_end: int


def elements(text, *names):
    """The elements of these names (all without names), in the order of their end."""
    found, opened = [], []
    for tag in _TAG.finditer(text, 0, LONGEST):
        name = tag[2].rpartition(":")[2]
        if tag[1]:
            if opened and opened[-1][0] == name:
                _, start, open_end = opened.pop()
                found.append(Element(name, start, open_end, tag.end()))
        elif tag[4]:
            found.append(Element(name, tag.start(), tag.end(), tag.end()))
        else:
            opened.append((name, tag.start(), tag.end()))
    return [element for element in found if not names or element.name in names]


def attributes(text, element):
    """The attributes of an element's start tag."""
    return [Attribute(match[1], match.start(), match.end(), match.start(2) + 1, match.end(2) - 1)
            for match in _ATTRIBUTE.finditer(text, element.start, element.open_end)]


def attribute(text, element, name):
    """The attribute of that name (without prefix), or None."""
    return next((found for found in attributes(text, element)
                 if found.name.rpartition(":")[2] == name), None)


def value(text, found):
    return text[found.value_start:found.value_end]


def with_value(text, found, new):
    return text[:found.value_start] + new + text[found.value_end:]


def set_attribute(text, element, name, new):
    """The text with another value of an attribute, which is added where it is missing."""
    found = attribute(text, element, name)
    if found:
        return with_value(text, found, new)
    at = re.compile(r"<[\w.:-]+").match(text, element.start).end()
    return f'{text[:at]} {name}="{new}"{text[at:]}'
