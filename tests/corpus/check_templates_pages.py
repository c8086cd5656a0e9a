#!/usr/bin/env python3
"""Compares the printed pages of generated calendars with the pages of their templates.

usage: check_templates_pages.py --cli PROGRAM --data FOLDER [--year 2027] [--keep DIR]

Each shipped template is filled, template and calendar are made into PDF by LibreOffice, and every
month page has to equal the model page outside the cells that the parameter file says are written
(and those whose conditional format, formula or chart looks at them, the empty cells that a month's
name runs over, and a footer with the sheet's name).
"""

import glob
import os
import pathlib
import shutil
import subprocess
import sys

import openpyxl

import page_command
import pages
from opc import area_bounds, cell_name

_ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path += [str(_ROOT / "scripts"), str(_ROOT / "tests" / "templates")]
import libreoffice  # noqa: E402
from check_templates import Problems, read_parameters, written_cells  # noqa: E402

MONTHS = 12
MOST_MASKED = 0.97  # of a page; a comparison of less than the rest would say nothing


def overrun_cells(sheet, written):
    """Empty cells beside a month's name, which is wider than its own cell."""
    cells = set()
    for row, column in [where for where, kind in written.items() if kind == "month"]:
        for beside in range(column + 1, column + 7):
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
        stem = os.path.splitext(path)[0]
        self.written, self.yearly = {}, set()  # of a model the cells; the year's model
        for header, section in read_parameters(Problems(), self.name,
                                               pathlib.Path(f"{stem}.ini")).items():
            if section["Output"] == "Y":
                yearly, model = header.startswith("[Yearly"), section["SheetName"]
                self.yearly |= {model} if yearly else set()
                self.written[model] = {
                    (row, column): kind for month in range(1, MONTHS + 1)
                    for kind, row, column in written_cells(section, options.year, month, yearly)}
        self.design = f"{stem}.xlsx"
        self.workbook = openpyxl.load_workbook(self.design)
        self.marked = {}

    def pictures(self, office):
        """Renders the template, the calendar, and the marked workbook of each sheet; returns the
        PDF of each by its path."""
        for sheet in self.workbook.worksheets:
            written = self.written.get(sheet.title)
            cells = {(1, 1)} if written is None else \
                {*written} | dependent_cells(sheet) | overrun_cells(sheet, written)
            self.marked[sheet.title] = os.path.join(self.work, f"{self.name}-{sheet.title}.xlsx")
            pages.write_marked(self.design, sheet.title, cells, self.marked[sheet.title])
        pdfs = {path: self._picture(office, path, is_full=True)
                for path in (self.path, self.calendar)}
        return pdfs | {path: self._picture(office, path) for path in self.marked.values()}

    def _picture(self, office, path, is_full=False):
        copy = pathlib.Path(self.work, "copy-" + os.path.basename(path))
        shutil.copy(path, copy)  # LibreOffice locks what it opens; others use the template, too
        pdf = copy.with_name(os.path.basename(path) + ".pdf")
        document = libreoffice.load(office, copy)
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
        return next(self.workbook[model] for model in self.written
                    if (model in self.yearly) == yearly)

    def compare(self, pdfs, keep):
        """Yields the failures of each page, and prints what was compared."""
        model = pages.render(pdfs[self.path])
        made = pages.render(pdfs[self.calendar])
        at = made_at = 0
        for sheet in self.workbook.worksheets:
            masks = [pages.mask_of(page) for page in pages.render(pdfs[self.marked[sheet.title]])]
            is_filled = sheet.title in self.written
            for copy in range(MONTHS if is_filled and sheet.title not in self.yearly else 1):
                for number, mask in enumerate(masks):
                    where = f"{self.name}, {sheet.title} {copy + 1}, page {number + 1}"
                    if at + number >= len(model) or made_at >= len(made):
                        yield f"{where}: there is no such page"
                        return
                    mask = pages.mask_margins(mask.copy(), sheet) if is_filled else mask & False
                    yield from self._page(where, model[at + number], made[made_at], mask,
                                          is_filled, keep)
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
