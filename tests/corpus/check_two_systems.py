#!/usr/bin/env python3
"""The same inputs give the same workbooks on two systems: part by part of an .xlsx, with their
order, and stream by stream of an .xls.

usage: check_two_systems.py --here CLI DRIVER --there RUNNER CLI DRIVER --data FOLDER --corpus FOLDER

CLI and DRIVER are orrery-cli and workbook_driver of one build; RUNNER starts the other system's.
Calendars are made of every template of the data folder. Every workbook of the corpus is saved
unchanged and edited; those that are refused are refused with the same sentence. Exit code 0: no
difference; 1: differences; 77: there is no corpus.
"""

import argparse
import csv
import multiprocessing
import os
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import zipfile
import zlib
from collections import Counter

import plan
import xls_plan
from opc import Package
from prove import corpus_is_absent
from xls_book import Book
from xls_compound import CompoundFile

YEARS = "2027-2028"
SHOWN = 20


def contents(path):
    """What has to be the same: names and bytes, in their order."""
    if zipfile.is_zipfile(path):
        with zipfile.ZipFile(path) as package:
            return [(entry.filename, part(package, entry)) for entry in package.infolist()]
    return [("/".join(name), entry.identity())
            for name, entry in CompoundFile(path).entries.items()]


def part(package, entry):
    """A part's bytes; as they are packed where the template's own were damaged and stayed so."""
    try:
        return package.read(entry)
    except (zlib.error, zipfile.BadZipFile, EOFError):
        package.fp.seek(entry.header_offset + 26)
        name, extra = struct.unpack("<2H", package.fp.read(4))
        package.fp.seek(name + extra, os.SEEK_CUR)
        return package.fp.read(entry.compress_size)


def differences(here, there):
    """How two workbooks differ; nothing when they are the same."""
    missing = [path for path in (here, there) if not os.path.exists(path)]
    if missing:
        if len(missing) == 1:
            yield f"only one system wrote it; there is no {missing[0]}"
        return
    left, right = contents(here), contents(there)
    if [name for name, _ in left] != [name for name, _ in right]:
        yield f"parts {[name for name, _ in left]}, elsewhere {[name for name, _ in right]}"
        return
    for (name, one), (_, other) in zip(left, right):
        if one != other:
            yield f"{name} differs"


def plain(output):
    """What a program printed, without what is every system's own: line ends and separators."""
    return output.decode("utf-8").replace("\r\n", "\n").replace("\\", "/")


class System:
    """The programs of one system."""

    def __init__(self, name, runner, programs, work):
        self.cli, self.driver = ([*runner, program] for program in programs)
        self.folder = os.path.join(work, name)
        os.makedirs(self.folder)

    def run(self, program, *arguments):
        for _ in range(2):
            done = subprocess.run([*program, *arguments], stdout=subprocess.PIPE,
                                  stderr=subprocess.PIPE, timeout=120, check=False)
            # A program that fails says why. One that says nothing was not started: rarely, under
            # load, the other system's runner cannot.
            if done.returncode == 0 or done.stdout or done.stderr:
                break
        return done.returncode, plain(done.stdout), plain(done.stderr)


def compare_calendars(systems, data, template):
    """Calendars of a shipped template."""
    results = []
    for system in systems:
        code, _, complaint = system.run(
            system.cli, "generate", template, YEARS, "--settings", os.path.join(data, "orrery.ini"),
            "--output-folder", system.folder, "--engine", "builtin")
        results.append((code, complaint))
    if results != [(0, "")] * 2:
        return [f"{template}: {results}"], Counter()
    first, last = map(int, YEARS.split("-"))
    made = [f"{year}{template}" for year in range(first, last + 1)]
    return compare_files(systems, made, "calendars")


def compare_files(systems, names, what):
    failures, counted = [], Counter()
    for name in names:
        here, there = (os.path.join(system.folder, name) for system in systems)
        failures += [f"{name}: {difference}" for difference in differences(here, there)]
        if os.path.exists(here) and os.path.exists(there):
            counted[what] += 1
            counted["parts and streams"] += len(contents(here))
            counted["the same in every byte"] += pathlib.Path(here).read_bytes() == \
                pathlib.Path(there).read_bytes()
    return failures, counted


def make_lines(path):
    """The steps of an edit, or None where the checks cannot read the file."""
    try:
        if path.endswith(".xls"):
            return xls_plan.make_plan(Book(path)).lines
        return plan.make_plan(Package(path), last_row=True).lines
    except Exception:  # files of the bad kind break readers in every way
        return None


def compare_edits(systems, path):
    """A workbook of the corpus, saved unchanged and edited."""
    name = os.path.basename(path)
    lines = make_lines(path)
    steps = os.path.join(systems[0].folder, name + ".tsv")
    if lines:
        with open(steps, "w", encoding="utf-8", newline="") as file:
            file.write("\n".join(lines) + "\n")
    failures, made, counted = [], [], Counter()
    for verb in ("same", "edit") if lines else ("same",):
        target = f"{verb}-{name}"
        results = [system.run(system.driver, verb, path, os.path.join(system.folder, target),
                              *([steps] if verb == "edit" else [])) for system in systems]
        if results[0] != results[1]:
            failures.append(f"{verb} {name}: {results[0]!r:.300}, elsewhere {results[1]!r:.300}")
        counted[f"{verb} refused"] += results[0][0] != 0
        made.append(target)
    more, compared = compare_files(systems, made, "workbooks")
    return failures + more, counted + compared


def run_case(case):
    compare, *arguments = case
    return compare(*arguments)


def read_options():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--here", required=True, nargs=2)
    parser.add_argument("--there", required=True, nargs="+")
    parser.add_argument("--data", required=True)
    parser.add_argument("--corpus", required=True)
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--only", default="", help="files whose names contain this text")
    return parser.parse_args()


def make_cases(options, systems, work):
    data = os.path.join(work, "data")
    shutil.copytree(options.data, data)
    cases = [(compare_calendars, systems, data, name)
             for name in sorted(os.listdir(os.path.join(data, "template")))
             if name.endswith((".xls", ".xlsx")) and options.only in name]
    with open(os.path.join(options.corpus, "MANIFEST.tsv"), encoding="utf-8") as file:
        paths = [row["file"] for row in csv.DictReader(file, delimiter="\t")]
    return cases + [(compare_edits, systems, os.path.join(options.corpus, path))
                    for path in paths if options.only in path]


def main():
    options = read_options()
    if not os.path.exists(os.path.join(options.corpus, "MANIFEST.tsv")):
        return corpus_is_absent(options.corpus)
    begin = time.monotonic()
    failures, counted = [], Counter()
    with tempfile.TemporaryDirectory(prefix="orrery-systems-") as work:
        systems = (System("here", [], options.here, work),
                   System("there", options.there[:-2], options.there[-2:], work))
        with multiprocessing.Pool(options.jobs) as pool:
            for found, count in pool.imap_unordered(run_case, make_cases(options, systems, work)):
                failures += found
                counted.update(count)
    for failure in failures[:SHOWN]:
        print(f"FAILED {failure}")
    for what, count in sorted(counted.items()):
        print(f"{what:<40}{count:>10}")
    print(f"{'failures':<40}{len(failures):>10}")
    print(f"{'time':<40}{time.monotonic() - begin:>9.1f}s")
    return 1 if failures or not counted["workbooks"] else 0


if __name__ == "__main__":
    sys.exit(main())
