"""LibreOffice and Gnumeric: what they see in .xls workbooks, read from what they save."""

import gzip
import os
import re
import subprocess
from collections import Counter
from multiprocessing.pool import ThreadPool
from xml.etree import ElementTree

from cells import SheetCells, shared_strings, string_text
from counts import count_sheet
from opc import Package, inside, local
from volatile import changing_cells
from xls_book import LAST_CELL
from xls_views import BookView, SheetView

_CONTROL = re.compile(r"[\x00-\x08\x0b-\x1f]|_x[0-9A-Fa-f]{4}_")
# No merges: LibreOffice makes some of texts that are centred across empty cells.
_OWNED = ("comments", "pictures", "shapes", "anchors", "charts", "chart series",
          "validations", "conditional formats", "conditional rules", "hyperlinks", "autofilters",
          "page breaks", "protection", "panes", "header/footer")
_OFFICE_KINDS = {"s": "text", "inlineStr": "text", "str": "text", "n": "number", "b": "logical",
                 "e": "error"}


def _plain(text):
    """A text without what XML cannot hold, which each program writes in its own way."""
    return _CONTROL.sub("", text)


def office_view(path):
    """What LibreOffice saved as .xlsx."""
    package = Package(path)
    strings = [string_text(item) for item in shared_strings(package)]
    sheets = []
    for sheet in package.sheets:
        view = SheetView(sheet.name)
        if sheet.kind == "worksheet":
            cells = SheetCells(package.tree(sheet.part))
            texts = _formula_texts(cells)
            for where, cell in cells.cells.items():
                if where in texts:
                    view.cells[where] = ("formula", texts[where], None)
                elif cell.value is not None:
                    view.cells[where] = (*_value(cell, strings), None)
            counted = count_sheet(package, sheet)
            view.owned = {what: counted[what] for what in _OWNED}
            view.owned["column widths"] = column_widths(cells.root)
        sheets.append(view)
    return BookView(sheets, same_text=_plain)


def _formula_texts(cells):
    """The formula of every formula cell. Of an array's cells LibreOffice gives it to the first
    alone, and only their values to the others."""
    texts = dict(cells.formula_texts)
    for area, first in cells.array_areas("array"):
        texts.update((where, texts[first]) for where in cells.cells if inside(where, area))
    return texts


def column_widths(root):
    """(width, hidden, level) of the columns that differ from the others. LibreOffice leaves out
    those within a 16th of a character of the usual width, unless most of their cells have a format
    of their own, which values that are written around them change."""
    format_of = next((child for child in root if local(child.tag) == "sheetFormatPr"), None)
    usual = float(format_of.get("defaultColWidth", "0")) if format_of is not None else 0.0
    found = {}
    for element in root.iter():
        if local(element.tag) != "col":
            continue
        width = float(element.get("width", usual))
        hidden, level = element.get("hidden", "false"), element.get("outlineLevel", "0")
        if abs(width - usual) >= 1 / 16 or hidden != "false" or level != "0":
            last = min(int(element.get("max")), LAST_CELL[1])
            found.update((column, (width, hidden, level))
                         for column in range(int(element.get("min")), last + 1))
    return found


def _value(cell, strings):
    kind = _OFFICE_KINDS[cell.kind]
    if cell.kind == "s":
        return kind, strings[int(cell.value)]
    return kind, float(cell.value) if kind == "number" else cell.value


def stored_values(path):
    """The values of formula cells in what LibreOffice saved, by sheet and position, without those
    that change by themselves."""
    package = Package(path)
    values, texts = {}, {}
    for sheet in package.sheets:
        if sheet.kind == "worksheet":
            cells = SheetCells(package.tree(sheet.part))
            for where, text in cells.formula_texts.items():
                texts[sheet.name, where] = text
                values[sheet.name, where] = cells.cells[where].kind, cells.cells[where].value
    for key in changing_cells(texts):
        del values[key]
    return values


def gnumeric_convert(paths, outdir, jobs, seconds=60):
    """Has Gnumeric save each workbook in its own format; the path made of each, or None."""
    def convert(path):
        made = os.path.join(outdir, os.path.basename(path) + ".gnumeric")
        try:
            subprocess.run(["ssconvert", "-T", "Gnumeric_XmlIO:sax", path, made],
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=seconds,
                           check=False)
        except subprocess.TimeoutExpired:
            return None
        return made if os.path.exists(made) else None
    os.makedirs(outdir, exist_ok=True)
    with ThreadPool(jobs) as threads:
        return dict(zip(paths, threads.map(convert, paths, chunksize=1)))


_GNUMERIC_KINDS = {"20": "logical", "30": "number", "40": "number", "50": "error", "60": "text"}


def gnumeric_view(path):
    """What Gnumeric saved in its own format."""
    with open(path, "rb") as file:
        data = file.read()
    if data[:2] == b"\x1f\x8b":
        data = gzip.decompress(data)
    sheets = []
    for element in ElementTree.fromstring(data).iter():
        if local(element.tag) == "Sheet":
            sheets.append(_gnumeric_sheet(element))
    return BookView(sheets, same_text=_plain)


def _gnumeric_sheet(element):
    parts = {local(child.tag): child for child in element}
    view = SheetView(parts["Name"].text or "")
    shared = {}
    for cell in parts.get("Cells", ()):
        where = (int(cell.get("Row")) + 1, int(cell.get("Col")) + 1)
        view.cells[where] = (*_gnumeric_value(cell, shared), None)
    owned = Counter(local(child.tag) for child in parts.get("Objects", ()))
    owned["merges"] = len(parts.get("MergedRegions", ()))
    owned["filters"] = len(parts.get("Filters", ()))
    owned["column widths"] = sum(local(child.tag) == "ColInfo" for child in parts.get("Cols", ()))
    for child in parts.get("PrintInformation", ()):
        if "break" in local(child.tag).lower():
            owned[local(child.tag)] = len(child)
    view.owned = dict(owned)
    return view


def _gnumeric_value(cell, shared):
    text, number = cell.text or "", cell.get("ExprID")
    if number or (cell.get("ValueType") is None and text.startswith("=")):
        # Only the first of the cells that share an expression spells it.
        shared[number] = shared.get(number) if number and not text else text
        return "formula", None
    kind = _GNUMERIC_KINDS.get(cell.get("ValueType"), "blank")
    return kind, float(text) if kind == "number" else text


def recalculating_profile(folder):
    """Settings of a LibreOffice that computes every formula when it opens a workbook."""
    profile = os.path.join(folder, "profile-recalculating")
    os.makedirs(os.path.join(profile, "user"), exist_ok=True)
    item = ('<item oor:path="/org.openoffice.Office.Calc/Formula/Load">'
            '<prop oor:name="OOXMLRecalcMode" oor:op="fuse"><value>0</value></prop></item>')
    with open(os.path.join(profile, "user", "registrymodifications.xcu"), "w",
              encoding="utf-8") as file:
        file.write('<?xml version="1.0" encoding="UTF-8"?>\n<oor:items '
                   'xmlns:oor="http://openoffice.org/2001/registry">' + item + "</oor:items>\n")
    return profile
