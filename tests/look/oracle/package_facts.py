"""What a file says itself, for where LibreOffice makes something else of it."""

import dataclasses
import pathlib
import posixpath
import re
import zipfile

import xls_facts
from office_sheets import address_of

_TAG = r"<(?:\w+:)?{}\b([^>]*)>"
_RESULT = re.compile(r"<(?:\w+:)?c\b([^>]*)>\s*<(?:\w+:)?f\b(?:[^>]*/>|[^>]*>[^<]*</(?:\w+:)?f>)\s*"
                     r"<(?:\w+:)?v\b[^>]*>([^<]*)<")


@dataclasses.dataclass
class SheetFacts:
    """Of one sheet. Ranges are first column, first row, last column, last row, from 0."""
    styled_tables: list = dataclasses.field(default_factory=list)
    pivot_tables: list = dataclasses.field(default_factory=list)
    data_tables: list = dataclasses.field(default_factory=list)
    has_default_height: bool = True
    rows_with_height: set = dataclasses.field(default_factory=set)  # from 0
    results: dict = dataclasses.field(default_factory=dict)  # of formulas, by "B6": type and value
    full_fills: dict = dataclasses.field(default_factory=dict)  # of .xls, by "B6": xls_colors.FullFill


def facts_of(path):
    """The facts of each sheet by its name; of an .xls file results and full colours alone."""
    if pathlib.Path(path).suffix == ".xls":
        return {name: SheetFacts(results=results, full_fills=fills)
                for name, (results, fills) in xls_facts.facts_of(path).items()}
    with zipfile.ZipFile(path) as package:
        names = {name.lower().replace("\\", "/"): name for name in package.namelist()}

        def read(part):
            """The part as text, empty if it is absent."""
            name = names.get(part.lower())
            return package.read(name).decode("utf-8", "replace") if name else ""

        workbook = next((related for kind, related in _related(read, "").values()
                         if kind == "officeDocument"), "xl/workbook.xml")
        sheets = _related(read, workbook)
        return {_unescape(sheet["name"]): _sheet_facts(read, sheets[sheet["id"]][1])
                for sheet in _tags(read(workbook), "sheet") if sheet.get("id") in sheets}


def contains(area, column, row):
    return area[0] <= column <= area[2] and area[1] <= row <= area[3]


def _sheet_facts(read, part):
    facts = SheetFacts()
    text = read(part)
    formats = _tags(text, "sheetFormatPr")
    facts.has_default_height = bool(formats) and "defaultRowHeight" in formats[0]
    facts.rows_with_height = {int(row["r"]) - 1 for row in _tags(text, "row")
                              if "ht" in row and row.get("r", "").isdigit()}
    facts.data_tables = [_area(formula["ref"]) for formula in _tags(text, "f")
                         if formula.get("t") == "dataTable" and "ref" in formula]
    for cell, value in _RESULT.findall(text):
        attributes = _attributes(cell)
        facts.results[attributes.get("r")] = attributes.get("t", "n"), _unescape(value)
    for kind, related in _related(read, part).values():
        if kind == "table" and _tags(read(related), "tableStyleInfo"):
            facts.styled_tables.append(_area(_tags(read(related), "table")[0]["ref"]))
        elif kind == "pivotTable":
            facts.pivot_tables.append(_area(_tags(read(related), "location")[0]["ref"]))
    return facts


def _related(read, part):
    """Kinds and names of the parts that a part names, by their ids."""
    folder, name = posixpath.split(part)
    text = read(posixpath.join(folder, "_rels", f"{name}.rels"))
    return {each["Id"]: (posixpath.basename(each["Type"]),
                         posixpath.normpath(posixpath.join("/", folder, each["Target"])).lstrip("/"))
            for each in _tags(text, "Relationship") if each.get("TargetMode") != "External"}


def _tags(text, name):
    """The attributes of the elements of that name."""
    return [_attributes(attributes) for attributes in re.findall(_TAG.format(name), text)]


def _attributes(text):
    """Their values by their names without prefixes."""
    return {key.rpartition(":")[2]: value for key, _, value
            in re.findall(r"""([\w:.]+)\s*=\s*(["'])(.*?)\2""", text, re.S)}


def _area(text):
    first, _, last = text.partition(":")
    return *address_of(first), *address_of(last or first)


def _unescape(text):
    for entity, sign in (("&lt;", "<"), ("&gt;", ">"), ("&quot;", '"'), ("&apos;", "'"),
                         ("&amp;", "&")):
        text = text.replace(entity, sign)
    return text
