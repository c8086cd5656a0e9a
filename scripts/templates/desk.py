"""Desk: a month page for the desk and the year on one page, with the holidays of the US."""

from . import book as b
from .holidays import UNITED_STATES
from .month_grid import GridLook, draw_month_grid
from .parameters import NEXT_ROW, SHORT_WEEKDAYS, Calendar, Cell
from .year_blocks import BlockLook, draw_year_blocks

MONTHLY = Calendar(
    sheet="Month", first_day=Cell(6, 2), weekday=Cell(4, 2), month=Cell(2, 2), year=Cell(2, 7),
    holiday=Cell(7, 2), row_step=4, multi_holidays=NEXT_ROW, holidays=UNITED_STATES)
YEARLY = Calendar(
    sheet="Year", first_day=Cell(5, 3), weekday=Cell(4, 3), month=Cell(4, 2), year=Cell(2, 2),
    holiday=Cell(6, 3), row_step=2, weekday_names=SHORT_WEEKDAYS, holidays=UNITED_STATES,
    months_across=3, month_columns=9, month_rows=14)

GRID = GridLook(week_heights=(27.75, 24.75, 12, 14.25), day_size=17, holiday_size=9.5,
                weekday_size=10.5, weekday_height=21.75)
BLOCK = BlockLook(month_size=13, month_height=19.5, weekday_size=8, weekday_height=19.5,
                  day_size=9.5, day_height=14.25, bar_height=2.25, gap_height=16.5)


def make():
    book = b.Book("Desk calendar", "A month to a page, and the year at a glance")
    _month_page(book)
    _year_page(book)
    return book.finish()


def _month_page(book):
    sheet = book.sheet(MONTHLY.sheet, b.ACCENT)
    b.widths(sheet, 2, [148] * 7)
    b.heights(sheet, 1, (12, 54, 9))
    sheet.merge_range("B2:F2", None, book.style(font_size=46, bold=True, valign="bottom"))
    sheet.merge_range("G2:H2", None, book.style(font_size=46, font_color=b.GOLD, align="right",
                                                valign="bottom"))
    b.whole_year(sheet, MONTHLY.year)
    draw_month_grid(book, sheet, MONTHLY, GRID)
    b.one_page(sheet, Cell(2, 2), MONTHLY.grid_end(), b.LETTER, landscape=True)


def _year_page(book):
    sheet = book.sheet(YEARLY.sheet, b.GOLD)
    b.widths(sheet, 2, ([100] + [27] * 7 + [34]) * 2 + [100] + [27] * 7)
    b.heights(sheet, 1, (12, 51.75, 13.5))
    last = Cell(2, 27)
    b.blank(sheet, Cell(2, 2), last, book.style(bottom=2, bottom_color=b.INK))
    sheet.merge_range("B2:H2", None, book.style(font_size=40, bold=True, align="left", bottom=2,
                                                bottom_color=b.INK))
    b.whole_year(sheet, YEARLY.year)
    sheet.write_string(str(last), "The year at a glance",
                       book.style(font_size=12, font_color=b.GOLD, align="right", bottom=2,
                                  bottom_color=b.INK))
    draw_year_blocks(book, sheet, YEARLY, BLOCK)
    b.one_page(sheet, Cell(2, 2), Cell(58, 27), b.LETTER, landscape=True)
