"""Mutations of the compound file: its header, its tables of sectors, its directory."""

import struct

from mutation import Kinds
from xls_writer import SECTOR

KINDS = Kinds()
_NUMBERS = (0, 1, 2, 3, 0x7FFFFFFF, 0xFFFFFFFA, 0xFFFFFFFC, 0xFFFFFFFD, 0xFFFFFFFE, 0xFFFFFFFF)
_DIRECTORY_START, _MINI_START = 48, 60


def _later(book, change):
    """Has the written file changed by `change(bytearray)`."""
    def changed(data):
        copy = bytearray(data)
        change(copy)
        return bytes(copy)
    book.tail.append(changed)


def _put(data, at, form, value):
    if 0 <= at and at + struct.calcsize(form) <= len(data):
        struct.pack_into(form, data, at, value & ((1 << 8 * struct.calcsize(form)) - 1))


def _long(data, at):
    return struct.unpack_from("<I", data, at)[0] if at + 4 <= len(data) else 0


@KINDS
def header(book, random):
    at, form = random.choice(((24, "<H"), (26, "<H"), (28, "<H"), (30, "<H"), (32, "<H"),
                              (40, "<I"), (44, "<I"), (48, "<I"), (56, "<I"), (60, "<I"),
                              (64, "<I"), (68, "<I"), (72, "<I"), (76, "<I"), (80, "<I")))
    value = random.choice((*_NUMBERS, 4, 5, 12, 16, 31, 63))
    _later(book, lambda data: _put(data, at, form, value))
    return f"{at} {value:#x}"


def _fat_entry(data, share):
    """The place of an entry of the first table of sectors that is in use."""
    table = (_long(data, 76) + 1) * SECTOR
    used = max(1, min(SECTOR // 4, (len(data) - SECTOR) // SECTOR))
    return table + 4 * int(share * used)


@KINDS
def fat(book, random):
    """Entries of the table of sectors: cycles, ends, free ones."""
    changes = [(random.random(), random.choice((*_NUMBERS, random.randrange(200))))
               for _ in range(random.choice((1, 1, 3)))]

    def change(data):
        for share, value in changes:
            _put(data, _fat_entry(data, share), "<I", value)
    _later(book, change)
    return f"{changes[0][1]:#x}"


@KINDS
def fat_cycle(book, random):
    """A sector that follows itself."""
    share = random.random()

    def change(data):
        place = _fat_entry(data, share)
        _put(data, place, "<I", (place - (_long(data, 76) + 1) * SECTOR) // 4)
    _later(book, change)
    return "itself"


@KINDS
def mini_fat(book, random):
    at, value = random.randrange(64), random.choice((*_NUMBERS, random.randrange(40)))
    _later(book, lambda data: _put(data, (_long(data, _MINI_START) + 1) * SECTOR + 4 * at, "<I",
                                   value))
    return f"{at} {value:#x}"


def _entry(book, random):
    """The number of an entry of the directory."""
    used = [index for index, entry in enumerate(book.file.directory) if entry.kind]
    return random.choice(used)


def _change_entry(book, number, at, form, value):
    _later(book, lambda data: _put(data, (_long(data, _DIRECTORY_START) + 1) * SECTOR
                                   + 128 * number + at, form, value))


@KINDS
def entry(book, random):
    """A field of an entry: length of the name, kind, color, siblings, child, start, size."""
    number = _entry(book, random)
    at, form = random.choice(((64, "<H"), (66, "<B"), (67, "<B"), (68, "<I"), (72, "<I"),
                              (76, "<I"), (116, "<I"), (120, "<I"), (124, "<I")))
    value = random.choice((*_NUMBERS, 5, 64, 66, 4096, number, len(book.file.directory)))
    _change_entry(book, number, at, form, value)
    return f"{number} {at} {value:#x}"


@KINDS
def entry_name(book, random):
    number, at = _entry(book, random), 2 * random.randrange(4)
    value = random.choice((0, 0x2F, 0x41, 1, 0xD800, 0xFFFF, ord("w")))
    _change_entry(book, number, at, "<H", value)
    return f"{number} {at} {value:#x}"


@KINDS
def entry_cycle(book, random):
    """An entry that is its own sibling or child, or that of the root."""
    number, at = _entry(book, random), random.choice((68, 72, 76))
    value = random.choice((number, 0, _entry(book, random)))
    _change_entry(book, number, at, "<I", value)
    return f"{number} {at} {value}"


@KINDS
def swap_entries(book, random):
    """Two streams with each other's content."""
    one, other = _entry(book, random), _entry(book, random)
    if one == other:
        return None

    def change(data):
        start = (_long(data, _DIRECTORY_START) + 1) * SECTOR
        first, second = (start + 128 * number + 116 for number in (one, other))
        data[first:first + 12], data[second:second + 12] = \
            data[second:second + 12], data[first:first + 12]
    _later(book, change)
    return f"{one} and {other}"


@KINDS
def remove_entry(book, random):
    number = _entry(book, random)
    _change_entry(book, number, 66, "<B", 0)
    return f"{number}"


@KINDS
def flip(book, random):
    places = [random.random() for _ in range(random.choice((1, 5, 50)))]
    value = random.randrange(1, 256)

    def change(data):
        for place in places:
            data[int(place * len(data))] ^= value
    _later(book, change)
    return f"{len(places)}"


@KINDS
def cut_file(book, random):
    share = random.choice((0.01, 0.3, 0.9, 0.99, 0.999))
    book.tail.append(lambda data: data[:int(len(data) * share)])
    return f"to {share}"


@KINDS
def bytes_behind(book, random):
    more = random.choice((b"\0", bytes(511), random.randbytes(5000)))
    book.tail.append(lambda data: data + more)
    return f"{len(more)}"
