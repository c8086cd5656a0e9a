"""What is true of a design, and how much of it a careful person could read off its sheets.

A parameter is
  "certain"  if the sheet alone tells it,
  "likely"   if most people would say it, but could be wrong; not to say it is as right,
  "no"       if it cannot be known.
"""

import dataclasses

from . import names as lists

COMMON = ("FirstCellOfDay", "ColIntervalOfDay", "RowIntervalOfDay", "OutWeekday",
          "FirstCellOfWeekday", "WeekdayName", "OutMonth", "FirstCellOfMonth", "MonthName",
          "OutYear", "FirstCellOfYear", "OutHoliday", "FirstCellOfHoliday", "MultiHolidays")
ORDER = {
    "monthly": ("Output", "SheetName", "FirstDayOfWeek", *COMMON),
    "yearly": ("Output", "SheetName", "FirstDayOfWeek", "MonthLayout", "ColIntervalOfMonth",
               "RowIntervalOfMonth", *COMMON),
}
HEADERS = {"monthly": "[Monthly Calendar]", "yearly": "[Yearly Calendar]"}


class Calendar:
    """The parameters of one calendar while a page is being designed."""

    def __init__(self):
        self.values, self.knowable, self.accept = {}, {}, {}

    def set(self, key, value, knowable="certain", also=()):
        """One parameter; `also` are values that are as right."""
        self.values[key] = str(value)
        self.knowable[key] = knowable
        self.accept[key] = [str(value), *(str(other) for other in also if str(other) != str(value))]


@dataclasses.dataclass
class Truth:
    """The parameters in the parameter file's keys and forms; those that do not matter are absent."""
    kind: str        # monthly, yearly, both, none
    monthly: dict    # {"Output": "N"} where there is no such calendar
    yearly: dict
    knowable: dict   # "monthly.FirstCellOfDay": certain, likely or no
    accept: dict     # "monthly.MultiHolidays": every value that is right, the design's own first
    why_none: str    # what the workbook is if it is no calendar that the parameters can express

    def ini(self, extra=()):
        """The parameter file; `extra` lines end both sections."""
        lines = []
        for calendar in ("monthly", "yearly"):
            values = getattr(self, calendar)
            lines.append(HEADERS[calendar])
            lines += [f"{key}={values[key]}" for key in ORDER[calendar] if key in values]
            lines += [*extra, ""]
        return "\r\n".join(lines)


def make(monthly=None, yearly=None, why_none=""):
    kinds = {(True, True): "both", (True, False): "monthly", (False, True): "yearly"}
    truth = Truth(kinds.get((bool(monthly), bool(yearly)), "none"), {}, {}, {}, {}, why_none)
    for name, calendar in (("monthly", monthly), ("yearly", yearly)):
        if calendar is None:
            calendar = Calendar()
            calendar.set("Output", "N")
        values = getattr(truth, name)
        for key in ORDER[name]:
            if key in calendar.values:
                values[key] = calendar.values[key]
                truth.knowable[f"{name}.{key}"] = calendar.knowable[key]
                truth.accept[f"{name}.{key}"] = calendar.accept[key]
    if truth.kind == "both":
        _learn_from_each_other(truth)
    return truth


def _learn_from_each_other(truth):
    """What one page does not tell, the other page of the workbook may."""
    for key in ("FirstDayOfWeek", "WeekdayName", "MonthName"):
        sure = [truth.knowable.get(f"{which}.{key}") for which in ("monthly", "yearly")]
        if "certain" in sure and "no" in sure:
            truth.knowable[f"{('monthly', 'yearly')[sure.index('no')]}.{key}"] = "likely"


def _base(language):
    return language.split(",")[0]


def _fold(text):
    return text.casefold().rstrip(".")


def weekday_lists(plan):
    """How surely the list of weekday names is known, and the other lists that are as right."""
    if plan.weekday_row != "names":
        return "no", []
    same = [",".join(entry) for _, entry in lists.WEEKDAYS
            if [_fold(text) for text in entry] == [_fold(text) for text in plan.weekday_names]]
    return ("certain" if same else "likely"), same


def month_lists(names, shown, weekdays):
    """The same for the list of month names: the month texts in `shown` can be read, and the weekday
    names, where there are any."""
    own = ",".join(names.months)
    if len(shown) == 12:
        same = [",".join(entry) for _, entry in lists.MONTHS
                if [_fold(text) for text in entry] == [_fold(text) for text in names.months]]
        return ("certain" if same else "likely"), same
    languages = _languages_of(weekdays)
    fitting = {",".join(entry): None for language, entry in lists.MONTHS
               if (not languages or _base(language) in languages)
               and all(_fold(text) in map(_fold, entry) for text in shown)}
    if not shown:
        return ("likely", list(fitting)) if languages else ("no", [])
    if not fitting:
        return "no", []
    alike = [text for text in fitting if text.casefold() == own.casefold()]
    if len(fitting) == 1 and alike:
        return "certain", alike
    return "likely", list(fitting)


def _languages_of(weekdays):
    folded = [_fold(text) for text in weekdays]
    return {_base(language) for language, entry in lists.WEEKDAYS
            if [_fold(text) for text in entry] == folded}
