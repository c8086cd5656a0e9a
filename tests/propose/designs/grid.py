"""Paints one month: the row of weekday names, the weeks, perhaps the days of a real month."""

import calendar
import dataclasses
import datetime
import typing

from . import names as lists
from .day_area import DayArea
from .sheet import Formula, address

NOTES = ("Dentist 9:30", "Mum's birthday", "Urlaub", "Team meeting", "Yoga", "Holiday", "Müll", "Réunion",
         "Paul 40!", "Zahnarzt", "vacances", "rent due", "Training")


@dataclasses.dataclass(frozen=True)
class Sample:
    """The month that a designer tried the sheet with."""
    year: int
    month: int
    way: str = "numbers"      # numbers, dates, texts, formulas
    neighbors: bool = False   # the grid also has the days before and after the month


@dataclasses.dataclass
class Plan:
    """What the months of a page have in common."""
    area: DayArea
    weeks: int
    monday: bool
    weekday_row: str          # names, dates, empty, absent
    weekday_names: tuple      # Sunday first
    number_style: object
    note_style: object
    holiday_style: object
    weekday_style: object
    weekend_widths: float = 1.0
    own_sizes: bool = True    # the designer changed widths and heights

    @property
    def weekdays_read(self):
        """The weekday names that can be read on the page."""
        return self.weekday_names if self.weekday_row == "names" else ()


@dataclasses.dataclass
class Block:
    """The cells of one month, as they were painted: the key of a day is (week, column)."""
    days: dict = dataclasses.field(default_factory=dict)
    holidays: dict = dataclasses.field(default_factory=dict)
    weekdays: list = dataclasses.field(default_factory=list)
    month: typing.Optional[tuple] = None


def width(plan):
    return 7 * plan.area.columns


def height(plan):
    return plan.weeks * plan.area.rows


def is_weekend(plan, theme, column):
    weekday = (column + plan.monday) % 7
    return weekday == 0 or (weekday == 6 and theme.weekend_days == "both")


def pick_plan(rng, theme, names, area, small=False):
    """The choices that hold for every month of a page."""
    size = theme.size if small else rng.choice((theme.size, theme.size + 2, 14, 16, 18))
    number = theme.text(size=min(size, int(area.number_width * 3.6)), bold=rng.random() < 0.35,
                        across="center" if small else rng.choice(("left", "right", "center", None)),
                        down=rng.choice(("top", "center", "center", None)),
                        number=rng.choice(("General",) * 5 + ("0", "d", "d", "dd", "00")))
    if number.across in ("left", "right") and area.number_width > 6 and rng.random() < 0.15:
        number = number.but(indent=1)
    note = theme.text(size=max(7, theme.size - 2), down=rng.choice(("top", "center")),
                      wrap=rng.random() < 0.5, shrink=rng.random() < 0.1)
    holiday = note.but(color=theme.accent, italic=rng.random() < 0.5, size=max(7, theme.size - 3))
    heading = theme.heading_style(size=max(7, theme.size - 1) if small else theme.size,
                                  across=rng.choice(("center",) * 5 + ("left", "right")))
    kinds, weights = ("names", "empty", "absent", "dates"), ((66, 10, 22, 2) if small else (80, 9, 6, 5))
    kind = rng.choices(kinds, weights)[0]
    if kind == "dates" and small and area.widths[0] < 5:
        kind = "names"
    if kind == "dates":
        heading = heading.but(number="ddd" if small else rng.choice(("ddd", "dddd")), shrink=True)
    weekdays = small_names(rng, names) if small else names.weekdays
    narrow = rng.choice((0.6, 0.8, 1.3)) if len(weekdays[0]) < 5 else 1.3
    if kind == "empty" and not heading.fill and theme.grid_lines not in ("all", "days"):
        kind = "names"  # an empty row that nobody could see
    return Plan(area, 6, theme.monday, kind, weekdays, number, note,
                holiday if area.own_holiday_style else note, heading,
                narrow if not small and rng.random() < 0.3 else 1.0,
                rng.random() > 0.06 or area.columns > 1)


def small_names(rng, names):
    """Weekday names that fit narrow columns; few people keep long ones there."""
    if len(names.weekdays[1]) <= 3 or " " in names.weekdays[0] or rng.random() < 0.05:
        return names.weekdays
    short = lists.WEEKDAYS_OF.get(f"{names.base}, short")
    if short and rng.random() < 0.7:
        return short
    length = rng.choice((1, 2, 2, 2, 3))
    return tuple(text[:length] for text in names.weekdays)


def set_sizes(sheet, plan, top, left, weekday_row=None):
    """Widths of the grid's columns and heights of its rows."""
    if not plan.own_sizes:
        return
    for day in range(7):
        factor = plan.weekend_widths if (day + plan.monday) % 7 in (0, 6) else 1.0
        for offset, wide in enumerate(plan.area.widths):
            sheet.widths[left + day * plan.area.columns + offset] = round(wide * factor, 2)
    for week in range(plan.weeks):
        for offset, high in enumerate(plan.area.heights):
            if offset == plan.area.number[0] and not plan.area.number_is_tall:
                high = max(high, round(plan.number_style.size * 1.35))
            sheet.heights[top + week * plan.area.rows + offset] = high
    if weekday_row:
        sheet.heights[weekday_row] = max(15.75, round(plan.weekday_style.size * 1.5))


def paint(sheet, theme, plan, top, left, weekday_row, sample=None):
    """Paints a month with its first day area at a cell, and tells which cells are what."""
    block = Block()
    if plan.weekday_row != "absent":
        _paint_weekdays(sheet, theme, plan, left, weekday_row, block)
        if plan.weekday_row == "dates" and sample and sample.way == "formulas":
            for day, cell in enumerate(block.weekdays):
                first = top + plan.area.number[0], left + day * plan.area.columns + plan.area.number[1]
                sheet.put(*cell, Formula(address(first)))
    theme = _with_lines(theme, plan, sample)
    for week in range(plan.weeks):
        for day in range(7):
            row, column = top + week * plan.area.rows, left + day * plan.area.columns
            _paint_day(sheet, theme, plan, week, day, row, column)
            block.days[week, day] = row + plan.area.number[0], column + plan.area.number[1]
            if plan.area.holiday:
                block.holidays[week, day] = (row + plan.area.holiday[0], column + plan.area.holiday[1])
    bottom, right = top + height(plan) - 1, left + width(plan) - 1
    if theme.grid_lines == "outside" or theme.heavy_frame:
        line = ("medium", theme.line[1]) if theme.heavy_frame else theme.line
        sheet.frame(top, left, bottom, right, line)
    if sample:
        _fill(sheet, plan, block, sample)
    return block


def _with_lines(theme, plan, sample):
    """Nobody leaves a grid of empty days without any lines, unless the names above make it plain."""
    plain = theme.grid_lines in ("none", "outside")
    obvious = plan.weekdays_read and (plan.area.rows, plan.area.columns) == (1, 1)
    if sample is None and (plain and not obvious or theme.grid_lines == "weeks" and not plan.weekdays_read):
        return dataclasses.replace(theme, grid_lines="days")
    if sample is None and theme.grid_lines == "all" and plan.area.rows > 2:
        return dataclasses.replace(theme, grid_lines="days")  # nobody could tell where a week ends
    return theme


def _paint_weekdays(sheet, theme, plan, left, row, block):
    for day in range(7):
        column = left + day * plan.area.columns
        style = plan.weekday_style
        if is_weekend(plan, theme, day) and theme.weekend in ("ink", "both") and not style.fill:
            style = style.but(color=theme.accent)
        if theme.grid_lines in ("all", "days"):
            style = style.but(**_edges(theme.line))
        weekday = (day + plan.monday) % 7
        value = {"names": plan.weekday_names[weekday], "dates": weekday + 1,  # 1 is a Sunday
                 "empty": None}[plan.weekday_row]
        sheet.area(row, column, row, column + plan.area.columns - 1, style, value)
        block.weekdays.append((row, column))


def _edges(line, sides="left right top bottom"):
    return {side: line for side in sides.split()}


def _paint_day(sheet, theme, plan, week, day, top, left):
    changes = theme.weekend_changes() if is_weekend(plan, theme, day) else {}
    if "fill" not in changes and theme.pattern_fill(week, day):
        changes["fill"] = theme.pattern_fill(week, day)
    styles = {"number": plan.number_style, "holiday": plan.holiday_style, "note": plan.note_style,
              "gap": theme.text()}
    for part in plan.area.parts:
        style = styles[part.role].but(**changes) if part.role != "gap" else styles["gap"]
        if part.role == "holiday":
            style = style.but(color=plan.holiday_style.color)
        if theme.grid_lines == "all" and part.role != "gap":
            style = style.but(**_edges(theme.line))
        sheet.area(top + part.top, left + part.left, top + part.bottom, left + part.right, style,
                   merge=part.merged)
    bottom, right = top + plan.area.rows - 1, left + plan.area.columns - 1
    if theme.grid_lines == "days":
        sheet.frame(top, left, bottom, right, theme.line)
    elif theme.grid_lines == "weeks":
        for column in range(left, right + 1):
            sheet.restyle(top, column, top=theme.line)
            sheet.restyle(bottom, column, bottom=theme.line)


def first_date(plan, sample):
    """The date of the grid's first cell."""
    first = datetime.date(sample.year, sample.month, 1)
    return first - datetime.timedelta((first.weekday() + (0 if plan.monday else 1)) % 7)


def weeks_of(sample, monday):
    return len(calendar.Calendar(0 if monday else 6).monthdayscalendar(sample.year, sample.month))


def _fill(sheet, plan, block, sample):
    start = first_date(plan, sample)
    before = None
    for (week, day), cell in block.days.items():
        date = start + datetime.timedelta(7 * week + day)
        inside = date.month == sample.month
        style = sheet.cells[cell].style
        if sample.way == "formulas":
            value = Formula(f"{address(before)}+1") if before else date
            sheet.put(*cell, value, style.but(number="d"))
        elif inside or sample.neighbors:
            if not inside:
                style = style.but(color="BFBFBF")
            if sample.way == "dates":
                sheet.put(*cell, date, style.but(number=style.number if "d" in style.number else "d"))
            else:
                sheet.put(*cell, str(date.day) if sample.way == "texts" else date.day, style)
        before = cell


def jot(rng, sheet, plan, block):
    """What the designer forgot on the page: notes in the cells for them, a day that is marked."""
    if rng.random() < 0.5:
        sheet.restyle(*rng.choice(sorted(block.days.values())), fill="FFFF00", bold=True)
    if not block.holidays:
        return
    for cell in rng.sample(sorted(block.holidays.values()), rng.choice((1, 2, 3))):
        sheet.put(*cell, rng.choice(NOTES))
