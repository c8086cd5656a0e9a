"""Compares the values of the formulas of real workbooks with those that LibreOffice computes.

Left out are formulas that change by themselves or that read another workbook, and whatever reads
such a cell. Where LibreOffice differs, the result that is stored in the file decides, since nearly
all the files were written by Excel. What differs from both must be in the list of known ones.
"""

import pathlib
import argparse
import csv
import json
import os
import re
import select
import shutil
import signal
import subprocess
import sys
import tempfile
from collections import Counter

_HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.append(os.path.join(_HERE, "..", "..", "corpus"))
from sample import sample  # noqa: E402
from volatile import readers_of  # noqa: E402

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "places"))
from corpus_status import without_corpus  # noqa: E402

_WANTED = 0.99  # share of the formulas that are compared with LibreOffice
_SECONDS, _LONGEST_START = 120, 90
_NOW = 46349.5
_CHANGING = re.compile(r"(?i)(?<![\w.])(?:NOW|TODAY|RAND|RANDBETWEEN|INFO|CELL)\(")
_EXTERNAL = re.compile(r"\[\d+\]|\[[^\]]*\.xl\w+\]")
_TEXT = re.compile(r'"(?:[^"]|"")*"')
# What LibreOffice's numbers of errors are called; others are its own.
_ERRORS = {502: "#VALUE!", 503: "#NUM!", 504: "#REF!", 519: "#VALUE!", 521: "#NULL!",
           524: "#REF!", 525: "#NAME?", 532: "#DIV/0!", 32767: "#N/A"}
# (beginning of the formula, reason): differences from both.
_KNOWN = [
    ("DOLLAR(", "the currency is that of the system that computes"),
    ("WEEKNUM(DATE(2013,1,1),-1)", "versions before 2010 took any number for the kind of week"),
    ("MODE(", "one copy of the file holds another program's results"),
    ("SUM(H187,-H194)", "of two errors Excel takes the one that an operator gave"),
    ("H$195-H$200", "reads the SUM of two errors"),
]


class Office:
    """LibreOffice, which is started again when a workbook has ended it."""

    def __init__(self):
        self.folder, self.process = tempfile.mkdtemp(prefix="formulas-"), None

    def values(self, path):
        """What office_values.py prints of a workbook; None where LibreOffice does not open it."""
        if not self.process:
            self._start()
        self.process.stdin.write(path.encode() + b"\n")
        self.process.stdin.flush()
        line = self._line(_SECONDS)
        if not line:
            self._stop()
            return None
        return json.loads(line)

    def close(self):
        self._stop()
        shutil.rmtree(self.folder, ignore_errors=True)

    def _start(self):
        profile = tempfile.mkdtemp(dir=self.folder)
        self.process = subprocess.Popen(
            [sys.executable, "-B", os.path.join(_HERE, "office_values.py"), profile],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
            start_new_session=True)
        if not self._line(_LONGEST_START):
            raise RuntimeError("LibreOffice does not start")

    def _line(self, seconds):
        ready, _, _ = select.select([self.process.stdout], [], [], seconds)
        return self.process.stdout.readline() if ready else b""

    def _stop(self):
        if self.process:
            os.killpg(self.process.pid, signal.SIGKILL)
            self.process.wait()
            self.process.stdin.close()
            self.process.stdout.close()
            self.process = None


def same(left, right):
    """Whether two values are equal: numbers to nine digits, logical values as numbers."""
    left, right = (float(value) if isinstance(value, bool) else value for value in (left, right))
    if isinstance(left, (int, float)) and isinstance(right, (int, float)):
        return abs(left - right) <= max(1e-9 * max(abs(left), abs(right)), 1e-12)
    return left == right


def left_out(book):
    """Keys of the formulas that are not compared: names of sheets and positions."""
    formulas = {(book["sheets"][sheet], (row, column)): _TEXT.sub('""', text)
                for sheet, row, column, text, *_ in book["cells"]}
    changing = {key for key, text in formulas.items()
                if _CHANGING.search(text) or _EXTERNAL.search(text)}
    return changing | readers_of(formulas, changing)


def judge(book, office, counted):
    """The formulas of a workbook that differ without a known reason."""
    theirs = {tuple(cell[:3]): cell[4] for cell in office}
    outside = left_out(book)
    for sheet, row, column, text, source, value, stored in book["cells"]:
        if (book["sheets"][sheet], (row, column)) in outside:
            counted["left out"] += 1
            continue
        expected = theirs.get((sheet, row, column))
        if source != "computed":
            is_theirs = not isinstance(expected, dict)
            counted["not computed" if is_theirs else "computed by neither"] += 1
            yield sheet, row, column, text, source, expected, stored
            continue
        if isinstance(expected, dict):
            expected = {"error": _ERRORS.get(expected["error"], str(expected["error"]))}
        if same(value, expected):
            counted["as LibreOffice"] += 1
        elif same(value, stored):
            counted["as stored, LibreOffice differs"] += 1
        elif any(text.startswith(begin) for begin, _ in _KNOWN):
            counted["known"] += 1
        else:
            counted["different"] += 1
            yield sheet, row, column, text, value, expected, stored


def workbooks(corpus, count):
    with open(os.path.join(corpus, "MANIFEST.tsv"), encoding="utf-8", newline="") as manifest:
        rows = [row for row in csv.DictReader(manifest, delimiter="\t")
                if row["file"].split("/")[0] in ("xls", "xlsx")]
    chosen = sample(rows, count) if count else rows
    return [os.path.join(corpus, row["file"]) for row in chosen]


def compare(options, office, dump):
    counted, functions, unknown = Counter(), Counter(), Counter()
    for path in workbooks(options.corpus, options.sample):
        dump.stdin.write(path.encode() + b"\n")
        dump.stdin.flush()
        line = dump.stdout.readline()
        if not line:
            print(f"FAILED {path}: the program ended")
            return Counter({"different": 1})
        book = json.loads(line)
        if not book or not book["cells"]:
            counted["files without formulas" if book else "files not opened"] += 1
            continue
        theirs = office.values(path)
        if theirs is None:
            counted["files that LibreOffice does not open"] += 1
            continue
        for found in judge(book, theirs, counted):
            if found[4] in ("stored", "not computed"):
                unknown[os.path.basename(path)] += 1
            else:
                print(f"{os.path.basename(path)}: {found}")
        for cell in book["cells"]:
            functions.update(set(re.findall(r"([A-Z][\w.]*)\(", _TEXT.sub("", cell[3]))))
    for name, count in unknown.most_common():
        print(f"{name}: {count} formulas not computed")
    print(f"{len(functions)} functions")
    return counted


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("dump")
    parser.add_argument("--corpus", required=True)
    parser.add_argument("--sample", type=int, default=0, help="files; 0 is all")
    options = parser.parse_args()
    if not os.path.isdir(options.corpus):
        return without_corpus(options.corpus)
    office = Office()
    dump = subprocess.Popen([options.dump, str(_NOW)], stdin=subprocess.PIPE,
                            stdout=subprocess.PIPE)
    try:
        counted = compare(options, office, dump)
    finally:
        office.close()
        dump.stdin.close()
        dump.wait()
        dump.stdout.close()
    for name, count in counted.most_common():
        print(f"{count:7} {name}")
    equal = counted["as LibreOffice"] + counted["as stored, LibreOffice differs"]
    judged = equal + counted["different"] + counted["known"] + counted["not computed"]
    print(f"{equal / max(judged, 1):.2%} of {judged} equal")
    if not judged or equal < _WANTED * judged or counted["different"]:
        print("FAILED")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
