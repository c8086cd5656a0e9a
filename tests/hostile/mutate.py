#!/usr/bin/env python3
"""Runs the program over mutated workbooks and judges what it does.

usage: mutate.py --cli PROGRAM --corpus FOLDER [--sanitized] [--cases N] [--seed S]
                 [--keep DIR] [--jobs N] [--slow-readers SECONDS] [--heavy SHARE]

The seeds S, S + 1, ... give the cases; failing inputs are left in the folder DIR. With --heavy the
large workbooks of heavy.py are judged too, with that share of their size; with --slow-readers
LibreOffice, Gnumeric and the Open XML validator read the calendars for that long. Exit code 0: no
failure; 1: failures, or nearly every workbook was refused; 77: there is no corpus, and the
project's own workbooks passed.
"""

import argparse
import functools
import os
import shutil
import sys
import tempfile
import time

import cases
import heavy
import runner
from judge import Program

_ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
_OWN = ("data/template", "tests/engines/builtin/xlsx/data", "tests/engines/builtin/xls/data",
        "tests/fidelity/data")
SKIPPED = 77
LEAST_SHARE = 0.25  # of the cases from which a calendar has to be made


def own_workbooks():
    """The project's own templates and fixtures."""
    return [os.path.join(_ROOT, folder, name) for folder in _OWN
            for name in os.listdir(os.path.join(_ROOT, folder))
            if name.endswith((".xlsx", ".xls")) and "password" not in name
            and "encrypted" not in name]


def corpus_is_absent(folder, what):
    """Says loudly that the project's own workbooks are used; whether that is a failure."""
    print("*" * 78)
    print(f"*** NO {what} at {folder}: the project's own workbooks are used.")
    print("*" * 78)
    return bool(os.environ.get("CI") or os.environ.get("ORRERY_REQUIRE_CORPUS"))


def read_options(description):
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("--cli", required=True)
    parser.add_argument("--sanitized", action="store_true", help="the program has sanitizers")
    parser.add_argument("--keep", default="", help="folder for the workbooks that fail")
    parser.add_argument("--jobs", type=int, default=2)
    return parser


def arguments(options):
    """What `make` makes cases of: the large workbooks first, which take longest, then seeds."""
    large = [(one.name, options.heavy) for one in heavy.ALL] if options.heavy else []
    return [*large, *range(options.seed, options.seed + options.cases)]


def make(argument, found):
    return cases.make(argument, found) if isinstance(argument, int) else heavy.make(argument)


def proves_nothing(outcomes):
    """Where nearly every workbook is refused, little of the program has run."""
    made = sum(outcome.code == 0 for outcome in outcomes)
    if made >= LEAST_SHARE * len(outcomes):
        return False
    print(f"FAILED of {len(outcomes)} workbooks {made} became a calendar, which proves nothing")
    return True


def main():
    parser = read_options(__doc__.splitlines()[0])
    parser.add_argument("--corpus", required=True)
    parser.add_argument("--cases", type=int, default=200)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--slow-readers", type=int, default=0, metavar="SECONDS",
                        help="how long LibreOffice and others judge as well")
    parser.add_argument("--heavy", type=float, default=0, metavar="SHARE",
                        help="how large the large workbooks are; they are left out without it")
    options = parser.parse_args()
    absent = not os.path.isdir(options.corpus)
    if absent and corpus_is_absent(options.corpus, "CORPUS"):
        return 1
    begin = time.monotonic()
    found = cases.templates(options.corpus, own_workbooks())
    work = tempfile.mkdtemp(prefix="orrery-hostile-")
    try:
        outcomes = runner.judge_all(
            Program([os.path.abspath(options.cli)], options.sanitized),
            functools.partial(make, found=found),
            arguments(options), work,
            options.keep or os.path.join(work, "kept"), options.jobs, options.slow_readers)
    finally:
        shutil.rmtree(work, ignore_errors=True)
    runner.print_table(outcomes)
    runner.print_failures(outcomes)
    print(f"{len(runner.failing(outcomes))} of {len(outcomes)} workbooks fail, "
          f"{time.monotonic() - begin:.0f} s")
    if runner.failing(outcomes) or proves_nothing(outcomes):
        return 1
    return SKIPPED if absent else 0


if __name__ == "__main__":
    sys.exit(main())
