"""What a sheet owns, counted in the XML of its parts; knows nothing of how it came there."""

from collections import Counter

from formulas import names_sheet, names_table
from opc import local, namespace

# What is counted in a worksheet part, in drawings, comments and charts, and by relationships. What
# stands in an extension of the format has a name of its own there, or is none of these.
_SHEET_ELEMENTS = {
    "mergeCell": "merges", "hyperlink": "hyperlinks", "sheetView": "views", "pane": "panes",
    "sheetProtection": "protection", "headerFooter": "header/footer", "oddHeader": "header/footer",
    "oddFooter": "header/footer", "evenHeader": "header/footer", "evenFooter": "header/footer",
    "firstHeader": "header/footer", "firstFooter": "header/footer", "autoFilter": "autofilters",
    "brk": "page breaks", "conditionalFormatting": "conditional formats",
    "cfRule": "conditional rules", "dataValidation": "validations",
}
_DRAWING_ELEMENTS = {
    "pic": "pictures", "sp": "shapes", "cxnSp": "shapes", "grpSp": "shapes",
    "twoCellAnchor": "anchors", "oneCellAnchor": "anchors", "absoluteAnchor": "anchors",
}
_RELATED = {"table": "tables", "chart": "charts", "chartEx": "charts",
            "pivotTable": "pivot tables"}


def count_sheet(package, sheet):
    """What the sheet owns, as a Counter."""
    counts = Counter()
    for part in package.closure(sheet.part):
        counts.update(_RELATED[rel.kind] for rel in package.rels(part).values()
                      if rel.kind in _RELATED)
        names, kind = {}, package.content_type(part)
        if part == sheet.part:
            names = _SHEET_ELEMENTS
        elif "drawing+xml" in kind:
            names = _DRAWING_ELEMENTS
        elif "comments+xml" in kind:
            names = {"comment": "comments"}
        elif kind.endswith("chart+xml"):
            names = {"ser": "chart series"}
        if names:
            counts.update(names[local(element.tag)] for element in package.tree(part).iter()
                          if local(element.tag) in names and not _is_extension(element.tag))
    return counts


def _is_extension(name):
    return namespace(name).startswith("http://schemas.microsoft.com/")


def defined_names(package):
    """The workbook's names: (sheet index or None, name, formula)."""
    found = []
    for element in package.tree(package.workbook).iter():
        if local(element.tag) == "definedName":
            index = element.get("localSheetId")
            found.append((None if index is None else int(index), element.get("name"),
                          element.text or ""))
    return found


def sheet_names(names, index, sheet, tables=()):
    """Own names of the sheet at an index, and with them the workbook's names that refer to it or
    to one of its tables: what a copy of the sheet has to own. By lower-case name, with the
    formula."""
    own = {name.lower(): formula for scope, name, formula in names if scope == index}
    shared = {name.lower(): formula for scope, name, formula in names
              if scope is None and (names_sheet(formula, sheet) or names_table(formula, tables))}
    return {**shared, **own}
