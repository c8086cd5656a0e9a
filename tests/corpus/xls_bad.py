"""Bad .xls files that were opened all the same: others open them too, and the result is right."""

import struct
import tempfile

import xls_structure
from xls_book import Book
from xls_compound import CompoundFile, same_failures
from xls_readers import Poi, xlrd_view


def opened_failures(row, path, saved):
    """A workbook that was saved unchanged, and that other programs have to open as well."""
    if row["kind"] == "encrypted-xls":
        yield from _encrypted_failures(path, saved)
        return
    if row["py_opens"] != "yes" and row["lo_to_xlsx"] != "yes":
        yield "was opened, and no other reader opens it"
    yield from same_failures(CompoundFile(path), CompoundFile(saved))


def _encrypted_failures(path, saved):
    """Apache POI tries the password that every program knows, and no other."""
    with tempfile.TemporaryDirectory() as folder:
        poi = Poi(folder)
        poi.read([path, saved])
        (before, why), (after, _) = poi.view(path), poi.view(saved)
    if before is None:
        yield f"was opened, and Apache POI does not open it: {why}"
    elif before != after:
        yield "Apache POI does not see in the saved workbook what it sees in the input"


def is_biff8(path):
    """Whether a compound file holds a workbook of this format, beside one of an older or not."""
    try:
        file = CompoundFile(path)
    except (ValueError, struct.error):
        return False
    found = file.workbook()
    return found is not None and file.entries[found].data[4:6] == b"\0\6"


def first_sheet(path):
    book = Book(path)
    return book.sheets[book.first_worksheet()].name


def edited_failures(before_path, path):
    """After an edit: the new sheet and its copy, the written cells, and a stream in order. Where
    the structure is protected, the sheet goes by its old name, and is the only one."""
    book, before = Book(path), Book(before_path)
    index = before.first_worksheet()
    locked = before.structure_locked
    names = [before.sheets[index].name] if locked else ["Proof", "Proof (2)"]
    if [sheet.name for sheet in book.sheets[index:index + len(names)]] != names:
        yield f"the edited workbook has no sheets {names}"
        return
    last = book.sheets[index + len(names) - 1]
    for where, value in (((1, 1), "Proof"), ((2, 2), 7)):
        if where not in last.cells or last.cells[where].value != value:
            yield f"{last.name} does not hold {value!r}"
    known = {kind for _, kind, _ in xls_structure.structure_failures(before)}
    for _, kind, what in xls_structure.structure_failures(book):
        if kind not in known:
            yield f"{kind}: {what}"
    xlrd_view(book)
