"""The comparison of two engines' calendars finds every difference, and allows what it says."""

import contextlib
import io
import os
import pathlib
import tempfile
import types
import unittest

import openpyxl
import xlwt

from check_two_engines import COUNT, Case, kinds_of_difference, report, required_counts
from engine_books import Sheet
from engine_differences import ALLOWED, READERS, Found, Made, compare, compare_results

ROOT = pathlib.Path(__file__).resolve().parents[2]

(LOGICAL, ERROR, ROUNDED, SPELLED, TABLE, NEIGHBOUR, GIVEN_UP,
 PIVOT) = (kind.text for kind in ALLOWED)
NULL, NOT_AVAILABLE = ("error", 0), ("error", 42)

# What a cell of February, a copy of January, holds through the built-in engine and through
# LibreOffice; a text is a formula. These are kinds of difference in an .xlsx and in an .xls...
ALLOWS = (
    (ROUNDED, None, ("number", 2 / 3), ("number", 0.666666666666667)),
    (SPELLED, SPELLED, '=IF(TRUE,Tax(1),"x")', '=IF(TRUE(),tax(1),"x")'),
    (SPELLED, SPELLED, "=SUM(Costs[#All])", "=SUM(Costs[#all])"),
    (TABLE, None, "=SUM(Costs_2[Price])", "=SUM(Costs[Price])"),
    (TABLE, None, "=SUM(Costs_2[12])", "=SUM(Costs[15])"),
    (NEIGHBOUR, NEIGHBOUR, "=UPPER('My Data'!A1:A9)", "=UPPER(Other!A1:A9)"),
    (None, GIVEN_UP, "=COUNT(2,)", "=NA()"), (None, GIVEN_UP, "=IF(D7,,3)", "=NA()"),
    (None, GIVEN_UP, "=DAY()", "=NA()"))
# ... and these are failures in both.
FAILS = (
    (("number", 1), ("number", 2)), (("number", 1), ("text", "1")), (("text", "a"), ("text", "A")),
    (("text", "a"), None), (None, ("number", 1)), (("number", 1), "=1"), ("=A1", ("number", 1)),
    (("number", 0), None), (NULL, NOT_AVAILABLE), ("=A1", "=B1"), ('="a"', '="A"'),
    ("=February!A1+Data!A1", "=January!A1+Data!A1"),
    (("number", 2 / 3), ("number", 0.66666666666667)),
    (("number", 0.666666666666667), ("number", 2 / 3)),
    ('=IF(TRUE,1,"x")', '=IF(TRUE(),1,"X")'), ("=Tax", "=tax"), ("=TRUE", "=FALSE()"),
    ("=Tax(1)", "=Tax(2)"), ("=SUM(Costs[Price])", "=SUM(Costs[price])"),
    ("=SUM(Costs_2[Price])", "=SUM(Costs[Tax])"), ("=SUM(Other_2[Price])", "=SUM(Costs[Price])"),
    ("=SUM(Costs[Price])", "=SUM(Costs_2[Price])"), ("=SUM(Costs[12])", "=SUM(Costs[15])"),
    ("=SUM(Costs_2[Price])", "=MAX(Costs[Price])"), ("=UPPER(Data!A1)", "=UPPER(Other!A1)"),
    ("=UPPER(Data!A1:A9)", "=UPPER(Other!A1:A8)"), ("=UPPER(Data!A1:A9)", "=LOWER(Other!A1:A9)"),
    ("=UPPER(February!A1:A9)", "=UPPER(Other!A1:A9)"), ("=COUNT(2)", "=NA()"),
    ('=LEN(",,")', "=NA()"), ("=PI()+A1", "=NA()"), ("=COUNT(2,)", "=COUNT(2)"),
    (("number", 2), "=NA()"))


def sheet(cells, results=None, **facts):
    return Sheet("February", cells, results if results is not None else cells, **facts)


def found(suffix, ours, theirs, copies=("February",)):
    """(number of failures, kinds that were allowed)."""
    differences = compare(Made(suffix, "January", list(copies)), [ours], [theirs])
    return (len(differences.failures),
            [kind.text for kind in ALLOWED if differences.counted[kind.text]])


def one_cell(suffix, ours, theirs, copies=("February",), **results):
    cells = [{(1, 1): ("formula", cell) if isinstance(cell, str) else cell} if cell else {}
             for cell in (ours, theirs)]
    return found(suffix, sheet(cells[0]), sheet(cells[1], **results), copies)


def verdict(kind):
    return (0, [kind]) if kind else (1, [])


class Comparison(unittest.TestCase):
    def test_the_same_workbook(self):
        cells = {(1, 1): ("text", "a"), (2, 1): ("number", 1), (3, 1): ("formula", "=A2")}
        same = compare(Made(".xlsx"), [sheet(cells)], [sheet(dict(cells))])
        self.assertEqual((same.failures, same.counted), ([], {"cells": 3}))

    def test_cells(self):
        for in_xlsx, in_xls, ours, theirs in (*ALLOWS, *((None, None, *pair) for pair in FAILS)):
            with self.subTest(ours=ours, theirs=theirs):
                self.assertEqual(one_cell(".xlsx", ours, theirs), verdict(in_xlsx))
                self.assertEqual(one_cell(".xls", ours, theirs), verdict(in_xls))
                if in_xlsx in (TABLE, NEIGHBOUR):
                    self.assertEqual(one_cell(".xlsx", ours, theirs, ()), (1, []), "is no copy")

    def test_logical_values_and_errors_that_become_formulas(self):
        copy = ("February",)
        for kind, suffix, copies, ours, theirs, result in (
                (LOGICAL, ".xlsx", copy, ("logical", True), "=TRUE()", ("logical", True)),
                (LOGICAL, ".xls", copy, ("logical", True), None, ("logical", 1)),
                (LOGICAL, ".xlsx", copy, ("logical", False), "=FALSE()", ("number", 0)),
                (None, ".xlsx", copy, ("logical", True), "=TRUE()", ("number", 0)),
                (None, ".xlsx", copy, ("logical", True), "=A2", ("logical", True)),
                (None, ".xlsx", copy, ("logical", True), "=TRUE()", ("text", "TRUE")),
                (ERROR, ".xls", (), NULL, None, NULL),
                (ERROR, ".xls", copy, NULL, None, NOT_AVAILABLE),
                (None, ".xls", (), NULL, None, NOT_AVAILABLE),
                (None, ".xls", copy, NULL, None, NULL),
                (None, ".xls", copy, NULL, None, ("number", 0)),
                (None, ".xlsx", copy, NULL, None, NOT_AVAILABLE)):
            with self.subTest(kind=kind, suffix=suffix, copies=copies, result=result):
                self.assertEqual(one_cell(suffix, ours, ("formula", theirs), copies,
                                          results={(1, 1): result}), verdict(kind))

    def test_pivot_tables(self):
        cells, others = {(2, 2): ("number", 1)}, {(2, 2): ("text", "Total")}
        for kind, suffix, area in ((PIVOT, ".xlsx", (2, 2, 4, 4)), (None, ".xlsx", (3, 2, 4, 4)),
                                   (None, ".xls", (2, 2, 4, 4))):
            self.assertEqual(found(suffix, sheet(cells, pivot_areas=[area]), sheet(others)),
                             verdict(kind), (suffix, area))


class Results(unittest.TestCase):
    CELLS = {(1, 1): ("formula", "=A4"), (2, 1): ("formula", "=TODAY()"),
             (3, 1): ("formula", "=A2+1"), (4, 1): ("number", 5)}

    def compared(self, cells, others, values, other_values, changed=()):
        """(number of failures, counts) where the cells have the values, by row."""
        sheets = [[sheet(these, {(row, 1): value for row, value in results.items()})]
                  for these, results in ((cells, values), (others, other_values))]
        written = {("February", where) for where, cell in cells.items() if cell[0] == "formula"}
        made = compare_results(Made(".xls", "January", ["February"]), *sheets, written, changed)
        return len(made.failures), made.counted

    def values(self, number):
        return {row: ("number", number) for row in (1, 2, 3, 4)}

    def test_results_are_compared_but_those_that_change_by_themselves(self):
        self.assertEqual(self.compared(self.CELLS, self.CELLS, self.values(1), self.values(1)),
                         (0, {"results of formulas": 1}))
        for other in (("number", 2), ("error", "#N/A"), None):
            failures, _ = self.compared(self.CELLS, self.CELLS, self.values(1), {1: other})
            self.assertEqual(failures, 1)

    def test_what_reads_a_changed_cell(self):
        cells = {(1, 1): ("formula", "=A2"), (2, 1): ("formula", "=SUM(A4:A5)"),
                 (3, 1): ("formula", "=A6")}
        for changed, failures in ((5, 1), (6, 2), (7, 3)):  # A1, A2; A3; none of them
            self.assertEqual(self.compared(cells, cells, self.values(1), self.values(2),
                                           {("February", (changed, 1))}),
                             (failures, {READERS: 3 - failures} if failures < 3 else {}))

    def test_formulas_of_an_xls_are_seen_here_alone(self):
        others = {**self.CELLS, (1, 1): ("formula", "=A5")}
        self.assertEqual(self.compared(self.CELLS, others, self.values(1), self.values(1))[0], 1)
        cells, others = ({(1, 1): ("formula", text)} for text in ("=COUNT(2,)", "=NA()"))
        self.assertEqual(self.compared(cells, others, {1: ("number", 2)}, {1: NOT_AVAILABLE}),
                         (0, {GIVEN_UP: 1}))


class Documentation(unittest.TestCase):
    def test_what_is_allowed_is_explained(self):
        text = (ROOT / "docs/engines.md").read_text(encoding="utf-8")
        for sentence in kinds_of_difference():
            self.assertTrue(f"| {sentence} |" in text, sentence)


# What may be wrong with the year that LibreOffice made: the names of its months, and its cells by
# month and row.
DAMAGES = {
    "sheet missing": lambda months, cells: months.pop(),
    "sheets exchanged": lambda months, cells: months.insert(3, months.pop(4)),
    "sheet renamed": lambda months, cells: months.__setitem__(3, "Another"),
    "cell changed": lambda months, cells: cells.update({("Month 7", 2): 21}),
    "cell missing": lambda months, cells: cells.pop(("Month 12", 3)),
    "number as text": lambda months, cells: cells.update({("Month 1", 1): "10"}),
    "cell more": lambda months, cells: cells.update({("Month 2", 9): 1}),
    "no cells": lambda months, cells: cells.clear(),  # through the built-in engine neither
}


def save_year(path, damage=None):
    """A year with three cells in each month; without a damage, as the built-in engine made it."""
    months = [f"Month {month}" for month in range(1, 13)]
    cells = {(name, row): row * 10 for name in months for row in (1, 2, 3)}
    if damage:
        damage(months, cells)
    is_xls = path.endswith(".xls")
    book = xlwt.Workbook() if is_xls else openpyxl.Workbook(write_only=True)
    for month in months:
        page = (book.add_sheet if is_xls else book.create_sheet)(month)
        for row in range(1, 10):
            value = cells.get((month, row))
            if not is_xls:
                page.append([value])
            elif value is not None:
                page.write(row, 0, value)
    book.save(path)


class MadeCase(Case):
    """A template whose calendars are there; `damage` is what LibreOffice did."""

    damage = None

    def generate(self, engine):
        if engine == "builtin" and self.damage != "no cells":
            save_year(self.made(engine))
        elif self.damage != "no calendar":
            save_year(self.made(engine), DAMAGES.get(self.damage))
        return 0, "words" if (self.damage, engine) == ("words", "libreoffice") else ""


class BrokenCalendars(unittest.TestCase):
    """A whole comparison, of workbooks as they lie in files."""

    def test_each_damage_is_found(self):
        with tempfile.TemporaryDirectory(prefix="orrery-engines-") as folder:
            for suffix in (".xlsx", ".xls"):
                template = os.path.join(folder, "Model" + suffix)
                save_year(template, lambda months, cells: months.__setitem__(slice(12), ["Model"]))
                for damage in ("", *DAMAGES, "words", "no calendar"):
                    case = MadeCase(types.SimpleNamespace(work=tempfile.mkdtemp(dir=folder)),
                                    template)
                    case.damage = damage
                    case.run()
                    self.assertEqual(len(case.failures), bool(damage), (suffix, damage))
                    self.assertNotIn("check itself", "".join(case.failures))
                    if not damage:
                        self.assertEqual(case.counted, {"templates": 1, "sheets": 12, "cells": 36})


class Report(unittest.TestCase):
    LEAST = {"templates": 1, "cells": 100}

    def is_well(self, least=None, **case):
        counted = {"templates": 1, "cells": 100, **dict.fromkeys(kinds_of_difference(), 1)}
        counted.update(case.pop("counted", {}))
        cases = [Case(None, "a.xlsx", counted=counted, **case)]
        with contextlib.redirect_stdout(io.StringIO()):
            return report(cases, self.LEAST if least is None else least)

    def test_a_failure(self):
        self.assertTrue(self.is_well())
        self.assertFalse(self.is_well(failures=["something"]))

    def test_less_than_there_is(self):
        self.assertFalse(self.is_well(counted={"cells": 99}))
        self.assertFalse(self.is_well(counted={"templates": 0}))
        with contextlib.redirect_stdout(io.StringIO()):
            self.assertFalse(report([], {}))

    def test_a_difference_that_is_allowed_and_never_met(self):
        usual = types.SimpleNamespace(only="", count=COUNT)
        fewer = types.SimpleNamespace(only="", count=1)
        for kind in kinds_of_difference():
            self.assertEqual(required_counts(usual)[kind], 1)
            self.assertNotIn(kind, required_counts(fewer))
            self.assertFalse(self.is_well(least={kind: 1}, counted={kind: 0}), kind)

    def test_templates_that_come_with_the_program_have_no_difference(self):
        for is_shipped, failures in ((True, 1), (False, 0)):
            case = Case(None, "a.xlsx", is_shipped=is_shipped)
            found = Found()
            found.counted[SPELLED] = 1
            case.add(found)
            self.assertEqual(len(case.failures), failures)


if __name__ == "__main__":
    unittest.main()
