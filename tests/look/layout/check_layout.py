#!/usr/bin/env python3
"""Compares where cells are laid out with what LibreOffice says.

usage: check_layout.py --corpus FOLDER --dump PROGRAM [--count N] [--only TEXT]

Takes N workbooks of each format, evenly from the corpus (absent: all). A workbook agrees if the sizes
of 99 % of its cells that show something differ by at most one pixel, and the edges of 99 % by at most
two pixels or half a percent. Nine of ten workbooks must agree: LibreOffice fits some rows itself that
are stored without a height, and guesses other fonts for old Chinese files. Exit code 0: so it is; 1:
fewer agree; 77: there is no corpus.
"""

import argparse
import contextlib
import json
import pathlib
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "oracle"))
from office_session import Failed, OfficeSession  # noqa: E402

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "places"))
from corpus_status import without_corpus  # noqa: E402

PIXELS = 96 / 2540  # for a hundredth of a millimetre
MOST_CELLS = 400  # of each sheet: every call takes its time
REFUSED = object()


def evenly(items, count):
    """That many of the items, or all."""
    if not count or count >= len(items):
        return items
    return [items[i * len(items) // count] for i in range(count)]


def office_box(sheet, cell):
    """The box of a cell or merged cells in pixels, from the sheet's first cell."""
    first_row, first_column, last_row, last_column = cell
    cells = sheet.getCellRangeByPosition(first_column - 1, first_row - 1, last_column - 1, last_row - 1)
    place, size = cells.Position, cells.Size
    return [place.X * PIXELS, place.Y * PIXELS, size.Width * PIXELS, size.Height * PIXELS]


def agrees_in_size(ours, theirs):
    return all(abs(a - b) <= 1 for a, b in zip(ours[2:], theirs[2:]))


def agrees_in_place(ours, theirs):
    edges = ((ours[i] + ours[i + 2] * far, theirs[i] + theirs[i + 2] * far) for i in (0, 1) for far in (0, 1))
    return all(abs(a - b) <= max(2, 0.005 * b) for a, b in edges)


def compare(document, sheets):
    """(cells, those that agree in size, those that agree in place, the first that does not)."""
    count = sizes = places = 0
    example = ""
    for ours in sheets:
        if ours["rightToLeft"] or not document.Sheets.hasByName(ours["name"]):
            continue  # LibreOffice counts such sheets from the right
        sheet = document.Sheets.getByName(ours["name"])
        for cell in evenly(ours["cells"], MOST_CELLS):
            if cell[2] > 65536 or cell[3] > 256:
                continue
            theirs = office_box(sheet, cell[:4])
            same_size, same_place = agrees_in_size(cell[4:], theirs), agrees_in_place(cell[4:], theirs)
            count += 1
            sizes += same_size
            places += same_place
            if not (same_size and same_place) and not example:
                example = f"{ours['name']} {cell} against {[round(value, 1) for value in theirs]}"
    return count, sizes, places, example


def judge(session, dump, path):
    """None if the workbook agrees, REFUSED if one of both cannot read it, else what differs."""
    run = subprocess.run([dump, path], capture_output=True, timeout=60, check=False)
    if run.returncode != 0:
        return REFUSED
    try:
        count, sizes, places, example = session.with_document(
            path, lambda document: compare(document, json.loads(run.stdout)))
    except Failed as error:
        print(f"{path.name} does not count: LibreOffice {error}")
        session.restart()
        return REFUSED
    if sizes >= 0.99 * count and places >= 0.99 * count:
        return None
    return f"{count - sizes} sizes and {count - places} places of {count} differ: {example}"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--corpus", type=pathlib.Path, required=True)
    parser.add_argument("--dump", required=True)
    parser.add_argument("--count", type=int)
    parser.add_argument("--only", default="")
    options = parser.parse_args()
    if not options.corpus.is_dir():
        return without_corpus(options.corpus)
    paths = []
    for form in ("xlsx", "xls"):
        found = sorted(path for path in (options.corpus / form).glob("[!.]*")
                       if options.only in path.name)
        paths += evenly(found, options.count)
    judged = differing = 0
    with tempfile.TemporaryDirectory() as folder, contextlib.closing(OfficeSession(folder)) as session:
        for path in paths:
            difference = judge(session, options.dump, path)
            if difference is REFUSED:
                continue
            judged += 1
            if difference:
                differing += 1
                print(f"{path.name}: {difference}")
    print(f"{judged - differing} of {judged} workbooks agree")
    return 0 if judged and differing <= judged / 10 else 1


if __name__ == "__main__":
    sys.exit(main())
