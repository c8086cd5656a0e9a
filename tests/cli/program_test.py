"""The command-line program as a user starts it: output, exit codes and files on disk."""

import datetime
import json
import os
import pathlib
import shutil
import unittest

import openpyxl

from program import DATA, Program, shown


class Generate(Program):
    def test_saves_a_calendar_and_prints_its_path(self):
        result = self.generate("Desk.xlsx", 2027)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertEqual(result.stdout, shown(self.output / "2027Desk.xlsx") + "\n")
        self.assertEqual(sorted(os.listdir(self.output)), ["2027Desk.xlsx"])

    def test_the_workbook_contains_the_year(self):
        self.generate("Desk.xlsx", 2027)
        parameters = json.loads(self.run_program("parameters", "Desk.xlsx", "--json").stdout)
        monthly = parameters["monthly"]
        workbook = openpyxl.load_workbook(self.output / "2027Desk.xlsx")
        for month in monthly["MonthName"]:
            self.assertIn(month, workbook.sheetnames)
        march = workbook[monthly["MonthName"][2]]
        first = march[monthly["FirstCellOfDay"]]
        # 1 March 2027 is a Monday.
        monday = (1 - monthly["FirstDayOfWeek"]) % 7
        self.assertEqual(
            march.cell(first.row, first.column + monday * monthly["ColIntervalOfDay"]).value, 1)

    def test_a_range_makes_a_workbook_for_each_year(self):
        result = self.generate("Desk.xlsx", "2027-2029")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual([pathlib.PureWindowsPath(line).name for line in result.stdout.splitlines()],
                         ["2027Desk.xlsx", "2028Desk.xlsx", "2029Desk.xlsx"])
        self.assertEqual(result.stderr, "", "no bar where nobody watches")

    def test_every_shipped_template_is_filled_without_a_report(self):
        for template in sorted(DATA.glob("template/*.xls*")):
            result = self.generate(template.name, 2028, "--json")
            self.assertEqual(result.returncode, 0, result.stderr)
            self.assertEqual(json.loads(result.stdout),
                             {"engine": "builtin", "reports": [],
                              "saved": [shown(self.output / f"2028{template.name}")]})

    def test_the_template_stays_as_it_is(self):
        shutil.copy(DATA / "template/Desk.xlsx", self.home / "Mine.xlsx")
        before = (self.home / "Mine.xlsx").read_bytes()
        self.generate("Mine.xlsx", 2027)
        self.assertEqual((self.home / "Mine.xlsx").read_bytes(), before)

    def test_a_template_of_the_current_folder_needs_no_path(self):
        shutil.copy(DATA / "template/Desk.xlsx", self.home / "Mine.xlsx")
        shutil.copy(DATA / "template/Desk.ini", self.home / "Mine.ini")
        result = self.generate("Mine.xlsx", 2027)
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_reports_go_to_standard_error(self):
        result = self.generate("Desk.xlsx", "40000")
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stdout, "")
        self.assertEqual(result.stderr.splitlines()[0], "Error!")
        self.assertTrue(result.stderr.splitlines()[1].startswith("Error Info: Overflow"))
        result = self.generate("Desk.xlsx", "0")
        self.assertEqual((result.returncode, result.stderr),
                         (1, "Error!\nError Info: Please inupt a year.\n"))

    def test_an_output_folder_that_cannot_be_made(self):
        (self.home / "taken").write_text("mine")
        result = self.run_program("generate", "Desk.xlsx", 2027, "--output-folder",
                                  self.home / "taken")
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        self.assertIn('Failed to open the calendar file "'
                      + shown(self.home / "taken/2027Desk.xlsx") + '".\n',
                      result.stderr)
        self.assertNotIn("\r", result.stderr)
        self.assertEqual((self.home / "taken").read_text(), "mine")

    def test_a_template_that_is_no_workbook_leaves_nothing_behind(self):
        (self.home / "Bad.xlsx").write_text("plain text")
        result = self.generate("Bad.xlsx", 2027)
        self.assertEqual(result.returncode, 1)
        self.assertIn("Failed to open the calendar file", result.stderr)
        self.assertEqual(os.listdir(self.output), [])

    def test_other_engines_offer_the_built_in_one(self):
        program = self.without_libreoffice()
        for engine in ("excel", "libreoffice"):
            result = self.run_program("generate", "Desk.xlsx", 2027, "--engine", engine,
                                      program=program)
            self.assertEqual(result.returncode, 1)
            self.assertIn('"builtin"', result.stderr)

    def test_a_pdf_needs_libreoffice_before_anything_is_generated(self):
        result = self.run_program("generate", "Desk.xlsx", "2027-2028", "--pdf", "--output-folder",
                                  self.output, program=self.without_libreoffice())
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        self.assertEqual(result.stderr,
                         "Error!\nError Info: A PDF needs Excel on Windows or LibreOffice on "
                         "Linux, which is not available here. Install it, let Orrery make the PDF "
                         "(--pdf-by builtin), or generate the calendar without a PDF.\n")
        self.assertFalse(self.output.exists())

    def without_libreoffice(self):
        """The program without the library that drives LibreOffice."""
        alone = self.home / "alone"
        shutil.copytree(DATA, alone)
        return pathlib.Path(shutil.copy(self.program, alone))


class OtherCommands(Program):
    def test_templates(self):
        names = sorted(path.name for path in DATA.glob("template/*.xls*"))
        result = self.run_program("templates")
        self.assertEqual((result.returncode, result.stdout.splitlines()), (0, names))
        self.assertEqual(json.loads(self.run_program("templates", "--json").stdout)["templates"],
                         names)

    def test_parameters_print_the_shipped_file(self):
        result = self.run_program("parameters", "Desk.xlsx")
        self.assertEqual(result.returncode, 0)
        shipped = (DATA / "template/Desk.ini").read_text().split("\n")
        self.assertEqual(set(shipped) - set(result.stdout.split("\n")), set())

    def test_parameters_as_json(self):
        parameters = json.loads(self.run_program("parameters", "Desk.xlsx", "--json").stdout)
        self.assertEqual(sorted(parameters), ["monthly", "template", "yearly"])
        self.assertEqual(len(parameters["monthly"]["MonthName"]), 12)
        self.assertEqual(len(parameters["yearly"]["WeekdayName"]), 7)
        self.assertIn("MonthLayout", parameters["yearly"])
        self.assertNotIn("MonthLayout", parameters["monthly"])

    def test_check_accepts_every_shipped_template(self):
        for template in DATA.glob("template/*.xls*"):
            result = self.run_program("check", template.name, 2028)
            self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
            self.assertEqual(result.stdout.count("\n"), 1)

    def test_check_finds_what_is_missing(self):
        shutil.copy(DATA / "template/Desk.xlsx", self.home / "Mine.xlsx")
        (self.home / "Mine.ini").write_text("[Monthly Calendar]\nSheetName=Gone\n"
                                            "[Yearly Calendar]\nOutput=N\n")
        result = self.run_program("check", "./Mine.xlsx", 2027)
        self.assertEqual((result.returncode, result.stderr), (1, ""))
        self.assertEqual(result.stdout, "Monthly calendar: The sheet Gone does not exist.\n")
        findings = json.loads(self.run_program("check", "./Mine.xlsx", 2027, "--json").stdout)
        self.assertEqual(findings["findings"], [result.stdout.rstrip("\n")])
        self.assertFalse((self.home / "2027Mine.xlsx").exists())

    def test_check_finds_months_that_are_alike_as_a_run_meets_them(self):
        shutil.copy(DATA / "template/Desk.xlsx", self.home / "Mine.xlsx")
        months = "Um,Dois,Μάρτιος,Quatro,Cinco,Seis,Sete,MÄRZ,ΜΆΡΤΙΟΣ,Dez,März,Doze"
        monthly = (DATA / "template/Desk.ini").read_text(encoding="utf-8").split("[Yearly")[0]
        (self.home / "Mine.ini").write_text(f"{monthly}MonthName={months}\n", encoding="utf-8")
        result = self.run_program("check", "./Mine.xlsx", 2027, "--json")
        self.assertEqual((result.returncode, result.stderr), (1, ""))
        findings = json.loads(result.stdout)["findings"]
        self.assertEqual(len(findings), 2, findings)
        for month, finding in zip((9, 11), findings):
            self.assertIn(f"Monthly calendar: The sheet of month {month} is not named after it.",
                          finding)
        result = self.generate("./Mine.xlsx", 2027)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        names = openpyxl.load_workbook(self.output / "2027Mine.xlsx").sheetnames
        first = names.index("Um")
        expected = months.replace("ΜΆΡΤΙΟΣ", "September").replace("März", "November").split(",")
        self.assertEqual(names[first:first + 12], expected)

    def test_check_takes_this_year(self):
        before = datetime.date.today().year
        checked = json.loads(self.run_program("check", "Desk.xlsx", "--json").stdout)["year"]
        self.assertIn(checked, (before, datetime.date.today().year))

    def test_check_knows_the_limits_of_the_sheet(self):
        shutil.copy(DATA / "template/Desk.xlsx", self.home / "Mine.xlsx")
        sheet = openpyxl.load_workbook(self.home / "Mine.xlsx").sheetnames[0]
        (self.home / "Mine.ini").write_text(
            f"[Monthly Calendar]\nOutput=N\n[Yearly Calendar]\nOutput=Y\nSheetName={sheet}\n"
            "FirstCellOfDay=A65536\nRowIntervalOfDay=10000\nMonthLayout=1\n"
            "RowIntervalOfMonth=10000\nColIntervalOfDay=36\n")
        self.assertEqual(self.run_program("check", "./Mine.xlsx", 2027).returncode, 0)

    def test_check_knows_the_last_cells_of_an_old_sheet(self):
        shutil.copy(DATA / "template/Desk.xls", self.home / "Mine.xls")
        parameters = ("[Monthly Calendar]\nOutput=N\n[Yearly Calendar]\nOutput=Y\nSheetName=Year\n"
                      "OutWeekday=N\nOutMonth=N\nOutYear=N\nOutHoliday=N\nMonthLayout=1\n"
                      "RowIntervalOfMonth=1\nColIntervalOfDay=1\nRowIntervalOfDay=1\n"
                      "FirstCellOfDay=")
        # December 2027 begins eleven rows down, on a Wednesday, and has five weeks.
        for cell, finding in (("IP65521", None),
                              ("IP65522", "in 2027-12, 6 cells cannot be written."),
                              ("IQ65521", "in 2027-1, 5 cells cannot be written.")):
            (self.home / "Mine.ini").write_text(parameters + cell + "\n")
            result = self.run_program("check", "./Mine.xls", 2027)
            self.assertEqual(result.returncode, 1 if finding else 0, result)
            self.assertIn(f"Yearly calendar: {finding}" if finding else "lies inside it",
                          result.stdout.splitlines()[0])

    def test_holidays(self):
        (self.home / "Here.txt").write_text("1225, DAY, Christmas\n-2, EASTER,Good Friday\n")
        result = self.run_program("holidays", "Here.txt", 2027)
        self.assertEqual((result.returncode, result.stdout),
                         (0, "2027-03-26\tGood Friday\n2027-12-25\t Christmas\n"))
        printed = json.loads(self.run_program("holidays", "Here.txt", 2027, "--json").stdout)
        self.assertEqual(printed, {"year": 2027,
                                   "holidays": [{"date": "2027-03-26", "name": "Good Friday"},
                                                {"date": "2027-12-25", "name": " Christmas"}]})

    def test_holidays_of_a_shipped_file_and_of_a_section(self):
        result = self.run_program("holidays", "Germany.txt", 2027)
        self.assertIn("2027-12-25\t", result.stdout)
        for section in ("monthly", "yearly"):
            result = self.run_program("holidays", "Desk.ini", 2027, "--section", section)
            self.assertEqual(result.returncode, 0, result.stderr)

    def test_easter(self):
        result = self.run_program("easter", 2000, 2008, 2011, "2024-2025")
        self.assertEqual((result.returncode, result.stdout),
                         (0, "2000-04-23\n2008-03-23\n2011-04-24\n2024-03-31\n2025-04-20\n"))
        self.assertEqual(os.listdir(self.home), [], "no settings are needed")
        result = self.run_program("easter", 6553, 6554)
        self.assertEqual((result.returncode, result.stdout.count("\n")), (1, 1))

    def test_wrong_usage(self):
        for line in ([], ["print"], ["generate"], ["generate", "Desk.xlsx"],
                     ["generate", "Desk.xlsx", "next"], ["easter", "2029-2027"],
                     ["templates", "--fast"], ["generate", "Desk.xlsx", "2027", "--engine", "x"]):
            self.assert_usage(self.run_program(*line))
        self.assertIn("2027-2036", self.run_program("generate", "Desk.xlsx", "next").stderr)
        self.assertEqual(os.listdir(self.home), [])


class Places(Program):
    def test_a_portable_program_uses_only_its_folder(self):
        portable = self.home / "portable"
        shutil.copytree(DATA, portable)
        program = portable / self.program.name
        shutil.copy(self.program, program)
        result = self.run_program("generate", "Desk.xlsx", 2027, program=program)
        self.assertEqual(result.stdout, shown(portable / "output/2027Desk.xlsx") + "\n",
                         result.stderr)
        self.assertFalse((self.home / ".config").exists())

    def test_settings_of_a_named_file(self):
        other = self.home / "other"
        shutil.copytree(DATA, other)
        result = self.run_program("generate", "Desk.xlsx", 2027, "--settings", "other/orrery.ini")
        self.assertEqual(result.stdout, shown(other / "output/2027Desk.xlsx") + "\n",
                         result.stderr)
        self.assertFalse((self.home / ".config").exists())


if __name__ == "__main__":
    unittest.main()
