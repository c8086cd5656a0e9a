"""Wall: a month page with a picture, for the wall."""

import io

from . import book as b
from .holidays import INTERNATIONAL
from .landscape import HEIGHT, WIDTH, draw_landscape
from .month_grid import GridLook, draw_month_grid
from .parameters import NEXT_ROW, Calendar, Cell

MONTHLY = Calendar(
    sheet="Month", first_day=Cell(17, 2), weekday=Cell(15, 2), month=Cell(13, 2),
    year=Cell(13, 7), holiday=Cell(18, 2), row_step=3, monday_first=True,
    multi_holidays=NEXT_ROW, holidays=INTERNATIONAL)
YEARLY = Calendar(
    sheet="Month", first_day=Cell(17, 2), weekday=Cell(15, 2), month=Cell(13, 2),
    year=Cell(13, 7), holiday=Cell(18, 2), months_across=3, month_columns=8, month_rows=9,
    ).switched_off()

GRID = GridLook(week_heights=(25.5, 11.25, 23.25), day_size=16, holiday_size=8.5,
                weekday_size=9.5, weekday_height=18)
DAY_WIDTH = 105
PICTURE_ROWS = 10
PICTURE_ROW_HEIGHT = 33.75  # 45 pixels


def make():
    book = b.Book("Wall calendar", "A month to a page, below an evening sky")
    sheet = book.sheet(MONTHLY.sheet, b.INK)
    b.widths(sheet, 2, [DAY_WIDTH] * 7)
    b.heights(sheet, 1, [12] + [PICTURE_ROW_HEIGHT] * PICTURE_ROWS + [7.5, 48, 6])
    _picture(sheet)
    sheet.merge_range("B13:F13", None, book.style(font_size=38, bold=True))
    sheet.merge_range("G13:H13", None, book.style(font_size=38, font_color=b.GOLD,
                                                  align="right"))
    b.whole_year(sheet, MONTHLY.year)
    draw_month_grid(book, sheet, MONTHLY, GRID)
    b.one_page(sheet, Cell(2, 2), MONTHLY.grid_end(), b.A4)
    return book.finish()


def _picture(sheet):
    """Puts the picture over the rows above the title, from edge to edge."""
    dots = 250 / 96  # dots of the picture to a pixel of the sheet
    sheet.insert_image("B2", "evening.jpg", {
        "image_data": io.BytesIO(draw_landscape()), "object_position": 1,
        "x_scale": 7 * DAY_WIDTH * dots / WIDTH,
        "y_scale": PICTURE_ROWS * PICTURE_ROW_HEIGHT * 96 / 72 * dots / HEIGHT,
        "description": "Planets on golden orbits around the setting sun above a mountain lake"})
