"""Tests of what an edited .xls workbook may have otherwise: what is broken there is still found."""

import struct
import unittest
from types import SimpleNamespace
from xml.etree import ElementTree

import xls_book as biff
import xls_embedded
import xls_tables
from cells import SheetCells
from volatile import changing_cells
from xls_book import Record
from xls_compound import STORAGE, STREAM, Entry
from xls_office import _formula_texts, column_widths

MAIN = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"


def sheet(file, *records):
    """A sheet of a workbook, of (type, data) pairs."""
    own = [Record(0, kind, data, 1) for kind, data in records]
    return SimpleNamespace(name="Sheet", own=own, book=SimpleNamespace(file=file),
                           all_of=lambda kind: [data for found, data in records if found == kind])


def book(file, *sheets, names=()):
    return SimpleNamespace(file=file, sheets=sheets,
                           names=[SimpleNamespace(text=name) for name in names])


def entry(name, kind, data=b"", class_id=bytes(16)):
    return Entry(name, kind, 1, (), class_id, 0, bytes(16), 0, len(data), data)


def compound(storages, controls=b""):
    """A file with storages, each with one stream, and with data of controls."""
    entries = {("Ctls",): entry("Ctls", STREAM, controls)} if controls else {}
    for number, data in storages.items():
        name = f"MBD{number:08X}"
        entries[name,] = entry(name, STORAGE)
        entries[name, "data"] = entry("data", STREAM, data)
    return SimpleNamespace(entries=entries)


def embedded(number, size=None):
    """The record of an object; with a size, of a control."""
    formula = struct.pack("<HHI", 14, 5, 0) + b"\x02" + bytes(7)
    formula += struct.pack("<I", number) if size is None else struct.pack("<III", number, size, 0)
    return biff.OBJ, b"".join((
        struct.pack("<HHHHH", 0x15, 6, 8, 1, 0), struct.pack("<HHH", 7, 2, 2),
        struct.pack("<HHH", 8, 2, 1 if size is None else 0x31),
        struct.pack("<HH", 9, len(formula)), formula, bytes(4)))


class EmbeddedTest(unittest.TestCase):
    """A model with a storage and a control, and a copy of it."""

    def setUp(self):
        before = compound({7: b"words"}, b"..abcd")
        self.file = compound({7: b"words", 8: b"words"}, b"..abcdabcd")
        self.left = sheet(before, embedded(7), embedded(2, 4))
        self.model = sheet(self.file, embedded(7), embedded(2, 4))
        self.right = sheet(self.file, embedded(8), embedded(6, 4))

    def failures(self):
        return [*xls_embedded.sheet_failures(self.left, self.right),
                *xls_embedded.book_failures(book(self.file, self.model, self.right))]

    def test_accepts_data_of_its_own(self):
        self.assertEqual(self.failures(), [])
        self.assertEqual(*(xls_embedded.without_place(made.own[0].data)
                           for made in (self.model, self.right)))

    def test_finds_what_is_broken(self):
        entries = self.file.entries
        for name, edit in (
                ("a storage that is gone", lambda: (entries.pop(("MBD00000008", "data")),
                                                    entries.pop(("MBD00000008",)))),
                ("a stream that is gone", lambda: entries.pop(("MBD00000008", "data"))),
                ("a byte", lambda: self.put("MBD00000008", "data", b"wordz")),
                ("a class", lambda: entries.update({("MBD00000008",): entry(
                    "MBD00000008", STORAGE, class_id=b"x" * 16)})),
                ("one storage of two", lambda: self.copy(embedded(7), embedded(6, 4))),
                ("no storage of that number", lambda: self.copy(embedded(9), embedded(6, 4))),
                ("a control's byte", lambda: self.put("Ctls", b"..abcdabcX")),
                ("a control's place", lambda: self.copy(embedded(8), embedded(5, 4))),
                ("a control's size", lambda: self.copy(embedded(8), embedded(6, 3))),
                ("a control past the end", lambda: self.copy(embedded(8), embedded(7, 4))),
                ("one control of two", lambda: self.copy(embedded(8), embedded(2, 4)))):
            with self.subTest(name):
                self.setUp()
                entries = self.file.entries
                edit()
                self.assertTrue(self.failures())

    def put(self, *path_and_data):
        *path, data = path_and_data
        self.file.entries[tuple(path)] = entry(path[-1], STREAM, data)

    def copy(self, *records):
        self.right = sheet(self.file, *records)

    def test_only_the_end_of_the_controls_is_new(self):
        before = compound({}, b"abcd")
        for data, expected in ((b"abcdabcd", {("Ctls",)}), (b"abcXabcd", set()), (b"abc", set())):
            self.assertEqual(xls_embedded.grown(before, compound({}, data)), expected)
        changed = compound({}, b"abcdabcd")
        changed.entries["Ctls",].class_id = b"x" * 16
        self.assertEqual(xls_embedded.grown(before, changed), set())


def text(value):
    return struct.pack("<HB", len(value), 0) + value.encode()


def table(number, name, next_number, rest=b"columns"):
    """The records of a sheet with one table."""
    feature = (struct.pack("<H", 0x872) + bytes(10) + struct.pack("<HBIHIH", 5, 0, 0, 1, 0, 0)
               + struct.pack("<4H", 1, 9, 1, 4) + struct.pack("<6I", 0, number, 1, 0, 11, 64)
               + bytes(40) + text(name) + rest)
    return ((0x871, struct.pack("<H", 0x871) + bytes(10) + b"\5\0\1" + b"\xff" * 8
             + struct.pack("<IH", next_number, 0)),
            (0x872, feature),
            (0x877, struct.pack("<H", 0x877) + bytes(10) + struct.pack("<HI", 2, number)
             + text(name)))


class TablesTest(unittest.TestCase):
    def failures(self, *copy, is_copy=True, names=()):
        model, made = sheet(None, *table(1, "Table1", 2)), sheet(None, *copy)
        found = [*xls_tables.sheet_failures(model, made, is_copy),
                 *(xls_tables.book_failures(book(None, model, made, names=names))
                   if is_copy else ())]
        for mine, other in zip(model.own, made.own):
            if xls_tables.neutral(mine) != xls_tables.neutral(other):
                found.append("records")
        return found

    def test_accepts_ids_and_names_of_its_own(self):
        self.assertEqual(self.failures(*table(2, "Table1_2", 3), names=["Table"]), [])

    def test_finds_what_is_broken(self):
        right = table(2, "Table1_2", 3)
        for name, copy in (
                ("one id of two", table(1, "Table1_2", 3)),
                ("one name of two", table(2, "TABLE1", 3)),
                ("the next id is used", table(2, "Table1_2", 2)),
                ("a name with a blank", table(2, "Table1 2", 3)),
                ("no name", table(2, "", 3)),
                ("the columns", table(2, "Table1_2", 3, b"Columns")),
                ("another record's id", (*right[:2], table(3, "Table1_2", 3)[2])),
                ("another record's name", (*right[:2], table(2, "Table1_3", 3)[2])),
                ("a record that is gone", right[:2])):
            with self.subTest(name):
                self.assertTrue(self.failures(*copy))
        self.assertTrue(self.failures(*right, names=["table1_2"]))

    def test_a_sheet_that_is_no_copy_keeps_its_own(self):
        self.assertEqual(self.failures(*table(1, "Table1", 2), is_copy=False), [])
        self.assertTrue(self.failures(*table(2, "Table1", 3), is_copy=False))
        self.assertTrue(self.failures(*table(1, "Table2", 2), is_copy=False))


class VolatileTest(unittest.TestCase):
    FORMULAS = {("A", (1, 1)): "NOW()", ("A", (2, 1)): "A1+1", ("It's", (1, 1)): "SUM(A!$A$2:B9)",
                ("A", (9, 9)): "'It''s'!A1", ("A", (3, 3)): 'B7&"NOW()A1"', ("It's", (2, 2)): "A7",
                ("A", (4, 4)): "KNOW(A3)", ("A", (5, 5)): "Other!A1"}

    def test_what_reads_the_clock_changes(self):
        self.assertEqual(changing_cells(self.FORMULAS),
                         {("A", (1, 1)), ("A", (2, 1)), ("It's", (1, 1)), ("A", (9, 9))})

    def test_all_else_is_compared(self):
        steady = {key: text for key, text in self.FORMULAS.items() if "NOW()" != text}
        self.assertEqual(changing_cells(steady), set())


class OfficeTest(unittest.TestCase):
    @staticmethod
    def root(content):
        return ElementTree.fromstring(f'<worksheet xmlns="{MAIN}">{content}</worksheet>')

    def test_all_cells_of_an_array_have_its_formula(self):
        cells = SheetCells(self.root(
            '<sheetData><row r="1"><c r="A1"><f t="array" ref="A1:A2">B1:B2</f><v>1</v></c></row>'
            '<row r="2"><c r="A2"><v>2</v></c></row><row r="3"><c r="A3"><v>3</v></c></row>'
            '</sheetData>'))
        self.assertEqual(_formula_texts(cells), {(1, 1): "B1:B2", (2, 1): "B1:B2"})

    def test_columns_as_wide_as_usual_do_not_count(self):
        def widths(columns):
            return column_widths(self.root(f'<sheetFormatPr defaultColWidth="11.05"/>'
                                           f'<cols>{columns}</cols>'))
        usual = '<col min="3" max="3" width="10.99" style="1" hidden="false" outlineLevel="0"/>'
        self.assertEqual(widths(usual), {})
        for changed in ('width="10.9"', 'width="11.05" hidden="true"', 'outlineLevel="1"'):
            self.assertEqual(list(widths(f'<col min="3" max="4" {changed}/>')), [3, 4])


if __name__ == "__main__":
    unittest.main()
