"""Sheets that are no calendar, or none that the parameters can express.

Each maker takes (rng, theme, names, words), and gives a sheet and what it is. Some look much like
a calendar: seven columns, weekday names, rows of equal boxes, twelve blocks, small numbers.
"""

from . import almanacs, plans, tables

MAKERS = {
    # Pages without days, but with tables like those that people keep beside their calendars.
    "tables": ((tables.price_list, 3), (tables.invoice, 3), (tables.addresses, 2), (tables.budget, 3),
               (tables.multiplication, 1), (tables.number_chart, 1), (tables.lottery, 1),
               (tables.seven_columns, 3), (tables.ledger, 2), (tables.blank, 2), (tables.letter, 1),
               (tables.departures, 1), (tables.sudoku, 1), (tables.month_boxes, 2), (tables.loan, 1)),
    # Pages with weekdays or days, but without months.
    "plans": ((plans.timetable, 4), (plans.weekly_planner, 3), (plans.meal_plan, 2), (plans.roster, 3),
              (plans.attendance, 3), (plans.gantt, 2), (plans.timesheet, 3), (plans.habits, 2),
              (plans.seating, 2), (plans.boxes, 2), (plans.invoice_with_calendar, 2), (plans.chores, 1)),
    # Calendars of another shape.
    "almanacs": ((almanacs.list_of_days, 3), (almanacs.months_as_columns, 3), (almanacs.months_as_rows, 2),
                 (almanacs.weeks_as_columns, 2), (almanacs.workdays, 3), (almanacs.shared_weekend, 2),
                 (almanacs.months_downwards, 2), (almanacs.uneven_year, 2), (almanacs.typed_calendar, 2),
                 (almanacs.some_months, 2)),
}
SHARES = {"tables": 40, "plans": 36, "almanacs": 24}


def make(rng, theme, names, words, family=None):
    family = family or rng.choices(list(SHARES), SHARES.values())[0]
    makers, weights = zip(*MAKERS[family])
    maker = rng.choices(makers, weights)[0]
    sheet = maker(rng, theme, names, words)
    sheet.gridlines = rng.random() < 0.6
    sheet.landscape = rng.random() < 0.5
    return sheet, maker.__name__.replace("_", " ")
