"""Facts about an .xlsx sheet's pages, names, protection and views."""
import re

from facts import Near
from opc import is_true, local
from xlsx_book import attribute, deep, first, kids

_FONT_CODES = re.compile(r'&"[^"]*"|&\d+|&K[0-9A-Fa-f+-]+|&G')


def headers(sheet):
    element = first(sheet.root, "headerFooter")
    if element is None:
        return {}
    texts = {local(child.tag): _sections(child.text or "") for child in element}
    own = {"first pages": (("firstHeader", "firstFooter"), "differentFirst"),
           "even pages": (("evenHeader", "evenFooter"), "differentOddEven")}
    facts = {"headers": texts.get("oddHeader"), "footers": texts.get("oddFooter"),
             "fonts": [code for child in element if local(child.tag) == "oddHeader"
                       for code in re.findall(r'&"Georgia[^"]*"|&12', child.text or "")]}
    for what, (names, flag) in own.items():
        if is_true(element.get(flag)):
            facts[what] = {name: texts[name] for name in names if texts.get(name)}
    return facts


def _sections(text):
    """The texts on the left, in the middle and on the right, without fonts and pictures."""
    parts = re.split("&([LCR])", _FONT_CODES.sub("", text))
    found = {"C": parts[0], **dict(zip(parts[1::2], parts[2::2]))}
    return {where: part for where, part in found.items() if part.strip()}


def header_pictures(sheet):
    element = first(sheet.root, "legacyDrawingHF")
    part = element is not None and sheet.target(sheet.part, attribute(element, "id"))
    found = {}
    for shape in deep(sheet.package.tree(part), "shape") if part else ():
        for data in deep(shape, "imagedata"):
            media = sheet.target(part, attribute(data, "relid"))
            if media:
                found[shape.get("id")] = sheet.digest(media)
    header = first(sheet.root, "headerFooter", "oddHeader")
    return {f"picture {place}": media for place, media in found.items()
            if header is not None and "&G" in header.text}


def background(sheet):
    element = first(sheet.root, "picture")
    return {"picture": element is not None
            and sheet.digest(sheet.target(sheet.part, attribute(element, "id")))}


def page(sheet):
    setup, options, margins = (first(sheet.root, name) for name in ("pageSetup", "printOptions",
                                                                    "pageMargins"))
    fit = first(sheet.root, "sheetPr", "pageSetUpPr")
    get = (lambda name: None) if setup is None else setup.get
    on = (lambda name: False) if options is None else lambda name: is_true(options.get(name))
    return {"paper": get("paperSize"), "orientation": get("orientation"),
            "margins": {name: Near(float(value), 0.02) for name, value in
                        (margins.attrib.items() if margins is not None else ())
                        if name in ("left", "right")},
            "fit to pages": fit is not None and is_true(fit.get("fitToPage"))
            and (get("fitToWidth") or "1", get("fitToHeight") or "1"),
            "centred": [name for name in ("horizontalCentered", "verticalCentered") if on(name)],
            "grid lines": on("gridLines"), "row and column headings": on("headings"),
            "order of pages": get("pageOrder"), "black and white": is_true(get("blackAndWhite")),
            "first page number": is_true(get("useFirstPageNumber")) and get("firstPageNumber"),
            "settings of the printer": [sheet.digest(part)
                                        for part in sheet.related("printerSettings")]}


def breaks(sheet):
    return {what: sorted(int(each.get("id")) for each in kids(sheet.root, name, "brk"))
            for what, name in (("between rows", "rowBreaks"), ("between columns", "colBreaks"))}


def _own_names(sheet):
    return {name: sheet.own_target(text) for scope, name, text in sheet.book.names
            if scope == sheet.index}


def print_area(sheet):
    return {"area": _own_names(sheet).get("_xlnm.Print_Area")}


def print_titles(sheet):
    return {"rows and columns": _own_names(sheet).get("_xlnm.Print_Titles")}


def sheet_names(sheet):
    return {"names": _own_names(sheet).get("OwnCells")}


def workbook_names(sheet):
    """A workbook's name that means cells of this sheet, here."""
    seen = {name: text for scope, name, text in sheet.book.names if scope is None}
    seen.update({name: text for scope, name, text in sheet.book.names if scope == sheet.index})
    return {"twins": sheet.own_target(seen.get("Tenth"))}


def autofilter(sheet):
    element = first(sheet.root, "autoFilter")
    if element is None:
        return {}
    chosen = [each.get("val") for each in deep(element, "filter", "customFilter")]
    return {"area": element.get("ref").replace("$", ""), "chosen values": chosen,
            "hidden name": _own_names(sheet).get("_xlnm._FilterDatabase")}


def protection(sheet):
    element = first(sheet.root, "sheetProtection")
    if element is None or not is_true(element.get("sheet")):
        return {}
    return {"protection": True, "password": (element.get("password") or "").upper(),
            "what is allowed": [name for name in ("formatCells", "sort")
                                if element.get(name) in ("0", "false")]
            + [name for name in ("selectLockedCells",) if is_true(element.get(name))],
            "objects and scenarios": [name for name in ("objects", "scenarios")
                                      if is_true(element.get(name))],
            "free ranges": [(each.get("name"), each.get("sqref")) for each in
                            kids(sheet.root, "protectedRanges", "protectedRange")]}


def view(sheet):
    element = first(sheet.root, "sheetViews", "sheetView")
    if element is None:
        return {}
    pane = first(element, "pane")
    cell = [each.get("activeCell") for each in kids(element, "selection")
            if each.get("pane") == "bottomRight"]
    return {"frozen panes": pane is not None and (
                pane.get("state"), float(pane.get("xSplit", "0")), float(pane.get("ySplit", "0"))),
            "zoom": element.get("zoomScale"),
            "grid lines off": element.get("showGridLines") in ("0", "false"),
            "headings off": element.get("showRowColHeaders") in ("0", "false"),
            "zeros hidden": element.get("showZeros") in ("0", "false"),
            "selected cell": cell}


def selected(sheet):
    """Whether it is so that at most one sheet of the workbook is selected."""
    marked = [each for each in sheet.book.sheets
              if any(is_true(view_.get("tabSelected")) for view_ in
                     kids(each.root, "sheetViews", "sheetView"))]
    return {"one selected sheet": len(marked) <= 1}


def tab(sheet):
    return {"colour": sheet.styles.color(first(sheet.root, "sheetPr", "tabColor"))}


def custom_views(sheet):
    return {"views": [(each.get("guid"), each.get("scale")) for each in
                      kids(sheet.root, "customSheetViews", "customSheetView")]}


def ignored_errors(sheet):
    return {"marks": [(each.get("sqref"), is_true(each.get("numberStoredAsText")))
                      for each in deep(sheet.root, "ignoredError")]}


def code_name(sheet):
    """A copy has none or another: only its model is known to macros by that name."""
    own = attribute(first(sheet.root, "sheetPr"), "codeName")
    taken = [attribute(first(each.root, "sheetPr"), "codeName") for each in sheet.book.sheets]
    return {"names that are used once": own is None or taken.count(own) == 1}


def media_once(sheet):
    """Pictures with the same bytes are stored once."""
    parts = [part for part in sheet.package.names if "/media/" in part.lower()]
    digests = [sheet.digest(part) for part in parts]
    return {"pictures stored once": bool(digests) and len(set(digests)) == len(digests)}


def other_names(sheet):
    """Names that belong to another sheet belong to it still."""
    other = sheet.book.sheet("Other")
    return {"their sheet": _own_names(other)} if other else {}
