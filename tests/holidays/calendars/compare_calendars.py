"""Compares the calendars from 1900 to 2100 with programs that know them, too.

ICU, hebcal, pyluach, lunardate and dateutil give dates; ephem gives the sun and the moon, from
which sky.py makes the calendars that go by them. Where a program is wrong, known_errors.py says
why.

    compare_calendars.py PRINT_CALENDARS
"""

import datetime
import shutil
import subprocess
import sys
from collections import defaultdict

try:
    import ephem
    import icu
    import lunardate
    from dateutil import easter
    from pyluach import dates as pyluach
except ImportError as missing:
    sys.exit(f"{missing}: install python3-ephem, python3-icu, python3-lunardate, python3-pyluach "
             "and python3-dateutil")
if not shutil.which("hebcal"):
    sys.exit("hebcal was not found: install hebcal")

import known_errors
import sky

DAY = datetime.timedelta(days=1)
FIRST, LAST = datetime.date(1900, 1, 1), datetime.date(2100, 12, 31)
ZONES = (sky.greenwich, sky.china, sky.korea, sky.vietnam, sky.japan)
MOON_SECONDS = 20
SUN_SECONDS = 20
ICU_NAMES = {"islamic-civil": "islamic-civil", "hebrew": "hebrew", "chinese": "chinese",
             "korean": "dangi", "persian": "persian", "coptic": "coptic", "ethiopic": "ethiopic",
             "indian": "indian"}
YEAR, MONTH, DAY_OF_MONTH, IS_LEAP = 1, 2, 5, 22  # fields of ICU's calendars
# ICU's places of Nisan to Adar; 6 is Adar I.
HEBREW_ORDER = (8, 9, 10, 11, 12, 13, 1, 2, 3, 4, 5, 7)


class Report:
    """Counts what was compared and collects what differs."""

    def __init__(self):
        self.problems = []
        self.lines = []

    def add(self, name, count, problems, at_least):
        self.lines.append(f"{name}: {count} compared, {len(problems)} problems")
        self.problems += [f"{name}: {problem}" for problem in problems]
        if count < at_least:
            self.problems.append(f"{name}: {count} compared, {at_least} expected")


class Calendars:
    """What the program printed."""

    def __init__(self, program):
        self.months = defaultdict(dict)
        self.sun = []
        self.moon = []
        self.moon_dates = {}
        self.easter = {}
        text = subprocess.run([program], capture_output=True, text=True, check=True).stdout
        for line in text.splitlines():
            kind, *fields = line.split()
            getattr(self, f"read_{kind}")(*fields)

    def read_month(self, name, year, month, leap, first, length):
        key = int(year), int(month), int(leap)
        self.months[name][key] = datetime.date.fromisoformat(first), int(length)

    def read_easter(self, year, day):
        self.easter[int(year)] = datetime.date.fromisoformat(day)

    def read_sun(self, year, degrees, moment, *days):
        self.sun.append((int(year), int(degrees), sky.from_julian_day(float(moment)),
                         [datetime.date.fromisoformat(day) for day in days]))

    def read_moon(self, phase, moment):
        self.moon.append((int(phase), sky.from_julian_day(float(moment))))

    def read_dates(self, year, phase, zone, *days):
        self.moon_dates[int(year), int(phase), int(zone)] = [
            datetime.date.fromisoformat(day) for day in days]

    def starts(self, name):
        return {key: first for key, (first, _) in self.months[name].items()
                if FIRST <= first <= LAST}


def known(differences, errors):
    """The differences that are not known, and the known ones that are none."""
    problems = [text for day, text in differences.items() if str(day) not in errors]
    days = {str(day) for day in differences}
    return problems + [f"{day} is a known error that no longer shows" for day in errors
                       if day not in days]


def compare_continuity(calendars, report):
    """Every day of the years is in exactly one month."""
    for name, months in calendars.months.items():
        problems = []
        days = list(months.values())
        for (first, length), (following, _) in zip(days, days[1:]):
            if first + length * DAY != following:
                problems.append(f"the month after {first} begins on {following}")
        if days[0][0] > FIRST or days[-1][0] + days[-1][1] * DAY <= LAST:
            problems.append("does not cover the years")
        report.add(f"{name}, continuity", len(days), problems, 2400)


def icu_calendar(name):
    return icu.Calendar.createInstance(icu.TimeZone.getGMT(),
                                       icu.Locale(f"en@calendar={name}"))


def icu_date(calendar, day):
    calendar.setTime((day - sky.START).days * 86400.0)
    return tuple(calendar.get(field) for field in (YEAR, MONTH, DAY_OF_MONTH, IS_LEAP))


def icu_expected(name, key):
    year, month, leap = key
    if name == "hebrew":
        return year, 5 if leap else HEBREW_ORDER[month - 1] - 1, 1, 0
    return year, month - 1, 1, leap


def compare_icu(calendars, report):
    for name, icu_name in ICU_NAMES.items():
        calendar = icu_calendar(icu_name)
        differences = {}
        starts = calendars.starts(name)
        cycles = name in ("chinese", "korean")  # ICU counts their years in cycles of sixty
        for key, first in starts.items():
            found, expected = icu_date(calendar, first), icu_expected(name, key)
            if found[cycles:] != expected[cycles:]:
                differences[first] = f"{first} is {expected}, in ICU {found}"
        errors = known_errors.ICU.get(name, {})
        report.add(f"{name}, ICU", len(starts), known(differences, errors), 2400)


def compare_icu_umm_al_qura(calendars, report):
    """ICU has the published months from 1420 to 1450, and others around them."""
    calendar, problems, count = icu_calendar("islamic-umalqura"), [], 0
    for key, first in calendars.starts("umm-al-qura").items():
        if 1420 <= key[0] <= 1450:
            count += 1
            if icu_date(calendar, first) != icu_expected("umm-al-qura", key):
                problems.append(f"{first} is {key}, in ICU {icu_date(calendar, first)}")
    report.add("umm-al-qura, ICU", count, problems, 31 * 12)


def compare_rule_of_mecca(calendars, report):
    """The rule of the calendar is that of the months from 1423 on."""
    differences, count = {}, 0
    for (year, month, _), first in calendars.starts("umm-al-qura").items():
        if year < 1423:
            continue
        count += 1
        later = (first - sky.umm_al_qura_start(first)).days
        expected, _reason = known_errors.PUBLISHED_AGAINST_RULE.get((year, month), (0, ""))
        if later != expected:
            differences[first] = f"{year}-{month} begins {later} days after the rule's day"
    report.add("umm-al-qura, rule", count, list(differences.values()), 1200)


def compare_old_umm_al_qura(calendars, report):
    """No program has the published months before 1420: they begin soon after the new moon."""
    problems, count = [], 0
    for (year, month, _), first in calendars.starts("umm-al-qura").items():
        if year < 1420:
            count += 1
            new_moon = ephem.previous_new_moon(ephem.Date(first + 2 * DAY))
            age = sky.start_of(first, sky.greenwich) - new_moon
            if not -1.2 < age < 3:
                problems.append(f"{year}-{month} begins {age:.1f} days after the new moon")
    report.add("umm-al-qura, new moons", count, problems, 1200)


def compare_hebrew(calendars, report):
    output = subprocess.run(["hebcal", "-h", "-x", "-d", "-g", "-H", "--years", "203", "5660"],
                            capture_output=True, text=True, check=True).stdout
    names = ("Nisan", "Iyyar", "Sivan", "Tamuz", "Av", "Elul", "Tishrei", "Cheshvan", "Kislev",
             "Tevet", "Sh'vat")
    hebcal = {}
    for line in output.splitlines():
        day, date = line.split(" ", 1)
        if date.startswith("1st of "):
            name, year = date[len("1st of "):].split(", ")
            key = ((int(year), 12, int(name == "Adar I")) if name.startswith("Adar")
                   else (int(year), names.index(name) + 1, 0))
            hebcal[key] = datetime.date.fromisoformat(day)
    starts = calendars.starts("hebrew")
    problems = [f"{first} is {key}, in hebcal that is {hebcal.get(key)}"
                for key, first in starts.items() if hebcal.get(key) != first]
    report.add("hebrew, hebcal", len(starts), problems, 2400)
    problems = []
    for (year, month, leap), first in starts.items():
        long_year = (7 * year + 1) % 19 < 7
        number = 13 if month == 12 and long_year and not leap else month
        there = pyluach.HebrewDate(year, number, 1).to_pydate()
        if there != first:
            problems.append(f"{first} is {year}-{month}, in pyluach that is {there}")
    report.add("hebrew, pyluach", len(starts), problems, 2400)


def compare_lunardate(calendars, report):
    differences, count = {}, 0
    for (year, month, leap), first in calendars.starts("chinese").items():
        if not 1900 <= year <= 2099:
            continue
        count += 1
        there = lunardate.LunarDate.fromSolarDate(first.year, first.month, first.day)
        if (there.year, there.month, there.day, there.isLeapMonth) != (year, month, 1, leap):
            differences[first] = f"{first} is {year}-{month}, in lunardate {there}"
    report.add("chinese, lunardate", count, known(differences, known_errors.LUNARDATE), 2400)


def compare_lunisolar(calendars, report):
    for name, zone in (("chinese", sky.china), ("korean", sky.korea), ("vietnamese", sky.vietnam)):
        there = {key: first for key, first in sky.lunisolar_months(zone, 1900, 2100).items()
                 if FIRST <= first <= LAST}
        here = calendars.starts(name)
        problems = [f"{key}: {here.get(key)}, by ephem {there.get(key)}"
                    for key in sorted(here.keys() | there.keys())
                    if here.get(key) != there.get(key)]
        report.add(f"{name}, ephem", len(here), problems, 2480)


def compare_sun(calendars, report):
    """The sun is where ephem has it, and the dates are those of ephem's moments."""
    problems = []
    for year, degrees, moment, days in calendars.sun:
        way = (sky.sun_longitude(moment) - degrees + 180) % 360 - 180
        seconds = way * 365.2422 / 360 * 86400
        if abs(seconds) > SUN_SECONDS:
            problems.append(f"{degrees} degrees in {year} are {seconds:.0f} s after ephem's")
        there = ephem.Date(moment - seconds / 86400)
        for zone, day in zip(ZONES, days, strict=True):
            if sky.local_date(there, zone) != day and not near_midnight(there, zone, SUN_SECONDS):
                problems.append(f"{there} is not {day} in {zone.__name__}")
    report.add("sun, ephem", len(calendars.sun), problems, 201 * 24)


def compare_moon(calendars, report):
    """Likewise the moon."""
    problems, dates, unsure = [], defaultdict(list), set()
    for phase, moment in calendars.moon:
        there = sky.phase_near(moment, phase)
        seconds = 86400 * (moment - there)
        if abs(seconds) > MOON_SECONDS:
            problems.append(f"phase {phase} at {moment} is {seconds:.0f} s after ephem's")
        for number, zone in enumerate(ZONES):
            day = sky.local_date(there, zone)
            dates[day.year, phase, number].append(day)
            if near_midnight(there, zone, MOON_SECONDS):
                unsure |= {day - DAY, day, day + DAY}
    report.add("moon, ephem", len(calendars.moon), problems, 9900)
    problems = []
    for key, days in calendars.moon_dates.items():
        if not set(days) ^ set(dates[key]) <= unsure:
            problems.append(f"{key}: {set(days) ^ set(dates[key])}")
    report.add("dates of the moon, ephem", len(calendars.moon_dates), problems,
               201 * 4 * len(ZONES))


def near_midnight(moment, zone, seconds):
    return sky.seconds_from_midnight(moment, zone) < seconds


def compare_persian(calendars, report):
    """A year begins on the day of the equinox, or after noon on the next one."""
    problems, count = [], 0
    for (year, month, _), first in calendars.starts("persian").items():
        if month == 1:
            count += 1
            noon = ephem.Date(sky.start_of(first, sky.greenwich) + (12 - 3.5) / 24)
            if not sky.sun_longitude(ephem.Date(noon - 1)) > 180 > sky.sun_longitude(noon):
                problems.append(f"{year} begins on {first}")
    report.add("persian, ephem", count, problems, 201)


def compare_julian(calendars, report):
    problems = [f"{year}: {day}" for year, day in calendars.easter.items()
                if easter.easter(year, easter.EASTER_ORTHODOX) != day]
    report.add("Easter, dateutil", len(calendars.easter), problems, 201)
    julian = icu.GregorianCalendar(icu.TimeZone.getGMT(), icu.Locale("en"))
    julian.setGregorianChange(1e12)  # never, for our years
    starts = calendars.starts("julian")
    problems = [f"{first} is {key}, in ICU {icu_date(julian, first)}"
                for key, first in starts.items()
                if icu_date(julian, first) != icu_expected("julian", key)]
    report.add("julian, ICU", len(starts), problems, 2400)


def main():
    calendars, report = Calendars(sys.argv[1]), Report()
    for compare in (compare_continuity, compare_icu, compare_icu_umm_al_qura,
                    compare_rule_of_mecca, compare_old_umm_al_qura, compare_hebrew,
                    compare_lunardate, compare_lunisolar, compare_sun, compare_moon,
                    compare_persian, compare_julian):
        compare(calendars, report)
    print("\n".join(report.lines))
    print("\n".join(report.problems))
    return 1 if report.problems else 0


if __name__ == "__main__":
    sys.exit(main())
