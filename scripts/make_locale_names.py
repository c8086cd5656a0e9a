#!/usr/bin/env python3
"""Writes src/look/number_format/locale_table.cpp: how languages write dates, for number formats.

The names come from ICU (python3-icu). Windows, whose names Excel shows, abbreviates without points
in most languages and capitalises some names; OVERRIDES holds what differs otherwise.

    make_locale_names.py > src/look/number_format/locale_table.cpp
"""

import re

import icu

# Windows' identifiers, [MS-LCID] 2.2. The first of a language stands for its other countries.
LANGUAGES = {
    0x0401: "ar-SA", 0x0402: "bg-BG", 0x0403: "ca-ES", 0x0404: "zh-TW", 0x0405: "cs-CZ",
    0x0406: "da-DK", 0x0407: "de-DE", 0x0408: "el-GR", 0x0409: "en-US", 0x040A: "es-ES",
    0x040B: "fi-FI", 0x040C: "fr-FR", 0x040D: "he-IL", 0x040E: "hu-HU", 0x040F: "is-IS",
    0x0410: "it-IT", 0x0411: "ja-JP", 0x0412: "ko-KR", 0x0413: "nl-NL", 0x0414: "nb-NO",
    0x0415: "pl-PL", 0x0416: "pt-BR", 0x0418: "ro-RO", 0x0419: "ru-RU", 0x041A: "hr-HR",
    0x041B: "sk-SK", 0x041C: "sq-AL", 0x041D: "sv-SE", 0x041E: "th-TH", 0x041F: "tr-TR",
    0x0421: "id-ID", 0x0422: "uk-UA", 0x0423: "be-BY", 0x0424: "sl-SI", 0x0425: "et-EE",
    0x0426: "lv-LV", 0x0427: "lt-LT", 0x0429: "fa-IR", 0x042A: "vi-VN", 0x042D: "eu-ES",
    0x042F: "mk-MK", 0x0436: "af-ZA", 0x0437: "ka-GE", 0x0439: "hi-IN", 0x043E: "ms-MY",
    0x0456: "gl-ES", 0x0804: "zh-CN", 0x0807: "de-CH", 0x0809: "en-GB",
    0x080A: "es-MX", 0x0814: "nn-NO", 0x0816: "pt-PT", 0x081A: "sr-Latn-CS", 0x0C04: "zh-HK",
    0x0C07: "de-AT", 0x0C09: "en-AU", 0x0C0A: "es-ES", 0x0C0C: "fr-CA", 0x0C1A: "sr-Cyrl-CS",
    0x1009: "en-CA",
}
WITH_POINTS = {"fr", "ca", "th"}  # Windows keeps the point of an abbreviation
CAPITALS = {("ru", "months"), ("ru", "shortDays"), ("uk", "shortDays")}
STANDING_ALONE = {"fi"}  # days are not inflected
NO_GENITIVE = {"ca"}  # "1 gener", although it is spoken "1 de gener"
ONLY_GENITIVE = {"el"}
ENGLISH_HALVES_OF_DAY = {"af", "en", "es", "fr", "mk", "ms", "nl", "pt", "sq", "th"}
CHINESE_MONTHS = "一月 二月 三月 四月 五月 六月 七月 八月 九月 十月 十一月 十二月".split()
ENGLISH_MONTHS = "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec".split()
SPANISH_MONTHS = "ene feb mar abr may jun jul ago sep oct nov dic".split()
OVERRIDES = {
    ("bg-BG", "shortMonths"): "яну фев мар апр май юни юли авг сеп окт ное дек".split(),
    ("cs-CZ", "shortMonths"): "I II III IV V VI VII VIII IX X XI XII".split(),
    ("da-DK", "shortDays"): "sø ma ti on to fr lø".split(),
    ("de-DE", "shortMonths"): "Jan Feb Mrz Apr Mai Jun Jul Aug Sep Okt Nov Dez".split(),
    ("el-GR", "shortDays"): "Κυρ Δευ Τρι Τετ Πεμ Παρ Σαβ".split(),
    ("el-GR", "shortMonths"): "Ιαν Φεβ Μαρ Απρ Μαϊ Ιουν Ιουλ Αυγ Σεπ Οκτ Νοε Δεκ".split(),
    ("en-AU", "shortMonths"): ENGLISH_MONTHS,
    ("en-CA", "shortMonths"): ENGLISH_MONTHS,
    ("en-GB", "shortMonths"): ENGLISH_MONTHS,
    ("es-ES", "shortMonths"): SPANISH_MONTHS,
    ("es-MX", "shortMonths"): SPANISH_MONTHS,
    ("he-IL", "days"): "יום ראשון,יום שני,יום שלישי,יום רביעי,יום חמישי,יום שישי,שבת".split(","),
    ("hi-IN", "shortDays"): "रवि. सोम. मंगल. बुध. गुरु. शुक्र. शनि.".split(),
    ("pt-PT", "shortDays"): "dom seg ter qua qui sex sáb".split(),
    ("ru-RU", "shortMonths"): "янв фев мар апр май июн июл авг сен окт ноя дек".split(),
    ("sv-SE", "shortMonths"): "jan feb mar apr maj jun jul aug sep okt nov dec".split(),
    ("th-TH", "days"): "อาทิตย์ จันทร์ อังคาร พุธ พฤหัสบดี ศุกร์ เสาร์".split(),
} | {(tag, field): CHINESE_MONTHS for tag in ("zh-TW", "zh-HK")
     for field in ("months", "shortMonths", "monthsOfDate")}
HEAD = """\
// Written by scripts/make_locale_names.py from the data of ICU {version}.

#include "look/number_format/locale_table.h"

#include <array>

namespace orrery::look {{
namespace {{

// clang-format off
constexpr std::array<LocaleEntry, {count}> kLocales{{{{
"""
MIDDLE = """\
}};

constexpr std::string_view kTexts =
"""
TAIL = """\
// clang-format on

} // namespace

std::span<const LocaleEntry> Locales()
{
    return kLocales;
}

std::string_view LocaleTexts()
{
    return kTexts;
}

} // namespace orrery::look
"""


def date_code(pattern):
    """A pattern of ICU as a number format code."""
    pieces = []
    for match in re.finditer(r"'([^']*)'|(([A-Za-z])\3*)|([^A-Za-z']+)", pattern):
        quoted, letters, _, other = match.groups()
        if quoted:
            pieces.append(f'"{quoted}"')
        elif letters:
            kind = letters[0]
            pieces.append({"E": "dddd", "c": "dddd", "y": "yyyy", "a": "AM/PM", "B": "AM/PM", "G": ""}.get(
                kind, letters.replace("L", "M").lower()))
        else:
            pieces.append(re.sub("[\u202f\u00a0]", " ", re.sub("[\u200e\u200f]", "", other)))
    return "".join(pieces).strip()


def names(tag):
    locale = icu.Locale.forLanguageTag(tag)
    locale = icu.Locale(locale.getName() + "@calendar=gregorian")
    symbols = icu.DateFormatSymbols(locale)
    kind = icu.DateFormatSymbols
    found = {
        "halvesOfDay": symbols.getAmPmStrings(),
        "days": symbols.getWeekdays(kind.FORMAT, kind.WIDE)[1:],
        "shortDays": symbols.getWeekdays(kind.FORMAT, kind.ABBREVIATED)[1:],
        "months": symbols.getMonths(kind.STANDALONE, kind.WIDE)[:12],
        "shortMonths": symbols.getMonths(kind.STANDALONE, kind.ABBREVIATED)[:12],
        "monthsOfDate": symbols.getMonths(kind.FORMAT, kind.WIDE)[:12],
    }
    language = tag[:2]
    if language in STANDING_ALONE:
        found["days"] = symbols.getWeekdays(kind.STANDALONE, kind.WIDE)[1:]
    if language in NO_GENITIVE:
        found["monthsOfDate"] = found["months"]
    if language in ONLY_GENITIVE:
        found["months"] = found["monthsOfDate"]
    if language in ENGLISH_HALVES_OF_DAY:
        found["halvesOfDay"] = ["AM", "PM"]
    for field, words in found.items():
        words = [word.replace("\u02bc", "'") for word in words]
        if field.startswith("short") and language not in WITH_POINTS:
            words = [word.rstrip(".׳") for word in words]
        if (language, field) in CAPITALS:
            words = [word.capitalize() for word in words]
        found[field] = OVERRIDES.get((tag, field), words)
    formats = icu.DateFormat
    found["longDate"] = date_code(formats.createDateInstance(formats.FULL, locale).toPattern())
    found["longTime"] = date_code(formats.createTimeInstance(formats.MEDIUM, locale).toPattern())
    return found


def texts(tag):
    """In the order of LocaleLine, in groups that stand on a line each."""
    found = names(tag)
    return [[found["longDate"], found["longTime"]]] + [
        found[field]
        for field in ("halvesOfDay", "days", "shortDays", "months", "shortMonths", "monthsOfDate")]


def literal(words):
    text = "".join(word.replace("\\", "\\\\").replace('"', '\\"') + "\\n" for word in words)
    return f'    "{text}"'


def main():
    entries, lines, begin = [], [], 0
    for language, tag in sorted(LANGUAGES.items()):
        entries.append(f'    {{0x{language:04X}, "{tag}", {begin}}},')
        lines.append(f"    // {tag}")
        for words in texts(tag):
            lines.append(literal(words))
            begin += sum(len(word.encode()) + 1 for word in words)
    head = HEAD.format(version=icu.ICU_VERSION, count=len(LANGUAGES))
    print(head + "\n".join(entries) + "\n" + MIDDLE + "\n".join(lines) + ";\n" + TAIL, end="")


if __name__ == "__main__":
    main()
