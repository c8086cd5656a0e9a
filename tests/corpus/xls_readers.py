"""Apache POI and xlrd: what they see in .xls workbooks."""

import json
import os
import subprocess

import xlrd

from xls_views import BookView, SheetView

_HERE = os.path.dirname(os.path.abspath(__file__))
_JARS = ("poi", "commons-codec", "commons-collections4", "commons-math3")
_CLASS_PATH = [f"/usr/share/java/{name}.jar" for name in _JARS]


class Poi:
    """Apache POI, run once over all workbooks in one Java machine."""

    def __init__(self, folder):
        self.folder = folder
        self.class_path = os.pathsep.join([folder, *_CLASS_PATH])
        self.places = {}

    def read(self, paths):
        """Has the workbooks read; what POI sees lies in a file then, a line for each."""
        subprocess.run(["javac", "-nowarn", "-encoding", "UTF-8", "-cp", self.class_path, "-d",
                        self.folder, os.path.join(_HERE, "HssfDump.java")], check=True)
        self.lines = os.path.join(self.folder, "seen.jsonl")
        with open(self.lines, "wb") as file:
            # An exception keeps its message however often it is thrown.
            subprocess.run(["java", "-Xmx2g", "-XX:+UseSerialGC", "-XX:-OmitStackTraceInFastThrow",
                            "-cp", self.class_path,
                            "HssfDump", os.path.join(self.folder, "log.txt")],
                           input="\n".join(paths).encode(), stdout=file, timeout=1200, check=True)
        self.index()

    def index(self):
        """Finds each workbook's line."""
        with open(self.lines, "rb") as file:
            at = 0
            for line in file:
                path = json.loads(line[:line.index(b'",') + 1] + b"}")["path"]
                self.places[path] = at
                at += len(line)

    def view(self, path):
        """(view, None), or (None, why POI does not open the workbook)."""
        with open(self.lines, "rb") as file:
            file.seek(self.places[path])
            seen = json.loads(file.readline())
        if "error" in seen:
            return None, seen["error"]
        return _poi_view(seen), None


_POI_KINDS = {"NUMERIC": "number", "STRING": "text", "BOOLEAN": "logical", "ERROR": "error",
              "FORMULA": "formula", "BLANK": "blank"}


def _poi_view(seen):
    looks = seen["formats"]
    sheets = []
    for sheet in seen["sheets"]:
        view = SheetView(sheet["name"])
        if not isinstance(sheet["cells"], str):
            for where, (kind, value, xf) in sheet["cells"].items():
                look = looks[xf] if xf < len(looks) else None
                view.cells[tuple(map(int, where.split(",")))] = (_POI_KINDS[kind], value, look)
        if not isinstance(sheet["rows"], str):
            view.rows = sheet["rows"]
        view.owned = {key: value for key, value in sheet.items()
                      if key not in ("name", "cells", "rows")}
        sheets.append(view)
    names = seen["names"]
    if isinstance(names, str):
        names = None
    else:
        names = [(None if scope < 0 else scope, name, text or "") for scope, name, text in names]
    return BookView(sheets, looks, names)


_XLRD_KINDS = {1: "text", 2: "number", 3: "number", 4: "logical", 5: "error", 6: "blank"}


def xlrd_view(book):
    """What xlrd sees in a workbook; our own reader tells which cells hold formulas."""
    with open(os.devnull, "w", encoding="utf-8") as log:
        seen = xlrd.open_workbook(book.file.path, formatting_info=True, ragged_rows=True,
                                  logfile=log)
    looks = [_look(seen, xf) for xf in seen.xf_list]
    worksheets = [sheet for sheet in book.sheets if sheet.kind == 0]
    sheets = []
    for sheet in seen.sheets():
        own = next((known for known in worksheets if known.name == sheet.name), None)
        sheets.append(_xlrd_sheet(sheet, looks, own.formulas if own else ()))
    names = [(None if name.scope < 0 else name.scope, name.name, "")
             for name in seen.name_obj_list]
    return BookView(sheets, looks, names if len(sheets) == len(book.sheets) else None)


def _xlrd_sheet(sheet, looks, formulas):
    view = SheetView(sheet.name)
    for row in range(sheet.nrows):
        kinds, values = sheet.row_types(row), sheet.row_values(row)
        for column, kind in enumerate(kinds):
            if not kind:
                continue
            where = (row + 1, column + 1)
            xf = sheet.cell_xf_index(row, column)
            look = looks[xf] if xf < len(looks) else None
            view.cells[where] = ("formula", None, look) if where in formulas else \
                (_XLRD_KINDS[kind], values[column], look)
    view.rows = {row: _fields(info, ("height", "hidden", "outline_level", "xf_index"))
                 for row, info in sheet.rowinfo_map.items()}
    view.owned = {
        "merges": sorted(sheet.merged_cells),
        "columns": {column: _fields(info, ("width", "xf_index", "hidden", "outline_level"))
                    for column, info in sheet.colinfo_map.items()},
        "hyperlinks": [_fields(link, ("frowx", "lrowx", "fcolx", "lcolx", "type", "url_or_path",
                                      "textmark", "quicktip")) for link in sheet.hyperlink_list],
        "comments": {str(where): _fields(note, ("text", "author", "show"))
                     for where, note in sheet.cell_note_map.items()},
        "row breaks": sheet.horizontal_page_breaks, "column breaks": sheet.vertical_page_breaks,
        "visibility": sheet.visibility, "grid lines": sheet.show_grid_lines,
        "panes": [sheet.panes_are_frozen, sheet.horz_split_pos, sheet.vert_split_pos],
    }
    return view


def _fields(thing, names):
    return [getattr(thing, name, None) for name in names]


def _look(seen, xf):
    """A cell format with everything that it refers to."""
    known = seen.format_map.get(xf.format_key)
    font = seen.font_list[xf.font_index] if xf.font_index < len(seen.font_list) else None
    parts = [known.format_str if known else None, xf.locked if hasattr(xf, "locked") else None]
    for part in (font, xf.alignment, xf.background, xf.border, xf.protection):
        parts.append(sorted((key, value) for key, value in vars(part).items()
                            if isinstance(value, (int, float, str))) if part else None)
    return repr(parts)


