"""What a sheet owns, counted in the XML of its parts; knows nothing of how it came there."""

from collections import Counter

from cells import SheetCells
from formulas import names_sheet, names_table
from opc import is_true, local, namespace

# Elements of a worksheet part that are counted under a name of their own.
_SHEET_ELEMENTS = {
    "mergeCell": "merges", "hyperlink": "hyperlinks", "protectedRange": "protected ranges",
    "sheetView": "views", "pane": "panes", "sheetProtection": "protection",
    "pageMargins": "print settings", "pageSetup": "print settings",
    "printOptions": "print settings", "headerFooter": "header/footer",
    "oddHeader": "header/footer", "oddFooter": "header/footer", "evenHeader": "header/footer",
    "evenFooter": "header/footer", "firstHeader": "header/footer", "firstFooter": "header/footer",
    "legacyDrawingHF": "header pictures", "picture": "backgrounds", "oleObject": "embedded objects",
    "control": "controls", "sparklineGroup": "sparkline groups", "sparkline": "sparklines",
    "autoFilter": "autofilters", "scenario": "scenarios", "customSheetView": "custom views",
    "ignoredError": "ignored errors", "customPr": "custom properties", "tabColor": "tab colours",
    "cellWatch": "cell watches", "col": "column widths", "pivotArea": "selections",
}
_DRAWING_ELEMENTS = {
    "pic": "pictures", "sp": "shapes", "cxnSp": "shapes", "grpSp": "shapes",
    "twoCellAnchor": "anchors", "oneCellAnchor": "anchors", "absoluteAnchor": "anchors",
    "relIds": "diagrams", "hlinkClick": "drawing hyperlinks",
}
_RELATED = {
    "drawing": "drawings", "vmlDrawing": "VML drawings", "table": "tables", "chart": "charts",
    "chartEx": "charts", "pivotTable": "pivot tables", "slicer": "slicers", "timeline": "timelines",
    "printerSettings": "printer settings", "image": "picture links", "ctrlProp": "controls",
    "oleObject": "embeddings", "package": "embeddings", "queryTable": "query tables",
    "customProperty": "custom properties",
}


def _is_main(name):
    return not namespace(name).startswith("http://schemas.microsoft.com/")


def count_sheet(package, sheet):
    """What the sheet owns, as a Counter; formats are left to `used_formats`."""
    counts = Counter()
    for part in package.closure(sheet.part):
        for rel in package.rels(part).values():
            if rel.kind in _RELATED:
                counts[_RELATED[rel.kind]] += 1
        kind = package.content_type(part)
        if part == sheet.part:
            _count_worksheet(package.tree(part), counts)
        elif "drawing+xml" in kind:
            _count_elements(package.tree(part), _DRAWING_ELEMENTS, counts)
        elif "comments+xml" in kind:
            _count_elements(package.tree(part), {"comment": "comments"}, counts)
        elif "threadedcomments+xml" in kind:
            _count_elements(package.tree(part), {"threadedComment": "threaded comments"}, counts)
        elif kind.endswith("chart+xml"):
            _count_elements(package.tree(part), {"ser": "chart series"}, counts)
    return counts


def _count_elements(root, names, counts):
    for element in root.iter():
        name = names.get(local(element.tag))
        if name:
            counts[name] += 1


def _count_worksheet(root, counts):
    for element in root.iter():
        name, main = local(element.tag), _is_main(element.tag)
        if name in _SHEET_ELEMENTS:
            counts[_SHEET_ELEMENTS[name]] += 1
        elif name == "conditionalFormatting":
            counts["conditional formats" if main else "conditional formats x14"] += 1
        elif name == "cfRule":
            counts["conditional rules" if main else "conditional rules x14"] += 1
        elif name == "dataValidation":
            counts["validations" if main else "validations x14"] += 1
        elif name in ("rowBreaks", "colBreaks"):
            counts["page breaks"] += sum(local(child.tag) == "brk" for child in element)
        elif name == "row":
            counts["outline rows"] += int(element.get("outlineLevel", "0")) > 0
            counts["row heights"] += is_true(element.get("customHeight"))
            counts["hidden rows"] += is_true(element.get("hidden"))


def used_formats(package, sheet):
    """The cell formats that the sheet's cells, rows and columns use."""
    return SheetCells(package.tree(sheet.part)).used_styles


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
