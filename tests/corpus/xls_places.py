"""Where records of a sheet hold formulas, and how records of two sheets are compared."""

import struct

import xls_book as biff
import xls_tables

CF, CF12, DV, BRAI, HLINK, CODENAME = 0x1B1, 0x87A, 0x1BE, 0x1051, 0x1B8, 0x1BA
CUSTOM_VIEW, SOURCE = 0x1AA, 0x51
# Parts of an OBJ that are a formula, and those in which a formula has a size of its own.
_OBJECT_FORMULAS, _SIZED_FORMULAS = (0x04, 0x0E, 0x14), (0x09, 0x13)


def places_of(record):
    """(start, end) of each formula's tokens in the record's data."""
    finder = _FINDERS.get(record.type)
    if finder is None:
        return []
    try:
        return [(start, end) for start, end in finder(record.data)
                if start < end <= len(record.data)]
    except (struct.error, IndexError):
        return []


def formulas_of(record):
    return [record.data[start:end] for start, end in places_of(record)]


def _cell(data):
    yield 22, 22 + struct.unpack_from("<H", data, 20)[0]


def _shared(data):
    yield 10, 10 + struct.unpack_from("<H", data, 8)[0]


def _array(data):
    yield 14, 14 + struct.unpack_from("<H", data, 12)[0]


def _conditional(data):
    first, second = struct.unpack_from("<HH", data, 2)
    start = len(data) - first - second
    yield start, start + first
    yield start + first, start + first + second


def _conditional12(data):
    kind, _, first, second, formats = struct.unpack_from("<BBHHI", data, 12)
    at = 22 + formats + (2 if formats == 0 else 0)
    for size in (first, second):
        yield at, at + size
        at += size
    active = struct.unpack_from("<H", data, at)[0]
    yield at + 2, at + 2 + active
    at += 2 + active + 5
    at += 1 + data[at]
    if kind == 3:  # colours
        yield from _thresholds(data, at + 6, data[at + 3], 8)
    elif kind == 4:  # bars
        yield from _thresholds(data, at + 22, 2, 0)
    elif kind == 6:  # icons
        yield from _thresholds(data, at + 6, data[at + 3], 5)


def _thresholds(data, at, count, more):
    """The formulas of values that bound something; `more` bytes follow each."""
    for _ in range(count):
        kind, size = struct.unpack_from("<BH", data, at)
        yield at + 3, at + 3 + size
        at += 3 + size + (8 if size == 0 and kind not in (2, 3) else 0) + more


def _validation(data):
    at = 4
    for _ in range(4):
        count, wide = struct.unpack_from("<HB", data, at)
        at += 3 + count * (2 if wide & 1 else 1)
    for _ in range(2):
        size = struct.unpack_from("<H", data, at)[0]
        yield at + 4, at + 4 + size
        at += 4 + size


def _chart(data):
    yield 8, 8 + struct.unpack_from("<H", data, 6)[0]


def _object(data):
    at = 0
    while at + 4 <= len(data):
        kind, size = struct.unpack_from("<HH", data, at)
        begin = at + (4 if kind in _OBJECT_FORMULAS else 6)
        has_formula = size and kind in _OBJECT_FORMULAS or (
            kind in _SIZED_FORMULAS and struct.unpack_from("<H", data, at + 4)[0])
        if has_formula:
            tokens = struct.unpack_from("<H", data, begin)[0] & 0x7FFF
            yield begin + 6, begin + 6 + tokens
        if kind in (0, 0x13):
            return
        at += 4 + size


_FINDERS = {biff.FORMULA: _cell, biff.SHRFMLA: _shared, biff.ARRAY: _array, CF: _conditional,
            CF12: _conditional12, DV: _validation, BRAI: _chart, biff.OBJ: _object}


def neutral_record(record, speller, link_text):
    """A record as it is compared: its formulas spelled, its own marks left out. `link_text`
    spells the place inside the workbook that a hyperlink leads to."""
    data = record.data
    if record.type == biff.WINDOW2 and record.depth == 1:
        return record.type, bytes([data[0], data[1] & 0xF9]), data[2:]
    if record.type == CUSTOM_VIEW:  # has the sheet's number in TABID
        return record.type, data[:16], data[20:]
    if record.type == HLINK:
        text, rest = hyperlink(data)
        return record.type, link_text(text), rest
    if record.type in xls_tables.KINDS:
        return record.type, *xls_tables.neutral(record)
    parts, at = [], 0
    for start, end in places_of(record):
        parts += [data[at:start], speller.spell(data[start:end])]
        at = end
    return (record.type, *parts, data[at:])


def hyperlink(data):
    """(place inside a workbook or None, everything else) of an HLINK record."""
    try:
        flags = struct.unpack_from("<I", data, 28)[0]
        at = 32
        for flag in (0x10, 0x80):  # a shown text, a target frame
            if flags & flag:
                at += 4 + 2 * struct.unpack_from("<I", data, at)[0]
        if flags & 0x1:
            at = _after_moniker(data, at, flags)
        if not flags & 0x8:
            return None, data
        count = struct.unpack_from("<I", data, at)[0]
        end = at + 4 + 2 * count
        text = data[at + 4:end].decode("utf-16-le", "surrogatepass").rstrip("\0")
        return (None, data) if flags & 0x1 else (text, data[:at] + data[end:])
    except (struct.error, IndexError, UnicodeDecodeError):
        return None, data


_URL = bytes.fromhex("e0c9ea79f9bace118c8200aa004ba90b")


def _after_moniker(data, at, flags):
    if flags & 0x100:  # as a text
        return at + 4 + 2 * struct.unpack_from("<I", data, at)[0]
    if data[at:at + 16] == _URL:
        return at + 20 + struct.unpack_from("<I", data, at + 16)[0]
    short = struct.unpack_from("<I", data, at + 18)[0]
    at += 22 + short + 24
    return at + 4 + struct.unpack_from("<I", data, at)[0]
