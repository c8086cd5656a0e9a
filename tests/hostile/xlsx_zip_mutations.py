"""Mutations of the container: names, sizes, sums, flags, fields and the bytes around it."""

import struct
import zlib

import zip_container as zips
from mutation import Kinds

KINDS = Kinds()


def _entry(book, random):
    """An entry, more often one that the program reads."""
    return book.any_xml(random) if random.random() < 0.7 else \
        (random.choice(book.entries) if book.entries else None)


def _change(book, random, **changes):
    entry = _entry(book, random)
    if entry is None:
        return None
    for name, value in changes.items():
        setattr(entry, name, value)
    return entry.text_name


@KINDS
def entry_twice(book, random):
    entry = _entry(book, random)
    if entry is None:
        return None
    twin = entry.with_()
    if random.random() < 0.5:
        twin.data = twin.data[:len(twin.data) // 2]
    book.entries.insert(random.randrange(len(book.entries) + 1), twin)
    return entry.text_name


@KINDS
def swap_case(book, random):
    entry = _entry(book, random)
    if entry is None:
        return None
    entry.name = random.choice((entry.name.swapcase(), entry.name.upper(), entry.name.lower()))
    return entry.text_name


def spellings(name, random):
    """Ways to name the same part."""
    letter = random.randrange(max(1, len(name)))
    escaped = name[:letter] + b"%%%02X" % name[letter] + name[letter + 1:] if name else name
    return (b"./" + name, name.replace(b"/", b"//", 1), name.replace(b"/", b"\\"), b"/" + name,
            escaped, name.replace(b"/", b"/./", 1), b"x/../" + name, name + b".", name + b" ",
            name.replace(b"/", b"%2F", 1), name.replace(b"/", b"%5C", 1))


@KINDS
def spell_entry_otherwise(book, random):
    entry = _entry(book, random)
    if entry is None:
        return None
    entry.name = random.choice(spellings(entry.name, random))
    return entry.text_name


@KINDS
def odd_name(book, random):
    entry = _entry(book, random)
    if entry is None:
        return None
    old = entry.name
    entry.name = random.choice((
        old + b"\0", old[:3] + b"\0" + old[3:], b"../" + old, b"../../../../tmp/" + old,
        b"/etc/" + old, b"C:\\" + old, b"", b"/", b".", b"..", b"\xff\xfe" + old, old * 300,
        b"\x1b[31m" + old, b"a\nb", "\u202e".encode() + old, b"CON", old + b"/"))[:65000]
    return repr(old)


@KINDS
def other_local_name(book, random):
    return _change(book, random, local_name=random.choice((b"", b"xl/other.xml", b"\0" * 9)))


@KINDS
def unicode_path_field(book, random):
    """An extra field that names the part otherwise."""
    entry = _entry(book, random)
    if entry is None:
        return None
    other = random.choice((b"xl/other.xml", "xl/\u00fcber.xml".encode(), entry.name.upper(), b""))
    crc = zlib.crc32(entry.name) if random.random() < 0.7 else random.getrandbits(32)
    entry.extra = struct.pack("<HHBI", 0x7075, 5 + len(other), 1, crc) + other
    entry.local_extra = entry.extra
    return entry.text_name


@KINDS
def extra_field(book, random):
    field = random.choice((
        struct.pack("<HH", 0x5455, 5) + b"\1\0\0\0\0", struct.pack("<HH", 1, 0),
        struct.pack("<HH", 0xFFFF, 60000) + b"x", b"\1", bytes(1000),
        struct.pack("<HHQ", 1, 8, 1 << 62)))
    return _change(book, random, extra=field, local_extra=random.choice((b"", field)))


@KINDS
def wrong_crc(book, random):
    return _change(book, random, crc=random.getrandbits(32))


@KINDS
def wrong_size(book, random):
    return _change(book, random, size=random.choice((0, 1, 100, 1 << 20, 0x7FFFFFFF, 0xFFFFFFFF)))


@KINDS
def wrong_packed_size(book, random):
    return _change(book, random, packed_size=random.choice((0, 1, 100, 1 << 20, 0xFFFFFFFE)))


@KINDS
def data_descriptor(book, random):
    return _change(book, random, flags=zips.HAS_DESCRIPTOR)


@KINDS
def zip64_field(book, random):
    where = _change(book, random, is_zip64=True)
    if where and random.random() < 0.3:
        book.find(where).size = random.choice((1 << 33, 1 << 62))
    return where


@KINDS
def unknown_method(book, random):
    return _change(book, random, method=random.choice((1, 6, 9, 12, 14, 93, 95, 99, 0xFFFF)))


@KINDS
def encrypted_flag(book, random):
    return _change(book, random, flags=random.choice((zips.ENCRYPTED, 0x41, 0x2000)))


@KINDS
def odd_flags(book, random):
    return _change(book, random, flags=random.getrandbits(16) & ~zips.ENCRYPTED)


@KINDS
def stored(book, random):
    return _change(book, random, method=zips.STORED)


@KINDS
def comments(book, random):
    book.container.comment = random.choice((b"comment", b"PK\5\6" * 20, b"x" * 65535))
    return _change(book, random, comment=b"PK\1\2" * random.randrange(1, 50))


@KINDS
def bytes_before(book, random):
    book.container.prefix = random.choice((b"#!/bin/sh\n", bytes(512), random.randbytes(100),
                                           b"PK\3\4" + bytes(26)))
    return f"{len(book.container.prefix)} bytes"


@KINDS
def bytes_behind(book, random):
    more = random.choice((b"\n", bytes(1000), random.randbytes(5000), b"PK\5\6" + bytes(18)))
    book.container.tail.append(lambda data: data + more)
    return f"{len(more)} bytes"


@KINDS
def cut_packed(book, random):
    """Packed bytes that end early, under the right sizes or not."""
    entry = _entry(book, random)
    if entry is None:
        return None
    packed = entry.packed_bytes()
    entry.packed = packed[:random.randrange(len(packed) + 1)]
    entry.size = len(entry.data)
    return entry.text_name


@KINDS
def flip_packed(book, random):
    entry = _entry(book, random)
    packed = bytearray(entry.packed_bytes()) if entry else b""
    if not packed:
        return None
    for _ in range(random.choice((1, 1, 4, 20))):
        packed[random.randrange(len(packed))] ^= 1 << random.randrange(8)
    entry.packed = bytes(packed)
    return entry.text_name


@KINDS
def bomb(book, random):
    """A part that becomes large: of blanks in its markup, or of nothing."""
    entry = _entry(book, random)
    if entry is None:
        return None
    size = random.choice((1, 4, 20, 64)) << 20
    at = entry.data.rfind(b"</")
    filler = random.choice((b" ", b"\0", b"<a/>"))
    filling = filler * (size // len(filler))
    entry.data = entry.data[:at] + filling + entry.data[at:] if at > 0 else filling
    return f"{entry.text_name} {size >> 20} MiB of {filler!r}"


@KINDS
def other_order(book, random):
    random.shuffle(book.entries)
    return "entries"


@KINDS
def wrong_place(book, random):
    return _change(book, random, offset_shift=random.choice((-1, 1, 30, -1000, 1 << 20, 1 << 30)))


@KINDS
def wrong_directory(book, random):
    book.container.count = random.choice((0, 1, len(book.entries) - 1, len(book.entries) + 1, 9999,
                                          0xFFFF))
    if random.random() < 0.3:
        book.container.directory_shift = random.choice((-1, 1, 100, 1 << 20))
    return f"{book.container.count} entries"


@KINDS
def flip_file(book, random):
    places = [random.random() for _ in range(random.choice((1, 3, 30)))]
    value = random.randrange(1, 256)

    def flip(data):
        changed = bytearray(data)
        for place in places:
            changed[int(place * len(changed))] ^= value
        return bytes(changed)
    book.container.tail.append(flip)
    return f"{len(places)} bytes"


@KINDS
def cut_file(book, random):
    share = random.choice((0.01, 0.5, 0.9, 0.99, 0.999))
    book.container.tail.append(lambda data: data[:max(1, int(len(data) * share))])
    return f"to {share}"


@KINDS
def folders(book, random):
    """Entries of folders, one of them named like a part."""
    entry = _entry(book, random)
    if entry is None:
        return None
    for name in (b"xl/", entry.name + b"/", b"/"):
        book.entries.insert(0, zips.Entry(name, b"", zips.STORED))
    return entry.text_name
