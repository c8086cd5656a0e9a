"""Whether the workbook stream of an .xls file is well made: counts, offsets and indexes.

Every check yields (index of the sheet or None, kind, what is wrong).
"""

import struct
from collections import Counter

import xls_book as biff
import xls_drawing
import xls_embedded
import xls_tables
from xls_places import formulas_of
from xls_tokens import bad_indexes

# What is made anew on a written sheet: right there even if it was wrong before.
REBUILT = {"INDEX", "DBCELL", "DIMENSIONS", "ROW", "order", "EXTSST", "BOUNDSHEET", "TABID"}


def structure_failures(book):
    for check in (_sheet_list, _windows, _strings, _names, _code_names, _drawings,
                  _own_data):
        yield from ((None, *failure) for failure in check(book))
    for index, sheet in enumerate(book.sheets):
        if not sheet.records:
            yield index, "BOUNDSHEET", f"the offset {sheet.offset} leads to no BOF"
            continue
        checks = [_objects, _formulas]
        if sheet.bof_type == 0x10:
            checks += [_dimensions, _rows, _order, _index, _row_blocks]
        for check in checks:
            yield from ((index, *failure) for failure in check(sheet))


def new_failures(before, after, first, count):
    """Failures of a workbook in which `count` sheets from `first` on were made from one."""
    known = {(index, kind) for index, kind, _ in structure_failures(before)}
    for index, kind, what in structure_failures(after):
        old = index
        if index is not None and index >= first:
            old = first if index < first + count else index - count + 1
        edited = index is None or first <= index < first + count
        if (old, kind) not in known or (edited and kind in REBUILT):
            where = "" if index is None else f"{after.sheets[index].name}: "
            yield f"{where}{kind}: {what}"


def _sheet_list(book):
    for data in book.all_of(biff.TABID):
        ids = struct.unpack(f"<{len(data) // 2}H", data)
        if len(ids) != len(book.sheets) or len(set(ids)) != len(ids):
            yield "TABID", f"has {ids} for {len(book.sheets)} sheets"
    names = Counter(sheet.name.casefold() for sheet in book.sheets)
    if len(names) != len(book.sheets):
        yield "names", f"two sheets have one name: {names.most_common(1)}"


def _windows(book):
    views = [struct.unpack_from("<H", data)[0] for sheet in book.sheets
             for data in sheet.all_of(biff.WINDOW2)[:1]]
    owners = [index for index, sheet in enumerate(book.sheets) if sheet.all_of(biff.WINDOW2)]
    selected = [owner for owner, view in zip(owners, views) if view & 0x200]
    for data in book.all_of(biff.WINDOW1)[:1]:
        current, first, count = struct.unpack_from("<HHH", data, 10)
        if max(current, first) >= len(book.sheets):
            yield "WINDOW1", f"shows sheets {current} and {first} of {len(book.sheets)}"
        if count != 1 or selected != [current]:
            yield "selection", f"{selected} are selected, WINDOW1 says {count} with {current}"


def _strings(book):
    used = Counter(cell.string for sheet in book.sheets for cell in sheet.cells.values()
                   if cell.string >= 0)
    if used and max(used) >= len(book.strings.texts):
        yield "SST", f"string {max(used)} of {len(book.strings.texts)} is used"
    if book.strings.total != sum(used.values()):
        yield "cstTotal", f"is {book.strings.total}, there are {sum(used.values())}"
    for data in book.joined(biff.EXTSST):
        step = struct.unpack_from("<H", data)[0]
        starts = book.strings.starts[::step] if step else []
        entries = [struct.unpack_from("<IH", data, at) for at in range(2, len(data) - 7, 8)]
        expected = [(book.strings.pieces[piece].offset + 4 + at, at + 4) for piece, at in starts]
        if entries != expected:
            wrong = next((pair for pair in zip(entries, expected) if pair[0] != pair[1]),
                         (len(entries), len(expected)))
            yield "EXTSST", f"has {wrong[0]}, should have {wrong[1]}"


def _names(book):
    seen = Counter((name.text.lower(), name.scope) for name in book.names)
    for (text, scope), count in seen.items():
        if count > 1:
            yield "NAME", f"{text!r} stands {count} times for sheet {scope}"
    for name in book.names:
        if name.scope is not None and name.scope >= len(book.sheets):
            yield "NAME", f"{name.text!r} belongs to sheet {name.scope} of {len(book.sheets)}"
        for what in bad_indexes(book, name.tokens):
            yield "tokens", f"the name {name.text!r} has {what}"
    for entry, (link, first, last) in enumerate(book.externsheets):
        if link >= len(book.supbooks):
            yield "EXTERNSHEET", f"entry {entry} names link {link} of {len(book.supbooks)}"
        elif book.supbooks[link] == "self" and max(first, last) >= len(book.sheets):
            yield "EXTERNSHEET", f"entry {entry} names sheet {last} of {len(book.sheets)}"
    for data in book.joined(biff.SUPBOOK):
        if len(data) == 4 and data[2:] == b"\1\4" and \
                struct.unpack_from("<H", data)[0] != len(book.sheets):
            yield "SUPBOOK", f"counts {data[0]} of {len(book.sheets)} sheets"


def _code_names(book):
    counted = Counter()
    for sheet in book.sheets:
        for data in sheet.all_of(biff.CODENAME)[:1]:
            count, wide = struct.unpack_from("<HB", data)
            counted[biff.unicode_text(data, 3, count, wide & 1)[0].lower()] += 1
    for name, count in counted.items():
        if count > 1:
            yield f"code name {name}", f"{count} sheets have it"


def _drawings(book):
    found = [drawing for sheet in book.sheets for drawing in xls_drawing.drawings(sheet)]
    for failure in xls_drawing.id_failures(found, xls_drawing.group_of(book), "drawings"):
        yield "drawings", failure
    headers = [xls_drawing.header_parts(sheet.own) for sheet in book.sheets]
    group = xls_drawing.DrawingGroup(xls_drawing.header_parts(book.globals).data)
    for failure in xls_drawing.id_failures([part for part in headers if part.data], group,
                                           "header drawings"):
        yield "header drawings", failure
    for failure in xls_drawing.picture_failures(book):
        yield "pictures", failure


def _own_data(book):
    for kind, found in (("tables", xls_tables.book_failures(book)),
                        ("embedded data", xls_embedded.book_failures(book))):
        for failure in found:
            yield kind, failure


def _objects(sheet):
    ids = Counter(struct.unpack_from("<H", data, 6)[0] for data in sheet.all_of(biff.OBJ)
                  if len(data) >= 8)
    for number, count in ids.items():
        if count > 1:
            yield "OBJ", f"{count} objects have the id {number}"
    for drawing in xls_drawing.drawings(sheet):
        for failure in xls_drawing.shape_count_failures(drawing):
            yield "FDG", failure


def _formulas(sheet):
    for record in sheet.records:
        for data in formulas_of(record):
            for what in bad_indexes(sheet.book, data):
                yield "tokens", f"record {record.type:#x} at {record.offset} has {what}"


def _dimensions(sheet):
    for data in sheet.all_of(biff.DIMENSIONS):
        top, bottom, left, right = struct.unpack_from("<IIHH", data)
        outside = [where for where in sheet.cells if not (top < where[0] <= bottom
                                                          and left < where[1] <= right)]
        if outside:
            yield "DIMENSIONS", f"{top}:{bottom} {left}:{right} does not cover {outside[0]}"


def _rows(sheet):
    for where in sheet.cells:
        row = sheet.rows.get(where[0])
        if row is None:
            yield "ROW", f"no record for row {where[0]}, which has cells"
            return
        if not row.first <= where[1] <= row.last:
            yield "ROW", f"row {where[0]} has {row.first}:{row.last}, and column {where[1]} is used"
            return


def _order(sheet):
    last = (0, 0)
    for where, cell in sheet.cells.items():
        if where <= last:
            yield "order", f"the cell {where} follows {last}"
            return
        last = where
        row = sheet.rows.get(where[0])
        if row and row.record > cell.order:
            yield "order", f"row {where[0]} stands behind its cells"
            return
    if list(sheet.rows) != sorted(sheet.rows):
        yield "order", "rows are out of order"


def _index(sheet):
    blocks = [record.offset for record in sheet.own if record.type == biff.DBCELL]
    for data in sheet.all_of(biff.INDEX):
        _, first, last = struct.unpack_from("<III", data)
        entries = [struct.unpack_from("<I", data, at)[0] for at in range(16, len(data) - 3, 4)]
        if entries != blocks:
            yield "INDEX", f"leads to {entries[:3]} ({len(entries)}), DBCELL stand at " \
                           f"{blocks[:3]} ({len(blocks)})"
        rows = {*sheet.rows, *(where[0] for where in sheet.cells)}
        if rows and not (first < min(rows) and max(rows) <= last):
            yield "INDEX", f"has rows {first}:{last}, used are {min(rows)}:{max(rows)}"


def _row_blocks(sheet):
    """A DBCELL leads to its block's first ROW, and to the first cell of each row of the block."""
    starts = {}
    for where, cell in sheet.cells.items():
        starts.setdefault(where[0], sheet.own[cell.order].offset)
    at_offset = {record.offset: record for record in sheet.own}
    rows = []
    for record in sheet.own:
        if record.type == biff.ROW:
            rows.append((struct.unpack_from("<H", record.data)[0] + 1, record))
        elif record.type == biff.DBCELL:
            yield from _block(record, rows, starts, at_offset)
            rows = []


def _block(record, rows, starts, at_offset):
    back = struct.unpack_from("<I", record.data)[0]
    first = at_offset.get(record.offset - back)
    if not rows and not back:
        return
    if not rows or first is not rows[0][1]:
        yield "DBCELL", f"at {record.offset} leads to {record.offset - back}, no first ROW"
        return
    place = first.offset + 4 + len(first.data)
    found = []
    for at in range(4, len(record.data) - 1, 2):
        place += struct.unpack_from("<H", record.data, at)[0]
        found.append(place)
    expected = [starts[row] for row, _ in rows if row in starts]
    if len(found) > len(rows) or not _are_among(expected, found):
        yield "DBCELL", f"at {record.offset} leads to cells at {found[:4]}, they stand at " \
                        f"{expected[:4]}"


def _are_among(wanted, found):
    """Whether a list has these members in this order; rows without cells have some between."""
    rest = iter(found)
    return all(place in rest for place in wanted)
