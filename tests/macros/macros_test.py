"""Macros of copied sheets, read by code of the tests' own."""

import json
import re
import struct
import unittest
import zipfile

import xls_compound
from calendars import CODE_NAMES, MONTHS, MacrosProgram, write
from program import shown
from vba import STORAGE, Project
from xls_book import Book, unicode_text
from xls_places import CODENAME
from xls_writer import CompoundWriter

SUMMARY = ("\5DocumentSummaryInformation",)
SIGNED = ('"{}" has signed macros, and the calendar is not signed because its copied sheets have '
          "macros of their own. Sign it in the spreadsheet program.")
UNREADABLE = ('"{}" has macros that cannot be copied: {}. The copied sheets have none. Save the '
              "template again in the spreadsheet program and generate the calendar again.")


def project(path):
    return Project(xls_compound.CompoundFile(path).entries, (STORAGE,))


def code_name(sheet):
    for data in sheet.all_of(CODENAME):
        count, wide = struct.unpack_from("<HB", data)
        return unicode_text(data, 3, count, wide & 1)[0]
    return None


def read_parts(path):
    with zipfile.ZipFile(path) as package:
        return {name: package.read(name) for name in package.namelist()}


def package_project(parts):
    found = xls_compound.CompoundFile("vbaProject.bin", parts["xl/vbaProject.bin"])
    return found, Project(found.entries)


class XlsxMacros(MacrosProgram):
    def setUp(self):
        super().setUp()
        self.template = self.home / "macros.xlsx"

    def test_every_month_has_a_module_with_the_code_of_the_template(self):
        result, path = self.make()
        self.assertEqual(result.stderr, "Warning: " + SIGNED.format(shown(self.template)) + "\n")
        parts = read_parts(path)
        names = [re.findall(rb'codeName="(\w+)"', content) for name, content in parts.items()
                 if name.startswith("xl/worksheets/sheet")]
        self.assertEqual(sorted(names), sorted([[name.encode()]
                                                for name in [*CODE_NAMES, "Sheet2"]]))
        _, before = package_project(read_parts(self.template))
        file, after = package_project(parts)
        self.assertEqual((file.problems, after.problems, after.is_compiled), ([], [], False))
        for name in CODE_NAMES:
            self.assertEqual(after.module(name).code, before.module("Sheet1").code)
            self.assertIn(name.encode(), after.documents)
        self.assertEqual(after.outside_of_modules(), before.outside_of_modules())
        self.assertEqual([name for name in parts if "Signature" in name], [])
        self.assertNotIn(b"Signature", parts["[Content_Types].xml"])
        self.assertNotIn(b"Signature", parts["xl/_rels/vbaProject.bin.rels"])


class XlsMacros(MacrosProgram):
    def change(self, path, data):
        """Gives a stream of the template other bytes."""
        file = xls_compound.CompoundFile(self.template)
        write(self.template, CompoundWriter(file, {id(file.entries[path]): data}).to_bytes())

    def test_every_month_has_a_module_with_the_code_of_the_template(self):
        _, path = self.make()
        self.assertEqual(xls_compound.CompoundFile(path).problems, [])
        book = Book(path)
        self.assertEqual([sheet.name for sheet in book.sheets], [*MONTHS, "2027"])
        self.assertEqual([code_name(sheet) for sheet in book.sheets], [*CODE_NAMES, "Sheet2"])
        before, after = project(self.template), project(path)
        self.assertEqual(after.problems, [])
        self.assertFalse(after.is_compiled)
        event = before.module("Sheet1").code
        self.assertGreater(len(event), 100)
        for name in CODE_NAMES:
            self.assertEqual(after.module(name).code, event)
            self.assertTrue(after.module(name).is_document)
            self.assertIn(name.encode(), after.documents)
        for name in ("ThisWorkbook", "Sheet2", "Module1"):
            self.assertEqual(after.module(name).source, before.module(name).source)
        self.assertEqual(after.outside_of_modules(), before.outside_of_modules())

    def test_what_protects_the_project_stays(self):
        _, path = self.make()
        after = project(path)
        for key in (b"ID=", b"CMG=", b"DPB=", b"GC="):
            self.assertEqual([line for line in after.lines if line.startswith(key)],
                             [line for line in project(self.template).lines
                              if line.startswith(key)])

    def test_the_signature_falls_away_and_the_program_says_so(self):
        result, path = self.make()
        self.assertEqual(result.stderr, "Warning: " + SIGNED.format(shown(self.template)) + "\n")
        before, after = (xls_compound.CompoundFile(each).entries[SUMMARY].data
                         for each in (self.template, path))
        self.assertIn(b"not a signature of anybody", before)
        self.assertNotIn(b"not a signature of anybody", after)
        self.assertEqual(struct.unpack_from("<II", after, 48), (8 + 8 + 8, 1))
        self.assertEqual(struct.unpack_from("<IIIH", after, 56), (1, 16, 2, 1252))

    def test_json_has_the_warning(self):
        result, _ = self.make("--json")
        made = json.loads(result.stdout)
        self.assertEqual(made["warnings"], [SIGNED.format(shown(self.template))])
        self.assertEqual(made["reports"], [])

    def test_macros_that_cannot_be_read_stay_as_they_are(self):
        self.change((STORAGE, "VBA", "dir"), b"\1 damaged")
        result, path = self.make()
        self.assertEqual(result.stderr, "Warning: " + UNREADABLE.format(
            shown(self.template), "their code cannot be decompressed") + "\n")
        before, after = (xls_compound.CompoundFile(each) for each in (self.template, path))
        self.assertEqual(list(xls_compound.same_failures(before, after, {("Workbook",)})), [])
        self.assertEqual(xls_compound.added(before, after), [])
        names = [code_name(sheet) for sheet in Book(path).sheets]
        self.assertEqual(names, ["Sheet1", *[None] * 11, "Sheet2"])

    def test_a_project_without_code_on_the_sheet_is_not_touched(self):
        parameters = self.home / "macros.ini"
        monthly = parameters.read_text().partition("[Yearly Calendar]")[0]
        parameters.write_text(monthly.replace("SheetName=Month", "SheetName=Year")
                              + "[Yearly Calendar]\nOutput=N\n")
        result, path = self.make()
        self.assertEqual(result.stderr, "")
        before, after = (xls_compound.CompoundFile(each) for each in (self.template, path))
        self.assertEqual(list(xls_compound.same_failures(before, after, {("Workbook",)})), [])


if __name__ == "__main__":
    unittest.main()
