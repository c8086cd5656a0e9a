"""Prints the public holidays that a Python package knows, as JSON, like date_holidays.mjs:

    python_sets.py holidays|workalendar FOLDER|- FIRST_YEAR LAST_YEAR REGION...

With a folder the package is taken from there, else the installed one. "CA:government" asks
python-holidays for a further category beside the public days.
"""

import importlib.metadata
import json
import sys
import warnings
from datetime import date


def python_holidays_days(region: str, years: range) -> dict[str, str] | None:
    import holidays

    place, _, category = region.partition(":")
    country, _, state = place.partition("-")
    cls = getattr(holidays, country, None)
    if cls is None:
        return None
    options: dict = {"years": years}
    if country in ("NO", "SE"):
        options["include_sundays"] = False
    if category and hasattr(cls, "supported_categories"):
        options["categories"] = ("public", category)
    if state:
        states = getattr(cls, "subdivisions", None) or getattr(cls, "PROVINCES", ())
        aliases = getattr(cls, "subdivisions_aliases", {})
        if state not in states and state not in aliases:
            return None
        options["subdiv" if hasattr(cls, "subdivisions") else "prov"] = state
    days = cls(**options)
    span = (date(years[0], 1, 1), date(years[-1], 12, 31))
    return {day.isoformat(): name for day, name in days.items() if span[0] <= day <= span[1]}


def workalendar_days(region: str, years: range) -> dict[str, str] | None:
    from workalendar.exceptions import CalendarError
    from workalendar.registry import registry

    cls = registry.get(region.partition(":")[0])
    if cls is None:
        return None
    days = {}
    for year in years:
        try:
            of_year = cls().holidays(year)
        except (CalendarError, KeyError):  # a year beyond its tables
            continue
        days |= {day.isoformat(): name for day, name in of_year if day.year in years}
    return days


def main() -> None:
    package, folder, first, last, *regions = sys.argv[1:]
    warnings.simplefilter("ignore")
    if folder != "-":
        sys.path.insert(0, folder)
        version = importlib.metadata.version  # a checked-out package is not an installed one
        importlib.metadata.version = lambda name: "0" if name == "holidays" else version(name)
    days_of = {"holidays": python_holidays_days, "workalendar": workalendar_days}[package]
    answer = {}
    for region in regions:
        try:
            days = days_of(region, range(int(first), int(last) + 1))
        except Exception as error:  # a year beyond its tables, an option it does not know
            print(f"{package}: {region}: {error!r}", file=sys.stderr)
            continue
        if days:
            answer[region.partition(":")[0]] = days
    json.dump(answer, sys.stdout)


if __name__ == "__main__":
    main()
