#!/usr/bin/env python3
"""Proves that the designs' truths are true, with the program itself and with readers that are not ours.

usage: prove_designs.py --cli PROGRAM [--count N] [--office N] [--seed TEXT]

Of `count` designs, half in each format: every truth, written as a parameter file, passes `check`;
`generate` fills two years; every day, name and holiday is where the design has a cell for it, and
nothing else changed. The same seed gives the same bytes. Both formats say the same. LibreOffice
opens some and shows their names.
"""

import argparse
import filecmp
import os
import pathlib
import subprocess
import sys
import tempfile

import designs
import filled
from designs.sheet import Formula
from formats_agree import compare_formats
from in_office import check_in_office
from mixture import check_mixture


class Problems(list):
    def check(self, good, *words):
        if not good:
            self.append(" ".join(map(str, words)))


class Prover:
    def __init__(self, cli, seed, folder):
        self.cli, self.seed, self.folder = cli, seed, folder
        self.problems = Problems()
        self.checked = {"designs": 0, "months": 0, "cells": 0}

    def run(self, *arguments):
        return subprocess.run([self.cli, *arguments], capture_output=True, text=True, check=False,
                              env={**os.environ, "HOME": str(self.folder)})

    def prove(self, count):
        for ending, first, number in (("xlsx", 0, count // 2), ("xls", count // 2, count - count // 2)):
            for design in designs.designs(self.seed, number, ending, first=first):
                if design.truth.kind == "none":
                    self._check_readable(design)
                else:
                    self.prove_calendar(design)

    def check_notices(self):
        """A truth that is wrong in one parameter is found out."""
        truths = ((n, designs.design(self.seed, n).truth) for n in range(200))
        number = next(n for n, truth in truths if truth.kind == "yearly"
                      and truth.yearly["MonthLayout"] == "3" and truth.yearly["OutWeekday"] == "Y")
        for key, wrong in (("FirstCellOfDay", "AA50"), ("ColIntervalOfMonth", "35"), ("RowIntervalOfDay", "3"),
                           ("OutWeekday", "N"), ("FirstDayOfWeek", None), ("FirstCellOfMonth", "A90")):
            other = Prover(self.cli, self.seed, self.folder)
            for design in designs.designs(self.seed, 1, "xlsx", first=number):
                values = design.truth.yearly
                values[key] = wrong or str(1 - int(values[key]))
                other.prove_calendar(design)
            self.problems.check(other.problems, "a wrong", key, "is not noticed")

    def _check_readable(self, design):
        names = [name for name, _ in filled.read(design.path)]
        self.problems.check(names == [sheet.name for sheet in design.book.sheets], design.name, "has", names)

    def prove_calendar(self, design):
        with open(design.path.with_suffix(".ini"), "w", encoding="utf-8", newline="") as file:
            file.write(filled.with_marks(design.truth).ini(filled.RULES))
        self._check_names(design)
        check = self.run("check", str(design.path), str(filled.YEARS[0]), "--engine", "builtin")
        self.problems.check(check.returncode == 0, design.name, "check says", check.stdout, check.stderr)
        self.checked["designs"] += 1
        output = self.folder / "output"
        made = self.run("generate", str(design.path), f"{filled.YEARS[0]}-{filled.YEARS[-1]}", "--engine",
                        "builtin", "--output-folder", str(output))
        self.problems.check(made.returncode == 0, design.name, "generate says", made.stdout, made.stderr)
        template = filled.read(design.path)
        for year in filled.YEARS:
            path = output / f"{year}{design.path.name}"
            if made.returncode == 0:
                self._check_year(design, template, filled.read(path), year)
                path.unlink()

    def _check_names(self, design):
        """What can be read of names on a page is that of the truth's lists."""
        for which, page in design.pages.items():
            values, cells = getattr(design.truth, which), page.sheet.cells
            for column, cell in enumerate(page.blocks[0].weekdays if page.plan.weekdays_read else ()):
                name = values["WeekdayName"].split(",")[(column + int(values["FirstDayOfWeek"])) % 7]
                self.problems.check(cells[cell].value == name, design.name, cell, "is not", name)
            for number, block in enumerate(page.blocks if "captions names" in page.labels else ()):
                name = values["MonthName"].split(",")[number]
                self.problems.check(cells[block.month].value == name, design.name, block.month, "is not",
                                    name)

    def _check_year(self, design, template, result, year):
        position = 0
        pages = {id(page.sheet): which for which, page in design.pages.items()}
        expected_sheets = len(template) + (11 if "monthly" in design.pages else 0)
        self.problems.check(len(result) == expected_sheets, design.name, "has", len(result), "sheets")
        for sheet, (_, before) in zip(design.book.sheets, template):
            which = pages.get(id(sheet))
            count = 12 if which == "monthly" else 1
            for number, (name, after) in enumerate(result[position:position + count]):
                expected = self._expected(design, which, year, number + 1)
                self._compare(f"{design.path.name} {year} {name}:", sheet, before, after, expected)
            position += count

    def _expected(self, design, which, year, month):
        """What a sheet has to contain after the run beside what it had."""
        if which is None:
            return {}
        page = design.pages[which]
        months = [(page.blocks[0], month)] if which == "monthly" else list(zip(page.blocks, range(1, 13)))
        cells = {}
        for block, number in months:
            written = filled.expected_month(page, block, year, number)
            outside = set(written) - filled.own_cells(page, block)
            self.problems.check(not outside, design.name, which, "writes outside of the month:", outside)
            self.problems.check(not set(written) & set(cells) - {page.year}, design.name, "months overlap")
            cells.update(written)
            self.checked["months"] += 1
        self.checked["cells"] += len(cells)
        return cells

    def _compare(self, where, sheet, before, after, expected):
        for cell in sorted({*before, *after, *expected}):
            design = sheet.cells.get(cell)
            if cell not in expected and design and isinstance(design.value, Formula):
                continue  # its result depends on what was written
            value = expected.get(cell, before.get(cell))
            if after.get(cell) != value:
                self.problems.append(f"{where} {cell} has {after.get(cell)!r} instead of {value!r}")

    def check_same_seed(self, count):
        """The same seed gives the same files, whatever else was made before."""
        first, second = self.folder / "first", self.folder / "second"
        first.mkdir()
        second.mkdir()
        for ending in designs.WRITERS:
            once = list(designs.designs(self.seed, count, ending, first))
            for number in reversed(range(count)):
                again = next(designs.designs(self.seed, 1, ending, second, first=number))
                same = filecmp.cmp(once[number].path, second / again.path.name, shallow=False)
                self.problems.check(same, again.path.name, "differs when it is made again")
                self.problems.check(once[number].truth == again.truth, again.path.name, "has another truth")
        other = designs.design(f"{self.seed} and more", 0), designs.design(f"{self.seed} and more", 1)
        same = [made.truth == designs.design(self.seed, number).truth for number, made in enumerate(other)]
        self.problems.check(not all(same), "another seed gives the same designs")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cli", required=True)
    parser.add_argument("--count", type=int, default=40)
    parser.add_argument("--office", type=int, default=4)
    parser.add_argument("--seed", default="1")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="prove-designs-") as scratch:
        prover = Prover(options.cli, options.seed, pathlib.Path(scratch))
        prover.check_same_seed(4)
        prover.check_notices()
        prover.prove(options.count)
        check_mixture(prover.problems, options.seed)
        compare_formats(prover.problems, options.seed, max(8, options.count // 20))
        if options.office:
            check_in_office(prover.problems, options.seed, options.office, pathlib.Path(scratch))
    for problem in prover.problems[:40]:
        print(problem)
    print(f"{len(prover.problems)} problems; {prover.checked}")
    return 1 if prover.problems else 0


if __name__ == "__main__":
    sys.exit(main())
