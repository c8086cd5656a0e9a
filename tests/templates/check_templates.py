"""Checks the shipped templates.

    check_templates.py reproducible FOLDER MAKER   the maker writes the same bytes as in FOLDER
    check_templates.py sane FOLDER                 sheets and parameter files match

`sane` shares no code with the maker: it reads the files, computes with Python's calendar where
every value of every month from 2024 to 2030 goes, and checks those cells.
"""

import calendar
import datetime
import os
import pathlib
import subprocess
import sys
import tempfile

import openpyxl
import xlrd
from openpyxl.utils import cell as cells

YEARS = range(2024, 2031)
INCHES_OF_PAPER = {"A4": (8.27, 11.69), "Letter": (8.5, 11.0)}
COLUMN_SLACK = 1.065  # LibreOffice draws columns in Carlito up to 6 % wider than Excel in Calibri

COMMON = ["OutWeekday", "FirstCellOfWeekday", "WeekdayName", "OutMonth", "FirstCellOfMonth",
          "MonthName", "OutYear", "FirstCellOfYear", "OutHoliday", "FirstCellOfHoliday",
          "MultiHolidays"]
ORDER = {
    "[Monthly Calendar]": ["Output", "SheetName", "FirstDayOfWeek", "FirstCellOfDay",
                           "ColIntervalOfDay", "RowIntervalOfDay", *COMMON],
    "[Yearly Calendar]": ["Output", "SheetName", "FirstDayOfWeek", "MonthLayout",
                          "ColIntervalOfMonth", "RowIntervalOfMonth", "FirstCellOfDay",
                          "ColIntervalOfDay", "RowIntervalOfDay", *COMMON],
}


class Problems(list):
    def check(self, good, *words):
        if not good:
            self.append(" ".join(map(str, words)))


def reproducible(folder, maker):
    problems = Problems()
    with tempfile.TemporaryDirectory() as scratch:
        subprocess.run([sys.executable, "-B", maker, scratch], check=True)
        made = {path.name: path.read_bytes() for path in pathlib.Path(scratch).iterdir()}
    shipped = {path.name: path.read_bytes() for path in folder.iterdir()}
    problems.check(made.keys() == shipped.keys(), "different files:", made.keys() ^ shipped.keys())
    for name in sorted(made.keys() & shipped.keys()):
        problems.check(made[name] == shipped[name], name, "differs from what the maker writes")
    return problems


def sane(folder):
    problems = Problems()
    names = sorted(path.stem for path in folder.glob("*.xlsx"))
    problems.check(len(names) >= 5, "fewer than five templates:", names)
    for suffix, missing in ((".ini", "parameter file"), (".xls", "older file format")):
        problems.check(names == sorted(path.stem for path in folder.glob(f"*{suffix}")),
                       f"a template without {missing}, or the reverse")
    if problems:
        return problems
    for name in names:
        _check_template(problems, folder / name)
        _check_old_format(problems, folder / name)
    return problems


def _check_template(problems, base):
    name = base.name
    sections = read_parameters(problems, name, base.with_suffix(".ini"))
    if problems:
        return  # nothing can be checked without the keys
    book = openpyxl.load_workbook(base.with_suffix(".xlsx"))
    problems.check(book.properties.creator == "Orrery" and book.properties.title, name,
                   "lacks its title, or names an author")
    problems.check(any(section["Output"] == "Y" for section in sections.values()), name,
                   "writes no calendar")
    for header, section in sections.items():
        if section["SheetName"] not in book.sheetnames:
            problems.append(f"{name} {header}: no sheet {section['SheetName']}")
        elif section["Output"] == "Y":
            sheet = book[section["SheetName"]]
            _check_print_setup(problems, name, sheet)
            _check_written_cells(problems, name, sheet, section, header.startswith("[Yearly"))


def _check_old_format(problems, base):
    """The .xls has the same sheets and texts as the .xlsx, and no duplicate names. Another test
    compares its pages."""
    name = f"{base.name}.xls"
    new, old = openpyxl.load_workbook(base.with_suffix(".xlsx")), _open_old(base)
    problems.check(new.sheetnames == old.sheet_names(), name, "has other sheets")
    for sheet in new.worksheets:
        texts = {(cell.row, cell.column): cell.value for row in sheet.iter_rows() for cell in row
                 if cell.data_type == "s"}
        other = old.sheet_by_name(sheet.title)
        for (row, column), text in texts.items():
            problems.check(other.cell_value(row - 1, column - 1) == text, name, "lacks", text)
    named = [(entry.name, entry.scope) for entry in old.name_obj_list]
    problems.check(len(named) == len(set(named)), name, "defines a name twice:", named)
    problems.check(not any(entry.startswith("_xl") for entry, _ in named), name,
                   "has a name that Excel keeps for itself:", named)


def _open_old(base):
    with open(os.devnull, "w", encoding="utf-8") as silence:
        return xlrd.open_workbook(base.with_suffix(".xls"), logfile=silence)


def read_parameters(problems, name, path):
    """Returns the sections as dictionaries; reports lines that are out of order."""
    sections, holidays = {}, []
    header = None
    for line in path.read_text(encoding="ascii").splitlines():
        if line.startswith("["):
            header, holidays = line, []
            sections[header] = {"keys": [], "holidays": holidays}
        elif line.startswith("Holiday"):
            key, rule = line.split("=", 1)
            problems.check(key == f"Holiday{len(holidays) + 1}", name, "out of order:", line)
            holidays.append(rule.split(",", 2))
        elif line:
            key, value = line.split("=", 1)
            sections[header]["keys"].append(key)
            sections[header][key] = value
    problems.check(list(sections) == list(ORDER), name, "has the sections", list(sections))
    for header, section in sections.items():
        problems.check(section.pop("keys") == ORDER.get(header), name, header, "keys out of order")
    return sections


def _check_print_setup(problems, name, sheet):
    where = f"{name} {sheet.title}:"
    setup, properties = sheet.page_setup, sheet.sheet_properties.pageSetUpPr
    problems.check(sheet.print_area, where, "no print area")
    problems.check(int(setup.paperSize) in (1, 9), where, "neither A4 nor Letter")
    problems.check(sheet.print_options.horizontalCentered, where, "not centred")
    footer = sheet.oddFooter
    problems.check(any(part.text for part in (footer.left, footer.center, footer.right)), where,
                   "no footer")
    problems.check(sheet.page_margins.left >= 0.4 and sheet.page_margins.bottom >= 0.4, where,
                   "margins narrower than printers need")
    if properties is not None and properties.fitToPage:
        problems.check((setup.fitToWidth or 1, setup.fitToHeight or 1) == (1, 1), where,
                       "does not fit on one page")
    else:
        _check_pages_at_full_size(problems, where, sheet)


def _check_pages_at_full_size(problems, where, sheet):
    """Without scaling, every page must fit both paper sizes."""
    first_column, first_row, last_column, last_row = _print_range(sheet)
    width = sum(_column_inches(sheet, column) for column in range(first_column, last_column + 1))
    breaks = [first_row - 1, *sorted(mark.id for mark in sheet.row_breaks.brk), last_row]
    titles = [int(row.strip("$")) for row in (sheet.print_title_rows or "").split(":") if row]
    head = _row_inches(sheet, range(titles[0], titles[-1] + 1)) if titles else 0
    pages = [_row_inches(sheet, range(above + 1, below + 1)) + (head if above >= first_row else 0)
             for above, below in zip(breaks, breaks[1:])]
    margins = sheet.page_margins
    for paper, (paper_width, paper_height) in INCHES_OF_PAPER.items():
        problems.check(width * COLUMN_SLACK <= paper_width - margins.left - margins.right, where,
                       "too wide for", paper)
        problems.check(max(pages) <= paper_height - margins.top - margins.bottom, where,
                       "too high for", paper)


def _column_inches(sheet, column):
    for dimension in sheet.column_dimensions.values():
        if dimension.min <= column <= dimension.max:
            return (dimension.width * 7 + 0.5) // 1 / 96
    return 64 / 96


def _row_inches(sheet, rows):
    return sum(sheet.row_dimensions[row].height or 15 for row in rows) / 72


def _print_range(sheet):
    text = sheet.print_area[0] if isinstance(sheet.print_area, list) else sheet.print_area
    return cells.range_boundaries(text.split("!")[-1].replace("$", ""))


def _check_written_cells(problems, name, sheet, section, yearly):
    first_column, first_row, last_column, last_row = _print_range(sheet)
    merges = sheet.merged_cells.ranges
    covered = {place for merge in merges for place in merge.cells}
    covered -= {(merge.min_row, merge.min_col) for merge in merges}
    for year in YEARS:
        taken = {}
        for month in range(1, 13):
            if not yearly:
                taken = {}
            for kind, row, column in written_cells(section, year, month, yearly):
                where = f"{name} {year}-{month} {kind} {cells.get_column_letter(column)}{row}:"
                problems.check(first_row <= row <= last_row and
                               first_column <= column <= last_column, where, "not printed")
                problems.check((row, column) not in covered, where, "inside a merged cell")
                problems.check(taken.setdefault((row, column), kind) == kind, where,
                               "already holds the", taken[row, column])
                problems.check(sheet.cell(row, column).value is None, where, "not empty")


def written_cells(section, year, month, yearly):
    """Every cell that a month writes: value, row and column."""
    down = across = 0
    if yearly:
        band, place = divmod(month - 1, int(section["MonthLayout"]))
        down = band * int(section["RowIntervalOfMonth"])
        across = place * int(section["ColIntervalOfMonth"])

    def at(key, rows=0, columns=0):
        letters, row = cells.coordinate_from_string(section[key])
        return row + down + rows, cells.column_index_from_string(letters) + across + columns

    row_step, column_step = int(section["RowIntervalOfDay"]), int(section["ColIntervalOfDay"])
    if section["OutYear"] == "Y":
        year_row, year_column = at("FirstCellOfYear")
        yield "year", year_row - down, year_column - across
    if section["OutMonth"] == "Y":
        yield ("month", *at("FirstCellOfMonth"))
    if section["OutWeekday"] == "Y":
        for weekday in range(7):
            yield ("weekday", *at("FirstCellOfWeekday", 0, weekday * column_step))
    first = calendar.MONDAY if section["FirstDayOfWeek"] == "1" else calendar.SUNDAY
    policy = int(section["MultiHolidays"])
    for week, days in enumerate(calendar.Calendar(first).monthdayscalendar(year, month)):
        for weekday, day in enumerate(days):
            if day == 0:
                continue
            shift = (week * row_step, weekday * column_step)
            yield ("day", *at("FirstCellOfDay", *shift))
            for number in range(_holidays_on(section, datetime.date(year, month, day))):
                below, beside = (number, 0) if policy == 1 else (0, number if policy == 2 else 0)
                yield ("holiday", *at("FirstCellOfHoliday", shift[0] + below, shift[1] + beside))


def _holidays_on(section, date):
    if section["OutHoliday"] != "Y":
        return 0
    return sum(_falls_on(int(code), word, date) for code, word, _ in section["holidays"])


def _falls_on(code, word, date):
    if word == "Easter":
        return date == EASTER[date.year] + datetime.timedelta(code)
    if word == "":
        return (date.month, date.day) == divmod(code, 100)
    month, ordinal = divmod(code, 100)
    if date.month != month or f"{date:%A}" != word:
        return False
    if ordinal < 5:
        return (date.day - 1) // 7 + 1 == ordinal
    return (calendar.monthrange(date.year, month)[1] - date.day) // 7 == ordinal - 5


# Easter Sundays from an almanac.
EASTER = {year: datetime.date(year, month, day) for year, month, day in (
    (2024, 3, 31), (2025, 4, 20), (2026, 4, 5), (2027, 3, 28), (2028, 4, 16), (2029, 4, 1),
    (2030, 4, 21))}


def main():
    task, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    problems = reproducible(folder, sys.argv[3]) if task == "reproducible" else sane(folder)
    print("\n".join(problems[:40]) or f"{folder}: {task}")
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
