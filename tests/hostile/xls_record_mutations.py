"""Mutations of the workbook stream: records, their kinds, lengths and order, and the numbers in
them."""

import struct

from corpus_modules import biff
from mutation import Kinds
from xls_writer import Record

KINDS = Kinds()

# What the program reads or writes; chosen before all others.
_TELLING = (biff.BOUNDSHEET, biff.SST, biff.EXTSST, biff.EXTERNSHEET, biff.SUPBOOK, biff.NAME,
            biff.TABID, biff.WINDOW1, biff.WINDOW2, biff.CODENAME, biff.DIMENSIONS, biff.INDEX,
            biff.DBCELL, biff.ROW, biff.COLINFO, biff.MERGES, biff.FORMULA, biff.SHRFMLA,
            biff.ARRAY, biff.STRING, biff.MSODRAWING, biff.MSODRAWINGGROUP, biff.OBJ, biff.TXO,
            biff.PROTECT, biff.LABELSST, biff.MULBLANK, biff.MULRK, biff.RK, biff.XF, biff.BOF,
            biff.EOF, biff.CONTINUE, 0x1B8, 0x1B2, 0x1BE, 0x1B0, 0x1B1, 0x862, 0x863, 0x866, 0x868,
            0x871, 0x1C, 0x2F, 0x59, 0x5A)
_LONGS = (0, 1, 2, 0xFF, 0x7FFF, 0x8000, 0xFFFF, 0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFE,
          0xFFFFFFFF)


def _record(book, random, *kinds):
    """A record of these kinds; of any without kinds, a telling one more often."""
    if not kinds and random.random() < 0.8:
        there = {record.kind for record in book.records}
        kinds = [random.choice([kind for kind in _TELLING if kind in there] or [None])]
    found = book.of_kind(*kinds) if kinds else book.records
    return random.choice(found) if found else None


def _told(record):
    return f"{record.kind:#x} at {record.offset}"


def _put(record, at, form, value):
    size = struct.calcsize(form)
    if at + size > len(record.data):
        return False
    data = bytearray(record.data)
    struct.pack_into(form, data, at, value & ((1 << 8 * size) - 1))
    record.data = bytes(data)
    return True


# ---------------------------------------------------------------- records

@KINDS
def drop_record(book, random):
    record = _record(book, random)
    if record is None:
        return None
    book.records.remove(record)
    return _told(record)


@KINDS
def record_twice(book, random):
    record = _record(book, random)
    if record is None:
        return None
    at = book.records.index(record)
    book.records[at:at] = [record.copy() for _ in range(random.choice((1, 1, 1, 50)))]
    return _told(record)


@KINDS
def swap_records(book, random):
    one, other = _record(book, random), _record(book, random)
    if one is None or other is None or one is other:
        return None
    first, second = book.records.index(one), book.records.index(other)
    book.records[first], book.records[second] = other, one
    return f"{_told(one)} and {_told(other)}"


@KINDS
def move_record(book, random):
    record = _record(book, random)
    if record is None:
        return None
    book.records.remove(record)
    book.records.insert(random.randrange(len(book.records) + 1), record)
    return _told(record)


@KINDS
def add_record(book, random):
    kind = random.choice((*_TELLING, random.randrange(0x2000)))
    data = random.randbytes(random.choice((0, 1, 2, 4, 8, 20, 100, 8224)))
    at = random.randrange(len(book.records) + 1)
    book.records.insert(at, Record(kind, data))
    return f"{kind:#x} of {len(data)} bytes"


@KINDS
def other_kind(book, random):
    record = _record(book, random)
    if record is None:
        return None
    told, record.kind = _told(record), random.choice((*_TELLING, random.randrange(0x10000)))
    return f"{told} as {record.kind:#x}"


@KINDS
def other_length(book, random):
    """More or fewer bytes; the offsets of the sheets follow, or not."""
    record = _record(book, random)
    if record is None:
        return None
    change = random.choice((-1000, -8, -4, -2, -1, 1, 2, 4, 8, 1000))
    record.data = record.data[:change] if change < 0 else record.data + random.randbytes(change)
    book.follows = random.random() < 0.7
    return f"{_told(record)} {change}"


@KINDS
def wrong_length(book, random):
    """The header says another length than there is."""
    record = _record(book, random)
    if record is None:
        return None
    record.size = random.choice((0, 1, max(0, len(record.data) - 1), len(record.data) + 1,
                                 len(record.data) + 4, 8224, 8225, 0x7FFF, 0xFFFF))
    return f"{_told(record)} {record.size}"


@KINDS
def record_too_long(book, random):
    record = _record(book, random)
    if record is None:
        return None
    record.data = record.data.ljust(random.choice((8225, 20000, 65535)), b"\0")
    return _told(record)


@KINDS
def split_record(book, random):
    """The rest of a record in a CONTINUE."""
    record = _record(book, random)
    if record is None or len(record.data) < 2:
        return None
    at = random.randrange(len(record.data))
    behind = book.records.index(record) + 1
    book.records.insert(behind, Record(biff.CONTINUE, record.data[at:]))
    record.data = record.data[:at]
    return f"{_told(record)} at {at}"


@KINDS
def no_continue(book, random):
    found = book.of_kind(biff.CONTINUE)
    if not found:
        return None
    for record in [random.choice(found)] if random.random() < 0.6 else found:
        book.records.remove(record)
    return f"one of {len(found)} or all"


@KINDS
def join_continue(book, random):
    """A CONTINUE at another place within what it continues."""
    found = [index for index, record in enumerate(book.records)
             if record.kind == biff.CONTINUE and index]
    if not found:
        return None
    at = random.choice(found)
    before, record = book.records[at - 1], book.records[at]
    joined = before.data + record.data
    cut = random.randrange(len(joined) + 1)
    before.data, record.data = joined[:cut][:8224], joined[cut:][:8224]
    return f"{_told(record)} {cut}"


# ---------------------------------------------------------------- numbers

@KINDS
def number(book, random):
    """A number somewhere in a record."""
    record = _record(book, random)
    if record is None or not record.data:
        return None
    at = random.randrange(min(len(record.data), random.choice((8, 32, 10000))))
    form = random.choice(("<B", "<H", "<H", "<I"))
    return f"{_told(record)} {at}" if _put(record, at, form, random.choice(_LONGS)) else None


@KINDS
def first_number(book, random):
    """The number that a record begins with is often a count or a size."""
    record = _record(book, random)
    if record is None:
        return None
    form = random.choice(("<H", "<I"))
    return _told(record) if _put(record, 0, form, random.choice(_LONGS)) else None


@KINDS
def bits(book, random):
    record = _record(book, random)
    if record is None or not record.data:
        return None
    data = bytearray(record.data)
    for _ in range(random.choice((1, 1, 3, 20))):
        data[random.randrange(len(data))] ^= 1 << random.randrange(8)
    record.data = bytes(data)
    return _told(record)


@KINDS
def write_over(book, random):
    record = _record(book, random)
    if record is None or not record.data:
        return None
    at = random.randrange(len(record.data))
    rest = len(record.data) - at
    filling = random.choice((b"\0" * rest, b"\xff" * rest, random.randbytes(rest)))
    record.data = record.data[:at] + filling
    return f"{_told(record)} from {at}"


# ----------------------------------------------------------------- stream

@KINDS
def sheet_offset(book, random):
    record = _record(book, random, biff.BOUNDSHEET)
    if record is None or len(record.data) < 4:
        return None
    old = struct.unpack_from("<I", record.data)[0]
    others = [struct.unpack_from("<I", other.data)[0] for other in book.of_kind(biff.BOUNDSHEET)
              if len(other.data) >= 4]
    new = random.choice((0, 1, old + 1, old + 4, old - 4, 0x7FFFFFFF, 0xFFFFFFFF, *others,
                         random.choice(book.records).offset or 0))
    _put(record, 0, "<I", new)
    book.follows = random.random() < 0.5
    return f"{old} as {new}"


@KINDS
def sheet_entry(book, random):
    """A sheet's state, kind or name."""
    record = _record(book, random, biff.BOUNDSHEET)
    if record is None or len(record.data) < 9:
        return None
    at = random.choice((4, 5, 6, 7, 8))
    _put(record, at, "<B", random.choice((0, 1, 2, 3, 6, 31, 32, 0x2F, 0xFF)))
    return f"byte {at}"


@KINDS
def sheet_twice(book, random):
    """Two entries for one sheet, or one name for two sheets."""
    found = book.of_kind(biff.BOUNDSHEET)
    if not found:
        return None
    one, other = random.choice(found), random.choice(found)
    if one is other:
        book.records.insert(book.records.index(one), one.copy())
        return "entry"
    other.data = one.data[:4] + other.data[4:] if random.random() < 0.5 \
        else other.data[:6] + one.data[6:]
    return "offset or name"


@KINDS
def sheet_bounds(book, random):
    """A BOF or EOF more or less."""
    record = _record(book, random, random.choice((biff.BOF, biff.EOF)))
    if record is None:
        return None
    if random.random() < 0.5:
        book.records.remove(record)
        return f"without {_told(record)}"
    at = random.randrange(len(book.records) + 1)
    book.records[at:at] = [record.copy() for _ in range(random.choice((1, 1, 2000)))]
    return f"more {_told(record)}"


@KINDS
def bof_fields(book, random):
    record = _record(book, random, biff.BOF)
    if record is None:
        return None
    at, value = random.choice(((0, 0x500), (0, 0), (2, 5), (2, 0x20), (2, 0x40), (2, 0xFFFF),
                               (0, 0x700)))
    return f"{_told(record)} {at}" if _put(record, at, "<H", value) else None


@KINDS
def cut_stream(book, random):
    share = random.choice((0.1, 0.5, 0.9, 0.99, 0.999))
    book.stream_tail.append(lambda stream: stream[:int(len(stream) * share)])
    return f"to {share}"


@KINDS
def stream_bytes(book, random):
    places = [random.random() for _ in range(random.choice((1, 4, 30)))]
    value = random.randrange(256)

    def write(stream):
        changed = bytearray(stream)
        for place in places:
            changed[int(place * len(changed))] = value
        return bytes(changed)
    book.stream_tail.append(write)
    return f"{len(places)}"
