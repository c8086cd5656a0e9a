"""The judges of an edited .xlsx find what is broken on purpose, one thing of every kind."""

import os
import sys
import tempfile
import unittest
from xml.etree import ElementTree

import integrity
from bad_files import sentence_failures
from cells import SheetCells
from compare import compare_cells
from edited import EditedWorkbook
from formulas import Names
from opc import Package
from plan import Plan, SheetPlan
from workbook import workbook_failures

# What spoils one feature of a sheet is broken there, in a template that has them all.
sys.path.append(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "fidelity"))
from fidelity_test import (RELS, SHEET, WORKBOOK, XLSX_CHANGES, drop, edited,  # noqa: E402
                           replace, template_of, write_spoiled)

OTHER, TYPES = "xl/worksheets/sheet3.xml", "[Content_Types].xml"
OFFICE = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"


def nothing(_):
    pass


def put(name, data):
    return lambda parts: parts.update({name: data})


def relationship(kind, target):
    return edited(RELS, replace("</Relationships>", f'<Relationship Id="rIdNew" Type="{kind}" '
                                                    f'Target="{target}"/></Relationships>'))


# What no feature has: what is broken, and a word of the sentence that says so.
BROKEN = (
    ("a cell's value", "cell", edited(SHEET, replace("<v>1234.5", "<v>1234.6"))),
    ("a cell's format", "format", edited(SHEET, replace('r="C1" s="4"', 'r="C1" s="5"'))),
    ("a lost cell", "gone", edited(SHEET, drop('<c r="B1"><v>1</v></c>'))),
    ("cells out of order", "order", edited(SHEET, replace('<c r="B1">', '<c r="E1">'))),
    ("a row", "row 1", edited(SHEET, drop(' ht="30"'))),
    ("another sheet's cell", "Other: cell", edited(OTHER, replace("<v>3", "<v>4"))),
    ("another sheet", "Other: ", edited(OTHER, drop("<pageMargins[^>]*>"))),
    ("a sheet's name", "sheets are", edited(WORKBOOK, replace('name="Other"', 'name="Third"'))),
    ("a sheet's state", "sheets are", edited(WORKBOOK, replace('name="Other"',
                                                               'name="Other" state="hidden"'))),
    ("the order of sheets", "sheets are", edited(WORKBOOK, replace(
        r'(<sheet name="Cover"[^>]*>)(<sheet name="Model"[^>]*>)', r"\2\1"))),
    ("a name of the workbook", "workbook's names", edited(WORKBOOK, replace(
        "Other!.A.1</definedName>", "Other!$A$9</definedName>"))),
    ("a string", "shared string 1 changed", edited("xl/sharedStrings.xml",
                                                   replace("=1", "=2"))),
    ("a count of strings", "uniqueCount", edited("xl/sharedStrings.xml",
                                                 replace(r'uniqueCount="', 'uniqueCount="1'))),
    ("two tables of one id", "table twice", edited("xl/tables/table2.xml",
                                                  replace(' id="2"', ' id="1"'))),
    ("a table's header", "table column", edited("xl/tables/table1.xml",
                                                replace('name="Work"', 'name="Play"'))),
    ("titles", "docProps/app.xml", edited("docProps/app.xml",
                                          replace("<vt:lpstr>Model</", "<vt:lpstr>May</"))),
    ("a thread", "no thread", edited("xl/comments1.xml", replace("tc={1", "tc={2"))),
    ("a part that is gone", "link to nothing", lambda parts: parts.pop("xl/drawings/drawing1.xml")),
    ("a part that nothing leads to", "reached by no", put("xl/new.xml", b"<a/>")),
    ("a part of no type", "without a type", put("xl/new.abc", b"")),
    ("a type of no part", "type of nothing", edited(TYPES, replace(
        "</Types>", '<Override PartName="/xl/no.xml" ContentType="a/b"/></Types>'))),
    ("a relationship of an unknown type", "unknown type",
     relationship("http://example.org/theme", "../theme/theme1.xml")),
    ("a relationship to nothing", "link to nothing", relationship(OFFICE + "/image", "no.png")),
    ("a block of shapes of two sheets", "block of shapes twice", lambda parts: parts.update({
        "xl/new.vml": b'<xml xmlns:o="urn:o"><o:idmap data="1"/></xml>',
        "xl/worksheets/_rels/sheet3.xml.rels": (
            b'<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">'
            b'<Relationship Id="rId1" Type="' + OFFICE.encode() + b'/vmlDrawing" '
            b'Target="../new.vml"/></Relationships>')})),
    ("markup", "not well-formed", put("xl/theme/theme1.xml", b"<a>")),
    ("a part that no edit touches", "theme1.xml changed", edited("xl/theme/theme1.xml",
                                                                 replace("Office", "Home"))),
    ("a picture that is doubled", "pictures", put("xl/media/new.png", b"picture")),
)


class HarnessTest(unittest.TestCase):
    def failures(self, change, template=template_of("", ".xlsx"), written=None, has_values=False,
                 name="Model"):
        """What the judges say of a template in which something changed. An edit leaves formulas
        without their values, which may be stale."""
        def changed(parts):
            for part in () if has_values else (SHEET, "xl/worksheets/sheet1.xml"):
                edited(part, drop("(?<=</f>)<v>.*?</v>"))(parts)
            change(parts)

        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "spoiled.xlsx")
            write_spoiled(template, changed, path)
            before, after = Package(template), Package(path)
            plan = Plan(before.sheets[1], [SheetPlan(name, written or {})], [], {}, set())
            found = [*integrity.package_failures(before, after, plan),
                     *workbook_failures(before, after, plan)]
            if not any("not well-formed" in failure for failure in found):
                workbook = EditedWorkbook(before, after, plan)
                found += [*workbook.failures(), *workbook.workbook_name_failures()]
        return found

    def test_finds_a_feature_that_is_spoiled(self):
        for name, change in XLSX_CHANGES.items():
            with self.subTest(name):
                self.assertTrue(self.failures(change, template_of(name, ".xlsx")))

    def test_finds_what_is_broken(self):
        for name, word, change in BROKEN:
            with self.subTest(name):
                self.assertIn(word, "\n".join(self.failures(change)))

    def test_finds_written_cells_that_are_wrong(self):
        written = {(1, 2): 1, (2, 2): 5, (9, 9): "new"}
        self.assertEqual(
            [failure.partition(" holds")[0] for failure in self.failures(nothing, written=written)],
            ["Model: (2, 2)", "Model: (9, 9) was not written"])

    def test_finds_stale_values(self):
        found = "\n".join(self.failures(nothing, has_values=True))
        self.assertIn("Model: cell (1, 4): the formula has a stale value", found)
        self.assertIn("Cover: (1, 1): the formula 'Model!B1' keeps a stale value", found)

    def test_finds_names_that_do_not_follow(self):
        def renamed(parts):
            edited(WORKBOOK, replace('name="Model"', 'name="2027"'))(parts)
            edited(SHEET, replace("Model!B", "2027!B"))(parts)
        found = "\n".join(self.failures(renamed, name="2027"))
        self.assertIn(f"{SHEET} names ['2027'] without apostrophes", found)
        self.assertIn("xl/charts/chart1.xml still names the former sheet", found)

    def test_finds_a_shared_formula_that_is_handed_over_wrongly(self):
        def cells(text):
            return SheetCells(ElementTree.fromstring(f"<worksheet><sheetData>{text}</sheetData>"
                                                     f"</worksheet>"))
        before = cells('<row r="1"><c r="A1"><f t="shared" ref="A1:B1" si="0">A2</f></c>'
                       '<c r="B1"><f t="shared" si="0"/></c></row>')
        for text, failures in (("B2", 0), ("A2", 1)):
            after = cells(f'<row r="1"><c r="A1"><v>1</v></c><c r="B1"><f>{text}</f></c></row>')
            found = compare_cells(before, after, (Names(), Names()), {(1, 1)}, set(), True)
            self.assertEqual(len(list(found)), failures, text)

    def test_accepts_the_same(self):
        self.assertEqual(self.failures(nothing), [])


class SentenceTest(unittest.TestCase):
    def test_sentences(self):
        self.assertEqual(list(sentence_failures(b'"a.xlsx" is protected by a password.\n')), [])
        for text in (b"", b"basic_string::at: out of range", b"One line of text.\nAnother line.\n"):
            self.assertTrue(list(sentence_failures(text)), text)


if __name__ == "__main__":
    unittest.main()
