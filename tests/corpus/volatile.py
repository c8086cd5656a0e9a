"""Formula cells whose values change by themselves: with the clock, or by chance."""

import re

from opc import area_bounds, inside

_CHANGING = re.compile(r"(?i)(?<![\w.])(?:NOW|TODAY|RAND|RANDBETWEEN)\(")
_TEXT = re.compile(r'"(?:[^"]|"")*"')
_CELLS = re.compile(r"(?:('(?:[^']|'')+'|[\w.\u00a1-\uffff]+)!)?"
                    r"(?<![\w.])(\$?[A-Z]{1,3}\$?\d+(?::\$?[A-Z]{1,3}\$?\d+)?)(?![\w.(])")


def changing_cells(formulas):
    """Those of the formula cells that change, and those that read one, at however many removes.
    `formulas` has the text of each by (sheet, position)."""
    fresh = {key for key, text in formulas.items() if _CHANGING.search(_TEXT.sub("", text))}
    changing, reads = set(fresh), None
    while fresh:
        if reads is None:
            reads = {key: list(_reads(key[0], text)) for key, text in formulas.items()}
        fresh = {key for key, areas in reads.items() if key not in changing
                 and any(_reads_one(area, fresh) for area in areas)}
        changing |= fresh
    return changing


def _reads(own, text):
    for sheet, area in _CELLS.findall(_TEXT.sub("", text)):
        name = sheet[1:-1].replace("''", "'") if sheet.startswith("'") else sheet
        yield (name or own).casefold(), area_bounds(area.replace("$", ""))


def _reads_one(area, cells):
    return any(sheet.casefold() == area[0] and inside(where, area[1]) for sheet, where in cells)
