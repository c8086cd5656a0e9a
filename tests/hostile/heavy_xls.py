"""Large .xls workbooks that are legal: each has very many of one thing. The sheet "Model" is the
calendar's model."""

import io
import struct
import tempfile

import xlwt

from corpus_modules import biff, xls_compound
from xls_writer import Record, XlsBook

Entry, STORAGE, STREAM = xls_compound.Entry, xls_compound.STORAGE, xls_compound.STREAM
_CONTAINER = 15
_DGG, _DG, _SPGR, _SP = 0xF000, 0xF002, 0xF003, 0xF004
_FDGG, _FDG, _FSPGR, _FSP, _ANCHOR, _CLIENT_DATA = 0xF006, 0xF008, 0xF009, 0xF00A, 0xF010, 0xF011
_CLUSTER = 1024  # shape ids of one drawing that belong together
_RECTANGLE, _OF_CELLS = 1, 0
_NONE = 0xFFFFFFFF
_GROUP_FLAGS, _SHAPE_FLAGS = 0x5, 0xA00


def _atom(version, kind, data, size=None):
    """A record of a drawing; `size` counts what follows in later pieces as well."""
    return struct.pack("<HHI", version, kind, len(data) if size is None else size) + data


def _shape(number, row):
    return _atom(_CONTAINER, _SP, _atom(_RECTANGLE << 4 | 2, _FSP, struct.pack(
        "<II", number, _SHAPE_FLAGS)) + _atom(0, _ANCHOR, struct.pack(
            "<9H", 0, 1, 0, row, 0, 2, 0, row + 1, 0)) + _atom(0, _CLIENT_DATA, b""))


def _part(kind, data):
    return struct.pack("<HH", kind, len(data)) + data


def _common(kind, number):
    """What every object begins with."""
    return _part(0x15, struct.pack("<HHH12s", kind, number & 0xFFFF, 0x6011, bytes(12)))


def _rectangle(number):
    return _common(2, number) + _part(0, b"")


def _embedded(number):
    """A picture of an object that lies in the storage of that number. [MS-XLS] 2.5.144"""
    class_name = b"Package"
    formula = struct.pack("<HI", 5, 0) + b"\2\0\0\0\0" \
        + struct.pack("<BBB", 3, len(class_name), 0) + class_name
    formula += b"\0" * (len(formula) % 2)
    formula = struct.pack("<H", len(formula)) + formula + struct.pack("<I", number)
    return _common(8, number) + _part(7, b"\2\0") + _part(8, b"\1\0") + _part(9, formula) \
        + _part(0, b"")


def _drawing(count, make_object):
    """The records of a drawing of that many rectangles, each with an object."""
    first = _CLUSTER
    shapes = [_shape(first + number + 1, 100 + number) for number in range(count)]
    group = _atom(_CONTAINER, _SP, _atom(1, _FSPGR, bytes(16))
                  + _atom(2, _FSP, struct.pack("<II", first, _GROUP_FLAGS)))
    inner = len(group) + sum(map(len, shapes))
    head = _atom(1 << 4, _FDG, struct.pack("<II", count + 1, first + count)) \
        + _atom(_CONTAINER, _SPGR, group, inner)
    head = _atom(_CONTAINER, _DG, head, len(head) - len(group) + inner)
    records = []
    for number, shape in enumerate(shapes):
        records += [Record(biff.MSODRAWING, shape if number else head + shape),
                    Record(biff.OBJ, make_object(number + 1))]
    return records


def _group(count):
    """The record that says which drawing has which ids."""
    used = count + 1
    clusters = [min(_CLUSTER, used - start) for start in range(0, used, _CLUSTER)]
    data = struct.pack("<4I", _CLUSTER + used, len(clusters) + 1, used, 1) \
        + b"".join(struct.pack("<II", 1, size) for size in clusters)
    return Record(biff.MSODRAWINGGROUP, _atom(_CONTAINER, _DGG, _atom(0, _FDGG, data)))


def _book(names=("Model",)):
    book = xlwt.Workbook()
    for name in names:
        book.add_sheet(name).write(0, 0, 1)
    file = io.BytesIO()
    book.save(file)
    with tempfile.NamedTemporaryFile(suffix=".xls") as place:
        place.write(file.getvalue())
        place.flush()
        return XlsBook(place.name)


def _with_objects(count, make_object):
    book = _book()
    kinds = [record.kind for record in book.records]
    book.records.insert(kinds.index(biff.BOUNDSHEET) + 1, _group(count))
    view = next(index for index, record in enumerate(book.records) if record.kind == biff.WINDOW2)
    book.records[view:view] = _drawing(count, make_object)
    return book


def objects(count):
    """Rectangles on one sheet."""
    return _with_objects(count, _rectangle).to_bytes()


def embedded_objects(count):
    """Objects on one sheet, each with a storage of its own, in which there is a stream."""
    book = _with_objects(count, _embedded)
    directory = book.file.directory
    names = [f"MBD{number:08X}" for number in range(1, count + 1)]
    streams = [_entry("\1Ole", STREAM, data=b"x") for _ in names]
    storages = [_entry(name, STORAGE) for name in names]
    for number, storage in enumerate(storages):
        storage.links = (_NONE, _NONE, 2 + count + number)
    directory[:] = [directory[0], book.stream_entry, *storages, *streams]
    book.stream_entry.links = (_NONE, _NONE, _NONE)
    top = _link(directory, list(range(1, 2 + count)), 0, (count + 1).bit_length())
    directory[0].links = (_NONE, _NONE, top)
    directory += [_entry("", 0) for _ in range(-len(directory) % 4)]
    return book.to_bytes()


def _entry(name, kind, data=b""):
    return Entry(name, kind, 1, (_NONE, _NONE, _NONE), bytes(16), 0, bytes(16), 0, len(data), data)


def _link(directory, numbers, depth, levels):
    """Makes a red-black tree of entries that are in order; the number of its root. Only the last
    level, which is not full, is red."""
    if not numbers:
        return _NONE
    middle = len(numbers) // 2
    entry = directory[numbers[middle]]
    below = [_link(directory, part, depth + 1, levels)
             for part in (numbers[:middle], numbers[middle + 1:])]
    entry.links = (*below, entry.links[2])
    entry.color = 0 if depth == levels - 1 else 1
    return numbers[middle]
