"""Checks the shipped holiday files.

    check_holidays.py HOLIDAY_FOLDER

- The program understands every line, and every file names its country, its law and its date.
- A reader of the three plain kinds (holiday_rules.py) finds no line that ends its reading, gives no
  day twice, and from 2027 on shows only holidays.
- The program gives the days that laws and gazettes name (places).
- From 2024 to 2030 the program's days are those of the npm package date-holidays, if it has the
  country, but for those that places lists with a reason.

ORRERY_CLI is the program.
"""

import json
import os
import subprocess
import sys
from collections import Counter
from dataclasses import dataclass
from pathlib import Path

from holiday_rules import HolidayFile, read_holiday_file
from places import DIFFERENCES, LAW_DAYS

YEARS = range(2024, 2031)
ALL_YEARS = range(2000, 2051)
PLAIN_YEARS = range(2027, 2051)
HERE = Path(__file__).resolve().parent
WORDS = ("Country", "Source", "Checked", "Public")

# What date-holidays calls the file's country; otherwise it is the "# Country:".
PLACES = {"EnglandAndWales": "GB-ENG", "NorthernIreland": "GB-NIR", "Scotland": "GB-SCT"}

# Countries that date-holidays does not have.
WITHOUT_REFERENCE = set(
    "AF BT FK FM IQ JO KG KH KI KP KW LA LB MH MM MN MO MP MV NP NR NU OM PG PS PW QA SB SY TJ TK TL TM"
    " TV WS YE".split())

# Plain rules that an older program shows on a day that is no holiday, as it does today.
PLAIN_ELSEWHERE = {
    ("Netherlands", "Koningsdag"): "a Sunday, in place of the Saturday before",
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

    def excused(self, exceptions: dict, *keys) -> bool:
        found = [key for key in keys if key in exceptions]
        self.used.update(found)
        return bool(found)


def run_program(command: list[str]) -> subprocess.CompletedProcess:
    return subprocess.run(command, capture_output=True, encoding="utf-8", timeout=240, check=False)


@dataclass(frozen=True)
class Program:
    """What the program says of a file; `days` are by region: date, then names."""

    path: str

    def run(self, *arguments: str) -> subprocess.CompletedProcess:
        command = [self.path, *arguments]
        return run_program(command)

    def days(self, file: Path, region: str = "") -> dict[str, list[str]]:
        years = f"{ALL_YEARS[0]}-{ALL_YEARS[-1]}"
        choice = ("--region", region) if region else ()
        answer = json.loads(self.run("holidays", str(file), years, "--json", *choice).stdout)
        days: dict[str, list[str]] = {}
        for year in answer["years"]:
            for day in year["holidays"]:
                days.setdefault(day["date"], []).append(day["name"])
        return days


def load_reference(files: dict[str, HolidayFile]) -> dict[str, dict[str, str]]:
    """The public days of date-holidays for each file that it covers: date, then name."""
    places = {
        name: PLACES.get(name, file.words().get("Country", "")) for name, file in files.items()
    }
    command = ["node", str(HERE / "reference_holidays.mjs"), str(YEARS[0]), str(YEARS[-1])]
    command += sorted(set(places.values()))
    run = run_program(command)
    if run.returncode != 0:
        sys.exit(f"{run.stderr}\nThe holiday reference could not be read; run npm install in {HERE}.")
    answer = json.loads(run.stdout)
    return {
        name: {e["date"]: e["names"][0] for e in answer[place] if e["type"] == "public"}
        for name, place in places.items()
        if place in answer
    }


def check_shape(name: str, file: HolidayFile, findings: Findings) -> None:
    """What an older program needs, and the words that every file has."""
    findings.expect(not file.errors, f"{name}: {file.errors}")
    for word in WORDS:
        findings.expect(bool(file.words().get(word)), f"{name}: no '# {word}:'")
    for line in file.comments + [line for line in file.passed_over if line.startswith(">")]:
        findings.expect("," not in line, f"{name}: a comma in {line}")
    for rule in file.rules:
        findings.expect(rule.name == rule.name.strip(), f"{name}: blanks around {rule.name!r}")
    rules = Counter((r.code, r.kind) for r in file.rules)
    findings.expect(not rules or max(rules.values()) == 1, f"{name}: a plain rule stands twice")
    for year in ALL_YEARS:
        days = Counter(file.dates(year))
        findings.expect(not days or max(days.values()) == 1, f"{name}: {year} has a day twice")


def check_plain_days(name: str, file: HolidayFile, days: dict, findings: Findings) -> None:
    """What an older program shows is a holiday."""
    for rule in file.rules:
        for year in PLAIN_YEARS:
            day = rule.date_in(year).isoformat()
            if day not in days and not findings.excused(PLAIN_ELSEWHERE, (name, rule.name)):
                findings.expect(False, f"{name}: {day} {rule.name}: shown by an older program only")
            findings.checked += 1


def check_reference(name: str, days: dict, reference: dict[str, str], findings: Findings) -> None:
    """The days of both are the same, but for those that are listed."""
    span = {day for day in days if int(day[:4]) in YEARS}
    for day in sorted(span ^ set(reference)):
        title = reference.get(day) or days[day][0]
        if not findings.excused(DIFFERENCES, (name, title), (name, "")):
            where = "in the source" if day in reference else "in the file"
            findings.expect(False, f"{name}: {day} {title}: only {where}")
    findings.checked += len(span)


def check_law_days(program: Program, folder: Path, findings: Findings) -> None:
    for key in sorted({key for key, *_ in LAW_DAYS}):
        name, _, region = key.partition(":")
        days = program.days(folder / f"{name}.txt", region)
        for _, day, title, source in (entry for entry in LAW_DAYS if entry[0] == key):
            names = days.get(day, [])
            holds = not names
            if title:
                begin = title.removesuffix("...")
                holds = any(n == title or (begin != title and n.startswith(begin)) for n in names)
            findings.expect(holds, f"{key}: {day}: expected {title} by {source}, not {names}")


def check_exceptions_needed(findings: Findings) -> None:
    for key in (DIFFERENCES.keys() | PLAIN_ELSEWHERE.keys()) - findings.used:
        findings.problems.append(f"the exception {key} is needed no more")


def main() -> int:
    folder = Path(sys.argv[1])
    program = Program(os.environ["ORRERY_CLI"])
    findings = Findings()
    files = {path.stem: read_holiday_file(path) for path in sorted(folder.iterdir())}
    findings.expect(len(files) >= 30, f"only {len(files)} holiday files")
    reference = load_reference(files)
    for name, file in files.items():
        check = program.run("check", str(file.path))
        findings.expect(check.returncode == 0, f"{name}: {check.stdout}{check.stderr}")
        days = program.days(file.path)
        check_shape(name, file, findings)
        check_plain_days(name, file, days, findings)
        if file.words().get("Country") not in WITHOUT_REFERENCE:
            check_reference(name, days, reference.get(name, {}), findings)
    check_law_days(program, folder, findings)
    check_exceptions_needed(findings)
    for problem in findings.problems:
        print(problem)
    print(f"{len(files)} files, {findings.checked} checks, {len(findings.problems)} problems")
    return 1 if findings.problems else 0


if __name__ == "__main__":
    sys.exit(main())
