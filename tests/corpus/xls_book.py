"""The workbook stream of an .xls file ([MS-XLS], BIFF8): records, sheets, cells and names."""

import struct
from dataclasses import dataclass, field
from typing import NamedTuple

from xls_compound import CompoundFile

BOF, EOF, CONTINUE = 0x0809, 0x000A, 0x003C
BOUNDSHEET, SST, EXTSST, EXTERNSHEET, SUPBOOK, NAME = 0x85, 0xFC, 0xFF, 0x17, 0x1AE, 0x18
XF, TABID, WINDOW1, WINDOW2, CODENAME, DIMENSIONS = 0xE0, 0x13D, 0x3D, 0x23E, 0x1BA, 0x200
INDEX, DBCELL, ROW, COLINFO, MERGES, STRING = 0x20B, 0xD7, 0x208, 0x7D, 0xE5, 0x207
FORMULA, SHRFMLA, ARRAY, TABLE = 0x06, 0x4BC, 0x221, 0x236
MSODRAWING, MSODRAWINGGROUP, OBJ, TXO, PROTECT, FEAT = 0xEC, 0xEB, 0x5D, 0x1B6, 0x12, 0x868
BLANK, MULBLANK, NUMBER, RK, MULRK, LABEL, RSTRING, LABELSST, BOOLERR = (
    0x201, 0xBE, 0x203, 0x27E, 0xBD, 0x204, 0xD6, 0xFD, 0x205)
DATE1904 = 0x22
CELL_RECORDS = {BLANK, MULBLANK, NUMBER, RK, MULRK, LABEL, RSTRING, LABELSST, BOOLERR, FORMULA}
TABLE_RECORDS = CELL_RECORDS | {ROW, DBCELL, SHRFMLA, ARRAY, TABLE, STRING, INDEX, DIMENSIONS}
DEFAULT_XF = 15
LAST_CELL = (65536, 256)


class Record(NamedTuple):
    offset: int
    type: int
    data: bytes
    depth: int  # of the substream it stands in; the globals' and a sheet's own records have 1


def read_records(stream):
    """The records of all substreams; what follows the last of them is not read."""
    at, depth = 0, 0
    while at + 4 <= len(stream):
        kind, size = struct.unpack_from("<HH", stream, at)
        if depth == 0 and kind != BOF:
            return
        if at + 4 + size > len(stream):
            raise ValueError(f"the record at {at} goes past the end of the stream")
        depth += kind == BOF
        yield Record(at, kind, stream[at + 4:at + 4 + size], depth)
        depth -= kind == EOF
        at += 4 + size


def unicode_text(data, at, count, wide):
    size = count * (2 if wide else 1)
    text = data[at:at + size].decode("utf-16-le" if wide else "latin-1", "surrogatepass")
    return text, at + size


def number_of_rk(rk):
    if rk & 2:
        number = float((rk & 0xFFFFFFFF) >> 2) if not rk & 0x80000000 else float((rk >> 2) - 2**30)
    else:
        number = struct.unpack("<d", struct.pack("<Q", (rk & 0xFFFFFFFC) << 32))[0]
    return number / 100 if rk & 1 else number


@dataclass
class Cell:
    """`kind` is blank, number, text, logical, error or formula."""

    kind: str
    xf: int
    value: object = None
    tokens: bytes = b""
    extra: bytes = b""   # what follows the tokens
    result: bytes = b""  # a formula's stored result
    flags: int = 0       # a formula's
    text: object = None  # a formula's STRING
    string: int = -1     # index into the SST
    record: int = 0      # the record's type
    order: int = 0       # among the sheet's records


@dataclass
class Name:
    text: str
    scope: object  # index of a sheet, or None
    tokens: bytes
    data: bytes
    flags: int


class Pieces:
    """Reads over a record and those that continue it."""

    def __init__(self, pieces):
        self.pieces, self.number, self.at = pieces, 0, 0

    def take(self, count):
        taken = b""
        while len(taken) < count:
            if self.at == len(self.pieces[self.number]):
                self.number, self.at = self.number + 1, 0
                continue
            part = self.pieces[self.number][self.at:self.at + count - len(taken)]
            self.at += len(part)
            taken += part
        return taken

    def text(self, count, wide):
        """Where characters go on in the next record, a byte says how wide they are there."""
        text = ""
        while count:
            if self.at == len(self.pieces[self.number]):
                self.number, self.at = self.number + 1, 0
                wide = self.take(1)[0] & 1
            width = 2 if wide else 1
            here = min(count, (len(self.pieces[self.number]) - self.at) // width)
            if not here:
                raise ValueError("a character of the SST is cut in two")
            piece, self.at = unicode_text(self.pieces[self.number], self.at, here, wide)
            text += piece
            count -= here
        return text


@dataclass
class SharedStrings:
    total: int = 0
    texts: list = field(default_factory=list)
    rests: list = field(default_factory=list)   # formatting runs and phonetics of each
    starts: list = field(default_factory=list)  # (piece, offset in it) of each
    pieces: list = field(default_factory=list)  # the records


def read_shared_strings(records):
    strings = SharedStrings(pieces=records)
    reader = Pieces([record.data for record in records])
    strings.total, unique = struct.unpack("<II", reader.take(8))
    for _ in range(unique):
        if reader.at == len(reader.pieces[reader.number]):
            reader.number, reader.at = reader.number + 1, 0
        strings.starts.append((reader.number, reader.at))
        count, flags = struct.unpack("<HB", reader.take(3))
        runs = struct.unpack("<H", reader.take(2))[0] if flags & 8 else 0
        extra = struct.unpack("<I", reader.take(4))[0] if flags & 4 else 0
        strings.texts.append(reader.text(count, flags & 1))
        strings.rests.append(reader.take(4 * runs + extra))
    reader_left = len(reader.pieces[reader.number]) - reader.at if unique else 0
    if reader_left or (unique and reader.number != len(reader.pieces) - 1):
        raise ValueError("the SST is longer than its count")
    return strings


class Book:
    """An .xls workbook; `stream` takes the place of its workbook stream."""

    def __init__(self, path, stream=None):
        self.file = CompoundFile(path)
        self.path = self.file.workbook()
        self.stream = stream or self.file.entries[self.path].data
        self.records = list(read_records(self.stream))
        self.by_offset = {record.offset: index for index, record in enumerate(self.records)}
        end = next(index for index, record in enumerate(self.records) if record.type == EOF)
        self.globals = self.records[:end + 1]
        self.names, self.supbooks, self.externsheets = [], [], []
        self._read_globals()
        self._read_strings()
        self._read_sheets()

    def all_of(self, kind):
        return [record.data for record in self.globals if record.type == kind]

    def continued(self, kind):
        """The first record of a type with its CONTINUE records."""
        found = []
        for record in self.globals:
            if record.type == kind and not found:
                found.append(record)
            elif record.type == CONTINUE and found:
                found.append(record)
            elif found:
                break
        return found

    def joined(self, *kinds):
        """The data of each record of these types, with what continues it."""
        joined, is_open = [], False
        for record in self.globals:
            if record.type in kinds:
                joined.append(record.data)
            elif record.type == CONTINUE and is_open:
                joined[-1] += record.data
            is_open = record.type in kinds or (record.type == CONTINUE and is_open)
        return joined

    def _read_globals(self):
        for data in self.joined(SUPBOOK):
            marker = struct.unpack_from("<H", data, 2)[0]
            own, addin = len(data) == 4 and marker == 0x0401, len(data) == 4 and marker == 0x3A01
            self.supbooks.append("self" if own else "addin" if addin else "external")
        for data in self.joined(EXTERNSHEET):
            count = struct.unpack_from("<H", data)[0]
            self.externsheets += [struct.unpack_from("<Hhh", data, 2 + 6 * index)
                                  for index in range(min(count, (len(data) - 2) // 6))]
        for data in self.joined(NAME):
            flags, _, count, size, _, scope = struct.unpack_from("<HBBHHH", data)
            text, at = unicode_text(data, 15, count, data[14] & 1)
            self.names.append(Name(text, scope - 1 if scope else None, data[at:at + size], data,
                                   flags))
        self.formats = self.all_of(XF)
        self.date1904 = any(data[:1] == b"\1" for data in self.all_of(DATE1904))
        self.structure_locked = any(data[:1] == b"\1" for data in self.all_of(PROTECT))

    def is_locked(self, xf):
        """Whether a cell format locks its cell."""
        if xf >= len(self.formats):
            return True
        return bool(struct.unpack_from("<H", self.formats[xf], 4)[0] & 1)

    def _read_strings(self):
        records = self.continued(SST)
        self.strings = read_shared_strings(records) if records else SharedStrings()

    def _read_sheets(self):
        from xls_sheet import Sheet  # which needs this module
        self.sheets = []
        for data in self.all_of(BOUNDSHEET):
            offset, state, kind, count = struct.unpack_from("<IBBB", data)
            text, _ = unicode_text(data, 8, count, data[7] & 1)
            self.sheets.append(Sheet(self, text, offset, state & 3, kind))

    def first_worksheet(self):
        return next((index for index, sheet in enumerate(self.sheets) if sheet.is_worksheet), None)
