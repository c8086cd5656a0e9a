"""What is told of a feature, and what became of it.

A feature of a sheet is told in facts: a dictionary from what a person would call a part of it
("frozen panes") to a value that equals that of another sheet with the same part. A missing part
has no entry, or an empty value.
"""
from dataclasses import dataclass

KEPT, LOST = "kept", "lost"
SHOWN = 8  # parts that are named one by one


@dataclass(frozen=True)
class Near:
    """A measure that programs round in their own ways."""

    value: float
    tolerance: float

    def is_near(self, other):
        return isinstance(other, Near) and abs(self.value - other.value) <= self.tolerance


def same(left, right):
    """Whether two facts say the same."""
    if isinstance(left, Near):
        return left.is_near(right)
    if isinstance(left, dict) and isinstance(right, dict):
        return left.keys() == right.keys() and all(same(left[key], right[key]) for key in left)
    if isinstance(left, (list, tuple)) and isinstance(right, (list, tuple)):
        return len(left) == len(right) and all(map(same, left, right))
    return left == right


def is_empty(fact):
    return fact is None or fact is False or (hasattr(fact, "__len__") and not len(fact))


def judge(expected, sheets):
    """What became of a feature on the sheets, as a text: "kept", "lost", or what differs.

    `expected` are the model's facts; `sheets` those of the renamed model and then of each copy."""
    lost, changed = {}, {}
    for number, facts in enumerate(sheets):
        for part, value in expected.items():
            if is_empty(facts.get(part)):
                lost.setdefault(part, []).append(number)
            elif not same(value, facts[part]):
                changed.setdefault(part, []).append(number)
    if not lost and not changed:
        return KEPT
    gone = {part for part, numbers in lost.items() if set(range(1, len(sheets))) <= set(numbers)}
    if gone == set(expected):
        return LOST
    texts = []
    only_changed = {part: where for part, where in changed.items() if part not in lost}
    for word, found in (("without ", lost), ("changed: ", only_changed)):
        if found:
            in_order = {part: found[part] for part in expected if part in found}
            texts.append(word + _listed(in_order, len(sheets)))
    return "in part: " + "; ".join(texts)


def _listed(found, count):
    """The parts, those that are broken on the same sheets together."""
    groups = {}
    for part, numbers in found.items():
        groups.setdefault(_places(numbers, count), []).append(part)
    return ", ".join(_named(parts) + where for where, parts in groups.items())


def _named(parts):
    if len(parts) > SHOWN:
        return ", ".join(parts[:SHOWN]) + f" and {len(parts) - SHOWN} more"
    return ", ".join(parts)


def _places(numbers, count):
    """Nothing where all copies are meant."""
    copies = [number for number in numbers if number]
    if len(copies) == count - 1:
        return ""
    if not copies:
        return " (on the renamed model)"
    return f" (on {len(copies)} of {count - 1} copies)"
