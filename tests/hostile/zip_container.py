"""A zip container of which everything can be said wrongly: sizes, sums, names, flags."""

import struct
import zipfile
import zlib
from dataclasses import dataclass, field, replace

_LOCAL, _CENTRAL, _END = b"PK\3\4", b"PK\1\2", b"PK\5\6"
_DESCRIPTOR = b"PK\7\x08"
STORED, DEFLATED = 0, 8
ENCRYPTED, HAS_DESCRIPTOR, UTF8 = 1, 8, 0x800
_DATE = (0, 0x21)  # 1980-01-01


@dataclass
class Entry:
    """A part. What is None is what its data make it."""

    name: bytes
    data: bytes
    method: int = DEFLATED
    flags: int = 0
    packed: object = None       # the packed bytes
    crc: object = None
    size: object = None
    packed_size: object = None
    local_name: object = None
    offset_shift: int = 0       # added to the place that the directory gives
    extra: bytes = b""          # of the directory
    local_extra: bytes = b""
    comment: bytes = b""
    is_zip64: bool = False

    @property
    def text_name(self):
        return self.name.decode("utf-8", "replace")

    def with_(self, **changes):
        return replace(self, **changes)

    def packed_bytes(self):
        if self.packed is not None:
            return self.packed
        if self.method != DEFLATED:
            return self.data
        packer = zlib.compressobj(6, zlib.DEFLATED, -15)
        return packer.compress(self.data) + packer.flush()


@dataclass
class Container:
    """`tail` holds functions that change the written bytes in the end."""

    entries: list = field(default_factory=list)
    prefix: bytes = b""
    comment: bytes = b""
    count: object = None           # entries that the directory's end counts
    directory_shift: int = 0
    tail: list = field(default_factory=list)

    def to_bytes(self):
        data = bytearray(self.prefix)
        places = []
        for entry in self.entries:
            places.append(len(data) - len(self.prefix))
            data += _local(entry)
        start = len(data)
        for entry, place in zip(self.entries, places):
            data += _central(entry, place + len(self.prefix))
        count = len(self.entries) if self.count is None else self.count
        data += struct.pack("<4s4H2IH", _END, 0, 0, count & 0xFFFF, count & 0xFFFF,
                            len(data) - start, max(0, start + self.directory_shift),
                            len(self.comment))
        data += self.comment
        written = bytes(data)
        for change in self.tail:
            written = change(written)
        return written


def read_container(path):
    """The parts of a container that is whole."""
    with zipfile.ZipFile(path) as source:
        return Container([Entry(info.orig_filename.encode("utf-8", "surrogateescape"),
                                source.read(info),
                                STORED if info.compress_type == STORED else DEFLATED,
                                info.flag_bits & UTF8)
                          for info in source.infolist()])


def _numbers(entry):
    packed = entry.packed_bytes()
    crc = zlib.crc32(entry.data) if entry.crc is None else entry.crc
    packed_size = len(packed) if entry.packed_size is None else entry.packed_size
    size = len(entry.data) if entry.size is None else entry.size
    return packed, crc, packed_size, size


def _local(entry):
    packed, crc, packed_size, size = _numbers(entry)
    name = entry.name if entry.local_name is None else entry.local_name
    extra, sums = entry.local_extra, (crc, packed_size & 0xFFFFFFFF, size & 0xFFFFFFFF)
    after = b""
    if entry.flags & HAS_DESCRIPTOR:
        sums = (0, 0, 0)
        after = struct.pack("<4s3I", _DESCRIPTOR, crc, packed_size & 0xFFFFFFFF, size & 0xFFFFFFFF)
    elif entry.is_zip64:
        extra += struct.pack("<HHQQ", 1, 16, size, packed_size)
        sums = (crc, 0xFFFFFFFF, 0xFFFFFFFF)
    return struct.pack("<4s5H3I2H", _LOCAL, 45 if entry.is_zip64 else 20, entry.flags,
                       entry.method, *_DATE, *sums, len(name), len(extra)) \
        + name + extra + packed + after


def _central(entry, place):
    _, crc, packed_size, size = _numbers(entry)
    place = max(0, place + entry.offset_shift)
    extra, sizes = entry.extra, (packed_size & 0xFFFFFFFF, size & 0xFFFFFFFF)
    if entry.is_zip64:
        extra += struct.pack("<HHQQQ", 1, 24, size, packed_size, place)
        sizes, place = (0xFFFFFFFF, 0xFFFFFFFF), 0xFFFFFFFF
    return struct.pack("<4s6H3I5H2I", _CENTRAL, 45, 45 if entry.is_zip64 else 20, entry.flags,
                       entry.method, *_DATE, crc, *sizes, len(entry.name), len(extra),
                       len(entry.comment), 0, 0, 0, place & 0xFFFFFFFF) \
        + entry.name + extra + entry.comment
