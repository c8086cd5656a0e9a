"""Checks that the index of countries fits the holiday files, and its names against ICU.

    check_countries.py DATA_FOLDER
"""

import sys
from pathlib import Path

import icu

COLUMNS = 7
PARTS = {"GB"}  # three files for one code, named for themselves

problems: list[str] = []


def expect(holds: bool, problem: str) -> None:
    if not holds:
        problems.append(problem)


def word(lines: list[str], name: str) -> str:
    return next((line.split(":", 1)[1].strip() for line in lines if line.startswith(f"# {name}:")), "")


def country_name(code: str, language: str) -> str:
    return icu.Locale("", code).getDisplayCountry(icu.Locale(language))


def check_row(row: list[str], path: Path) -> None:
    _, code, name, own, others, languages, regions = row
    lines = path.read_text(encoding="utf-8").splitlines()
    expect(lines[0].startswith(f"# {name}:"), f"{path.name}: {name} but {lines[0]}")
    expect(code == word(lines, "Country"), f"{path.name}: {code} is not the file's code")
    expect(regions == word(lines, "Regions"), f"{path.name}: other regions than the file's")
    first = word(lines, "Language")
    expect(not first or languages.split()[0] == first, f"{path.name}: {languages} begin otherwise")
    if code in PARTS:
        return
    english = country_name(code, "en")
    expect(english in (name, *others.split("|")), f"{path.name}: is not found as {english}")
    local = country_name(code, first) if first not in ("", "en") else code
    if local not in (code, english) and not first.startswith("zh"):
        expect(local in own.split("|"), f"{path.name}: is not found as {local}, but as {own}")


def main() -> int:
    folder = Path(sys.argv[1])
    lines = (folder / "countries.tsv").read_text(encoding="utf-8").splitlines()
    rows = [line.split("\t") for line in lines if not line.startswith("#")]
    files = sorted(path.name for path in (folder / "holiday").glob("*.txt"))
    expect(sorted(row[0] for row in rows) == files, "the index has other files than the folder")
    for row in rows:
        expect(len(row) == COLUMNS, f"{row[0]}: {len(row)} columns")
        if len(row) == COLUMNS and row[0] in files:
            check_row(row, folder / "holiday" / row[0])
    for problem in problems:
        print(problem)
    print(f"{len(rows)} countries, {len(problems)} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
