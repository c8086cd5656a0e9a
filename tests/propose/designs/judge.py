"""Compares proposed parameters with the truth of a design.

A proposal is {"monthly": {key: value}, "yearly": {...}, "unknown": ["monthly.FirstCellOfYear", ...]}; a
calendar that is not there has "Output" "N" or no keys at all. Values are texts as in a parameter file.
"""

import dataclasses

GRID = ("SheetName", "FirstCellOfDay", "ColIntervalOfDay", "RowIntervalOfDay")
FLAG_OF = {"FirstCellOfWeekday": "OutWeekday", "WeekdayName": "OutWeekday",
           "FirstCellOfMonth": "OutMonth", "FirstCellOfYear": "OutYear",
           "FirstCellOfHoliday": "OutHoliday", "MultiHolidays": "OutHoliday"}


@dataclasses.dataclass
class Verdict:
    kind: bool             # monthly, yearly, both or none, as it is
    false_proposal: bool   # a calendar is proposed that is not there
    grids: dict            # "monthly": whether the cells of the days are right
    right: list            # parameters that are certain: proposed as they are
    wrong: list            # ... proposed otherwise, or not
    likely_right: list     # parameters that are likely: proposed as they are
    likely_open: list      # ... called unknown, or without their flag
    likely_wrong: list     # ... proposed otherwise
    guessed: list          # parameters that cannot be known, but were proposed


def judge(truth, proposal):
    """The verdict on a proposal. Parameters of a calendar that was not proposed are all wrong."""
    verdict = Verdict(True, False, {}, [], [], [], [], [], [])
    unknown = set(proposal.get("unknown", ()))
    for which in ("monthly", "yearly"):
        proposed, values = proposal.get(which, {}), getattr(truth, which)
        is_proposed = proposed.get("Output", "N") == "Y"
        if is_proposed != (values["Output"] == "Y"):
            verdict.kind = False
            verdict.false_proposal |= is_proposed
        if values["Output"] == "Y":
            told = {key: str(value) for key, value in proposed.items()
                    if f"{which}.{key}" not in unknown} if is_proposed else {}
            verdict.grids[which] = all(_fits(truth, which, key, told) for key in GRID)
            for key in values:
                _judge_parameter(verdict, truth, which, key, told)
    return verdict


def _fits(truth, which, key, told):
    return told.get(key) in truth.accept[f"{which}.{key}"]


def _judge_parameter(verdict, truth, which, key, told):
    name = f"{which}.{key}"
    fits, sure = _fits(truth, which, key, told), truth.knowable[name]
    if sure == "certain":
        (verdict.right if fits else verdict.wrong).append(name)
    elif sure == "no":
        if key in told:
            verdict.guessed.append(name)
    elif fits:
        verdict.likely_right.append(name)
    else:
        is_open = key not in told or told.get(FLAG_OF.get(key)) == "N"
        (verdict.likely_open if is_open else verdict.likely_wrong).append(name)
