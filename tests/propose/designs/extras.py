"""What people put around a calendar: small calendars, notes, lists, week numbers, pictures, hints."""

import calendar
import datetime

from .sheet import Formula, Picture, address

QUOTES = ("Carpe diem!", "Keep calm and carry on", "Life is what happens while you are making plans.",
          "Ordnung ist das halbe Leben", "Vive les vacances !", "Be kind.")
OWNERS = ("Family Smith", "Gartenverein Lindenhof e. V.", "ACME Corp.", "Class 4b", "Praxis Dr. Weber",
          "Team North", "St. Mary's Parish", "Mairie de Saint-Jean", "Bar Centrale", "山田商店", "HR Department")
SMALL_PRINT = ("© 2019 J. Miller", "Printed 03.02.2024", "v2.1 (2018)", "Stand: 12/2023", "www.example.org",
               "Form 1042-B", "All dates without warranty", "Template by Anna", "updated 2022-11-30")


def mini_calendar(rng, sheet, theme, names, year, month, top, left, monday):
    """A month in seven narrow columns, with the days as fixed numbers. Eight rows."""
    style = theme.text(size=7, across="center")
    sheet.area(top, left, top, left + 6, style.but(bold=True), f"{names.months[month - 1]} {year}")
    for day in range(7):
        weekday = (day + monday) % 7
        sheet.put(top + 1, left + day, names.weekdays[weekday][:rng.choice((1, 1, 2))], style.but(bold=True))
    weeks = calendar.Calendar(0 if monday else 6).monthdayscalendar(year, month)
    for week, days in enumerate(weeks):
        for day, number in enumerate(days):
            sheet.put(top + 2 + week, left + day, number or None, style)


def neighbors_of(year, month):
    """The months before and after."""
    before = datetime.date(year, month, 1) - datetime.timedelta(1)
    after = datetime.date(year, month, 28) + datetime.timedelta(4)
    return (before.year, before.month), (after.year, after.month)


def week_numbers(rng, sheet, theme, words, plan, column, top, weekday_row, sample):
    """A column of week numbers beside the weeks."""
    style = theme.quiet(across="center", fill=rng.choice((None, None, theme.heading_fill)))
    if style.fill:
        style = style.but(color=theme.heading_ink)
    if plan.weekday_row != "absent" and rng.random() < 0.6:
        sheet.put(weekday_row, column, words.week, style)
    first = 9 if sample is None else datetime.date(sample.year, sample.month, 4).isocalendar()[1]
    way = rng.choice(("numbers", "texts", "empty", "numbers"))
    merged = plan.area.rows > 1 and rng.random() < 0.7
    for week in range(plan.weeks):
        row = top + week * plan.area.rows
        number = (first + week - 1) % 52 + 1
        value = {"numbers": number, "texts": f"{words.week} {number}", "empty": None}[way]
        sheet.area(row, column, row + (plan.area.rows - 1 if merged else 0), column, style, value)
    sheet.widths[column] = 5


def notes_below(rng, sheet, theme, words, row, left, right):
    """A box for notes, or some lines. Gives the last row that it takes."""
    sheet.area(row, left, row, right, theme.text(bold=True), words.notes, merge=rng.random() < 0.5)
    lines = rng.choice((3, 4, 6))
    if rng.random() < 0.5:
        sheet.area(row + 1, left, row + lines, right, theme.text(down="top", wrap=True))
        sheet.frame(row + 1, left, row + lines, right, theme.line)
    else:
        for line in range(row + 1, row + lines + 1):
            sheet.area(line, left, line, right, theme.text(bottom=theme.line))
    return row + lines


def panel(rng, sheet, theme, names, words, plan, top, column, rows, sample):
    """Something at the right of the grid, one column of text or seven of a small calendar."""
    way = rng.choice(("notes", "todo", "dates", "mini", "months"))
    if way == "mini" and sample:
        for number, (year, month) in enumerate(neighbors_of(sample.year, sample.month)):
            if number == 0 or rows >= 17:
                mini_calendar(rng, sheet, theme, names, year, month, top + 9 * number, column, plan.monday)
        for offset in range(7):
            sheet.widths[column + offset] = 2.8
        return "mini calendars"
    sheet.widths[column] = rng.choice((18, 24, 30))
    title = {"notes": words.notes, "todo": words.todo, "dates": words.important, "mini": words.birthdays,
             "months": words.year}[way]
    sheet.put(top, column, title, theme.heading_style())
    for row in range(top + 1, top + rows):
        sheet.put(row, column, "☐" if way == "todo" else None, theme.text(size=theme.size, bottom=theme.line))
    if way == "dates":
        for row, text in zip(range(top + 1, top + rows), ("01.05. Picnic", "12.05. Exam", "31.05. Tax")):
            sheet.put(row, column, text)
    if way == "months":  # such as lead to the other months' sheets
        for row, text in zip(range(top + 1, top + rows), names.months):
            sheet.put(row, column, text)
    return "panel"


def banner(rng, sheet, theme, words, row, left, right):
    """A line above everything: the owner, the word calendar, a saying."""
    owner = rng.choice(OWNERS)
    text = rng.choice((words.calendar, owner, rng.choice(QUOTES), f"{owner} – {words.calendar}"))
    sheet.area(row, left, row, right, theme.quiet(across=rng.choice(("left", "center"))), text,
               merge=rng.random() < 0.6)


def picture(rng, sheet, theme, row, column, width, height):
    colors = (theme.ink, theme.heading_fill, theme.accent, theme.weekend_fill)
    sheet.pictures.append(Picture(row, column, width, height, colors))


def small_print(rng, sheet, theme, row, column):
    sheet.put(row, column, rng.choice(SMALL_PRINT), theme.quiet(italic=rng.random() < 0.5))


def legend(rng, sheet, theme, row, left, step):
    """Coloured cells and what they mean."""
    for number, (fill, text) in enumerate(((theme.weekend_fill, "Weekend"), (theme.heading_fill, "School"),
                                           ("FFCC99", "Vacation"))):
        sheet.put(row, left + number * step, text, theme.quiet(fill=fill))


def helper_column(sheet, column, rows, theme):
    """A hidden column of numbers that formulas of the designer once used."""
    for row in range(1, rows + 1):
        sheet.put(row, column, Formula(f"{address((row - 1, column))}+1") if row > 1 else 1, theme.quiet())
    sheet.hidden_columns.add(column)


def dress(rng, sheet, theme, landscape):
    """The settings of the page and the view."""
    sheet.gridlines = rng.random() < 0.45
    sheet.landscape = landscape
    sheet.one_page = rng.random() < 0.5
    sheet.zoom = rng.choice((100, 100, 100, 85, 70, 120))
    if rng.random() < 0.2:
        sheet.footer = rng.choice(SMALL_PRINT).replace("&", "&&")
    if rng.random() < 0.1:
        sheet.header = rng.choice(OWNERS)
    if rng.random() < 0.3:
        sheet.print_area = (1, 1, *sheet.extent())
    if rng.random() < 0.3:
        sheet.tab_color = theme.heading_fill
