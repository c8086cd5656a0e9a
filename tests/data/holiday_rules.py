"""A small reader of holiday files, independent of the program's own, to check it.

A rule is "date,kind,name": a fixed date ("0101,DAY,..."), a weekday of a month ("0505,MON,..."
is the last Monday of May) or a number of days from Easter Sunday ("-2,EASTER,..."). It supports
only what the shipped files use and is stricter than the program: any other line is a comment and
must begin with "#".
"""

import calendar
import re
from dataclasses import dataclass
from datetime import date, timedelta
from pathlib import Path

from dateutil.easter import easter

WEEKDAYS = {"MON": 0, "TUE": 1, "WED": 2, "THU": 3, "FRI": 4, "SAT": 5, "SUN": 6}
RULE = re.compile(r"(-?\d+),(DAY|EASTER|MON|TUE|WED|THU|FRI|SAT|SUN),(.+)")
LAST = 5  # as ordinal: the last such weekday of the month; 6 is the one before, and so on


@dataclass(frozen=True)
class Rule:
    code: int
    kind: str
    name: str
    line: int

    def date_in(self, year: int) -> date:
        """The rule's day in a year; raises ValueError for a date that does not exist."""
        if self.kind == "EASTER":
            return easter(year) + timedelta(days=self.code)
        month, number = divmod(self.code, 100)
        if self.kind == "DAY":
            return date(year, month, number)
        return weekday_of_month(year, month, number, WEEKDAYS[self.kind])


def weekday_of_month(year: int, month: int, ordinal: int, weekday: int) -> date:
    weeks = calendar.monthcalendar(year, month)
    days = [date(year, month, week[weekday]) for week in weeks if week[weekday]]
    if ordinal >= LAST:
        return days[-1] - timedelta(weeks=ordinal - LAST)
    if ordinal < 1:
        raise ValueError(f"ordinal {ordinal} of a weekday")
    return days[ordinal - 1]


@dataclass(frozen=True)
class HolidayFile:
    path: Path
    rules: list[Rule]
    comments: list[str]
    unknown_lines: list[str]  # lines that are neither rules nor "#" comments

    def dates(self, year: int) -> list[tuple[date, str]]:
        """The year's holidays by date; two on one day keep the file's order."""
        return sorted(((r.date_in(year), r.name) for r in self.rules), key=lambda day: day[0])


def read_holiday_file(path: Path) -> HolidayFile:
    rules, comments, unknown_lines = [], [], []
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), start=1):
        match = RULE.fullmatch(line)
        if match:
            rules.append(Rule(int(match[1]), match[2], match[3], number))
        elif line.startswith("#"):
            comments.append(line)
        else:
            unknown_lines.append(f"line {number}: {line!r}")
    return HolidayFile(path, rules, comments, unknown_lines)
