#!/usr/bin/env python3
"""Compares how sheets look, as the command look tells it, with what LibreOffice makes of them.

usage: check_sheets.py --cli PROGRAM --data FOLDER [--corpus FOLDER] [--sample N] [--only TEXT]
                       [--report FILE] [--pictures FOLDER]

Looks at the visible sheets of the shipped templates and of the corpus's workbooks, and fails if a bar
below is missed. A workbook that LibreOffice does not open, or that asks for a password, does not count
and is named.
"""

import argparse
import json
import pathlib
import statistics
import subprocess
import sys
import tempfile

import page_pictures
import known_differences
import office_sheets
from office_session import Failed, OfficeSession

CELLS = 1500         # looked at on each sheet
SHEETS = 6           # of each workbook
PICTURE = 4_000_000  # pixels of a picture at most; larger sheets are cut
# Share of what is compared, for the corpus and for the shipped templates.
BARS = {
    "sizes": ("workbooks with 99 % of cells of the right size", 0.90, 1.0),
    "edges": ("workbooks with 99 % of cells at the right place", 0.92, 1.0),
    "texts": ("cells with the right text", 0.99, 1.0),
    "words": ("words inside of their cells", 0.98, 0.98),
    "fills": ("cells with the right colour", 0.99, 1.0),
    "similarity": ("median similarity of pictures", 0.90, 0.95),
}


class Tally:
    """What was compared of one workbook or of many."""

    def __init__(self):
        self.right = dict.fromkeys(("sizes", "edges", "texts", "words", "fills"), 0)
        self.all = dict.fromkeys(self.right, 0)
        self.similarities = []
        self.notes = []

    def count(self, what, is_right, note=None):
        self.all[what] += 1
        self.right[what] += bool(is_right)
        if not is_right and note and sum(n.startswith(what) for n in self.notes) < 5:
            self.notes.append(f"{what}: {note}")

    def share(self, what):
        return self.right[what] / self.all[what] if self.all[what] else 1.0


def look(cli, path, sheet, svg=None):
    command = [cli, "look", str(path), "--sheet", sheet, "--json"]
    if svg:
        command += ["--svg", str(svg)]
    result = subprocess.run(command, capture_output=True, timeout=120)
    answer = json.loads(result.stdout.decode("utf-8"))
    if "cells" not in answer:
        raise ValueError("; ".join(answer.get("reports", ["no answer"])))
    return answer


def compare_cells(tally, sheet, ours, name):
    """Compares cells. Gives what each shows in LibreOffice, by its address."""
    shown = {}
    cells = {cell["cell"]: cell for cell in ours["cells"][:CELLS]}
    mirrored = bool(sheet.getPropertyValue("TableLayout"))
    for address, cell in cells.items():
        box, text = office_sheets.measure(sheet, *office_sheets.address_of(address))
        shown[address] = text
        where = f"{name}!{address}"
        sizes = all(abs(a - b) <= 1 for a, b in zip(cell["box"][2:], box[2:]))
        tally.count("sizes", sizes, f"{where} {cell['box'][2:]} not {_rounded(box[2:])}")
        if not mirrored:
            edges = all(abs(a - b) <= max(2, 0.005 * abs(b))
                        for a, b in zip(_corners(cell["box"]), _corners(box)))
            tally.count("edges", edges, f"{where} {cell['box']} not {_rounded(box)}")
        if not known_differences.means_something_else(sheet, address, text):
            tally.count("texts", known_differences.is_equal(cell["text"], text),
                        f"{where} {cell['text']!r} not {text!r}")
    if len(ours["cells"]) <= CELLS:
        for column, row in office_sheets.filled_cells(sheet, CELLS):
            address = office_sheets.text_of(column, row)
            cell = sheet.getCellByPosition(column, row)
            if address not in cells and cell.String.strip() \
                    and not known_differences.means_something_else(sheet, address, cell.String) \
                    and not _is_hidden(sheet, column, row):
                tally.count("texts", False, f"{name}!{address} '' not {cell.String!r}")
    return shown


def compare_pictures(tally, document, sheet, ours, shown, folder, svg):
    name = sheet.Name
    last = _last_cell(ours)
    pdf = folder / "page.pdf"
    if last is None or not office_sheets.save_page(document, sheet, last, pdf):
        return
    first = office_sheets.address_of(ours["range"].split(":")[0])
    columns, rows = ours["columns"], ours["rows"]
    drawn = page_pictures.from_svg(svg, *_corner(ours),
                                   round(columns[last[0] - first[0] + 1] - columns[0]) + 1,
                                   round(rows[last[1] - first[1] + 1] - rows[0]) + 1)
    theirs = page_pictures.from_pdf(pdf)
    tally.similarities.append((page_pictures.similarity(drawn, theirs), name))
    for cell in ours["cells"][:CELLS]:
        box = cell["box"]
        if box[0] + box[2] > min(drawn.shape[1], theirs.shape[1]) or \
                box[1] + box[3] > min(drawn.shape[0], theirs.shape[0]):
            continue
        one, other = (page_pictures.background(each, box) for each in (drawn, theirs))
        if one is not None and other is not None:
            tally.count("fills", abs(one - other).max() <= 8,
                        f"{name}!{cell['cell']} {list(one)} not {list(other)}")
    _compare_words(tally, ours, shown, page_pictures.words_of(pdf), name)


def _compare_words(tally, ours, shown, words, name):
    places = {}
    broken = []
    for cell in ours["cells"]:
        texts = cell["text"].split()
        # A word that differs in LibreOffice is wrong as a text, not for its place.
        for word in {*texts, *shown.get(cell["cell"], "").split()}:
            places.setdefault(word, []).append(cell["clip"])
        if cell["wrap"]:
            broken += [(word, cell["clip"]) for word in texts]
    for box, word in words:
        if word not in places or any(_shows(drawing["box"], box) for drawing in ours["drawings"]):
            continue  # part of a broken word, or of a drawing
        inside = any(_shows(place, box) for place in places[word]) \
            or any(word in whole and _shows(place, box) for whole, place in broken)
        tally.count("words", inside, f"{name} {word!r} at {[round(number) for number in box]}")


def _shows(place, word):
    """Whether a word stands in a place: its centre does, or any part of it where the place is too
    small for it, since words of a PDF have the size that they had if nothing cut them off."""
    for start, size, low, high in zip(place[:2], place[2:], word[:2], word[2:]):
        if high - low > size:
            inside = low < start + size and start < high
        else:
            inside = start - 1 <= (low + high) / 2 <= start + size + 1
        if not inside:
            return False
    return True


def _corner(ours):
    return round(ours["columns"][0]), round(ours["rows"][0])


def _last_cell(ours):
    """The last cell of the range, or of so much of it as a picture may have."""
    last = office_sheets.address_of(ours["range"].split(":")[-1])
    first = office_sheets.address_of(ours["range"].split(":")[0])
    columns, rows = ours["columns"], ours["rows"]
    while len(rows) > 2 and (columns[-1] - columns[0]) * (rows[-1] - rows[0]) > PICTURE:
        rows = rows[:len(rows) // 2 + 1]
    if (columns[-1] - columns[0]) * (rows[-1] - rows[0]) > PICTURE:
        return None
    return min(last[0], first[0] + len(columns) - 2), min(last[1], first[1] + len(rows) - 2)


def _corners(box):
    return box[0], box[1], box[0] + box[2], box[1] + box[3]


def _rounded(box):
    return [round(number, 1) for number in box]


def _is_hidden(sheet, column, row):
    return not (sheet.Columns.getByIndex(column).IsVisible and sheet.Rows.getByIndex(row).IsVisible)


def compare_workbook(cli, session, path, folder, pictures):
    tally = Tally()
    copy = folder / f"workbook{path.suffix}"  # LibreOffice locks what it opens
    copy.write_bytes(path.read_bytes())

    def compare(document):
        for sheet in office_sheets.visible_sheets(document)[:SHEETS]:
            compare_sheet(tally, cli, document, sheet, path, folder)
            if pictures:
                _keep(pictures, path, sheet.Name, folder)

    session.with_document(copy, compare)
    return tally


def compare_sheet(tally, cli, document, sheet, path, folder):
    svg = folder / "page.svg"
    for old in folder.glob("*.p*"):
        old.unlink()
    try:
        ours = look(cli, path, sheet.Name, svg)
    except ValueError as error:
        tally.notes.append(f"look: {sheet.Name}: {error}")
        tally.count("texts", False)
        return
    if ours["cells"] or ours["drawings"]:
        shown = compare_cells(tally, sheet, ours, sheet.Name)
        compare_pictures(tally, document, sheet, ours, shown, folder, svg)


def _keep(pictures, path, sheet, folder):
    stem = f"{path.name}-{sheet}".replace("/", "_")
    for part, ending in (("drawn.ppm", "ours.ppm"), ("page.ppm", "theirs.ppm")):
        if (folder / part).exists():
            (pictures / f"{stem}-{ending}").write_bytes((folder / part).read_bytes())


def summary(tallies):
    """Figures of several workbooks, by the names of the bars."""
    counted = [tally for tally in tallies.values() if tally.all["texts"]]
    figures = {}
    for what in ("sizes", "edges"):
        figures[what] = sum(tally.share(what) >= 0.99 for tally in counted) / max(1, len(counted))
    for what in ("texts", "words", "fills"):
        figures[what] = (sum(tally.right[what] for tally in counted)
                         / max(1, sum(tally.all[what] for tally in counted)))
    similarities = [value for tally in counted for value, _ in tally.similarities]
    figures["similarity"] = statistics.median(similarities) if similarities else 1.0
    return figures


def sample(paths, count):
    """So many of the paths, spread over all of them."""
    if not count or count >= len(paths):
        return paths
    return [paths[index * len(paths) // count] for index in range(count)]


def report(title, tallies, bar, out):
    figures = summary(tallies)
    good = True
    print(f"{title}: {len(tallies)} workbooks, "
          f"{sum(tally.all['texts'] for tally in tallies.values())} cells", file=out)
    for what, value in figures.items():
        words, *bars = BARS[what]
        ok = value >= bars[bar]
        good &= ok
        print(f"  {'' if ok else 'MISSED '}{words}: {value:.1%} (bar {bars[bar]:.0%})", file=out)
    for name, tally in sorted(tallies.items()):
        for note in tally.notes:
            print(f"    {name}: {note}", file=out)
        for value, sheet in tally.similarities:
            if value < 0.9:
                print(f"    {name}: similarity of {sheet}: {value:.3f}", file=out)
    return good


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cli", required=True)
    parser.add_argument("--data", required=True, type=pathlib.Path)
    parser.add_argument("--corpus", type=pathlib.Path)
    parser.add_argument("--sample", type=int)
    parser.add_argument("--only")
    parser.add_argument("--report", type=pathlib.Path)
    parser.add_argument("--pictures", type=pathlib.Path)
    arguments = parser.parse_args()
    groups = [("templates", sorted(arguments.data.glob("template/*.xls*")), 1)]
    if arguments.corpus and arguments.corpus.is_dir():
        for kind in ("xlsx", "xls"):
            paths = sorted((arguments.corpus / kind).iterdir())
            groups.append((f"corpus .{kind}", sample(paths, arguments.sample), 0))
    if arguments.pictures:
        arguments.pictures.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(prefix="orrery-look-") as scratch:
        session = OfficeSession(scratch)
        try:
            good = [compare_group(arguments, session, pathlib.Path(scratch), *group)
                    for group in groups]
        finally:
            session.close()
    return 0 if all(good) else 1


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
    if arguments.report:
        with arguments.report.open("a", encoding="utf-8") as out:
            report(title, tallies, bar, out)
    return report(title, tallies, bar, sys.stdout)


if __name__ == "__main__":
    sys.exit(main())
