"""Tests of the .xls comparison itself: each check finds what is broken on purpose."""

import os
import shutil
import struct
import tempfile
import unittest
from copy import deepcopy

import xlwt

import readers
import xls_book as biff
import xls_structure
from plan import Plan, SheetPlan
from xls_book import Book
from xls_compound import CompoundFile, same_failures
from xls_copies import EditedBook
from xls_drawing import FDG, FSP, sheet_drawing
from xls_places import HLINK, hyperlink
from xls_plan import Model, make_plan
from xls_tokens import SELF, Speller, unshared
from xls_views import BookView, SheetView, view_failures

# Two sheets with what the checks look at; LibreOffice makes the .xls of it.
DOCUMENT = """<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0"
 xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:xlink="http://www.w3.org/1999/xlink"
 xmlns:of="urn:oasis:names:tc:opendocument:xmlns:of:1.2" office:version="1.2"
 office:mimetype="application/vnd.oasis.opendocument.spreadsheet">
<office:body><office:spreadsheet>
<table:table table:name="Month" table:print-ranges="$Month.A1:$Month.C9">
<table:table-row><table:table-cell office:value-type="float" office:value="7"/>
<table:table-cell table:formula="of:=[.A1]+[$Year.A1]" office:value-type="float" office:value="9"/>
<table:table-cell office:value-type="string"><office:annotation><text:p>note</text:p>
</office:annotation><text:p>words</text:p></table:table-cell></table:table-row>
<table:table-row><table:table-cell table:number-columns-spanned="2" office:value-type="string">
<text:p>merged</text:p></table:table-cell></table:table-row>
</table:table>
<table:table table:name="Year"><table:table-row>
<table:table-cell office:value-type="float" office:value="2"/>
<table:table-cell table:formula="of:=[$Month.A1]*2" office:value-type="float" office:value="14"/>
<table:table-cell office:value-type="string"><text:p><text:a xlink:href="#Month.A1">there</text:a>
</text:p></table:table-cell></table:table-row></table:table>
<table:named-expressions><table:named-range table:name="area"
 table:base-cell-address="$Month.$A$1" table:cell-range-address="$Month.$A$1"/>
</table:named-expressions></office:spreadsheet></office:body></office:document>
"""


def setUpModule():
    global FOLDER, PATH
    FOLDER = tempfile.mkdtemp(prefix="orrery-harness-")
    source = os.path.join(FOLDER, "book.fods")
    with open(source, "w", encoding="utf-8") as file:
        file.write(DOCUMENT)
    PATH = readers.Office(FOLDER).convert([source], FOLDER, "xls:MS Excel 97")[source]


def tearDownModule():
    shutil.rmtree(FOLDER, ignore_errors=True)


def plain_workbook():
    """Two blocks of rows, by xlwt."""
    book = xlwt.Workbook()
    sheet = book.add_sheet("Month")
    for row in range(40):
        sheet.write(row, 0, row)
    path = os.path.join(FOLDER, "plain.xls")
    book.save(path)
    return path


def changed(kind, edit, which=0):
    """The workbook with one record changed in place: `edit` gets its data as a bytearray."""
    book = Book(PATH)
    record = [record for record in book.records if record.type == kind][which]
    data = bytearray(record.data)
    edit(data)
    at = record.offset + 4
    return Book(PATH, book.stream[:at] + bytes(data) + book.stream[at + len(record.data):])


def put(form, at, value):
    """An edit that writes a number."""
    return lambda data: struct.pack_into(form, data, at, value)


def atom_at(data, kind):
    """Where the data of an atom begins in a record of a drawing."""
    return bytes(data).index(struct.pack("<H", kind)) + 6


class CompoundTest(unittest.TestCase):
    """On a file of xlwt: LibreOffice's trees are not red-black."""

    def setUp(self):
        self.path = plain_workbook()
        with open(self.path, "rb") as file:
            self.data = file.read()
        self.root = (struct.unpack_from("<I", self.data, 48)[0] + 1) * 512
        self.fat = (struct.unpack_from("<I", self.data, 76)[0] + 1) * 512

    def failures(self, *edits):
        data = bytearray(self.data)
        for edit in edits:
            edit(data)
        path = os.path.join(FOLDER, "changed.xls")
        with open(path, "wb") as file:
            file.write(data)
        return list(same_failures(CompoundFile(self.path), CompoundFile(path)))

    def test_accepts_the_same(self):
        self.assertEqual(self.failures(), [])

    def test_finds_what_is_broken(self):
        entry = self.root + 128
        for name, edit in (
                ("a class id", put("<B", entry + 80, 9)), ("a state", put("<I", entry + 96, 5)),
                ("times", put("<I", entry + 100, 5)), ("a name", put("<B", entry, ord("Z"))),
                ("a lost entry", put("<I", self.root + 76, 0xFFFFFFFF)),
                ("a link to itself", put("<I", entry + 68, 1)),
                ("a red root of a tree", put("<B", entry + 67, 0)),
                ("a chain in a circle", put("<I", self.fat + 4, 1)),
                ("a sector of a chain that is free", put("<I", self.fat + 4, 0xFFFFFFFF)),
                ("a table's sector that is free",
                 put("<I", self.fat + 4 * struct.unpack_from("<I", self.data, 76)[0], 0xFFFFFFFF)),
                ("a count of sectors", put("<I", 44, 2)),
                ("a byte of a stream", put("<B", 512 + 600, 1))):
            with self.subTest(name):
                self.assertTrue(self.failures(edit))


class StructureTest(unittest.TestCase):
    def test_accepts_a_sound_workbook(self):
        self.assertEqual(list(xls_structure.structure_failures(Book(PATH))), [])

    def test_finds_what_is_broken(self):
        for kind, record, edit in (
                ("BOUNDSHEET", biff.BOUNDSHEET, put("<I", 0, 4)),
                ("TABID", biff.TABID, put("<H", 0, 2)),
                ("WINDOW1", biff.WINDOW1, put("<H", 10, 2)),
                ("selection", biff.WINDOW2, put("<H", 0, 0)),
                ("cstTotal", biff.SST, put("<I", 0, 99)),
                ("SST", biff.LABELSST, put("<I", 6, 99)),
                ("EXTSST", biff.EXTSST, put("<I", 2, 99)),
                ("NAME", biff.NAME, put("<H", 8, 9)),
                ("EXTERNSHEET", biff.EXTERNSHEET, put("<h", 6, 7)),
                ("SUPBOOK", biff.SUPBOOK, put("<H", 0, 9)),
                ("tokens", biff.EXTERNSHEET, put("<H", 0, 0)),
                ("drawings", biff.MSODRAWING, lambda data: put(
                    "<I", atom_at(data, FSP), 1 << 20)(data)),
                ("FDG", biff.MSODRAWING, lambda data: put("<I", atom_at(data, FDG), 77)(data)),
                ("DIMENSIONS", biff.DIMENSIONS, put("<I", 4, 1)),
                ("ROW", biff.ROW, put("<H", 4, 1)),
                ("order", biff.RK, put("<H", 2, 200))):
            with self.subTest(kind):
                failures = xls_structure.structure_failures(changed(record, edit))
                self.assertIn(kind, {found for _, found, _ in failures})

    def test_finds_wrong_row_blocks(self):
        """LibreOffice writes none; those of xlwt do."""
        sound = Book(plain_workbook())
        kinds = {kind for _, kind, _ in xls_structure.structure_failures(sound)}
        for record in [record for record in sound.records if record.type == biff.DBCELL]:
            self.assertNotIn("DBCELL", kinds)
            broken = bytearray(sound.stream)
            struct.pack_into("<I", broken, record.offset + 4, 8)
            self.assertIn("DBCELL", {kind for _, kind, _ in xls_structure.structure_failures(
                Book(sound.file.path, bytes(broken)))})

    def test_a_new_failure_is_one_that_the_input_has_not(self):
        broken = changed(biff.SST, put("<I", 0, 99))
        self.assertTrue(list(xls_structure.new_failures(Book(PATH), broken, 0, 1)))
        self.assertEqual(list(xls_structure.new_failures(broken, broken, 0, 1)), [])


def untouched_plan():
    return Plan(Model("Month", 0), [SheetPlan("Month")], [], {}, set())


class EditedBookTest(unittest.TestCase):
    def failures(self, after):
        return list(EditedBook(Book(PATH), after, untouched_plan()).failures())

    def test_accepts_the_same(self):
        self.assertEqual(self.failures(Book(PATH)), [])

    def test_finds_what_changed(self):
        for name, record, edit in (
                ("page set-up", 0xA1, put("<H", 0, 8)),
                ("a merge", biff.MERGES, put("<H", 2, 5)),
                ("a value", biff.RK, put("<I", 6, 44)),
                ("a format", biff.RK, put("<H", 4, 16)),
                ("a formula", biff.FORMULA, lambda data: data.__setitem__(-1, 4)),
                ("a stored result", biff.FORMULA, put("<d", 6, 1.5)),
                ("a row", biff.ROW, put("<H", 6, 900)),
                ("a cell format", biff.XF, put("<H", 0, 1)),
                ("a name", biff.NAME, lambda data: data.__setitem__(-2, 3)),
                ("a name's sheet", biff.NAME, put("<H", 8, 2)),
                ("an entry of EXTERNSHEET", biff.EXTERNSHEET, put("<I", 4, 0x00010001)),
                ("a string", biff.SST, lambda data: data.__setitem__(-1, 65)),
                ("a sheet's state", biff.BOUNDSHEET, lambda data: data.__setitem__(4, 1)),
                ("a sheet's name", biff.BOUNDSHEET, lambda data: data.__setitem__(-1, 65)),
                ("an object", biff.OBJ, put("<H", 6, 40)),
                ("an anchor", biff.MSODRAWING, lambda data: put(
                    "<H", atom_at(data, 0xF010) + 6, 9)(data)),
                ("a link", HLINK, lambda data: data.__setitem__(-6, 66))):
            with self.subTest(name):
                self.assertTrue(any(self.failures(changed(record, edit, which))
                                    for which in self.records_of(record)))

    @staticmethod
    def records_of(kind):
        return range(sum(record.type == kind for record in Book(PATH).records))

    def test_shape_ids_may_differ(self):
        def shift(data):
            at = bytes(data).find(struct.pack("<H", FSP))
            while at >= 0:
                put("<I", at + 6, struct.unpack_from("<I", data, at + 6)[0] + 4096)(data)
                at = bytes(data).find(struct.pack("<H", FSP), at + 8)
        left = sheet_drawing(Book(PATH).sheets[0])
        right = sheet_drawing(changed(biff.MSODRAWING, shift).sheets[0])
        self.assertNotEqual(left.data, right.data)
        self.assertEqual(left.neutral(), right.neutral())

    def test_finds_written_cells_that_are_wrong(self):
        plan = untouched_plan()
        plan.sheets[0].written = {(1, 1): 7, (9, 9): "new"}
        failures = "\n".join(EditedBook(Book(PATH), Book(PATH), plan).failures())
        self.assertIn("(9, 9) was not written", failures)
        self.assertIn("stale value", failures)
        self.assertNotIn("(1, 1) holds", failures)


class TokensTest(unittest.TestCase):
    def test_shared_formulas_are_placed(self):
        shared = bytes([0x4C]) + struct.pack("<HH", 0xFFFF, 0xC0FF)  # the cell above to the left
        self.assertEqual(unshared(shared, (5, 3)), bytes([0x44]) + struct.pack("<HH", 3, 0xC001))

    def test_an_own_sheet_has_one_spelling(self):
        book = Book(PATH)
        formula = book.sheets[1].formulas[1, 2][0]
        self.assertIn(SELF, str(Speller(book, 0).spell(formula)))
        self.assertIn("Month", str(Speller(book, 1).spell(formula)))

    def test_the_place_of_a_link_is_found(self):
        link = next(record for record in Book(PATH).records if record.type == HLINK)
        self.assertIn("Month", hyperlink(link.data)[0])


class PlanTest(unittest.TestCase):
    def test_the_plan_writes_over_each_kind_of_cell(self):
        book = Book(PATH)
        plan = make_plan(book)
        kinds = {cell.record for cell in book.sheets[0].cells.values()}
        over = {book.sheets[0].cells[where].record for where in plan.sheets[0].written
                if where in book.sheets[0].cells}
        self.assertEqual(kinds, over)
        self.assertEqual(plan.sheets[0].refused, {(65537, 1): "outside"})


class ViewTest(unittest.TestCase):
    def setUp(self):
        self.book = Book(PATH)
        self.plan = make_plan(self.book)
        self.plan.sheets = [SheetPlan("Proof", {(1, 1): 5}), SheetPlan("Proof 02", {(1, 1): "x"})]
        month = SheetView("Month", {(1, 1): ("number", 7, "L"),
                                    (1, 2): ("formula", "Month!A2", "L")}, {"1": [300]},
                          {"merges": ["A2:B2"], "shapes": "failed: no"})
        year = SheetView("Year", {(1, 1): ("formula", "Month!A1*2", "L")}, {}, {"shapes": []})
        self.before = BookView([month, year], ["L"] * 40, [(0, "Print_Area", "Month!A1")])
        copies = []
        for planned in self.plan.sheets:
            copy = deepcopy(month)
            copy.name = planned.name
            value = planned.written[1, 1]
            copy.cells[1, 1] = ("text" if isinstance(value, str) else "number", value, "L")
            copy.cells[1, 2] = ("formula", f"'{planned.name}'!A2", "L")
            copies.append(copy)
        year = deepcopy(year)
        year.cells[1, 1] = ("formula", "Proof!A1*2", "L")
        self.after = BookView([*copies, year], ["L"] * 40,
                              [(0, "Print_Area", "Proof!A1"), (1, "Print_Area", "'Proof 02'!A1")])

    def failures(self):
        return list(view_failures("it", self.before, self.after, self.plan, self.book.sheets[0]))

    def test_accepts_what_is_right(self):
        self.assertEqual(self.failures(), [])

    def test_finds_what_is_wrong(self):
        def cell(sheet, where, value):
            return lambda: self.after.sheets[sheet].cells.__setitem__(where, value)
        for name, edit in (
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
                ("a copy's name", lambda: self.after.names.pop()),
                ("the model's name", lambda: self.after.names.pop(0)),
                ("the formats", lambda: self.after.looks.__setitem__(3, "M"))):
            with self.subTest(name):
                self.setUp()
                edit()
                self.assertTrue(self.failures())


if __name__ == "__main__":
    unittest.main()
