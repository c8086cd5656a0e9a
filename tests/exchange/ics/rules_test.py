"""The days of events that come again are those that dateutil computes, for some hundred random rules."""

import datetime
import os
import pathlib
import random
import subprocess
import tempfile
import unittest

from dateutil import rrule

READ_ICS = os.environ["ORRERY_READ_ICS"]
RULES = 400
FIRST, LAST = 2026, 2028
WEEKDAYS = ("MO", "TU", "WE", "TH", "FR", "SA", "SU")
TIMES = ("SECONDLY", "MINUTELY", "HOURLY")
WINDOW_START = datetime.datetime(FIRST, 1, 1)
WINDOW_END = datetime.datetime(LAST, 12, 31, 23, 59, 59)


def some(chance, values, most=3):
    """A list of random values for a part of a rule; empty most of the time."""
    if chance.random() > 0.4:
        return []
    return sorted(chance.sample(values, chance.randint(1, min(most, len(values)))))


def month_parts(chance, frequency):
    parts = {"BYMONTH": some(chance, range(1, 13))}
    if frequency != "WEEKLY":
        parts["BYMONTHDAY"] = some(chance, [*range(1, 32), -1, -2, -15])
    return parts


def weekdays(chance, frequency, parts):
    names = some(chance, WEEKDAYS, 4)
    has_ordinals = frequency == "MONTHLY" or (frequency == "YEARLY" and parts.get("BYMONTH"))
    if has_ordinals and not parts.get("BYMONTHDAY") and chance.random() < 0.6:
        names = [f"{chance.choice((1, 2, 3, 4, 5, -1, -2))}{name}" for name in names]
    return names


def year_parts(chance, parts):
    """Of a year either weeks or days are counted, or neither."""
    choice = chance.random()
    if choice < 0.2:
        # Not the weeks at the edges of a year: the readers
        # take days of January for different years.
        parts |= {"BYWEEKNO": [chance.choice((2, 3, 20, 40, 51))], "BYMONTHDAY": [], "BYMONTH": []}
        parts["BYDAY"] = [chance.choice(WEEKDAYS)]
    elif choice < 0.4:
        parts |= {"BYYEARDAY": [chance.choice((1, 59, 60, 100, 200, 366, -1, -100))], "BYMONTHDAY": [],
                  "BYMONTH": [], "BYDAY": []}


def times_of_day(chance, frequency):
    parts = {"BYHOUR": some(chance, range(24)), "BYMINUTE": some(chance, range(0, 60, 5))}
    if frequency == "SECONDLY":
        parts["BYSECOND"] = some(chance, range(60))
    return parts


def interval_of(chance, frequency):
    longest = {"SECONDLY": 32_767, "MINUTELY": 5_000, "HOURLY": 100, "DAILY": 40, "WEEKLY": 9, "MONTHLY": 7,
               "YEARLY": 3}[frequency]
    shortest = 600 if frequency == "SECONDLY" else 2  # dateutil goes through every time
    return 1 if chance.random() < 0.4 and frequency != "SECONDLY" else chance.randint(shortest, longest)


def end_of(chance, frequency, start):
    choice = chance.random() * (0.6 if frequency in TIMES else 1)
    if choice < 0.3 and frequency != "SECONDLY":
        return [f"COUNT={chance.choice((1, 2, 7, 30, 400))}"]
    if choice < 0.6:
        end = start + datetime.timedelta(days=chance.randint(1, 1500))
        return [f"UNTIL={end:%Y%m%dT%H%M%S}"]
    return []


def random_rule(chance):
    """The text of a rule, and an event's start."""
    frequency = chance.choice(("SECONDLY", "MINUTELY", "HOURLY", "DAILY", "DAILY", "WEEKLY", "WEEKLY", "MONTHLY",
                               "MONTHLY", "MONTHLY", "YEARLY", "YEARLY", "YEARLY"))
    start = datetime.datetime(chance.randint(2019, 2027), chance.randint(1, 12), chance.randint(1, 28),
                              chance.randint(0, 23), chance.choice((0, 15, 30)))
    parts = month_parts(chance, frequency)
    parts["BYDAY"] = weekdays(chance, frequency, parts)
    if frequency == "YEARLY":
        year_parts(chance, parts)
    if frequency in TIMES:
        parts |= times_of_day(chance, frequency)
        start = start.replace(year=chance.randint(2025, 2027))
    if frequency in ("MONTHLY", "YEARLY") and parts["BYDAY"] and chance.random() < 0.3:
        parts["BYSETPOS"] = [chance.choice((1, 2, -1))]
    text = [f"FREQ={frequency}", f"INTERVAL={interval_of(chance, frequency)}"]
    text += [f"{name}={','.join(map(str, values))}" for name, values in parts.items() if values]
    if chance.random() < 0.3:
        text.append("WKST=" + chance.choice(WEEKDAYS))
    return ";".join(text + end_of(chance, frequency, start)), start


def days_of(text, start):
    """The days in the window, by dateutil; nothing if the rule has no time within reach."""
    rule = rrule.rrulestr(text, dtstart=start)
    days, steps = set(), 0
    for time in rule:
        steps += 1
        if time > WINDOW_END or steps > 100_000:
            break
        if time >= WINDOW_START:
            days.add(time.date())
    return None if steps > 100_000 else days


def first_of(text, start):
    """An event's start is a time of its rule; nothing if there is none soon."""
    try:
        time = next(iter(rrule.rrulestr(text, dtstart=start)), None)
    except ValueError:  # no hour, minute or second of the rule is reached
        return None
    return time if time and time <= WINDOW_END else None


def cases():
    """Rules with a start that is one of their times, and with their days."""
    chance = random.Random(20270101)
    found = []
    while len(found) < RULES:
        text, start = random_rule(chance)
        start = first_of(text, start)
        days = days_of(text, start) if start else None
        if days is not None:
            found.append((text, start, days))
    return found


def event(number, text, start):
    return (f"BEGIN:VEVENT\r\nUID:{number}\r\nSUMMARY:{number}\r\nDTSTART:{start:%Y%m%dT%H%M%S}\r\n"
            f"RRULE:{text}\r\nEND:VEVENT\r\n")


def read(calendar, first, last, zone="UTC"):
    """The lines that the driver prints for a user in a time zone, as lists of fields."""
    with tempfile.TemporaryDirectory(prefix="orrery-ics-") as folder:
        path = pathlib.Path(folder) / "calendar.ics"
        path.write_text(calendar, newline="")
        result = subprocess.run([READ_ICS, path, str(first), str(last)], capture_output=True, text=True,
                                timeout=120, check=True, env={**os.environ, "TZ": zone})
    return [line.split("\t") for line in result.stdout.splitlines()]


class Rules(unittest.TestCase):
    maxDiff = None

    def test_random_rules_give_the_days_that_dateutil_gives(self):
        rules = cases()
        lines = read("BEGIN:VCALENDAR\r\nVERSION:2.0\r\n" +
                     "".join(event(i, text, start) for i, (text, start, _) in enumerate(rules)) +
                     "END:VCALENDAR\r\n", FIRST, LAST)
        found = {int(line[2]): {datetime.date.fromisoformat(day.split("/")[0]) for day in line[3].split()}
                 for line in lines if line[0] == "event"}
        wrong = [f"{start} {text}: {sorted(found.get(i, set()) ^ days)[:5]}"
                 for i, (text, start, days) in enumerate(rules) if found.get(i, set()) != days]
        self.assertEqual(wrong, [])
        losses = [line for line in lines if line[0] == "passed" and "has no day" not in line[2]]
        self.assertEqual(losses, [])
        self.assertGreater(sum(bool(days) for _, _, days in rules), RULES // 2)

    def test_times_in_utc_count_on_the_days_of_the_user(self):
        calendar = ("BEGIN:VCALENDAR\r\n" + event(1, "FREQ=DAILY;COUNT=2", datetime.datetime(2027, 1, 1, 20)) +
                    "END:VCALENDAR\r\n").replace("T200000", "T200000Z")
        for zone, days in (("UTC", "2027-01-01/2027-01-01 2027-01-02/2027-01-02"),
                           ("Asia/Tokyo", "2027-01-02/2027-01-02 2027-01-03/2027-01-03"),
                           ("America/New_York", "2027-01-01/2027-01-01 2027-01-02/2027-01-02")):
            [line] = read(calendar, FIRST, LAST, zone)
            self.assertEqual(line[3], days, zone)


if __name__ == "__main__":
    unittest.main()
