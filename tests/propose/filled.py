"""Which cells a filled calendar has, computed with Python's calendar from what was painted, and
readers of what came out."""

import calendar
import copy
import datetime
import os

import openpyxl
import xlrd
from openpyxl.utils.datetime import to_excel

EASTER = {2026: datetime.date(2026, 4, 5), 2027: datetime.date(2027, 3, 28)}
YEARS = tuple(EASTER)
RULES = ("Holiday1=0101,,First", "Holiday2=0101,,Second", "Holiday3=0,Easter,Easter Sunday",
         "Holiday4=1231,,Last")


# Written instead of names, so that what a design already shows cannot pass for what was written.
WEEKDAY_MARKS = tuple(f"w{number}" for number in range(7))
MONTH_MARKS = tuple(f"m{number}" for number in range(1, 13))


def with_marks(truth):
    """The truth with marks for names."""
    marked = copy.deepcopy(truth)
    for values in (marked.monthly, marked.yearly):
        for key, marks in (("WeekdayName", WEEKDAY_MARKS), ("MonthName", MONTH_MARKS)):
            if key in values:
                values[key] = ",".join(marks)
    return marked


def holidays(year):
    return {datetime.date(year, 1, 1): ("First", "Second"), EASTER[year]: ("Easter Sunday",),
            datetime.date(year, 12, 31): ("Last",)}


def expected_month(page, block, year, month):
    """The cells of a month and what has to be in them: {(row, column): value}."""
    cells = {}
    first_weekday = 0 if page.plan.monday else 6
    weeks = calendar.Calendar(first_weekday).monthdayscalendar(year, month)
    for week, days in enumerate(weeks):
        for column, day in enumerate(days):
            if day:
                cells[place(page, block.days, week, column)] = day
                texts = holidays(year).get(datetime.date(year, month, day), ())
                if block.holidays and texts:
                    cells.update(_holiday_cells(page, block, week, column, texts))
    if block.month:
        cells[block.month] = MONTH_MARKS[month - 1]
    if page.year:
        cells[page.year] = year
    for column, cell in enumerate(block.weekdays):
        cells[cell] = WEEKDAY_MARKS[(column + 1) % 7 if page.plan.monday else column]
    return cells


def place(page, cells, week, column):
    """The cell of a day; a sixth week below five painted ones is one week further down."""
    if week < page.plan.weeks:
        return cells[week, column]
    above, last = cells[week - 2, column], cells[week - 1, column]
    return 2 * last[0] - above[0], last[1]


def _holiday_cells(page, block, week, column, texts):
    """Several holidays of a day go into rows where the day has rows for them, else the last one stays."""
    row, at = place(page, block.holidays, week, column)
    if page.plan.area.multi[0] == "0":
        return {(row, at): texts[-1]}
    return {(row + number, at): text for number, text in enumerate(texts)}


def own_cells(page, block):
    """All cells that belong to a month: its days' areas with a sixth week, names, month, year."""
    area = page.plan.area
    cells = {*block.weekdays, block.month, page.year} - {None}
    for week in range(6):
        for column in range(7):
            row, left = place(page, block.days, week, column)
            row, left = row - area.number[0], left - area.number[1]
            cells.update((row + down, left + right) for down in range(area.rows)
                         for right in range(area.columns))
    return cells


def read(path):
    """[(sheet's name, {(row, column): value})]; dates as numbers, formulas of an .xlsx as texts."""
    if path.suffix == ".xlsx":
        return [(sheet.title, {(cell.row, cell.column): _plain(cell) for row in sheet.iter_rows()
                               for cell in row if cell.value is not None})
                for sheet in openpyxl.load_workbook(path).worksheets]
    return [(sheet.name, {(row + 1, column + 1): sheet.cell_value(row, column)
                          for row in range(sheet.nrows) for column in range(sheet.ncols)
                          if sheet.cell_type(row, column) not in (xlrd.XL_CELL_EMPTY, xlrd.XL_CELL_BLANK)})
            for sheet in open_xls(path).sheets()]


def open_xls(path, **options):
    with open(os.devnull, "w", encoding="utf-8") as silence:
        return xlrd.open_workbook(path, logfile=silence, **options)


def _plain(cell):
    value = cell.value
    return to_excel(value) if isinstance(value, (datetime.date, datetime.time)) else value
