#!/usr/bin/env python3
"""Compares how values are shown by us, by npm's numfmt and by LibreOffice.

Every difference must be of a kind in differences.py, and every kind there must still be found. Where the
other two agree, we must agree with them, apart from the kinds in BOTH.

    check_number_formats.py PROGRAM [--corpus FOLDER]
"""

import argparse
import json
import re
import subprocess
import sys
import tempfile
from collections import Counter
from pathlib import Path

import cases
import differences
from office_reference import office_texts

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "places"))
from corpus_status import corpus_is_required  # noqa: E402

HERE = Path(__file__).resolve().parent
LEAST_PAIRS = 2000
LEAST_EQUAL = {"numfmt": 0.98, "LibreOffice": 0.95}
MOST_SHOWN = 40


def unique(pairs):
    """Each pair once: 1 and True are not the same."""
    return list({(code, type(value), value): (code, value) for code, value in pairs}.values())


def our_texts(program, pairs):
    lines = "".join(f"{code}\t{'s' if isinstance(value, str) else 'n'} {value}\n" for code, value in pairs)
    result = subprocess.run([program], input=lines, capture_output=True, text=True, check=True)
    return result.stdout.split("\n")[:-1]


def numfmt_texts(pairs):
    if not (HERE / "node_modules" / "numfmt").exists():
        sys.exit(f'numfmt is not installed: run "npm install" in {HERE}')
    result = subprocess.run(["node", HERE / "reference_numfmt.mjs"], input=json.dumps(pairs),
                            capture_output=True, text=True, check=True)
    return json.loads(result.stdout)


def narrow_blanks(code):
    """LibreOffice writes wide blanks as several spaces, we and numfmt as one."""
    return re.sub(r'("[^"]*"|\\.|\*.)|_.', lambda match: match[1] or "_-", code)


class Comparison:
    """Our texts against those of one other program."""

    def __init__(self, name, kinds):
        self.name = name
        self.kinds = [*kinds, *differences.BOTH]
        self.found = Counter()
        self.unexplained = []
        self.count = 0

    def take(self, code, value, ours, other):
        self.count += 1
        if ours == other:
            return
        kind = next((kind for kind in self.kinds if kind.holds(code, value, ours, other)), None)
        if kind:
            self.found[kind] += 1
        else:
            self.unexplained.append((code, value, ours, other))

    def report(self, is_complete):
        """The codes of the corpus are most; the share that must be equal, and every kind, is theirs."""
        equal = 1 - (sum(self.found.values()) + len(self.unexplained)) / self.count
        print(f"{self.name}: {self.count} pairs, {equal:.2%} equal, "
              f"{sum(self.found.values())} explained, {len(self.unexplained)} unexplained")
        for code, value, ours, other in self.unexplained[:MOST_SHOWN]:
            print(f"  {code!r} {value!r}: we show {ours!r}, {self.name} {other!r}")
        stale = [kind for kind in self.kinds if not self.found[kind]] if is_complete else []
        for kind in stale:
            print(f"  not found any more: {kind.reason}")
        is_enough = equal >= LEAST_EQUAL[self.name] or not is_complete
        return not self.unexplained and not stale and is_enough


def disagreements(rows):
    """Where the others agree against us."""
    return [(code, value, ours, other) for code, value, ours, other, office in rows
            if other == office != ours
            and not any(kind.holds(code, value, ours, other) for kind in differences.BOTH)]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("program")
    parser.add_argument("--corpus", type=Path)
    arguments = parser.parse_args()
    pairs = cases.own_pairs()
    has_corpus = arguments.corpus is not None and arguments.corpus.exists()
    if has_corpus:
        pairs += cases.corpus_pairs(arguments.corpus)
    else:
        print("the corpus is absent: only our own codes are compared")
        if corpus_is_required():
            return 1
    pairs = unique(pairs)
    ours = our_texts(arguments.program, pairs)
    numfmt = numfmt_texts(pairs)
    with tempfile.TemporaryDirectory() as folder:
        office = office_texts([(narrow_blanks(code), value) for code, value in pairs], folder)
    rows = [(code, value, *texts) for (code, value), *texts in zip(pairs, ours, numfmt, office, strict=True)]

    comparisons = (Comparison("numfmt", differences.NUMFMT), Comparison("LibreOffice", differences.OFFICE))
    for code, value, our_text, numfmt_text, office_text in rows:
        comparisons[0].take(code, value, our_text, numfmt_text)
        comparisons[1].take(code, value, our_text, office_text)
    is_good = all([comparison.report(has_corpus) for comparison in comparisons])
    for code, value, our_text, other in disagreements(rows):
        print(f"  {code!r} {value!r}: we show {our_text!r}, both others {other!r}")
        is_good = False
    if len(rows) < LEAST_PAIRS:
        print(f"only {len(rows)} pairs")
        is_good = False
    return 0 if is_good else 1


if __name__ == "__main__":
    sys.exit(main())
