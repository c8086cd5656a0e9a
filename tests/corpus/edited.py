"""Whether the model sheet and its copies are what the plan asks for."""

from collections import Counter

import counts
from cells import shared_strings
from compare import SheetComparison, Side, cells_of, compare_cells, compare_rows
from formulas import SELF, Names, in_sheet_range
from opc import local
from plan import area_bounds
from workbook import cell_text, decoded_column, tables_of


def _own_tables(package, part):
    return {table.get("displayName"): f"{SELF}{index}" for index, table in
            enumerate(table for sheet, _, table in tables_of(package) if sheet.part == part)}


def _columns(package, part):
    """What the columns of a sheet's tables are called, and where in the sheet they stand."""
    columns = {}
    for sheet, _, table in tables_of(package):
        if sheet.part != part or not table.get("ref"):
            continue
        left = area_bounds(table.get("ref"))[1]
        names = [decoded_column(element.get("name", "")) for element in table.iter()
                 if local(element.tag) == "tableColumn"]
        for number, name in enumerate(names):
            columns.setdefault(name, f"\u00abcolumn {left + number}\u00bb")
    return columns


class EditedWorkbook:
    def __init__(self, before, after, plan):
        self.before, self.after, self.plan = before, after, plan
        first = before.sheets.index(plan.model)
        self.sheets = after.sheets[first:first + len(plan.sheets)]
        self.first = first
        self.model_cells = cells_of(before, plan.model.part)
        self.counted = counts.count_sheet(before, plan.model)
        self.names_before = counts.defined_names(before)
        self.names_after = counts.defined_names(after)
        self.strings = shared_strings(after)

    def failures(self):
        for index, (sheet, planned) in enumerate(zip(self.sheets, self.plan.sheets)):
            for failure in self._sheet_failures(index, sheet, planned):
                yield f"{planned.name}: {failure}"
        for sheet in self.before.sheets:
            if sheet != self.plan.model and sheet.part in self.before:
                for failure in self._other_failures(sheet):
                    yield f"{sheet.name}: {failure}"

    def _names(self, index):
        """The two sides' names; in a range of sheets a copy may still name the model."""
        model = self.plan.model
        renamed = self.plan.sheets[0].name
        left = Names({model.name: SELF}, _own_tables(self.before, model.part),
                     columns=_columns(self.before, model.part))
        part = self.sheets[index].part
        right = Names({self.plan.sheets[index].name: SELF}, _own_tables(self.after, part),
                      {renamed: SELF}, _columns(self.after, part))
        return left, right

    def _outside_names(self):
        """The same for what belongs to no edited sheet: it goes on naming the model."""
        before, after = self.plan.model, self.sheets[0]
        return (Names({before.name: SELF}, _own_tables(self.before, before.part),
                      columns=_columns(self.before, before.part)),
                Names({self.plan.sheets[0].name: SELF}, _own_tables(self.after, after.part),
                      columns=_columns(self.after, after.part)))

    def _sheet_failures(self, index, sheet, planned):
        left, right = self._names(index)
        yield from SheetComparison(Side(self.before, left), Side(self.after, right),
                                   is_copy=index > 0).run(self.plan.model.part, sheet.part)
        cells = cells_of(self.after, sheet.part)
        yield from compare_cells(self.model_cells, cells, (left, right), planned.written,
                                 planned.either, strip_values=True)
        yield from compare_rows(self.model_cells, cells, {row for row, _ in planned.written})
        yield from self._written_failures(cells, planned)
        yield from self._name_failures(index, right)

    def _written_failures(self, cells, planned):
        if not cells.in_order:
            yield "rows or cells are out of order"
        for where, value in planned.written.items():
            cell = cells.cells.get(where)
            if where in planned.either:
                continue
            if cell is None:
                yield f"{where} was not written"
                continue
            text = cell_text(cell, self.strings)
            is_text = cell.kind == "s"
            if cell.formula is not None or text != str(value) or is_text != isinstance(value, str):
                yield f"{where} holds {cell.kind} {text!r}, should hold {value!r}"
            if cell.style != self.model_cells.style_at(where):
                yield f"{where} has format {cell.style}, should have " \
                      f"{self.model_cells.style_at(where)}"

    def _name_failures(self, index, right):
        """A copy owns the model's names, and twins of the workbook's that refer to the model."""
        tables = _own_tables(self.before, self.plan.model.part)
        left = Names({self.plan.model.name: SELF}, tables,
                     columns=_columns(self.before, self.plan.model.part))
        model = counts.sheet_names(self.names_before, self.first, self.plan.model.name, tables)
        if index == 0:  # the model's own names only: the workbook's stay where they are
            own = {name.lower() for scope, name, _ in self.names_before if scope == self.first}
            model = {name: text for name, text in model.items() if name in own}
        got = {name.lower(): text for scope, name, text in self.names_after
               if scope == self.first + index}
        if set(got) != set(model):
            yield f"has the names {sorted(got)}, should have {sorted(model)}"
        for name in sorted(set(got) & set(model)):
            if left.neutral(model[name]) != right.neutral(got[name]):
                yield f"name {name} is {got[name]!r}, should be like {model[name]!r}"

    def _other_failures(self, sheet):
        """Every other sheet is as it was, its references to the model renamed."""
        left, right = self._outside_names()
        twin = next((other for other in self.after.sheets if other.name == sheet.name), None)
        if twin is None:
            yield "is gone"
            return
        yield from SheetComparison(Side(self.before, left), Side(self.after, right)).run(
            sheet.part, twin.part)
        yield from self._scoped_names(sheet, twin, left, right)
        if sheet.kind != "worksheet":
            return
        mine, other = cells_of(self.before, sheet.part), cells_of(self.after, twin.part)
        yield from compare_cells(mine, other, (left, right), {}, set(), strip_values=False)
        yield from compare_rows(mine, other, ())
        for where, text in other.formula_texts.items():
            if other.cells[where].value is not None and self._names_written(text):
                yield f"{where}: the formula {text!r} keeps a stale value"

    def _names_written(self, text):
        return "!" in text and any(
            SELF in Names({planned.name: SELF}).neutral(text) or in_sheet_range(text, planned.name)
            for planned in self.plan.sheets)

    def _scoped_names(self, sheet, twin, left, right):
        mine, other = ({(name.lower(), side.neutral(text)) for scope, name, text in names
                        if scope == package.sheets.index(at)}
                       for package, names, at, side in
                       ((self.before, self.names_before, sheet, left),
                        (self.after, self.names_after, twin, right)))
        if mine != other:
            yield f"own names are {sorted(other)}, were {sorted(mine)}"

    def workbook_name_failures(self):
        """The workbook's own names stay, those that refer to the model renamed."""
        left, right = self._outside_names()
        mine, other = (Counter((name.lower(), side.neutral(text)) for scope, name, text in names
                               if scope is None)
                       for names, side in ((self.names_before, left), (self.names_after, right)))
        if mine != other:
            yield f"the workbook's names are {sorted(other)}, were {sorted(mine)}"
