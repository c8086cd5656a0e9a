"""Tables ("lists") of .xls sheets ([MS-XLS] 2.4.113 to 2.4.116): their ids and names."""

import re
import struct
from collections import Counter
from typing import NamedTuple

import xls_book as biff

_HEADER, _LIST, _FILTER, _SORT = 0x871, 0x877, 0x87E, 0x895
_TABLES = (0x872, 0x878)
KINDS = {_HEADER, _LIST, _FILTER, _SORT, *_TABLES}
_ID, _NAME, _NEXT = "id", "name", "next id"
_IS_NAME = re.compile(r"[^\W\d][\w.]{0,254}$")


class Field(NamedTuple):
    """A part of a record that a copy of a table has of its own."""

    what: str
    start: int
    end: int
    value: object


def fields(record):
    """The record's own parts, in order; none where it is too short for them."""
    try:
        return list(_fields(record.type, record.data))
    except struct.error:
        return []


def _fields(kind, data):
    if kind == _HEADER:
        yield _number(_NEXT, data, 23)
    elif kind in _TABLES:
        table = 27 + 8 * struct.unpack_from("<H", data, 19)[0]
        yield _number(_ID, data, table + 4)
        yield _text(data, table + struct.unpack_from("<I", data, table + 20)[0])
    elif kind == _LIST:
        yield _number(_ID, data, 14)
        if struct.unpack_from("<H", data, 12)[0] == 2:
            yield _text(data, 18)
    elif kind == _FILTER:
        yield _number(_ID, data, 40)
    elif kind == _SORT and struct.unpack_from("<H", data, 12)[0] >> 3 & 7 == 1:
        yield _number(_ID, data, 34)


def _number(what, data, at):
    return Field(what, at, at + 4, struct.unpack_from("<I", data, at)[0])


def _text(data, at):
    count, wide = struct.unpack_from("<HB", data, at)
    text, end = biff.unicode_text(data, at + 3, count, wide & 1)
    return Field(_NAME, at, end, text)


def neutral(record):
    """The record's data without its own parts."""
    parts, at = [], 0
    for field in fields(record):
        parts.append(record.data[at:field.start])
        at = field.end
    return *parts, record.data[at:]


def identities(sheet):
    """(type of the record, what, value) of every such part of a sheet."""
    return [(record.type, field.what, field.value) for record in sheet.own
            if record.type in KINDS for field in fields(record)]


def _ordered(found):
    """Ids and names as they come: whoever names the first table names the first."""
    order = {}
    return [(kind, what, order.setdefault((what, value), len(order)))
            for kind, what, value in found if what != _NEXT]


def sheet_failures(left, right, is_copy):
    """A copy has ids and names of its own where its model has them; other sheets keep theirs."""
    mine, other = identities(left), identities(right)
    if is_copy:
        mine, other = _ordered(mine), _ordered(other)
    if mine != other:
        yield f"its tables are {other[:8]}, should be {mine[:8]}"


def book_failures(book):
    """Ids and names of tables are unique in the workbook, and names are such as formulas can
    spell; the next id is free."""
    tables = [[part for part in identities(sheet) if part[0] in (*_TABLES, _HEADER)]
              for sheet in book.sheets]
    ids = Counter(value for found in tables for _, what, value in found if what == _ID)
    names = Counter(value.casefold() for found in tables for _, what, value in found
                    if what == _NAME)
    names.update({name.text.casefold() for name in book.names} & set(names))
    for value, count in (ids + names).items():
        if count > 1:
            yield f"{value!r} stands for {count} tables or names"
    for name in names:
        if not _IS_NAME.match(name):
            yield f"{name!r} is no name for a table"
    for sheet, found in zip(book.sheets, tables):
        used = [value for _, what, value in found if what == _ID]
        for _, what, value in found:
            if what == _NEXT and used and value <= max(used):
                yield f"the next table of {sheet.name} gets the id {value}, which is used"
