#!/usr/bin/env python3
"""The built-in engine and LibreOffice make the same calendars: sheets, their order, every cell.

usage: check_two_engines.py --cli PROGRAM --data FOLDER --corpus FOLDER [--count 20] [--jobs 2]
                            [--only TEXT] [--keep DIR]

One year is made of every template of the data folder, and of workbooks of the corpus, --count of
each format, whose first worksheet is filled by a parameter file that is written here. The workbooks
are read as they stand, by openpyxl and xlrd; then LibreOffice computes all formulas of both, and
their results are compared. Exit code 0: no difference but those of docs/engines.md, each of which
was met, and as much was compared as there is; 1: else; 77: there is no corpus.
"""

import argparse
import csv
import multiprocessing
import multiprocessing.pool
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time
import traceback
from collections import Counter
from dataclasses import dataclass, field

import engine_books
from engine_differences import ALLOWED, READERS, Made, compare, compare_results, formula_cells
from prove import corpus_is_absent
from readers import Office
from xls_office import recalculating_profile

YEAR = 2027
ENGINES = ("builtin", "libreoffice")
FORMATS = (".xlsx", ".xls")
LARGEST = 200_000  # bytes of a template: of larger ones LibreOffice makes a calendar in a minute
SHOWN = 6          # failures of one template
PATIENCE = 400     # seconds of a program's run, on a busy machine
MONTHS = 12
SHIPPED = 10       # templates that come with Orrery
COUNT = 20         # of the corpus, in each format
LEAST = {"sheets": 627, "cells": 327_000, "results of formulas": 26_000}  # of all templates
LEAST_OF_FEWER = {"sheets": 200, "cells": 80_000, "results of formulas": 20_000}

# Cells that are often filled, formatted or merged; texts that look like something else.
PARAMETERS = """[Monthly Calendar]
Output=Y
SheetName={model}
FirstCellOfDay=B4
RowIntervalOfDay=2
OutWeekday=Y
FirstCellOfWeekday=B3
OutMonth=Y
FirstCellOfMonth=B1
OutYear=Y
FirstCellOfYear=D1
OutHoliday=Y
FirstCellOfHoliday=B5
MultiHolidays=1
Holiday1=0101,,=1+1
Holiday2=0203,Monday,12.5
Holiday3=0,Easter,'quoted
Holiday4=1225,,J\u00e4nner \u4e00\u6708 \U0001f600
Holiday5=1225,,TRUE

[Yearly Calendar]
Output=N
"""


def choose(rows, count, is_usable):
    """Workbooks of the corpus with as many features as they can have together: each is the one
    with most features that those before it lack, and the smallest of these."""
    rows = sorted(rows, key=lambda row: (int(row["bytes"]), row["file"]))
    chosen, covered = [], set()
    while rows and len(chosen) < count:
        best = max(rows, key=lambda row: len(set(row["features"].split(",")) - covered))
        rows.remove(best)
        if is_usable(best):
            chosen.append(best)
            covered.update(best["features"].split(","))
    return chosen


def corpus_templates(options):
    with open(os.path.join(options.corpus, "MANIFEST.tsv"), encoding="utf-8") as file:
        readable = [row for row in csv.DictReader(file, delimiter="\t")
                    if row["lo_to_xlsx"] == row["py_opens"] == "yes"]
    for suffix in FORMATS:
        rows = [row for row in readable if row["file"].startswith(suffix[1:] + "/")
                and row["file"].endswith(suffix) and int(row["bytes"]) <= LARGEST]
        for row in choose(rows, options.count, lambda row: engine_books.usual_model(
                os.path.join(options.corpus, row["file"]))):
            yield os.path.join(options.corpus, row["file"])


@dataclass
class Case:
    """A template, and what became of it."""

    options: object
    template: str
    is_shipped: bool = False
    failures: list = field(default_factory=list)
    counted: Counter = field(default_factory=Counter)
    calendar: object = None  # a Made
    formulas: set = field(default_factory=set)  # (sheet, position)
    changed: set = field(default_factory=set)
    seconds: dict = field(default_factory=dict)

    @property
    def name(self):
        return os.path.basename(self.template)

    def made(self, engine):
        """The calendar that an engine made, under a name that no other has."""
        return os.path.join(self.options.work, f"{engine}-{self.name}")

    def resaved(self, engine):
        """The same as LibreOffice computed it; the other format's template is called so too."""
        kind = os.path.splitext(self.name)[1][1:]
        return os.path.join(self.options.work, "computed-" + kind,
                            os.path.splitext(os.path.basename(self.made(engine)))[0] + ".xlsx")

    def run(self):
        return self._guarded(self._compare_written)

    def compare_computed(self):
        return self._guarded(self._compare_results)

    def _guarded(self, check):
        try:
            check()
        except Exception:  # whatever breaks a check is a failure of this template
            self.failures.append(f"the check itself broke: {traceback.format_exc(limit=-3)}")
        return self

    def _compare_written(self):
        said = [self.generate(engine) for engine in ENGINES]
        if said[0] != said[1]:
            self.failures.append(f"{said[0]!r:.300}, through LibreOffice {said[1]!r:.300}")
        missing = [engine for engine in ENGINES if not os.path.exists(self.made(engine))]
        if missing:
            self.failures.append(f"no calendar through {' and '.join(missing)}")
            return
        books = [engine_books.read(self.made(engine)) for engine in ENGINES]
        before, after = ([sheet.name for sheet in sheets]
                         for sheets in (engine_books.read(self.template), books[0]))
        if not self.is_shipped and len(after) != len(before) + MONTHS - 1:
            self.failures.append(f"of the sheets {before} a year became {after}")
        self.calendar = Made.of(os.path.splitext(self.name)[1], before, after)
        self.formulas = set(formula_cells(books[0]))
        self.counted.update(templates=1, sheets=len(after))
        self.add(compare(self.calendar, *books))
        if not any(sheet.cells for sheet in books[0]):
            self.failures.append("the calendar has no cells")

    def _compare_results(self):
        self.add(compare_results(
            self.calendar, *(engine_books.read(self.resaved(engine)) for engine in ENGINES),
            self.formulas, self.changed))

    def add(self, found):
        self.failures += found.failures
        self.counted.update(found.counted)
        self.changed |= found.changed
        if self.is_shipped:
            self.failures += [f"is among the templates without a difference: {text}"
                              for text in kinds_of_difference() if found.counted[text]]

    def generate(self, engine):
        """What the program said, without the places of files."""
        folder = os.path.join(self.options.work, engine, self.name)
        template = os.path.join(folder, "template", self.name)
        os.makedirs(os.path.dirname(template))
        shutil.copy(self.template, template)
        self.write_parameters(template)
        begin = time.monotonic()
        done = subprocess.run(
            [self.options.cli, "generate", template, str(YEAR), "--engine", engine, "--settings",
             os.path.join(self.options.data, "orrery.ini"), "--output-folder", folder],
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=PATIENCE,
            check=False, encoding="utf-8", env=self.options.environment)
        self.seconds[engine] = time.monotonic() - begin
        made = os.path.join(folder, f"{YEAR}{self.name}")
        if os.path.exists(made):
            os.replace(made, self.made(engine))
        return done.returncode, done.stderr.replace(folder, "")

    def write_parameters(self, template):
        own = os.path.splitext(self.template)[0] + ".ini"
        text = pathlib.Path(own).read_text(encoding="utf-8") if os.path.exists(own) else \
            PARAMETERS.format(model=engine_books.usual_model(template))
        pathlib.Path(template).with_suffix(".ini").write_text(text, encoding="utf-8")


def kinds_of_difference():
    return [*(kind.text for kind in ALLOWED), READERS]


def compute(options, cases):
    """Has LibreOffice compute and save what both engines made of the templates, one LibreOffice
    for each format, which are two."""
    def convert(suffix):
        folder = os.path.join(options.work, "office" + suffix)
        os.makedirs(folder)
        paths = [case.made(engine) for case in cases if case.name.endswith(suffix)
                 for engine in ENGINES]
        if paths:
            Office(folder, recalculating_profile(folder)).convert(
                paths, os.path.join(options.work, "computed-" + suffix[1:]), seconds=PATIENCE)
    with multiprocessing.pool.ThreadPool(len(FORMATS)) as threads:
        threads.map(convert, FORMATS)


def check(options, cases):
    """Each of the cases, with what was found."""
    os.makedirs(options.work, exist_ok=True)
    with multiprocessing.Pool(options.jobs) as pool:
        cases = pool.map(Case.run, cases, chunksize=1)
        with_formulas = [case for case in cases if case.formulas]
        compute(options, with_formulas)
        judged = pool.map(Case.compare_computed, with_formulas, chunksize=1)
    return [case for case in cases if not case.formulas] + judged


def required_counts(options):
    """How many there must be at least of what is counted; nothing for chosen templates. With all of
    them, each difference that is allowed must be found."""
    if options.only:
        return {}
    least = {"templates": SHIPPED + options.count * len(FORMATS)}
    if options.count < COUNT:
        return least | LEAST_OF_FEWER
    return least | LEAST | {text: 1 for text in kinds_of_difference()}


def shortfalls(total, least):
    """What was not compared, and which differences are allowed that nobody has."""
    for what, count in least.items():
        if total[what] < count:
            yield f"{what}: {total[what]} found, there should be {count} at least"


def report(cases, least):
    """Prints failures and counts; returns whether all is well. `least` has how many there must be
    at least of what is counted."""
    total, seconds = Counter(), Counter()
    for case in sorted(cases, key=lambda case: case.name):
        for failure in case.failures[:SHOWN]:
            print(f"FAILED {case.name}: {failure}")
        if len(case.failures) > SHOWN:
            print(f"FAILED {case.name}: and {len(case.failures) - SHOWN} failures more")
        total.update(case.counted)
        seconds.update(case.seconds)
    short = list(shortfalls(total, least)) if least else []
    for sentence in short:
        print(f"FAILED {sentence}")
    for what, count in sorted(total.items()):
        print(f"{what:<100}{count:>10}")
    for engine, spent in seconds.items():
        print(f"{'seconds, ' + engine:<100}{spent:>10.1f}")
    failed = sum(bool(case.failures) for case in cases)
    print(f"{'templates with failures':<100}{failed:>10}")
    return bool(cases) and not failed and not short


def all_cases(options):
    shipped = sorted(str(path) for path in pathlib.Path(options.data, "template").iterdir()
                     if path.suffix in FORMATS)
    return [*(Case(options, path, is_shipped=True) for path in shipped),
            *(Case(options, path) for path in corpus_templates(options))]


def read_options():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--cli", required=True)
    parser.add_argument("--data", required=True)
    parser.add_argument("--corpus", required=True)
    parser.add_argument("--count", type=int, default=COUNT, help="workbooks of each format")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--only", default="", help="templates whose names contain this text")
    parser.add_argument("--keep", help="folder for the workbooks made, kept afterwards")
    return parser.parse_args()


def main():
    options = read_options()
    if not os.path.exists(os.path.join(options.corpus, "MANIFEST.tsv")):
        return corpus_is_absent(options.corpus)
    begin = time.monotonic()
    options.work = os.path.abspath(options.keep or tempfile.mkdtemp(prefix="orrery-engines-"))
    # Without a display LibreOffice ends with the run; the profiles are this check's own.
    options.environment = {**os.environ, "XDG_CACHE_HOME": os.path.join(options.work, "cache")}
    for variable in ("DISPLAY", "WAYLAND_DISPLAY"):
        options.environment.pop(variable, None)
    try:
        cases = check(options, [case for case in all_cases(options) if options.only in case.name])
    finally:
        if not options.keep:
            shutil.rmtree(options.work, ignore_errors=True)
    is_well = report(cases, required_counts(options))
    print(f"{'time':<99}{time.monotonic() - begin:>10.1f}s")
    return 0 if is_well else 1


if __name__ == "__main__":
    sys.exit(main())
