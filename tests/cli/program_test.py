"""The command-line program as a user starts it: outputs, exit codes and what lies on the disk."""

import json
import os
import pathlib
import pty
import shutil
import subprocess
import tempfile
import time
import unittest

import openpyxl

CLI = os.environ["ORRERY_CLI"]
DATA = pathlib.Path(os.environ["ORRERY_SOURCE_DIR"]) / "data"


class Program(unittest.TestCase):
    def setUp(self):
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="orrery-cli-"))
        self.addCleanup(shutil.rmtree, self.home)
        self.environment = {"HOME": str(self.home), "PATH": os.environ["PATH"]}
        self.output = self.home / "out"

    def run_program(self, *arguments, **options):
        return subprocess.run([CLI, *map(str, arguments)], env=self.environment, text=True,
                              capture_output=True, cwd=self.home, timeout=120, **options)

    def generate(self, *arguments):
        return self.run_program("generate", *arguments, "--output-folder", self.output)

    def assert_usage(self, result):
        self.assertEqual(result.returncode, 2, result)
        self.assertEqual(result.stdout, "")
        self.assertEqual(result.stderr.count("\n"), 1, result.stderr)


class Generate(Program):
    def test_saves_a_calendar_and_prints_its_path(self):
        result = self.generate("Desk.xlsx", 2027)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertEqual(result.stdout, f"{self.output}/2027Desk.xlsx\n")
        self.assertEqual(sorted(os.listdir(self.output)), ["2027Desk.xlsx"])

    def test_the_workbook_holds_the_year(self):
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

    def test_a_range_is_a_workbook_for_each_year(self):
        result = self.generate("Desk.xlsx", "2027-2029")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual([pathlib.Path(line).name for line in result.stdout.splitlines()],
                         ["2027Desk.xlsx", "2028Desk.xlsx", "2029Desk.xlsx"])
        self.assertEqual(result.stderr, "", "no bar where nobody watches")

    def test_every_shipped_template_is_filled_without_a_report(self):
        for template in sorted(DATA.glob("template/*.xls*")):
            result = self.generate(template.name, 2028, "--json")
            self.assertEqual(result.returncode, 0, result.stderr)
            self.assertEqual(json.loads(result.stdout),
                             {"engine": "builtin", "reports": [],
                              "saved": [f"{self.output}/2028{template.name}"]})

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
        self.assertIn(f'Failed to open the calendar file "{self.home}/taken/2027Desk.xlsx".\n',
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
        for engine in ("excel", "libreoffice"):
            result = self.generate("Desk.xlsx", 2027, "--engine", engine)
            self.assertEqual(result.returncode, 1)
            self.assertIn('"builtin"', result.stderr)

    def test_open_hands_the_workbook_to_the_desktop(self):
        programs = self.home / "bin"
        programs.mkdir()
        opener = programs / "xdg-open"
        opener.write_text(f'#!/bin/sh\necho "$1" >> {self.home}/opened\n')
        opener.chmod(0o755)
        self.environment["PATH"] = f"{programs}:{self.environment['PATH']}"
        self.generate("Desk.xlsx", 2027)
        self.assertFalse((self.home / "opened").exists(), "nobody asked")
        result = self.generate("Desk.xlsx", 2027, "--open")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        for _ in range(50):  # the desktop's program is not waited for
            if (self.home / "opened").exists():
                break
            time.sleep(0.1)
        self.assertEqual((self.home / "opened").read_text(), f"{self.output}/2027Desk.xlsx\n")

    def test_a_terminal_sees_a_bar_for_several_years(self):
        for years, expected in (("2027-2028", True), ("2027", False)):
            terminal, inside = pty.openpty()
            result = subprocess.run(
                [CLI, "generate", "Desk.xlsx", years, "--output-folder", str(self.output)],
                env=self.environment, stdout=subprocess.PIPE, stderr=inside, timeout=120)
            os.close(inside)
            os.set_blocking(terminal, False)
            try:
                seen = os.read(terminal, 1 << 20).decode()
            except OSError:
                seen = ""
            os.close(terminal)
            self.assertEqual(result.returncode, 0)
            self.assertEqual("#" * 40 + "] 2/2  2028" in seen, expected, seen)
            if expected:
                self.assertTrue(seen.endswith("\r\x1b[K"), "the bar is gone at the end")


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

    def test_check_knows_the_limits_of_the_sheet(self):
        shutil.copy(DATA / "template/Desk.xlsx", self.home / "Mine.xlsx")
        sheet = openpyxl.load_workbook(self.home / "Mine.xlsx").sheetnames[0]
        (self.home / "Mine.ini").write_text(
            f"[Monthly Calendar]\nOutput=N\n[Yearly Calendar]\nOutput=Y\nSheetName={sheet}\n"
            "FirstCellOfDay=A65536\nRowIntervalOfDay=10000\nMonthLayout=1\n"
            "RowIntervalOfMonth=10000\nColIntervalOfDay=36\n")
        self.assertEqual(self.run_program("check", "./Mine.xlsx", 2027).returncode, 0)

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

    def test_output_that_cannot_be_written(self):
        with open("/dev/full", "w") as full:
            result = subprocess.run([CLI, "easter", "2027"], stdout=full, stderr=subprocess.PIPE,
                                    env=self.environment, timeout=60)
        self.assertEqual(result.returncode, 1)
        self.assertIn(b"Standard output", result.stderr)


class Places(Program):
    def test_the_first_start_fills_the_users_folders_and_later_ones_do_not(self):
        self.run_program("templates")
        settings = self.home / ".config/orrery/orrery.ini"
        data = self.home / ".local/share/orrery"
        self.assertEqual(settings.read_bytes(), (DATA / "orrery.ini").read_bytes())
        self.assertEqual((data / "tips.txt").read_bytes(), (DATA / "tips.txt").read_bytes())
        for path in DATA.glob("holiday/*"):
            self.assertEqual((data / "holiday" / path.name).read_bytes(), path.read_bytes())
        (data / "template/Desk.xlsx").unlink()
        self.run_program("templates")
        self.assertFalse((data / "template/Desk.xlsx").exists())

    def test_the_xdg_folders_are_used(self):
        self.environment["XDG_CONFIG_HOME"] = str(self.home / "c")
        self.environment["XDG_DATA_HOME"] = str(self.home / "d")
        self.run_program("templates")
        self.assertTrue((self.home / "c/orrery/orrery.ini").exists())
        self.assertTrue((self.home / "d/orrery/template/Desk.xlsx").exists())
        self.assertFalse((self.home / ".config").exists())

    def test_a_portable_program_keeps_to_its_folder(self):
        portable = self.home / "portable"
        shutil.copytree(DATA, portable)
        shutil.copy(CLI, portable / "orrery-cli")
        result = subprocess.run([portable / "orrery-cli", "generate", "Desk.xlsx", "2027"],
                                env=self.environment, text=True, capture_output=True, timeout=60)
        self.assertEqual(result.stdout, f"{portable}/output/2027Desk.xlsx\n", result.stderr)
        self.assertFalse((self.home / ".config").exists())

    def test_settings_of_a_named_file(self):
        other = self.home / "other"
        shutil.copytree(DATA, other)
        result = self.run_program("generate", "Desk.xlsx", 2027, "--settings", "other/orrery.ini")
        self.assertEqual(result.stdout, f"{other}/output/2027Desk.xlsx\n", result.stderr)
        self.assertFalse((self.home / ".config").exists())


if __name__ == "__main__":
    unittest.main()
