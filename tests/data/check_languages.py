"""Checks the shipped names of months and weekdays of many languages.

    check_languages.py DATA_FOLDER

They are compared with the Unicode locale data that ICU carries, another edition, read by ICU's own code.
"""

import re
import sys
from pathlib import Path

import icu

MIN_LANGUAGES = 60
MONTHS, DAYS = 12, 7
# Languages whose title is not their name in ICU, and those that ICU names only with their script.
LOCALES = {"Norsk": "nb", "Norsk nynorsk": "nn", "中文": "zh_Hans", "繁體中文": "zh_Hant",
           "Srpski": "sr_Latn", "te reo Māori": "mi"}
# What the two editions of the locale data have otherwise; in Māori one has the old names, the other English ones.
DIFFERENT = {
    ("Dansk", "WeekdaysShort"), ("Eesti", "Weekdays"), ("Esperanto", "MonthsNarrow"),
    ("Esperanto", "WeekdaysNarrow"), ("Nederlands", "MonthsShort"), ("Soomaali", "Months"),
    ("isiXhosa", "WeekdaysNarrow"), ("বাংলা", "MonthsShort"),
} | {("te reo Māori", unit + width) for unit in ("Months", "Weekdays") for width in ("", "Short", "Narrow")}
# fmt: skip

problems: list[str] = []


def expect(holds: bool, problem: str) -> None:
    if not holds:
        problems.append(problem)


def read(path: Path) -> dict[str, dict[str, list[str]]]:
    sections: dict[str, dict[str, list[str]]] = {}
    for line in path.read_text(encoding="utf-8").splitlines():
        if match := re.fullmatch(r"\[(.+)\]", line):
            expect(match[1] not in sections, f"[{match[1]}] stands twice")
            lists = sections.setdefault(match[1], {})
        elif line and not line.startswith(";"):
            key, names = line.split("=")
            expect(key not in lists, f"{key} stands twice")
            lists[key] = names.split(",")
    return sections


def locales_by_name() -> dict[str, icu.Locale]:
    names = {}
    for code, locale in icu.Locale.getAvailableLocales().items():
        if "_" not in code:
            names.setdefault(locale.getDisplayLanguage(locale).casefold(), locale)
    return names | {title.casefold(): icu.Locale(code) for title, code in LOCALES.items()}


def icu_lists(locale: icu.Locale) -> dict[str, list[str]]:
    symbols = icu.DateFormatSymbols(locale)
    lists = {}
    for suffix, width in (("", symbols.WIDE), ("Short", symbols.ABBREVIATED), ("Narrow", symbols.NARROW)):
        lists["Months" + suffix] = list(symbols.getMonths(symbols.STANDALONE, width))
        lists["Weekdays" + suffix] = list(symbols.getWeekdays(symbols.STANDALONE, width))[1:]
    return lists


def check_language(title: str, lists: dict[str, list[str]], locale: icu.Locale) -> None:
    expected = icu_lists(locale)
    for key, names in lists.items():
        expect(len(names) == (MONTHS if key.startswith("Months") else DAYS), f"[{title}] {key}: {len(names)} names")
        expect(all(name and name == name.strip() for name in names), f"[{title}] {key}: a blank name")
        is_same = names == expected[key]
        if (title, key) in DIFFERENT:
            expect(not is_same, f"[{title}] {key} is not different any more")
        else:
            expect(is_same, f"[{title}] {key}: {names} but ICU has {expected[key]}")
    for unit in ("Months", "Weekdays"):
        expect(unit in lists, f"[{title}] no {unit}")
        # A width that is missing is the one before it.
        short = lists.get(unit + "Short", lists.get(unit))
        if (title, unit + "Short") not in DIFFERENT:
            expect(short == expected[unit + "Short"], f"[{title}] short {unit}: ICU has {expected[unit + 'Short']}")
    for name in lists.get("Months", []):
        expect(len(name) <= 31 and not re.search(r"[:\\/?*\[\]]", name), f"[{title}] {name!r} is no sheet's name")


def main() -> int:
    languages = read(Path(sys.argv[1]) / "languages.ini")
    expect(len(languages) >= MIN_LANGUAGES, f"{len(languages)} languages")
    known = locales_by_name()
    for title, lists in languages.items():
        locale = known.get(title.casefold())
        if locale is None:
            problems.append(f"[{title}] is no language's name in ICU")
        else:
            check_language(title, lists, locale)
    for problem in problems:
        print(problem)
    print(f"{len(languages)} languages, {len(problems)} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
