"""What a program sees in an .xls workbook, and whether it sees what the plan asks for."""

from collections import Counter
from dataclasses import dataclass, field

from formulas import SELF, Names, names_sheet
from opc import cell_name, inside

SHOWN = 4  # failures of one sheet


@dataclass
class SheetView:
    """`cells` maps a position to (kind, value, look); a formula's value is its text, or None for
    a program that does not show it. `owned` is what else the sheet has, under a name each."""

    name: str
    cells: dict = field(default_factory=dict)
    rows: dict = field(default_factory=dict)
    owned: dict = field(default_factory=dict)


@dataclass
class BookView:
    sheets: list
    looks: list = None    # of each cell format; None for a program that is not asked for them
    names: list = None    # (index of the sheet or None, name, formula)
    blanks: bool = True   # whether cells without a value are shown
    same_text: object = staticmethod(lambda text: text)  # a text as this program has it


FAILED = "failed:"  # what a section begins with that the program could not read


def view_failures(program, before, after, plan, model, renders_all=True, unjudged=frozenset()):
    """Compares what a program sees in the input and in the edited workbook. `model` is the
    input's sheet as our own reader has it; with `renders_all` false, values are not judged, nor
    are ever those of the cells `unjudged`."""
    names = [sheet.name for sheet in before.sheets]
    first = names.index(plan.model.name) if plan.model.name in names else None
    if first is None:
        yield f"{program} does not show the first worksheet of the input"
        return
    names[first:first + 1] = [sheet.name for sheet in plan.sheets]
    if [sheet.name for sheet in after.sheets] != names:
        yield f"{program} shows {[sheet.name for sheet in after.sheets]}, should show {names}"
        return
    judge = _Judge(before, after, plan, model, renders_all, unjudged)
    for index, planned in enumerate(plan.sheets):
        for failure in _some(judge.edited(index, first, planned)):
            yield f"{program}: {planned.name}: {failure}"
    for index, sheet in enumerate(before.sheets):
        if index != first:
            twin = after.sheets[index + (len(plan.sheets) - 1 if index > first else 0)]
            for failure in _some(judge.other(sheet, twin)):
                yield f"{program}: {sheet.name}: {failure}"
    if after.looks is not None and after.looks[:len(before.looks)] != before.looks:
        yield f"{program}: cell formats changed"
    if before.names is not None:
        for failure in _some(judge.names(first)):
            yield f"{program}: {failure}"


def _some(failures):
    return [failure for failure, _ in zip(failures, range(SHOWN))]


class _Judge:
    def __init__(self, before, after, plan, model, renders_all, unjudged):
        self.before, self.after, self.plan, self.model = before, after, plan, model
        self.renders_all, self.unjudged = renders_all, unjudged

    def _names_of(self, index):
        """How the two sides spell the model's name and that of a sheet made of it; in a range
        of sheets a copy goes on naming the model."""
        renamed = self.plan.sheets[0].name
        return (Names({self.plan.model.name: SELF}),
                Names({self.plan.sheets[index].name: SELF}, ranges={renamed: SELF}))

    def edited(self, index, first, planned):
        mine, other = self.before.sheets[first], self.after.sheets[first + index]
        names = self._names_of(index)
        if self.renders_all:
            yield from self._written(other, planned)
            yield from self._kept(mine, other, names, {*planned.written, *planned.either})
        for number, row in mine.rows.items():
            if other.rows.get(number) != row:
                yield f"row {number} is {other.rows.get(number)}, was {row}"
        yield from self._owned(mine, other, names)

    def _written(self, sheet, planned):
        for where, value in planned.written.items():
            if where in planned.either or where in self.unjudged \
                    or _is_covered(where, self.model.merges):
                continue
            kind, seen, look = sheet.cells.get(where, ("no cell", None, None))
            expected = "text" if isinstance(value, str) else "number"
            same = self.before.same_text
            if kind != expected or (same(seen) != same(value) if kind == "text" else seen != value):
                yield f"{cell_name(where)} is {kind} {seen!r}, should be {value!r}"
            elif self.before.looks is not None:
                wanted = self.before.looks[self.model.style_at(where)]
                if look != wanted:
                    yield f"{cell_name(where)} has the format {look}, should have {wanted}"

    def _kept(self, mine, other, names, changed):
        for where in sorted({*mine.cells, *other.cells} - changed):
            left, right = mine.cells.get(where), other.cells.get(where)
            if None in (left, right) or left[0] != right[0] or left[2] != right[2] \
                    or _neutral(left[1], names[0]) != _neutral(right[1], names[1]):
                if not _is_covered(where, self.model.merges):
                    yield f"{cell_name(where)} is {right}, was {left}"

    @staticmethod
    def _owned(mine, other, names):
        for what, had in mine.owned.items():
            has = other.owned.get(what)
            if isinstance(had, str) and had.startswith(FAILED):
                continue
            if _neutral(had, names[0]) != _neutral(has, names[1]):
                yield f"{what}: {_difference(had, has)}"

    def other(self, mine, other):
        """A sheet that is not edited goes on naming the model, by its new name."""
        names = (Names({self.plan.model.name: SELF}), Names({self.plan.sheets[0].name: SELF}))
        yield from self._kept(mine, other, names, set())
        if mine.rows != other.rows:
            yield "rows changed"
        yield from self._owned(mine, other, names)

    def names(self, first):
        """Each copy owns the names that the model owns, and twins of the workbook's names that
        name the model; the others stay."""
        copies = len(self.plan.sheets) - 1
        left, right = self._names_of(0)
        expected = Counter()
        for scope, name, text in self.before.names:
            moved = scope + copies if scope is not None and scope > first else scope
            expected[moved, name.lower(), left.neutral(text)] += 1
        got = Counter((scope, name.lower(), right.neutral(text))
                      for scope, name, text in self.after.names
                      if scope is None or not first < scope <= first + copies)
        if got != expected:
            yield f"has the names {sorted(got - expected, key=str)}, should have " \
                  f"{sorted(expected - got, key=str)}"
        own = {name.lower(): left.neutral(text) for scope, name, text in self.before.names
               if scope is None and names_sheet(text, self.plan.model.name)}
        own.update((name.lower(), left.neutral(text)) for scope, name, text in self.before.names
                   if scope == first)
        for index in range(1, copies + 1):
            right = self._names_of(index)[1]
            got = {(name.lower(), right.neutral(text)) for scope, name, text in self.after.names
                   if scope == first + index}
            if not own.items() <= got:
                yield f"sheet {first + index} lacks the names {sorted(own.items() - got)}, has " \
                      f"{sorted(got - own.items())}"


def _is_covered(where, merges):
    return any(inside(where, area) and where != area[:2] for area in merges)


def _neutral(value, names):
    if isinstance(value, str):
        return names.neutral(value) if "!" in value else value
    if isinstance(value, (list, tuple)):
        return [_neutral(part, names) for part in value]
    if isinstance(value, dict):
        return {key: _neutral(part, names) for key, part in value.items()}
    return value


def _difference(had, has):
    if isinstance(had, (list, dict)) and isinstance(has, (list, dict)) and len(had) != len(has):
        return f"{len(has)}, should be {len(had)}"
    return f"{str(has)[:150]}, should be {str(had)[:150]}"
