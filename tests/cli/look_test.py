"""What the command look tells and draws, and which files it leaves alone."""

import json
import shutil
import unittest
import xml.etree.ElementTree as xml

from program import DATA, IS_WINDOWS, Program


class Look(Program):
    def setUp(self):
        super().setUp()
        self.folder = self.home / "M\u00e4rz und Mai"
        self.folder.mkdir()
        self.template = self.folder / "W\u00e4nde 1.xlsx"
        self.parameters = self.template.with_suffix(".ini")
        for name, path in (("Desk.xlsx", self.template), ("Desk.ini", self.parameters)):
            shutil.copy(DATA / "template" / name, path)

    def look(self, *arguments):
        return self.run_program("look", self.template, *arguments)

    def look_json(self, *arguments):
        result = self.look(*arguments, "--json")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return json.loads(result.stdout)

    def assert_reported(self, result, *parts):
        self.assertEqual(result.returncode, 1, result)
        self.assertEqual(result.stderr.count("Error!"), 1, result.stderr)
        for part in parts:
            self.assertIn(part, result.stderr)


class Pictures(Look):
    def test_are_saved_where_the_user_says(self):
        picture = self.folder / "Mai 2027.svg"
        picture.write_text("an older picture")
        result = self.look("--year", 2027, "--month", 5, "--svg", picture)
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))
        self.assertTrue(xml.parse(picture).getroot().tag.endswith("svg"))

    def test_may_be_the_standard_output(self):
        result = self.look("--svg", "-")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertTrue(xml.fromstring(result.stdout).tag.endswith("svg"))
        self.assert_usage(self.look("--svg", "-", "--json"))

    def test_replace_no_workbook_and_no_parameters(self):
        other = self.folder / "Other.XLS"
        other.write_bytes(b"a workbook")
        inputs = [self.template, self.parameters, other]
        if not IS_WINDOWS:
            link = self.folder / "Picture.svg"
            link.symlink_to(self.template)
            hard_link = self.folder / "Second.svg"
            hard_link.hardlink_to(self.parameters)
            inputs += [link, hard_link]
        before = [path.read_bytes() for path in inputs]
        for path in inputs:
            for options in ((), ("--year", 2027, "--json")):
                with self.subTest(path=path.name, options=options):
                    result = self.look("--svg", path, *options)
                    self.assert_reported(result, "The picture would replace", path.name)
        self.assertEqual([path.read_bytes() for path in inputs], before)

    def test_that_cannot_be_saved_are_reported(self):
        for path in (self.folder, self.folder / "missing" / "Mai.svg"):
            with self.subTest(path):
                self.assert_reported(self.look("--svg", path), path.name)
        self.assertEqual(len(list(self.folder.iterdir())), 2, "nothing is left behind")


class Sheets(Look):
    def test_are_found_by_their_names(self):
        sheets = [self.look_json("--sheet", name)["sheet"] for name in ("Month", "year")]
        self.assertEqual(sheets, ["Month", "Year"])
        self.assert_reported(self.look("--sheet", "Sheet9"), '"Sheet9"', "its sheets are Month, Year")

    def test_of_a_year_are_found_by_the_names_in_the_template_too(self):
        for options, sheet in ((("--sheet", "May"), "May"), (("--sheet", "Month"), "January"),
                               (("--sheet", "Month", "--month", 5), "May"),
                               (("--sheet", "Year"), "2027"), ((), "2027")):
            with self.subTest(options):
                self.assertEqual(self.look_json("--year", 2027, *options)["sheet"], sheet)

    def test_that_no_page_is_made_of_are_reported(self):
        self.parameters.write_text("[Monthly Calendar]\nOutput=N\n[Yearly Calendar]\nOutput=N\n")
        self.assert_reported(self.look("--year", 2027, "--month", 5), "2027-5")


class Parameters(Look):
    def test_that_are_wrong_are_told(self):
        self.parameters.write_text(
            "[Monthly Calendar]\nSheetName=Month\n"
            "Holiday1=nonsense\n")
        result = self.look("--year", 2027, "--month", 5, "--json")
        self.assertEqual(result.returncode, 0)
        warnings = json.loads(result.stdout)["warnings"]
        self.assertEqual(result.stderr.count("Warning: "), len(warnings))
        self.assertNotEqual(warnings, [])
        self.assertNotIn("warnings", self.look_json(), "without a year they do not count")

    def test_may_be_missing(self):
        self.parameters.unlink()
        result = self.look("--year", 2027, "--month", 5)
        self.assert_reported(result, "2027-5", "does not exist") # the defaults name other sheets


if __name__ == "__main__":
    unittest.main()
