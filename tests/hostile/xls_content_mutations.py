"""Mutations of what the records of an .xls workbook say: texts, formulas, links, cells
and drawings."""

import struct

from corpus_modules import biff
from mutation import Kinds
from xls_record_mutations import _put, _record, _told
from xls_writer import Record

KINDS = Kinds()
_TOKENS = bytes((0x01, 0x02, 0x18, 0x19, 0x1F, 0x1E, 0x17, 0x23, 0x39, 0x3A, 0x3B, 0x3C, 0x24, 0x25,
                 0x29, 0x26, 0x27, 0x20, 0x60, 0x41, 0x42, 0x22, 0x10, 0xFF, 0x00))
_AREAS = ((0, 3, 0, 3), (39, 60, 2, 8), (3, 0, 3, 0), (0, 0xFFFF, 0, 0xFF), (0, 0, 0, 0xFFFF),
          (1, 2, 1, 2))


# ------------------------------------------------------------------ texts

@KINDS
def sst(book, random):
    """A byte of the shared texts: counts, flags, characters."""
    found = [(index, record) for index, record in enumerate(book.records)
             if record.kind == biff.SST]
    if not found:
        return None
    index, record = random.choice(found)
    following = index + 1
    chosen = [record]
    while following < len(book.records) and book.records[following].kind == biff.CONTINUE:
        chosen.append(book.records[following])
        following += 1
    record = random.choice(chosen)
    if not record.data:
        return None
    at = random.randrange(min(len(record.data), random.choice((4, 16, 60, 9000))))
    _put(record, at, "<B", random.choice((0, 1, 4, 5, 8, 9, 12, 13, 0x7F, 0xFF)))
    return f"{_told(record)} {at}"


@KINDS
def sst_counts(book, random):
    record = _record(book, random, biff.SST)
    if record is None:
        return None
    at = random.choice((0, 4))
    count = random.choice((0, 1, 2, 1000, 0x7FFFFFFF, 0xFFFFFFFF))
    return f"{at} {count}" if _put(record, at, "<I", count) else None


@KINDS
def sst_cut(book, random):
    """Texts that end in the middle."""
    record = _record(book, random, biff.SST)
    if record is None or len(record.data) < 9:
        return None
    record.data = record.data[:random.randrange(8, len(record.data))]
    return f"{len(record.data)}"


@KINDS
def string_index(book, random):
    record = _record(book, random, biff.LABELSST)
    if record is None:
        return None
    index = random.choice((0, 1, 0x7FFF, 0xFFFF, 0x7FFFFFFF, 0xFFFFFFFF))
    return f"{index}" if _put(record, 6, "<I", index) else None


@KINDS
def extsst(book, random):
    record = _record(book, random, biff.EXTSST)
    if record is None:
        return None
    return _told(record) if _put(record, random.choice((0, 2, 6)), "<H",
                                 random.choice((0, 1, 0xFFFF))) else None


# --------------------------------------------------------------- formulas

@KINDS
def tokens(book, random):
    """A byte of a formula's tokens, or how many they are."""
    record = _record(book, random, biff.FORMULA, biff.NAME, biff.SHRFMLA, biff.ARRAY, 0x1BE, 0x1B1)
    if record is None:
        return None
    start = {biff.FORMULA: 20, biff.NAME: 4, biff.SHRFMLA: 8, biff.ARRAY: 12}.get(record.kind, 0)
    if len(record.data) <= start:
        return None
    at = random.randrange(start, len(record.data))
    _put(record, at, "<B", random.choice(_TOKENS))
    return f"{_told(record)} {at}"


@KINDS
def token_count(book, random):
    record = _record(book, random, biff.FORMULA)
    if record is None:
        return None
    count = random.choice((0, 1, 5, 1000, 0xFFFF))
    return f"{_told(record)} {count}" if _put(record, 20, "<H", count) else None


@KINDS
def add_formula(book, random):
    """A formula of many tokens, or of such as lead elsewhere, where the calendar writes."""
    record = _record(book, random, biff.FORMULA, biff.LABELSST, biff.RK, biff.NUMBER, biff.BLANK)
    if record is None:
        return None
    body = random.choice((
        b"\x15" * 2000, b"\x1e\1\0" + b"\x12" * 3000, b"\x3a\xff\xff\0\0\0\0", b"\x23\xff\xff\0\0",
        b"\x39\xff\xff\1\0\0\0", b"\x19\x04\xff\xff" + bytes(4), b"\x17\xff\1abc", b"\1\0\0\0\0",
        b"\x26\0\0\0\0\xff\xff", b"\x20" + bytes(7), b"\x3b\0\0\0\0\xff\xff\0\0\xff\xff"))
    where = random.choice((record.data[:4], struct.pack("<HH", 39, 2)))
    made = Record(biff.FORMULA, where + struct.pack("<H", 15) + bytes(14)
                  + struct.pack("<H", len(body)) + body)
    book.records.insert(book.records.index(record) + 1, made)
    return body[:8].hex()


# ------------------------------------------------------------------ links

@KINDS
def externsheet(book, random):
    record = _record(book, random, biff.EXTERNSHEET)
    if record is None or len(record.data) < 2:
        return None
    at = random.choice((0, *range(2, min(len(record.data), 26), 2)))
    value = random.choice((0, 1, 0x7FFF, 0xFFFE, 0xFFFF))
    return f"{at}" if _put(record, at, "<H", value) else None


@KINDS
def name_fields(book, random):
    """The length of a name or of its formula, its sheet, or what it is built in as."""
    record = _record(book, random, biff.NAME)
    if record is None:
        return None
    at, form = random.choice(((0, "<H"), (3, "<B"), (4, "<H"), (8, "<H"), (14, "<B"), (15, "<B")))
    value = random.choice((0, 1, 2, 6, 7, 0x20, 0xFF, 0xFFFF))
    return f"{_told(record)} {at}" if _put(record, at, form, value) else None


@KINDS
def name_twice(book, random):
    record = _record(book, random, biff.NAME)
    if record is None:
        return None
    at = book.records.index(record)
    book.records[at:at] = [record.copy() for _ in range(random.choice((1, 1000)))]
    return _told(record)


@KINDS
def supbook(book, random):
    record = _record(book, random, biff.SUPBOOK)
    if record is None:
        return None
    return _told(record) if _put(record, random.choice((0, 2)), "<H",
                                 random.choice((0, 1, 0x401, 0x3A01, 0xFFFF))) else None


# ------------------------------------------------------------------ cells

@KINDS
def place(book, random):
    """A cell's or a row's place."""
    record = _record(book, random, *sorted(biff.CELL_RECORDS), biff.ROW)
    if record is None:
        return None
    at = random.choice((0, 2, 4))
    value = random.choice((0, 1, 38, 39, 40, 255, 256, 0x7FFF, 0xFFFF))
    return f"{_told(record)} {at}" if _put(record, at, "<H", value) else None


@KINDS
def cells_out_of_order(book, random):
    found = [index for index, record in enumerate(book.records)
             if record.kind in biff.CELL_RECORDS or record.kind == biff.ROW]
    if len(found) < 3:
        return None
    at = random.randrange(len(found) - 2)
    places = found[at:at + random.choice((2, 10, 100))]
    chosen = [book.records[index] for index in places]
    random.shuffle(chosen)
    for index, record in zip(places, chosen):
        book.records[index] = record
    return f"{len(places)}"


@KINDS
def many_columns(book, random):
    """The last column of a MULBLANK or MULRK, which has to go with its length."""
    record = _record(book, random, biff.MULBLANK, biff.MULRK)
    if record is None or len(record.data) < 6:
        return None
    _put(record, len(record.data) - 2, "<H", random.choice((0, 255, 256, 0xFFFF)))
    return _told(record)


@KINDS
def merges(book, random):
    areas = random.choice(_AREAS), random.choice(_AREAS)
    count = random.choice((2, 2, 0, 1027, 0xFFFF))
    data = struct.pack("<H", count) + b"".join(struct.pack("<4H", *area) for area in areas)
    sheets = [index for index, record in enumerate(book.records) if record.kind == biff.WINDOW2]
    if not sheets:
        return None
    book.records.insert(random.choice(sheets) + 1, Record(biff.MERGES, data))
    return f"{areas} {count}"


@KINDS
def protect(book, random):
    sheets = [index for index, record in enumerate(book.records) if record.kind == biff.DIMENSIONS]
    at = random.choice(sheets) if sheets and random.random() < 0.6 else 1
    book.records.insert(min(at, len(book.records)), Record(biff.PROTECT, random.choice(
        (b"\1\0", b"\0\0", b"\1", b"", b"\xff\xff"))))
    return f"at {at}"


# --------------------------------------------------------------- drawings

@KINDS
def art(book, random):
    """A number of a drawing: versions, kinds and lengths of its atoms, ids."""
    record = _record(book, random, biff.MSODRAWING, biff.MSODRAWINGGROUP)
    if record is None or len(record.data) < 8:
        return None
    at = random.choice(_atoms(record.data)) + random.choice((0, 2, 4, 4, 8, 12))
    form = random.choice(("<H", "<I"))
    value = random.choice((0, 1, 15, 0xF000, 0xF004, 0x7FFFFFFF, 0xFFFFFFFF,
                           random.getrandbits(16)))
    return f"{_told(record)} {at}" if _put(record, at, form, value) else None


def _atoms(data):
    """The offsets of the atoms."""
    found, at = [], 0
    while at + 8 <= len(data):
        found.append(at)
        version, _, size = struct.unpack_from("<HHI", data, at)
        at += 8 if version & 15 == 15 else 8 + size
    return found


@KINDS
def art_depth(book, random):
    """Containers in containers."""
    record = _record(book, random, biff.MSODRAWING)
    if record is None:
        return None
    depth = random.choice((10, 500, 1000))
    record.data = b"".join(struct.pack("<HHI", 15, 0xF003, 8 * (depth - level))
                           for level in range(depth)) + record.data[:200]
    return f"{depth}"


@KINDS
def object_part(book, random):
    """A part of an object: its kind, length or id."""
    record = _record(book, random, biff.OBJ)
    if record is None or len(record.data) < 8:
        return None
    places, at = [], 0
    while at + 4 <= len(record.data):
        places.append(at)
        at += 4 + struct.unpack_from("<H", record.data, at + 2)[0]
    at = random.choice(places) + random.choice((0, 2, 4, 6))
    value = random.choice((0, 1, 4, 0x15, 0xD, 0x7FFF, 0xFFFF))
    return f"{_told(record)} {at}" if _put(record, at, "<H", value) else None


@KINDS
def text_of_object(book, random):
    record = _record(book, random, biff.TXO)
    if record is None:
        return None
    at = random.choice((10, 12, 14, 0))
    return f"{at}" if _put(record, at, "<H", random.choice((0, 1, 8, 255, 0xFFFF))) else None


@KINDS
def object_twice(book, random):
    """An object once more, with its drawing or without."""
    found = [index for index, record in enumerate(book.records) if record.kind == biff.OBJ]
    if not found:
        return None
    at = random.choice(found)
    first = at - 1 if at and random.random() < 0.7 else at
    twins = [record.copy() for record in book.records[first:at + 1]]
    count = random.choice((1, 1, 200))
    book.records[at + 1:at + 1] = [twin.copy() for _ in range(count) for twin in twins]
    return f"{count}"
