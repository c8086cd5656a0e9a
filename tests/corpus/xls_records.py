"""Compares the records, drawings and cells of a sheet with those of the sheet it was made from."""

from collections import Counter

import xls_book as biff
import xls_drawing
from xls_embedded import without_place
from xls_places import CODENAME, neutral_record

_DRAWN = {biff.MSODRAWING, biff.CONTINUE, xls_drawing.HEADER_PICTURE, xls_drawing.SELECTION}
_BESIDE = {biff.INDEX, biff.DBCELL, biff.STRING}
_NOT_STORED = b"\x03"  # a formula's result that says: an empty text


def compare_records(left, right, spellers, links, whole=False):
    """The records that are no cells; with `whole`, the cells as well."""
    skipped = {CODENAME, *(_BESIDE if whole else _DRAWN | biff.TABLE_RECORDS)}
    sides = [[record for record in sheet.records
              if record.depth > 1 or record.type not in skipped] for sheet in (left, right)]
    for mine, other in zip(*sides):
        if _looks(mine, spellers[0], links[0]) != _looks(other, spellers[1], links[1]):
            yield f"the record of type {other.type:#x} at {other.offset} is " \
                  f"{other.data[:24].hex(' ')}, should be like {mine.data[:24].hex(' ')} " \
                  f"({mine.type:#x} at {mine.offset})"
    if len(sides[0]) != len(sides[1]):
        counts = [Counter(record.type for record in side) for side in sides]
        lost, more = counts[0] - counts[1], counts[1] - counts[0]
        yield f"has lost {_kinds(lost)} and has {_kinds(more)} more"


def _kinds(counts):
    return {f"{kind:#x}": count for kind, count in counts.items()}


def _looks(record, speller, link):
    if record.depth > 1 and record.type == biff.MSODRAWING:
        return biff.MSODRAWING, len(record.data)  # its shapes are compared with the drawing
    if record.type == biff.OBJ:
        return neutral_record(record._replace(data=without_place(record.data)), speller, link)
    if record.type == biff.FORMULA and record.depth == 1:  # its stored result is judged apart
        shared = bytes([record.data[14] & 8])
        data = record.data[:6] + shared + bytes(13) + record.data[20:]
        return neutral_record(record._replace(data=data), speller, link)
    return neutral_record(record, speller, link)


def compare_drawings(left, right):
    pairs = [(xls_drawing.drawings(sheet), xls_drawing.header_parts(sheet.own))
             for sheet in (left, right)]
    (mine, mine_header), (other, other_header) = pairs
    for first, second in zip(mine, other):
        yield from _drawing_failures(first, second)
    if len(mine) != len(other):
        yield f"has {len(other)} drawings, the model has {len(mine)}"
    yield from _drawing_failures(mine_header[1], other_header[1])
    if xls_drawing.selection(left) != xls_drawing.selection(right):
        yield "other shapes are selected"


def _drawing_failures(left, right):
    (mine, mine_lengths), (other, other_lengths) = left.neutral(), right.neutral()
    for first, second in zip(mine, other):
        if first != second:
            yield f"drawing: {str(second)[:160]}, should be like {str(first)[:160]}"
            return
    if len(mine) != len(other) or mine_lengths != other_lengths:
        yield f"the drawing has {len(other)} atoms in records of {other_lengths[:8]}, the model " \
              f"has {len(mine)} in {mine_lengths[:8]}"


def compare_cells(left, right, spellers, planned=None):
    """Cells that were not written are as they were; then formulas have no stored result left."""
    changed = {*planned.written, *planned.either} if planned else set()
    for where in sorted({*left.cells, *right.cells} - changed):
        mine, other = left.cells.get(where), right.cells.get(where)
        if mine is None or other is None:
            yield f"cell {where} {'appeared' if mine is None else 'is gone'}"
        elif (mine.kind, mine.xf) != (other.kind, other.xf):
            yield f"cell {where}: {other.kind} of format {other.xf}, was {mine.kind} of {mine.xf}"
        elif mine.kind != "formula":
            if mine.value != other.value:
                yield f"cell {where}: {other.value!r}, was {mine.value!r}"
        else:
            yield from _formula_failures(where, left, right, spellers)
    for where, cell in right.cells.items() if planned and planned.written else ():
        if cell.kind == "formula" and is_stored(cell):
            yield f"cell {where}: the formula has a stale value {cell.result.hex()}"
            return


def _formula_failures(where, left, right, spellers):
    (mine, *mine_rest), (other, *other_rest) = left.formulas[where], right.formulas[where]
    mine, other = spellers[0].spell(mine), spellers[1].spell(other)
    if mine != other or mine_rest != other_rest:
        yield f"cell {where}: the formula {other} {other_rest}, should be like {mine} {mine_rest}"


def is_stored(cell):
    return not (cell.result[:1] == _NOT_STORED and cell.result[6:] == b"\xff\xff") \
        or bool(cell.text)


def written_failures(left, right, planned):
    for where, value in planned.written.items():
        if where in planned.either:
            continue
        cell = right.cells.get(where)
        if cell is None:
            yield f"{where} was not written"
            continue
        kind = "text" if isinstance(value, str) else "number"
        if cell.kind != kind or cell.value != value:
            yield f"{where} holds {cell.kind} {cell.value!r}, should hold {value!r}"
        if cell.xf != left.style_at(where):
            yield f"{where} has format {cell.xf}, should have {left.style_at(where)}"


def compare_rows(left, right, new_rows):
    """Rows keep height and format; new rows appear only where cells were written."""
    for number in sorted({*left.rows, *right.rows}):
        if number not in right.rows:
            yield f"row {number} is gone"
        elif number not in left.rows:
            if number not in new_rows and not any(where[0] == number for where in left.cells):
                yield f"row {number} appeared"
        elif left.rows[number].rest != right.rows[number].rest:
            yield f"row {number}: {right.rows[number].rest.hex()}, was " \
                  f"{left.rows[number].rest.hex()}"
