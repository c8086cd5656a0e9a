"""The judges of .xls workbooks find what is broken on purpose, one thing of every kind."""

import os
import shutil
import struct
import tempfile
import unittest
from copy import deepcopy
from types import SimpleNamespace
from xml.etree import ElementTree

import xlwt

import xls_book as biff
import xls_embedded
import xls_structure
import xls_tables
from plan import Plan, SheetPlan
from xls_book import Book, Record
from xls_compound import STREAM, CompoundFile, Entry, same_failures
from xls_copies import EditedBook
from xls_drawing import FDG, FSP
from xls_places import CF, DV, HLINK
from xls_office import column_widths
from xls_plan import Model
from xls_views import BookView, SheetView, view_failures

_TESTS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
# Three sheets; the first, "Model", has what the checks look at.
PATH = os.path.join(_TESTS, "engines", "builtin", "xls", "data", "everything.xls")


def setUpModule():
    global FOLDER
    FOLDER = tempfile.mkdtemp(prefix="orrery-harness-")


def tearDownModule():
    shutil.rmtree(FOLDER, ignore_errors=True)


def plain_workbook():
    """Forty rows of one number each, by xlwt."""
    book = xlwt.Workbook()
    sheet = book.add_sheet("Month")
    for row in range(40):
        sheet.write(row, 0, row)
    path = os.path.join(FOLDER, "plain.xls")
    book.save(path)
    return path


def with_row_blocks(path):
    """The same with the ends of its two row blocks, and their index, which xlwt leaves out."""
    def pack(record):
        return struct.pack("<HH", record.type, len(record.data)) + record.data
    book = Book(path)
    bof, *records = book.sheets[0].own
    first = next(at for at, record in enumerate(records) if record.type == biff.ROW)
    head = b"".join(map(pack, records[:first]))
    begin = bof.offset + len(pack(bof))
    made, blocks = b"", []
    for rows in (records[first:first + 64], records[first + 64:first + 80]):
        cells = [0] + [34] * (len(rows) // 2 - 1)  # a row and its cell have 34 bytes
        made += b"".join(map(pack, rows))
        blocks.append(begin + 28 + len(head) + len(made))
        made += struct.pack(f"<HHI{len(cells)}H", biff.DBCELL, 4 + 2 * len(cells),
                            34 * len(cells), *cells)
    index = struct.pack("<HH6I", biff.INDEX, 24, 0, 0, 40, 0, *blocks)
    rest = b"".join(map(pack, records[first + 80:]))
    return Book(path, book.stream[:begin] + index + head + made + rest)


def changed(kind, edit, which=0, book=None):
    """The workbook with one record changed in place: `edit` gets its data as a bytearray."""
    book = book or Book(PATH)
    record = [record for record in book.records if record.type == kind][which]
    data = bytearray(record.data)
    edit(data)
    at = record.offset + 4
    return Book(book.file.path, book.stream[:at] + bytes(data) + book.stream[at + len(data):])


def put(form, at, value):
    """An edit that writes a number."""
    return lambda data: struct.pack_into(form, data, at, value)


def in_atom(kind, at, value):
    """An edit that writes a byte into the first atom of a kind."""
    def edit(data):
        data[bytes(data).index(struct.pack("<H", kind)) + 6 + at] = value
    return edit


class CompoundTest(unittest.TestCase):
    """On a file of xlwt: LibreOffice's trees are not red-black."""

    def test_finds_what_is_broken(self):
        path, other = plain_workbook(), os.path.join(FOLDER, "changed.xls")
        with open(path, "rb") as file:
            sound = file.read()
        root = (struct.unpack_from("<I", sound, 48)[0] + 1) * 512
        fat = (struct.unpack_from("<I", sound, 76)[0] + 1) * 512
        entry = root + 128
        for name, edit in (
                ("", put("<B", 0, sound[0])),
                ("a class id", put("<B", entry + 80, 9)), ("a state", put("<I", entry + 96, 5)),
                ("times", put("<I", entry + 100, 5)), ("a name", put("<B", entry, ord("Z"))),
                ("a lost entry", put("<I", root + 76, 0xFFFFFFFF)),
                ("a link to itself", put("<I", entry + 68, 1)),
                ("a red root of a tree", put("<B", entry + 67, 0)),
                ("a chain in a circle", put("<I", fat + 4, 1)),
                ("a sector of a chain that is free", put("<I", fat + 4, 0xFFFFFFFF)),
                ("a table's sector that is free",
                 put("<I", fat + 4 * struct.unpack_from("<I", sound, 76)[0], 0xFFFFFFFF)),
                ("a count of sectors", put("<I", 44, 2)),
                ("a byte of a stream", put("<B", 512 + 600, 1))):
            data = bytearray(sound)
            edit(data)
            with open(other, "wb") as file:
                file.write(data)
            with self.subTest(name):
                found = list(same_failures(CompoundFile(path), CompoundFile(other)))
                self.assertEqual(bool(found), bool(name), found)


class StructureTest(unittest.TestCase):
    def kinds(self, book):
        return {kind for _, kind, _ in xls_structure.structure_failures(book)}

    def test_finds_what_is_broken(self):
        self.assertEqual(self.kinds(Book(PATH)), set())
        for kind, record, edit in (
                ("BOUNDSHEET", biff.BOUNDSHEET, put("<I", 0, 4)),
                ("TABID", biff.TABID, put("<H", 0, 2)),
                ("WINDOW1", biff.WINDOW1, put("<H", 10, 3)),
                ("selection", biff.WINDOW2, put("<H", 0, 0)),
                ("cstTotal", biff.SST, put("<I", 0, 99)),
                ("SST", biff.LABELSST, put("<I", 6, 99)),
                ("EXTSST", biff.EXTSST, put("<I", 2, 99)),
                ("NAME", biff.NAME, put("<H", 8, 9)),
                ("EXTERNSHEET", biff.EXTERNSHEET, put("<h", 6, 7)),
                ("SUPBOOK", biff.SUPBOOK, put("<H", 0, 9)),
                ("tokens", biff.EXTERNSHEET, put("<H", 0, 0)),
                ("OBJ", biff.OBJ, put("<H", 6, 2)),
                ("drawings", biff.MSODRAWING, in_atom(FSP, 2, 16)),
                ("pictures", biff.MSODRAWINGGROUP, in_atom(0xF007, 24, 0)),
                ("FDG", biff.MSODRAWING, in_atom(FDG, 0, 77)),
                ("DIMENSIONS", biff.DIMENSIONS, put("<I", 4, 1)),
                ("ROW", biff.ROW, put("<H", 4, 1)),
                ("order", biff.MULRK, put("<H", 2, 200))):
            with self.subTest(kind):
                self.assertIn(kind, self.kinds(changed(record, edit)))

    def test_finds_wrong_places_of_row_blocks(self):
        sound = with_row_blocks(plain_workbook())
        self.assertEqual(self.kinds(sound) & {"INDEX", "DBCELL"}, set())
        for kind, record, edit in (("INDEX", biff.INDEX, put("<I", 16, 8)),
                                   ("INDEX", biff.INDEX, put("<I", 8, 39)),
                                   ("DBCELL", biff.DBCELL, put("<I", 0, 8)),
                                   ("DBCELL", biff.DBCELL, put("<H", 4, 8))):
            for which in range(1 if record == biff.INDEX else 2):
                self.assertIn(kind, self.kinds(changed(record, edit, which, sound)))

    def test_a_new_failure_is_one_that_the_input_has_not(self):
        broken = changed(biff.SST, put("<I", 0, 99))
        self.assertTrue(list(xls_structure.new_failures(Book(PATH), broken, 0, 1)))
        self.assertEqual(list(xls_structure.new_failures(broken, broken, 0, 1)), [])


class OwnDataTest(unittest.TestCase):
    """Of a sheet and its copy: objects whose data lie outside the stream, and tables."""

    @staticmethod
    def sheet(file, *records):
        own = [Record(0, kind, data, 1) for kind, data in records]
        return SimpleNamespace(name="Sheet", own=own, book=SimpleNamespace(file=file, names=()),
                               all_of=lambda kind: [data for found, data in records
                                                    if found == kind])

    @staticmethod
    def embedded(number, size=None):
        """The record of an object in the storage of that number; with a size, of a control."""
        formula = struct.pack("<HHI", 14, 5, 0) + b"\2" + bytes(7)
        formula += struct.pack("<I", number) + (struct.pack("<II", size, 0) if size else b"")
        return biff.OBJ, struct.pack("<5H", 0x15, 6, 8, 1, 0) \
            + struct.pack("<3H", 8, 2, 0x31 if size else 1) \
            + struct.pack("<HH", 9, len(formula)) + formula + bytes(4)

    @staticmethod
    def file(controls, storages):
        def entry(data):
            return Entry("", STREAM, 1, (), b"", 0, b"", 0, len(data), data)
        return SimpleNamespace(entries={("Ctls",): entry(controls), **{
            (f"MBD{number:08X}", "data"): entry(data) for number, data in storages.items()}})

    def test_finds_objects_without_data_of_their_own(self):
        before, own = self.file(b"..abcd", {7: b"words"}), {7: b"words", 8: b"words"}
        model = self.sheet(before, self.embedded(7), self.embedded(2, 4))
        for name, controls, storages, number, place, size in (
                ("", b"..abcdabcd", own, 8, 6, 4),
                ("the model's storage", b"..abcdabcd", own, 7, 6, 4),
                ("no storage of that number", b"..abcdabcd", own, 9, 6, 4),
                ("a byte of a storage", b"..abcdabcd", {7: b"words", 8: b"wordz"}, 8, 6, 4),
                ("the model's control", b"..abcdabcd", own, 8, 2, 4),
                ("a control's place", b"..abcdabcd", own, 8, 5, 4),
                ("a control's size", b"..abcdabcd", own, 8, 6, 3),
                ("a control past the end", b"..abcdabcd", own, 8, 7, 4),
                ("a byte of a control", b"..abcdabcX", own, 8, 6, 4)):
            with self.subTest(name):
                file = self.file(controls, storages)
                first = self.sheet(file, self.embedded(7), self.embedded(2, 4))
                copy = self.sheet(file, self.embedded(number), self.embedded(place, size))
                book = SimpleNamespace(file=file, sheets=[first, copy])
                found = [*xls_embedded.sheet_failures(model, copy),
                         *xls_embedded.book_failures(book)]
                self.assertEqual(bool(found), bool(name), found)
        self.assertEqual([xls_embedded.grown(before, self.file(data, {}))
                          for data in (b"..abcdabcd", b"..abcXabcd", b"..abc")],
                         [{("Ctls",)}, set(), set()])

    def test_finds_tables_without_ids_and_names_of_their_own(self):
        book = Book(os.path.join(_TESTS, "fidelity", "data", "fidelity.xls"))
        records = [(record.type, record.data) for record in book.sheets[1].own
                   if record.type in xls_tables.KINDS]
        model = self.sheet(None, *records)
        again = SimpleNamespace(sheets=[model, model], names=[SimpleNamespace(text="Plan")])
        self.assertEqual(list(xls_tables.book_failures(again)),
                         ["1 stands for 2 tables or names", "'plan' stands for 3 tables or names"])
        kind, data = records[-1]
        other_id = (kind, data[:14] + b"\2" + data[15:])
        for made in (records[:-1], [*records[:-1], other_id]):
            for is_copy in (True, False):
                self.assertTrue(list(xls_tables.sheet_failures(model, self.sheet(None, *made),
                                                               is_copy)))


class EditedBookTest(unittest.TestCase):
    def failures(self, after, written=None):
        plan = Plan(Model("Model", 0), [SheetPlan("Model", written or {})], [], {}, set())
        return "\n".join(EditedBook(Book(PATH), after, plan).failures())

    def test_finds_what_changed(self):
        self.assertEqual(self.failures(Book(PATH)), "")
        for word, record, edit in (
                ("0xa1", 0xA1, put("<H", 0, 8)), ("0xe5", biff.MERGES, put("<H", 2, 5)),
                ("0x1b1", CF, lambda data: data.__setitem__(-2, 7)),
                ("0x1be", DV, put("<I", 0, 0)),
                ("0x5d", biff.OBJ, put("<H", 4, 40)), ("0x1b8", HLINK, put("<B", 0, 9)),
                ("drawings", biff.MSODRAWING, in_atom(0xF010, 6, 9)),
                ("shared strings", biff.SST, lambda data: data.__setitem__(-1, 65)),
                ("0xe0", biff.XF, put("<H", 0, 1)),
                ("state 1", biff.BOUNDSHEET, lambda data: data.__setitem__(4, 1)),
                ("the sheets are", biff.BOUNDSHEET, lambda data: data.__setitem__(-1, 65))):
            with self.subTest(word):
                self.assertIn(word, self.failures(changed(record, edit)))

    def test_finds_stale_results(self):
        found = self.failures(Book(PATH), {(1, 1): 7})
        self.assertIn("Model: ", found)
        self.assertIn("Other: ", found)
        self.assertIn("the formula has a stale value", found)

    def test_ids_of_shapes_may_differ(self):
        self.assertEqual(self.failures(changed(biff.MSODRAWING, in_atom(FSP, 1, 44))), "")


class ViewTest(unittest.TestCase):
    """What any other program sees."""

    def setUp(self):
        plans = [SheetPlan("Proof", {(1, 1): 5}), SheetPlan("Proof 02", {(1, 1): "x"})]
        self.plan = Plan(Model("Month", 0), plans, [], {}, set())
        month = SheetView("Month", {(1, 1): ("number", 7, "L"),
                                    (1, 2): ("formula", "Month!A2", "L")}, {"1": [300]},
                          {"merges": ["A2:B2"], "shapes": "failed: no"})
        year = SheetView("Year", {(1, 1): ("formula", "Month!A1*2", "L")}, {}, {"shapes": []})
        self.before = BookView([month, year], ["L"] * 40, [(0, "Print_Area", "Month!A1"),
                                                           (None, "Days", "Month!A2")])
        copies = []
        for planned in plans:
            copy = deepcopy(month)
            copy.name = planned.name
            value = planned.written[1, 1]
            copy.cells[1, 1] = ("text" if isinstance(value, str) else "number", value, "L")
            copy.cells[1, 2] = ("formula", f"'{planned.name}'!A2", "L")
            copies.append(copy)
        year = deepcopy(year)
        year.cells[1, 1] = ("formula", "Proof!A1*2", "L")
        self.after = BookView([*copies, year], ["L"] * 40, [
            (0, "Print_Area", "Proof!A1"), (None, "Days", "Proof!A2"),
            (1, "Print_Area", "'Proof 02'!A1"), (1, "Days", "'Proof 02'!A2")])

    def test_finds_what_is_wrong(self):
        def cell(sheet, where, value):
            return lambda: self.after.sheets[sheet].cells.__setitem__(where, value)
        model = SimpleNamespace(merges=[], style_at=lambda where: 0)
        for name, edit in (
                ("", lambda: None),
                ("a written value", cell(1, (1, 1), ("text", "y", "L"))),
                ("a written kind", cell(0, (1, 1), ("text", "5", "L"))),
                ("a written format", cell(0, (1, 1), ("number", 5, "M"))),
                ("a formula of the model", cell(1, (1, 2), ("formula", "Proof!A2", "L"))),
                ("another cell", cell(1, (7, 7), ("number", 1, "L"))),
                ("an outside formula", cell(2, (1, 1), ("formula", "'Proof 02'!A1*2", "L"))),
                ("a row", lambda: self.after.sheets[1].rows.update({"1": [299]})),
                ("a merge", lambda: self.after.sheets[1].owned.update(merges=[])),
                ("another sheet's shapes", lambda: self.after.sheets[2].owned.update(shapes=[1])),
                ("the order of sheets", lambda: self.after.sheets.reverse()),
                ("a twin of the workbook's name", lambda: self.after.names.pop()),
                ("a copy's name", lambda: self.after.names.pop(2)),
                ("the workbook's name", lambda: self.after.names.pop(1)),
                ("the model's name", lambda: self.after.names.pop(0)),
                ("the formats", lambda: self.after.looks.__setitem__(3, "M"))):
            with self.subTest(name):
                self.setUp()
                edit()
                found = list(view_failures("it", self.before, self.after, self.plan, model))
                self.assertEqual(bool(found), bool(name), found)


class OfficeTest(unittest.TestCase):
    def test_only_columns_as_wide_as_usual_do_not_count(self):
        for column, count in (('width="10.99" style="1" hidden="false" outlineLevel="0"', 0),
                              ('width="10.9"', 2), ('width="11.05" hidden="true"', 2),
                              ('outlineLevel="1"', 2)):
            root = ElementTree.fromstring('<x><sheetFormatPr defaultColWidth="11.05"/>'
                                          f'<cols><col min="3" max="4" {column}/></cols></x>')
            self.assertEqual(len(column_widths(root)), count, column)


if __name__ == "__main__":
    unittest.main()
