"""Checks the shipped settings file and the shipped tips.

    check_settings.py DATA_FOLDER

The names of months and weekdays are compared with the Unicode locale data that ICU carries.
"""

import calendar
import re
import sys
from configparser import RawConfigParser
from pathlib import Path

import icu

MAX_VALUE_LENGTH = 10240
MAX_LISTS = 100
MIN_LISTS = 10
TIPS = 20
# A month spans up to six weeks.
GRID_WEEKS, GRID_DAYS, MONTHS = 6, 7, 12

# The locale of each pair of lists, in file order; None for our own lists.
LOCALES = [
    "en:long", "en:short", "de:long", "de:short", "fr:long", "fr:short", "es:long", "it:long",
    "it:short", "pt:long", "pt:short", "nl:long", "sv:long", "nb:long", "da:long", "fi:long",
    "is:long", "pl:long", "cs:long", "sk:long", "sl:long", "hr:long", "hu:long", "ro:long",
    "el:long", "tr:long", "ru:long", "uk:long", "ga:long", "ca:long", "ja:long", "zh_Hans:long",
    "ko:long", None, None, None,
]  # fmt: skip

MONTHLY_KEYS = (
    "Output SheetName FirstDayOfWeek FirstCellOfDay ColIntervalOfDay RowIntervalOfDay OutWeekday "
    "FirstCellOfWeekday WeekdayName OutMonth FirstCellOfMonth MonthName OutYear FirstCellOfYear "
    "OutHoliday FirstCellOfHoliday MultiHolidays HolidayFile"
).split()
YEARLY_KEYS = MONTHLY_KEYS + ["MonthLayout", "ColIntervalOfMonth", "RowIntervalOfMonth"]
RANGES = {
    "ColIntervalOfDay": range(1, 37),
    "RowIntervalOfDay": range(1, 10001),
    "MultiHolidays": range(0, 3),
    "MonthLayout": (1, 2, 3, 4, 6, 12),
    "ColIntervalOfMonth": range(1, 257),
    "RowIntervalOfMonth": range(1, 10001),
}

problems: list[str] = []


def expect(holds: bool, problem: str) -> None:
    if not holds:
        problems.append(problem)


def read_settings(path: Path) -> RawConfigParser:
    settings = RawConfigParser(comment_prefixes=(";",), delimiters=("=",), strict=True)
    settings.optionxform = str
    settings.read_string(path.read_text(encoding="utf-8"), str(path))
    return settings


def read_lists(settings: RawConfigParser, section: str, names_in_list: int) -> list[list[str]]:
    keys = [key for key in settings[section] if key != "Count"]
    count = settings.getint(section, "Count")
    expect(MIN_LISTS <= count <= MAX_LISTS, f"[{section}] Count={count}")
    expected = [f"{i}{word}" for i in range(1, count + 1) for word in ("Language", "Name")]
    expect(keys == expected, f"[{section}] Count={count} does not match the keys {keys}")
    keys = [key for key in keys if key.endswith("Name")]
    lists = [settings[section][key].split(",") for key in keys]
    for key, names in zip(keys, lists):
        expect(len(names) == names_in_list, f"[{section}] {key} has {len(names)} names")
        trimmed = all(name and name == name.strip() for name in names)
        expect(trimmed, f"[{section}] {key} has an empty name or blanks around one")
    return lists


def read_titles(settings: RawConfigParser, section: str) -> list[str]:
    titles = [value for key, value in settings[section].items() if key.endswith("Language")]
    expect(len(set(titles)) == len(titles), f"[{section}] two lists have the same title")
    return titles


def check_titles(titles: list[str], section: str) -> None:
    """A title begins with what the language calls itself."""
    for title, locale in zip(titles, LOCALES):
        if locale is None:
            continue
        language, width = locale.split(":")
        own = icu.Locale(language).getDisplayLanguage(icu.Locale(language))
        name, _, rest = title.partition(", ")
        expect(own.casefold().startswith(name.casefold()), f"[{section}] {title} but {own}")
        expect(rest == ("short" if width == "short" else ""), f"[{section}] {title} is {width}")


def is_sheet_name(name: str) -> bool:
    length = len(name.encode("utf-16-le")) // 2
    return (
        1 <= length <= 31
        and not re.search(r"[:\\/?*\[\]\x00-\x1f]", name)
        and not name.startswith("'")
        and not name.endswith("'")
        and name.casefold() != "history"
    )


def check_month_names(lists: list[list[str]]) -> None:
    # Weekday lists may be equal, such as Norwegian and Danish.
    expect(len({tuple(names) for names in lists}) == len(lists), "[MonthName] two equal lists")
    for names in lists:
        for name in names:
            expect(is_sheet_name(name), f"[MonthName] {name!r} cannot be the name of a sheet")
        distinct = {name.casefold() for name in names}
        expect(len(distinct) == MONTHS, f"[MonthName] two names of {names} are alike")


def check_languages(months: list[list[str]], weekdays: list[list[str]]) -> None:
    expect(len(months) == len(weekdays) == len(LOCALES), "the lists and the locales differ")
    expect(months[0] == list(calendar.month_name)[1:], f"first months: {months[0]}")
    english = list(calendar.day_name)
    expect(weekdays[0] == english[-1:] + english[:-1], f"first weekdays: {weekdays[0]}")
    for number, locale in enumerate(LOCALES, start=1):
        if locale is None:
            continue
        names = locale_names(locale)
        for ours, theirs in zip((months[number - 1], weekdays[number - 1]), names):
            expect(ours == theirs, f"{number}Name: {ours} but {locale} has {theirs}")


def locale_names(locale: str) -> tuple[list[str], list[str]]:
    """The stand-alone names of the months, and of the weekdays from Sunday."""
    language, width = locale.split(":")
    symbols = icu.DateFormatSymbols(icu.Locale(language))
    width = {"long": symbols.WIDE, "short": symbols.ABBREVIATED}[width]
    months = symbols.getMonths(symbols.STANDALONE, width)
    _, *weekdays = symbols.getWeekdays(symbols.STANDALONE, width)
    return list(months), weekdays


def cell(text: str) -> tuple[int, int]:
    """Row and column of a cell such as B5, in the first 26 columns."""
    match = re.fullmatch(r"([A-Z])([1-9]\d*)", text)
    if not match:
        raise ValueError(f"{text!r} is not a cell")
    return int(match[2]), ord(match[1]) - ord("A") + 1


def written_cells(values: dict[str, str], months: int) -> dict[str, list[tuple[int, int]]]:
    """The cells of each item of a calendar, with one holiday name for each day."""
    step_down, step_right = int(values["RowIntervalOfDay"]), int(values["ColIntervalOfDay"])
    layout = int(values.get("MonthLayout", 1))
    month_down = int(values.get("RowIntervalOfMonth", 0))
    month_right = int(values.get("ColIntervalOfMonth", 0))

    def block(key: str, weeks: int, days: int) -> list[tuple[int, int]]:
        row, column = cell(values[key])
        return [
            (row + (m // layout) * month_down + week * step_down,
             column + (m % layout) * month_right + day * step_right)
            for m in range(months) for week in range(weeks) for day in range(days)
        ]  # fmt: skip

    items = {"day": block("FirstCellOfDay", GRID_WEEKS, GRID_DAYS)}
    if values["OutWeekday"] == "Y":
        items["weekday"] = block("FirstCellOfWeekday", 1, GRID_DAYS)
    if values["OutMonth"] == "Y":
        items["month"] = block("FirstCellOfMonth", 1, 1)
    if values["OutYear"] == "Y":
        items["year"] = [cell(values["FirstCellOfYear"])]
    if values["OutHoliday"] == "Y":
        items["holiday"] = block("FirstCellOfHoliday", GRID_WEEKS, GRID_DAYS)
    return items


def check_calendar(
    settings: RawConfigParser, section: str, keys: list[str], lists: dict, holidays: Path
) -> None:
    values = dict(settings[section])
    expect(sorted(values) == sorted(keys), f"[{section}] has the keys {sorted(values)}")
    for key, value in values.items():
        if key.startswith("Out"):
            expect(value in ("Y", "N"), f"[{section}] {key}={value}")
        if key in RANGES:
            expect(int(value) in RANGES[key], f"[{section}] {key}={value}")
        if key in lists:
            expect(value.split(",") in lists[key], f"[{section}] {key} is none of the lists")
    expect(values["FirstDayOfWeek"] in ("Sunday", "Monday"), f"[{section}] FirstDayOfWeek")
    expect(is_sheet_name(values["SheetName"]), f"[{section}] SheetName={values['SheetName']}")
    expect((holidays / values["HolidayFile"]).is_file(), f"[{section}] no {values['HolidayFile']}")
    months = MONTHS if "MonthLayout" in values else 1
    cells = [place for item in written_cells(values, months).values() for place in item]
    expect(len(set(cells)) == len(cells), f"[{section}] a cell would be written twice")


def check_settings(folder: Path) -> None:
    settings = read_settings(folder / "orrery.ini")
    sections = ["Environment", "MonthName", "WeekdayName", "Monthly Calendar", "Yearly Calendar"]
    expect(settings.sections() == sections, f"the sections are {settings.sections()}")
    environment = dict(settings["Environment"])
    expect(environment == {"Engine": "auto", "Pdf": "N", "ShowTips": "Y"}, f"[Environment] {environment}")
    for section in settings.sections():
        for key, value in settings[section].items():
            expect(len(value.encode()) <= MAX_VALUE_LENGTH, f"[{section}] {key} is too long")
    months = read_lists(settings, "MonthName", MONTHS)
    weekdays = read_lists(settings, "WeekdayName", GRID_DAYS)
    check_month_names(months)
    check_languages(months, weekdays)
    for section in ("MonthName", "WeekdayName"):
        check_titles(read_titles(settings, section), section)
    lists = {"MonthName": months, "WeekdayName": weekdays}
    holidays = folder / "holiday"
    check_calendar(settings, "Monthly Calendar", MONTHLY_KEYS, lists, holidays)
    check_calendar(settings, "Yearly Calendar", YEARLY_KEYS, lists, holidays)
    # Without a parameter file the row of the first day is the row interval.
    monthly = settings["Monthly Calendar"]
    first_row, _ = cell(monthly["FirstCellOfDay"])
    expect(first_row == int(monthly["RowIntervalOfDay"]), "[Monthly Calendar] RowIntervalOfDay")


def check_tips(path: Path) -> None:
    lines = path.read_text(encoding="utf-8").splitlines()
    expect(len(lines) == TIPS, f"{len(lines)} tips")
    expect(len(set(lines)) == len(lines), "a tip stands twice")
    for number, line in enumerate(lines, start=1):
        expect(line == line.strip() != "", f"tip {number} is blank or has blanks around it")
        expect(re.search(r"\\[^n]|\\$", line) is None, f"tip {number}: a backslash without n")


def main() -> int:
    folder = Path(sys.argv[1])
    check_settings(folder)
    check_tips(folder / "tips.txt")
    for problem in problems:
        print(problem)
    print(f"{len(problems)} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
