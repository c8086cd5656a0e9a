"""Objects of .xls sheets whose data lie outside the workbook's stream ([MS-XLS] 2.4.181)."""

import struct
from collections import Counter
from typing import NamedTuple

import xls_book as biff

CONTROLS = ("Ctls",)  # the stream that holds the data of all controls
_FLAGS, _FORMULA, _LAST = 0x08, 0x09, (0x00, 0x13)
_IN_CONTROLS = 0x20


class Place(NamedTuple):
    """Where an object's record says where its data lie."""

    at: int            # in the record
    is_control: bool
    number: int        # of the storage; of a control: the offset in the stream
    size: int          # of a control


def place_of(data):
    """The Place in an object's record, or None."""
    at, flags = 0, 0
    while at + 4 <= len(data):
        kind, size = struct.unpack_from("<HH", data, at)
        if kind in _LAST:
            return None
        if kind == _FLAGS and size >= 2:
            flags = struct.unpack_from("<H", data, at + 4)[0]
        if kind == _FORMULA and size >= 6:
            return _behind_formula(data, at + 4, at + 4 + size, flags & _IN_CONTROLS)
        at += 4 + size
    return None


def _behind_formula(data, begin, end, is_control):
    formula = struct.unpack_from("<H", data, begin)[0]
    at = begin + 2 + formula
    if not formula or at + (8 if is_control else 4) > min(end, len(data)):
        return None
    number, = struct.unpack_from("<I", data, at)
    size = struct.unpack_from("<I", data, at + 4)[0] if is_control else 0
    return Place(at, bool(is_control), number, size)


def without_place(data):
    """An object's record without the number of its storage, or its offset in the stream."""
    place = place_of(data)
    return data if place is None else data[:place.at] + bytes(4) + data[place.at + 4:]


def data_of(file, place):
    """A control's bytes, or the content of a storage by the paths inside it; None where it is
    not there."""
    if place is None:
        return None
    if place.is_control:
        stream = file.entries.get(CONTROLS)
        found = stream.data[place.number:place.number + place.size] if stream else b""
        return found if found and len(found) == place.size else None
    name = f"MBD{place.number:08X}"
    found = {path[1:]: entry.identity() for path, entry in file.entries.items()
             if path[:1] == (name,)}
    return found or None


def sheet_failures(left, right):
    """An object's data are there, and are what the model's object has."""
    for mine, other in zip(left.all_of(biff.OBJ), right.all_of(biff.OBJ)):
        if data_of(left.book.file, place_of(mine)) != data_of(right.book.file, place_of(other)):
            yield "an embedded object's data are missing or others"


def book_failures(book):
    """Every object has data of its own."""
    places = [place_of(data) for sheet in book.sheets for data in sheet.all_of(biff.OBJ)]
    there = [place for place in places if data_of(book.file, place) is not None]
    storages = Counter(place.number for place in there if not place.is_control)
    for number, count in storages.items():
        if count > 1:
            yield f"{count} objects have the storage {number:#x}"
    controls = sorted((place.number, place.size) for place in there if place.is_control)
    for (begin, size), (following, _) in zip(controls, controls[1:]):
        if begin + size > following:
            yield f"two controls share the byte {following} of {CONTROLS[0]!r}"


def grown(before, after):
    """The paths of streams that may be longer than they were: that of the controls goes on where
    it ended."""
    mine, other = before.entries.get(CONTROLS), after.entries.get(CONTROLS)
    if mine is None or other is None or mine.identity()[:-1] != other.identity()[:-1]:
        return set()
    return {CONTROLS} if other.data.startswith(mine.data) else set()
