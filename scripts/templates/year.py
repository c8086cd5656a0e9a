"""Year: twelve months on one page, three in a row."""

from . import book as b
from .holidays import INTERNATIONAL
from .parameters import SHORT_WEEKDAYS, Calendar, Cell
from .year_blocks import BlockLook, draw_year_blocks

YEARLY = Calendar(
    sheet="Year", first_day=Cell(6, 2), weekday=Cell(5, 2), month=Cell(4, 2), year=Cell(2, 2),
    holiday=Cell(7, 2), row_step=2, weekday_names=SHORT_WEEKDAYS, holidays=INTERNATIONAL,
    months_across=3, month_columns=8, month_rows=15)
MONTHLY = Calendar(
    sheet="Year", first_day=Cell(6, 2), weekday=Cell(5, 2), month=Cell(4, 2), year=Cell(2, 2),
    holiday=Cell(7, 2), row_step=2).switched_off()

BLOCK = BlockLook(month_size=15, month_height=24, weekday_size=8, weekday_height=13.5,
                  day_size=10, day_height=14.25, bar_height=2.25, gap_height=21)


def make():
    book = b.Book("Year calendar", "A year on one page")
    sheet = book.sheet(YEARLY.sheet, b.GOLD)
    b.widths(sheet, 2, ([30] * 7 + [42]) * 2 + [30] * 7)
    b.heights(sheet, 1, (12, 84, 12))
    sheet.merge_range("B2:X2", None, book.style(font_size=66, bold=True, align="center",
                                                bottom=2, bottom_color=b.GOLD))
    b.whole_year(sheet, YEARLY.year)
    draw_year_blocks(book, sheet, YEARLY, BLOCK)
    b.one_page(sheet, Cell(2, 2), Cell(62, 24), b.A4)
    return book.finish()
