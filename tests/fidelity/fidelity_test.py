"""Tests of the measuring code: a copy without a feature has to be found, for every feature."""
import pathlib
import re
import tempfile
import unittest
import zipfile

import fidelity
import xls_features
import xls_sheets
import xlsx_book
import xlsx_features
from facts import Near, judge, same
from xls_parts import stream_of

SHEET, WORKBOOK = "xl/worksheets/sheet2.xml", "xl/workbook.xml"
RELS, DRAWING = "xl/worksheets/_rels/sheet2.xml.rels", "xl/drawings/drawing1.xml"


def template_of(name, suffix):
    """The template that has a feature."""
    return fidelity.DATA / f"{'protected' if name == fidelity.ON_PROTECTED else 'fidelity'}{suffix}"


def drop(pattern):
    """An edit that takes away what matches, which has to be there."""
    return replace(pattern, "")


def replace(pattern, replacement):
    def edit(text):
        changed, count = re.subn(pattern, replacement, text, flags=re.DOTALL)
        assert count, f"{pattern} is not there"
        return changed
    return edit


# For each feature of an .xlsx sheet, an edit of one part that takes it away or spoils it.
XLSX_EDITS = {
    "Values of cells": (SHEET, replace(r'<c r="A8" s="13"><v>1234.5', '<c r="A8" s="13"><v>1234')),
    "Text with several fonts in a cell": (
        "xl/sharedStrings.xml", replace(r"<si><r>.*?</si>", "<si><t>plain rich plain</t></si>")),
    "Formulas": (SHEET, replace("<f>Model!B1", "<f>Other!B1")),
    "Formats of cells, rows and columns": (SHEET, replace(r'<c r="C3" s="\d+"', '<c r="C3" s="0"')),
    "Widths of columns": (SHEET, drop(r"<cols>.*</cols>")),
    "Heights of rows": (SHEET, drop(r' ht="30" customHeight="1"')),
    "Outline": (SHEET, drop(r' outlineLevel="\d"')),
    "Merged cells": (SHEET, drop(r'<mergeCell ref="A14:C15"/>')),
    "Conditional formats": (SHEET, drop(r'<conditionalFormatting sqref="C1:C10">.*?Formatting>')),
    "Conditional formats of Excel 2010 (x14)": (
        SHEET, drop(r"<x14:conditionalFormattings>.*</x14:conditionalFormattings>")),
    "Data validations": (SHEET, replace("<formula1>Model!.A", "<formula1>Other!$A")),
    "Data validations of Excel 2010 (x14)": (
        SHEET, drop(r"<x14:dataValidations.*</x14:dataValidations>")),
    "Comments": ("xl/comments1.xml", drop("a note")),
    "Shapes of comments": ("xl/drawings/vmlDrawing1.vml", drop(r"visibility:visible|<x:Visible/>")),
    "Threaded comments": (RELS, drop(r"<Relationship Id=\"rIdThread\"[^>]*>")),
    "Pictures": (DRAWING, drop(r"<xdr:pic>.*?</xdr:pic>")),
    "Shapes, connectors, groups": (DRAWING, drop(r"<xdr:cxnSp .*?</xdr:cxnSp>")),
    "Text boxes": (DRAWING, drop(r' textlink="Model[^"]*"')),
    "Charts": ("xl/charts/chart2.xml", replace("pieChart", "barChart")),
    "References of charts follow the copy": ("xl/charts/chart1.xml", replace("Model!", "Other!")),
    "Tables": ("xl/tables/table1.xml", replace(' id="1"', ' id="2"')),
    "Hyperlinks": (SHEET, replace('location="Model!B5"', 'location="Other!B5"')),
    "Header and footer": (SHEET, drop("<firstHeader>.*</firstHeader>")),
    "Pictures in header and footer": (SHEET, drop(r"<legacyDrawingHF[^>]*>")),
    "Background": (SHEET, drop(r"<picture [^>]*>")),
    "Print settings": (SHEET, drop(' orientation="landscape"')),
    "Page breaks": (SHEET, drop("<colBreaks.*</colBreaks>")),
    "Print area": (WORKBOOK, replace("Model!.A.1:.L.49", "Other!$A$1:$L$49")),
    "Print titles": (WORKBOOK, drop(r'<definedName name="_xlnm.Print_Titles".*?</definedName>')),
    "Names of the sheet": (
        WORKBOOK, drop(r'<definedName name="OwnCells" localSheetId="1">.*?</definedName>')),
    "Workbook's names get a twin on the copy": (WORKBOOK, replace("Model!.B.10", "Other!$B$10")),
    "Names of other sheets stay theirs": (
        WORKBOOK, replace('name="OwnCells" localSheetId="2"', 'name="OwnCells" localSheetId="0"')),
    "AutoFilter": (SHEET, drop("<filterColumn.*</filterColumn>")),
    "Protection": (SHEET, drop(' sort="0"')),
    "View": (SHEET, drop("<pane [^>]*>")),
    "Custom views": (SHEET, drop("<customSheetViews>.*</customSheetViews>")),
    "Colour of the tab": (SHEET, drop("<tabColor[^>]*>")),
    "Sparklines": (SHEET, replace("<xm:f>Model!B1:B10", "<xm:f>Other!B1:B10")),
    "Form controls": ("xl/ctrlProps/ctrlProp1.xml", drop(' checked="Checked"')),
    "Slicers of tables": (DRAWING, drop("<sle:slicer [^>]*>")),
    "Ignored errors": (SHEET, drop("<ignoredErrors>.*</ignoredErrors>")),
    "References from inside follow the copy": ("xl/charts/chart1.xml", replace("Model!", "Cover!")),
}


def edited(part, edit):
    def change(parts):
        parts[part] = edit(parts[part].decode("utf-8")).encode("utf-8")
    return change


# What belongs to the workbook is spoiled by an edit of another sheet, or by a part that is added.
XLSX_CHANGES = {
    **{name: edited(*edit) for name, edit in XLSX_EDITS.items()},
    "Pictures are shared, not doubled": lambda parts: parts.update(
        {"xl/media/again.png": parts["xl/media/image1.png"]}),
    "Only one sheet is selected": lambda parts: parts.update({
        name: parts[name].replace(b"<sheetView ", b'<sheetView tabSelected="1" ').replace(
            b'tabSelected="1" tabSelected="1"', b'tabSelected="1"')
        for name in (SHEET, "xl/worksheets/sheet1.xml")}),
    "Code names stay unique": lambda parts: parts.update({
        "xl/worksheets/sheet1.xml": parts["xl/worksheets/sheet1.xml"].replace(
            b"<dimension", b'<sheetPr codeName="Sheet7"/><dimension')}),
}


def write_spoiled(template, change, path):
    """Writes the template with its parts changed."""
    with zipfile.ZipFile(template) as package:
        parts = {name: package.read(name) for name in package.namelist()}
    change(parts)
    with zipfile.ZipFile(path, "w") as package:
        for name, data in parts.items():
            package.writestr(name, data)


def spoiled_xlsx(template, change):
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder, "spoiled.xlsx")
        write_spoiled(template, change, path)
        return xlsx_book.Book(path)


# For each feature of an .xls sheet, the records of the model that are left out, or changed.
XLS_RECORDS = {
    "Values of cells": (0x203, 0x27E, 0xBD), "Text with several fonts in a cell": (0xFD,),
    "Formulas": (0x221,), "Formats of cells, rows and columns": (0x208, 0x7D),
    "Widths of columns": (0x7D,), "Heights of rows": (0x208,), "Outline": (0x208,),
    "Merged cells": (0xE5,), "Conditional formats": (0x1B1,),
    "Conditional formats of Excel 2007 (CF12)": (0x87A,), "Data validations": (0x1BE,),
    "Comments": (0x1C,), "Shapes of comments": (0xEC,), "Pictures": (0xEC,),
    "Shapes, connectors, groups": (0x1B6,), "Text boxes": (0x3C,), "Charts": (0x1017,),
    "References of charts follow the copy": (0x1051,), "Tables": (0x872,), "Hyperlinks": (0x1B8,),
    "Header and footer": (0x89C,), "Pictures in header and footer": (0x866,), "Background": (0xE9,),
    "Print settings": (0x4D,), "Page breaks": (0x1A,), "AutoFilter": (0x9E,),
    "Protection": (0x868,), "View": (0x41,), "Custom views": (0x1AA,),
    "Colour of the tab": (0x862,), "Form controls": (0x5D,), "Ignored errors": (0x868,),
    "References from inside follow the copy": (0x1B1,),
}
# What stands in the globals: the name whose sheet or formula is changed.
XLS_NAMES = {"Print area": "\6", "Print titles": "\7", "Names of the sheet": "OwnCells",
             "Workbook's names get a twin on the copy": "Tenth",
             "Names of other sheets stay theirs": "OwnCells"}


def spoiled_xls(template, change):
    """The template as a book; `change` takes (sheet or None, record) and gives its data or None."""
    book = xls_sheets.Book(template)
    found = [(None, record) for record in book.globals]
    found += [(sheet.name, record) for sheet in book.sheets for record in sheet.records]
    kept = [(record.type, data, record.offset) for sheet, record in found
            for data in [change(sheet, record)] if data is not None]
    stream = stream_of([(kind, data) for kind, data, _ in kept], [at for _, _, at in kept])
    return xls_sheets.Book(template, stream)


def verdict(features, name, model, spoiled):
    tell = dict(features)[name]
    return judge(tell(model.sheet("Model")), [tell(spoiled.sheet("Model"))] * 12)


class XlsxTest(unittest.TestCase):
    def test_every_feature_is_spoiled_by_some_edit(self):
        self.assertEqual({*XLSX_CHANGES}, {name for name, _ in xlsx_features.FEATURES})

    def test_finds_what_an_edit_takes_away(self):
        for name, change in XLSX_CHANGES.items():
            template = template_of(name, ".xlsx")
            spoiled = spoiled_xlsx(template, change)
            self.assertNotEqual(verdict(xlsx_features.FEATURES, name, xlsx_book.Book(template),
                                        spoiled), "kept", name)


class XlsTest(unittest.TestCase):
    def test_every_feature_is_spoiled_by_some_edit(self):
        globally = {"Pictures are shared, not doubled", "Only one sheet is selected"}
        self.assertEqual({*XLS_RECORDS, *XLS_NAMES} | globally,
                         {name for name, _ in xls_features.FEATURES})

    def judged(self, name, change):
        template = template_of(name, ".xls")
        return verdict(xls_features.FEATURES, name, xls_sheets.Book(template),
                       spoiled_xls(template, change))

    def test_finds_records_that_are_missing(self):
        for name, kinds in XLS_RECORDS.items():
            found = self.judged(name, lambda sheet, record, kinds=kinds: None if sheet == "Model"
                                and record.type in kinds else record.data)
            self.assertNotEqual(found, "kept", name)

    def test_finds_names_that_are_missing_or_lead_elsewhere(self):
        for name, text in XLS_NAMES.items():
            def change(sheet, record, text=text):
                data = record.data
                is_name = record.type == 0x18 and sheet is None
                if is_name and data[15:15 + len(text)] == text.encode():
                    return data[:8] + b"\1\0" + data[10:]  # the cover's
                return data
            self.assertNotEqual(self.judged(name, change), "kept", name)

    def test_finds_a_second_selected_sheet(self):
        def change(_, record):
            return b"\x00\x06" + record.data[2:] if record.type == 0x23E else record.data
        self.assertEqual(self.judged("Only one sheet is selected", change), "lost")

    def test_finds_a_picture_that_is_stored_twice(self):
        def change(_, record):
            if record.type != 0xEB:
                return record.data
            at = record.data.index(b"\x07\xf0") - 2
            size = int.from_bytes(record.data[at + 4:at + 8], "little") + 8
            return record.data[:at] + 2 * record.data[at:at + size] + record.data[at + size:]
        self.assertEqual(self.judged("Pictures are shared, not doubled", change), "lost")


class JudgeTest(unittest.TestCase):
    def test_one_bad_copy_is_enough(self):
        model = {"panes": (1, 2), "zoom": 85}
        for verdict_, sheets in (
                ("kept", [model] * 12), ("lost", [{}] * 12), ("lost", [model] + [{}] * 11),
                ("in part: changed: zoom", [{**model, "zoom": 100}] * 12),
                ("in part: without panes", [{"zoom": 85}] * 12),
                ("in part: without panes, zoom (on 1 of 11 copies)", [model] * 11 + [{}]),
                ("in part: without panes, zoom (on the renamed model)", [{}] + [model] * 11)):
            self.assertEqual(judge(model, sheets), verdict_)

    def test_measures_may_be_rounded(self):
        self.assertTrue(same([Near(1, 0.5)], [Near(1.4, 0.5)]))
        self.assertFalse(same([Near(1, 0.5)], [Near(2, 0.5)]))
        self.assertFalse(same({"a": 1}, {"a": 1, "b": 2}))


class DocumentTest(unittest.TestCase):
    versions = {"LibreOffice": "7.4.7", "openpyxl": "3.0.9", "xlwt": "1.3.0"}

    def test_finds_where_it_says_something_else(self):
        made = {suffix: {maker: [{name: "kept" for name, _ in features}] * 2
                         for maker in ("built-in", "LibreOffice", library)}
                for (suffix, (_, features, _)), library in zip(fidelity.FORMATS.items(),
                                                               ("openpyxl", "xlwt"))}
        text = fidelity.document(made, self.versions)
        kept = "| Merged cells | kept | kept |"
        newer = {**self.versions, "LibreOffice": "24.8.1"}
        for failures, old, new, versions in (
                (0, kept, kept, self.versions),
                (1, kept, "| Merged cells | kept | lost |", self.versions),
                (0, kept, "| Merged cells | kept | lost |", newer),
                (1, kept, "| Merged cells | lost | kept |", self.versions),
                (3, kept + " kept |\n", "", self.versions)):
            changed = text.replace(old, new, 1)
            self.assertEqual(len(list(fidelity.failures(made, changed, versions))), failures, new)
        made[".xls"]["built-in"] = [{**made[".xls"]["built-in"][0], "Charts": "lost"}] * 2
        found = "\n".join(fidelity.failures(made, fidelity.document(made, self.versions),
                                            self.versions))
        self.assertIn("the built-in engine: Charts: lost", found)


if __name__ == "__main__":
    unittest.main()
