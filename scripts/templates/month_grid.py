"""The grid of a month page: six weeks of seven days, with room for holidays in each."""

from dataclasses import dataclass

from . import book as b
from .parameters import WEEKS

RULE_HEIGHT = 1.5


@dataclass(frozen=True)
class GridLook:
    """How a month grid looks. Sizes in points; a week's first row holds the day's number."""

    week_heights: tuple
    day_size: float
    holiday_size: float
    weekday_size: float
    weekday_height: float
    weekday_color: str = b.MUTED


def draw_month_grid(book, sheet, calendar, look):
    """Draws a calendar's weekday row, a dark rule in the row below it, and the boxes of the
    days, which conditional formats colour."""
    _weekday_row(book, sheet, calendar, look)
    for week in range(WEEKS):
        b.heights(sheet, calendar.day(week, 0).row, look.week_heights)
        for weekday in range(7):
            _day_box(book, sheet, calendar, look, week, weekday)
        _color_week(book, sheet, calendar, week)
    book.name("Days", calendar.sheet,
              b.area(calendar.first_day, calendar.grid_end(), absolute=True))


def _weekday_row(book, sheet, calendar, look):
    b.heights(sheet, calendar.weekday.row, (look.weekday_height, RULE_HEIGHT))
    for weekday in range(7):
        sheet.write_blank(
            str(calendar.weekday.moved(columns=weekday)), None,
            book.style(font_size=look.weekday_size, font_color=look.weekday_color, indent=1,
                       shrink=True))
    rule = calendar.weekday.moved(rows=1)
    b.blank(sheet, rule, rule.moved(columns=6), book.style(bg_color=b.INK))


def _day_box(book, sheet, calendar, look, week, weekday):
    rows = calendar.row_step
    top = calendar.day(week, weekday)
    for row in range(rows):
        frame = {"left": 1 if weekday else 0, "left_color": b.HAIRLINE, "indent": 1}
        if calendar.is_weekend(weekday):
            frame["bg_color"] = b.WEEKEND
        if row == rows - 1:
            frame.update(bottom=1, bottom_color=b.HAIRLINE)
        sheet.write_blank(str(top.moved(rows=row)), None,
                          book.style(**frame, **_day_text(look, row)))


def _day_text(look, row):
    """The text format of a row of a day's box: the number, then the holidays."""
    if row == 0:
        return {"font_size": look.day_size, "align": "left", "valign": "bottom"}
    text = {"font_size": look.holiday_size, "font_color": b.ACCENT, "valign": "top"}
    if look.week_heights[row] > 2 * look.holiday_size:  # room for two lines
        return {**text, "text_wrap": True}
    return {**text, "shrink": True}


def _color_week(book, sheet, calendar, week):
    first = calendar.day(week, 0)
    holiday = first.moved(rows=calendar.holiday.row - calendar.first_day.row)
    days = b.area(calendar.first_day, calendar.day(WEEKS - 1, 6), absolute=True)
    box = [b.area(first, first.moved(calendar.row_step - 1, 6))]
    b.color_when(sheet, box, f"=LEN({b.fixed(holiday, column=False)})>0",
                 book.rule_style(bg_color=b.HOLIDAY, font_color=b.ACCENT))
    b.color_when(sheet, box, f'=AND({b.fixed(first, column=False)}="",COUNT({days})>0)',
                 book.rule_style(bg_color=b.OUTSIDE))
