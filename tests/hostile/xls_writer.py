"""An .xls workbook as records and a compound file, written again after its records changed."""

import struct

from corpus_modules import biff, xls_compound

_END, _FREE, _FAT = 0xFFFFFFFE, 0xFFFFFFFF, 0xFFFFFFFD
SECTOR, MINI = 512, 64
_CUTOFF = 4096


class Record:
    """A record that may be changed. `size` is what its header says where that is not the length of
    its data; `offset` is where it stood."""

    def __init__(self, kind, data, offset=None):
        self.kind, self.data, self.offset, self.size = kind, data, offset, None

    def to_bytes(self):
        size = len(self.data) if self.size is None else self.size
        return struct.pack("<HH", self.kind & 0xFFFF, size & 0xFFFF) + self.data

    def copy(self):
        twin = Record(self.kind, self.data)
        twin.size = self.size
        return twin


def read_records(stream):
    """Every record of the stream, and the bytes behind the last."""
    records, at = [], 0
    while at + 4 <= len(stream):
        kind, size = struct.unpack_from("<HH", stream, at)
        records.append(Record(kind, stream[at + 4:at + 4 + size], at))
        if len(records[-1].data) < size:
            records[-1].size = size
        at += 4 + size
    return records, stream[at:]


class XlsBook:
    """`records` of the workbook stream; `tail` holds functions that change the written file.
    `follows` says whether the offsets of the sheets follow when records move."""

    def __init__(self, path):
        self.file = xls_compound.CompoundFile(path)
        name = self.file.workbook()
        if name is None:
            raise ValueError("no workbook stream")
        self.stream_entry = self.file.entries[name]
        self.records, self._rest = read_records(self.stream_entry.data)
        self.tail, self.stream_tail, self.follows = [], [], True

    def of_kind(self, *kinds):
        return [record for record in self.records if record.kind in kinds]

    def stream(self):
        """The workbook stream; the sheets' offsets lead to where their records are now."""
        places, at = {}, 0
        for record in self.records:
            if record.offset is not None:
                places.setdefault(record.offset, at)
            at += 4 + len(record.data)
        parts = []
        for record in self.records:
            if self.follows and record.kind == biff.BOUNDSHEET and len(record.data) >= 4:
                old = struct.unpack_from("<I", record.data)[0]
                if old in places:
                    record.data = struct.pack("<I", places[old]) + record.data[4:]
            parts.append(record.to_bytes())
        made = b"".join(parts) + self._rest
        for change in self.stream_tail:
            made = change(made)
        return made

    def to_bytes(self):
        stream = self.stream()
        written = CompoundWriter(self.file, {id(self.stream_entry): stream}).to_bytes()
        for change in self.tail:
            written = change(written)
        return written


class CompoundWriter:
    """Writes the entries of a compound file with the tree they have, in sectors of 512 bytes.
    Streams that `instead` names by their entry's id get those bytes."""

    def __init__(self, file, instead):
        self.directory = file.directory
        self.instead = instead
        self.sectors, self.fat, self.mini, self.mini_fat = [], [], bytearray(), []

    def _data(self, entry):
        return self.instead.get(id(entry), entry.data) if entry.kind == xls_compound.STREAM else b""

    def _add(self, data):
        """Sectors with these bytes; the number of the first."""
        if not data:
            return _END
        first = len(self.sectors)
        for at in range(0, len(data), SECTOR):
            self.sectors.append(data[at:at + SECTOR].ljust(SECTOR, b"\0"))
            self.fat.append(len(self.sectors))
        self.fat[-1] = _END
        return first

    def _add_mini(self, data):
        first = len(self.mini_fat)
        count = -(-len(data) // MINI)
        self.mini += data.ljust(count * MINI, b"\0")
        self.mini_fat += [*range(first + 1, first + count), _END]
        return first

    def to_bytes(self):
        places = []
        for entry in self.directory:
            data = self._data(entry)
            if not data:
                places.append((_END, 0))
            elif len(data) < _CUTOFF:
                places.append((self._add_mini(data), len(data)))
            else:
                places.append((self._add(data), len(data)))
        places[0] = (self._add(bytes(self.mini)), len(self.mini))
        mini_fat = self._add(_longs(self.mini_fat)) if self.mini_fat else _END
        directory = self._add(b"".join(map(_entry, self.directory, places)))
        return self._with_tables(directory, mini_fat)

    def _with_tables(self, directory, mini_fat):
        """The whole file; tables of more than 109 sectors are not needed for what is tested."""
        count = 0
        while count * (SECTOR // 4) < len(self.fat) + count:
            count += 1
        if count > 109:
            raise ValueError("too large to be written")
        first = len(self.fat)
        table = self.fat + [_FAT] * count
        table += [_FREE] * (-len(table) % (SECTOR // 4))
        minis = -(-len(self.mini_fat) * 4 // SECTOR)
        header = struct.pack("<8s16sHHHHH6s9I", b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1", bytes(16),
                             0x3E, 3, 0xFFFE, 9, 6, bytes(6), 0, count, directory, 0, _CUTOFF,
                             mini_fat, minis, _END, 0)
        header += _longs([*range(first, first + count), *[_FREE] * (109 - count)])
        return header + b"".join(self.sectors) + _longs(table)


def _longs(numbers):
    return struct.pack(f"<{len(numbers)}I", *numbers)


def _entry(entry, place):
    name = entry.name.encode("utf-16-le", "surrogatepass")
    return name.ljust(64, b"\0") + struct.pack(
        "<HBB3I", len(name) + 2 if name else 0, entry.kind, entry.color, *entry.links) \
        + entry.class_id + struct.pack("<I", entry.state) + entry.times \
        + struct.pack("<IQ", *place)
