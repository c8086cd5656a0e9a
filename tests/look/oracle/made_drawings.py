"""Drawings of which both formats can be made: see xlsx_drawings and xls_drawings."""

import dataclasses
import io

from PIL import Image

COLUMN, ROW = 64, 20  # pixels of a cell


@dataclasses.dataclass
class Preset:
    """A shape by its name (ECMA-376 20.1.10.56) and its type ([MS-ODRAW] 2.4.24)."""
    name: str
    type: int


@dataclasses.dataclass
class Freeform:
    """A shape with an outline of its own: "M", "L" and "C" with their points, "Z", in coordinates of
    that size."""
    width: int
    height: int
    steps: list


@dataclasses.dataclass
class Written:
    """What an .xlsx workbook alone can say: the content of a custGeom element."""
    xml: str


@dataclasses.dataclass
class Piece:
    """A shape, a picture, or a group if it has children. The box, in pixels from the sheet's corner,
    is that before it is turned."""
    box: tuple
    degrees: float = 0
    flips: str = ""              # "H", "V", "HV"
    geometry: object = None      # without one it is a picture, or a group
    children: list = dataclasses.field(default_factory=list)

    def lies_on_its_side(self):
        """Then the cells, in .xls also the place in a group, are those after a quarter turn."""
        return 45 <= self.degrees < 135 or 225 <= self.degrees < 315

    def stored_box(self):
        return quarter_turned(self.box) if self.lies_on_its_side() else self.box


@dataclasses.dataclass
class Made:
    """A piece in a rectangle of cells, given by its first column and row and by how many it has."""
    name: str
    cells: tuple
    piece: Piece

    def box(self):
        return box_of(self.cells)


def box_of(cells):
    column, row, columns, rows = cells
    return column * COLUMN, row * ROW, columns * COLUMN, rows * ROW


def quarter_turned(box):
    left, top, width, height = box
    return left + (width - height) / 2, top + (height - width) / 2, height, width


def four_colours():
    """A PNG picture of which every quarter has a colour of its own."""
    image = Image.new("RGB", (2, 2))
    image.putdata([(220, 0, 0), (0, 160, 0), (0, 0, 220), (240, 200, 0)])
    out = io.BytesIO()
    image.resize((64, 64), Image.Resampling.NEAREST).save(out, "PNG")
    return out.getvalue()
