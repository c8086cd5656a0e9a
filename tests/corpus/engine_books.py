"""What the workbooks of two engines hold: the sheets in their order, and every cell of each.

openpyxl reads the .xlsx, xlrd the .xls. What neither of them shows, our own readers tell: sheets
without cells, the formula cells of an .xls, and the areas of an .xlsx's pivot tables.
"""

import os
import warnings
from dataclasses import dataclass, field

import openpyxl
import xlrd
from openpyxl.worksheet._reader import WorkSheetParser

import plan
import xls_book
from opc import Package, area_bounds, local

_XLSX_KINDS = {"n": "number", "s": "text", "b": "logical", "e": "error", "f": "formula"}
_XLS_KINDS = {1: "text", 2: "number", 3: "number", 4: "logical", 5: "error"}


@dataclass
class Sheet:
    """`cells` and `results` map the positions of cells that are not empty to (kind, value). In
    `cells` a formula's value is its text, or None where the reader does not show it; `results` has
    what is stored of its result."""

    name: str
    cells: dict = field(default_factory=dict)
    results: dict = field(default_factory=dict)
    pivot_areas: list = field(default_factory=list)


def read(path):
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")  # about features that openpyxl drops when it saves
        return _read_xls(path) if path.endswith(".xls") else _read_xlsx(path)


def usual_model(path):
    """The name of the first worksheet; None where the reader shows no cells of such a sheet, or
    the structure is locked, so that it cannot be copied."""
    if path.endswith(".xls"):
        book = xls_book.Book(path)
        first = book.first_worksheet()
        return None if first is None or book.structure_locked else book.sheets[first].name
    package = Package(path)
    model = plan.first_worksheet(package)
    if model is None or plan.structure_is_locked(package):
        return None
    return model.name if model.name in [sheet.name for sheet in read(path)] else None


def _read_xlsx(path):
    sheets = {}
    for results in (False, True):
        # Read-only: else it clears the cells under merged ones.
        book = openpyxl.load_workbook(path, read_only=True, data_only=results)
        for sheet in book._sheets:
            known = sheets.setdefault(sheet.title, Sheet(sheet.title))
            if hasattr(sheet, "_get_source"):  # not a chart sheet
                setattr(known, "results" if results else "cells", _xlsx_cells(sheet, results))
        book.close()
    package = Package(path)
    for part in package.sheets:
        if part.name in sheets and part.kind == "worksheet":
            sheets[part.name].pivot_areas = list(pivot_areas(package, part.part))
    return list(sheets.values())


def _xlsx_cells(sheet, results):
    with sheet._get_source() as source:  # the parser itself, which makes no dates of numbers
        parser = WorkSheetParser(source, sheet._shared_strings, data_only=results)
        return {(cell["row"], cell["column"]): (_XLSX_KINDS[cell["data_type"]], cell["value"])
                for _, row in parser.parse() for cell in row if cell["value"] not in (None, "")}


def pivot_areas(package, part):
    """The areas of a sheet's pivot tables, and of their filters, which stand above them."""
    for rel in package.rels(part).values():
        if rel.kind != "pivotTable":
            continue
        place = next(child for child in package.tree(rel.target) if local(child.tag) == "location")
        top, left, bottom, right = area_bounds(place.get("ref"))
        yield top, left, bottom, right
        filters = int(place.get("rowPageCount", "0"))
        if filters:
            yield top - 1 - filters, left, top - 2, left + 1


def _read_xls(path):
    with open(os.devnull, "w", encoding="utf-8") as log:
        seen = xlrd.open_workbook(path, formatting_info=True, ragged_rows=True, logfile=log)
    shown = {sheet.name: sheet for sheet in seen.sheets()}
    return [_xls_sheet(sheet, shown.get(sheet.name)) for sheet in xls_book.Book(path).sheets]


def _xls_sheet(sheet, shown):
    read = Sheet(sheet.name)
    if shown is not None and sheet.is_worksheet:
        read.results = _xls_values(shown)
        read.cells = {**read.results, **{where: ("formula", None) for where in sheet.formulas}}
    return read


def _xls_values(sheet):
    return {(row + 1, column + 1): (_XLS_KINDS[kind], value)
            for row in range(sheet.nrows)
            for column, (kind, value) in enumerate(zip(sheet.row_types(row),
                                                       sheet.row_values(row)))
            if kind in _XLS_KINDS and value != ""}
