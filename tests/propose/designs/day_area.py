"""What one day of a month has: cells for its number, a holiday, notes, gaps."""

import dataclasses
import typing


@dataclasses.dataclass(frozen=True)
class Part:
    """Some cells of a day, merged if they are more than one. Offsets count from 0."""
    role: str  # number, holiday, note, gap
    top: int
    left: int
    bottom: int
    right: int
    merged: bool = True


@dataclasses.dataclass(frozen=True)
class DayArea:
    name: str
    rows: int
    columns: int
    parts: tuple
    heights: tuple                # of its rows in points
    widths: tuple                 # of its columns in characters
    number: tuple                 # (row, column), the cell that the day's number goes into
    holiday: typing.Optional[tuple] = None
    multi: tuple = ("0",)         # policies for several holidays that suit it, the best one first
    own_holiday_style: bool = False  # holidays have a style that notes lack

    @property
    def number_width(self):
        """Characters that the number's cell has room for."""
        part = next(part for part in self.parts if part.role == "number")
        return sum(self.widths[part.left:part.right + 1])

    @property
    def number_is_tall(self):
        """Whether the number's cell has several rows."""
        return any(part.role == "number" and part.bottom > part.top for part in self.parts)


def _rows(role, first, last, columns, merged):
    """One part for each row, across the whole day or cell by cell."""
    if merged or columns == 1:
        return [Part(role, row, 0, row, columns - 1) for row in range(first, last + 1)]
    return [Part(role, row, 0, row, columns - 1, merged=False) for row in range(first, last + 1)]


def single(rng):
    """One cell for all: tall if it is meant to be written into by hand."""
    tall = rng.random() < 0.6
    return DayArea("single", 1, 1, (Part("number", 0, 0, 0, 0),),
                   (rng.choice((40, 48, 60, 72)) if tall else rng.choice((15.75, 18, 24)),),
                   (rng.choice((11, 13, 14, 16)) if tall else rng.choice((4, 6, 8.43)),), (0, 0))


def below(rng):
    """The number, and rows below it."""
    rows = rng.choices((2, 3, 4, 5, 6, 7, 8, 10), (34, 18, 16, 12, 9, 4, 4, 3))[0]
    own = rows == 2 or rng.random() < 0.5
    parts = [Part("number", 0, 0, 0, 0), Part("holiday" if own else "note", 1, 0, 1, 0)]
    parts += _rows("note", 2, rows - 1, 1, True)
    heights = (rng.choice((15.75, 18, 21, 24)),
               *([rng.choice((30, 36, 45))] if rows == 2 else [rng.choice((12, 12.75, 14.25))] * (rows - 1)))
    multi = ("0",) if rows == 2 else ("1", "0")
    return DayArea("below", rows, 1, tuple(parts), heights, (rng.choice((10, 12, 14, 18)),), (0, 0),
                   (1, 0), multi, own)


def below_and_gap(rng):
    """The number, a line for a holiday, and a thin empty row before the next week."""
    return DayArea("below and gap", 3, 1, (Part("number", 0, 0, 0, 0), Part("holiday", 1, 0, 1, 0),
                                           Part("gap", 2, 0, 2, 0)),
                   (18, rng.choice((14.25, 24)), rng.choice((4.5, 6))), (rng.choice((9, 12)),), (0, 0),
                   (1, 0), ("0",), True)


def beside(rng):
    """A narrow column for the number, a wide one for the text."""
    return DayArea("beside", 1, 2, (Part("number", 0, 0, 0, 0), Part("holiday", 0, 1, 0, 1)),
                   (rng.choice((24, 30, 45, 60)),), (rng.choice((3, 3.7, 4.5)), rng.choice((9, 11, 13))),
                   (0, 0), (0, 1), ("0",), True)


def beside_and_notes(rng):
    """Number and holiday side by side, lines for notes below."""
    rows = rng.choice((3, 4, 5, 6))
    merged = rng.random() < 0.6
    parts = (Part("number", 0, 0, 0, 0), Part("holiday", 0, 1, 0, 1), *_rows("note", 1, rows - 1, 2, merged))
    return DayArea("beside and notes", rows, 2, parts, (18,) + (12.75,) * (rows - 1),
                   (rng.choice((3.3, 4)), rng.choice((9, 11))), (0, 0), (0, 1),
                   ("0",) if merged else ("0", "1"), True)


def merged_block(rng):
    """All cells of the day are one."""
    rows, columns = rng.choice(((2, 1), (3, 1), (4, 1), (2, 2), (3, 2), (4, 3), (5, 2), (3, 4)))
    return DayArea("merged block", rows, columns, (Part("number", 0, 0, rows - 1, columns - 1),),
                   (rng.choice((15, 18)),) * rows, (round(12 / columns, 1),) * columns, (0, 0))


def merged_rows(rng):
    """Paper of small squares: number and text are merged across the day's columns."""
    columns = rng.choice((2, 3, 3, 4, 5, 6, 8, 10, 12))
    rows = rng.choice((2, 2, 3, 4, 5, 6))
    block = rows > 2 and rng.random() < 0.5  # the text is one tall cell
    if block:
        parts = [Part("number", 0, 0, 0, columns - 1), Part("holiday", 1, 0, rows - 1, columns - 1)]
    else:
        parts = [Part("number", 0, 0, 0, columns - 1), Part("holiday", 1, 0, 1, columns - 1),
                 *_rows("note", 2, rows - 1, columns, True)]
    return DayArea("merged rows", rows, columns, tuple(parts), (18,) + (rng.choice((13.5, 15)),) * (rows - 1),
                   (max(1.4, round(13 / columns, 1)),) * columns, (0, 0), (1, 0),
                   ("0",) if block or rows == 2 else ("1", "0"), True)


def number_and_text(rng):
    """The number in the first of several columns, the text merged over the others, notes below."""
    columns = rng.choice((3, 4, 5, 7))
    rows = rng.choice((1, 2, 3, 4))
    parts = (Part("number", 0, 0, 0, 0), Part("holiday", 0, 1, 0, columns - 1),
             *_rows("note", 1, rows - 1, columns, True))
    return DayArea("number and text", rows, columns, parts,
                   (rng.choice((18, 21)),) + (14.25,) * (rows - 1),
                   (3.2,) + (round(11 / (columns - 1), 1),) * (columns - 1), (0, 0), (0, 1), ("0",), True)


def number_at_right(rng):
    """The number in the day's top right corner."""
    rows = rng.choice((2, 3, 4))
    parts = (Part("holiday", 0, 0, 0, 0), Part("number", 0, 1, 0, 1), *_rows("note", 1, rows - 1, 2, True))
    return DayArea("number at the right", rows, 2, parts, (18,) + (15,) * (rows - 1),
                   (rng.choice((9, 11)), 3.7), (0, 1), (0, 0), ("0", "1"), True)


def number_at_bottom(rng):
    """The number in the day's last row, the text above it."""
    parts = (Part("holiday", 0, 0, 0, 0), Part("number", 1, 0, 1, 0))
    return DayArea("number at the bottom", 2, 1, parts, (rng.choice((24, 36)), 18), (rng.choice((10, 13)),),
                   (1, 0), (0, 0), ("0",), True)


def tall_number(rng):
    """A number over all rows, lines beside it."""
    rows = rng.choice((2, 3, 4, 5))
    parts = (Part("number", 0, 0, rows - 1, 0), Part("holiday", 0, 1, 0, 1),
             *(Part("note", row, 1, row, 1) for row in range(1, rows)))
    return DayArea("tall number", rows, 2, parts, (rng.choice((14.25, 15.75)),) * rows,
                   (4, rng.choice((10, 13))), (0, 0), (0, 1), ("1", "0"), True)


def spaced(rng):
    """Days with a thin empty column between them."""
    parts = (Part("number", 0, 0, 0, 0), Part("gap", 0, 1, 1, 1, merged=False), Part("holiday", 1, 0, 1, 0))
    return DayArea("spaced", 2, 2, parts, (18, rng.choice((24, 33))), (rng.choice((10, 12)), 1.2), (0, 0),
                   (1, 0), ("0",), True)


def pick(rng):
    kinds = (single, below, below_and_gap, beside, beside_and_notes, merged_block, merged_rows,
             number_and_text, number_at_right, number_at_bottom, tall_number, spaced)
    return rng.choices(kinds, (16, 32, 4, 8, 5, 6, 10, 6, 4, 2, 4, 3))[0](rng)


def pick_small(rng):
    """For the blocks of a year page."""
    way = rng.choices(("number", "text below", "beside", "double width", "tall"), (78, 11, 3, 5, 3))[0]
    if way == "text below":
        return DayArea(way, 2, 1, (Part("number", 0, 0, 0, 0), Part("holiday", 1, 0, 1, 0)), (13.5, 11.25),
                       (rng.choice((5, 7, 9)),), (0, 0), (1, 0), ("0",), True)
    if way == "beside":
        return DayArea(way, 1, 2, (Part("number", 0, 0, 0, 0), Part("holiday", 0, 1, 0, 1)), (15.75,),
                       (2.7, 6), (0, 0), (0, 1), ("0",), True)
    if way == "double width":
        return DayArea(way, 1, 2, (Part("number", 0, 0, 0, 1),), (13.5,), (1.5, 1.5), (0, 0))
    if way == "tall":
        return DayArea(way, 2, 1, (Part("number", 0, 0, 1, 0),), (9, 9), (3.5,), (0, 0))
    return DayArea(way, 1, 1, (Part("number", 0, 0, 0, 0),), (rng.choice((12, 12.75, 15, 18)),),
                   (rng.choice((2.6, 3, 3.4, 4, 5)),), (0, 0))
