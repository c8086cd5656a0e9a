"""Notes: a month with week numbers, lines to write on, and its working days counted."""

from . import book as b
from .holidays import INTERNATIONAL
from .month_grid import GridLook, draw_month_grid
from .parameters import MONTHS, NEXT_ROW, WEEKS, Calendar, Cell

MONTHLY = Calendar(
    sheet="Month", first_day=Cell(6, 3), weekday=Cell(4, 3), month=Cell(2, 2), year=Cell(2, 8),
    holiday=Cell(7, 3), row_step=3, monday_first=True, multi_holidays=NEXT_ROW,
    holidays=INTERNATIONAL)
YEARLY = Calendar(
    sheet="Month", first_day=Cell(6, 3), weekday=Cell(4, 3), month=Cell(2, 2), year=Cell(2, 8),
    holiday=Cell(7, 3), months_across=3, month_columns=8, month_rows=9).switched_off()

GRID = GridLook(week_heights=(21, 11.25, 16.5), day_size=13, holiday_size=8, weekday_size=9.5,
                weekday_height=18)
TEAL = "#2F6F73"
NOTES_ROW = 25
LINES = 16
LINE_HEIGHT = 22.5
PANEL = 7  # the first column of the working days; columns G to I
WEEK_TABLE = Cell(NOTES_ROW + 4, PANEL + 1)  # week and working days, hidden by the chart
MONTH_START = WEEK_TABLE.moved(rows=-1)  # the date of the month's first day, hidden, too


def make():
    book = b.Book("Month with notes", "Week numbers, working days and room for notes")
    sheet = book.sheet(MONTHLY.sheet, TEAL)
    b.widths(sheet, 2, [34] + [98] * 7)
    b.heights(sheet, 1, (12, 49.5, 6))
    sheet.merge_range("B2:G2", None, book.style(font_size=36, bold=True))
    sheet.merge_range("H2:I2", None, book.style(font_size=36, font_color=TEAL, align="right"))
    b.whole_year(sheet, MONTHLY.year)
    draw_month_grid(book, sheet, MONTHLY, GRID)
    _week_numbers(book, sheet)
    _note_lines(book, sheet)
    _working_days(book, sheet)
    b.one_page(sheet, Cell(2, 2), Cell(NOTES_ROW + LINES, 9), b.A4)
    return book.finish()


def _week_row(week):
    """The days of a week, Monday to Sunday."""
    return b.area(MONTHLY.day(week, 0), MONTHLY.day(week, 6))


def _week_numbers(book, sheet):
    """The ISO week before each week's days; empty where the month's name is not English."""
    names = ",".join(f'"{name}"' for name in MONTHS)
    sheet.write_formula(
        str(MONTH_START),
        f"=DATE({b.fixed(MONTHLY.year)},MATCH({b.fixed(MONTHLY.month)},{{{names}}},0),1)",
        book.style(num_format=b.NOTHING), "")
    sheet.write_string(str(MONTHLY.weekday.moved(columns=-1)), "Wk",
                       book.style(font_size=9.5, font_color=TEAL, align="center"))
    sheet.write_blank(str(MONTHLY.weekday.moved(1, -1)), None, book.style(bg_color=b.INK))
    for week in range(WEEKS):
        days = _week_row(week)
        cell = MONTHLY.day(week, 0).moved(columns=-1)
        b.blank(sheet, cell, cell.moved(2), book.style(right=1, right_color=b.HAIRLINE))
        b.blank(sheet, cell.moved(2), cell.moved(2),
                book.style(right=1, right_color=b.HAIRLINE, bottom=1, bottom_color=b.HAIRLINE))
        sheet.write_formula(
            str(cell), _week_number(days),
            book.style(font_size=9.5, font_color=TEAL, align="center", valign="bottom", right=1,
                       right_color=b.HAIRLINE), "")


def _week_number(days):
    """The formula of a week's ISO number, in functions that every Excel has: weeks are numbered
    by their Thursdays. Only the first week of a month can lack its first days."""
    start = b.fixed(MONTH_START)
    thursday = f"({start}+MIN({days})+2-(MIN({days})=1)*(7-COUNT({days})))"
    return (f'=IF(OR(COUNT({days})=0,ISERROR({start})),"",'
            f"INT(({thursday}-DATE(YEAR({thursday}),1,1))/7)+1)")


def _note_lines(book, sheet):
    b.heights(sheet, NOTES_ROW - 1, [14.25, 22.5] + [LINE_HEIGHT] * LINES)
    heading = {"font_size": 12, "bold": True, "font_color": TEAL, "bottom": 2,
               "bottom_color": b.INK}
    b.blank(sheet, Cell(NOTES_ROW, 2), Cell(NOTES_ROW, 9), book.style(**heading))
    sheet.write_string(str(Cell(NOTES_ROW, 2)), "Notes", book.style(**heading))
    sheet.write_string(str(Cell(NOTES_ROW, PANEL)), "Working days",
                       book.style(indent=1, **heading))
    b.blank(sheet, Cell(NOTES_ROW + 1, 2), Cell(NOTES_ROW + LINES, PANEL - 1),
            book.style(font_size=10, bottom=1, bottom_color=b.HAIRLINE))


def _working_days(book, sheet):
    """Counts Monday to Friday without holidays: the month's sum, a chart of the weeks."""
    first, last = WEEK_TABLE, WEEK_TABLE.moved(WEEKS - 1)
    small = book.style(font_size=8, font_color=b.MUTED, align="left", indent=1)
    for week in range(WEEKS):
        monday, friday = MONTHLY.day(week, 0), MONTHLY.day(week, 4)
        names = b.area(monday.moved(1), friday.moved(1))
        number = MONTHLY.day(week, 0).moved(columns=-1)
        sheet.write_formula(str(first.moved(week)), f'={number}&""', small, "")
        sheet.write_formula(str(first.moved(week, 1)),
                            f'=SUMPRODUCT(({b.area(monday, friday)}<>"")*({names}=""))', small, "")
    counts = b.area(first.moved(columns=1), last.moved(columns=1))
    top = NOTES_ROW + 1
    large = book.style(font_size=32, bold=True, align="right")
    sheet.merge_range(f"G{top}:G{top + 1}", None, large)
    sheet.write_formula(f"G{top}", f'=IF(SUM({counts})=0,"",SUM({counts}))', large, "")
    sheet.merge_range(f"H{top}:I{top + 1}", "Monday to Friday,\nwithout holidays",
                      book.style(font_size=10, font_color=b.MUTED, text_wrap=True, indent=1))
    _chart(book, sheet)
    _to_do(book, sheet)


def _chart(book, sheet):
    chart = book.chart("column")
    table = WEEK_TABLE
    chart.add_series({
        "name": "Working days",
        "categories": [MONTHLY.sheet, table.row - 1, table.column - 1, table.row + WEEKS - 2,
                       table.column - 1],
        "values": [MONTHLY.sheet, table.row - 1, table.column, table.row + WEEKS - 2,
                   table.column],
        "fill": {"color": TEAL}, "gap": 60,
    })
    chart.set_title({"none": True})
    chart.set_legend({"none": True})
    chart.set_x_axis({"num_font": {"name": b.FONT, "size": 8, "color": b.MUTED},
                      "line": {"color": b.HAIRLINE}, "major_tick_mark": "none"})
    chart.set_y_axis({"min": 0, "max": 5, "major_unit": 1, "line": {"none": True},
                      "num_font": {"name": b.FONT, "size": 8, "color": b.MUTED},
                      "major_gridlines": {"visible": True, "line": {"color": b.HAIRLINE}}})
    chart.set_chartarea({"border": {"none": True}, "fill": {"color": "white"}})
    chart.set_size({"width": 3 * 98 - 14, "height": 7 * 30 - 6})
    sheet.insert_chart(str(Cell(NOTES_ROW + 3, PANEL)), chart,
                       {"x_offset": 12, "y_offset": 4, "object_position": 1})


def _to_do(book, sheet):
    top = NOTES_ROW + 10
    heading = {"font_size": 12, "bold": True, "font_color": TEAL, "bottom": 2,
               "bottom_color": b.INK}
    b.blank(sheet, Cell(top, PANEL), Cell(top, 9), book.style(**heading))
    sheet.write_string(str(Cell(top, PANEL)), "To do", book.style(indent=1, **heading))
    line = {"bottom": 1, "bottom_color": b.HAIRLINE}
    b.blank(sheet, Cell(top + 1, PANEL), Cell(NOTES_ROW + LINES, 9),
            book.style(font_size=10, **line))
    boxes = b.area(Cell(top + 1, PANEL), Cell(NOTES_ROW + LINES, PANEL))
    for row in range(top + 1, NOTES_ROW + LINES + 1):
        sheet.write_string(str(Cell(row, PANEL)), "\u2610",
                           book.style(font_size=13, font_color=b.MUTED, indent=1, **line))
    sheet.data_validation(boxes, {"validate": "list", "source": ["\u2610", "\u2611"]})
    first = Cell(top + 1, PANEL)
    b.color_when(sheet, [b.area(first, Cell(NOTES_ROW + LINES, 9))],
                 f'={b.fixed(first, row=False)}="\u2611"',
                 book.rule_style(font_color=b.MUTED, font_strikeout=True))
