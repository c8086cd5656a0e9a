#!/usr/bin/env python3
"""Writes data/languages.ini: the names of months and weekdays in many languages.

They come from the Unicode CLDR (Debian's unicode-cldr-core), in the forms that stand alone.

    make_language_names.py > data/languages.ini
"""

import sys
import xml.etree.ElementTree as ET
from pathlib import Path

CLDR = Path("/usr/share/unicode/cldr/common")
LANGUAGES = """
    af am ar as az be bg bn br bs ca cs cy da de el en eo es et eu fa fi fil fo fr fy ga gd gl gu
    ha he hi hr hu hy id ig is it ja jv ka kk km kn ko ky lb lo lt lv mi mk ml mn mr ms mt my nb ne
    nl nn or pa pl ps pt rm ro ru sd se si sk sl so sq sr sr_Latn sv sw ta te tg th tk tr tt uk ur
    uz vi xh yo zh zh_Hant zu
""".split()
# What the lists of the settings file call a language, where that is not its name in the CLDR.
TITLES = {"nb": "Norsk", "nn": "Norsk nynorsk", "zh": "中文", "zh_Hant": "繁體中文",
          "sr_Latn": "Srpski"}
DAYS = ["sun", "mon", "tue", "wed", "thu", "fri", "sat"]
INHERITED = "↑↑↑"
PARENTS = {"nb": "no", "nn": "no", "zh_Hant": "root", "sr_Latn": "root"}  # not the name before "_"
# Where a form is looked for that a language does not have, by the aliases of the root.
FALLBACKS = {
    ("stand-alone", "wide"): ("format", "wide"),
    ("stand-alone", "abbreviated"): ("format", "abbreviated"),
    ("format", "abbreviated"): ("format", "wide"),
    ("stand-alone", "narrow"): ("format", "narrow"),
}
HEAD = """\
; Names of months and weekdays, offered in the parameter dialog behind the lists of orrery.ini.
; Written by scripts/make_language_names.py from the Unicode CLDR {version}, in the forms that stand
; alone. A list of weekdays begins with Sunday.
"""


def read(language: str) -> ET.Element | None:
    path = CLDR / "main" / f"{language}.xml"
    return ET.parse(path).getroot() if path.exists() else None


def parents(language: str):
    """A language and those whose data it inherits, but for the root."""
    while language != "root":
        tree = read(language)
        if tree is not None:
            yield tree
        language = PARENTS.get(language) or (language.rpartition("_")[0] or "root")


def name_of(tree: ET.Element, unit: str, form: tuple[str, str], key: str) -> str | None:
    context, width = form
    found = tree.find(f"dates/calendars/calendar[@type='gregorian']/{unit}s"
                      f"/{unit}Context[@type='{context}']/{unit}Width[@type='{width}']"
                      f"/{unit}[@type='{key}']")
    return None if found is None or found.text == INHERITED else found.text


def names(language: str, unit: str, keys: list[str], width: str) -> list[str] | None:
    trees = list(parents(language))
    result = []
    for key in keys:
        form = ("stand-alone", width)
        while form:
            name = next(filter(None, (name_of(tree, unit, form, key) for tree in trees)), None)
            if name:
                break
            form = FALLBACKS.get(form)
        result.append(name)
    return result if all(result) else None


def title_of(language: str) -> str:
    if language in TITLES:
        return TITLES[language]
    for tree in parents(language):
        found = tree.find(f"localeDisplayNames/languages/language[@type='{language}']")
        if found is not None and found.text != INHERITED:
            name = found.text
            # Georgian has no capitals in texts; "isiZulu" has its own.
            is_plain = name.islower() and not "ა" <= name[0] <= "ჿ"
            return name[0].upper() + name[1:] if is_plain else name
    raise SystemExit(f"The CLDR has no name for {language} in itself.")


def section(title: str, language: str) -> list[str]:
    lines = [f"[{title}]"]
    months = [str(month) for month in range(1, 13)]
    for word, unit, keys in (("Months", "month", months), ("Weekdays", "day", DAYS)):
        before = None
        for width, suffix in (("wide", ""), ("abbreviated", "Short"), ("narrow", "Narrow")):
            found = names(language, unit, keys, width)
            if found is None:
                print(f"{language}: no {width} names of {word}", file=sys.stderr)
            elif any("," in name for name in found):
                raise SystemExit(f"{language}: a comma in {found}")
            elif found != before:
                lines.append(f"{word}{suffix}={','.join(name.strip() for name in found)}")
                before = found
    return lines


def main() -> None:
    dtd = (CLDR / "dtd/ldml.dtd").read_text(encoding="utf-8")
    cldr = dtd.split('cldrVersion CDATA #FIXED "')[1].split('"')[0]
    titled = sorted((title_of(language), language) for language in LANGUAGES)
    print(HEAD.format(version=cldr), end="")
    for title, language in titled:
        print("\n" + "\n".join(section(title, language)))


if __name__ == "__main__":
    main()
