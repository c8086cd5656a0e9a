"""Where month and year stand on a month page, and what stands in their cells."""

import dataclasses
import datetime
import typing

from .sheet import Formula, address


@dataclasses.dataclass
class Title:
    kind: str
    month: typing.Optional[tuple] = None  # the cell, None if the page has none
    year: typing.Optional[tuple] = None
    month_text: typing.Optional[str] = None  # what can be read there
    year_read: bool = False                  # a year, or a word for it, can be read
    combined: bool = False                   # month and year in one cell
    state: str = "sample"
    bottom: int = 0                          # the last row that it takes above the grid


KINDS = {"left and right": 24, "year left": 4, "centered": 15, "together": 9, "combined": 11,
         "turned": 8, "labels": 5, "month only": 7, "between": 30, "side": 5, "none": 3, "below": 3}
# What the cells hold: the sample month, nothing, words that stand for them, dates, formulas of today.
STATES = {"sample": 52, "empty": 28, "placeholder": 7, "dates": 9, "today": 4}


def pick_kind(rng, area):
    kinds = dict(KINDS)
    if area.columns < 3:
        del kinds["between"]
    return rng.choices(list(kinds), kinds.values())[0]


def pick_state(rng, kind):
    states = dict(STATES)
    if kind == "combined":
        states = {"sample": 60, "dates": 35, "today": 5}
    state = rng.choices(list(states), states.values())[0]
    if state == "empty" and kind in ("turned", "side", "below"):
        return "placeholder"  # nobody would find an empty cell there
    if state == "placeholder" and kind == "labels":
        return "empty"
    return state


class Placer:
    """Puts a title of a kind around the columns of a grid."""

    def __init__(self, rng, sheet, theme, names, words, sample):
        self.rng, self.sheet, self.theme = rng, sheet, theme
        self.names, self.words, self.sample = names, words, sample
        self.size = rng.choice((14, 16, 18, 20, 24, 28, 36))
        self.filled = rng.random() < 0.2
        self.bold = rng.random() < 0.7

    def style(self, across, **changes):
        style = self.theme.title(size=self.size, across=across, bold=self.bold, **changes)
        if self.filled:
            style = style.but(fill=self.theme.heading_fill, color=self.theme.heading_ink)
        return style

    def above(self, kind, state, row, left, right):
        """A title in the rows from `row` on; left and right are the grid's first and last column."""
        title = Title(kind, state=state, bottom=row)
        day = (right - left + 1) // 7
        if kind == "left and right":
            split = left + day * self.rng.choice((3, 4, 5, 6)) - 1
            self._month(title, row, left, row, split, "left")
            first = right - day + 1 if self.rng.random() < 0.5 else split + 1
            self._year(title, row, first, row, right, "right")
        elif kind == "year left":
            split = left + day * self.rng.choice((1, 2)) - 1
            self._year(title, row, left, row, split, "left")
            self._month(title, row, split + 1, row, right, self.rng.choice(("center", "right")))
        elif kind == "centered":
            self._centered(title, row, left, right)
        elif kind == "between":
            self._centered(title, row + self.rng.choice((1, 2)), left + 8, right - 8)
        elif kind == "together":
            wide = self.rng.choice((1, 2, 2))
            self._month(title, row, left, row, left + wide * day - 1, self.rng.choice(("left", "right")))
            self._year(title, row, left + wide * day, row, left + (wide + 1) * day - 1, "left")
        elif kind == "combined":
            self._combined(title, row, left, right)
        elif kind == "labels":
            self._labels(title, row, left, day)
        elif kind == "month only":
            self._month(title, row, left, row, right if self.rng.random() < 0.6 else left + day - 1,
                        self.rng.choice(("left", "center")))
        self.heights(title, row)
        return title

    def turned(self, state, top, bottom, column, year_row):
        """The month at the left of the weeks, turned; the year above it or in the same column."""
        title = Title("turned", state=state, bottom=year_row)
        if self.rng.random() < 0.5:
            self._month(title, top, column, bottom, column, "center", turned=90)
            self._year(title, year_row, column, year_row, column, "center", size=12)
        else:
            middle = top + (bottom - top) * 2 // 3
            self._month(title, top, column, middle, column, "center", turned=90)
            self._year(title, middle + 1, column, bottom, column, "center", turned=90)
        self.sheet.widths[column] = max(6, self.size / 3)
        return title

    def stacked(self, kind, state, row, left, right):
        """Month and year one below the other, beside or below the grid."""
        title = Title(kind, state=state)
        self._month(title, row, left, row, right, "center")
        self._year(title, row + 1, left, row + 1, right, "center")
        return title

    def _centered(self, title, row, left, right):
        order = self.rng.choice(("year above", "year below", "month alone", "year below"))
        if order == "year above":
            self._year(title, row, left, row, right, "center", size=max(11, self.size // 2))
            row += 1
        self._month(title, row, left, row, right, "center")
        if order == "year below":
            self._year(title, row + 1, left, row + 1, right, "center", size=max(11, self.size // 2))
            row += 1
        title.bottom = row

    def _combined(self, title, row, left, right):
        title.combined, title.month = True, (row, left)
        style = self.style(self.rng.choice(("left", "center")))
        if title.state == "sample":
            title.month_text = self.names.months[self.sample.month - 1]
            value = f"{title.month_text} {self.sample.year}"
        elif title.state == "dates":
            value = datetime.date(self.sample.year, self.sample.month, 1)
            style = style.but(number=self.rng.choice(("mmmm yyyy", "mmmm yyyy", "mmm yy")))
        else:
            value, style = Formula("TODAY()"), style.but(number="mmmm yyyy")
        title.year_read = True
        self.sheet.area(row, left, row, right, style, value)

    def _labels(self, title, row, left, day):
        """A form: "Month:" and its field, "Year:" and its field."""
        label = self.theme.text(size=12, across="right")
        self.sheet.area(row, left, row, left + day - 1, label, f"{self.words.month}:")
        self._month(title, row, left + day, row, left + 3 * day - 1, "left")
        self.sheet.area(row, left + 3 * day, row, left + 4 * day - 1, label, f"{self.words.year}:")
        self._year(title, row, left + 4 * day, row, left + 5 * day - 1, "left")
        title.year_read = True

    def _month(self, title, top, left, bottom, right, across, turned=0):
        style, value = self.style(across, turned=turned), None
        if title.state == "sample":
            value = title.month_text = self.names.months[self.sample.month - 1]
        elif title.state == "placeholder":
            value = self.rng.choice(("[{}]", "{}", "<{}>", "{}")).format(self.words.month)
        elif title.state == "dates":
            value = datetime.date(self.sample.year, self.sample.month, 1)
            style = style.but(number=self.rng.choice(("mmmm", "mmmm", "mmm")))
        elif title.state == "today":
            value, style = Formula("TODAY()"), style.but(number="mmmm")
        title.month = (top, left)
        self.sheet.area(top, left, bottom, right, style, value)

    def _year(self, title, top, left, bottom, right, across, turned=0, size=None):
        style, value = self.style(across, turned=turned, number=self.rng.choice(("General", "0"))), None
        if size:
            style = style.but(size=size)
        if title.state == "sample":
            value = self.sample.year if self.rng.random() < 0.85 else str(self.sample.year)
        elif title.state == "placeholder":
            value = self.rng.choice(("[{}]", "{}", "<{}>", "{}")).format(self.words.year)
        elif title.state == "dates":  # not a date itself, or a written year would show as 1905
            value = Formula(f"YEAR({address(title.month)})") if title.month else self.sample.year
        elif title.state == "today":
            value = Formula("YEAR(TODAY())")
        title.year, title.year_read = (top, left), title.state != "empty"
        self.sheet.area(top, left, bottom, right, style, value)

    def fit(self, title):
        """Makes texts smaller that their cells would cut."""
        for cell, characters in ((title.month, 9), (title.year, 5)):
            if cell is None or self.sheet.cells[cell].style.turned:
                continue
            area = next((merge for merge in self.sheet.merges if merge[:2] == cell), (*cell, *cell))
            wide = sum(self.sheet.widths.get(column, 8.43) for column in range(area[1], area[3] + 1))
            largest = max(8, int(wide / (characters + title.combined * 5) * 10))
            for row in range(area[0], area[2] + 1):
                for column in range(area[1], area[3] + 1):
                    style = self.sheet.cells[row, column].style
                    self.sheet.restyle(row, column, size=min(style.size, largest))

    def heights(self, title, row):
        for cell in (title.month, title.year):
            if cell and cell[0] >= row:
                size = self.sheet.cells[cell].style.size
                self.sheet.heights[cell[0]] = max(self.sheet.heights.get(cell[0], 0), round(size * 1.5))


def tell(calendar, title):
    """Says in a calendar's parameters what the title makes true."""
    if title.month is None:
        calendar.set("OutMonth", "N")
    else:
        sure = "likely" if title.state == "empty" and title.kind != "labels" else "certain"
        calendar.set("OutMonth", "Y", sure)
        calendar.set("FirstCellOfMonth", address(title.month), sure)
    if title.year is None:
        calendar.set("OutYear", "N", "likely" if title.combined or title.state == "empty" else "certain")
    else:
        sure = "certain" if title.year_read else "likely"
        calendar.set("OutYear", "Y", sure)
        calendar.set("FirstCellOfYear", address(title.year), sure)

