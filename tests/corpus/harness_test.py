"""Tests of the comparison itself: what it has to accept, and what it has to find."""

import os
import tempfile
import unittest
import zipfile
from types import SimpleNamespace
from xml.etree import ElementTree

import integrity
from bad_files import sentence_failures
from cells import SheetCells, unescape
from compare import SheetComparison, Side, compare_cells
from counts import count_sheet, sheet_names
from formulas import Names, in_sheet_range, names_sheet, needs_quotes, unquoted_by_mistake
from opc import Package, Sheet

MAIN = 'xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main"'
RELS = 'xmlns="http://schemas.openxmlformats.org/package/2006/relationships"'
OFFICE = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"

PARTS = {
    "[Content_Types].xml":
        '<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">'
        '<Default Extension="rels" ContentType="application/rels+xml"/>'
        '<Default Extension="xml" ContentType="application/xml"/>'
        '<Default Extension="png" ContentType="image/png"/></Types>',
    "_rels/.rels":
        f'<Relationships {RELS}><Relationship Id="r1" Type="{OFFICE}/officeDocument" '
        f'Target="book.xml"/></Relationships>',
    "book.xml":
        f'<workbook {MAIN} xmlns:r="{OFFICE}"><sheets><sheet name="Month" sheetId="1" '
        f'r:id="r1"/></sheets></workbook>',
    "_rels/book.xml.rels":
        f'<Relationships {RELS}><Relationship Id="r1" Type="{OFFICE}/worksheet" '
        f'Target="s1.xml"/></Relationships>',
    "s1.xml":
        f'<worksheet {MAIN} xmlns:r="{OFFICE}"><sheetData><row r="1"><c r="A1" s="3"><v>1</v></c>'
        f'<c r="B1"><f>Month!A1+1</f><v>2</v></c></row></sheetData>'
        f'<mergeCells><mergeCell ref="A5:C5"/></mergeCells>'
        f'<dataValidations><dataValidation sqref="A1"><formula1>Month!$A$1</formula1>'
        f'</dataValidation></dataValidations><drawing r:id="r7"/></worksheet>',
    "_rels/s1.xml.rels":
        f'<Relationships {RELS}><Relationship Id="r7" Type="{OFFICE}/image" '
        f'Target="media/p.png"/></Relationships>',
    "media/p.png": "picture",
}


def package(changes=None):
    """A workbook of a few parts, with some of them replaced; None takes a part away."""
    parts = {**PARTS, **(changes or {})}
    handle, path = tempfile.mkstemp(suffix=".xlsx")
    os.close(handle)
    with zipfile.ZipFile(path, "w") as file:
        for name, text in parts.items():
            if text is not None:
                file.writestr(name, text)
    try:
        return Package(path)
    finally:
        os.remove(path)


def copied(sheet_text=None, rels_text=None):
    """The workbook with a copy "May" of its sheet in s2.xml."""
    sheet = (sheet_text or PARTS["s1.xml"]).replace("Month!", "May!")
    return package({"s2.xml": sheet, "_rels/s2.xml.rels": rels_text or PARTS["_rels/s1.xml.rels"]})


def compared(after):
    sides = (Side(package(), Names({"Month": "self"})), Side(after, Names({"May": "self"})))
    return SheetComparison(*sides).run("s1.xml", "s2.xml")


class SheetComparisonTest(unittest.TestCase):
    def test_accepts_a_copy_that_names_itself(self):
        self.assertEqual(compared(copied()), [])

    def test_finds_a_copy_that_names_the_model(self):
        after = package({"s2.xml": PARTS["s1.xml"],
                         "_rels/s2.xml.rels": PARTS["_rels/s1.xml.rels"]})
        self.assertIn("formula1", " ".join(compared(after)))

    def test_finds_a_lost_merge(self):
        text = PARTS["s1.xml"].replace('<mergeCell ref="A5:C5"/>', "")
        self.assertIn("mergeCells", " ".join(compared(copied(text))))

    def test_finds_a_doubled_picture(self):
        rels = PARTS["_rels/s1.xml.rels"].replace("p.png", "p2.png")
        after = copied(rels_text=rels)
        self.assertTrue(compared(after))

    def test_finds_a_lost_relationship(self):
        rels = f"<Relationships {RELS}/>"
        self.assertTrue(compared(copied(rels_text=rels)))


class CellsTest(unittest.TestCase):
    def sheet(self, rows, rest=""):
        return SheetCells(ElementTree.fromstring(
            f"<worksheet {MAIN}>{rest}<sheetData>{rows}</sheetData></worksheet>"))

    def differences(self, left, right, strip=True, written=()):
        names = (Names(), Names())
        return list(compare_cells(self.sheet(left), self.sheet(right), names, written, set(),
                                  strip))

    def test_a_new_cell_takes_its_rows_format_else_its_columns(self):
        sheet = self.sheet('<row r="2" s="5" customFormat="1"/><row r="3" s="6"/>',
                           '<cols><col min="2" max="4" style="7"/></cols>')
        self.assertEqual([sheet.style_at(where) for where in ((2, 3), (3, 3), (3, 9))], [5, 7, 0])

    def test_cells_and_rows_without_places_are_counted(self):
        sheet = self.sheet("<row><c/><c/></row><row><c r='C2'/><c/></row>")
        self.assertEqual(sorted(sheet.cells), [(1, 1), (1, 2), (2, 3), (2, 4)])

    def test_finds_cells_out_of_order(self):
        self.assertFalse(self.sheet('<row r="1"><c r="B1"/><c r="A1"/></row>').in_order)

    def test_shared_formulas_are_written_out(self):
        sheet = self.sheet('<row r="1"><c r="A1"><f t="shared" ref="A1:B1" si="0">A$2+B3</f></c>'
                           '<c r="B1"><f t="shared" si="0"/></c></row>')
        self.assertEqual(sheet.formula_texts[1, 2], "B$2+C3")

    def test_a_shared_formula_may_hand_over_its_master(self):
        before = ('<row r="1"><c r="A1"><f t="shared" ref="A1:B1" si="0">A2</f></c>'
                  '<c r="B1"><f t="shared" si="0"/></c></row>')
        after = '<row r="1"><c r="A1"><v>1</v></c><c r="B1"><f>B2</f></c></row>'
        self.assertEqual(self.differences(before, after, written=[(1, 1)]), [])
        wrong = after.replace("B2", "A2")
        self.assertTrue(self.differences(before, wrong, written=[(1, 1)]))

    def test_finds_a_stale_value_and_a_lost_format(self):
        formula = '<row r="1"><c r="A1" s="2"><f>B1</f><v>5</v></c></row>'
        self.assertTrue(self.differences(formula, formula))
        self.assertEqual(self.differences(formula, formula.replace("<v>5</v>", "")), [])
        self.assertTrue(self.differences(formula, formula.replace(' s="2"', ""), strip=False))

    def test_escapes(self):
        self.assertEqual(unescape("a_x000B_b_x005F_x0041_"), "a\vb_x0041_")


class FormulasTest(unittest.TestCase):
    def test_names(self):
        for formula, named in (("Month!A1", True), ("'month'!A1", True), ('"Month!A1"', False),
                               ("[1]Month!A1", False), ("'[1]Month'!A1", False),
                               ("Month:Year!A1", False), ("Months!A1", False),
                               ("SUM(Month!A1,2)", True), ("'It''s'!A1", False)):
            self.assertEqual(names_sheet(formula, "Month"), named, formula)
        self.assertTrue(names_sheet("'It''s'!A1", "It's"))
        self.assertTrue(in_sheet_range("SUM('Month:Year'!A1)", "Year"))

    def test_quotes(self):
        for name in ("2027", "A1", "R8C8", "It's", "a b", "R", "rc1"):
            self.assertTrue(needs_quotes(name), name)
        for name in ("Proof", "Pr\u00f6of3", "\u4e00\u6708", "Proof.10", "ABCD1"):
            self.assertFalse(needs_quotes(name), name)
        self.assertEqual(unquoted_by_mistake("2027!A1+Proof!A1"), ["2027"])

    def test_neutral_formulas(self):
        left = Names({"Month": "self"}, {"Days": "t"})
        right = Names({"It's": "self"}, {"Days2": "t"})
        self.assertEqual(left.neutral("Month!A1+SUM(Days[x])"),
                         right.neutral("'It''s'!A1+SUM(Days2[x])"))
        self.assertNotEqual(left.neutral("Month!A1"), right.neutral("Month!A1"))


class IntegrityTest(unittest.TestCase):
    def test_finds_what_is_dangling_and_what_is_orphaned(self):
        before = package()
        self.assertEqual(list(integrity.relationship_failures(before, before)), [])
        self.assertTrue(list(integrity.relationship_failures(before,
                                                             package({"media/p.png": None}))))
        self.assertTrue(list(integrity.relationship_failures(before, package({"x.xml": "<a/>"}))))

    def test_finds_a_relationship_of_an_unknown_type(self):
        rels = PARTS["_rels/book.xml.rels"]
        added = '<Relationship Id="r2" Type="{}/sharedStrings" Target="s1.xml"/></Relationships>'
        for base, failures in ((OFFICE, 0), ("http://example.org/relationships", 1)):
            text = rels.replace("</Relationships>", added.format(base))
            found = list(integrity.relationship_failures(package(),
                                                         package({"_rels/book.xml.rels": text})))
            self.assertEqual(len(found), failures, base)

    def test_finds_changed_and_lost_parts(self):
        plan = SimpleNamespace(model=before_sheet())
        before = package()
        self.assertEqual(list(integrity.untouched_failures(before, before, plan)), [])
        for changes in ({"media/p.png": "another"}, {"media/p.png": None}):
            self.assertTrue(list(integrity.untouched_failures(before, package(changes), plan)))
            self.assertTrue(list(integrity.same_failures(before, package(changes))))

    def test_finds_doubled_pictures_and_broken_xml(self):
        before = package()
        self.assertTrue(list(integrity.media_failures(before, package({"media/q.png": "picture"}))))
        self.assertTrue(list(integrity.xml_failures(before, package({"s1.xml": "<a>"}))))


def before_sheet():
    return Sheet("Month", "1", "visible", "s1.xml", "worksheet")


class CountsTest(unittest.TestCase):
    def test_counts_a_sheet(self):
        counted = count_sheet(package(), before_sheet())
        self.assertEqual((counted["merges"], counted["validations"], counted["picture links"]),
                         (1, 1, 1))

    def test_a_copy_owns_twins_of_the_names_that_refer_to_the_model(self):
        names = [(None, "Area", "Month!$A$1"), (None, "Other", "Year!$A$1"),
                 (0, "Print_Area", "Month!$A$2"), (1, "Mine", "Month!$A$3")]
        self.assertEqual(sorted(sheet_names(names, 0, "Month")), ["area", "print_area"])


class SentenceTest(unittest.TestCase):
    def test_sentences(self):
        self.assertEqual(list(sentence_failures(b'"a.xlsx" is protected by a password.\n')), [])
        for text in (b"", b"basic_string::at: out of range", b"One line of text.\nAnother line.\n"):
            self.assertTrue(list(sentence_failures(text)), text)


if __name__ == "__main__":
    unittest.main()
