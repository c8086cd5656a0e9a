"""How a workbook that the built-in engine wrote differs from the one that LibreOffice wrote.

What LibreOffice cannot do as Excel does is in ALLOWED: a kind of difference each, as narrow as it
can be. Its text is a sentence of docs/engines.md.
"""

import re
from collections import Counter
from dataclasses import dataclass, field

from opc import cell_name, inside
from volatile import changing_cells, readers_of

_TEXT = re.compile(r'("(?:[^"]|"")*")')
_LOGICAL = re.compile(r"\b(TRUE|FALSE)\(\)")
_FUNCTION = re.compile(r"\b[\w.]+(?=\()|\[#[\w ]+\]")  # and the parts of a table: [#All]
_TABLE = re.compile(r"([\w.\\]+)(?=\[)")
_DAY_COLUMN = re.compile(r"\[\d{1,2}\]")  # its heading is a day, which each month has elsewhere
_SHEET = re.compile(r"('(?:[^']|'')+'|[\w.]+)!")
_RANGE = re.compile(r"\$?[A-Z]+\$?\d+:")
_WITHOUT_ARGUMENTS = re.compile(r"\b(?:TRUE|FALSE|NA|PI|NOW|TODAY|RAND|ROW|COLUMN)\(\)")
_EMPTY_ARGUMENT = re.compile(r"[(,]\s*[,)]")
_NOT_AVAILABLE = 42  # the error #N/A in an .xls


@dataclass
class Made:
    """A calendar: the format of its file, the sheet that was the model, and the model's copies."""

    suffix: str
    model: str = ""
    copies: list = field(default_factory=list)

    @classmethod
    def of(cls, suffix, before, after):
        """From the names of the template's sheets, and of the calendar's."""
        new = [name for name in after if name not in before]
        return cls(suffix, new[0] if new else "", new[1:])


@dataclass
class Found:
    """What a comparison found: failures, as sentences; how often it met what; and the cells, as
    (sheet, position), whose values may be others because of a difference that is allowed."""

    failures: list = field(default_factory=list)
    counted: Counter = field(default_factory=Counter)
    changed: set = field(default_factory=set)


class Place:
    """A cell that differs: (kind, value) in the built-in engine's workbook and in LibreOffice's,
    or None where it is empty."""

    def __init__(self, made, sheets, where):
        self.made, self.sheets, self.where = made, sheets, where
        self.ours, self.theirs = (sheet.cells.get(where) for sheet in sheets)
        self.kinds = tuple(cell and cell[0] for cell in (self.ours, self.theirs))
        self.is_copy = sheets[0].name in made.copies

    @property
    def formulas(self):
        """Both cells' formulas in LibreOffice's spelling; None where they are not shown."""
        if self.kinds != ("formula", "formula") or None in (self.ours[1], self.theirs[1]):
            return None
        return _spelled(self.ours[1]), _spelled(self.theirs[1])

    def __str__(self):
        return (f"{self.sheets[0].name}!{cell_name(self.where)} is {self.ours!r:.120}, "
                f"through LibreOffice {self.theirs!r:.120}")


def _spelled(formula):
    parts = _TEXT.split(formula)
    parts[::2] = [_FUNCTION.sub(lambda match: match[0].upper(), _LOGICAL.sub(r"\1", part))
                  for part in parts[::2]]
    return "".join(parts)


def _is_logical_as_formula(place):
    kind, value = place.sheets[1].results.get(place.where, (None, None))
    return place.kinds == ("logical", "formula") and kind in ("logical", "number") and \
        value == place.ours[1] and \
        place.theirs[1] in (None, "=TRUE()" if place.ours[1] else "=FALSE()")


def _is_error_as_formula(place):
    result = place.sheets[1].results.get(place.where)
    return place.kinds == ("error", "formula") and \
        result == (("error", _NOT_AVAILABLE) if place.is_copy else place.ours)


def _is_rounded(place):
    return place.kinds == ("number", "number") and \
        float(f"{place.ours[1]:.15g}") == place.theirs[1]


def _is_spelled_otherwise(place):
    return place.formulas is not None and place.formulas[0] == place.formulas[1]


def _names_the_models_table(place):
    """Whether a copy's tables, which are called as the model's with a number, are the model's."""
    if place.formulas is None or not place.is_copy:
        return False
    one, other = (_TABLE.split(_DAY_COLUMN.sub("[1]", formula)) for formula in place.formulas)
    pairs = list(zip(one[1::2], other[1::2]))
    return one[::2] == other[::2] and any(ours != theirs for ours, theirs in pairs) and \
        all(ours == theirs or re.fullmatch(re.escape(theirs) + r"_\d+", ours)
            for ours, theirs in pairs)


def _other_sheets(place):
    """Of two formulas of a copy that name other sheets and are the same else: the two names, and
    what follows them, for each place where they differ."""
    if place.formulas is None or not place.is_copy:
        return []
    one, other = (_SHEET.split(formula) for formula in place.formulas)
    if one[::2] != other[::2]:
        return []
    return [(*(name.strip("'").replace("''", "'") for name in pair), rest)
            for pair, rest in zip(zip(one[1::2], other[1::2]), one[2::2]) if pair[0] != pair[1]]


def _names_a_neighbour(place):
    """Whether ranges of another sheet are ranges of a third one."""
    others = _other_sheets(place)
    return bool(others) and all(one != place.sheets[0].name and _RANGE.match(rest)
                                for one, _, rest in others)


def _is_given_up(place):
    return place.kinds == ("formula", "formula") and place.theirs[1] == "=NA()" and \
        bool(_EMPTY_ARGUMENT.search(_WITHOUT_ARGUMENTS.sub("1", _TEXT.sub("1", place.ours[1]))))


def _is_in_pivot_table(place):
    return any(inside(place.where, area) for sheet in place.sheets for area in sheet.pivot_areas)


@dataclass(frozen=True)
class Kind:
    """A kind of difference that is allowed: in which formats, and whether what reads such a cell
    may compute to another value."""

    text: str
    applies: object
    formats: tuple = (".xlsx", ".xls")
    changes: bool = True


ALLOWED = (
    Kind("A logical value becomes a formula that gives it.", _is_logical_as_formula,
         changes=False),
    Kind("An error in an .xls becomes a formula that gives it, and #N/A on a copied sheet.",
         _is_error_as_formula, (".xls",)),  # also what LibreOffice makes of it when it computes
    Kind("Numbers in an .xlsx keep 15 digits.", _is_rounded, (".xlsx",), changes=False),
    Kind("Formulas are spelled in LibreOffice's way.", _is_spelled_otherwise, changes=False),
    Kind("Formulas on a copied sheet go on naming the model's tables.", _names_the_models_table,
         (".xlsx",)),
    Kind("A range of another sheet in the place of one value becomes that of a third sheet on a "
         "copy.", _names_a_neighbour),
    Kind("Formulas with an argument left empty become #N/A in an .xls.", _is_given_up, (".xls",)),
    Kind("Pivot tables in an .xlsx are laid out anew.", _is_in_pivot_table, (".xlsx",)),
)
READERS = "Formulas that read such a cell compute to another result."


def compare(made, ours, theirs):
    """What two lists of sheets as they were written have in common."""
    names = [[sheet.name for sheet in sheets] for sheets in (ours, theirs)]
    if names[0] != names[1]:
        return Found([f"the sheets are {names[0]}, through LibreOffice {names[1]}"])
    found = Found()
    for pair in zip(ours, theirs):
        places = pair[0].cells.keys() | pair[1].cells.keys()
        found.counted["cells"] += len(places)
        for where in sorted(places):
            if pair[0].cells.get(where) != pair[1].cells.get(where):
                _judge(Place(made, pair, where), found)
    return found


def _judge(place, found):
    kind = next((kind for kind in ALLOWED if place.made.suffix in kind.formats
                 and kind.applies(place)), None)
    if kind is None:
        found.failures.append(str(place))
        return
    found.counted[kind.text] += 1
    if kind.changes:
        found.changed.add((place.sheets[0].name, place.where))


def formula_cells(sheets):
    return {(sheet.name, where): text for sheet in sheets
            for where, (kind, text) in sheet.cells.items() if kind == "formula"}


def compare_results(made, ours, theirs, written, changed):
    """The same of what LibreOffice made of both calendars when it computed them. `written` are the
    cells that formulas were written into; in `changed` is what `compare` found so."""
    texts = {key: text for key, text in formula_cells(ours).items() if key in written}
    found = Found(changed=set(changed))
    for pair in zip(ours, theirs):
        for where, cell in sorted(pair[0].cells.items()):
            if (pair[0].name, where) in texts and cell != pair[1].cells.get(where):
                _judge(Place(made, pair, where), found)
    if made.suffix == ".xlsx":
        found.counted.clear()  # `compare` has seen the formulas, too
    readers = readers_of(texts, found.changed)
    pairs = {pair[0].name: pair for pair in zip(ours, theirs)}
    for name, where in sorted(texts.keys() - changing_cells(texts) - found.changed):
        _compare_result(pairs[name], where, (name, where) in readers, found)
    return found


def _compare_result(pair, where, reads_changed, found):
    one, other = (sheet.results.get(where) for sheet in pair)
    if one == other:
        found.counted["results of formulas"] += 1
    elif reads_changed:
        found.counted[READERS] += 1
    else:
        found.failures.append(f"{pair[0].name}!{cell_name(where)} computes to {one!r:.120}, "
                              f"through LibreOffice to {other!r:.120}")
