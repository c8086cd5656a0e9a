"""The holidays of every shipped file as iCalendar: read back they are the same days and names, and two other
readers find them, too."""

import concurrent.futures
import datetime
import json
import os
import pathlib
import subprocess
import tempfile
import unittest

import icalendar
import vobject

CLI = os.environ["ORRERY_CLI"]
READ_ICS = os.environ["ORRERY_READ_ICS"]
SOURCE = pathlib.Path(os.environ["ORRERY_SOURCE_DIR"])
FULL = os.environ.get("ORRERY_FULL") == "1"
FIRST, LAST = 2020, 2040
FILES = sorted((SOURCE / "data/holiday").glob("*.txt"))
# The other readers take most of the time. Every push shows them each twentieth file, and in it fewer years.
SHOWN = FILES if FULL else FILES[::20]
SHOWN_LAST = LAST if FULL else FIRST + 4


def run(*command):
    result = subprocess.run([str(part) for part in command], capture_output=True, timeout=120)
    if result.returncode != 0:
        raise AssertionError(f"{command}: {result.stdout[-500:]!r} {result.stderr!r}")
    return result.stdout


def days_from(first, last):
    return [first + datetime.timedelta(days=i) for i in range((last - first).days + 1)]


def holidays(file, last):
    """The days and names that the program prints."""
    years = json.loads(run(CLI, "holidays", file, f"{FIRST}-{last}", "--all-kinds", "--json"))["years"]
    return {(datetime.date.fromisoformat(day["date"]), day["name"]) for year in years for day in year["holidays"]}


def save(file, last, folder):
    path = folder / (file.stem + ".ics")
    run(CLI, "holidays", file, f"{FIRST}-{last}", "--all-kinds", "--ics", path)
    return path


def read_back(path):
    """The days and names that the library reads; nothing may be passed over."""
    found = set()
    for line in run(READ_ICS, path, FIRST, LAST).decode().splitlines():
        kind, _, name, days, *_ = line.split("\t")
        assert kind == "event", line
        first, last = map(datetime.date.fromisoformat, days.split("/"))
        found |= {(day, name) for day in days_from(first, last)}
    return found


def read_with_icalendar(text):
    found = set()
    for event in icalendar.Calendar.from_ical(text).walk("VEVENT"):
        assert not event.errors, event.errors
        last = event["DTEND"].dt - datetime.timedelta(days=1)
        found |= {(day, str(event["SUMMARY"])) for day in days_from(event["DTSTART"].dt, last)}
    return found


def read_with_vobject(text):
    calendar = vobject.readOne(text)
    calendar.validate(raiseException=True)
    found = set()
    for event in calendar.vevent_list:
        event.validate(raiseException=True)
        last = event.dtend.value - datetime.timedelta(days=1)
        found |= {(day, event.summary.value) for day in days_from(event.dtstart.value, last)}
    return found


class RoundTrip(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix="orrery-ics-")
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)

    def compare(self, file):
        expected = holidays(file, LAST)
        found = read_back(save(file, LAST, self.folder))
        return [] if found == expected else [f"{file.name}: {sorted(found ^ expected)[:5]}"]

    def test_every_shipped_file_comes_back(self):
        self.assertGreater(len(FILES), 200)
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            wrong = [line for lines in pool.map(self.compare, FILES) for line in lines]
        self.assertEqual(wrong, [])

    def test_other_readers_find_the_same(self):
        for file in SHOWN:
            text = save(file, SHOWN_LAST, self.folder).read_bytes().decode("utf-8")
            expected = holidays(file, SHOWN_LAST)
            self.assertGreater(len(expected), 10, file.name)
            self.assertEqual(read_with_icalendar(text), expected, file.name)
            self.assertEqual(read_with_vobject(text), expected, file.name)

    def test_lines_are_folded_and_events_have_what_they_must(self):
        for file in SHOWN:
            lines = save(file, SHOWN_LAST, self.folder).read_bytes().split(b"\r\n")
            self.assertEqual(lines.pop(), b"")
            for line in lines:
                self.assertLessEqual(len(line), 75)
                self.assertNotIn(b"\n", line)
                line.decode("utf-8")  # no character is cut
            uids = [line for line in lines if line.startswith(b"UID:")]
            self.assertEqual(len(uids), len(set(uids)), file.name)
            for name in (b"DTSTAMP:", b"DTSTART;VALUE=DATE:", b"SUMMARY:", b"CATEGORIES:Holiday,", b"TRANSP:TRANSPARENT"):
                self.assertEqual(sum(line.startswith(name) for line in lines), len(uids), name)

    def test_the_same_days_give_the_same_bytes_and_uids_do_not_depend_on_the_years(self):
        file = SOURCE / "data/holiday/Germany.txt"
        once = save(file, 2022, self.folder).read_bytes()
        self.assertEqual(save(file, 2022, self.folder).read_bytes(), once)
        uids = {line for line in once.split(b"\r\n") if line.startswith(b"UID:")}
        more = set(save(file, 2024, self.folder).read_bytes().split(b"\r\n"))
        self.assertEqual(uids - more, set())


if __name__ == "__main__":
    unittest.main()
