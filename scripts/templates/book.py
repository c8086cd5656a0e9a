"""A workbook under construction: named styles, widths in pixels, print set-up."""

import datetime
import io

import xlsxwriter

from .parameters import Cell

FONT = "Calibri"  # Carlito stands in for it where Calibri is missing, with the same widths
MADE = datetime.datetime(2026, 1, 1)

INK = "#1F2937"
MUTED = "#7B8794"
HAIRLINE = "#D5DAE1"
ACCENT = "#B4472F"  # holidays
GOLD = "#B08D4A"
WEEKEND = "#F7F4ED"
HOLIDAY = "#FBEAE3"
OUTSIDE = "#F5F6F8"  # days that belong to another month

A4, LETTER = 9, 1
BOTTOM = 0.6  # inches, the margin with the footer in it
FOOTER = BOTTOM - 6.44 / 25.4  # from the edge; LibreOffice moves any other footer in an .xls

NOTHING = ";;;"  # the number format that shows neither numbers nor text


class Book:
    """One template. Its formats are made once for each set of properties."""

    def __init__(self, title, subject):
        self._data = io.BytesIO()
        self._workbook = xlsxwriter.Workbook(self._data, {"in_memory": True})
        self._workbook.set_properties({
            "title": title, "subject": subject, "author": "Orrery", "category": "Calendar",
            "comments": "A calendar template. Orrery fills it for any year.", "created": MADE,
        })
        self._styles = {}

    def style(self, **properties):
        properties = {"font_name": FONT, "font_color": INK, "valign": "vcenter", **properties}
        key = tuple(sorted(properties.items()))
        if key not in self._styles:
            self._styles[key] = self._workbook.add_format(properties)
        return self._styles[key]

    def rule_style(self, **properties):
        """The format of a conditional rule: only what the rule changes."""
        key = ("rule", *sorted(properties.items()))
        if key not in self._styles:
            self._styles[key] = self._workbook.add_format(properties)
        return self._styles[key]

    def sheet(self, name, tab_color):
        sheet = self._workbook.add_worksheet(name)
        sheet.hide_gridlines(2)
        sheet.set_tab_color(tab_color)
        sheet.set_column_pixels("A:A", 18)  # a gap at the left of the screen, never printed
        return sheet

    def chart(self, kind):
        return self._workbook.add_chart({"type": kind})

    def name(self, name, sheet, area):
        self._workbook.define_name(f"{sheet}!{name}", f"={sheet}!{area}")

    def finish(self):
        self._workbook.close()
        return self._data.getvalue()


def area(first, last, absolute=False):
    """The range between two cells, in A1 notation."""
    if absolute:
        return f"{fixed(first)}:{fixed(last)}"
    return f"{first}:{last}"


def fixed(cell, row=True, column=True):
    """A cell reference with dollar signs: "$B$6"."""
    letters = str(Cell(0, cell.column))[:-1]
    return f"{'$' if column else ''}{letters}{'$' if row else ''}{cell.row}"


def widths(sheet, first_column, pixels):
    for column, width in enumerate(pixels, first_column - 1):
        sheet.set_column_pixels(column, column, width)


def heights(sheet, first_row, points):
    """Sets the heights of consecutive rows: whole pixels of 0.75 points, because programs round to
    these, and never 15 points, which counts as no height of the row's own."""
    assert all(height % 0.75 == 0 and height != 15 for height in points), points
    for row, height in enumerate(points, first_row - 1):
        sheet.set_row(row, height)


def blank(sheet, first, last, style):
    """Gives every cell between two cells a format, and no value."""
    for row in range(first.row, last.row + 1):
        for column in range(first.column, last.column + 1):
            sheet.write_blank(str(Cell(row, column)), None, style)


def color_when(sheet, ranges, formula, style):
    """A conditional format over one or more ranges; the formula is that of the first cell."""
    sheet.conditional_format(ranges[0], {
        "type": "formula", "criteria": formula, "format": style,
        "multi_range": " ".join(ranges),
    })


def whole_year(sheet, cell):
    """Accepts nothing but a year in a cell that Orrery or a person fills."""
    sheet.data_validation(str(cell), {
        "validate": "integer", "criteria": "between", "minimum": 1, "maximum": 9999,
        "error_title": "Year", "error_message": "A year is a whole number from 1 to 9999."})


def one_page(sheet, first, last, paper, landscape=False):
    """Prints the area between two cells on one page, in the middle of A4 and Letter alike."""
    _print_setup(sheet, first, last, paper, landscape)
    sheet.fit_to_pages(1, 1)
    sheet.center_vertically()


def _print_setup(sheet, first, last, paper, landscape):
    if landscape:
        sheet.set_landscape()
    else:
        sheet.set_portrait()
    sheet.set_paper(paper)
    sheet.set_margins(left=0.5, right=0.5, top=0.45, bottom=BOTTOM)
    sheet.center_horizontally()
    sheet.print_area(area(first, last))
    _footer(sheet, "&A")


def _footer(sheet, text):
    """Centred and without a colour: an .xls loses anything else."""
    sheet.set_footer(f'&C&"Calibri,Regular"&8{text}  ·  made with Orrery',
                     {"margin": FOOTER})


def many_pages(sheet, first, last, paper, heading_rows, breaks):
    """Prints page after page at full size: the breaks are the last rows of the pages."""
    _print_setup(sheet, first, last, paper, landscape=False)
    _footer(sheet, "&A  ·  &P of &N")
    sheet.repeat_rows(*(row - 1 for row in heading_rows))
    sheet.set_h_pagebreaks(breaks)
