"""Facts about an .xls sheet's cells, rows, columns, rules and validations."""
import struct

import xls_book as biff
from facts import Near
from opc import cell_name
from xls_places import CF, DV, formulas_of

ROWS, COLUMNS = range(1, 61), range(1, 27)  # what is looked at for formats
CALENDAR = (41, 48)  # rows that the calendar writes
_ARRAY, _PATTERNED, _FORMATTED_ROW, _FORMATTED_COLUMN = ((7, 4), (8, 4)), (4, 3), 12, 16
_RULES = {(0, 9, 1, 1): "formula", (0, 9, 2, 2): "comparison"}
_CALCULATED = {(row, 4) for row in range(1, 9)} | {(row, 12) for row in (2, 3, 4)} | {(5, 11)}
_DATE = (7, 1)


def _outside_calendar(sheet):
    return {where: cell for where, cell in sheet.raw.cells.items()
            if not CALENDAR[0] <= where[0] <= CALENDAR[1]}


def values(sheet):
    facts = {}
    for where, cell in sorted(_outside_calendar(sheet).items()):
        if cell.kind not in ("blank", "formula") and where not in _CALCULATED:
            kind = "dates" if where == _DATE else f"{cell.kind} cells"
            facts.setdefault(kind, {})[cell_name(where)] = cell.value
    return facts


def rich_text(sheet):
    runs = {cell_name(where): len(sheet.book.strings.rests[cell.string]) // 4
            for where, cell in _outside_calendar(sheet).items() if cell.string >= 0
            and sheet.book.strings.rests[cell.string]}
    return {"runs of text": runs}


def formulas(sheet):
    found = sheet.raw.formulas
    named = {"plain formulas": (1, 4), "formulas that name their sheet": (2, 4),
             "formulas over another sheet": (3, 4),
             "formulas with a workbook's name": (4, 4), "formulas with a sheet's name": (5, 4)}
    facts = {what: sheet.spell(found[where][0]) for what, where in named.items() if where in found}
    facts["array formulas"] = [(sheet.spell(found[where][0]), found[where][2]) for where in _ARRAY
                               if where in found and found[where][2]]
    return facts


def formats(sheet):
    facts = {}
    for row in ROWS:
        for column in COLUMNS:
            for aspect, value in sheet.book.format(sheet.raw.style_at((row, column))).items():
                if aspect == "fonts" and (row, column) not in sheet.raw.cells:
                    continue  # what plain cells look like is the library's own
                if value is not None and ((row, column) == _PATTERNED) == ("pattern" in aspect):
                    what = ("formats of rows" if row == _FORMATTED_ROW and column > 4 else
                            "formats of columns" if column == _FORMATTED_COLUMN else aspect)
                    facts.setdefault(what, {})[cell_name((row, column)), aspect] = value
    return facts


def _columns(sheet):
    for data in sheet.all_of(0x7D):
        first, last, width, _, flags = struct.unpack_from("<5H", data)
        for number in range(first + 1, min(last, 25) + 2):
            yield number, width / 256, flags


def columns(sheet):
    found = list(_columns(sheet))
    return {"widths": {number: Near(width, 0.8) for number, width, _ in found
                       if abs(width - 9) > 1.2},
            "hidden columns": [number for number, _, flags in found if flags & 1]}


def _row_flags(sheet):
    for number, row in sheet.raw.rows.items():
        if number in ROWS:
            height, = struct.unpack_from("<H", row.rest)
            yield number, height, struct.unpack_from("<H", row.rest, 6)[0]


def rows(sheet):
    return {"heights": {number: Near(height / 20, 0.6)
                        for number, height, flags in _row_flags(sheet)
                        if flags & 0x40 and not flags & 0x20 and abs(height - 300) > 10},
            "hidden rows": [number for number, _, flags in _row_flags(sheet) if flags & 0x20]}


def outline(sheet):
    levels = {number: flags & 7 for number, _, flags in _row_flags(sheet) if flags & 7}
    across = {number: flags >> 8 & 7 for number, _, flags in _columns(sheet) if flags >> 8 & 7}
    return {"levels of rows": levels, "levels of columns": across}


def merges(sheet):
    return {"merged cells": sorted(sheet.raw.merges)}


# ------------------------------------------------------------ rules and validations

def rules(sheet):
    facts, what = {}, None
    for record in sheet.raw.own:
        if record.type == 0x1B0:
            what = _RULES.get(struct.unpack_from("<4H", record.data, 14)) \
                if len(record.data) >= 22 else None
        elif record.type == CF and what and record.data:
            formulas_ = [sheet.spell(tokens) for tokens in formulas_of(record)]
            facts[what] = record.data[:2], formulas_, record.data[6:10]
    return facts


def later_rules(sheet):
    return {"bars": [(record.data[4:12], record.data[12]) for record in sheet.raw.own
                     if record.type == 0x87A]}


def validations(sheet):
    facts = {}
    for record in sheet.raw.own:
        if record.type != DV:
            continue
        flags, = struct.unpack_from("<I", record.data)
        where = struct.unpack_from("<4H", record.data, len(record.data) - 8)
        what = {0: "list", 1: "whole numbers", 2: "formula", 3: "dates",
                4: "a list over another sheet"}.get(where[0])
        at, texts = 4, []
        for _ in range(4):
            count, wide = struct.unpack_from("<HB", record.data, at)
            text, at = biff.unicode_text(record.data, at + 3, count, wide & 1)
            texts.append(text.strip("\0"))
        tokens = [sheet.spell(each) for each in formulas_of(record)]
        facts[what] = flags & 0x7F, flags >> 20 & 15, texts, tokens[:2 if what == "whole numbers"
                                                                    else 1]
    return facts


