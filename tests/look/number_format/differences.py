"""The reviewed differences between our texts and those of other programs, each with its reason.

What Excel does is told by Microsoft's page "Number format codes", by ECMA-376 18.8.31, and for details by
SheetJS's SSF, which was compared with Excel."""

import re
from dataclasses import dataclass
from typing import Callable


@dataclass(frozen=True)
class Difference:
    """A kind of difference. `holds` takes the code, the value, our text and the other one."""

    reason: str
    holds: Callable[[str, object, str, str], bool]


def _unquoted(code):
    return re.sub(r'"[^"]*"|\\.', "", code)


def _is_date(code):
    plain = re.sub(r"\[[^hms][^]]*\]|general", "", _unquoted(code).lower())
    return re.search(r"[ymdhs]", plain) is not None


def _has_language(*languages):
    pattern = re.compile(r"\[\$[^]]*-(?:" + "|".join(languages) + r")\]")
    return lambda code, value, ours, other: pattern.search(code) is not None


def _is(*codes):
    return lambda code, value, ours, other: code in codes


def _is_fraction(code):
    return re.search(r"[0#?]/[0#?1-9]", _unquoted(code)) is not None


def _value_of(text):
    """The number that a fraction's text stands for."""
    pieces = re.findall(r"(\d+)(?:\s*/\s*(\d+))?", text)
    return sum(int(above) / int(below or 1) for above, below in pieces if below != "0")


def _is_other_fraction(code, value, ours, other):
    """Both show a fraction close to the value, ours a convergent."""
    if not _is_fraction(code) or "/" not in ours + other:
        return False
    return all(abs(_value_of(text) - abs(value)) <= 0.07 for text in (ours, other))


def _fraction_is_ours(code, value, ours, other):
    """Ours is the nearest; theirs is off, or a whole number written as a fraction."""
    if not _is_fraction(code) or not isinstance(value, (int, float)):
        return False
    is_near = abs(_value_of(ours) - abs(value)) <= 0.26
    return is_near and (abs(_value_of(other) - abs(value)) > 0.26
                        or re.search(r"\b(\d+)/\1\b", other) is not None
                        or value < 0.1)


def _drops_sign(code, value, ours, other):
    return "[" in code and isinstance(value, (int, float)) and value < 0 and ours == "-" + other


def _floors_time(code, value, ours, other):
    return "s" in _unquoted(code).lower() and isinstance(value, float) and value * 86400 % 1 >= 0.5


def _halves_a_place(code, value, ours, other):
    """The value is just between two multiples of a fixed denominator."""
    fixed = re.search(r"/([1-9]\d*)", code)
    return fixed is not None and abs(value) * int(fixed[1]) % 1 == 0.5


def _lacks_point(code, value, ours, other):
    return re.sub(r"\.(?!\d)", "", ours) == other


def _is_long_general(code, value, ours, other):
    return "general" in code.lower() and isinstance(value, (int, float)) and abs(value) >= 1e11


BOTH = [
    Difference('"0,.0": a comma behind a digit scales, Microsoft says; numfmt has no such commas before '
               "the point, LibreOffice shows the number as General", _is("0,.0")),
    Difference('"[$-FC19]" is how Excel stores Russian dates with inflected months; the others do not '
               "know it and speak English", _has_language("FC19")),
    Difference("Excel fills a cell with # for a date before its calendar; the others' calendars begin "
               "earlier", lambda code, value, ours, other: value < 0 and _is_date(code) and set(ours) == {"#"}),
]

NUMFMT = [
    Difference('numfmt refuses "e+"; Excel reads it as "E+"',
               lambda code, value, ours, other: other is None and "e+" in code),
    Difference("numfmt takes the decimal signs of a currency's country; Excel those of the system",
               lambda code, value, ours, other: "[$" in code and ours.translate(
                   str.maketrans(".,", ",.")) == other.replace("\u00a0", ".")),
    Difference('"0.#0": a place before a zero shows its digit (SSF)', _is("0.#0")),
    Difference("numfmt has no other numerals: [$-3000401]", _has_language("3000401")),
    Difference("numfmt has no eras: [$-404]e, [$-411]g", _has_language("404", "411")),
    Difference('numfmt writes no numbers in ideographs ("[DBNum1]")',
               lambda code, value, ours, other: "[DBNum" in code),
    Difference("numfmt has no genitive names of months; Windows, whose names Excel shows, has them in these "
               "languages", _has_language("405", "415", "419", "41B", "422")),
    Difference("numfmt does not know these languages and speaks English", _has_language("C0A", "425")),
    Difference("Windows keeps the points of French abbreviations", _has_language("40C")),
    Difference('numfmt does not know "a/p" in small letters', _is("h a/p")),
    Difference('"00" of a denominator is padded with zeros before its digits, as in a numerator',
               _is("# 00/00")),
    Difference("Zero with an exponent is one digit: 0.0E+0 (SSF)",
               lambda code, value, ours, other: value == 0 and "E" in code),
    Difference("numfmt writes a fraction that rounds to 1 as 1/1, and loses the whole of an improper one",
               _fraction_is_ours),
    Difference('numfmt does not group digits in "# ##,000"',
               lambda code, value, ours, other: "##,000" in code and ours.replace(",", "") == other),
]

OFFICE = [
    Difference("LibreOffice counts days before March 1900 from 1899-12-30; Excel has 1900-02-29 and 1900-01-00 "
               "(ECMA-376 18.17.4.1)",
               lambda code, value, ours, other: _is_date(code) and isinstance(value, (int, float))
               and 0 <= value < 61),
    Difference("General shows at most 11 characters in Excel", _is_long_general),
    Difference("Excel approximates fractions with convergents (SSF); LibreOffice finds the nearest",
               _is_other_fraction),
    Difference("LibreOffice drops the sign in a section behind a condition, whatever it tests", _drops_sign),
    Difference("Excel shows the point of a format even if no digit follows", _lacks_point),
    Difference("Excel rounds to the seconds that it shows, within the 15 digits that it keeps; LibreOffice cuts "
               "them off", _floors_time),
    Difference("Excel rounds 15 decimal digits; LibreOffice multiplies by 100 in binary first",
               lambda code, value, ours, other: "%" in code and value == 1.005),
    Difference("A single section without digits keeps the minus sign", _is('"x"')),
    Difference("LibreOffice has no fraction of so large a number",
               lambda code, value, ours, other: other == "#FMT"),
    Difference('LibreOffice writes "e+" and "A/P" in small letters',
               lambda code, value, ours, other: ours == other.upper() and ours != other),
    Difference("LibreOffice has no mantissa without digits before its point", _is(".0E+0", ".00E+00")),
    Difference('"#,#" groups digits: its comma stands between places', _is("#,#")),
    Difference("LibreOffice does not know these codes: it shows the number or the letters",
               _is("[ss].00", "yyy", "y", "bbbb", "bb")),
    Difference('"e" without a language is the year; LibreOffice counts from the years of its own calendar',
               _is("e")),
    Difference("The room of a fraction with a fixed denominator is that of its places and digits (SSF)",
               lambda code, value, ours, other: re.search(r"/[1-9]", code) is not None
               and ours.rstrip() == other.rstrip()),
    Difference("Excel rounds to a fixed denominator half away from zero (SSF)", _halves_a_place),
    Difference("LibreOffice capitalises Slovak days; Windows does not", _has_language("41B")),
    Difference("LibreOffice does not know language tags",
               lambda code, value, ours, other: re.match(r"\[\$-(en-|x-)", code) is not None),
    Difference('The long time of Windows is "h:mm:ss AM/PM" in the United States',
               lambda code, value, ours, other: "[$-F400]" in code and other == "0" + ours),
    Difference('LibreOffice takes "00.0" for a format with thousands; it has no comma',
               lambda code, value, ours, other: "," not in code and ours == other.replace(",", "")),
    Difference("Numerals 03 are the extended Arabic-Indic ones", _has_language("3000401")),
    Difference("Before 1912 there are no years of the Republic; LibreOffice counts them backwards",
               lambda code, value, ours, other: "[$-404]" in code and value < 4383),
]
