"""Drawings of .xls sheets ([MS-ODRAW]): shapes, their ids, the pictures they use."""

import struct
from collections import Counter
from dataclasses import dataclass

import xls_book as biff

FDGG, BSE, FDG, FSP, OPTIONS, CONNECTOR = 0xF006, 0xF007, 0xF008, 0xF00A, 0xF00B, 0xF012
_TERTIARY = 0xF122
_NEXT_SHAPE = 0x8A                 # a property that holds the id of a shape
_PICTURES = {0x104, 0x186, 0x1C5}  # properties that hold the number of a picture
HEADER_PICTURE, SELECTION = 0x866, 0xED


@dataclass
class Atom:
    instance: int
    type: int
    data: bytes


def atoms(data):
    """Every atom of the containers, and each container itself without its content."""
    at = 0
    while at + 8 <= len(data):
        version, kind, size = struct.unpack_from("<HHI", data, at)
        is_container = version & 15 == 15
        body = b"" if is_container else data[at + 8:at + 8 + size]
        yield Atom(version >> 4, kind, body)
        at += 8 if is_container else 8 + size


def properties(atom):
    """(number, value) of each simple property."""
    for index in range(atom.instance):
        if 6 * index + 6 > len(atom.data):
            return
        number, value = struct.unpack_from("<HI", atom.data, 6 * index)
        yield number & 0x3FFF, value, number


@dataclass
class Drawing:
    """One drawing: of a sheet, of a chart, or of the pictures in a sheet's headers."""

    data: bytes = b""

    def ids(self):
        return [atom.instance for atom in atoms(self.data) if atom.type == FDG]

    def shapes(self):
        return [struct.unpack_from("<I", atom.data)[0] for atom in atoms(self.data)
                if atom.type == FSP]

    def pictures(self):
        found = Counter()
        for atom in atoms(self.data):
            if atom.type in (OPTIONS, _TERTIARY):
                found.update(value for number, value, raw in properties(atom)
                             if number in _PICTURES and raw & 0x4000 and value)
        return found

    def without_ids(self):
        """What is the same in a copy."""
        return [(atom.type, 0 if atom.type == FDG else atom.instance, _without_ids(atom))
                for atom in atoms(self.data)]


def _without_ids(atom):
    if atom.type == FDG:
        return atom.data[:4]
    if atom.type == FSP:
        return atom.data[4:]
    if atom.type == CONNECTOR:
        return atom.data[:4] + atom.data[16:]
    if atom.type in (OPTIONS, _TERTIARY):
        simple = [(raw, 0 if number == _NEXT_SHAPE else value)
                  for number, value, raw in properties(atom)]
        return simple, atom.data[6 * len(simple):]
    return atom.data


def _rejoined(records, wanted):
    """The data of records with what continues them; where others lie between, they go on."""
    drawing, last = Drawing(), None
    for record in records:
        if record.type == wanted or (record.type == biff.CONTINUE and last == wanted):
            drawing.data += record.data
            last = wanted
        else:
            last = record.type
    return drawing


def drawings(sheet):
    """The sheet's drawing and those of its charts, but not those in headers."""
    found, charts, current = [_rejoined(sheet.own, biff.MSODRAWING)], [], None
    for record in sheet.records:
        if record.depth < 2:
            current = None
            continue
        if record.type == biff.BOF:
            current = []
            charts.append(current)
        if current is not None:
            current.append(record)
    found += [_rejoined(chart, biff.MSODRAWING) for chart in charts]
    return [drawing for drawing in found if drawing.data]


def header_parts(records):
    """The drawing of a sheet's or the globals' header pictures."""
    return Drawing(b"".join(record.data[14:] for record in records
                            if record.type == HEADER_PICTURE))


class DrawingGroup:
    """The workbook's table of clusters and its pictures."""

    def __init__(self, data):
        self.clusters, self.references, self.header = [], [], None
        for atom in atoms(data):
            if atom.type == FDGG:
                self.header = struct.unpack_from("<4I", atom.data)
                self.clusters = [struct.unpack_from("<II", atom.data, at)
                                 for at in range(16, len(atom.data) - 7, 8)]
            elif atom.type == BSE:
                self.references.append(struct.unpack_from("<I", atom.data, 24)[0])


def group_of(book):
    return DrawingGroup(b"".join(book.joined(biff.MSODRAWINGGROUP)))


def id_failures(found, group, what):
    """Ids are unique, and lie in clusters that the table gives to their drawing."""
    ids = Counter(number for drawing in found for number in drawing.ids())
    shapes = Counter(shape for drawing in found for shape in drawing.shapes())
    for number, count in ids.items():
        if count > 1:
            yield f"{count} {what} have the id {number}"
    doubled = [shape for shape, count in shapes.items() if count > 1]
    if doubled:
        yield f"shape ids of {what} stand twice: {doubled[:5]}"
    for drawing in found:
        owner = drawing.ids()
        for shape in drawing.shapes():
            cluster = (shape >> 10) - 1
            if not 0 <= cluster < len(group.clusters) or [group.clusters[cluster][0]] != owner:
                yield f"the shape {shape} lies in no cluster of drawing {owner} ({what})"
                break
            if shape & 0x3FF >= group.clusters[cluster][1]:
                yield f"the shape {shape} lies behind the used part of its cluster ({what})"
                break
    if group.header and found:
        most, tables, saved, count = group.header
        if tables != len(group.clusters) + 1:
            yield f"the cluster table says {tables}, has {len(group.clusters)} + 1 ({what})"
        if most < max(shapes, default=0) or saved < len(shapes) or count < len(found):
            yield f"the drawing group counts {saved} shapes up to {most} in {count} drawings, " \
                  f"there are {len(shapes)} in {len(found)} ({what})"


def shape_count_failures(drawing):
    """A drawing's own counts."""
    for atom in atoms(drawing.data):
        if atom.type == FDG:
            count, last = struct.unpack_from("<II", atom.data)
            shapes = drawing.shapes()
            if count != len(shapes):
                yield f"the drawing counts {count} shapes, has {len(shapes)}"
            if shapes and last not in shapes and last < max(shapes):
                yield f"the drawing's last shape is {last}, should be {max(shapes)}"


def picture_failures(book):
    """Each picture counts at least as many uses as there are."""
    used = Counter()
    for sheet in book.sheets:
        for drawing in drawings(sheet):
            used += drawing.pictures()
    references = group_of(book).references
    for number, count in used.items():
        if number > len(references):
            yield f"picture {number} of {len(references)} is used"
        elif references[number - 1] < count:
            yield f"picture {number} counts {references[number - 1]} uses, has {count}"
