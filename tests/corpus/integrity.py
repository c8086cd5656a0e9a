"""Whether an edited package is whole, and whether what had to stay is still there."""

import zipfile
import zlib

import package_findings
from cells import SheetCells
from formulas import names_sheet
from macros import macro_failures
from opc import CONTENT_TYPES, local, rels_name, rels_owner
from vba import Project
from workbook import formula_texts, is_selected
from xls_compound import CompoundFile

# What may go: a signature does not hold any more, a calculation chain is made anew.
_MAY_GO = ("_xmlsignatures/", "calcchain")
_MACROS = "application/vnd.ms-office.vbaProject"
_TYPE_BASES = ("http://schemas.openxmlformats.org/officeDocument/2006/relationships/",
               "http://purl.oclc.org/ooxml/officeDocument/relationships/")


def new_findings(before, after):
    """What is wrong with the package that was not wrong before."""
    found = package_findings.findings(after.path) - package_findings.findings(before.path)
    return [" ".join(map(str, finding)) for finding in sorted(found, key=repr)]


def relationship_failures(before, after):
    for rel in _added_types(before, after):
        yield f"the relationship {rel.id} to {rel.target} has the unknown type {rel.type}"
    reached = {rel.target.lower() for rel in _all_relationships(after) if not rel.external}
    for name in after.names:
        if name not in before and name.lower() not in reached \
                and not name.lower().endswith(".rels"):
            yield f"the new part {name} is reached by no relationship"


def _all_relationships(package):
    return [rel for name in package.names if name.lower().endswith(".rels")
            for rel in package.rels(rels_owner(name)).values()]


def _added_types(before, after):
    """Relationships of a type that the input does not have; a first shared string adds one."""
    known = {rel.type for rel in _all_relationships(before)}
    known |= {base + "sharedStrings" for base in _TYPE_BASES
              if any(name.startswith(base) for name in known)}
    return [rel for rel in _all_relationships(after) if rel.type not in known]


def untouched_failures(before, after, plan):
    """Parts that nothing had to change are the same, byte by byte."""
    owned = set(before.closure(plan.model.part))
    for name in before.names:
        if name not in after:
            if not any(word in name.lower() for word in _MAY_GO):
                yield f"{name} is gone"
        elif before.content_type(name) == _MACROS:
            yield from _macro_failures(before, after, name, plan)
        elif before.read(name) != after.read(name) and not _may_change(before, name, plan, owned) \
                and not _lost_values(before, after, name):
            yield f"{name} changed"


def _macro_failures(before, after, name, plan):
    """Only copies of a sheet whose module has code change the macros."""
    old, new = (Project(CompoundFile(name, package.read(name)).entries)
                for package in (before, after))
    model = old.module(_code_name(before, plan.model) or "")
    copied = {sheet.name for sheet in plan.sheets[1:]}
    copies = [sheet for sheet in after.sheets if sheet.name in copied]
    if copies and model and model.code:
        yield from macro_failures(old, new, model, [_code_name(after, each) for each in copies])
    elif before.read(name) != after.read(name):
        yield f"{name} changed"


def _code_name(package, sheet):
    return next((element.get("codeName") for element in package.tree(sheet.part)
                 if local(element.tag) == "sheetPr"), None)


def _may_change(package, name, plan, owned):
    workbook = package.workbook
    fixed = {CONTENT_TYPES, workbook, rels_name(workbook), plan.model.part,
             package.first_related(workbook, "sharedStrings"),
             package.first_related(workbook, "calcChain"),
             package.properties}
    if name in fixed or name.lower() == CONTENT_TYPES.lower():
        return True
    if any(word in name.lower() for word in _MAY_GO) or name == "_rels/.rels":
        return bool([entry for entry in package.names if "_xmlsignatures" in entry])
    if name.lower().endswith(".rels"):
        owner = rels_owner(name)
        return any(names_sheet(rel.target, plan.model.name)
                   for rel in package.rels(owner).values())
    if not package.is_xml(name):
        return False
    try:
        root = package.tree(name)
    except SyntaxError:
        return False
    if any(names_sheet(text, plan.model.name) for text in formula_texts(package, name)):
        return True
    parts = [sheet.part for sheet in package.sheets if sheet.part in package]
    if name in parts:
        return is_selected(root) or not any(is_selected(package.tree(part)) for part in parts)
    return _bare_names(root, plan.model.name) or (name in owned and local(root.tag) == "table")


def _lost_values(before, after, name):
    """Whether formulas of a sheet lost the values that they had before others were written."""
    if name not in [sheet.part for sheet in before.sheets]:
        return False
    counted = [sum(cell.formula is not None and cell.value is not None
                   for cell in SheetCells(package.tree(name)).cells.values())
               for package in (before, after)]
    return counted[1] < counted[0]


def _bare_names(root, sheet):
    """Sources of pivot tables and consolidations name a sheet in an attribute."""
    return any(value.casefold() == sheet.casefold() for element in root.iter()
               for key, value in element.attrib.items() if local(key) in ("sheet", "sheetName"))


def media_failures(before, after):
    pictures = [sorted(name.lower() for name in package.names
                       if package.content_type(name).startswith("image/"))
                for package in (before, after)]
    if pictures[0] != pictures[1]:
        yield f"pictures were {pictures[0]}, are {pictures[1]}"


def same_failures(before, after):
    """A workbook that was saved unchanged: the same parts with the same bytes."""
    if sorted(before.names) != sorted(after.names):
        yield (f"parts: {sorted(set(after.names) - set(before.names))} came, "
               f"{sorted(set(before.names) - set(after.names))} went")
        return
    for name in before.names:
        if _content(before, name) != _content(after, name):
            yield f"{name} changed"


def _content(package, name):
    """A part's bytes; of a damaged part, what is wrong with it."""
    try:
        return package.read(name)
    except (zlib.error, zipfile.BadZipFile) as error:
        return str(error)


def package_failures(before, after, plan):
    for check in (new_findings, relationship_failures, media_failures):
        yield from check(before, after)
    yield from untouched_failures(before, after, plan)
