"""Tests of the checks themselves: what they compute, and that they find errors."""

import tempfile
import unittest
from datetime import date
from pathlib import Path

import check_holidays
from check_holidays import Findings
from holiday_rules import HolidayFile, read_holiday_file


def file_of(text: str) -> HolidayFile:
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder) / "Test.txt"
        path.write_text(text, encoding="utf-8")
        return read_holiday_file(path)


def dates_of(text: str, year: int) -> list[date]:
    return [day for day, _ in file_of(text).dates(year)]


class Reader(unittest.TestCase):
    def test_days_known_from_the_calendar(self):
        for rule, year, day in (
            ("0704,DAY,Independence Day", 2024, date(2024, 7, 4)),
            ("0505,MON,Memorial Day", 2024, date(2024, 5, 27)),
            ("0505,MON,Memorial Day", 2026, date(2026, 5, 25)),
            ("1104,THU,Thanksgiving Day", 2024, date(2024, 11, 28)),
            ("0506,MON,Victoria Day", 2027, date(2027, 5, 24)),
            ("0710,SAT,Midsommardagen", 2024, date(2024, 6, 22)),
            ("0710,SAT,Midsommardagen", 2026, date(2026, 6, 20)),
            ("-2,EASTER,Good Friday", 2025, date(2025, 4, 18)),
            ("39,EASTER,Ascension Day", 2025, date(2025, 5, 29)),
        ):
            with self.subTest(rule=rule, year=year):
                self.assertEqual(dates_of(rule, year), [day])

    def test_a_date_that_does_not_exist_is_an_error(self):
        for rule in ("0229,DAY,x", "1301,DAY,x", "0500,MON,x"):
            with self.subTest(rule=rule):
                self.assertEqual(len(file_of(rule).errors), 1)

    def test_lines_of_other_kinds_are_passed_over(self):
        file = file_of("# a comment\n0101,DAY,A, with comma\n0102, day , blanks\n\n0103,FIXED,x\n"
                       "> years 2006-\n20270503,DATE,y\n1104,THU +1,z\n1,EASTER MON,Easter\n")
        names = [rule.name for rule in file.rules]
        self.assertEqual(names, ["A, with comma", " blanks", "Easter"])
        self.assertEqual(len(file.passed_over), 5)

    def test_a_plain_line_that_ends_the_reading_is_an_error(self):
        for line in ("20270503,DAY,x", "0001,DAY,x", "x,EASTER,y"):
            with self.subTest(line=line):
                self.assertEqual(len(file_of(line + "\n").errors), 1)

    def test_two_holidays_on_a_day_keep_their_order(self):
        file = file_of("0501,DAY,second\n0101,DAY,first\n0501,DAY,third\n")
        self.assertEqual([name for _, name in file.dates(2025)], ["first", "second", "third"])


class Checks(unittest.TestCase):
    def problems(self, check, *arguments) -> list[str]:
        findings = Findings()
        check(*arguments, findings)
        return findings.problems

    def test_a_file_has_its_words_and_no_rule_twice(self):
        words = "".join(f"# {word}: x\n" for word in check_holidays.WORDS)
        shape = check_holidays.check_shape
        self.assertEqual(self.problems(shape, "France", file_of(words + "0101,DAY,A\n")), [])
        self.assertEqual(len(self.problems(shape, "France", file_of("0101,DAY,A\n"))), 4)
        for line in ("0101,DAY,B", "0000,DAY,B", "# a, comma", "> name en A, B", "0102,DAY, B"):
            with self.subTest(line=line):
                file = file_of(words + f"0101,DAY,A\n{line}\n")
                self.assertEqual(len(self.problems(shape, "France", file)), 1)

    def test_an_older_program_shows_holidays_only(self):
        plain = check_holidays.check_plain_days
        file = file_of("0714,DAY,x\n")
        days = {f"{year}-07-14": ["x"] for year in check_holidays.PLAIN_YEARS}
        self.assertEqual(self.problems(plain, "France", file, days), [])
        del days["2030-07-14"]
        self.assertEqual(len(self.problems(plain, "France", file, days)), 1)

    def test_days_that_only_one_has_are_problems(self):
        reference = check_holidays.check_reference
        theirs = {"2026-07-14": "x"}
        self.assertEqual(self.problems(reference, "France", {"2026-07-14": ["y"]}, theirs), [])
        self.assertEqual(len(self.problems(reference, "France", {}, theirs)), 1)
        self.assertEqual(len(self.problems(reference, "France", {"2027-01-01": ["y"]}, {})), 1)
        listed = {"2026-10-04": "Dia de Eleição"}
        self.assertEqual(self.problems(reference, "Brazil", {}, listed), [])

    def test_an_exception_that_nothing_needs_is_a_problem(self):
        findings = Findings()
        check_holidays.check_exceptions_needed(findings)
        self.assertNotEqual(findings.problems, [])


if __name__ == "__main__":
    unittest.main()
