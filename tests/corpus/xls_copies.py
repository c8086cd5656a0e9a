"""What an edited .xls workbook owns that other programs show in part or not at all: every record
outside the tables of cells, and no stored result that is stale."""

import xls_book as biff
import xls_embedded
import xls_tables
from formulas import SELF, Names
from xls_drawing import HEADER_PICTURE, SELECTION, drawings, header_parts
from xls_places import CODENAME, HLINK, SOURCE, neutral_record
from xls_tokens import Speller, sheets_read

SHOWN = 6  # failures of one kind in a sheet
_NOT_STORED = b"\x03"  # a formula's result that says: an empty text
_PASSED_OVER = biff.TABLE_RECORDS | {CODENAME}  # a copy may have no code name

# Shapes have ids of their own, and stand in records of the model's size.
_DRAWN = {biff.MSODRAWING, biff.CONTINUE, HEADER_PICTURE, SELECTION}
# Of a sheet that is not edited: what says which sheets are selected, and what follows a new name.
_FOLLOWING = {biff.WINDOW2, HLINK, SOURCE}
# Records of the globals that follow the sheets.
_GLOBALS = {biff.BOUNDSHEET, biff.SST, biff.EXTSST, biff.CONTINUE, biff.EXTERNSHEET, biff.SUPBOOK,
            biff.NAME, biff.TABID, biff.WINDOW1, biff.MSODRAWINGGROUP, 0x1C1, HEADER_PICTURE,
            SOURCE, 0x894, 0x896}


def count_sheet(sheet):
    """What a copy of the sheet adds, in the words of the corpus's own counter."""
    charts = sum(record.type == biff.BOF and record.depth == 2 for record in sheet.records)
    return {"sheets": 1, "merged": len(sheet.merges), "comments": len(sheet.all_of(0x1C)),
            "objects": len(sheet.all_of(biff.OBJ)), "charts": charts}


class EditedBook:
    """An edited workbook beside its input."""

    def __init__(self, before, after, plan):
        self.before, self.after, self.plan = before, after, plan
        self.first, self.copies = plan.model.index, len(plan.sheets) - 1
        self.model = before.sheets[self.first]

    def failures(self):
        names = [sheet.name for sheet in self.before.sheets]
        names[self.first:self.first + 1] = [sheet.name for sheet in self.plan.sheets]
        if [sheet.name for sheet in self.after.sheets] != names:
            yield f"the sheets are {[sheet.name for sheet in self.after.sheets]}, should be {names}"
            return
        written = {self.first + number for number, sheet in enumerate(self.plan.sheets)
                   if sheet.written}
        for index, sheet in enumerate(self.after.sheets):
            number = index - self.first
            model, tellers = self._model_of(number)
            found = [*_record_failures(model, sheet, tellers), *_drawing_failures(model, sheet),
                     *xls_embedded.sheet_failures(model, sheet),
                     *xls_tables.sheet_failures(model, sheet, 0 < number <= self.copies),
                     *_stale_results(model, index, sheet, written)]
            yield from (f"{sheet.name}: {failure}" for failure in found[:SHOWN])
        yield from self._global_failures()

    def _model_of(self, number):
        """What the sheet of that number, counted from the model, was made from, and how the records
        of the two are told so that they are equal."""
        if not 0 <= number <= self.copies:
            behind = self.copies if number > 0 else 0
            return self.before.sheets[self.first + number - behind], (_outside, _outside)
        sides = ((self.before, 0, self.plan.model.name),
                 (self.after, number, self.plan.sheets[number].name))
        return self.model, [self._teller(*side) for side in sides]

    def _teller(self, book, number, name):
        """In a range of sheets a copy goes on naming the model."""
        speller = Speller(book, self.first + number, {self.first: SELF})
        names = Names({name: SELF})
        return lambda record: _edited(record, speller, lambda text: text and names.neutral(text))

    def _global_failures(self):
        old, new = self.before.strings, self.after.strings
        count = len(old.texts)
        if (old.texts, old.rests) != (new.texts[:count], new.rests[:count]):
            yield "shared strings changed"
        for kind in {record.type for record in self.before.globals} - _GLOBALS:
            if self.before.all_of(kind) != self.after.all_of(kind):
                yield f"the records of type {kind:#x} changed"


def _record_failures(model, sheet, tellers):
    if (sheet.kind, sheet.state) != (model.kind, model.state):
        yield f"is of kind {sheet.kind}, state {sheet.state}"
    sides = [[record for record in side.records
              if record.depth > 1 or record.type not in _PASSED_OVER] for side in (model, sheet)]
    for mine, other in zip(*sides):
        if tellers[0](mine) != tellers[1](other):
            yield f"the record of type {other.type:#x} at {other.offset} is " \
                  f"{other.data[:24].hex(' ')}, should be like {mine.data[:24].hex(' ')} " \
                  f"({mine.type:#x} at {mine.offset})"
    if len(sides[0]) != len(sides[1]):
        yield f"has {len(sides[1])} records outside its cells, its model has {len(sides[0])}"


def _drawing_failures(model, sheet):
    mine, other = ([drawing.without_ids() for drawing in (*drawings(side), header_parts(side.own))]
                   for side in (model, sheet))
    if mine != other:
        yield "its drawings differ from its model's"


def _edited(record, speller, link_text):
    if record.type in _DRAWN:
        return record.type, len(record.data)
    if record.type == biff.OBJ:
        record = record._replace(data=xls_embedded.without_place(record.data))
    return neutral_record(record, speller, link_text)


def _outside(record):
    return record.type, None if record.type in _FOLLOWING else record.data


def _stale_results(model, index, sheet, written):
    """On a sheet that was written, or in a formula that reads one, no result is stored."""
    for where, (tokens, _, _) in sheet.formulas.items():
        mine, other = model.cells.get(where), sheet.cells[where]
        if not is_stored(other):
            continue
        if index in written or sheets_read(sheet.book, tokens) & written:
            yield f"{where}: the formula has a stale value"
        elif mine and (mine.result, mine.text) != (other.result, other.text):
            yield f"{where}: the formula has another stored result"


def is_stored(cell):
    return cell.result[:1] != _NOT_STORED or cell.result[6:] != b"\xff\xff" or bool(cell.text)
