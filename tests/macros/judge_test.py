"""What judges macros finds what is broken on purpose, one thing of every kind."""

import os
import tempfile
import unittest
import zipfile
from types import SimpleNamespace

import calendars  # noqa: F401  which knows where the judges are
import integrity
import make_macros
import project
from make_macros import MODULES, workbook_stream
from opc import Package
from project import SHEET_BASE, Module
from vba import STORAGE, Project
from xls_book import Book
from xls_macros import EditedMacros

EVENT = MODULES[1].code
COPY = Module("Sheet3", EVENT, SHEET_BASE)
MACROS = project.compound_file(project.members(MODULES))
BEFORE = {"Month": "Sheet1", "Year": "Sheet2"}
AFTER = {"Month": "Sheet1", "Month (2)": "Sheet3", "Year": "Sheet2"}


class Judge(unittest.TestCase):
    def book(self, code_names, members):
        """An .xls workbook with a project; without members it has none."""
        tree = {"Workbook": workbook_stream(code_names)}
        if members:
            tree[STORAGE] = members
        with tempfile.NamedTemporaryFile(suffix=".xls", delete=False) as file:
            file.write(project.compound_file(tree))
        self.addCleanup(os.unlink, file.name)
        return Book(file.name)

    def judged(self, modules, code_names=None, is_compiled=False, change=None):
        """What is found in a workbook whose first sheet was copied once."""
        members = project.members(modules, is_compiled)
        if change:
            change(members)
        return EditedMacros(self.book(BEFORE, project.members(MODULES)),
                            self.book(code_names or AFTER, members), 0, 1)

    def assert_found(self, judged, text):
        self.assertTrue(any(text in failure for failure in judged.failures), judged.failures)

    def test_nothing_is_found_in_a_good_copy(self):
        judged = self.judged([*MODULES, COPY])
        self.assertEqual(judged.failures, [])
        self.assertEqual(judged.added, {(STORAGE, "VBA", "Sheet3")})
        self.assertEqual({path[-1] for path in judged.may_go}, {"__SRP_0", "__SRP_1"})
        self.assertIn((STORAGE, "VBA", "Module1"), judged.may_differ)

    def test_a_copy_without_a_module(self):
        self.assert_found(self.judged(MODULES), "no module of its own for Sheet3")
        self.assert_found(self.judged(MODULES, {**AFTER, "Month (2)": "Sheet1"}),
                          "no module of its own for Sheet1")

    def test_other_code(self):
        self.assert_found(self.judged([*MODULES, Module("Sheet3", "Beep", SHEET_BASE)]),
                          "Sheet3 has other code than Sheet1")
        self.assert_found(self.judged([*MODULES, Module("Sheet3", EVENT)]),
                          "Sheet3 has other code than Sheet1")

    def test_modules_of_the_template_that_changed(self):
        changed = [*MODULES[:-1], Module("Module1", "Sub Other()\r\nEnd Sub\r\n"), COPY]
        self.assert_found(self.judged(changed), "the modules of the template changed")
        self.assert_found(self.judged([*MODULES[:-1], COPY]),
                          "the modules of the template changed")

    def test_what_is_compiled(self):
        self.assert_found(self.judged([*MODULES, COPY], is_compiled=True),
                          "something compiled is left")

    def test_lists_that_do_not_fit(self):
        def cut_names(members):
            members["PROJECTwm"] = project.members(MODULES)["PROJECTwm"]

        def cut_text(members):
            members["PROJECT"] = members["PROJECT"].replace(b"Document=Sheet3", b"Document=Sheet9")

        def miscount(members):
            modules = project.dir_stream([*MODULES, COPY], 0)
            members["VBA"]["dir"] = project.compress(modules.replace(
                b"\x0f\0\2\0\0\0\5\0", b"\x0f\0\2\0\0\0\6\0"))
        for change, text in ((cut_names, "the names in Unicode are"),
                             (cut_text, "the documents are"), (miscount, "modules are counted")):
            self.assert_found(self.judged([*MODULES, COPY], change=change), text)

    def test_a_source_of_another_name(self):
        def rename(members):
            members["VBA"]["Sheet3"] = Module("Sheet4", EVENT, SHEET_BASE).stream(0)
        self.assert_found(self.judged([*MODULES, COPY], change=rename),
                          "the code of Sheet3 has another name")

    def test_a_project_that_changed(self):
        def change(members):
            modules = project.dir_stream([*MODULES, COPY], 0)
            members["VBA"]["dir"] = project.compress(modules.replace(b"stdole2.tlb",
                                                                     b"stdole3.tlb"))
        self.assert_found(self.judged([*MODULES, COPY], change=change), "the project changed")

    def test_workbooks_without_macros_and_sheets_without_code_are_passed_over(self):
        plain = self.book(BEFORE, None)
        self.assertEqual(EditedMacros(plain, plain, 0, 1).failures, [])
        book = self.book(BEFORE, project.members(MODULES))
        judged = EditedMacros(book, book, 1, 1)
        self.assertEqual((judged.failures, judged.may_differ), ([], set()))

    def test_the_reader_and_the_writer_of_the_tests_agree(self):
        book = self.book(BEFORE, project.members(MODULES))
        found = Project(book.file.entries, (STORAGE,))
        self.assertEqual(found.problems, [])
        self.assertTrue(found.is_compiled)
        self.assertEqual([module.source for module in found.modules],
                         [module.source() for module in MODULES])


class PackageJudge(unittest.TestCase):
    """The same in an .xlsx file. What else a copy needs is left out: others look for that."""

    def package(self, macros, copies=()):
        parts = make_macros.package()
        parts["xl/vbaProject.bin"] = macros
        for name, code_name in copies:
            part = f"worksheets/{name}.xml"
            parts["xl/" + part] = parts["xl/worksheets/sheet1.xml"].replace("Sheet1", code_name)
            parts["xl/workbook.xml"] = parts["xl/workbook.xml"].replace(
                "</sheets>", f'<sheet name="{name}" sheetId="9" r:id="copy"/></sheets>')
            parts["xl/_rels/workbook.xml.rels"] = parts["xl/_rels/workbook.xml.rels"].replace(
                "</Relationships>", f'<Relationship Id="copy" Type="{make_macros.SHEET_LINK}" '
                f'Target="{part}"/></Relationships>')
        with tempfile.NamedTemporaryFile(suffix=".xlsx", delete=False) as file:
            with zipfile.ZipFile(file, "w") as package:
                for name, content in parts.items():
                    package.writestr(name, content)
        self.addCleanup(os.unlink, file.name)
        return Package(file.name)

    def judged(self, modules, copies=(("Copy", "Sheet3"),), model=0):
        """What is found about the macros where the first sheet was copied."""
        before = self.package(MACROS)
        after = self.package(project.compound_file(project.members(modules, not copies)), copies)
        plan = SimpleNamespace(model=before.sheets[model],
                               sheets=[SimpleNamespace(name=name) for name in ("Month", "Copy")])
        return [failure for failure in integrity.untouched_failures(before, after, plan)
                if "macros: " in failure or "vbaProject" in failure]

    def test_nothing_is_found_in_a_good_copy(self):
        self.assertEqual(self.judged([*MODULES, COPY]), [])

    def test_a_copy_without_a_module_or_with_other_code(self):
        self.assertEqual(self.judged(MODULES), ["macros: no module of its own for Sheet3"])
        self.assertEqual(self.judged([*MODULES, Module("Sheet3", "Beep", SHEET_BASE)]),
                         ["macros: Sheet3 has other code than Sheet1"])

    def test_macros_that_nothing_had_to_change(self):
        self.assertEqual(self.judged(MODULES, copies=()), [])
        for judged in (self.judged([*MODULES, COPY], copies=()),
                       self.judged([*MODULES, COPY], model=1)):  # which has no code
            self.assertEqual(judged, ["xl/vbaProject.bin changed"])


if __name__ == "__main__":
    unittest.main()
