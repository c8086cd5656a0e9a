"""The tables of decided days: that they can be read, and that a row decides what it says only."""

import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "scripts/holidays"))

from decisions import parse_row, parse_years, read_decisions, rows_for, years_text  # noqa: E402


class Years(unittest.TestCase):
    def test_years_and_ranges(self):
        self.assertEqual(parse_years("2001 2005-2007"), {2001, 2005, 2006, 2007})

    def test_the_text_of_years_is_read_back(self):
        for text in ("2000", "2000-2050", "2001 2003-2004 2010"):
            self.assertEqual(years_text(parse_years(text)), text)


class Rows(unittest.TestCase):
    def test_a_row_decides_its_places_name_and_years_only(self):
        row = parse_row("| NZ NZ-AUK | Matariki | 2022-2050 | shown | the Act |")
        self.assertTrue(row.covers("NZ-AUK") and row.decides("Matariki", 2022, shown=True))
        self.assertFalse(row.covers("NZ-OTA"))
        self.assertFalse(row.decides("Matariki", 2021, shown=True))
        self.assertFalse(row.decides("Matariki (observed)", 2022, shown=True))

    def test_a_row_is_about_days_that_are_shown_or_about_the_others(self):
        row = parse_row("| DK | Store bededag | 2024 | not shown: a workday | lov nr. 214 |")
        self.assertTrue(row.decides("Store bededag", 2024, shown=False))
        self.assertFalse(row.decides("Store bededag", 2024, shown=True))

    def test_a_star_is_a_star(self):
        row = parse_row("| SG | Deepavali* | 2024 | shown | the notice |")
        self.assertTrue(row.decides("Deepavali*", 2024, shown=True))
        self.assertFalse(row.decides("Deepavali (observed)", 2024, shown=True))

    def test_headings_and_text_are_no_rows(self):
        for line in ("# Decided days", "| Places | Name | Years | Decision | Reason |", "|---|---|---|---|---|"):
            self.assertIsNone(parse_row(line))

    def test_a_row_that_says_too_little_is_an_error(self):
        for line in (
            "| DK | x | 2024 | shown | |",
            "| DK | x | 24 | shown | y |",
            "| DK | x | 2024 | shown |",
            "| DK | x | 2024 | on another day | y |",
        ):
            self.assertRaises(ValueError, parse_row, line)

    def test_rows_for_undecided_days_share_their_places(self):
        days = [(place, f"{year}-05-01", "x", False) for place in ("B", "A") for year in (2001, 2002)]
        self.assertEqual(rows_for(days), ["| A B | x | 2001-2002 | not shown | |"])


class Tables(unittest.TestCase):
    def test_every_table_can_be_read(self):
        decisions = read_decisions(ROOT / "docs/holiday-decisions")
        self.assertGreater(len(decisions), 1000)
        files = (ROOT / "data/holiday").glob("*.txt")
        heads = [line for file in files for line in file.read_text("utf-8").splitlines()[:3]]
        countries = {line.split()[2] for line in heads if line.startswith("# Country:")}
        for row in decisions:
            self.assertLessEqual({place[:2] for place in row.places}, countries, row)


if __name__ == "__main__":
    unittest.main()
