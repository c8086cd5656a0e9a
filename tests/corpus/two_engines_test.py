"""The comparison of two engines' calendars finds every difference, and allows what it says."""

import contextlib
import io
import os
import pathlib
import tempfile
import types
import unittest
from xml.etree import ElementTree

import openpyxl
import xlwt

import engine_books
from check_two_engines import Case, choose, kinds_of_difference, report
from engine_books import Sheet
from engine_differences import ALLOWED, READERS, Found, Made, compare, compare_results
from opc import Rel

ROOT = pathlib.Path(__file__).resolve().parents[2]

(LOGICAL, ERROR, ROUNDED, SPELLED, TABLE, NEIGHBOUR, GIVEN_UP,
 PIVOT) = (kind.text for kind in ALLOWED)
NULL, NOT_AVAILABLE = ("error", 0), ("error", 42)


def sheet(cells, results=None, **facts):
    return Sheet("February", cells, results if results is not None else cells, **facts)


class Comparison(unittest.TestCase):
    """Of a cell of February, which is a copy of January."""

    suffix = ".xlsx"
    copies = ("February",)

    def found(self, ours, theirs):
        """(number of failures, kinds that were allowed)."""
        made = Made(self.suffix, "January", list(self.copies))
        found = compare(made, [ours], [theirs])
        return len(found.failures), [kind.text for kind in ALLOWED if found.counted[kind.text]]

    def one_cell(self, ours, theirs, **results):
        return self.found(sheet({(1, 1): ours} if ours else {}),
                          sheet({(1, 1): theirs} if theirs else {}, **results))

    def judge(self, allowed, *cells):
        """For each of the cells, (ours, theirs): it is of the kind that is allowed, or a failure
        where there is none."""
        for ours, theirs in cells:
            if isinstance(ours, str):
                ours, theirs = ("formula", ours), ("formula", theirs)
            self.assertEqual(self.one_cell(ours, theirs), (0, [allowed]) if allowed else (1, []),
                             (ours, theirs))

    def test_the_same_workbook(self):
        cells = {(1, 1): ("text", "a"), (2, 1): ("number", 1), (3, 1): ("formula", "=A2")}
        found = compare(Made(".xlsx"), [sheet(cells)], [sheet(dict(cells))])
        self.assertEqual((found.failures, found.counted), ([], {"cells": 3}))

    def test_names_and_order_of_sheets(self):
        one, other = Sheet("A"), Sheet("B")
        self.assertEqual(len(compare(Made(".xlsx"), [one, other], [other, one]).failures), 1)
        self.assertEqual(len(compare(Made(".xlsx"), [one, other], [one]).failures), 1)

    def test_every_difference_of_a_cell(self):
        for self.suffix in (".xlsx", ".xls"):
            self.judge(None, (("number", 1), ("number", 2)), (("number", 1), ("text", "1")),
                       (("text", "a"), ("text", "A")), (("text", "a"), None),
                       (None, ("number", 1)), (("number", 1), ("formula", "=1")),
                       (("formula", "=A1"), ("number", 1)), (("number", 0), None),
                       (NULL, NOT_AVAILABLE), ("=A1", "=B1"), ('="a"', '="A"'))

    def test_logical_values(self):
        for ours, formula, result, allowed in (
                (True, "=TRUE()", ("logical", True), True), (True, None, ("logical", 1), True),
                (False, "=FALSE()", ("number", 0), True),
                (True, "=TRUE()", ("number", 0), False), (True, "=A2", ("logical", True), False),
                (True, "=TRUE()", ("text", "TRUE"), False)):
            self.assertEqual(self.one_cell(("logical", ours), ("formula", formula),
                                           results={(1, 1): result}),
                             (0, [LOGICAL]) if allowed else (1, []), (ours, formula, result))

    def test_errors(self):
        for suffix, copies, result, allowed in (
                (".xls", (), NULL, True), (".xls", (), NOT_AVAILABLE, False),
                (".xls", ("February",), NOT_AVAILABLE, True),
                (".xls", ("February",), NULL, False), (".xls", ("February",), ("error", 7), False),
                (".xls", ("February",), ("number", 0), False),
                (".xlsx", ("February",), NOT_AVAILABLE, False)):
            self.suffix, self.copies = suffix, copies
            self.assertEqual(self.one_cell(NULL, ("formula", None), results={(1, 1): result}),
                             (0, [ERROR]) if allowed else (1, []), (suffix, copies, result))

    def test_digits(self):
        cells = ("number", 2 / 3), ("number", 0.666666666666667)
        self.judge(ROUNDED, cells)
        self.judge(None, (("number", 2 / 3), ("number", 0.66666666666667)),
                   (("number", 0.666666666666667), ("number", 2 / 3)))
        self.suffix = ".xls"
        self.judge(None, cells)

    def test_spelling(self):
        self.judge(SPELLED, ('=IF(TRUE,Tax(1),"x")', '=IF(TRUE(),tax(1),"x")'),
                   ("=SUM(Costs[#All])", "=SUM(Costs[#all])"))
        self.judge(None, ('=IF(TRUE,1,"x")', '=IF(TRUE(),1,"X")'), ("=Tax", "=tax"),
                   ("=TRUE", "=FALSE()"), ("=Tax(1)", "=Tax(2)"),
                   ("=SUM(Costs[Price])", "=SUM(Costs[price])"))

    def test_tables_of_copies(self):
        cells = "=SUM(Costs_2[Price])", "=SUM(Costs[Price])"
        self.judge(TABLE, cells, ("=SUM(Costs_2[12])", "=SUM(Costs[15])"))
        self.judge(None, ("=SUM(Costs_2[Price])", "=SUM(Costs[Tax])"),
                   ("=SUM(Other_2[Price])", "=SUM(Costs[Price])"),
                   ("=SUM(Costs[Price])", "=SUM(Costs_2[Price])"),
                   ("=SUM(Costs[12])", "=SUM(Costs[15])"),
                   ("=SUM(Costs_2[Price])", "=MAX(Costs[Price])"))
        self.copies = ()
        self.judge(None, cells)

    def test_formulas_that_name_their_sheet(self):
        for self.suffix in (".xls", ".xlsx"):
            self.judge(None, ("=February!A1+Data!A1", "=January!A1+Data!A1"),
                       ("=SUM(February!A1:A9)", "=SUM(January!A1:A9)"))

    def test_ranges_of_another_sheet(self):
        cells = "=UPPER('My Data'!A1:A9)", "=UPPER(Other!A1:A9)"
        self.judge(NEIGHBOUR, cells)
        self.judge(None, ("=UPPER(Data!A1)", "=UPPER(Other!A1)"),
                   ("=UPPER(Data!A1:A9)", "=UPPER(Other!A1:A8)"),
                   ("=UPPER(Data!A1:A9)", "=LOWER(Other!A1:A9)"),
                   ("=UPPER(February!A1:A9)", "=UPPER(Other!A1:A9)"))
        self.copies = ()
        self.judge(None, cells)

    def test_formulas_that_are_given_up(self):
        self.suffix = ".xls"
        self.judge(GIVEN_UP, ("=COUNT(2,)", "=NA()"), ("=IF(D7,,3)", "=NA()"), ("=DAY()", "=NA()"))
        self.judge(None, ("=COUNT(2)", "=NA()"), ('=LEN(",,")', "=NA()"), ("=PI()+A1", "=NA()"),
                   ("=COUNT(2,)", "=COUNT(2)"), (("number", 2), ("formula", "=NA()")))
        self.suffix = ".xlsx"
        self.judge(None, ("=COUNT(2,)", "=NA()"))

    def test_pivot_tables(self):
        cells, others = {(2, 2): ("number", 1)}, {(2, 2): ("text", "Total")}
        areas = {"pivot_areas": [(2, 2, 4, 4)]}
        self.assertEqual(self.found(sheet(cells, **areas), sheet(others)), (0, [PIVOT]))
        self.assertEqual(self.found(sheet(cells), sheet(others, **areas)), (0, [PIVOT]))
        self.assertEqual(self.found(sheet(cells, pivot_areas=[(3, 2, 4, 4)]), sheet(others)),
                         (1, []))
        self.suffix = ".xls"
        self.assertEqual(self.found(sheet(cells, **areas), sheet(others)), (1, []))


class Results(unittest.TestCase):
    CELLS = {(1, 1): ("formula", "=A4"), (2, 1): ("formula", "=TODAY()"),
             (3, 1): ("formula", "=A2+1"), (4, 1): ("number", 5)}

    def compared(self, cells, others, values, other_values, changed=(), suffix=".xls"):
        """(number of failures, counts) where the cells have the values, by row."""
        sheets = [[sheet(these, {(row, 1): value for row, value in results.items()})]
                  for these, results in ((cells, values), (others, other_values))]
        written = {("February", where) for where, cell in cells.items() if cell[0] == "formula"}
        found = compare_results(Made(suffix, "January", ["February"]), *sheets, written, changed)
        return len(found.failures), found.counted

    def values(self, number):
        return {row: ("number", number) for row in (1, 2, 3, 4)}

    def test_results_are_compared_but_those_that_change_by_themselves(self):
        self.assertEqual(self.compared(self.CELLS, self.CELLS, self.values(1), self.values(1)),
                         (0, {"results of formulas": 1}))
        self.assertEqual(self.compared(self.CELLS, self.CELLS, self.values(1), self.values(2)),
                         (1, {}))

    def test_two_errors_are_two_results(self):
        for one, other in ((("error", "#NULL!"), ("error", "#N/A")), (("number", 1), None),
                           (("number", 1), ("error", "#N/A"))):
            self.assertEqual(self.compared(self.CELLS, self.CELLS, {1: one}, {1: other})[0], 1)

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


class Folder(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="orrery-engines-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)


class Reading(Folder):
    def test_cells_under_merged_ones_are_read(self):
        book = openpyxl.Workbook()
        book.active["A1"], book.active["B1"] = 1, 45000
        book.active["B1"].number_format = "yyyy-mm-dd"
        book.active["A2"] = "=A1"
        book.active.merged_cells.add("A1:C1")
        path = str(self.folder / "a.xlsx")
        book.save(path)
        read, = engine_books.read(path)
        self.assertEqual(read.cells, {(1, 1): ("number", 1), (1, 2): ("number", 45000),
                                      (2, 1): ("formula", "=A1")})

    def test_areas_of_pivot_tables(self):
        def areas(attributes):
            package = types.SimpleNamespace(
                rels=lambda part: {"1": Rel("1", "pivotTable", "table", False, ""),
                                   "2": Rel("2", "drawing", "picture", False, "")},
                tree={"table": ElementTree.fromstring(f"<x><location {attributes}/></x>")}.get)
            return list(engine_books.pivot_areas(package, "sheet"))
        self.assertEqual(areas('ref="C5:E9"'), [(5, 3, 9, 5)])
        self.assertEqual(areas('ref="C5:E9" rowPageCount="2"'), [(5, 3, 9, 5), (2, 3, 3, 4)])

    def test_formulas_of_an_xls(self):
        book = xlwt.Workbook()
        page = book.add_sheet("Page")
        page.write(0, 0, "text")
        page.write(1, 1, xlwt.Formula("1+1"))
        path = str(self.folder / "a.xls")
        book.save(path)
        read, = engine_books.read(path)
        self.assertEqual(read.cells, {(1, 1): ("text", "text"), (2, 2): ("formula", None)})


# Stands in for the program: it hands out calendars that were made before.
PROGRAM = """#!/bin/sh
template=$2 year=$3 engine=$5 folder=$9
test $engine = libreoffice && cat "{folder}/words" >&2
cp "{folder}/$engine${{template##*/}}" "$folder/$year${{template##*/}}" 2>/dev/null || true
"""


def damaged(damage, months, cells):
    """The names of the months and the cells, by month and row, with the damage done to them."""
    if damage == "sheet missing":
        months.pop()
    elif damage == "sheets exchanged":
        months[3:5] = months[4], months[3]
    elif damage == "sheet renamed":
        months[3] = "Another"
        cells.update({("Another", row): cells.pop(("Month 4", row)) for row in (1, 2, 3)})
    elif damage == "no cells":
        cells.clear()
    elif damage == "cell changed":
        cells["Month 7", 2] += 1
    elif damage == "cell missing":
        del cells["Month 12", 3]
    elif damage == "number as text":
        cells["Month 1", 1] = "10"
    elif damage == "cell more":
        cells["Month 2", 9] = 1
    return months, cells


DAMAGES = ("sheet missing", "sheets exchanged", "sheet renamed", "cell changed", "cell missing",
           "number as text", "cell more", "words", "no calendar")


def save_model(path):
    book = xlwt.Workbook() if path.endswith(".xls") else openpyxl.Workbook(write_only=True)
    (book.add_sheet if path.endswith(".xls") else book.create_sheet)("Model")
    book.save(path)


def save_year(path, damage=""):
    names = [f"Month {month}" for month in range(1, 13)]
    months, cells = damaged(damage, list(names),
                            {(name, row): row * 10 for name in names for row in (1, 2, 3)})
    book = xlwt.Workbook() if path.endswith(".xls") else openpyxl.Workbook(write_only=True)
    for month in months:
        page = book.add_sheet(month) if path.endswith(".xls") else book.create_sheet(month)
        values = [cells.get((month, row)) for row in range(1, 10)]
        for row, value in enumerate(values):
            if not path.endswith(".xls"):
                page.append([value])
            elif value is not None:
                page.write(row, 0, value)
    book.save(path)


class BrokenCalendars(Folder):
    """A whole comparison, of workbooks as they lie in files."""

    def failures(self, suffix, damage, our_damage=""):
        template, theirs = (str(self.folder / (name + suffix))
                            for name in ("Model", "libreofficeModel"))
        save_model(template)
        save_year(str(self.folder / ("builtinModel" + suffix)), our_damage)
        save_year(theirs, damage)
        if damage == "no calendar":
            os.remove(theirs)
        program = self.folder / "program"
        program.write_text(PROGRAM.format(folder=self.folder), encoding="utf-8")
        program.chmod(0o755)
        (self.folder / "words").write_text(damage if damage == "words" else "", encoding="utf-8")
        options = types.SimpleNamespace(cli=str(program), data=str(self.folder), environment=None,
                                        work=tempfile.mkdtemp(dir=self.folder))
        case = Case(options, template).run()
        if not case.failures:
            self.assertEqual(case.counted, {"templates": 1, "sheets": 12, "cells": 36})
        return case.failures

    def test_each_damage_is_found(self):
        for suffix in (".xlsx", ".xls"):
            self.assertEqual(self.failures(suffix, ""), [])
            for damage in DAMAGES:
                found = self.failures(suffix, damage)
                self.assertEqual(len(found), 1, (suffix, damage, found))
                self.assertNotIn("check itself", found[0])

    def test_two_empty_calendars_are_no_success(self):
        self.assertEqual(self.failures(".xlsx", "no cells", "no cells"),
                         ["the calendar has no cells"])


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
        for kind in kinds_of_difference():
            self.assertFalse(self.is_well(counted={kind: 0}), kind)
            self.assertTrue(self.is_well(least={}, counted={kind: 0}), kind)

    def test_templates_that_come_with_the_program_have_no_difference(self):
        for is_shipped, failures in ((True, 1), (False, 0)):
            case = Case(None, "a.xlsx", is_shipped=is_shipped)
            found = Found()
            found.counted[SPELLED] = 1
            case.add(found)
            self.assertEqual(len(case.failures), failures)


class Choice(unittest.TestCase):
    def test_which_sheets_are_copies(self):
        made = Made.of(".xls", ["Front", "Model"], ["Front", "January", "February", "March"])
        self.assertEqual((made.model, made.copies), ("January", ["February", "March"]))
        self.assertEqual(Made.of(".xls", ["2027"], ["2027"]), Made(".xls"))

    def test_features_are_spread(self):
        rows = [{"file": name, "bytes": size, "features": features} for name, size, features in (
            ("a", "9", "x"), ("b", "5", "x,y"), ("c", "7", "x,y"), ("d", "1", "z"))]
        self.assertEqual([row["file"] for row in choose(rows, 2, lambda row: True)], ["b", "d"])
        self.assertEqual([row["file"] for row in choose(rows, 2, lambda row: row["file"] != "b")],
                         ["c", "d"])


if __name__ == "__main__":
    unittest.main()
