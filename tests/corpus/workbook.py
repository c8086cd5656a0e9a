"""Whether the parts of an edited workbook agree with each other."""

import re
from collections import Counter

from cells import SheetCells, shared_strings, string_text
from formulas import names_sheet, unquoted_by_mistake
from opc import cell_position, is_true, local
from plan import header_cells

# Texts of these parts speak of other workbooks, or of former states of this one.
_NO_OWN_SHEETS = ("externalLink", "revision", "customXml", "docProps/core", "docProps/custom")
# Attributes that people read: they are no references, whatever they look like.
SHOWN_TEXTS = ("display", "tooltip")


def sheet_list_failures(before, after, plan):
    expected = []
    for sheet in before.sheets:
        if sheet == plan.model:
            expected += [(planned.name, sheet.state) for planned in plan.sheets]
        else:
            expected.append((sheet.name, sheet.state))
    got = [(sheet.name, sheet.state) for sheet in after.sheets]
    if got != expected:
        yield f"sheets are {got}, should be {expected}"
    parts = [sheet.part for sheet in after.sheets if sheet.part]
    if len(parts) != len(set(parts)):
        yield f"sheets share a part: {parts}"


def selection_failures(before, after):
    selected = {package: [index for index, sheet in enumerate(package.sheets)
                          if sheet.part in package and is_selected(package.tree(sheet.part))]
                for package in (before, after)}
    if len(selected[after]) > 1 or (selected[before] and not selected[after]):
        yield f"sheets {selected[after]} are selected, were {selected[before]}"
    active = _active_tab(after)
    if _active_tab(before) >= len(before.sheets):
        return
    if active >= len(after.sheets):
        yield f"the active sheet {active} is not there"
    elif _active_tab(before) in selected[before] and active not in selected[after]:
        yield f"sheet {active} is active, {selected[after]} selected"


def is_selected(root):
    return any(is_true(element.get("tabSelected")) for element in root.iter()
               if local(element.tag) == "sheetView")


def _active_tab(package):
    return next((int(element.get("activeTab", "0")) for element in
                 package.tree(package.workbook).iter() if local(element.tag) == "workbookView"), 0)


def decoded_column(name):
    """The name of a table's column, whose line feeds and tabs are escapes in the part."""
    return re.sub(r"_x([0-9A-Fa-f]{4})_", lambda match: chr(int(match[1], 16)), name)


def tables_of(package):
    """Every table of the workbook: (sheet, part, root)."""
    for sheet in package.sheets:
        for rel in package.rels(sheet.part).values() if sheet.part else ():
            if rel.kind == "table" and rel.target in package:
                yield sheet, rel.target, package.tree(rel.target)


def table_failures(before, after):
    names = Counter(table.get("displayName", "").lower() for _, _, table in tables_of(after))
    for element in after.tree(after.workbook).iter():
        if local(element.tag) == "definedName" and element.get("localSheetId") is None:
            names[element.get("name").lower()] += 1
    for name, count in names.items():
        if count > 1:
            yield f"{count} tables or names are called {name}"
    strings = shared_strings(after)
    for sheet, part, table in tables_of(after):
        yield from _header_failures(sheet, part, table, SheetCells(after.tree(sheet.part)), strings)


def _header_failures(sheet, part, table, cells, strings):
    columns = [element.get("name") for element in table.iter()
               if local(element.tag) == "tableColumn"]
    for name, where in zip(columns, sorted(header_cells(table))):
        text = cell_text(cells.cells.get(where), strings)
        if text is not None and \
                text.replace("\r\n", "\n") != decoded_column(name).replace("\r\n", "\n"):
            yield f"{sheet.name}!{where} is {text!r}, its table column in {part} is {name!r}"


def cell_text(cell, strings):
    if cell is None or cell.value is None:
        return None
    if cell.kind == "s":
        return string_text(strings[int(cell.value)])
    return cell.value


def calc_chain_failures(before, after):
    part = after.first_related(after.workbook, "calcChain")
    if part is None or part not in after:
        return
    formulas = {sheet.sheet_id: SheetCells(after.tree(sheet.part)) for sheet in after.sheets
                if sheet.kind == "worksheet" and sheet.part in after}
    known = _dead_entries(before)
    sheet_id = "0"
    for entry in after.tree(part):
        sheet_id = entry.get("i", sheet_id)
        where = entry.get("r")
        cells = formulas.get(sheet_id)
        cell = cells.cells.get(cell_position(where)) if cells else None
        if (cell is None or cell.formula is None) and (sheet_id, where) not in known:
            yield f"the calculation chain names {where} of sheet {sheet_id}, no formula"


def _dead_entries(package):
    """Entries without a formula in the input: the cells inside an array have none of their own."""
    part = package.first_related(package.workbook, "calcChain")
    if part is None or part not in package:
        return set()
    dead, sheet_id = set(), "0"
    sheets = {sheet.sheet_id: SheetCells(package.tree(sheet.part)) for sheet in package.sheets
              if sheet.kind == "worksheet" and sheet.part in package}
    for entry in package.tree(part):
        sheet_id = entry.get("i", sheet_id)
        cells = sheets.get(sheet_id)
        cell = cells.cells.get(cell_position(entry.get("r"))) if cells else None
        if cell is None or cell.formula is None:
            dead.add((sheet_id, entry.get("r")))
    return dead


def title_failures(before, after):
    """The document properties list the sheets' titles."""
    part = after.properties
    if part is None or part not in after or part not in before:
        return
    titles = _titles(after, part)
    old = _titles(before, part)
    if old is None or titles is None:
        return
    names = [sheet.name for sheet in before.sheets if sheet.kind == "worksheet"]
    if sum(old[0]) != len(old[1]) or old[0][0] != len(names) or not set(names) <= set(old[1]):
        return  # were wrong already
    if sum(titles[0]) != len(titles[1]):
        yield f"{part} counts {titles[0]} titles and lists {len(titles[1])}"
    missing = [sheet.name for sheet in after.sheets if sheet.kind == "worksheet"
               and sheet.name not in titles[1]]
    if missing:
        yield f"{part} does not list {missing}"


def _titles(package, part):
    pairs = listed = None
    for element in package.tree(part):
        if local(element.tag) == "HeadingPairs":
            pairs = [int(child.text) for child in element.iter() if local(child.tag) == "i4"]
        elif local(element.tag) == "TitlesOfParts":
            listed = [child.text or "" for child in element.iter() if local(child.tag) == "lpstr"]
    return None if pairs is None or listed is None else (pairs, listed)


def formula_texts(package, name):
    """Texts and attribute values of a part in which a sheet can be named; what a hyperlink shows
    is not among them."""
    for element in package.tree(name).iter():
        if local(element.tag) not in ("t", "v") and element.text and "!" in element.text:
            yield element.text
        for key, value in element.attrib.items():
            if "!" in value and local(key) not in SHOWN_TEXTS:
                yield value


def name_failures(before, after, plan):
    """No reference names the former sheet any more, and those to the new ones can be read."""
    scopes = Counter()
    for element in after.tree(after.workbook).iter():
        if local(element.tag) == "definedName":
            scope = element.get("localSheetId")
            scopes[scope, element.get("name").lower()] += 1
            if scope is not None and int(scope) >= len(after.sheets):
                yield f"the name {element.get('name')} belongs to sheet {scope}, which is not there"
    for (scope, name), count in scopes.items():
        if count > 1 and not _had_twice(before, name):
            yield f"the name {name} stands {count} times for sheet {scope}"
    for part in after.names:
        if any(word in part for word in _NO_OWN_SHEETS) or not after.is_xml(part):
            continue
        try:
            yield from _part_names(after, part, plan)
        except SyntaxError:
            continue


def _had_twice(package, name):
    scopes = Counter((element.get("localSheetId"), element.get("name").lower()) for element in
                     package.tree(package.workbook).iter() if local(element.tag) == "definedName")
    return any(count > 1 and key[1] == name for key, count in scopes.items())


def _part_names(package, part, plan):
    for text in formula_texts(package, part):
        if plan.sheets[0].name != plan.model.name and names_sheet(text, plan.model.name):
            yield f"{part} still names the former sheet: {text[:80]!r}"
        wrong = [name for name in unquoted_by_mistake(text)
                 if name in [sheet.name for sheet in plan.sheets]]
        if wrong:
            yield f"{part} names {wrong} without apostrophes: {text[:80]!r}"


def code_name_failures(before, after):
    counted = [Counter(element.get("codeName").lower() for sheet in package.sheets
                       if sheet.part in package for element in package.tree(sheet.part).iter()
                       if local(element.tag) == "sheetPr" and element.get("codeName"))
               for package in (before, after)]
    for name, count in counted[1].items():
        if count > max(1, counted[0][name]):
            yield f"{count} sheets have the code name {name}"


def thread_failures(before, after):
    """A threaded comment's stand-in names the thread by its id."""
    for sheet in after.sheets:
        if not sheet.part:
            continue
        kinds = {rel.kind: rel.target for rel in after.rels(sheet.part).values()}
        if "threadedComment" not in kinds:
            continue
        ids = {element.get("id", "").lower() for element in after.tree(kinds["threadedComment"])}
        for element in after.tree(kinds["comments"]).iter():
            text = element.text or ""
            if local(element.tag) == "author" and text.startswith("tc=") \
                    and text[3:].lower() not in ids:
                yield f"{sheet.name}: the comment by {text} has no thread"


def string_failures(before, after):
    old, new = shared_strings(before), shared_strings(after)
    for index, (mine, other) in enumerate(zip(old, new)):
        if string_text(mine) != string_text(other) or len(mine) != len(other):
            yield f"shared string {index} changed"
            break
    if len(new) < len(old):
        yield f"shared strings went from {len(old)} to {len(new)}"
    part = after.first_related(after.workbook, "sharedStrings")
    if part and part in after:
        unique = after.tree(part).get("uniqueCount")
        if unique is not None and int(unique) != len(new) and _was_right(before):
            yield f"uniqueCount is {unique}, there are {len(new)} shared strings"


def _was_right(package):
    part = package.first_related(package.workbook, "sharedStrings")
    if not part or part not in package:
        return True
    unique = package.tree(part).get("uniqueCount")
    return unique is None or int(unique) == len(shared_strings(package))


def workbook_failures(before, after, plan):
    for check in (selection_failures, table_failures, calc_chain_failures, title_failures,
                  code_name_failures, thread_failures, string_failures):
        yield from check(before, after)
    for check in (sheet_list_failures, name_failures):
        yield from check(before, after, plan)
