"""Checks that many designs together are as varied as they should be."""

import collections

import designs
from designs.judge import judge

COUNT = 600
KINDS = {"monthly": (0.38, 0.54), "yearly": (0.14, 0.26), "both": (0.07, 0.16), "none": (0.17, 0.30)}
# Every one of these occurs.
LABELS = ("title turned", "title between", "title combined", "title empty", "weekdays dates",
          "weekdays absent", "weekdays empty", "5 weeks", "right to left", "mini calendars", "week numbers",
          "hidden column", "day merged block", "day number at the right", "day number at the bottom",
          "caption turned", "caption corner", "captions empty", "days formulas", "days dates", "days texts",
          "year none")
KINDS_OF_NONE = 24


def check_mixture(problems, seed):
    made = [designs.design(seed, number) for number in range(COUNT)]
    kinds = collections.Counter(design.truth.kind for design in made)
    for kind, (low, high) in KINDS.items():
        problems.check(low <= kinds[kind] / COUNT <= high, kind, "has a share of", kinds[kind] / COUNT)
    labels = {label for design in made for label in design.labels}
    problems.check(not set(LABELS) - labels, "no design is", sorted(set(LABELS) - labels))
    none = {design.truth.why_none for design in made} - {""}
    problems.check(len(none) >= KINDS_OF_NONE, "only these are no calendars:", sorted(none))
    monthly = [design.truth.monthly for design in made if design.truth.monthly["Output"] == "Y"]
    yearly = [design.truth.yearly for design in made if design.truth.yearly["Output"] == "Y"]
    _values(problems, yearly, "MonthLayout", {"1", "2", "3", "4", "6", "12"})
    _values(problems, monthly, "ColIntervalOfDay", {"1", "2", "3", "4", "5", "6", "7", "12"})
    _values(problems, monthly, "RowIntervalOfDay", {"1", "2", "3", "4", "5", "6", "7", "8", "10"})
    _values(problems, monthly + yearly, "FirstDayOfWeek", {"0", "1"})
    problems.check(len({values.get("WeekdayName") for values in monthly}) > 40, "few weekday names")
    for design in made:
        _check_truth(problems, design)
        _check_judge(problems, design)
    _check_certain(problems, made)


def _values(problems, sets, key, wanted):
    missing = wanted - {values[key] for values in sets}
    problems.check(not missing, f"no {key} of", sorted(missing))


def _check_truth(problems, design):
    truth = design.truth
    sheets = [sheet.name for sheet in design.book.sheets]
    problems.check(len({name.casefold() for name in sheets}) == len(sheets), design.name, "sheets", sheets)
    problems.check(bool(truth.why_none) == (truth.kind == "none"), design.name, "is", truth.why_none)
    for which in ("monthly", "yearly"):
        values = getattr(truth, which)
        keys = {key.split(".")[1] for key in truth.knowable if key.startswith(which)}
        problems.check(keys == set(values), design.name, "does not tell of each key how sure it is")
        for key, value in values.items():
            problems.check(truth.accept[f"{which}.{key}"][0] == value, design.name, key, "is not accepted")
            problems.check(
                isinstance(value, str) and value.strip() == value and value, design.name, key, repr(value))
        if values["Output"] == "Y":
            problems.check(values["SheetName"] in sheets, design.name, "no sheet", values["SheetName"])


def _check_judge(problems, design):
    """The truth itself is all right; nothing proposed, and a calendar on the wrong sheet, are not."""
    truth = design.truth
    told = {"monthly": truth.monthly, "yearly": truth.yearly,
            "unknown": [name for name, sure in truth.knowable.items() if sure == "no"]}
    best = judge(truth, told)
    problems.check(best.kind and all(best.grids.values()) and not (
        best.wrong or best.likely_wrong or best.likely_open or best.guessed), design.name, "is", best)
    nothing = judge(truth, {"monthly": {}, "yearly": {}})
    problems.check(nothing.kind == (truth.kind == "none"), design.name, "has a kind without a proposal")
    problems.check(not any(nothing.grids.values()) and not nothing.false_proposal, design.name, nothing)
    other = judge(truth, {"monthly": {**truth.monthly, "Output": "Y", "FirstCellOfDay": "IV9"}})
    problems.check(other.false_proposal == (truth.monthly["Output"] == "N"), design.name, other)
    problems.check(not other.grids.get("monthly") and not other.grids.get("yearly"), design.name, other)


def _check_certain(problems, made):
    """Most parameters can be read off a sheet, but not all."""
    sure = collections.Counter(value for design in made for value in design.truth.knowable.values())
    share = sure["certain"] / sum(sure.values())
    problems.check(0.7 < share < 0.95, "a share of", share, "is certain:", dict(sure))
