"""A sheet for a year: twelve equal blocks in a grid of months."""

import dataclasses
import datetime

from . import day_area, extras, grid, truth
from .month_page import Page, tell_grid
from .sheet import Formula, Sheet, address

LAYOUTS = {3: 46, 4: 24, 6: 8, 2: 8, 1: 8, 12: 6}  # months side by side
SEASONS = ("CCE5FF", "CCFFCC", "FFFF99", "FFCC99")


@dataclasses.dataclass
class Shape:
    """The size of a block, as offsets from its first cell."""
    caption: str    # above, corner, turned, left of names
    before: int     # columns before the days: week numbers, a corner or a turned caption
    caption_row: int
    names_row: int  # -1 without weekday names
    first_week: int
    rows: int
    columns: int


class _Maker:
    def __init__(self, rng, theme, names, words, name):
        self.rng, self.theme, self.names, self.words = rng, theme, names, words
        self.sheet = Sheet(name)
        self.features = []
        self.across = rng.choices(list(LAYOUTS), LAYOUTS.values())[0]
        self.area = day_area.pick_small(rng)
        if self.across == 12 and self.area.columns > 1:
            self.area = dataclasses.replace(self.area, name="number", rows=1, columns=1,
                                            parts=(day_area.Part("number", 0, 0, 0, 0),), heights=(15,),
                                            widths=(2.9,), number=(0, 0), holiday=None)
        self.plan = grid.pick_plan(rng, theme, names, self.area, small=True)
        if theme.grid_lines == "days" and rng.random() < 0.5:
            theme = self.theme = dataclasses.replace(theme, grid_lines=rng.choice(("none", "outside")))
        self.year = rng.randint(2010, 2028)
        self.days_filled = rng.random() < 0.5
        self.way = rng.choices(("numbers", "dates", "texts"), (80, 16, 4))[0]
        self.week_numbers = rng.random() < 0.16
        self.captions = rng.choices(("names", "with year", "empty", "dates", "numbers"), (74, 6, 12, 5, 3))[0]
        self.caption_style = self._caption_style()
        self.seasons = rng.random() < 0.06

    def _caption_style(self):
        style = self.theme.heading_style(bold=True, size=self.theme.size + self.rng.choice((0, 1, 2, 4)),
                                         across=self.rng.choice(("center", "center", "left")))
        if self.plan.weekday_style.fill and self.rng.random() < 0.5:
            style = style.but(fill=None, color=self.theme.accent)
        style = style.but(shrink=self.captions in ("with year", "dates"))
        return style.but(number="mmmm") if self.captions == "dates" else style

    def _shape(self):
        caption = self.rng.choices(("above", "above left", "corner", "turned"), (72, 12, 8, 8))[0]
        if self.plan.weekday_row == "absent" and caption == "corner":
            caption = "above"
        before = 1 if caption in ("corner", "turned") or self.week_numbers else 0
        row = 1 if caption.startswith("above") else 0
        if row and self.rng.random() < 0.08:
            row = 2  # an empty row below the caption
        names_row = -1 if self.plan.weekday_row == "absent" else row
        first_week = row + (names_row >= 0)
        gap_rows = self.rng.choice((0, 1, 1, 1, 2))
        gap_columns = 0 if self.across == 1 else self.rng.choice((0, 1, 1, 1, 1, 2))
        if before == 0 and gap_columns == 0 and self.across > 1 and self.rng.random() < 0.6:
            gap_columns = 1
        return Shape(caption, before, 0, names_row, first_week,
                     first_week + grid.height(self.plan) + gap_rows,
                     before + grid.width(self.plan) + gap_columns)

    def make(self):
        shape = self._shape()
        top, left = self._head(shape)
        blocks = [self._block(shape, month, top + month // self.across * shape.rows,
                              left + month % self.across * shape.columns) for month in range(12)]
        bottom = top + -(-12 // self.across) * shape.rows - 1
        right = left + self.across * shape.columns - 1
        self._around(top, bottom, left, right)
        extras.dress(self.rng, self.sheet, self.theme, self.across > 3)
        if self.names.language in ("עברית", "العربية"):
            self.sheet.right_to_left = True
        return Page(self.sheet, self._calendar(shape, blocks), blocks, self.year_cell, self.plan,
                    self._labels(shape))

    def _head(self, shape):
        """Margins, banner and the year's title. Gives the first cell of January's block."""
        left = self.rng.choice((1, 1, 2, 2, 2, 3))
        for column in range(1, left):
            self.sheet.widths[column] = self.rng.choice((1.5, 2.5, 8.43))
        row = self.rng.choice((1, 1, 2))
        right = left + self.across * shape.columns - 1
        if self.rng.random() < 0.2:
            self.features.append("banner")
            extras.banner(self.rng, self.sheet, self.theme, self.words, row, left, right)
            row += 1
        self.year_cell, self.year_way = None, "none"
        if self.rng.random() < 0.93:
            self._year_title(row, left, left + self.across * shape.columns - 1)
            row += self.rng.choice((1, 2, 2))
        return row, left

    def _year_title(self, row, left, right):
        ways = {
            "number": 50, "empty": 14, "placeholder": 6, "labelled": 8, "beside": 8, "with words": 9,
            "today": 5
        }
        way = self.year_way = self.rng.choices(list(ways), ways.values())[0]
        size = self.rng.choice((16, 20, 24, 28, 36))
        style = self.theme.title(size=size, across=self.rng.choice(("center", "center", "left")))
        self.sheet.heights[row] = round(size * 1.5)
        last = right if self.rng.random() < 0.75 else min(right, left + 6)
        if way in ("labelled", "beside"):  # a word, then the year in a cell of its own
            word = f"{self.words.year}:" if way == "labelled" else self.words.calendar
            self.sheet.area(row, left, row, left + 4, style.but(across="right"), word)
            self.year_cell = row, left + 5
            self.sheet.area(row, left + 5, row, left + 8, style.but(across="left"), self.year)
            return
        value = {"number": self.year, "empty": None, "placeholder": f"[{self.words.year}]",
                 "with words": f"{self.words.calendar} {self.year}", "today": Formula("YEAR(TODAY())")}[way]
        if way == "number" and self.rng.random() < 0.1:
            value = str(value)
        if way != "with words":
            self.year_cell = row, left
        as_number = isinstance(value, (int, Formula))  # does not run over into the next cells
        self.sheet.area(row, left, row, last, style, value, merge=as_number or self.rng.random() < 0.8)

    def _block(self, shape, month, top, left):
        first = left + shape.before
        names_row = top + shape.names_row
        grid.set_sizes(self.sheet, self.plan, top + shape.first_week, first,
                       names_row if shape.names_row >= 0 else None)
        sample = grid.Sample(self.year, month + 1, self.way) if self.days_filled else None
        block = grid.paint(self.sheet, self.theme, self.plan, top + shape.first_week, first, names_row,
                           sample)
        bottom = top + shape.first_week + grid.height(self.plan) - 1
        self._caption(shape, month, top, left, first, bottom, block)
        if self.week_numbers and shape.caption in ("above", "above left"):
            numbers = grid.Sample(self.year, month + 1) if self.days_filled else None
            extras.week_numbers(self.rng, self.sheet, self.theme, self.words, self.plan, left,
                                top + shape.first_week, names_row, numbers)
            self.sheet.widths[left] = 3.5
        for column in range(first + grid.width(self.plan), left + shape.columns):
            self.sheet.widths[column] = 2
        return block

    def _caption(self, shape, month, top, left, first, bottom, block):
        value = {
            "names": self.names.months[month], "with year": f"{self.names.months[month]} {self.year}",
            "empty": None, "numbers": month + 1, "dates": datetime.date(self.year, month + 1, 1)
        }[self.captions]
        style, right = self.caption_style, first + grid.width(self.plan) - 1
        if self.seasons:
            style = style.but(fill=SEASONS[(month + 1) // 3 % 4], color="000000")
        if shape.caption == "above":
            block.month = top, left
            self.sheet.area(top, left, top, right, style, value)
        elif shape.caption == "above left":
            block.month = top, first
            self.sheet.area(top, first, top, right, style.but(across="left"), value,
                            merge=self.captions in ("dates", "numbers"))
        elif shape.caption == "corner":
            block.month = top, left
            self.sheet.put(top, left, value, style)
            self.sheet.widths[left] = 12
        else:
            block.month = top, left
            self.sheet.area(top, left, bottom, left, style.but(turned=90, across="center"), value)
            self.sheet.widths[left] = 4.5

    def _around(self, top, bottom, left, right):
        if self.rng.random() < 0.15:
            self.features.append("notes")
            extras.notes_below(self.rng, self.sheet, self.theme, self.words, bottom + 2, left, right)
            bottom += 10
        if self.rng.random() < 0.2:
            self.features.append("legend")
            extras.legend(self.rng, self.sheet, self.theme, bottom + 2, left, 4)
            bottom += 3
        if self.rng.random() < 0.12:
            self.features.append("dates")
            column = right + 2
            self.sheet.widths[column] = 24
            self.sheet.put(top, column, self.words.holidays, self.theme.heading_style())
            for row in range(1, 13):
                self.sheet.put(top + row, column, f"{row:02}.0{row % 9 + 1}.", self.theme.text())
        if self.rng.random() < 0.15:
            extras.small_print(self.rng, self.sheet, self.theme, bottom + 2, left)

    def _labels(self, shape):
        labels = [
            "year page", f"{self.across} side by side", f"small day {self.area.name}",
            f"captions {self.captions}", f"caption {shape.caption}", f"year {self.year_way}",
            f"small weekdays {self.plan.weekday_row}", self.names.language
        ]
        labels.append("small days filled" if self.days_filled else "small days empty")
        if self.week_numbers:
            labels.append("small week numbers")
        return labels + self.features

    def _calendar(self, shape, blocks):
        calendar = truth.Calendar()
        months_known = self.days_filled and (self.way == "dates" or self.captions == "with year" or
                                             self.year_way in ("number", "labelled", "beside", "with words"))
        tell_grid(calendar, self.sheet, self.theme, self.plan, blocks[0], self.days_filled, months_known)
        calendar.set("MonthLayout", self.across)
        calendar.set("ColIntervalOfMonth", shape.columns, "no" if self.across == 1 else "certain")
        calendar.set("RowIntervalOfMonth", shape.rows, "no" if self.across == 12 else "certain")
        sure = "likely" if self.captions == "empty" else "certain"
        calendar.set("OutMonth", "Y", sure)
        calendar.set("FirstCellOfMonth", address(blocks[0].month), sure)
        shown = self.names.months if self.captions in ("names", "with year") else ()
        known, same = truth.month_lists(self.names, shown, self.plan.weekdays_read)
        calendar.set("MonthName", ",".join(self.names.months), known, same)
        if self.year_cell is None:
            calendar.set("OutYear", "N", "likely" if self.year_way == "with words" else "certain")
        else:
            sure = "likely" if self.year_way == "empty" else "certain"
            calendar.set("OutYear", "Y", sure)
            calendar.set("FirstCellOfYear", address(self.year_cell), sure)
        return calendar


def make(rng, theme, names, words, name):
    return _Maker(rng, theme, names, words, name).make()
