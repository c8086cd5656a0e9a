"""Plans with weekdays, days or equal boxes that are no calendar of a month."""

import calendar
import datetime

from ..sheet import Formula, Sheet
from .tables import PEOPLE, fill_table, invoice

MEALS = (("Breakfast", "Lunch", "Dinner"), ("Frühstück", "Mittag", "Abend"),
         ("Matin", "Midi", "Soir", "Goûter"), ("Breakfast", "Snack", "Lunch", "Tea", "Dinner", "Shopping"))


def _weekdays(names, monday=True, count=7):
    return [names.weekdays[(day + monday) % 7] for day in range(count)]


def _titled(rng, theme, name, title):
    sheet = Sheet(name)
    top, left = rng.choice((1, 2)), rng.choice((1, 2))
    sheet.put(top, left, title, theme.title(size=rng.choice((14, 18, 24))))
    sheet.heights[top] = 36
    return sheet, top + rng.choice((1, 2)), left


def timetable(rng, theme, names, words):
    """A school's or a gym's week: hours at the left."""
    sheet, top, left = _titled(rng, theme, rng.choice(("Timetable", "Stundenplan", "Horaire")),
                               rng.choice(("Timetable", "Stundenplan", "Class 4b")))
    count = rng.choice((5, 6, 7, 7))
    hours = range(rng.choice((5, 6, 8, 10)))
    labels = rng.choice(([hour + 1 for hour in hours], [f"{hour + 8}:00" for hour in hours],
                         [f"{hour + 8:02}:00–{hour + 9:02}:00" for hour in hours]))
    lessons = (None, "Maths", "English", "Sport", "Art", None)
    rows = [[label, *(rng.choice(lessons) for _ in range(count))] for label in labels]
    fill_table(sheet, theme, top, left, ["", *_weekdays(names, count=count)], rows,
               theme.text(across="center"))
    for number in range(len(rows)):
        sheet.heights[top + 1 + number] = 27
    for column in range(left, left + 1 + count):
        sheet.widths[column] = 13
    return sheet


def weekly_planner(rng, theme, names, words):
    """One week on a page: seven columns with a heading and many lines, or rows of half hours."""
    sheet, top, left = _titled(rng, theme, "Week",
                               rng.choice(("Weekly planner", "Meine Woche", "Ma semaine")))
    half_hours = [f"{8 + n // 2}:{'00' if n % 2 == 0 else '30'}" for n in range(20)]
    labels = half_hours if rng.random() < 0.6 else [None] * rng.choice((12, 20))
    headings = ["", *_weekdays(names, rng.random() < 0.7)]
    fill_table(sheet, theme, top, left, headings, [[text] + [None] * 7 for text in labels])
    for column in range(left + 1, left + 8):
        sheet.widths[column] = 14
    return sheet


def meal_plan(rng, theme, names, words):
    sheet, top, left = _titled(rng, theme, "Meals",
                               rng.choice(("Meal plan", "Speiseplan", "Menu de la semaine")))
    meals = rng.choice(MEALS)
    fill_table(sheet, theme, top, left, ["", *_weekdays(names)], [[meal] + [None] * 7 for meal in meals])
    for number in range(len(meals)):
        sheet.heights[top + 1 + number] = 60
    for column in range(left, left + 8):
        sheet.widths[column] = 13
    return sheet


def roster(rng, theme, names, words):
    """Who works when in a week: names at the left."""
    sheet, top, left = _titled(rng, theme, "Roster", rng.choice(("Shift roster", "Dienstplan", "Planning")))
    rows = [[name] + [rng.choice(("E", "L", "N", None, "off")) for _ in range(7)]
            for name in rng.sample(PEOPLE, rng.choice((5, 6, 6, 9)))]
    fill_table(sheet, theme, top, left, ["Name", *_weekdays(names)], rows, theme.text(across="center"))
    return sheet


def attendance(rng, theme, names, words):
    """People in rows, the days 1 to 31 in columns."""
    sheet, top, left = _titled(rng, theme, "Attendance",
                               f"{rng.choice(names.months)} {rng.randint(2015, 2027)}")
    if rng.random() < 0.5:
        letters = [names.weekdays[(day + 3) % 7][:1] for day in range(31)]
        sheet.row(top, left + 1, letters, theme.quiet(across="center"))
        top += 1
    rows = [[name] + [rng.choice((None, None, "x")) for _ in range(31)]
            for name in rng.sample(PEOPLE, rng.randint(5, 20))]
    fill_table(sheet, theme, top, left, ["Name", *range(1, 32)], rows)
    for column in range(left + 1, left + 32):
        sheet.widths[column] = 3
    return sheet


def gantt(rng, theme, names, words):
    """Tasks in rows, days of some weeks in columns, coloured bars."""
    sheet, top, left = _titled(rng, theme, "Project", "Project plan")
    weeks = rng.choice((3, 4, 6))
    start = datetime.date(2026, rng.randint(1, 9), 1)
    for week in range(weeks):
        column = left + 1 + 7 * week
        sheet.area(top, column, top, column + 6, theme.heading_style(),
                   f"{words.week} {start.isocalendar()[1] + week}")
        days = [(start + datetime.timedelta(7 * week + day)).day for day in range(7)]
        sheet.row(top + 1, column, days, theme.text(size=8, across="center"))
    for task in range(rng.randint(4, 12)):
        sheet.put(top + 2 + task, left, f"Task {task + 1}", theme.text())
        first = rng.randrange(7 * weeks - 3)
        for column in range(left + 1, left + 1 + 7 * weeks):
            inside = first <= column - left - 1 <= first + 4
            sheet.put(top + 2 + task, column, None, theme.text(fill=theme.heading_fill if inside else None))
    for column in range(left + 1, left + 1 + 7 * weeks):
        sheet.widths[column] = 2.9
    return sheet


def timesheet(rng, theme, names, words):
    """Days of a week or of a month in rows; come, go, break."""
    sheet, top, left = _titled(rng, theme, "Timesheet", rng.choice(("Timesheet", "Stundenzettel")))
    if rng.random() < 0.5:
        labels = _weekdays(names)
    else:
        labels = list(range(1, 32))
    rows = [[label, None, None, None, None, Formula("0"), None] for label in labels]
    fill_table(sheet, theme, top, left, ("Day", "From", "To", "Break", "Project", "Hours", "Note"), rows)
    return sheet


def habits(rng, theme, names, words):
    """A tracker: a square for each day of each habit."""
    sheet, top, left = _titled(rng, theme, "Habits", "Habit tracker")
    fill_table(sheet, theme, top, left, ["", *range(1, 32)],
               [[text] + ["☐"] * 31 for text in ("Water", "Run", "Read", "Sleep")])
    for column in range(left + 1, left + 32):
        sheet.widths[column] = 3
    return sheet


def seating(rng, theme, names, words):
    """Desks in rows of seven with names."""
    sheet, top, left = _titled(rng, theme, "Seats", rng.choice(("Seating plan", "Sitzplan")))
    sheet.area(top, left, top, left + 6, theme.heading_style(), rng.choice(("Board", "Tafel", "Stage")))
    style = theme.text(across="center", left=theme.line, right=theme.line, top=theme.line, bottom=theme.line)
    for row in range(rng.choice((4, 5, 6))):
        sheet.heights[top + 2 + row] = 40
        sheet.row(top + 2 + row, left, [rng.choice(PEOPLE) for _ in range(7)], style)
    return sheet


def boxes(rng, theme, names, words):
    """Storage boxes: labels in rows of equal cells."""
    sheet, top, left = _titled(rng, theme, "Shelf", rng.choice(("Screws", "Storage", "Samples")))
    count = rng.choice((5, 6, 7, 7, 8))
    style = theme.text(across="center", left=theme.line, right=theme.line, top=theme.line, bottom=theme.line)
    for row in range(rng.choice((4, 5, 6))):
        sheet.heights[top + row] = 36
        sheet.row(top + row, left, [f"{chr(65 + row)}{column + 1}" for column in range(count)], style)
    return sheet


def invoice_with_calendar(rng, theme, names, words):
    """A form in whose corner somebody typed a small calendar into one cell."""
    sheet = invoice(rng, theme, names, words)
    year, month = 2025, rng.randint(1, 12)
    text = calendar.TextCalendar(0).formatmonth(year, month)
    sheet.area(2, 10, 9, 14, theme.text(font="Courier New", size=8, wrap=True, down="top"), text.strip())
    return sheet


def chores(rng, theme, names, words):
    """Chores in rows, one column for each weekday, boxes to tick."""
    sheet, top, left = _titled(rng, theme, "Chores", rng.choice(("Chores", "Putzplan")))
    fill_table(sheet, theme, top, left, ["", *(text[:2] for text in _weekdays(names))],
               [[text] + ["☐"] * 7
                for text in ("Dishes", "Bins", "Dog", "Bath", "Plants", "Floor")[:rng.choice((4, 5, 6))]])
    return sheet
