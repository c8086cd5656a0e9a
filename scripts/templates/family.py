"""Family: a planner with a line for every week and a column for every person.

The twelve months stand below one another, a quarter of the year to a page. The names of the
four people are typed once, at the head of the first page, and every page repeats them.
"""

from . import book as b
from .holidays import FAMILY
from .parameters import SHORT_WEEKDAYS, WEEKS, Calendar, Cell
from .year_blocks import BlockLook, draw_year_blocks

YEARLY = Calendar(
    sheet="Planner", first_day=Cell(6, 2), weekday=Cell(5, 2), month=Cell(4, 2), year=Cell(2, 2),
    holiday=Cell(7, 2), row_step=2, monday_first=True, weekday_names=SHORT_WEEKDAYS,
    holidays=FAMILY, months_across=1, month_columns=8, month_rows=15)
MONTHLY = Calendar(
    sheet="Planner", first_day=Cell(6, 2), weekday=Cell(5, 2), month=Cell(4, 2), year=Cell(2, 2),
    holiday=Cell(7, 2), row_step=2).switched_off()

BLOCK = BlockLook(month_size=16, month_height=22.5, weekday_size=8, weekday_height=12.75,
                  day_size=10.5, day_height=24.75, bar_height=2.25, gap_height=12)
DATES = 10  # the column of the holidays' names
PEOPLE = range(11, 15)
PEOPLE_COLORS = ("#2F6F73", "#B08D4A", "#7A5C8E", "#B4472F")
MONTHS_ON_A_PAGE = 3


def make():
    book = b.Book("Family planner", "A line for every week, a column for everyone")
    sheet = book.sheet(YEARLY.sheet, "#2F6F73")
    b.widths(sheet, 2, [26] * 7 + [10, 96] + [89] * 4)
    _page_head(book, sheet)
    draw_year_blocks(book, sheet, YEARLY, BLOCK)
    for month in range(12):
        _lines(book, sheet, YEARLY.shifted(month))
    sheet.freeze_panes("A4")
    page = MONTHS_ON_A_PAGE * YEARLY.month_rows
    last = Cell(YEARLY.month.row + 12 * YEARLY.month_rows - 1, PEOPLE[-1])
    b.many_pages(sheet, Cell(2, 2), last, b.A4, heading_rows=(2, 3),
                 breaks=[YEARLY.month.row - 1 + page * number for number in (1, 2, 3)])
    return book.finish()


def _page_head(book, sheet):
    b.heights(sheet, 1, (12, 36, 9))
    rule = {"bottom": 2, "bottom_color": b.INK, "valign": "bottom"}
    b.blank(sheet, Cell(2, 2), Cell(2, 9), book.style(**rule))
    b.whole_year(sheet, YEARLY.year)
    sheet.merge_range("B2:H2", None, book.style(font_size=30, bold=True, align="left", **rule))
    sheet.write_string(str(Cell(2, DATES)), "Dates",
                       book.style(font_size=11, font_color=b.MUTED, indent=1, **rule))
    for number, (column, color) in enumerate(zip(PEOPLE, PEOPLE_COLORS), 1):
        sheet.write_string(str(Cell(2, column)), f"Name {number}",
                           book.style(font_size=12, bold=True, font_color=color, indent=1,
                                      shrink=True, **rule))
    sheet.data_validation(b.area(Cell(2, PEOPLE[0]), Cell(2, PEOPLE[-1])), {
        "validate": "length", "criteria": "<=", "value": 24,
        "input_title": "Who is it?", "input_message": "A name typed here heads every page.",
        "error_title": "Name", "error_message": "Please keep a name within 24 letters."})


def _lines(book, sheet, block):
    """The lines to write on, one for every week, and the week's holidays before them."""
    lines = []
    for week in range(WEEKS):
        top = block.day(week, 0)
        rule = {"top": 1, "top_color": b.HAIRLINE, "text_wrap": True, "indent": 1}
        sheet.write_formula(str(Cell(top.row, DATES)), _holiday_names(top),
                            book.style(font_size=8, font_color=b.ACCENT, **rule), "")
        for column in PEOPLE:
            frame = {"left": 1, "left_color": b.HAIRLINE}
            sheet.write_blank(str(Cell(top.row, column)), None,
                              book.style(font_size=9, **rule, **frame))
            sheet.write_blank(str(Cell(top.row + 1, column)), None, book.style(**frame))
        lines.append(b.area(Cell(top.row, DATES), Cell(top.row + 1, PEOPLE[-1])))
    _fade_unused(book, sheet, block, lines)


def _fade_unused(book, sheet, block, lines):
    """Greys the lines of weeks outside the month, if the month has days at all."""
    days = b.area(block.first_day, block.day(WEEKS - 1, 6), absolute=True)
    for week, line in enumerate(lines):
        week_days = b.area(block.day(week, 0), block.day(week, 6), absolute=True)
        b.color_when(sheet, [line], f"=AND(COUNT({week_days})=0,COUNT({days})>0)",
                     book.rule_style(bg_color=b.OUTSIDE))


def _holiday_names(monday):
    """The formula that joins, line by line, the names below the seven days: "25 Christmas Day"."""
    parts = []
    for weekday in range(7):
        day = monday.moved(columns=weekday)
        name = day.moved(1)
        parts.append(f'IF(LEN({name})>0,CHAR(10)&{day}&" "&{name},"")')
    return "=MID(" + "&".join(parts) + ",2,255)"
