"""Workbooks whose look is hostile (.xls): indices out of range, and drawings that lie about what
they hold. Each function takes how many and gives the bytes of a workbook."""

import io
import struct
import tempfile

import xlwt

from corpus_modules import biff
from heavy_xls import objects
from xls_writer import Record, XlsBook

_FONT, _FORMAT, _PALETTE, _STYLE = 0x31, 0x41E, 0x92, 0x293
_HEADER = 8  # bytes of a record of a drawing
_CONTAINER = 0xF


def _book():
    book = xlwt.Workbook()
    sheet = book.add_sheet("Model")
    for at in range(20):
        sheet.write(at, 0, f"text {at}", xlwt.easyxf("font: bold on; pattern: pattern solid, "
                                                     "fore_colour red", "0.00"))
        sheet.write(at, 1, at)
    sheet.write_merge(30, 31, 0, 3, "merged")
    file = io.BytesIO()
    book.save(file)
    return _open(file.getvalue())


def _open(data):
    with tempfile.NamedTemporaryFile(suffix=".xls") as place:
        place.write(data)
        place.flush()
        return XlsBook(place.name)


def _patched(kind, offset, layout, value, book=None):
    """The records of that kind, each with a number replaced."""
    book = book or _book()
    size = struct.calcsize(layout)
    for record in book.of_kind(kind):
        record.data = record.data[:offset] + struct.pack(layout, value) \
            + record.data[offset + size:]
    return book.to_bytes()


def no_such_shared_text(count):
    return _patched(biff.LABELSST, 6, "<I", count)


def no_such_style(count):
    return _patched(biff.LABELSST, 4, "<H", count & 0xFFFF)


def no_such_font(count):
    return _patched(biff.XF, 0, "<H", count & 0xFFFF)


def no_such_number_format(count):
    return _patched(biff.XF, 2, "<H", count & 0xFFFF)


def no_such_parent(count):
    return _patched(biff.XF, 4, "<H", count & 0xFFFF)


def no_such_colors(count):
    return _patched(biff.XF, 18, "<H", count & 0xFFFF)


def long_palette(count):
    book = _book()
    at = next(index for index, record in enumerate(book.records) if record.kind == _FONT)
    book.records.insert(at, Record(_PALETTE, struct.pack("<H", count & 0xFFFF) + bytes(20)))
    return book.to_bytes()


def lying_count_of_texts(count):
    return _patched(biff.SST, 4, "<I", count)


def lying_font_name(count):
    return _patched(_FONT, 14, "<B", count & 0xFF)


def lying_format(count):
    return _patched(_FORMAT, 2, "<H", count & 0xFFFF)


def merges_of_all(count):
    book = _book()
    places = struct.pack("<HHHH", 0, 0xFFFF, 0, 0xFFFF) * min(count, 1000)
    for record in book.of_kind(biff.MERGES):
        record.data = struct.pack("<H", 0xFFFF) + places
    return book.to_bytes()


def fonts(count):
    book = _book()
    at = next(index for index, record in enumerate(book.records) if record.kind == _FONT)
    first = book.records[at]
    book.records[at:at] = [first.copy() for _ in range(count)]
    return book.to_bytes()


def _with_drawing(change):
    book = _open(objects(50))
    first = book.of_kind(biff.MSODRAWING)[0]
    first.data = change(first.data)
    return book.to_bytes()


def lying_drawing(count):
    """The outermost container says that it is that long."""
    return _with_drawing(lambda data: data[:4] + struct.pack("<I", count) + data[_HEADER:])


def short_drawing(count):
    """A container that ends before what it holds."""
    return _with_drawing(lambda data: data[:4] + struct.pack("<I", min(count, 20))
                         + data[_HEADER:])


def nested_drawing(count):
    """Groups within groups; each says that it is as long as all the rest."""
    count = min(count, 8000 // _HEADER)

    def change(data):
        nested = b"".join(struct.pack("<HHI", _CONTAINER, 0xF003, (count - at) * _HEADER + 10_000)
                          for at in range(count))
        return nested + data
    return _with_drawing(change)


def huge_anchor(count):
    book = _open(objects(50))
    for record in book.of_kind(biff.MSODRAWING):
        at = record.data.find(struct.pack("<HHI", 0, 0xF010, 18))
        if at >= 0:
            record.data = record.data[:at + 10] + struct.pack(
                "<8H", *[count & 0xFFFF] * 8) + record.data[at + 26:]
    return book.to_bytes()
