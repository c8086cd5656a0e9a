"""What the command import makes of files of other programs."""

import json
import resource
import unittest

from program import CLI, Program

SIZE = 100_000_000  # of the largest file that is read
IS_SANITIZED = b"__asan_init" in CLI.read_bytes()  # takes much more memory

ICS = """BEGIN:VCALENDAR
VERSION:2.0
PRODID:-//Test//EN
BEGIN:VEVENT
UID:1
DTSTART;VALUE=DATE:20270501
RRULE:FREQ=YEARLY
SUMMARY:May Day
END:VEVENT
BEGIN:VEVENT
UID:2
DTSTART;VALUE=DATE:20270514
DTEND;VALUE=DATE:20270518
SUMMARY:Tournament
END:VEVENT
END:VCALENDAR
"""


class Import(Program):
    def write(self, name, text, encoding="utf-8"):
        path = self.home / name
        path.write_bytes(text.replace("\n", "\r\n").encode(encoding))
        return path

    def import_file(self, *arguments):
        return self.run_program("import", *arguments)

    def imported(self, *arguments):
        """The JSON object and the rules of the file."""
        target = self.home / "out.txt"
        result = self.import_file(*arguments, "--output", target, "--replace", "--json")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        lines = target.read_text(encoding="utf-8").splitlines()
        self.assertTrue(lines[0].startswith("# out: days from "), lines[0])
        return json.loads(result.stdout), lines[1:]

    def test_a_table_becomes_an_own_file(self):
        table = self.write("Club.csv", "Date;Name;Place\n01.05.2027;Fest, groß;x\nsoon;Party;y\n")
        result = self.import_file(table)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        lines = result.stdout.splitlines()
        self.assertEqual(lines[:3], [
            'Table, separator semicolon: dates in "Date" (day, month, year), names in "Name"; '
            'ignored: "Place"',
            "0 rules, 1 dated day; 1 line is passed over:", 'Line 3: "soon" is not a date.'])
        self.assertRegex(lines[3], r"own[/\\]Club.txt$")
        self.assertEqual(len(lines), 4)
        days = self.run_program("holidays", lines[3].removeprefix("Z:").replace("\\", "/"), 2027)
        self.assertEqual(days.stdout, "2027-05-01\tFest, groß\n")

    def test_never_replaces_a_file_unasked(self):
        table = self.write("Club.csv", "2027-05-01,Party\n")
        target = self.write("mine.txt", "precious")
        result = self.import_file(table, "--output", target)
        self.assertEqual(result.returncode, 1)
        self.assertIn("is there already", result.stderr)
        self.assertEqual(target.read_text(), "precious")
        self.assertEqual(self.import_file(table, "--output", target, "--replace").returncode, 0)
        self.assertIn("20270501,DATE,Party", target.read_text())

    def test_asks_for_the_order_of_dates(self):
        table = self.write("Club.csv", "3/4/2027,Party\n")
        result = self.import_file(table)
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        self.assertIn("dmy (day, month, year) or mdy (month, day, year)", result.stderr)
        for order, date in (("dmy", "20270403"), ("mdy", "20270304")):
            told, rules = self.imported(table, "--date-order", order)
            self.assertEqual(told["table"]["dateOrder"], order)
            self.assertEqual(rules, [f"{date},DATE,Party"])

    def test_reads_icalendar(self):
        for name in ("a.ics", "a.txt"):
            told, rules = self.imported(self.write(name, ICS))
            self.assertEqual((told["kind"], told["rules"], told["datedDays"]), ("ics", 1, 4))
            self.assertEqual(rules, ["0501,DAY,May Day", "> years 2027-",
                                     "20270514-20270517,DATE,Tournament"])

    def test_reads_holidays_of_outlook(self):
        hol = self.write("a.hol", "[Germany] 2\nNeujahr,2027/1/1\nTag der Arbeit,2028/5/1\n"
                                  "[Österreich] 1\nStephanstag,2027/12/26\n", "utf-16")
        told, rules = self.imported(hol)
        self.assertEqual((told["kind"], told["datedDays"]), ("hol", 3))
        self.assertEqual(told["sections"], ["Germany", "Österreich"])
        self.assertEqual(self.imported(hol, "--section", "österreich")[1],
                         ["20271226,DATE,Stephanstag"])
        told, rules = self.imported(hol, "--years", "2028")
        self.assertEqual((told["outside"], rules), (2, ["20280501,DATE,Tag der Arbeit"]))
        result = self.import_file(hol, "--section", "France")
        self.assertEqual(result.returncode, 1)
        self.assertIn("It has Germany, Österreich", result.stderr)

    def test_says_why_nothing_is_written(self):
        for name, content, reason in (("none.csv", "a,b\n", "has no dates"),
                                      ("none.hol", "[A] 0\n", "has no events"),
                                      ("none.ics", "no calendar\n", "is not a calendar"),
                                      ("binary.csv", "a\0b\n", "is not a text")):
            result = self.import_file(self.write(name, content), "--json")
            self.assertEqual(result.returncode, 1, name)
            self.assertIn(reason, json.loads(result.stdout)["reports"][0])
        self.assertEqual(self.import_file(self.home / "missing.csv").returncode, 1)
        self.assertEqual([path.name for path in self.home.rglob("none*.txt")], [])

    def test_too_many_rules_are_one_sentence(self):
        rows = "".join(f"2027-05-01,Day {i}\n" for i in range(1025))
        rows += "2028-05-01,One more\n"
        result = self.import_file(self.write("many.csv", rows))
        self.assertEqual(result.returncode, 1)
        self.assertIn("would become 1026 rules", result.stderr)
        told, rules = self.imported(self.home / "many.csv", "--years", "2027")
        self.assertEqual(len(rules), 1025)

    def test_large_files_need_little_memory(self):
        """One sentence, or as many events as are kept; whatever the bytes."""
        for name, piece, said in (("line.csv", b"x", "has no dates"),
                                  ("commas.csv", b",", "has no dates"),
                                  ("wrong.csv", b"soon,Party\n", "has no dates"),
                                  ("binary.csv", bytes(range(256)), "is not a text"),
                                  ("rows.csv", b"2027-05-01,May Day of all\n", None)):
            path = self.home / name
            path.write_bytes((piece * (SIZE // len(piece) + 1))[:SIZE])
            result = self.import_file(path)
            if said is None:
                self.assertEqual((result.returncode, result.stderr), (0, ""))
                self.assertIn("100,000 events are the most", result.stdout)
            else:
                self.assertEqual(result.returncode, 1)
                self.assertIn(said, result.stderr)
            path.unlink()
        with open(self.home / "larger.csv", "wb") as file:
            file.truncate(SIZE + 1)
        result = self.import_file(self.home / "larger.csv")
        self.assertIn("is larger than 100 MB", result.stderr)
        if not IS_SANITIZED:
            kilobytes = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss
            self.assertLess(kilobytes, 300_000)


if __name__ == "__main__":
    unittest.main()
