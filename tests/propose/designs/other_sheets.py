"""The other sheets of a workbook, and the names of all."""

from . import decoys
from .names import NEUTRAL_SHEETS


class Names:
    """Gives every sheet a name that no other sheet has."""

    def __init__(self, rng, names, words):
        self._rng, self._names, self._words = rng, names, words
        # A run renames sheets after months and years.
        self._taken = {text.casefold() for text in names.months}

    def for_page(self, which):
        """A name for the sheet of a month or a year."""
        if self._rng.random() < 0.35:
            return self.take(self._rng.choice(NEUTRAL_SHEETS))
        return self.take(self._words.sheet(self._rng, which))

    def take(self, wish):
        name, number = wish[:28], 2
        while name.casefold() in self._taken:
            name, number = f"{wish[:26]} {number}", number + 1
        self._taken.add(name.casefold())
        return name


def add(rng, theme, names, words, sheet_names, sheets, labels):
    """Puts other sheets before, between and behind the pages."""
    count = rng.choices((0, 1, 2, 3), (58, 24, 12, 6))[0]
    for _ in range(count):
        sheet, what = decoys.make(rng, theme, names, words, rng.choice(("tables", "tables", "plans")))
        sheet.name = sheet_names.take(sheet.name)
        sheet.hidden = rng.random() < 0.12
        labels.append(f"also {what}")
        sheets.insert(rng.choice((0, len(sheets), len(sheets))), sheet)
    return sheets
