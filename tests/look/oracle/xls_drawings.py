"""Writes a workbook with one sheet of drawings as records: [MS-ODRAW] 2.2."""

import hashlib
import io
import pathlib
import struct
import sys
import tempfile

import xlwt

from made_drawings import COLUMN, ROW, Freeform, four_colours

sys.path.append(str(pathlib.Path(__file__).resolve().parents[2] / "hostile"))
from corpus_modules import biff  # noqa: E402
from xls_writer import Record, XlsBook  # noqa: E402

_CONTAINER = 15
_PICTURE_FRAME = 75
_FREEFORM = 0
_FIRST_SHAPE = 1024
_IN_GROUP, _HAS_ANCHOR, _HAS_TYPE, _IS_GROUP, _IS_SHEET = 0x2, 0x200, 0x800, 0x1, 0x4
_FLIPS = {"H": 0x40, "V": 0x80}
_UNITS = 100  # of a group's coordinates to a pixel


def save(path, drawings):
    book = _book(max(made.cells[1] + made.cells[3] for made in drawings) + 20)
    writer = _Writer()
    records = writer.records(drawings)
    kinds = [record.kind for record in book.records]
    book.records.insert(kinds.index(biff.BOUNDSHEET) + 1, _group(writer.count))
    view = next(at for at, record in enumerate(book.records) if record.kind == biff.WINDOW2)
    book.records[view:view] = records
    pathlib.Path(path).write_bytes(book.to_bytes())


class _Writer:
    """Makes the records of a sheet: what an object belongs to ends a piece of the art."""

    def __init__(self):
        self.count = 1

    def records(self, drawings):
        pieces = [piece for made in drawings for piece in self._pieces(made.piece, made.cells)]
        sheet = _atom(1, 0xF009, bytes(16)) \
            + _atom(2, 0xF00A, struct.pack("<II", _FIRST_SHAPE, _IS_GROUP | _IS_SHEET))
        pieces = _within(0xF003, [(_atom(_CONTAINER, 0xF004, sheet), None), *pieces])
        numbers = struct.pack("<II", self.count, _FIRST_SHAPE + self.count - 1)
        made = _within(0xF002, [(_atom(1 << 4, 0xF008, numbers), None), *pieces])
        records, art = [], b""
        for data, kind in made:
            art += data
            if kind is not None:
                records += [Record(biff.MSODRAWING, art), _object(kind, len(records) // 2 + 1)]
                art = b""
        return records

    def _pieces(self, piece, cells=None):
        """The art of a piece with the kind of its object behind it."""
        number = _FIRST_SHAPE + self.count
        self.count += 1
        flags = sum(_FLIPS[each] for each in piece.flips) | _HAS_ANCHOR | _HAS_TYPE
        place = _atom(0, 0xF010, _cells(cells)) if cells else _atom(0, 0xF00F, _box(piece.stored_box()))
        flags |= 0 if cells else _IN_GROUP
        if piece.children:
            shape = _atom(1, 0xF009, _box(piece.box)) \
                + _atom(2, 0xF00A, struct.pack("<II", number, flags | _IS_GROUP))
            head = _atom(_CONTAINER, 0xF004,
                         shape + _properties(piece) + place + _atom(0, 0xF011, b""))
            return _within(0xF003, [(head, 0),
                                    *(each for child in piece.children for each in self._pieces(child))])
        is_picture = piece.geometry is None
        kind = _PICTURE_FRAME if is_picture else getattr(piece.geometry, "type", _FREEFORM)
        shape = _atom(kind << 4 | 2, 0xF00A, struct.pack("<II", number, flags))
        return [(_atom(_CONTAINER, 0xF004, shape + _properties(piece) + place
                       + _atom(0, 0xF011, b"")), 8 if is_picture else 30)]


def _properties(piece):
    values = []
    if piece.degrees:
        values.append((0x0004, round(piece.degrees * 65536), b""))
    if piece.geometry is not None:
        values += _outline(piece.geometry) if isinstance(piece.geometry, Freeform) else []
        values += [(0x0181, 0xCC6633, b""), (0x01BF, 0x100010, b""), (0x01C0, 0, b""),
                   (0x01CB, 19050, b""), (0x01FF, 0x80008, b"")]
    elif not piece.children:
        values.append((0x4104, 1, b""))
    if not values:
        return b""
    values.sort(key=lambda value: value[0] & 0x3FFF)
    table = b"".join(struct.pack("<HI", key, number) for key, number, _ in values)
    return _atom(len(values) << 4 | 3, 0xF00B, table + b"".join(data for _, _, data in values))


def _outline(freeform):
    """The properties of a freeform: [MS-ODRAW] 2.3.6."""
    segments = {"M": 0x4000, "L": 0x0001, "C": 0x2001, "Z": 0x6001}
    numbers = [number for step in freeform.steps for number in step[1:]]
    infos = [segments[step[0]] for step in freeform.steps] + [0x8000]
    points = struct.pack("<HHH", len(numbers) // 2, len(numbers) // 2, 0xFFF0) \
        + struct.pack(f"<{len(numbers)}h", *numbers)
    joined = struct.pack("<HHH", len(infos), len(infos), 2) + struct.pack(f"<{len(infos)}H", *infos)
    return [(0x0142, freeform.width, b""), (0x0143, freeform.height, b""), (0x0144, 4, b""),
            (0xC145, len(points), points), (0xC146, len(joined), joined)]


def _within(kind, pieces):
    """Pieces in a container, of which each piece but the first has a part."""
    size = sum(len(art) for art, _ in pieces)
    return [(struct.pack("<HHI", _CONTAINER, kind, size) + pieces[0][0], pieces[0][1]), *pieces[1:]]


def _atom(version, kind, data):
    return struct.pack("<HHI", version, kind, len(data)) + data


def _cells(cells):
    column, row, columns, rows = cells
    return struct.pack("<9H", 0, column, 0, row, 0, column + columns, 0, row + rows, 0)


def _box(box):
    left, top, width, height = box
    return struct.pack("<4i", *(round(each * _UNITS) for each in (left, top, left + width, top + height)))


def _object(kind, number):
    common = struct.pack("<HHHHH12s", 0x15, 18, kind, number, 0x6011, bytes(12))
    if kind == 0:
        common += struct.pack("<HHH", 6, 2, 0)
    if kind == 8:
        common += struct.pack("<HHHHHH", 7, 2, 0xFFFF, 8, 2, 1)
    return Record(biff.OBJ, common + bytes(4))


def _group(count):
    """The record of what the drawings of all sheets share: ids, and the picture."""
    data = four_colours()
    digest = hashlib.md5(data).digest()
    blip = _atom(0x6E0 << 4, 0xF01E, digest + b"\xFF" + data)
    entry = struct.pack("<BB16sHIIIBBH", 6, 6, digest, 0xFF, len(blip), 1, 0, 0, 0, 0) + blip
    ids = struct.pack("<4I", _FIRST_SHAPE + count, 2, count, 1) + struct.pack("<II", 1, count)
    pictures = _atom(1 << 4 | _CONTAINER, 0xF001, _atom(6 << 4 | 2, 0xF007, entry))
    return Record(biff.MSODRAWINGGROUP,
                  _atom(_CONTAINER, 0xF000, _atom(0, 0xF006, ids) + pictures))


def _book(rows):
    """A workbook with cells of the size that is wanted."""
    style = xlwt.easyxf("font: name Arial, height 200")
    book = xlwt.Workbook()
    sheet = book.add_sheet("Drawings")
    for column in range(100):
        sheet.col(column).width = round(COLUMN / 7 * 256)
    for row in range(rows):
        sheet.row(row).height_mismatch = True
        sheet.row(row).height = round(ROW * 15)
    sheet.write(0, 0, "", style)
    file = io.BytesIO()
    book.save(file)
    with tempfile.NamedTemporaryFile(suffix=".xls") as place:
        place.write(file.getvalue())
        place.flush()
        return XlsBook(place.name)
