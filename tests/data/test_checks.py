"""Tests of the checks themselves: what they compute, and that they find errors."""

import tempfile
import unittest
from datetime import date
from pathlib import Path

import check_holidays
from check_holidays import Findings
from holiday_rules import HolidayFile, read_holiday_file

YEARS = check_holidays.YEARS


def file_of(text: str) -> HolidayFile:
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder) / "Test.txt"
        path.write_text(text, encoding="utf-8")
        return read_holiday_file(path)


def dates_of(text: str, year: int) -> list[date]:
    return [day for day, _ in file_of(text).dates(year)]


def listed(name: str, days: list[str], **other) -> list[dict]:
    return [
        {"date": day, "type": "public", "names": [name], "substitute": False, **other}
        for day in days
    ]


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
            with self.subTest(rule=rule), self.assertRaises(ValueError):
                dates_of(rule, 2025)

    def test_lines_are_rules_comments_or_unknown(self):
        file = file_of("# a comment\n0101,DAY,A, with comma\n0102, DAY, blanks\n\n0103,DAI,typo\n")
        self.assertEqual([rule.name for rule in file.rules], ["A, with comma"])
        self.assertEqual(file.comments, ["# a comment"])
        self.assertEqual(len(file.unknown_lines), 3)

    def test_two_holidays_on_a_day_keep_their_order(self):
        file = file_of("0501,DAY,second\n0101,DAY,first\n0501,DAY,third\n")
        self.assertEqual([name for _, name in file.dates(2025)], ["first", "second", "third"])


class Comparison(unittest.TestCase):
    """Uses a country of the list, whose regions are known: France has one, FR."""

    def problems(self, check, text: str, reference: list[dict]) -> list[str]:
        findings = Findings()
        check("France", file_of(text), {"FR": reference}, findings)
        return findings.problems

    def test_a_rule_has_to_be_a_holiday_in_every_year(self):
        days = [f"{year}-07-14" for year in YEARS]
        rules = check_holidays.check_rules
        self.assertEqual(self.problems(rules, "0714,DAY,x", listed("x", days)), [])
        self.assertEqual(len(self.problems(rules, "0715,DAY,x", listed("x", days))), len(YEARS))
        self.assertEqual(len(self.problems(rules, "0714,DAY,x", listed("x", days[1:]))), 1)
        for other in ({"substitute": True}, {"type": "observance"}):
            self.assertNotEqual(self.problems(rules, "0714,DAY,x", listed("x", days, **other)), [])

    def test_a_holiday_has_to_be_in_the_file_or_in_a_comment(self):
        complete = check_holidays.check_complete
        day = listed("Grand Jour", ["2026-03-03"])
        self.assertEqual(self.problems(complete, "0303,DAY,Grand Jour", day), [])
        self.assertEqual(self.problems(complete, "# Left out: Grand Jour (moon)", day), [])
        self.assertEqual(len(self.problems(complete, "# something else", day)), 1)
        self.assertEqual(len(self.problems(complete, "0304,DAY,Grand Jour", day)), 1)

    def test_an_exception_that_nothing_needs_is_a_problem(self):
        findings = Findings()
        check_holidays.check_exceptions_needed(findings)
        self.assertNotEqual(findings.problems, [])


if __name__ == "__main__":
    unittest.main()
