#!/usr/bin/env python3
"""Writes data/countries.tsv: by which names the countries of the holiday files are found.

Languages and regions are those of the files; names come from the Unicode CLDR (Debian's unicode-cldr-core).

    make_country_index.py > data/countries.tsv
"""

import re
import xml.etree.ElementTree as ET
from functools import cache
from pathlib import Path

HOLIDAYS = Path(__file__).parents[1] / "data/holiday"
CLDR = Path("/usr/share/unicode/cldr/common/main")
SCRIPTS = {"zh": {"HK": "zh_Hant", "MO": "zh_Hant", "TW": "zh_Hant"}}  # Chinese is written in two
PARENTS = {"nb": "no", "nn": "no"}
INHERITED = "↑↑↑"
OWN_NAMES = {"IE": "Éire", "ME": "Crna Gora", "MV": "ދިވެހިރާއްޖެ", "NZ": "Aotearoa", "WS": "Sāmoa",
             "ZA": "Suid-Afrika"}  # not in the CLDR, or of a language without names of holidays
HEAD = """\
# By which names the countries of the holiday files are found. Written by scripts/make_country_index.py.
# file\tcode\tEnglish name\tnames in its own languages\tother English names\tlanguages\tregions
"""


@cache
def territories(language: str) -> dict[tuple[str, str], str]:
    """The names of territories in a language, by code and by variant."""
    path = CLDR / f"{language}.xml"
    if not path.exists():
        return {}
    found = ET.parse(path).getroot().iterfind("localeDisplayNames/territories/territory")
    own = {(each.get("type"), each.get("alt", "")): each.text for each in found
           if each.text != INHERITED}
    return territories(PARENTS[language]) | own if language in PARENTS else own


def words(lines: list[str], word: str) -> list[str]:
    return [line.partition(":")[2].strip() for line in lines if line.startswith(f"# {word}:")]


def languages_of(lines: list[str]) -> list[str]:
    """The file's own language, then those in which its rules have names, but for English."""
    named = re.findall(r"(?:^>+ |; )name (\w+) ", "\n".join(lines), re.MULTILINE)
    return list(dict.fromkeys([*words(lines, "Language"), *named]))


def row(path: Path) -> str:
    lines = path.read_text(encoding="utf-8").splitlines()
    name = lines[0].removeprefix("# ").partition(":")[0]
    code = words(lines, "Country")[0]
    languages = languages_of(lines)
    parts = code == "GB"  # three files for one code
    own = [territories(SCRIPTS.get(each, {}).get(code, each)).get((code, "")) for each in languages
           if each != "en" and not parts]
    own.append(OWN_NAMES.get(code))
    english = [text for (of, _), text in territories("en").items() if of == code]
    others = [each for each in dict.fromkeys(english) if each != name]
    return "\t".join([path.name, code, name, "|".join(dict.fromkeys(filter(None, own))),
                      "|".join(others), " ".join(languages), "".join(words(lines, "Regions"))])


def main() -> None:
    print(HEAD, end="")
    for path in sorted(HOLIDAYS.glob("*.txt")):
        print(row(path))


if __name__ == "__main__":
    main()
