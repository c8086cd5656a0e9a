"""What became of the workbooks of a corpus, and how it is reported."""

import functools
import importlib.util
import os
import subprocess
import time
import traceback
from collections import Counter
from dataclasses import dataclass, field

SHOWN = 8  # failures of one file that are printed


@dataclass
class Result:
    """What became of one file."""

    file: str
    failures: list = field(default_factory=list)
    unjudged: list = field(default_factory=list)
    counted: Counter = field(default_factory=Counter)
    edited: str = ""  # path of the edited workbook; empty when there is none
    plan: object = None
    merges: list = field(default_factory=list)
    sheet_names: list = field(default_factory=list)
    has_pivots: bool = False
    seconds: float = 0
    message: str = ""  # what the driver said when it refused the file


class Case:
    """One workbook of the corpus, saved unchanged and edited by the driver; see `_run`."""

    def __init__(self, options, row):
        self.options, self.row = options, row
        self.path = os.path.join(options.corpus, row["file"])
        self.result = Result(row["file"])
        self.same, self.edited, self.plan_path = map(self._place, ("same", "edited", "plans"))

    def _place(self, folder):
        """Where a file of this workbook lies in a folder of the work."""
        return os.path.join(self.options.work, folder, os.path.basename(self.path))

    def run(self):
        begin = time.monotonic()
        try:
            self._run()
        except Exception:  # whatever breaks a check is a failure of this file
            self._fail(f"the check itself broke: {traceback.format_exc(limit=-4)}")
        self.result.seconds = time.monotonic() - begin
        return self.result

    def _run(self):
        raise NotImplementedError

    def _fail(self, what):
        self.result.failures.append(what)

    def _count(self, plan):
        counted = self.result.counted
        counted["edited"] += 1
        counted["sheets written"] += len(plan.sheets)
        counted["cells written"] += sum(len(sheet.written) for sheet in plan.sheets)
        counted["cells refused"] += sum(len(sheet.refused) for sheet in plan.sheets)

    def _drive(self, *arguments):
        """What the driver printed; None, and a failure, where it ended with an error."""
        done = subprocess.run([*self.options.driver, *arguments], stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, timeout=120, check=False,
                              encoding="utf-8")
        if done.returncode:
            self._fail(f"{arguments[0]} ended with {done.returncode}: {done.stderr.strip()[:300]}")
            return None
        return done.stdout


def report(results):
    """Prints failures, what was not judged and the table of counts; returns the failed files."""
    total = Counter()
    for result in results:
        total.update(result.counted)
        for failure in result.failures[:SHOWN]:
            print(f"FAILED {result.file}: {failure}")
        if len(result.failures) > SHOWN:
            print(f"FAILED {result.file}: and {len(result.failures) - SHOWN} failures more")
    for result in results:
        if result.unjudged:
            print(f"not judged by {' and '.join(result.unjudged)}: {result.file}")
    print(f"\n{'files':<40}{len(results):>10}")
    for what, count in sorted(total.items()):
        print(f"{what:<40}{count:>10}")
    slowest = max(results, key=lambda result: result.seconds, default=None)
    if slowest:
        print(f"{'slowest file':<40}{slowest.seconds:>9.1f}s {slowest.file}")
    failed = [result for result in results if result.failures]
    print(f"{'files with failures':<40}{len(failed):>10}")
    return failed


def feature_failures(corpus, paths, grown, may_go):
    """What the corpus's own counter says of the workbook before and after: totals grow by what the
    copies own (`grown`, by the counter's words), and no feature goes but those that may."""
    features = _load_features(corpus)
    if features is None:
        return
    before, after = map(features.features, paths)
    known = {*before["features"], *before["problems"]}
    for key, count in grown.items():
        if _UNCOUNTED.get(key) in known:
            continue
        expected = before["counts"].get(key, 0) + count
        if after["counts"].get(key, 0) != expected:
            yield f"corpus_features counts {after['counts'].get(key, 0)} {key}, " \
                  f"should be {expected}"
    gone = set(before["features"]) - set(after["features"]) - may_go
    if gone:
        yield f"corpus_features finds no {sorted(gone)} any more"


# It counts charts of the older kind alone, and no objects that do not begin as they do.
_UNCOUNTED = {"charts": "charts_ex", "objects": "OBJ without ftCmo"}


@functools.cache
def _load_features(corpus):
    """The corpus's counter, which lies in the folder beside it; None where it does not."""
    path = os.path.join(os.path.dirname(os.path.abspath(corpus)), "tools", "corpus_features.py")
    if not os.path.exists(path):
        print("corpus_features.py is not beside the corpus: its counts are not compared")
        return None
    spec = importlib.util.spec_from_file_location("corpus_features", path)
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module
