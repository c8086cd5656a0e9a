"""A workbook as plain data, which the writers of both formats turn into files.

Rows and columns count from 1. A value is None, a text, a number, a `datetime.date` or a `Formula`.
"""

import dataclasses
import typing


@dataclasses.dataclass(frozen=True)
class Style:
    """How a cell looks. Colours are "RRGGBB"; an edge is (line, colour), the line by its name in .xlsx."""
    font: str = "Calibri"
    size: float = 11
    bold: bool = False
    italic: bool = False
    underline: bool = False
    color: str = "000000"
    fill: typing.Optional[str] = None
    left: typing.Optional[tuple] = None
    right: typing.Optional[tuple] = None
    top: typing.Optional[tuple] = None
    bottom: typing.Optional[tuple] = None
    across: typing.Optional[str] = None  # left, center, right, centerContinuous
    down: typing.Optional[str] = None    # top, center, bottom
    wrap: bool = False
    shrink: bool = False
    turned: int = 0                      # degrees, counterclockwise, -90 to 90
    indent: int = 0
    number: str = "General"

    def but(self, **changes):
        return dataclasses.replace(self, **changes)


class Formula(str):
    """A formula without its leading "="."""


@dataclasses.dataclass
class Cell:
    value: object
    style: Style


@dataclasses.dataclass
class Picture:
    """A small drawing: stripes of colours, placed at a cell. Sizes in pixels."""
    row: int
    column: int
    width: int
    height: int
    colors: tuple


class Sheet:
    def __init__(self, name):
        self.name = name
        self.cells = {}            # (row, column): Cell
        self.merges = []           # (top, left, bottom, right)
        self.widths = {}           # column: characters
        self.heights = {}          # row: points
        self.hidden_columns = set()
        self.hidden_rows = set()
        self.pictures = []
        self.gridlines = True
        self.right_to_left = False
        self.hidden = False
        self.landscape = False
        self.one_page = False
        self.header = ""
        self.footer = ""
        self.zoom = 100
        self.frozen = None         # (rows, columns)
        self.print_area = None     # (top, left, bottom, right); only .xlsx files have it
        self.tab_color = None      # only .xlsx files have it

    def put(self, row, column, value=None, style=None):
        """Sets a cell's value and style; without a style the cell keeps the one it has."""
        old = self.cells.get((row, column))
        if style is None:
            style = old.style if old else Style()
        self.cells[row, column] = Cell(value, style)

    def area(self, top, left, bottom, right, style, value=None, merge=True):
        """Gives all cells of an area a style, the first one a value, and merges them."""
        for row in range(top, bottom + 1):
            for column in range(left, right + 1):
                self.put(row, column, None, style)
        self.cells[top, left].value = value
        if merge and (top, left) != (bottom, right):
            self.merges.append((top, left, bottom, right))

    def row(self, row, column, values, style):
        for offset, value in enumerate(values):
            self.put(row, column + offset, value, style)

    def frame(self, top, left, bottom, right, edge):
        """Draws an edge around an area, over whatever its cells have there."""
        for row in range(top, bottom + 1):
            self._edge(row, left, left=edge)
            self._edge(row, right, right=edge)
        for column in range(left, right + 1):
            self._edge(top, column, top=edge)
            self._edge(bottom, column, bottom=edge)

    def _edge(self, row, column, **edges):
        cell = self.cells.setdefault((row, column), Cell(None, Style()))
        cell.style = cell.style.but(**edges)

    def restyle(self, row, column, **changes):
        cell = self.cells.setdefault((row, column), Cell(None, Style()))
        cell.style = cell.style.but(**changes)

    def extent(self):
        """The last row and column that hold a cell."""
        rows = max((row for row, _ in self.cells), default=1)
        return rows, max((column for _, column in self.cells), default=1)

    def is_free(self, top, left, bottom, right):
        return not any(top <= row <= bottom and left <= column <= right for row, column in self.cells)


@dataclasses.dataclass
class Book:
    sheets: list
    font: str = "Calibri"
    size: float = 11
    palette: typing.Optional[list] = None  # (index 8 to 63, colour): what an .xls changes beyond need


def letters(column):
    text = ""
    while column:
        column, rest = divmod(column - 1, 26)
        text = chr(65 + rest) + text
    return text


def address(cell):
    """(6, 2) as "B6"."""
    return f"{letters(cell[1])}{cell[0]}"
