"""Checks the shipped holiday files against independent sources, for 2024 to 2030.

The files are read by holiday_rules.py, Easter comes from python-dateutil and the holidays of
each country from the npm package date-holidays. Every rule must yield a public holiday of its
country in every year, and every public holiday of the country must be in the file or be named in
a comment in it. Substitute days of weekend holidays are not required.

If ORRERY_CLI is set, the program's output for each file and year is also compared with the dates
computed here.

    check_holidays.py HOLIDAY_FOLDER
"""

import json
import os
import subprocess
import sys
from dataclasses import dataclass
from datetime import date
from pathlib import Path

from holiday_rules import HolidayFile, read_holiday_file

YEARS = range(2024, 2031)
MIN_COUNTRIES = 18
HERE = Path(__file__).resolve().parent


@dataclass(frozen=True)
class Country:
    """The reference for a holiday file.

    Every public holiday of `regions` must be in the file, and every rule must yield one in each of
    them. A rule may also match a holiday in `also`, if the country's own list has only what all
    its regions share.
    """

    regions: tuple[str, ...]
    also: tuple[str, ...] = ()


COUNTRIES = {
    "Australia": Country(("AU",)),
    "Austria": Country(("AT",)),
    "Belgium": Country(("BE",)),
    "Brazil": Country(("BR",)),
    # Federal holidays: the source's list of the country has only those of all provinces.
    "Canada": Country(("CA",), also=("CA-NT",)),
    "Croatia": Country(("HR",)),
    "Czechia": Country(("CZ",)),
    "Denmark": Country(("DK",)),
    "EnglandAndWales": Country(("GB-ENG", "GB-WLS")),
    "Finland": Country(("FI",)),
    "France": Country(("FR",)),
    "Germany": Country(("DE",)),
    "Ireland": Country(("IE",)),
    "Italy": Country(("IT",)),
    "Japan": Country(("JP",)),
    "Luxembourg": Country(("LU",)),
    "Mexico": Country(("MX",)),
    "Netherlands": Country(("NL",)),
    "NewZealand": Country(("NZ",)),
    "NorthernIreland": Country(("GB-NIR",)),
    "Norway": Country(("NO",)),
    "Poland": Country(("PL",)),
    "Portugal": Country(("PT",)),
    "Scotland": Country(("GB-SCT",)),
    "Slovenia": Country(("SI",)),
    "SouthAfrica": Country(("ZA",)),
    "Spain": Country(("ES",)),
    "Sweden": Country(("SE",)),
    "Switzerland": Country(("CH",)),
    "UnitedStates": Country(("US",)),
}

# Rules whose day has a type other than "public" in the source.
OTHER_TYPE = {
    ("Canada", "National Day for Truth and Reconciliation"): (
        "observance",
        "a federal holiday by law since 2021, which the source lists as an observance",
    ),
}

# Days of rules that are missing in the source.
NOT_IN_SOURCE = {
    ("Australia", "2025-01-26"): "Sunday: the source has only the Monday kept in its place",
    ("Australia", "2030-01-26"): "Saturday: the source has only the Monday kept in its place",
    ("Italy", "2024-10-04"): "San Francesco is a public holiday since 2026",
    ("Italy", "2025-10-04"): "San Francesco is a public holiday since 2026",
    ("Netherlands", "2025-04-27"): "Sunday: Koningsdag was kept on the Saturday before",
    ("Poland", "2024-12-24"): "Wigilia is a public holiday since 2025",
}

# Substitute days of weekend holidays that the source does not mark as such.
SUBSTITUTE_DAYS = {
    ("Australia", "2025-01-27"): "for Australia Day on a Sunday",
    ("Australia", "2028-01-03"): "for New Year's Day on a Saturday",
    ("Australia", "2030-01-28"): "for Australia Day on a Saturday",
    ("Netherlands", "2025-04-26"): "for Koningsdag on a Sunday",
}


class Findings:
    """Collects problems, and which of the listed exceptions were needed."""

    def __init__(self):
        self.problems: list[str] = []
        self.used: set = set()
        self.checked = 0

    def expect(self, holds: bool, problem: str) -> None:
        self.checked += 1
        if not holds:
            self.problems.append(problem)

    def excused(self, exceptions: dict, key) -> bool:
        if key in exceptions:
            self.used.add(key)
        return key in exceptions


def run_program(command: list[str]) -> subprocess.CompletedProcess:
    return subprocess.run(command, capture_output=True, encoding="utf-8", timeout=120, check=False)


def load_reference() -> dict[str, list[dict]]:
    regions = sorted({r for c in COUNTRIES.values() for r in c.regions + c.also})
    command = ["node", str(HERE / "reference_holidays.mjs")]
    command += [str(YEARS[0]), str(YEARS[-1]), *regions]
    run = run_program(command)
    if run.returncode != 0:
        sys.exit(f"{run.stderr}\nThe holiday reference could not be read; run npm install in {HERE}.")
    return json.loads(run.stdout)


def plain(text: str) -> str:
    return text.replace("’", "'").casefold()


def check_shape(country: str, file: HolidayFile, findings: Findings) -> None:
    findings.expect(not file.unknown_lines,
                    f"{country}: neither rule nor comment: {file.unknown_lines}")
    findings.expect(len(file.rules) >= 6, f"{country}: only {len(file.rules)} rules")
    for comment in file.comments:
        findings.expect("," not in comment, f"{country}: a comment with a comma: {comment}")
    codes = [(r.code, r.kind) for r in file.rules]
    findings.expect(len(set(codes)) == len(codes), f"{country}: a rule stands twice")
    for rule in file.rules:
        findings.expect(
            rule.name == rule.name.strip(), f"{country}: blanks around the name {rule.name!r}"
        )


def is_listed(source: list[dict], day: str, types: set[str]) -> bool:
    return any(
        entry["date"] == day and entry["type"] in types and not entry["substitute"]
        for entry in source
    )


def check_rules(country: str, file: HolidayFile, reference: dict, findings: Findings) -> None:
    """Every rule yields a holiday of the country in every year."""
    regions, also = COUNTRIES[country].regions, COUNTRIES[country].also
    for rule in file.rules:
        types = {"public"}
        if findings.excused(OTHER_TYPE, (country, rule.name)):
            types.add(OTHER_TYPE[country, rule.name][0])
        for year in YEARS:
            day = rule.date_in(year).isoformat()
            listed = all(is_listed(reference[region], day, types) for region in regions)
            listed = listed or any(is_listed(reference[region], day, types) for region in also)
            if not listed and findings.excused(NOT_IN_SOURCE, (country, day)):
                continue
            findings.expect(listed, f"{country}: {day} {rule.name}: no holiday in the source")


def check_complete(country: str, file: HolidayFile, reference: dict, findings: Findings) -> None:
    """Every public holiday of the country is in the file or named in a comment."""
    comments = [plain(comment) for comment in file.comments if "Left out:" in comment]
    ours = {rule.date_in(year).isoformat() for rule in file.rules for year in YEARS}
    for entry in (entry for region in COUNTRIES[country].regions for entry in reference[region]):
        if entry["type"] != "public" or entry["substitute"] or entry["date"] in ours:
            continue
        if findings.excused(SUBSTITUTE_DAYS, (country, entry["date"])):
            continue
        names = [plain(name) for name in entry["names"] if name]
        named = any(name in comment for name in names for comment in comments)
        findings.expect(named, f"{country}: {entry['date']} {entry['names']} is missing")


def check_program(cli: str, file: HolidayFile, findings: Findings) -> None:
    """The program computes the same dates."""
    for year in YEARS:
        command = [cli, "holidays", str(file.path), str(year)]
        run = run_program(command)
        findings.expect(run.returncode == 0, f"{' '.join(command)}: {run.stderr.strip()}")
        expected = [f"{day.isoformat()}\t{name}" for day, name in file.dates(year)]
        findings.expect(
            run.stdout.splitlines() == expected,
            f"{file.path.name} {year}: expected {expected}, the program has {run.stdout!r}",
        )


def check_exceptions_needed(findings: Findings) -> None:
    for key in (OTHER_TYPE.keys() | NOT_IN_SOURCE.keys() | SUBSTITUTE_DAYS.keys()) - findings.used:
        findings.problems.append(f"the exception {key} is needed no more")


def main() -> int:
    folder = Path(sys.argv[1])
    names = sorted(path.name for path in folder.iterdir())
    findings = Findings()
    unmatched = set(names) ^ {f"{country}.txt" for country in COUNTRIES}
    if unmatched:
        sys.exit(f"A holiday file without a country checked here, or without its file: {unmatched}")
    findings.expect(len(names) >= MIN_COUNTRIES, f"only {len(names)} holiday files")
    reference = load_reference()
    cli = os.environ.get("ORRERY_CLI")
    for country in COUNTRIES:
        file = read_holiday_file(folder / f"{country}.txt")
        check_shape(country, file, findings)
        check_rules(country, file, reference, findings)
        check_complete(country, file, reference, findings)
        if cli:
            check_program(cli, file, findings)
    check_exceptions_needed(findings)
    for problem in findings.problems:
        print(problem)
    compared = "compared with the program" if cli else "ORRERY_CLI is not set: program not asked"
    print(f"{len(names)} files, {findings.checked} checks, {compared}")
    print(f"{len(findings.problems)} problems")
    return 1 if findings.problems else 0


if __name__ == "__main__":
    sys.exit(main())
