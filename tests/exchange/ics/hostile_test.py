"""Files that are made to do harm cost little time and memory, and end in sentences."""

import os
import pathlib
import resource
import subprocess
import tempfile
import time
import unittest

READ_ICS = os.environ["ORRERY_READ_ICS"]
MIB = 1 << 20
SIZE = 99 * MIB if os.environ.get("ORRERY_FULL") == "1" else 20 * MIB
BEGIN, END = b"BEGIN:VCALENDAR\r\nVERSION:2.0\r\n", b"END:VCALENDAR\r\n"
SECONDS = 15  # about 5 on a machine that has nothing else to do
MEMORY = 300 * MIB
SANITIZED = os.environ.get("ORRERY_SANITIZED") == "1"  # slower, with memory of its own
if SANITIZED:
    SECONDS, MEMORY = 10 * SECONDS, 10 * MEMORY
EVENT = b"BEGIN:VEVENT\r\nUID:%d\r\nSUMMARY:Event\r\nDTSTART%s\r\n%sEND:VEVENT\r\n"
DAY = b";VALUE=DATE:20270101"


def limit_memory():
    """Ends what runs away before the machine suffers."""
    resource.setrlimit(resource.RLIMIT_AS, (4 * MEMORY, 4 * MEMORY))


def repeated(rule, start=DAY, count=1):
    return BEGIN + b"".join(EVENT % (i, start, b"RRULE:" + rule + b"\r\n") for i in range(count)) + END


class Hostile(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix="orrery-hostile-ics-")
        self.addCleanup(scratch.cleanup)
        self.path = pathlib.Path(scratch.name) / "hostile.ics"

    def read(self, content=None, expected=0):
        """The lines that the driver prints for a file, as lists of fields."""
        if content is not None:
            self.path.write_bytes(content)
        begin = time.monotonic()
        result = subprocess.run([READ_ICS, self.path, "2020", "2040"], capture_output=True,
                                timeout=2 * SECONDS, preexec_fn=None if SANITIZED else limit_memory)
        memory = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss * 1024
        self.assertEqual(result.returncode, expected, result.stderr[-500:])
        self.assertLess(time.monotonic() - begin, SECONDS)
        self.assertLess(memory, MEMORY, "memory")
        return [line.split("\t") for line in result.stdout.decode("utf-8").splitlines()]

    def reasons(self, lines):
        return [line[2] for line in lines if line[0] == "passed"]

    def events(self, lines):
        return [line for line in lines if line[0] == "event"]

    def test_rules_without_end(self):
        for rule in (b"FREQ=SECONDLY", b"FREQ=SECONDLY;COUNT=2147483647", b"FREQ=MINUTELY;BYHOUR=23;BYMINUTE=59",
                     b"FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30", b"FREQ=HOURLY;INTERVAL=32767;BYMONTH=2;BYMONTHDAY=30",
                     b"FREQ=DAILY;BYMONTH=2;BYMONTHDAY=30;COUNT=2147483647", b"FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30",
                     b"FREQ=YEARLY;BYWEEKNO=53;BYMONTH=6", b"FREQ=MONTHLY;INTERVAL=12;BYMONTHDAY=31;BYMONTH=2",
                     b"FREQ=SECONDLY;INTERVAL=7;BYSECOND=1;BYMINUTE=1;BYHOUR=1;COUNT=2147483647",
                     b"FREQ=YEARLY;BYSETPOS=366;BYMONTH=2;BYHOUR=" + b",".join(b"%d" % i for i in range(24)),
                     b"FREQ=YEARLY;BYDAY=" + b",".join([b"1MO"] * 5000),
                     b"FREQ=YEARLY;BYSETPOS=" + b",".join([b"1"] * 386), b"FREQ=YEARLY;INTERVAL=99999999999999999999"):
            for start in (DAY, b":00010101T000000", b":20270101T235959Z"):
                lines = self.read(repeated(rule, start))
                self.assertEqual([line[0] for line in lines if line[0] == "error"], [], rule)
                self.assertNotEqual(lines, [], rule)

    def test_many_rules_that_search_for_ever(self):
        for rule in (b"FREQ=SECONDLY;INTERVAL=61;BYMINUTE=1;BYHOUR=1;BYSECOND=59;COUNT=2147483647",
                     b"FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30;BYHOUR=1,2,3;COUNT=2147483647"):
            lines = self.read(repeated(rule, b":00010101T000000", 20_000))
            self.assertEqual(len(lines), len(self.reasons(lines)) + len(self.events(lines)))
            self.assertGreater(len(self.reasons(lines)), 0)

    def test_dates_that_do_not_exist(self):
        starts = (b";VALUE=DATE:00000101", b":00000000T000000", b";VALUE=DATE:20270230", b":99991332T256199Z",
                  b":-20270101", b":", b";VALUE=DATE:202701011234567890123456789", b";TZID=Nowhere:20270101T999999")
        lines = self.read(BEGIN + b"".join(EVENT % (i, start, b"") for i, start in enumerate(starts)) + END)
        self.assertEqual(self.events(lines), [])
        self.assertEqual(len(self.reasons(lines)), len(starts))
        for reason in self.reasons(lines):
            self.assertIn("DTSTART", reason)

    def test_events_that_never_end(self):
        for extra in (b"DTEND;VALUE=DATE:99991231\r\n", b"DURATION:P999999999W\r\n", b"DURATION:-P1D\r\n",
                      b"DTEND;VALUE=DATE:00010101\r\n"):
            lines = self.read(BEGIN + EVENT % (1, DAY, extra) + END)
            self.assertEqual(len(lines), 1, extra)

    def test_more_events_than_are_read(self):
        event = b"BEGIN:VEVENT\r\nSUMMARY:E\r\nDTSTART;VALUE=DATE:20270101\r\nEND:VEVENT\r\n"
        lines = self.read(BEGIN + event * (SIZE // len(event)) + END)
        self.assertEqual(len(self.events(lines)), 100_000)
        [reason] = self.reasons(lines)
        self.assertIn(f"{SIZE // len(event) - 100_000} events", reason)

    def test_one_event_in_a_large_file(self):
        for name in (b"DESCRIPTION", b"SUMMARY", b"EXDATE"):
            self.path.write_bytes(BEGIN + b"BEGIN:VEVENT\r\nSUMMARY:E\r\nDTSTART;VALUE=DATE:20270101\r\n" + name + b":")
            with open(self.path, "ab") as file:
                for _ in range(SIZE // MIB):
                    file.write(b"20270101," * (MIB // 9))
                file.write(b"\r\nEND:VEVENT\r\n" + END)
            lines = self.read()
            self.assertEqual([line[0] for line in lines], ["passed" if name == b"EXDATE" else "event"], name)

    def test_many_exceptions(self):
        dates = b"EXDATE;VALUE=DATE:" + b",".join([b"20270102"] * 7000) + b"\r\n"
        event = EVENT % (1, DAY, b"RRULE:FREQ=DAILY\r\n" + dates * 3)
        lines = self.read(BEGIN + event * (SIZE // len(event)) + END)
        self.assertGreater(len(lines), 0)

    def test_more_than_100_megabytes(self):
        with open(self.path, "wb") as file:
            file.truncate(100 * MIB + 1)
        [line] = self.read(expected=1)
        self.assertIn("larger than 100 MB", line[1])

    def test_nesting_and_missing_ends(self):
        for content in (b"BEGIN:VEVENT\r\n" * 1_000_000, b"BEGIN:X\r\n" * 1_000_000, b"\r\n" * 10_000_000,
                        b"BEGIN:VTIMEZONE\r\n" + b"BEGIN:STANDARD\r\n" * 20_000 + b"END:VTIMEZONE\r\n",
                        b"BEGIN:VEVENT\r\n" + b"BEGIN:VALARM\r\n" * 1_000_000 + b"END:VEVENT\r\n"):
            lines = self.read(BEGIN + content + END)
            self.assertEqual(self.events(lines), [])

    def test_time_zones_with_a_change_a_second(self):
        zone = (b"BEGIN:VTIMEZONE\r\nTZID:Z%d\r\nBEGIN:STANDARD\r\nTZOFFSETFROM:+0100\r\nTZOFFSETTO:+0200\r\n"
                b"DTSTART:%sT000000\r\n%sEND:STANDARD\r\nEND:VTIMEZONE\r\n")
        event = EVENT % (1, b";TZID=Z%d:20270101T120000", b"RRULE:FREQ=DAILY;UNTIL=20270105T110000Z\r\n")
        for start, rule in ((b"19700101", b"RRULE:FREQ=SECONDLY\r\n"), (b"00010101", b"RRULE:FREQ=YEARLY\r\n"),
                            (b"19700101", b"RRULE:FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30\r\n" * 20)):
            lines = self.read(BEGIN + b"".join(zone % (i, start, rule) for i in range(300)) +
                              b"".join(event % i for i in range(300)) + END)
            self.assertEqual(len(self.events(lines)), 300)
            self.assertEqual(len(self.reasons(lines)), 1)

    def test_no_calendar(self):
        for content in (b"", b"\0" * 1000, b"%PDF-1.7\r\n", os.urandom(100_000).replace(b"BEGIN", b"")):
            [line] = self.read(content, expected=1)
            self.assertIn("is not a calendar", line[1])


if __name__ == "__main__":
    unittest.main()
