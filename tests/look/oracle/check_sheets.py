#!/usr/bin/env python3
"""Compares how sheets look, as the command look tells it, with what LibreOffice makes of them.

usage: check_sheets.py --cli PROGRAM --data FOLDER [--corpus FOLDER] [--kind xlsx|xls] [--sample N]
                       [--only TEXT] [--report FILE] [--pictures FOLDER]

Looks at the visible sheets of the shipped templates and of the corpus's workbooks. Fails if a bar is
missed by all of a kind together (bars.py), or by one workbook that is not among the known ones
(known_misses.py). Of a sample, only what its workbooks miss counts. A workbook that LibreOffice does
not open, or that asks for a password, does not count and is named. Exit code 77: there is no corpus.
"""

import argparse
import pathlib
import sys
import tempfile

import bars
import known_misses
from comparison import compare_workbook
from office_session import Failed, OfficeSession

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "places"))
from corpus_status import without_corpus  # noqa: E402


def sample(paths, count):
    """So many of the paths, spread over all of them."""
    if not count or count >= len(paths):
        return paths
    return [paths[index * len(paths) // count] for index in range(count)]


def main():
    arguments = read_arguments()
    groups = [("templates", sorted(arguments.data.glob("template/*.xls*")), bars.TEMPLATES)]
    has_corpus = arguments.corpus is None or arguments.corpus.is_dir()
    if arguments.corpus and has_corpus:
        for kind in arguments.kind or ("xlsx", "xls"):
            paths = sample(sorted((arguments.corpus / kind).glob("[!.]*")), arguments.sample)
            groups.append((f"corpus .{kind}", paths, bars.CORPUS))
    if arguments.pictures:
        arguments.pictures.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(prefix="orrery-look-") as scratch:
        session = OfficeSession(scratch)
        try:
            good = [compare_group(arguments, session, pathlib.Path(scratch), *group)
                    for group in groups]
        finally:
            session.close()
    if not all(good):
        return 1
    return 0 if has_corpus else without_corpus(arguments.corpus)


def read_arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cli", required=True)
    parser.add_argument("--data", required=True, type=pathlib.Path)
    parser.add_argument("--corpus", type=pathlib.Path)
    parser.add_argument("--kind", action="append", choices=("xlsx", "xls"))
    parser.add_argument("--sample", type=int)
    parser.add_argument("--only")
    parser.add_argument("--report", type=pathlib.Path)
    parser.add_argument("--pictures", type=pathlib.Path)
    return parser.parse_args()


def compare_group(arguments, session, folder, title, paths, bar):
    """Compares workbooks and reports. Whether no bar is missed."""
    tallies = {}
    for path in paths:
        if arguments.only and arguments.only not in path.name:
            continue
        try:
            tallies[path.name] = compare_workbook(arguments.cli, session, path, folder,
                                                  arguments.pictures)
        except Failed as error:
            print(f"{path.name} does not count: LibreOffice {error}")
            session.restart()
    if not tallies:
        return True
    is_sample = bar == bars.CORPUS and bool(arguments.sample or arguments.only)
    result = bars.Result(title, tallies, bar, known_misses.KNOWN, is_sample)
    if arguments.report:
        with arguments.report.open("a", encoding="utf-8") as out:
            result.report(out)
    return result.report(sys.stdout)


if __name__ == "__main__":
    sys.exit(main())
