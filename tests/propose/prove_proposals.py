#!/usr/bin/env python3
"""Judges the parameters that are proposed for designed templates, for those that come with the program, and for
workbooks that are no calendars.

usage: prove_proposals.py --cli PROGRAM --templates FOLDER --corpus FOLDER [--count N] [--sample N] [--seed TEXT]

Of `count` designs, half in each format; of the corpus, about `sample` workbooks of each format, or all. Exit code
77: there is no corpus, and all else is as it should be.
"""

import argparse
import collections
import json
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

import designs
from designs import judge

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "places"))
from corpus_status import without_corpus  # noqa: E402

# The bars: shares, the last one of sheets; and milliseconds of the median workbook with the program's start.
KIND, GRID, CERTAIN, FALSE = 0.99, 0.97, 0.95, 0.005
MILLISECONDS = 50
# What empty cells of the shipped templates do not tell.
MAY_BE_UNKNOWN = {"WeekdayName", "MonthName", "ColIntervalOfMonth"}


class Judging:
    def __init__(self, cli, home):
        self.cli, self.environment = cli, {**os.environ, "HOME": home}
        self.times, self.problems, self.misses = [], [], []
        self.count = collections.Counter()

    def propose(self, path):
        start = time.monotonic()
        result = subprocess.run([self.cli, "propose", str(path), "--json"], capture_output=True, text=True,
                                check=False, env=self.environment)
        self.times.append(1000 * (time.monotonic() - start))
        return result.returncode, json.loads(result.stdout)

    def judge_design(self, design):
        code, proposal = self.propose(design.path)
        if code != 0:
            self.problems.append(f"{design.path.name}: {proposal}")
            return
        verdict = judge.judge(design.truth, proposal)
        self.count.update(designs=1, kind=verdict.kind, sheets=len(design.book.sheets),
                          false=verdict.false_proposal, grids=len(verdict.grids),
                          grid=sum(verdict.grids.values()), right=len(verdict.right),
                          wrong=len(verdict.wrong), guessed=len(verdict.guessed))
        if not verdict.kind:
            self.misses.append(f"{design.path.name}: other calendars than {design.truth.kind}")
        elif not all(verdict.grids.values()):
            self.misses.append(f"{design.path.name}: other days")
        else:
            self.misses += [f"{design.path.name}: {name}" for name in verdict.wrong]
            self.misses += [f"{design.path.name}: {name} was guessed" for name in verdict.guessed]

    def judge_shipped(self, path):
        """Everything is found but what nobody could know."""
        code, proposal = self.propose(path)
        if code != 0:
            self.problems.append(f"{path.name}: {proposal}")
            return
        for name, truth in parameters(path.with_suffix(".ini")).items():
            for key, value in truth.items() if truth["Output"] == "Y" else [("Output", "N")]:
                is_open = f"{name}.{key}" in proposal["unknown"] and key in MAY_BE_UNKNOWN
                if not is_open and proposal[name].get(key) != value:
                    self.problems.append(f"{path.name}: {name}.{key} is {proposal[name].get(key)}, not {value}")

    def judge_other(self, path):
        """No workbook of the corpus is a calendar; one that cannot be read gets no proposal."""
        code, proposal = self.propose(path)
        self.count["others"] += 1
        for name in ("monthly", "yearly") if code == 0 else ():
            if proposal[name] != {"Output": "N"}:
                self.count["other false"] += 1
                self.misses.append(f"{path.name}: a {name} calendar on {proposal[name]['SheetName']}")

    def finish(self):
        count = self.count
        shares = [("designs with their calendars", count["kind"], count["designs"], KIND),
                  ("calendars with all days in their cells", count["grid"], count["grids"], GRID),
                  ("certain parameters", count["right"], count["right"] + count["wrong"], CERTAIN),
                  ("sheets of designs without a false calendar", count["sheets"] - count["false"],
                   count["sheets"], 1 - FALSE)]
        if count["others"]:
            shares.append(("other workbooks without a calendar", count["others"] - count["other false"],
                           count["others"], 1 - FALSE))
        for name, good, all_, bar in shares:
            print(f"{name}: {good} of {all_}, {100 * good / all_:.2f} % (bar {100 * bar:.1f} %)")
            if good < bar * all_:
                self.problems.append(f"{name}: below the bar")
        median = statistics.median(self.times)
        print(f"unknowable parameters that were guessed: {count['guessed']}")
        print(f"median {median:.1f} ms a workbook (bar {MILLISECONDS} ms)")
        if median > MILLISECONDS:
            self.problems.append(f"{median:.1f} ms a workbook")


def parameters(file):
    """The calendars of a parameter file with their parameters, without the rules of holidays."""
    calendars, section = {}, {}
    for line in file.read_text(encoding="utf-8").splitlines():
        if line.startswith("["):
            section = calendars.setdefault(line.strip("[]").split()[0].lower(), {})
        elif "=" in line and not line[7:8].isdigit():
            section.update([line.split("=", 1)])
    return calendars


def judge_all(judging, options):
    half = options.count // 2
    for ending, first in (("xlsx", 0), ("xls", half)):
        for design in designs.designs(options.seed, half, ending, first=first):
            judging.judge_design(design)
    for path in sorted(options.templates.glob("*.xls*")):
        judging.judge_shipped(path)
    for ending in ("xlsx", "xls"):
        files = sorted((options.corpus / ending).glob(f"*.{ending}"))
        step = max(1, len(files) // options.sample) if options.sample else 1
        for path in files[::step]:
            judging.judge_other(path)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cli", required=True)
    parser.add_argument("--templates", type=pathlib.Path, required=True)
    parser.add_argument("--corpus", type=pathlib.Path, required=True)
    parser.add_argument("--count", type=int, default=200)
    parser.add_argument("--sample", type=int, default=0)
    parser.add_argument("--seed", default="proposals")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="prove-proposals-") as home:
        judging = Judging(options.cli, home)
        judge_all(judging, options)
        judging.finish()
    for miss in judging.misses:
        print(f"missed: {miss}")
    for problem in judging.problems:
        print(problem)
    if judging.problems:
        return 1
    return 0 if options.corpus.is_dir() else without_corpus(options.corpus)


if __name__ == "__main__":
    sys.exit(main())
