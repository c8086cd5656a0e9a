"""A reader of holiday files that knows the three plain kinds of rules only, as older programs do.

A rule is "date,kind,name": a fixed date ("0101,DAY,..." or "0101,,..."), a weekday of a month
("0505,MON,..." is the last Monday of May) or a number of days from Easter Sunday ("-2,EASTER,...";
whatever follows EASTER). A line with fewer than two commas or with another word between them is
passed over before its date is looked at. A plain line with a wrong date may end the reading of a
file, so that it is an error here.
"""

import calendar
from dataclasses import dataclass
from datetime import date, timedelta
from pathlib import Path

from dateutil.easter import easter

WEEKDAYS = {"MON": 0, "TUE": 1, "WED": 2, "THU": 3, "FRI": 4, "SAT": 5, "SUN": 6}
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
    passed_over: list[str]  # lines that are neither plain rules nor "#" comments
    errors: list[str]  # plain rules without a date

    def dates(self, year: int) -> list[tuple[date, str]]:
        """The year's holidays by date; two on one day keep the file's order."""
        return sorted(((r.date_in(year), r.name) for r in self.rules), key=lambda day: day[0])

    def words(self) -> dict[str, str]:
        """The "# Word: value" lines."""
        pairs = [line[1:].split(":", 1) for line in self.comments if ":" in line]
        return {word.strip(): value.strip() for word, value in pairs}


def plain_kind(word: str) -> str | None:
    word = word.strip(" ").upper()
    if word in ("", "DAY"):
        return "DAY"
    return "EASTER" if word.startswith("EASTER") else word if word in WEEKDAYS else None


def read_holiday_file(path: Path) -> HolidayFile:
    file = HolidayFile(path, [], [], [], [])
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), start=1):
        fields = line.split(",", 2)
        kind = plain_kind(fields[1]) if len(fields) > 2 else None
        if kind:
            try:
                rule = Rule(int(fields[0]), kind, fields[2], number)
                rule.date_in(2001)  # no leap year
                file.rules.append(rule)
            except ValueError as error:
                file.errors.append(f"line {number}: {line!r}: {error}")
        elif line.startswith("#"):
            file.comments.append(line)
        else:
            file.passed_over.append(line)
    return file
