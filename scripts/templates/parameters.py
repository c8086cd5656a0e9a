"""A template's calendar parameters and the parameter file that carries them."""

from dataclasses import dataclass, field, replace

MONTHS = ("January", "February", "March", "April", "May", "June", "July", "August",
          "September", "October", "November", "December")
WEEKDAYS = ("Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday")
SHORT_WEEKDAYS = tuple(name[:3] for name in WEEKDAYS)

OVERWRITE, NEXT_ROW, NEXT_COLUMN = 0, 1, 2
WEEKS = 6  # a month reaches into six weeks at most


@dataclass(frozen=True)
class Cell:
    """A cell of a sheet, row and column counted from 1."""

    row: int
    column: int

    def moved(self, rows=0, columns=0):
        return Cell(self.row + rows, self.column + columns)

    def __str__(self):
        return f"{column_letters(self.column)}{self.row}"


def column_letters(column):
    """The letters of a column: 1 is "A", 27 is "AA"."""
    letters = ""
    while column:
        column, rest = divmod(column - 1, 26)
        letters = chr(ord("A") + rest) + letters
    return letters


@dataclass(frozen=True)
class Holiday:
    """A rule: a date code, the rule word ("", a weekday or "Easter") and the name."""

    code: int
    rule: str
    name: str

    def __str__(self):
        code = self.code if self.rule == "Easter" else f"{self.code:04}"
        return f"{code},{self.rule},{self.name}"


@dataclass(frozen=True)
class Calendar:
    """Where one calendar goes on its sheet. A cell that is None is not written."""

    sheet: str
    first_day: Cell
    weekday: Cell
    month: Cell
    year: Cell
    holiday: Cell
    output: bool = True
    monday_first: bool = False
    column_step: int = 1
    row_step: int = 1
    weekday_names: tuple = WEEKDAYS
    multi_holidays: int = OVERWRITE
    holidays: tuple = ()
    months_across: int = 0  # 0: the calendar of one month
    month_columns: int = 0
    month_rows: int = 0

    def shifted(self, month):
        """This calendar with its cells moved to the block of a month from 0 to 11."""
        down, across = divmod(month, self.months_across)
        rows, columns = down * self.month_rows, across * self.month_columns
        return replace(self, first_day=self.first_day.moved(rows, columns),
                       weekday=self.weekday.moved(rows, columns),
                       month=self.month.moved(rows, columns),
                       holiday=self.holiday.moved(rows, columns))

    def day(self, week, weekday):
        """The cell of a day by its place in the grid, both counted from 0."""
        return self.first_day.moved(week * self.row_step, weekday * self.column_step)

    def grid_end(self):
        """The last cell of the last week's rows."""
        return self.day(WEEKS - 1, 6).moved(rows=self.row_step - 1)

    def is_weekend(self, weekday):
        return weekday in ((5, 6) if self.monday_first else (0, 6))

    def switched_off(self):
        return replace(self, output=False, holidays=())


def _yes(value):
    return "Y" if value else "N"


def _cells(calendar):
    return [
        f"OutWeekday={_yes(calendar.output)}",
        f"FirstCellOfWeekday={calendar.weekday}",
        f"WeekdayName={','.join(calendar.weekday_names)}",
        f"OutMonth={_yes(calendar.output)}",
        f"FirstCellOfMonth={calendar.month}",
        f"MonthName={','.join(MONTHS)}",
        f"OutYear={_yes(calendar.output)}",
        f"FirstCellOfYear={calendar.year}",
        f"OutHoliday={_yes(calendar.output)}",
        f"FirstCellOfHoliday={calendar.holiday}",
        f"MultiHolidays={calendar.multi_holidays}",
        *(f"Holiday{number}={holiday}" for number, holiday in enumerate(calendar.holidays, 1)),
    ]


def parameter_file(monthly, yearly):
    """The text of the parameter file of a template with these two calendars."""
    lines = [
        "[Monthly Calendar]",
        f"Output={_yes(monthly.output)}",
        f"SheetName={monthly.sheet}",
        f"FirstDayOfWeek={int(monthly.monday_first)}",
        f"FirstCellOfDay={monthly.first_day}",
        f"ColIntervalOfDay={monthly.column_step}",
        f"RowIntervalOfDay={monthly.row_step}",
        *_cells(monthly),
        "",
        "[Yearly Calendar]",
        f"Output={_yes(yearly.output)}",
        f"SheetName={yearly.sheet}",
        f"FirstDayOfWeek={int(yearly.monday_first)}",
        f"MonthLayout={yearly.months_across}",
        f"ColIntervalOfMonth={yearly.month_columns}",
        f"RowIntervalOfMonth={yearly.month_rows}",
        f"FirstCellOfDay={yearly.first_day}",
        f"ColIntervalOfDay={yearly.column_step}",
        f"RowIntervalOfDay={yearly.row_step}",
        *_cells(yearly),
    ]
    return "\n".join(lines) + "\n"
