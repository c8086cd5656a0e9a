"""One sheet of an .xls workbook: its records, rows and cells."""

import functools
import struct
from dataclasses import dataclass

import xls_book as biff
from xls_places import formulas_of
from xls_tokens import kind_of, shared_master, unshared


@dataclass
class Row:
    first: int   # column from 1 of the first cell
    last: int    # column of the last cell, 0 where there is none
    rest: bytes  # height and format
    record: int  # number of the record

    @property
    def xf(self):
        """The row's own cell format; None where it has none."""
        flags, xf = struct.unpack_from("<HH", self.rest, 6)
        return xf & 0xFFF if flags & 0x80 else None


class Sheet:
    def __init__(self, book, name, offset, state, kind):
        self.book, self.name, self.offset, self.state, self.kind = book, name, offset, state, kind

    @functools.cached_property
    def records(self):
        """From BOF to EOF; empty where the offset leads to no BOF."""
        start = self.book.by_offset.get(self.offset)
        if start is None or self.book.records[start].type != biff.BOF:
            return []
        found = []
        for record in self.book.records[start:]:
            found.append(record)
            if record.type == biff.EOF and record.depth == 1:
                break
        return found

    @functools.cached_property
    def bof_type(self):
        return struct.unpack_from("<H", self.records[0].data, 2)[0] if self.records else None

    @property
    def is_worksheet(self):
        return self.kind == 0 and self.bof_type == 0x10 and not self._is_dialog()

    def _is_dialog(self):
        return any(record.type == 0x81 and record.data[0] & 0x10 for record in self.own)

    @functools.cached_property
    def own(self):
        """The sheet's own records, without those of its charts."""
        return [record for record in self.records if record.depth == 1]

    def all_of(self, kind):
        return [record.data for record in self.own if record.type == kind]

    @functools.cached_property
    def _read(self):
        rows, cells = {}, {}
        masters = []  # (type, area, first cell, tokens and what follows)
        last = None
        for number, record in enumerate(self.own):
            data = record.data
            if record.type == biff.ROW:
                row, first, end = struct.unpack_from("<HHH", data)
                rows[row + 1] = Row(first + 1, end, data[6:], number)
            elif record.type in biff.CELL_RECORDS:
                for where, cell in _cells(record):
                    cell.order, cell.record = number, record.type
                    if cell.string >= 0:
                        texts = self.book.strings.texts
                        cell.value = texts[cell.string] if cell.string < len(texts) else None
                    cells[where] = cell
                    last = where
            elif record.type in (biff.SHRFMLA, biff.ARRAY, biff.TABLE):
                masters.append((record.type, _area(data), last, data))
            elif record.type == biff.STRING and last in cells:
                count, wide = struct.unpack_from("<HB", data)
                cells[last].text = biff.unicode_text(data, 3, count, wide & 1)[0]
        return rows, cells, masters

    @property
    def rows(self):
        return self._read[0]

    @property
    def cells(self):
        return self._read[1]

    def areas(self, kind):
        return [area for master, area, _, _ in self._read[2] if master == kind]

    @functools.cached_property
    def merges(self):
        found = []
        for data in self.all_of(biff.MERGES):
            for index in range(struct.unpack_from("<H", data)[0]):
                top, bottom, left, right = struct.unpack_from("<HHHH", data, 2 + 8 * index)
                found.append((top + 1, left + 1, bottom + 1, right + 1))
        return found

    @functools.cached_property
    def is_protected(self):
        return any(data[:1] == b"\1" for data in self.all_of(biff.PROTECT))

    @functools.cached_property
    def protected_ranges(self):
        """Areas that a shared feature frees of the protection."""
        found = []
        for data in self.all_of(biff.FEAT):
            if struct.unpack_from("<H", data, 12)[0] != 2:
                continue
            for index in range(struct.unpack_from("<H", data, 19)[0]):
                top, bottom, left, right = struct.unpack_from("<HHHH", data, 27 + 8 * index)
                found.append((top + 1, left + 1, bottom + 1, right + 1))
        return found

    @functools.cached_property
    def column_formats(self):
        found = {}
        for data in self.all_of(biff.COLINFO):
            first, last, _, xf = struct.unpack_from("<HHHH", data)
            found.update((column + 1, xf) for column in range(first, min(last, 255) + 1))
        return found

    def style_at(self, position):
        """The format that a value written there has: the cell's own, its row's, its column's."""
        cell = self.cells.get(position)
        if cell is not None:
            return cell.xf
        row = self.rows.get(position[0])
        if row is not None and row.xf is not None:
            return row.xf
        return self.column_formats.get(position[1], biff.DEFAULT_XF)

    @functools.cached_property
    def formulas(self):
        """For each formula cell: (tokens, what follows them, area). Shared formulas are written
        out; cells of an array or data table have its tokens and its area."""
        found = {}
        for where, cell in self.cells.items():
            if cell.kind == "formula":
                found[where] = self._formula(where, cell)
        return found

    def _formula(self, where, cell):
        first = shared_master(cell.tokens)
        for kind, area, owner, data in self._read[2] if first else ():
            inside = area[0] <= where[0] <= area[2] and area[1] <= where[1] <= area[3]
            if not inside or first not in (owner, area[:2]):
                continue
            if kind == biff.SHRFMLA:
                size = struct.unpack_from("<H", data, 8)[0]
                return unshared(data[10:10 + size], where), data[10 + size:], None
            if kind == biff.ARRAY:
                size = struct.unpack_from("<H", data, 12)[0]
                return data[14:14 + size], data[14 + size:], area
            return b"", data[6:], area
        return cell.tokens, cell.extra, None

    @functools.cached_property
    def linked_cells(self):
        """Cells that show the state of a control."""
        found = set()
        for record in self.own:
            if record.type == biff.OBJ:
                for data in formulas_of(record):
                    at = {0x24: 1, 0x3A: 3}.get(kind_of(data[0]))
                    if at and len(data) == at + 4:
                        row, column = struct.unpack_from("<HH", data, at)
                        found.add((row + 1, (column & 0xFF) + 1))
        return found

    @property
    def has_pivot_table(self):
        return any(record.type == 0xB0 for record in self.own)


def _area(data):
    top, bottom, left, right = struct.unpack_from("<HHBB", data)
    return top + 1, left + 1, bottom + 1, right + 1


def _cells(record):
    data = record.data
    row, column = struct.unpack_from("<HH", data)
    where = (row + 1, column + 1)
    if record.type == biff.MULBLANK:
        for index in range((len(data) - 6) // 2):
            yield (row + 1, column + 1 + index), biff.Cell(
                "blank", struct.unpack_from("<H", data, 4 + 2 * index)[0])
        return
    if record.type == biff.MULRK:
        for index in range((len(data) - 6) // 6):
            xf, rk = struct.unpack_from("<HI", data, 4 + 6 * index)
            yield (row + 1, column + 1 + index), biff.Cell("number", xf, biff.number_of_rk(rk))
        return
    yield where, _cell(record.type, data)


def _cell(kind, data):
    xf = struct.unpack_from("<H", data, 4)[0]
    if kind == biff.BLANK:
        return biff.Cell("blank", xf)
    if kind == biff.NUMBER:
        return biff.Cell("number", xf, struct.unpack_from("<d", data, 6)[0])
    if kind == biff.RK:
        return biff.Cell("number", xf, biff.number_of_rk(struct.unpack_from("<I", data, 6)[0]))
    if kind == biff.LABELSST:
        return biff.Cell("text", xf, string=struct.unpack_from("<I", data, 6)[0])
    if kind in (biff.LABEL, biff.RSTRING):
        count = struct.unpack_from("<H", data, 6)[0]
        wide = data[8] & 1 if len(data) > 8 else 0
        return biff.Cell("text", xf, biff.unicode_text(data, 9, count, wide)[0])
    if kind == biff.BOOLERR:
        return biff.Cell("error" if data[7] else "logical", xf, data[6])
    flags = struct.unpack_from("<H", data, 14)[0]
    size = struct.unpack_from("<H", data, 20)[0]
    return biff.Cell("formula", xf, tokens=data[22:22 + size], extra=data[22 + size:],
                     result=data[6:14], flags=flags)
