"""A sheet for one month."""

import dataclasses

from . import day_area, extras, grid, titles, truth
from .names import FOREIGN
from .sheet import Sheet, address


@dataclasses.dataclass
class Page:
    sheet: Sheet
    calendar: truth.Calendar
    blocks: list          # one block here, twelve on a year page
    year: tuple           # the cell of the year, or None
    plan: grid.Plan
    labels: list          # words that tell a report what kind of page this is


class _Maker:
    def __init__(self, rng, theme, names, words, name):
        self.rng, self.theme, self.names, self.words = rng, theme, names, words
        self.sheet = Sheet(name)
        self.features = []
        self.area = day_area.pick(rng)
        self.plan = grid.pick_plan(rng, theme, names, self.area)
        self.sample = self._pick_sample()
        # Nobody could guess an unusual place of the number in an empty day.
        self.days_filled = rng.random() < 0.45 or self.area.number != (0, 0)
        if rng.random() < 0.15 and grid.weeks_of(self.sample, self.plan.monday) <= 5:
            self.plan.weeks = 5
        self.kind = titles.pick_kind(rng, self.area)
        self.state = titles.pick_state(rng, self.kind)
        self.title = titles.Title("none")
        self.placer = titles.Placer(rng, self.sheet, theme, names, words, self.sample)

    def _pick_sample(self):
        way = self.rng.choices(("numbers", "dates", "texts", "formulas"), (70, 16, 5, 9))[0]
        return grid.Sample(self.rng.randint(2012, 2028), self.rng.randint(1, 12), way,
                           self.rng.random() < 0.3)

    def has(self, share, feature):
        """Whether the page gets something that this share of pages has."""
        if self.rng.random() >= share:
            return False
        self.features.append(feature)
        return True

    def make(self):
        left = self._columns_before()
        right = left + grid.width(self.plan) - 1
        top, weekday_row = self._rows_before(left, right)
        grid.set_sizes(self.sheet, self.plan, top, left, self._weekday_row(weekday_row))
        block = grid.paint(self.sheet, self.theme, self.plan, top, left, weekday_row,
                           self.sample if self.days_filled else None)
        bottom = top + grid.height(self.plan) - 1
        if self.kind == "turned":
            self.title = self.placer.turned(self.state, top, bottom, left - 1, max(1, weekday_row))
        if self.days_filled and self.has(0.25, "jotted notes"):
            grid.jot(self.rng, self.sheet, self.plan, block)
        self._beside(top, bottom, right, weekday_row)
        self._below(bottom, left, right)
        self.placer.fit(self.title)
        block.month = self.title.month
        extras.dress(self.rng, self.sheet, self.theme, self.rng.random() < 0.6)
        self._view(top, left)
        return Page(self.sheet, self._calendar(block), [block], self.title.year, self.plan, self._labels())

    def _weekday_row(self, row):
        return row if self.plan.weekday_row != "absent" else None

    def _columns_before(self):
        """Margin, week numbers, a column for a turned title. Gives the first column of the grid."""
        column = 1
        for _ in range(self.rng.choice((0, 0, 1, 1, 1, 2))):
            self.sheet.widths[column] = self.rng.choice((1.5, 2, 3, 8.43))
            column += 1
        if self.has(0.04, "far to the right"):
            column += self.rng.randint(3, 9)
        self.panel_column = None
        if self.has(0.05, "panel at the left"):
            self.panel_column = column
            self.sheet.widths[column + 1] = 2
            column += 2
        if column == 1 and self.kind != "turned" and self.has(0.1, "hidden column"):
            extras.helper_column(self.sheet, column, 12, self.theme)
            column += 1
        self.weeks_column = None
        if self.kind == "turned":
            column += 1
        elif self.has(0.14, "week numbers"):
            self.weeks_column, column = column, column + 1
        return column

    def _rows_before(self, left, right):
        """Margin, banner, title, perhaps gaps. Gives the rows of the first day area and the names."""
        row = self.rng.choice((1, 1, 1, 2, 2, 3))
        if row == 2:
            self.sheet.heights[1] = self.rng.choice((6, 9, 15.75))
        if self.has(0.04, "far down"):
            row += self.rng.randint(4, 15)
        if self.has(0.15, "picture"):
            extras.picture(self.rng, self.sheet, self.theme, row, left, self.rng.choice((120, 300)), 60)
            row += self.rng.choice((4, 4, 12))
        if self.has(0.2, "banner"):
            extras.banner(self.rng, self.sheet, self.theme, self.words, row, left, right)
            row += self.rng.choice((1, 2))
        if self.kind == "between":
            self._minis_above(row, left, right)
        if self.kind not in ("none", "turned", "side", "below"):
            self.title = self.placer.above(self.kind, self.state, row, left, right)
            row = max(self.title.bottom + 1, row + 8 if self.kind == "between" else 0)
            if self.has(0.3, "gap below the title"):
                self.sheet.heights[row] = self.rng.choice((4.5, 9, 15.75))
                row += 1
        if self.plan.weekday_row == "absent":
            return (row + 1, row) if self.kind == "turned" else (row, row - 1)
        if self.has(0.06, "gap below the weekdays"):
            self.sheet.heights[row + 1] = self.rng.choice((3.75, 6))
            return row + 2, row
        return row + 1, row

    def _minis_above(self, row, left, right):
        """The months before and after at both sides of the title."""
        self.features.append("mini calendars")
        before, after = extras.neighbors_of(self.sample.year, self.sample.month)
        for (year, month), column in ((before, left), (after, right - 6)):
            extras.mini_calendar(self.rng, self.sheet, self.theme, self.names, year, month, row, column,
                                 self.plan.monday)

    def _beside(self, top, bottom, right, weekday_row):
        if self.weeks_column:
            extras.week_numbers(self.rng, self.sheet, self.theme, self.words, self.plan, self.weeks_column,
                                top, weekday_row, self.sample)
        if self.panel_column:
            extras.panel(self.rng, self.sheet, self.theme, self.names, self.words, self.plan, top,
                         self.panel_column, bottom - top + 1, None)
        column = right + 1
        if self.kind == "side":
            self.sheet.widths[column] = 2
            self.title = self.placer.stacked(self.kind, self.state, top, column + 1, column + 1)
            self.sheet.widths[column + 1] = self.placer.size * 0.9
            column += 2
        if self.kind != "side" and self.rng.random() < 0.2:
            self.sheet.widths[column] = 2
            self.features.append(extras.panel(self.rng, self.sheet, self.theme, self.names, self.words,
                                              self.plan, top, column + 1, bottom - top + 1,
                                              self.sample if self.days_filled else None))

    def _below(self, bottom, left, right):
        row = bottom + 1
        if self.plan.weeks == 5:  # where a sixth week comes out stays free
            row += self.area.rows
        if self.kind == "below":
            self.title = self.placer.stacked(self.kind, self.state, row + 1, left, right)
            self.placer.heights(self.title, row)
            row += 4
        if self.has(0.2, "notes below"):
            row = extras.notes_below(self.rng, self.sheet, self.theme, self.words, row + 1, left, right) + 1
        if self.has(0.1, "legend"):
            extras.legend(self.rng, self.sheet, self.theme, row + 1, left, self.area.columns)
            row += 2
        if self.has(0.2, "small print"):
            extras.small_print(self.rng, self.sheet, self.theme, row + 1, left)

    def _view(self, top, left):
        if self.plan.monday and self.has(0.015, "hidden weekends"):
            first = left + 5 * self.area.columns
            self.sheet.hidden_columns.update(range(first, first + 2 * self.area.columns))
        if self.has(0.07, "frozen"):
            self.sheet.frozen = (top - 1, 0)
        from_right = self.names.language in ("עברית", "العربية")
        self.sheet.right_to_left = self.rng.random() < (0.8 if from_right else 0.01)

    def _labels(self):
        """Words that tell a report what kind of page this is."""
        labels = ["month page", f"day {self.area.name}", f"title {self.kind}", f"title {self.title.state}",
                  f"weekdays {self.plan.weekday_row}", f"{self.plan.weeks} weeks", self.names.language,
                  f"lines {self.theme.grid_lines}"]
        labels.append(f"days {self.sample.way}" if self.days_filled else "days empty")
        if self.sheet.right_to_left:
            labels.append("right to left")
        return labels + self.features

    def _calendar(self, block):
        calendar = truth.Calendar()
        tell_grid(calendar, self.sheet, self.theme, self.plan, block, self.days_filled,
                  self._month_known())
        titles.tell(calendar, self.title)
        shown = [self.title.month_text] if self.title.month_text else []
        if self.title.month:
            sure, same = truth.month_lists(self.names, shown, self.plan.weekdays_read)
            calendar.set("MonthName", ",".join(self.names.months), sure, same)
        return calendar

    def _month_known(self):
        """Whether a calendar on the wall would tell the weekdays of the sample days."""
        if not self.days_filled:
            return False
        if self.sample.way in ("dates", "formulas"):
            return True
        return self.title.state in ("sample", "dates") and bool(self.title.year or self.title.combined) \
            and self.title.kind != "none"


def tell_grid(calendar, sheet, theme, plan, block, days_shown, month_known):
    """Says what is true of days, weekdays and holidays; `block` is the first one. Days that are
    shown belong to a month, which may be known."""
    calendar.set("Output", "Y")
    calendar.set("SheetName", sheet.name)
    calendar.set("FirstCellOfDay", address(block.days[0, 0]))
    calendar.set("ColIntervalOfDay", plan.area.columns)
    calendar.set("RowIntervalOfDay", plan.area.rows)
    calendar.set("FirstDayOfWeek", int(plan.monday), _first_day_known(theme, plan, days_shown, month_known))
    if plan.weekday_row == "absent":
        calendar.set("OutWeekday", "N")
    else:
        first = block.weekdays[0]
        unsure = plan.weekday_row == "dates" or not (plan.weekdays_read or sheet.cells[first].style.fill)
        calendar.set("OutWeekday", "Y", "likely" if unsure else "certain")
        calendar.set("FirstCellOfWeekday", address(first), "likely" if unsure else "certain")
        sure, same = truth.weekday_lists(plan)
        calendar.set("WeekdayName", ",".join(plan.weekday_names), sure, same)
    if plan.area.holiday is None:
        calendar.set("OutHoliday", "N")
        return
    sure = "certain" if plan.area.own_holiday_style else "likely"
    calendar.set("OutHoliday", "Y", sure)
    calendar.set("FirstCellOfHoliday", address(block.holidays[0, 0]), sure)
    calendar.set("MultiHolidays", plan.area.multi[0], sure, plan.area.multi)


def _first_day_known(theme, plan, days_shown, month_known):
    foreign = plan.weekdays_read in [names.weekdays for names in FOREIGN]
    if plan.weekday_row == "dates" or month_known or plan.weekdays_read and not foreign:
        return "certain"
    if foreign:
        return "likely"
    marked = theme.weekend in ("fill", "both") and theme.weekend_fill != "FFFFFF"
    marked |= theme.weekend in ("ink", "both") and days_shown
    if not marked:
        return "no"
    return "certain" if theme.weekend_days == "both" else "likely"


def make(rng, theme, names, words, name):
    return _Maker(rng, theme, names, words, name).make()
