"""What the command propose tells of a template, and which files it writes."""

import json
import shutil
import unittest

from program import DATA, Program


class Propose(Program):
    def setUp(self):
        super().setUp()
        self.template = self.home / "Mine.xlsx"
        self.parameters = self.template.with_suffix(".ini")
        shutil.copy(DATA / "template" / "Desk.xlsx", self.template)

    def test_tells_both_calendars(self):
        result = self.run_program("propose", self.template, "--json")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        told = json.loads(result.stdout)
        self.assertEqual(list(told), ["monthly", "yearly", "unknown", "reasons"])
        self.assertEqual(told["monthly"]["FirstCellOfDay"], "B6")
        self.assertEqual(told["yearly"]["MonthLayout"], "3")
        self.assertIn("monthly.WeekdayName", told["unknown"])
        self.assertNotIn("WeekdayName", told["monthly"])
        reasons = {reason["parameter"] for reason in told["reasons"]}
        proposed = {f"{name}.{key}" for name in ("monthly", "yearly") for key in told[name]}
        self.assertEqual(proposed | set(told["unknown"]), reasons)

    def test_a_calendar_that_is_not_there_has_no_output(self):
        shutil.copy(DATA / "template" / "Notes.xlsx", self.template)
        told = json.loads(self.run_program("propose", self.template, "--json").stdout)
        self.assertEqual(told["yearly"], {"Output": "N"})
        self.assertIn("No yearly calendar", self.run_program("propose", self.template).stdout)

    def test_tells_its_reasons_to_readers(self):
        result = self.run_program("propose", self.template)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertIn("FirstCellOfDay=B6: ", result.stdout)
        self.assertIn("WeekdayName is unknown: ", result.stdout)
        self.assertFalse(self.parameters.exists())

    def test_writes_parameters_that_pass_the_check(self):
        result = self.run_program("propose", self.template, "--write")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertIn("FirstCellOfDay=B6", self.parameters.read_text())
        self.assertEqual(self.run_program("check", self.template, 2027, "--engine", "builtin").returncode, 0)

    def test_never_replaces_a_parameter_file(self):
        self.parameters.write_text("[Monthly Calendar]\nOutput=N\n")
        result = self.run_program("propose", self.template, "--write")
        self.assertEqual(result.returncode, 1)
        self.assertIn("is there already", result.stderr)
        self.assertEqual(self.parameters.read_text(), "[Monthly Calendar]\nOutput=N\n")


if __name__ == "__main__":
    unittest.main()
