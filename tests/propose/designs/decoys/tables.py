"""Tables of all kinds."""

import datetime

from ..sheet import Formula, Sheet, address

GOODS = ("Apples", "Bread", "Coffee", "Dates", "Eggs", "Flour", "Garlic", "Honey", "Ice cream", "Juice",
         "Kale", "Lemons", "Milk", "Nuts", "Oil", "Pears", "Rice", "Sugar", "Tea", "Wine")
PEOPLE = ("Anna", "Bernd", "Claire", "David", "Elif", "François", "Giulia", "Hans", "Ines", "Jan", "Karin",
          "Luis", "Marta", "Nils", "Olga", "Pierre", "Rosa", "Sven", "Tom", "Uta")


def fill_table(sheet, theme, top, left, headings, rows, style=None):
    """Headings and rows of values with the theme's lines. Gives the row below the table."""
    cell = (style or theme.text()).but(**{side: theme.line for side in ("left", "right", "top", "bottom")})
    sheet.row(top, left, headings, theme.heading_style())
    for number, values in enumerate(rows, 1):
        sheet.row(top + number, left, values, cell)
    return top + len(rows) + 1


def _titled(rng, theme, name, title):
    sheet = Sheet(name)
    top, left = rng.choice((1, 2)), rng.choice((1, 2))
    sheet.put(top, left, title, theme.title(size=rng.choice((14, 18, 22))))
    sheet.heights[top] = 33
    return sheet, top + rng.choice((1, 2)), left


def price_list(rng, theme, names, words):
    sheet, top, left = _titled(rng, theme, "Prices", "Price list")
    goods = rng.sample(GOODS, rng.randint(6, 20))
    rows = [(number, good, rng.randint(1, 30), round(rng.uniform(0.5, 20), 2), "kg", rng.choice((7, 19)), None)
            for number, good in enumerate(goods, 1)]
    fill_table(sheet, theme, top, left, ("No.", "Article", "Stock", "Price", "Unit", "VAT %", "Note"), rows)
    sheet.widths[left + 1] = 22
    return sheet


def invoice(rng, theme, names, words):
    sheet, top, left = _titled(rng, theme, "Invoice", rng.choice(("INVOICE", "Rechnung", "Facture")))
    sheet.put(top, left, rng.choice(("ACME Corp.", "Müller GmbH")), theme.text(bold=True))
    sheet.put(top + 1, left + 5, "Date", theme.quiet())
    sheet.put(top + 1, left + 6, datetime.date(2025, rng.randint(1, 12), rng.randint(1, 28)),
              theme.text(number="dd.mm.yyyy"))
    lines = [(number, None, None, None, None, None, None) for number in range(1, rng.choice((7, 10, 13)))]
    end = fill_table(sheet, theme, top + 4, left, ("Pos", "Text", "Qty", "Unit", "Price", "Disc.", "Sum"),
                     lines)
    sheet.put(end, left + 6, Formula(f"SUM({address((top + 5, left + 6))}:{address((end - 1, left + 6))})"),
              theme.text(bold=True, number="0.00"))
    sheet.widths[left + 1] = 30
    return sheet


def addresses(rng, theme, names, words):
    sheet, top, left = _titled(rng, theme, "Contacts", words.birthdays)
    rows = [(name, f"{rng.randint(1, 99)} High Street", rng.randint(10000, 99999), "Springfield",
             datetime.date(rng.randint(1940, 2015), rng.randint(1, 12), rng.randint(1, 28)).isoformat())
            for name in rng.sample(PEOPLE, rng.randint(5, 18))]
    fill_table(sheet, theme, top, left, ("Name", "Street", "ZIP", "City", "Born"), rows)
    return sheet


def budget(rng, theme, names, words):
    """Twelve columns of months."""
    sheet, top, left = _titled(rng, theme, "Budget", f"Budget {rng.randint(2018, 2027)}")
    rows = [(text, *(rng.randint(10, 900) if rng.random() < 0.7 else None for _ in range(12)), None)
            for text in ("Rent", "Food", "Car", "Phone", "School", "Clothes", "Holiday",
                         "Other")[:rng.randint(4, 8)]]
    fill_table(sheet, theme, top, left, ("", *names.months, "Sum"), rows, theme.text(number="#,##0"))
    return sheet


def multiplication(rng, theme, names, words):
    sheet, top, left = _titled(rng, theme, "1x1", "Times table")
    size = rng.choice((7, 10, 12))
    rows = [[row] + [row * column for column in range(1, size + 1)] for row in range(1, size + 1)]
    fill_table(sheet, theme, top, left, ["×", *range(1, size + 1)], rows, theme.text(across="center"))
    return sheet


def number_chart(rng, theme, names, words):
    """The numbers from 1 on, ten in a row; or a bingo card."""
    sheet, top, left = _titled(rng, theme, "Numbers", "Counting to 100")
    for number in range(100):
        sheet.put(
            top + number // 10, left + number % 10, number + 1,
            theme.text(across="center", left=theme.line, right=theme.line, top=theme.line, bottom=theme.line))
    for column in range(left, left + 10):
        sheet.widths[column] = 5
    return sheet


def lottery(rng, theme, names, words):
    """Seven rows of seven numbers, often twelve such fields on a page."""
    sheet, top, left = _titled(rng, theme, "6 aus 49", "Lotto 6/49")
    style = theme.text(across="center", left=theme.line, right=theme.line, top=theme.line, bottom=theme.line)
    for field in range(rng.choice((1, 2, 4, 12))):
        for number in range(49):
            sheet.put(top + 9 * (field // 4) + number // 7, left + 8 * (field % 4) + number % 7, number + 1,
                      style)
    for column in range(left, left + 32):
        sheet.widths[column] = 3.4
    return sheet


def seven_columns(rng, theme, names, words):
    """Seven headings over empty rows."""
    sheet, top, left = _titled(rng, theme, rng.choice(("List", "Inventory", "Liste")),
                               rng.choice(("Members", "Inventory", "Fuel log")))
    headings = rng.choice((("Name", "A", "B", "C", "D", "E", "Total"),
                           ("No", "Date", "Km", "Litres", "Price", "Per l", "Per 100"),
                           ("Item", "Room", "Bought", "Price", "Serial", "Owner", "State")))
    fill_table(sheet, theme, top, left, headings, [(None,) * 7] * rng.choice((5, 6, 12, 25)))
    for column in range(left, left + 7):
        sheet.widths[column] = 12
    return sheet


def ledger(rng, theme, names, words):
    sheet, top, left = _titled(rng, theme, "Cash", "Cash book")
    start = datetime.date(2024, rng.randint(1, 12), 1)
    rows = [(start + datetime.timedelta(2 * n), rng.choice(GOODS), rng.randint(1, 99), None)
            for n in range(rng.randint(10, 40))]
    fill_table(sheet, theme, top, left, ("Date", "Text", "In", "Out"), rows)
    for row in range(top + 1, top + 1 + len(rows)):
        sheet.restyle(row, left, number="dd/mm/yyyy")
    sheet.widths[left] = 12
    return sheet


def blank(rng, theme, names, words):
    """Nothing, or nearly nothing."""
    sheet = Sheet(rng.choice(("Sheet1", "Tabelle1", "Feuil1", "Blank")))
    if rng.random() < 0.5:
        sheet.frame(2, 2, rng.randint(10, 40), rng.randint(5, 12), ("thin", "000000"))
    return sheet


def letter(rng, theme, names, words):
    sheet, top, left = _titled(rng, theme, "Info", words.instructions)
    for row, text in enumerate(("Dear all,", "please enter your wishes by Friday.", "Sunday is closed.",
                                "1. Open the sheet", "2. Write your name", "3. Save", "Thank you!")):
        sheet.put(top + row, left, text, theme.text())
    return sheet


def departures(rng, theme, names, words):
    """A bus timetable: hours at the left, minutes in rows."""
    sheet, top, left = _titled(rng, theme, "Bus 12", "Departures")
    for number, hour in enumerate(range(5, 24)):
        sheet.put(top + number, left, hour, theme.heading_style())
        sheet.row(top + number, left + 1, sorted(rng.sample(range(60), rng.randint(2, 6))),
                  theme.text(number="00"))
    return sheet


def sudoku(rng, theme, names, words):
    sheet, top, left = _titled(rng, theme, "Sudoku", "Sudoku")
    for row in range(9):
        for column in range(9):
            value = rng.randint(1, 9) if rng.random() < 0.3 else None
            sheet.put(top + row, left + column, value, theme.text(size=16, across="center"))
    for box in range(9):
        place = top + 3 * (box // 3), left + 3 * (box % 3)
        sheet.frame(*place, place[0] + 2, place[1] + 2, ("medium", "000000"))
    return sheet


def month_boxes(rng, theme, names, words):
    """Twelve boxes with a month's name and lines, 3 by 4: birthdays, tasks."""
    sheet, top, left = _titled(rng, theme, words.birthdays[:31], words.birthdays)
    rows, columns = rng.choice((5, 6, 7, 9)), rng.choice((1, 2, 3, 7))
    for month in range(12):
        first, start = top + (rows + 2) * (month // 3), left + (columns + 1) * (month % 3)
        sheet.area(first, start, first, start + columns - 1, theme.heading_style(), names.months[month])
        for row in range(first + 1, first + 1 + rows):
            sheet.area(row, start, row, start + columns - 1, theme.text(bottom=theme.line))
        for column in range(start, start + columns):
            sheet.widths[column] = round(21 / columns, 1)
    return sheet


def loan(rng, theme, names, words):
    sheet, top, left = _titled(rng, theme, "Loan", "Repayment plan")
    rows = [(number, 500, round(120 - number * 1.7, 2), None) for number in range(1, 37)]
    fill_table(sheet, theme, top, left, ("Month", "Rate", "Interest", "Rest"), rows,
               theme.text(number="#,##0.00"))
    return sheet
