"""What is done to an .xls workbook: the plan of plan.py, with the rules of its own cells."""

import zlib
from collections import defaultdict
from dataclasses import dataclass

import xls_book as biff
from plan import SHEET_NAMES, Rules, plan_for

# The sheet whose last row is written too, the model's or a copy's by turns; the others reach the
# last column. Other programs take seconds over each sheet of all rows.
_WHOLE_SHEETS = (0, 7)


@dataclass
class Model:
    """The sheet that is renamed and copied."""

    name: str
    index: int


class SheetRules(Rules):
    def __init__(self, book, sheet):
        super().__init__(sheet, biff.LAST_CELL, book.is_locked)
        self.arrays = [area for area in sheet.areas(biff.ARRAY) if area[:2] != area[2:]]
        self.tables = sheet.areas(biff.TABLE)
        self._by_record = defaultdict(list)
        for where, cell in sorted(sheet.cells.items()):
            self._by_record[cell.record].append(where)
        self._by_record["shared"] = [area[:2] for area in sheet.areas(biff.SHRFMLA)]

    def samples(self, index):
        """One cell of each kind of record, and a first cell of a shared formula."""
        return [found[index % len(found)] for found in self._by_record.values() if found]


def make_plan(book, copies=True):
    """`copies` is False for a sheet that is not copied."""
    index = book.first_worksheet()
    sheet = book.sheets[index]
    can_copy = copies and not book.structure_locked
    whole = _WHOLE_SHEETS[zlib.crc32(book.stream) % 2] if can_copy else 0
    return plan_for(Model(sheet.name, index), SheetRules(book, sheet), book.structure_locked,
                    lambda number: number == whole,
                    SHEET_NAMES if copies else SHEET_NAMES[:1])
