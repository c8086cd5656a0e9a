"""What was compared of workbooks, and the bars for it."""

import statistics

# Share of what is compared: for the corpus, for the shipped templates, and for each workbook.
BARS = {
    "sizes": ("workbooks with 99 % of cells of the right size", 0.90, 1.0, 0.99),
    "edges": ("workbooks with 99 % of cells at the right place", 0.92, 1.0, 0.99),
    "texts": ("cells with the right text", 0.99, 1.0, 0.99),
    "words": ("words inside of their cells", 0.98, 0.98, 0.98),
    "fills": ("cells with the right colour", 0.99, 1.0, 0.99),
    "similarity": ("median similarity of pictures", 0.90, 0.95, 0.0),
}
CORPUS, TEMPLATES, WORKBOOK = 1, 2, 3  # where the bars of each stand
SHARES = ("sizes", "edges", "texts", "words", "fills")
_NOTES = 5  # of each workbook and each kind


class Tally:
    """What was compared of one workbook."""

    def __init__(self):
        self.right = dict.fromkeys(SHARES, 0)
        self.all = dict.fromkeys(SHARES, 0)
        self.similarities = []
        self.notes = []

    def count(self, what, is_right, note=None):
        self.all[what] += 1
        self.right[what] += bool(is_right)
        if not is_right and note and sum(n.startswith(what) for n in self.notes) < _NOTES:
            self.notes.append(f"{what}: {note}")

    def share(self, what):
        return self.right[what] / self.all[what] if self.all[what] else 1.0

    def missed(self):
        """What of this workbook is below the bar for one workbook."""
        return [what for what in SHARES if self.share(what) < BARS[what][WORKBOOK]]


def summary(tallies):
    """Figures of several workbooks, by the names of the bars."""
    counted = [tally for tally in tallies.values() if tally.all["texts"]]
    figures = {}
    for what in ("sizes", "edges"):
        bar = BARS[what][WORKBOOK]
        figures[what] = sum(tally.share(what) >= bar for tally in counted) / max(1, len(counted))
    for what in ("texts", "words", "fills"):
        figures[what] = (sum(tally.right[what] for tally in counted)
                         / max(1, sum(tally.all[what] for tally in counted)))
    similarities = [value for tally in counted for value, _ in tally.similarities]
    figures["similarity"] = statistics.median(similarities) if similarities else 1.0
    return figures


class Result:
    """What a group of workbooks has reached. `known` are the reasons for what a workbook misses."""

    def __init__(self, title, tallies, bar, known, is_sample):
        self._title = title
        self._tallies = tallies
        self._bar = bar
        self._known = known
        self._is_sample = is_sample

    def report(self, out):
        """Prints the figures. Whether no bar is missed: those of all, unless it is a sample, and those
        of each workbook but for the known ones."""
        counts = ", ".join(f"{sum(tally.all[what] for tally in self._tallies.values())} {what}"
                           for what in SHARES)
        print(f"{self._title}: {len(self._tallies)} workbooks, {counts}", file=out)
        good = self._report_bars(out)
        for name, tally in sorted(self._tallies.items()):
            good &= self._report_misses(name, tally, out)
            for note in tally.notes:
                print(f"    {name}: {note}", file=out)
            for value, sheet in tally.similarities:
                if value < BARS["similarity"][CORPUS]:
                    print(f"    {name}: similarity of {sheet}: {value:.3f}", file=out)
        return good

    def _report_bars(self, out):
        good = True
        for what, value in summary(self._tallies).items():
            words, bar = BARS[what][0], BARS[what][self._bar]
            ok = value >= bar
            good &= ok or self._is_sample
            mark = "" if ok else "below the bar: " if self._is_sample else "MISSED "
            print(f"  {mark}{words}: {value:.1%} (bar {bar:.0%})", file=out)
        return good

    def _report_misses(self, name, tally, out):
        good = True
        for what in tally.missed():
            reason = self._known.get(name, {}).get(what)
            good &= reason is not None
            print(f"    {name}: {'known' if reason else 'MISSED'}: {what} {tally.share(what):.1%} of "
                  f"{tally.all[what]}{': ' if reason else ''}{reason or ''}", file=out)
        return good
