"""Formula cells whose values change by themselves, with the clock or by chance, and what reads a
cell."""

import re
from collections import defaultdict

from opc import area_bounds, inside

_CHANGING = re.compile(r"(?i)(?<![\w.])(?:NOW|TODAY|RAND|RANDBETWEEN)\(")
_TEXT = re.compile(r'"(?:[^"]|"")*"')
_CELLS = re.compile(r"(?:('(?:[^']|'')+'|[\w.\u00a1-\uffff]+)!)?"
                    r"(?<![\w.])(\$?[A-Z]{1,3}\$?\d+(?::\$?[A-Z]{1,3}\$?\d+)?)(?![\w.(])")


def changing_cells(formulas):
    """Those of the formula cells that change, and those that read one, at however many removes.
    `formulas` has the text of each by (sheet, position)."""
    changing = {key for key, text in formulas.items() if _CHANGING.search(_TEXT.sub("", text))}
    return changing | readers_of(formulas, changing)


def readers_of(formulas, cells):
    """The formula cells that read one of the cells, at however many removes."""
    if not cells:
        return set()
    reads = {key: list(_reads(key[0], text)) for key, text in formulas.items()}
    readers, fresh = set(), set(cells)
    while fresh:
        places = defaultdict(set)
        for sheet, where in fresh:
            places[sheet.casefold()].add(where)
        fresh = {key for key, areas in reads.items() if key not in readers
                 and any(_holds_one(bounds, places[sheet]) for sheet, bounds in areas
                         if sheet in places)}
        readers |= fresh
    return readers


def _reads(own, text):
    for sheet, area in _CELLS.findall(_TEXT.sub("", text)):
        name = sheet[1:-1].replace("''", "'") if sheet.startswith("'") else sheet
        yield (name or own).casefold(), area_bounds(area.replace("$", ""))


def _holds_one(bounds, places):
    if bounds[:2] == bounds[2:]:
        return bounds[:2] in places
    return any(inside(where, bounds) for where in places)
