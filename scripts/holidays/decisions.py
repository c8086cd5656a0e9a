"""The table of decided days: docs/holiday-decisions/*.md.

A row is `| places | name | years | decision | reason |`:

- places: `DK`, or several with blanks (`US-AK US-AL`)
- name: as the comparison prints it
- years: `2001 2005-2008 2011`
- decision: begins with "shown" (the row is about days of the file) or with "not shown" (about days
  that the file does not have)
"""

import re
from collections import defaultdict
from collections.abc import Iterable
from dataclasses import dataclass
from pathlib import Path

YEARS = re.compile(r"\d{4}(-\d{4})?( \d{4}(-\d{4})?)*")
VERDICT = re.compile(r"(not )?shown\b.*")


@dataclass(frozen=True)
class Decision:
    places: tuple[str, ...]
    name: str
    years: frozenset[int]
    verdict: str
    reason: str

    def covers(self, place: str) -> bool:
        return place in self.places

    def decides(self, name: str, year: int, shown: bool) -> bool:
        is_of_file = self.verdict.startswith("shown")
        return name == self.name and year in self.years and shown == is_of_file


def parse_years(text: str) -> frozenset[int]:
    """`2001 2005-2008` as years."""
    years: set[int] = set()
    for span in text.split():
        first, _, last = span.partition("-")
        years.update(range(int(first), int(last or first) + 1))
    return frozenset(years)


def years_text(years: Iterable[int]) -> str:
    """The reverse of `parse_years`."""
    spans: list[list[int]] = []
    for year in sorted(set(years)):
        if spans and spans[-1][1] == year - 1:
            spans[-1][1] = year
        else:
            spans.append([year, year])
    return " ".join(f"{a}-{b}" if a != b else f"{a}" for a, b in spans)


def parse_row(line: str) -> Decision | None:
    """The decision of a line of the table; nothing for headings and text."""
    cells = [cell.strip() for cell in line.strip().strip("|").split("|")]
    if not line.startswith("|") or cells[0] == "Places" or set(cells[0]) <= set("-: "):
        return None
    complete = len(cells) == 5 and all(cells)
    if not complete or not YEARS.fullmatch(cells[2]) or not VERDICT.fullmatch(cells[3]):
        raise ValueError(f"not a row of the table of decided days: {line.strip()}")
    places, name, years, verdict, reason = cells
    return Decision(tuple(places.split()), name, parse_years(years), verdict, reason)


def read_decisions(folder: Path) -> list[Decision]:
    texts = [file.read_text("utf-8") for file in sorted(folder.glob("*.md"))]
    rows = [parse_row(line) for text in texts for line in text.splitlines()]
    return [row for row in rows if row]


def rows_for(days: Iterable[tuple[str, str, str, bool]]) -> list[str]:
    """Rows for days (place, date, name, whether the file shows it), without their reasons."""
    years: dict[tuple[str, str, bool], set[int]] = defaultdict(set)
    for place, day, name, shown in days:
        years[place, name, shown].add(int(day[:4]))
    places: dict[tuple[str, str, bool], list[str]] = defaultdict(list)
    for (place, name, shown), of in years.items():
        places[name, years_text(of), shown].append(place)
    rows = [
        f"| {' '.join(sorted(where))} | {name} | {span} | {'shown' if shown else 'not shown'} | |"
        for (name, span, shown), where in places.items()
    ]
    return sorted(rows)
