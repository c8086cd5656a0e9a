"""What is done to a workbook: its first worksheet is renamed, copied and filled.

The plan is made from the input alone, with the cells that have to be refused, so that what the
engine does can be judged without asking it.
"""

from dataclasses import dataclass, field

from cells import SheetCells, locked_styles
from opc import area_bounds, inside, is_true, local

# Names that need apostrophes and names that do not, and such as look like cells.
SHEET_NAMES = ("Proof", "Proof 02", "Pr\u00f6of3", "It's 4", "2027", "XFD7", "R8C8", "Proof-9",
               "Proof.10", "Proof(11)", "\u4e00\u6708", "A&B <12>")
CELLS = 400

LAST_CELL = (1048576, 16384)
TEXTS = ("=1+1", " blanks ", "12", "J\u00e4nner", "\u4e00\u6708 \U0001f600", "<a & b> \"c\" 'd'",
         "two\nlines", "tab\there", "_x0041_", "bell\vrow", "TRUE", "#N/A", "'quoted", "x" * 300)
NUMBERS = (1, 31, 2027, 0, 32767, 15, 7, 29)
NEGATIVES = (-1, -32768)

_ESCAPES = str.maketrans({"\\": "\\\\", "\n": "\\n", "\t": "\\t", "\v": "\\v"})


@dataclass
class SheetPlan:
    name: str
    written: dict = field(default_factory=dict)  # position -> value
    refused: dict = field(default_factory=dict)  # position -> kind of refusal
    either: set = field(default_factory=set)     # may be refused or dropped, as in Excel


@dataclass
class Plan:
    model: object            # the input's sheet
    sheets: list             # a SheetPlan for the model and for each copy
    lines: list              # what the driver reads
    places: dict             # line number -> (index of the sheet, position)
    refused_steps: set       # lines that a protected structure refuses

    def save(self, path):
        with open(path, "w", encoding="utf-8", newline="") as file:
            file.write("\n".join(self.lines) + "\n")


def first_worksheet(package):
    return next((sheet for sheet in package.sheets
                 if sheet.kind == "worksheet" and sheet.part in package), None)


def structure_is_locked(package):
    return any(is_true(element.get("lockStructure")) for element in
               package.tree(package.workbook) if local(element.tag) == "workbookProtection")


class Rules:
    """Which cells of a sheet take a value. `cells` knows the sheet's cells, merges, protection and
    formats, as SheetCells does; `is_locked` tells whether a cell format locks its cell."""

    def __init__(self, cells, last_cell, is_locked):
        self.cells, self.last_cell, self.is_locked = cells, last_cell, is_locked
        self.arrays = []      # areas of array formulas of more than one cell
        self.spilled = []     # those of them that programs fill in different ways
        self.tables = []      # areas of data tables
        self.headers = set()  # cells that name the columns of tables

    def refusal(self, position):
        if position[0] > self.last_cell[0] or position[1] > self.last_cell[1]:
            return "outside"
        if self.cells.is_protected and self.is_locked(self.cells.style_at(position)):
            return "locked"
        if any(inside(position, area) for area in self.arrays):
            return "array"
        return None

    def is_open(self, position):
        """Where programs differ: cells under a merge, spilled or inside a data table, and locked
        ones that a range without a password frees."""
        if any(inside(position, area) and position != area[:2] for area in self.cells.merges):
            return True
        if any(inside(position, area) for area in (*self.tables, *self.spilled)):
            return True
        return (self.cells.is_protected
                and any(inside(position, area) for area in self.cells.protected_ranges))

    def samples(self, index):
        """Existing cells that the sheet with that index has written in any case."""
        return []


def package_rules(package, model):
    cells = SheetCells(package.tree(model.part))
    locked = locked_styles(package)
    rules = Rules(cells, LAST_CELL, lambda style: locked[style] if style < len(locked) else True)
    arrays = [(area, master) for area, master in cells.array_areas("array")
              if area[:2] != area[2:]]
    rules.arrays = [area for area, _ in arrays]
    rules.spilled = [area for area, master in arrays if cells.cells[master].other]
    rules.tables = [area for area, _ in cells.array_areas("dataTable")]
    for rel in package.rels(model.part).values():
        if rel.kind == "table" and rel.target in package:
            rules.headers |= header_cells(package.tree(rel.target))
    return rules


def header_cells(table):
    """The header cells of a table; they hold the names of its columns."""
    if table.get("headerRowCount") == "0":
        return set()
    top, left, _, right = area_bounds(table.get("ref"))
    return {(top, column) for column in range(left, right + 1)}


def positions(rules, index, last_row):
    """Existing cells and new ones, half and half, others on each sheet."""
    cells, last_cell = rules.cells, rules.last_cell
    existing = sorted(cells.cells)
    step = max(1, len(existing) // (CELLS // 2))
    chosen = list(dict.fromkeys(rules.samples(index) + existing[index % step::step]))[:CELLS // 2]
    taken = set(chosen)
    top = 1 + 3 * index
    fresh = ((top + number // 20, 1 + number % 20) for number in range(10 ** 6))
    for position in fresh:
        if len(chosen) >= CELLS - 2:
            break
        if position not in taken and (position not in cells.cells or len(existing) > CELLS):
            chosen.append(position)
    return chosen + [last_cell if last_row else (400 + index, last_cell[1]), (last_cell[0] + 1, 1)]


def value_for(number, index, position, rules):
    if position in rules.headers:
        return f"Column {index} {position[1]}"  # a table's columns need names of their own
    if number % 2:
        return f"{TEXTS[number // 2 % len(TEXTS)]}{'' if number < 60 else f' {index}.{number}'}"
    if number % 46 == 44:
        return NEGATIVES[number // 46 % 2]
    return NUMBERS[number // 2 % len(NUMBERS)] if number < 40 else number + 400 * index


def make_plan(package, last_row):
    """`last_row` has the last cell of each sheet written too, over which LibreOffice takes long."""
    model = first_worksheet(package)
    rules = package_rules(package, model)
    return plan_for(model, rules, structure_is_locked(package), lambda index: last_row)


def plan_for(model, rules, is_structure_locked, last_row, names=SHEET_NAMES):
    """`last_row` tells by a sheet's index whether its last cell is written too."""
    lines = [f"sheet\t{model.name}", f"rename\t{names[0]}"]
    plan = Plan(model, [], lines, {}, set())
    if is_structure_locked:  # sheets stay as they are, as in Excel
        names = (model.name,)
        lines.append("copy")
        plan.refused_steps = {2, 3}
    for name in names[1:]:
        lines += ["copy", f"rename\t{name}"]
    lines.append(f"sheet\t{names[0].upper()}")  # names are found without regard to case
    for index, name in enumerate(names):
        if index:
            lines.append("next")
        plan.sheets.append(_fill(plan, SheetPlan(name), index, rules, last_row(index)))
    return plan


def _fill(plan, sheet, index, rules, last_row):
    for number, position in enumerate(positions(rules, index, last_row)):
        value = value_for(number, index, position, rules)
        refusal = rules.refusal(position)
        if rules.is_open(position):
            sheet.either.add(position)
        if refusal:
            sheet.refused[position] = refusal
        else:
            sheet.written[position] = value
        row, column = position
        text = str(value).translate(_ESCAPES)
        kind = "text" if isinstance(value, str) else "number"
        plan.lines.append(f"{kind}\t{row}\t{column}\t{text}")
        plan.places[len(plan.lines)] = (index, position)
    return sheet


def judge_refusals(plan, output):
    """Compares what the driver refused with what it had to; yields failures."""
    refused, steps = {}, set()
    for line in output.splitlines():
        number, kind, sentence = line.split("\t", 2)
        if int(number) in plan.places:
            refused[plan.places[int(number)]] = kind
        elif kind == "structure":
            steps.add(int(number))
        if not sentence.strip():
            yield f"a refusal has no sentence: {line}"
    if steps != plan.refused_steps:
        yield f"steps {steps} were refused, should be {plan.refused_steps}"
    for index, sheet in enumerate(plan.sheets):
        for position in sheet.either:
            if (index, position) in refused:
                sheet.written.pop(position, None)
        for position in {*sheet.written, *sheet.refused} - sheet.either:
            expected, got = sheet.refused.get(position), refused.get((index, position))
            if expected != got:
                yield f"{sheet.name}!{position}: refusal {got}, should be {expected}"
