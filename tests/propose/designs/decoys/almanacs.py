"""Calendars of shapes that no parameters express: these have weeks of seven days in rows, and years of
twelve months at equal distances."""

import calendar
import datetime

from ..sheet import Sheet

SIDES = ("left", "right", "top", "bottom")


def _start(rng, theme, name, title, size=20):
    sheet = Sheet(name)
    top, left = rng.choice((1, 2)), rng.choice((1, 2))
    sheet.put(top, left, title, theme.title(size=size))
    sheet.heights[top] = size * 1.6
    return sheet, top + 1, left


def _boxed(theme, **changes):
    return theme.text(**{side: theme.line for side in SIDES}).but(**changes)


def list_of_days(rng, theme, names, words):
    """One month, a row for each day."""
    year, month = rng.randint(2015, 2027), rng.randint(1, 12)
    sheet, top, left = _start(rng, theme, words.month, f"{names.months[month - 1]} {year}")
    for day in range(1, calendar.monthrange(year, month)[1] + 1):
        weekday = (datetime.date(year, month, day).weekday() + 1) % 7
        sheet.row(top + day, left, (day, names.weekdays[weekday], None, None), _boxed(theme))
    sheet.widths[left + 2] = 40
    return sheet


def months_as_columns(rng, theme, names, words):
    """A year, a column or two for each month, the days downwards."""
    year, pair = rng.randint(2015, 2027), rng.random() < 0.5
    sheet, top, left = _start(rng, theme, words.year, str(year))
    for month in range(12):
        column = left + (2 if pair else 1) * month
        sheet.area(top, column, top, column + pair, theme.heading_style(), names.months[month])
        for day in range(1, calendar.monthrange(year, month + 1)[1] + 1):
            weekday = datetime.date(year, month + 1, day).weekday()
            style = _boxed(theme, **(theme.weekend_changes() if weekday > 4 else {}))
            sheet.put(top + day, column, day, style)
            if pair:
                sheet.put(top + day, column + 1, names.weekdays[(weekday + 1) % 7][:2], style)
    return sheet


def months_as_rows(rng, theme, names, words):
    """A year, a row for each month, the days to the right, below their weekdays or not."""
    year, aligned = rng.randint(2015, 2027), rng.random() < 0.6
    sheet, top, left = _start(rng, theme, words.year, str(year))
    for column in range(37 if aligned else 31):
        text = names.weekdays[(column + 1) % 7][:2] if aligned else column + 1
        sheet.put(top, left + 1 + column, text, theme.heading_style())
        sheet.widths[left + 1 + column] = 3
    for month in range(12):
        sheet.put(top + 1 + month, left, names.months[month], theme.text(bold=True))
        first, days = calendar.monthrange(year, month + 1)
        for column in range(37 if aligned else 31):
            day = column + 1 - (first if aligned else 0)
            inside = 1 <= day <= days
            sheet.put(top + 1 + month, left + 1 + column, day if inside and aligned else None, _boxed(theme))
    return sheet


def weeks_as_columns(rng, theme, names, words):
    """A month or a year with the weekdays downwards and the weeks to the right."""
    year = rng.randint(2015, 2027)
    months = rng.choice(((rng.randint(1, 12),), range(1, 13)))
    sheet, top, left = _start(rng, theme, words.calendar,
                              str(year) if len(months) > 1 else f"{names.months[months[0] - 1]} {year}")
    for number, month in enumerate(months):
        first, column = top + 9 * (number // 3), left + 8 * (number % 3)
        if len(months) > 1:
            sheet.area(first, column, first, column + 6, theme.heading_style(), names.months[month - 1])
        for day in range(7):
            sheet.put(first + 1 + day, column, names.weekdays[(day + 1) % 7], theme.heading_style())
        for week, days in enumerate(calendar.Calendar(0).monthdayscalendar(year, month)):
            for day, value in enumerate(days):
                sheet.put(first + 1 + day, column + 1 + week, value or None, _boxed(theme, across="center"))
    return sheet


def workdays(rng, theme, names, words):
    """A month of five columns, Monday to Friday."""
    year, month = rng.randint(2015, 2027), rng.randint(1, 12)
    sheet, top, left = _start(rng, theme, words.month, f"{names.months[month - 1]} {year}", 24)
    sheet.row(top, left, [names.weekdays[day] for day in range(1, 6)], theme.heading_style())
    for week, days in enumerate(calendar.Calendar(0).monthdayscalendar(year, month)):
        sheet.heights[top + 1 + week] = 54
        sheet.row(top + 1 + week, left, [day or None for day in days[:5]], _boxed(theme, down="top"))
    for column in range(left, left + 5):
        sheet.widths[column] = 18
    return sheet


def shared_weekend(rng, theme, names, words):
    """A month of six columns: Saturday above Sunday in the last one."""
    year, month = rng.randint(2015, 2027), rng.randint(1, 12)
    sheet, top, left = _start(rng, theme, words.month, f"{names.months[month - 1]} {year}", 24)
    last = f"{names.weekdays[6][:3]}/{names.weekdays[0][:3]}"
    sheet.row(top, left, [*names.weekdays[1:6], last], theme.heading_style())
    for week, days in enumerate(calendar.Calendar(0).monthdayscalendar(year, month)):
        row = top + 1 + 2 * week
        for day in range(5):
            sheet.area(row, left + day, row + 1, left + day, _boxed(theme, down="top"), days[day] or None)
        sheet.put(row, left + 5, days[5] or None, _boxed(theme))
        sheet.put(row + 1, left + 5, days[6] or None, _boxed(theme))
        sheet.heights[row] = sheet.heights[row + 1] = 30
    for column in range(left, left + 6):
        sheet.widths[column] = 16
    return sheet


def _small_month(sheet, theme, names, year, month, top, left):
    sheet.area(top, left, top, left + 6, theme.heading_style(), names.months[month - 1])
    sheet.row(top + 1, left, [names.weekdays[(day + 1) % 7][:2] for day in range(7)],
              theme.quiet(across="center"))
    for week in range(6):
        sheet.row(top + 2 + week, left, [None] * 7, theme.text(size=9, across="center"))
    for week, days in enumerate(calendar.Calendar(0).monthdayscalendar(year, month)):
        for day, value in enumerate(days):
            sheet.put(top + 2 + week, left + day, value or None)
    for column in range(left, left + 7):
        sheet.widths[column] = 3.4


def months_downwards(rng, theme, names, words):
    """A year of blocks whose months go down first, then to the right."""
    year, down = rng.randint(2015, 2027), rng.choice((3, 4, 6))
    sheet, top, left = _start(rng, theme, words.year, str(year), 28)
    for month in range(12):
        _small_month(sheet, theme, names, year, month + 1, top + 1 + 9 * (month % down),
                     left + 8 * (month // down))
    return sheet


def uneven_year(rng, theme, names, words):
    """A year of blocks with more room after the second band or column."""
    year, across = rng.randint(2015, 2027), rng.choice((3, 4))
    wide = rng.random() < 0.5
    sheet, top, left = _start(rng, theme, words.year, str(year), 28)
    for month in range(12):
        band, place = divmod(month, across)
        row = top + 1 + 9 * band + (0 if wide or band < 2 else 4)
        _small_month(sheet, theme, names, year, month + 1, row,
                     left + 8 * place + (3 if wide and place > 1 else 0))
    return sheet


def some_months(rng, theme, names, words):
    """Two to six equal months on a page."""
    year, first = rng.randint(2015, 2027), rng.choice((1, 7))
    sheet, top, left = _start(rng, theme, words.calendar, f"{words.calendar} {year}", 24)
    for number in range(rng.choice((2, 3, 4, 6, 6))):
        _small_month(sheet, theme, names, year, first + number, top + 1 + 9 * (number // 3),
                     left + 8 * (number % 3))
    return sheet


def typed_calendar(rng, theme, names, words):
    """A year whose months are each typed into one cell."""
    year = rng.randint(2015, 2027)
    sheet, top, left = _start(rng, theme, words.year, str(year), 24)
    for month in range(12):
        text = calendar.TextCalendar(0).formatmonth(year, month + 1).rstrip()
        row, column = top + 1 + 2 * (month // 4), left + 2 * (month % 4)
        sheet.put(row, column, text, theme.text(font="Courier New", size=8, wrap=True, down="top"))
        sheet.widths[column], sheet.heights[row] = 24, 110
    return sheet
