"""Twelve small months on one sheet. Under each day lies a bar that a holiday colours.

The bar is the cell of the holiday's name: a row of a few points, whose number format shows
nothing, so that only the formula bar shows the name and the page stays calm.
"""

from dataclasses import dataclass

from . import book as b
from .parameters import WEEKS


@dataclass(frozen=True)
class BlockLook:
    """How the small months look. Sizes and heights in points."""

    month_size: float
    month_height: float
    weekday_size: float
    weekday_height: float
    day_size: float
    day_height: float
    bar_height: float
    gap_height: float
    month_color: str = b.INK


def draw_year_blocks(book, sheet, calendar, look):
    days, bars = [], []
    for month in range(12):
        block = calendar.shifted(month)
        if month % calendar.months_across == 0:
            _row_heights(sheet, block, look)
        _heading(book, sheet, block, look)
        for week in range(WEEKS):
            _week(book, sheet, block, look, week)
            first, last = block.day(week, 0), block.day(week, 6)
            days.append(b.area(first, last))
            bars.append(b.area(first.moved(1), last.moved(1)))
    name = calendar.first_day.moved(1)
    b.color_when(sheet, days, f"=LEN({name})>0", book.rule_style(font_color=b.ACCENT, bold=True))
    b.color_when(sheet, bars, f"=LEN({name})>0", book.rule_style(bg_color=b.ACCENT))


def _row_heights(sheet, block, look):
    b.heights(sheet, block.month.row, (look.month_height,))
    if block.weekday.row != block.month.row:
        b.heights(sheet, block.weekday.row, (look.weekday_height,))
    b.heights(sheet, block.first_day.row, (look.day_height, look.bar_height) * WEEKS)
    b.heights(sheet, block.day(WEEKS, 0).row, (look.gap_height,))


def _heading(book, sheet, block, look):
    beside = block.weekday.row == block.month.row  # then the name has only its own column
    sheet.write_blank(str(block.month), None,
                      book.style(font_size=look.month_size, font_color=look.month_color,
                                 bold=True, shrink=beside))
    for weekday in range(7):
        sheet.write_blank(str(block.weekday.moved(columns=weekday)), None,
                          book.style(font_size=look.weekday_size, font_color=b.MUTED,
                                     align="center", shrink=True, bottom=1,
                                     bottom_color=b.HAIRLINE))


def _week(book, sheet, block, look, week):
    for weekday in range(7):
        tint = {"bg_color": b.WEEKEND} if block.is_weekend(weekday) else {}
        day = block.day(week, weekday)
        sheet.write_blank(str(day), None,
                          book.style(font_size=look.day_size, align="center", **tint))
        sheet.write_blank(str(day.moved(1)), None,
                          book.style(font_size=6, num_format=b.NOTHING, **tint))
