"""Whether the sheets of an edited .xls workbook are what the plan asks for, record by record."""

import struct
from collections import Counter

import xls_book as biff
import xls_drawing
import xls_embedded
import xls_tables
from formulas import Names
from xls_places import SOURCE
from xls_records import (compare_cells, compare_drawings, compare_records, compare_rows, is_stored,
                         written_failures)
from xls_tokens import SELF, Speller, refers_to, sheets_read

SHOWN = 6  # failures of one kind in a sheet

# Records that are counted under a name, to tell that the copies own what their model owns.
COUNTED = {0x1B8: "hyperlinks", 0x1BE: "validations", 0x1B0: "conditional formats",
           0x879: "conditional formats", 0x1C: "comments", 0x41: "panes", 0x4D: "printer settings",
           0xAF: "scenarios", 0x1AA: "custom views", 0xE9: "backgrounds", 0x9D: "autofilters",
           0x868: "shared features", 0x872: "tables", 0x878: "tables", 0xB0: "pivot tables",
           0x7D: "column widths", 0xA1: "print settings", 0x1BA: "code names",
           0x866: "header pictures", 0x1AD: "query tables"}


def count_sheet(sheet):
    """What the sheet owns, as a Counter."""
    counts = Counter(COUNTED[record.type] for record in sheet.own if record.type in COUNTED)
    counts["merges"] = len(sheet.merges)
    counts["charts"] = sum(record.type == biff.BOF and record.depth == 2
                           for record in sheet.records)
    counts["objects"] = len(sheet.all_of(biff.OBJ))
    drawing = xls_drawing.sheet_drawing(sheet)
    counts["shapes"] = len(drawing.shapes())
    counts["pictures"] = sum(drawing.pictures().values())
    for kind in (0x1A, 0x1B):
        counts["page breaks"] += sum(struct.unpack_from("<H", data)[0]
                                     for data in sheet.all_of(kind) if len(data) >= 2)
    counts.pop("code names", None)  # a copy may have none
    return +counts


class EditedBook:
    """An edited workbook beside its input."""

    def __init__(self, before, after, plan):
        self.before, self.after, self.plan = before, after, plan
        self.first = plan.model.index
        self.model = before.sheets[self.first]
        self.counted = count_sheet(self.model)
        self.copies = len(plan.sheets) - 1

    def failures(self):
        names = [sheet.name for sheet in self.before.sheets]
        names[self.first:self.first + 1] = [sheet.name for sheet in self.plan.sheets]
        if [sheet.name for sheet in self.after.sheets] != names:
            yield f"the sheets are {[sheet.name for sheet in self.after.sheets]}, should be {names}"
            return
        for index, planned in enumerate(self.plan.sheets):
            sheet = self.after.sheets[self.first + index]
            for failure in _some(self._sheet_failures(index, sheet, planned)):
                yield f"{planned.name}: {failure}"
        for index, sheet in enumerate(self.before.sheets):
            if index != self.first:
                twin = self.after.sheets[index + (self.copies if index > self.first else 0)]
                for failure in _some(self._other_failures(index, sheet, twin)):
                    yield f"{sheet.name}: {failure}"
        yield from _some(self._global_failures())

    def spellers(self, index):
        """Of the model and of the sheet made of it with that index; a copy goes on naming the
        model in a range of sheets."""
        return (Speller(self.before, self.first, {self.first: SELF}),
                Speller(self.after, self.first + index, {self.first: SELF}))

    def _link_texts(self, index):
        """How the two sides spell the places that hyperlinks lead to."""
        model, name = self.plan.model.name, self.plan.sheets[index].name
        return (lambda text: text and Names({model: SELF}).neutral(text),
                lambda text: text and Names({name: SELF}).neutral(text))

    def _sheet_failures(self, index, sheet, planned):
        if sheet.kind != self.model.kind or sheet.state != self.model.state:
            yield f"is of kind {sheet.kind}, state {sheet.state}"
        spellers, links = self.spellers(index), self._link_texts(index)
        yield from compare_records(self.model, sheet, spellers, links)
        yield from compare_drawings(self.model, sheet)
        yield from compare_cells(self.model, sheet, spellers, planned)
        yield from written_failures(self.model, sheet, planned)
        yield from compare_rows(self.model, sheet, {row for row, _ in planned.written})
        counted = count_sheet(sheet)
        for what in sorted({*counted, *self.counted}):
            if counted[what] != self.counted[what]:
                yield f"{counted[what]} {what}, the model has {self.counted[what]}"
        yield from xls_embedded.sheet_failures(self.model, sheet)
        yield from xls_tables.sheet_failures(self.model, sheet, is_copy=index > 0)
        yield from self._names(index)

    def _names(self, index):
        """A copy owns the model's names, and twins of the workbook's that refer to the model."""
        left, right = self.spellers(index)
        expected = {}
        for name in self.before.names:
            shared = index and name.scope is None and name.text.lower() not in expected \
                and refers_to(self.before, name.tokens, self.first)
            if name.scope == self.first or shared:
                expected[name.text.lower()] = left.spell(name.tokens), name.flags & 0x20
        got = {name.text.lower(): (right.spell(name.tokens), name.flags & 0x20)
               for name in self.after.names if name.scope == self.first + index}
        if set(got) != set(expected):
            yield f"has the names {sorted(got)}, should have {sorted(expected)}"
        for name in sorted(set(got) & set(expected)):
            if got[name] != expected[name]:
                yield f"the name {name!r} is {got[name]}, should be {expected[name]}"

    def _other_failures(self, index, sheet, twin):
        """Every other sheet is as it was, its formulas spelled with the new indexes."""
        shift = index + (self.copies if index > self.first else 0)
        spellers = (_Outside(self.before, index, self.plan.model.index),
                    _Outside(self.after, shift, self.first))
        written = {self.first + number for number, planned in enumerate(self.plan.sheets)
                   if planned.written}
        read = any(sheets_read(self.after, tokens) & written for tokens, _, _ in
                   twin.formulas.values())
        yield from compare_records(sheet, twin, spellers, self._link_texts(0), whole=not read)
        if read:  # its stored results are gone, for which its table of cells may be made anew
            yield from compare_cells(sheet, twin, spellers)
            yield from compare_rows(sheet, twin, ())
            yield from compare_drawings(sheet, twin)
        yield from xls_embedded.sheet_failures(sheet, twin)
        yield from xls_tables.sheet_failures(sheet, twin, is_copy=False)
        if sheet.state != twin.state or sheet.kind != twin.kind:
            yield f"is of kind {twin.kind}, state {twin.state}"
        for where, (tokens, _, _) in twin.formulas.items():
            mine, other = sheet.cells.get(where), twin.cells[where]
            if sheets_read(self.after, tokens) & written and is_stored(other):
                yield f"{where}: the formula reads a written sheet and keeps a stale value"
            elif is_stored(other) and mine and _result(mine) != _result(other):
                yield f"{where}: the formula has another stored result"

    def _global_failures(self):
        """Names and entries of EXTERNSHEET stay where they are; others follow them."""
        left, right = (_Outside(book, None, self.first) for book in (self.before, self.after))
        for number, (mine, other) in enumerate(zip(self.before.names, self.after.names)):
            scopes = (left.scope(mine.scope), right.scope(other.scope))
            if (mine.text, mine.flags) != (other.text, other.flags) or scopes[0] != scopes[1]:
                yield f"name {number + 1} is {other.text!r} of {scopes[1]}, was {mine.text!r} of " \
                      f"{scopes[0]}"
            elif left.spell(mine.tokens) != right.spell(other.tokens):
                yield f"the name {mine.text!r} is {right.spell(other.tokens)}, was " \
                      f"{left.spell(mine.tokens)}"
        for entry in range(len(self.before.externsheets)):
            if left.sheets(entry) != right.sheets(entry):
                yield f"entry {entry} of EXTERNSHEET leads to {right.sheets(entry)}, led to " \
                      f"{left.sheets(entry)}"
        old, new = self.before.strings, self.after.strings
        count = len(old.texts)
        if (old.texts, old.rests) != (new.texts[:count], new.rests[:count]):
            yield "shared strings changed"
        doubled = Counter(new.texts[count:])
        if any(count > 1 for count in doubled.values()):
            yield f"a new shared string stands twice: {doubled.most_common(1)}"
        mine, other = (Counter(map(self._source, book.all_of(SOURCE), [name] * len(book.records)))
                       for book, name in ((self.before, self.plan.model.name),
                                          (self.after, self.plan.sheets[0].name)))
        if mine != other:
            yield f"sources of pivot tables are {other}, were {mine}"
        for kind in {record.type for record in self.before.globals} - _GLOBALS_THAT_CHANGE:
            if self.before.all_of(kind) != self.after.all_of(kind):
                yield f"the records of type {kind:#x} changed"


    @staticmethod
    def _source(data, model):
        """A source of data in the workbook: its area and its sheet; any other as it is."""
        count = struct.unpack_from("<H", data, 6)[0]
        text = biff.unicode_text(data, 9, count, data[8] & 1)[0] if count else ""
        if not text.startswith("\2"):
            return data
        return data[:6], SELF if text[1:].casefold() == model.casefold() else text


# Records of the globals that follow the sheets, and are judged on their own.
_GLOBALS_THAT_CHANGE = {biff.BOUNDSHEET, biff.SST, biff.EXTSST, biff.CONTINUE, biff.EXTERNSHEET,
                        biff.SUPBOOK, biff.NAME, biff.TABID, biff.WINDOW1, biff.MSODRAWINGGROUP,
                        0x1C1, xls_drawing.HEADER_PICTURE, SOURCE, 0x894, 0x896}


class _Outside(Speller):
    """Spells what belongs to no edited sheet: the model goes by one name on both sides."""

    def __init__(self, book, own, model):
        super().__init__(book, own)
        self.model = model

    def _sheet(self, index):
        return "\u00abmodel\u00bb" if index == self.model else super()._sheet(index)

    def scope(self, index):
        return None if index is None else self._sheet(index)


def _result(cell):
    return cell.result, cell.text


def _some(failures):
    """The first failures; hundreds of one kind say no more."""
    found = []
    for failure in failures:
        found.append(failure)
        if len(found) == SHOWN:
            break
    return found
