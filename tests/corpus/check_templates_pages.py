#!/usr/bin/env python3
"""Compares the printed pages of generated calendars with the pages of their templates.

usage: check_templates_pages.py --cli PROGRAM --data FOLDER [--year 2027] [--keep DIR]

Each shipped template is filled, template and calendar are made into PDF by LibreOffice, and every
month page has to equal the model page outside the cells that the parameter file says are written
(and those whose conditional format, formula or chart looks at them, the empty cells that a month's
name runs over, and a footer with the sheet's name).
"""

import configparser
import glob
import os
import pathlib
import subprocess
import sys

import openpyxl

import page_command
import pages
from opc import area_bounds, cell_name, cell_position

sys.path.append(str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))
import libreoffice  # noqa: E402

WEEKS, DAYS, MONTHS = 6, 7, 12
MOST_MASKED = 0.97  # of a page; a comparison of less than the rest would say nothing


class Calendar:
    """One section of a parameter file: which cells it has written."""

    def __init__(self, section):
        self.section = section
        self.is_made = section.get("Output", "N").upper().startswith("Y")
        self.is_yearly = "MonthLayout" in section
        self.sheet = section.get("SheetName", "")

    def _number(self, key, default=0):
        return int(self.section.get(key, default))

    def _cell(self, key):
        return cell_position(self.section[key])

    def _is_on(self, key):
        return self.section.get(key, "N").upper().startswith("Y")

    def _shifts(self):
        """How far the blocks of the twelve months lie from the first."""
        if not self.is_yearly:
            return [(0, 0)]
        across = self._number("MonthLayout")
        return [(month // across * self._number("RowIntervalOfMonth"),
                 month % across * self._number("ColIntervalOfMonth")) for month in range(MONTHS)]

    def _grid(self, origin):
        return [(origin[0] + week * self._number("RowIntervalOfDay", 1),
                 origin[1] + day * self._number("ColIntervalOfDay", 1))
                for week in range(WEEKS) for day in range(DAYS)]

    def _holidays(self):
        """The cells of holiday names: several of one day go on as far as the next day's cell."""
        first, day = self._cell("FirstCellOfHoliday"), self._cell("FirstCellOfDay")
        way = self._number("MultiHolidays")
        rows = self._number("RowIntervalOfDay", 1) - max(0, first[0] - day[0]) if way == 1 else 1
        columns = self._number("ColIntervalOfDay", 1) - max(0, first[1] - day[1]) if way == 2 else 1
        return [(row + down, column + right) for row, column in self._grid(first)
                for down in range(max(1, rows)) for right in range(max(1, columns))]

    def months(self):
        """The cells of the months' names."""
        row, column = self._cell("FirstCellOfMonth")
        on = self._is_on("OutMonth")
        return {(row + down, column + right) for down, right in self._shifts()} if on else set()

    def written(self):
        block = set(self._grid(self._cell("FirstCellOfDay")))
        if self._is_on("OutHoliday"):
            block |= set(self._holidays())
        if self._is_on("OutWeekday"):
            row, column = self._cell("FirstCellOfWeekday")
            step = self._number("ColIntervalOfDay", 1)
            block |= {(row, column + day * step) for day in range(DAYS)}
        cells = {(row + down, column + right) for row, column in block
                 for down, right in self._shifts()} | self.months()
        if self._is_on("OutYear"):
            cells.add(self._cell("FirstCellOfYear"))
        return cells


def overrun_cells(calendar, sheet, written):
    """Empty cells beside a month's name, which is wider than its own cell."""
    cells = set()
    for row, column in calendar.months():
        for beside in range(column + 1, column + DAYS):
            if (row, beside) in written or sheet.cell(row, beside).value is not None:
                break
            cells.add((row, beside))
    return cells


def dependent_cells(sheet):
    """Cells whose look depends on others: with a conditional format, a formula or a chart."""
    cells = set()
    for ranges in sheet.conditional_formatting:
        for area in str(ranges.sqref).split():
            top, left, bottom, right = area_bounds(area)
            cells |= {(row, column) for row in range(top, bottom + 1)
                      for column in range(left, right + 1)}
    for chart in sheet._charts:
        first, last = chart.anchor._from, chart.anchor.to
        cells |= {(row + 1, column + 1) for row in range(first.row, last.row + 1)
                  for column in range(first.col, last.col + 1)}
    return cells | {(cell.row, cell.column) for row in sheet.iter_rows() for cell in row
                    if cell.data_type == "f"}


class Template:
    """A shipped template, the calendar made from it, and what is rendered of both. Where the cells
    stand on a page is found out with the .xlsx, whose design the .xls shares."""

    def __init__(self, path, options, work):
        self.path, self.work = path, work
        self.name = os.path.basename(path)
        self.calendar = generate(options, path, work)
        reader = configparser.ConfigParser(interpolation=None, strict=False)
        reader.optionxform = str
        stem = os.path.splitext(path)[0]
        reader.read(f"{stem}.ini", encoding="utf-8")
        self.calendars = {calendar.sheet: calendar for calendar in
                          (Calendar(reader[section]) for section in
                           ("Monthly Calendar", "Yearly Calendar") if section in reader)
                          if calendar.is_made}
        self.design = f"{stem}.xlsx"
        self.workbook = openpyxl.load_workbook(self.design)
        self.marked = {}

    def pictures(self, office):
        """Renders the template, the calendar, and the marked workbook of each sheet; returns the
        PDF of each by its path."""
        for sheet in self.workbook.worksheets:
            calendar = self.calendars.get(sheet.title)
            written = calendar.written() if calendar else set()
            cells = written | dependent_cells(sheet) | \
                overrun_cells(calendar, sheet, written) if calendar else set()
            self.marked[sheet.title] = os.path.join(self.work, f"{self.name}-{sheet.title}.xlsx")
            pages.write_marked(self.design, sheet.title, cells or {(1, 1)},
                               self.marked[sheet.title])
        pdfs = {path: self._picture(office, path, is_full=True)
                for path in (self.path, self.calendar)}
        return pdfs | {path: self._picture(office, path) for path in self.marked.values()}

    def _picture(self, office, path, is_full=False):
        pdf = pathlib.Path(self.work, os.path.basename(path) + ".pdf")
        document = libreoffice.load(office, pathlib.Path(path))
        for sheet in document.Sheets if is_full else ():
            pages.fill_print_area(sheet, self._corner(sheet.Name))
        libreoffice.store(document, pdf, "calc_pdf_Export")
        document.close(True)
        return str(pdf)

    def _corner(self, name):
        """The last cell of a sheet's print area; a month sheet has its model's."""
        model = self.model_of(name)
        return cell_name(area_bounds(model.print_area[0].replace("$", ""))[2:])

    def model_of(self, name):
        """The template's sheet of which a calendar's sheet is a copy."""
        if name in self.workbook.sheetnames:
            return self.workbook[name]
        yearly = name.isdecimal()
        return next(self.workbook[calendar.sheet] for calendar in self.calendars.values()
                    if calendar.is_yearly == yearly)

    def compare(self, pdfs, keep):
        """Yields the failures of each page, and prints what was compared."""
        model = pages.render(pdfs[self.path])
        made = pages.render(pdfs[self.calendar])
        at = made_at = 0
        for sheet in self.workbook.worksheets:
            masks = [pages.mask_of(page) for page in pages.render(pdfs[self.marked[sheet.title]])]
            calendar = self.calendars.get(sheet.title)
            monthly = calendar is not None and not calendar.is_yearly
            for copy in range(MONTHS if monthly else 1):
                for number, mask in enumerate(masks):
                    where = f"{self.name}, {sheet.title} {copy + 1}, page {number + 1}"
                    if at + number >= len(model) or made_at >= len(made):
                        yield f"{where}: there is no such page"
                        return
                    mask = pages.mask_margins(mask.copy(), sheet) if calendar else mask & False
                    yield from self._page(where, model[at + number], made[made_at], mask,
                                          calendar is not None, keep)
                    made_at += 1
            at += len(masks)
        if (at, made_at) != (len(model), len(made)):
            yield f"{self.name}: {len(model)} and {len(made)} pages, should be {at} and {made_at}"

    def _page(self, where, model, page, mask, is_filled, keep):
        differing = pages.differing(model, page, mask)
        free = ~mask & (model.min(axis=2) < 230)
        print(f"{where}: {mask.mean():.0%} of the page may change, {int(free.sum())} printed "
              f"pixels outside must not, {len(differing)} did")
        if keep:
            pages.save_picture(pages.marked_up(page, mask, differing),
                               os.path.join(keep, f"{where}.png"))
        if differing:
            yield f"{where}: {len(differing)} pixels differ outside the written cells, the " \
                  f"first at {differing[0][1]}, {differing[0][0]}"
        if mask.mean() > MOST_MASKED:
            yield f"{where}: nothing is left to compare"
        if is_filled and not pages.differing(model, page, mask & False):
            yield f"{where}: nothing was written"


def generate(options, template, folder):
    """Has the program fill a template; returns the path of the calendar."""
    done = subprocess.run(
        [options.cli, "generate", template, str(options.year), "--output-folder", folder,
         "--settings", os.path.join(options.data, "orrery.ini")],
        stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False, text=True)
    path = os.path.join(folder, f"{options.year}{os.path.basename(template)}")
    if done.returncode or not os.path.exists(path):
        raise RuntimeError(f"{template}: generate ended with {done.returncode}: "
                           f"{done.stderr.strip()}")
    return path


def check(options, work):
    paths = sorted(glob.glob(os.path.join(options.data, "template", "*.xls*")))
    if len(paths) < 10:
        yield f"there are {len(paths)} templates, five are shipped in two formats each"
        return
    with libreoffice.desktop(work) as office:
        for path in paths:
            template = Template(path, options, work)
            yield from template.compare(template.pictures(office), options.keep)


if __name__ == "__main__":
    sys.exit(page_command.run(check, __doc__.splitlines()[0], "orrery-pages-"))
