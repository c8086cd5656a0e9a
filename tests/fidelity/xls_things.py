"""Facts about what lies on an .xls sheet: comments, drawings, charts, tables, links, controls."""
import struct

import xls_book as biff
import xls_cells
import xls_tables
from facts import Near
from formulas import SELF
from opc import cell_name
from xls_drawing import atoms
from xls_places import BRAI, HLINK, formulas_of, hyperlink
from xls_sheets import digest, names_itself

_NOTE, _PICTURE, _CHART, _CHECK_BOX, _GROUP, _MISC = 0x19, 8, 5, 11, 0, 0x1E
_TEXT, _RECTANGLE = 6, 2


# -------------------------------------------------------------- comments and shapes

def _comments(sheet):
    for data in sheet.all_of(0x1C):
        row, column, flags, number, count = struct.unpack_from("<5H", data)
        author = biff.unicode_text(data, 11, count, data[10] & 1)[0]
        shape = next((each for each in sheet.shapes
                      if each.kind == _NOTE and each.number == number), None)
        yield cell_name((row + 1, column + 1)), flags, author.strip("\0 "), shape


def comments(sheet):
    found = list(_comments(sheet))
    return {"texts": {where: shape.text for where, _, _, shape in found if shape},
            "authors": {where: author for where, _, author, _ in found if author}}


def comment_shapes(sheet):
    found = [each for each in _comments(sheet) if each[3]]
    return {"places and sizes": {where: [Near(number, 1) for number in shape.anchor[::2]]
                                 for where, _, _, shape in found if shape.anchor},
            "colours": {where: shape.properties.get(0x181) for where, _, _, shape in found
                        if shape.properties.get(0x181) is not None},
            "which are shown": [where for where, flags, _, _ in found if flags & 2]}


def _place(shape):
    return shape.anchor and [Near(shape.anchor[0], 1), Near(shape.anchor[2], 1)]


def _media(sheet):
    """The bytes of the workbook's pictures."""
    data = b"".join(sheet.book.joined(biff.MSODRAWINGGROUP))
    return [digest(atom.data[61:]) for atom in atoms(data) if atom.type == 0xF007]


def pictures(sheet):
    media = _media(sheet)
    found = [shape for shape in sheet.shapes if shape.kind == _PICTURE]
    return {"pictures": [media[shape.properties[0x104] - 1] for shape in found
                         if 0 < shape.properties.get(0x104, 0) <= len(media)],
            "places": [_place(shape) for shape in found if shape.anchor]}


def media_once(sheet):
    media = _media(sheet)
    return {"pictures stored once": bool(media) and len(set(media)) == len(media)}


def shapes(sheet):
    found = [shape for shape in sheet.shapes if shape.kind == _MISC]
    star = [shape for shape in found if shape.anchor and shape.text]
    groups = [shape for shape in sheet.shapes if shape.kind == _GROUP]
    return {"shapes": [(shape.form, _place(shape)) for shape in star],
            "their texts": [shape.text for shape in star],
            "their colours": [shape.properties.get(0x181) for shape in star],
            "connectors": [shape.form for shape in found if shape.anchor and not shape.text],
            "groups": [_place(shape) for shape in groups],
            "their members": [shape.text for shape in found if groups and not shape.anchor]}


def text_boxes(sheet):
    found = [shape for shape in sheet.shapes if shape.kind in (_TEXT, _RECTANGLE)]
    return {"texts": [shape.text for shape in found if shape.text],
            "places": [_place(shape) for shape in found],
            "colours": [shape.properties.get(0x181) for shape in found]}


def controls(sheet):
    found = [shape for shape in sheet.shapes if shape.kind == _CHECK_BOX]
    records = [record for record in sheet.raw.own if record.type == biff.OBJ
               and struct.unpack_from("<H", record.data, 4)[0] == _CHECK_BOX]
    return {"controls": [_place(shape) for shape in found],
            "states": [_state(record.data) for record in records if _state(record.data)],
            "linked cells": [sheet.spell(tokens) for record in records
                             for tokens in formulas_of(record)]}


def _state(data):
    """Whether a check box is checked."""
    at = 0
    while at + 6 <= len(data):
        kind, size = struct.unpack_from("<HH", data, at)
        if kind == 0x0A:
            return struct.unpack_from("<H", data, at + 4)[0]
        at += 4 + size
    return None


# ----------------------------------------------------------------------- charts

_KINDS = {0x1017: "column", 0x1018: "line", 0x1019: "pie", 0x101A: "area", 0x101B: "scatter"}


def charts(sheet):
    places = [_place(shape) for shape in sheet.shapes if shape.kind == _CHART]
    return {"kinds": [[_KINDS[record.type] for record in chart if record.type in _KINDS]
                      for chart in sheet.charts],
            "places": places,
            "series": [sum(record.type == 0x1003 for record in chart) for chart in sheet.charts],
            "titles": [biff.unicode_text(record.data, 4, record.data[2], record.data[3] & 1)[0]
                       for chart in sheet.charts for record in chart if record.type == 0x100D],
            "legends": [sum(record.type == 0x1015 for record in chart) for chart in sheet.charts]}


def _chart_formulas(sheet):
    return [sheet.spell(tokens) for chart in sheet.charts for record in chart
            if record.type == BRAI for tokens in formulas_of(record)]


def chart_references(sheet):
    found = _chart_formulas(sheet)
    cells = [formula for formula in found if any(len(token) > 2 for token in formula)]
    return {"to the own sheet": [formula for formula in cells if names_itself(formula)],
            "to other sheets": [formula for formula in cells if not names_itself(formula)]}


# -------------------------------------------------------------------- tables, links

def tables(sheet):
    def names(each):
        return [value for kind, what, value in xls_tables.identities(each.raw)
                if kind in (0x872, 0x878)]
    everywhere = [value for each in sheet.book.pages for value in names(each)]
    own = names(sheet)
    return {"tables": [struct.unpack_from("<4H", data, 27) for data in sheet.all_of(0x872, 0x878)],
            "ids and names of their own": bool(own)
            and all(everywhere.count(value) == 1 for value in own),
            "columns": [b"".join(xls_tables.neutral(record)) for record in sheet.raw.own
                        if record.type in (0x872, 0x878)],
            "styles": [data[18:] for data in sheet.all_of(0x877)
                       if struct.unpack_from("<H", data, 12)[0] == 1]}


def links(sheet):
    facts = {}
    for data in sheet.all_of(HLINK):
        row, = struct.unpack_from("<H", data)
        place = hyperlink(data)[0]
        own = place and place.rpartition("!")[0].strip("'#") == sheet.name
        what = {19: "to the web", 20: "to the own sheet", 21: "to another sheet",
                22: "to mail"}.get(row)
        facts[what] = (SELF if own else None, place.rpartition("!")[2]) if own else place or \
            [text for text in (b"h\0t\0t\0p", b"m\0a\0i\0l\0t\0o") if text in data]
    tips = [data[10:] for data in sheet.all_of(0x800)]
    return {**facts, "tips": tips}


def own_references(sheet):
    """Where the sheet names itself: what each of these places refers to."""
    return {"in formulas": xls_cells.formulas(sheet).get("formulas that name their sheet"),
            "in conditional formats": xls_cells.rules(sheet).get("formula", (None, None))[1],
            "in validations": [xls_cells.validations(sheet)[what][3] for what in ("list", "formula")
                               if what in xls_cells.validations(sheet)],
            "in controls": controls(sheet)["linked cells"],
            "in links": links(sheet).get("to the own sheet"),
            "in charts": chart_references(sheet)["to the own sheet"]}
