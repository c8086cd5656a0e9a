"""Facts about an .xls sheet's pages, names, protection and views."""
import re
import struct

import xls_book as biff
from facts import Near
from xls_drawing import DrawingGroup, atoms, header_parts
from xls_sheets import digest, names_itself


def _text(data):
    if not data:
        return None
    count, wide = struct.unpack_from("<HB", data)
    return biff.unicode_text(data, 3, count, wide & 1)[0]


def headers(sheet):
    later = sheet.first_of(0x89C) or b""
    return {"headers": _sections(_text(sheet.first_of(0x14))),
            "footers": _sections(_text(sheet.first_of(0x15))),
            "first and even pages": later[28:]}


def _sections(text):
    """Without the codes of fonts, which programs set in their own ways, and of pictures."""
    text = re.sub(r'&"[^"]*"|&\d+|&G', "", text or "")
    parts = re.split("&([LCR])", text)
    found = {"C": parts[0], **dict(zip(parts[1::2], parts[2::2]))}
    return {where: part for where, part in found.items() if part.strip()}


def header_pictures(sheet):
    drawing, group = header_parts(sheet.raw.own), header_parts(sheet.book.globals)
    names = [atom.data.decode("utf-16-le", "replace").rstrip("\0")[-2:] for atom in
             atoms(drawing.data) if atom.type == 0xF00B]
    pictures_ = DrawingGroup(group.data).references
    return {"pictures": [name for name in names if pictures_],
            "their code": "&G" in (_text(sheet.first_of(0x14)) or "")}


def background(sheet):
    data = sheet.first_of(0xE9)
    return {"picture": data and digest(data)}


def page(sheet):
    setup = sheet.first_of(0xA1)
    if not setup:
        return {}
    paper, _, start, wide, high, flags = struct.unpack_from("<6H", setup)
    margins = {kind: Near(struct.unpack("<d", sheet.first_of(kind))[0], 0.02)
               for kind in (0x26, 0x27) if sheet.first_of(kind)}
    fits = struct.unpack("<H", sheet.first_of(0x81) or b"\0\0")[0] & 0x100
    return {"paper": paper, "orientation": "portrait" if flags & 2 else "landscape",
            "margins": margins, "fit to pages": bool(fits) and (wide, high),
            "centred": [kind for kind in (0x83, 0x84) if sheet.flag(kind)],
            "grid lines": sheet.flag(0x2B), "row and column headings": sheet.flag(0x2A),
            "order of pages": flags & 1, "first page number": bool(flags & 0x80) and start,
            "settings of the printer": sheet.all_of(0x4D)}


def breaks(sheet):
    return {what: sorted(struct.unpack_from("<H", data, 2 + 6 * at)[0] for data in
                         sheet.all_of(kind) for at in range(struct.unpack_from("<H", data)[0]))
            for what, kind in (("between rows", 0x1B), ("between columns", 0x1A))}


# ----------------------------------------------------------------- names, protection

def print_area(sheet):
    return {"area": sheet.names().get("\6")}


def print_titles(sheet):
    return {"rows and columns": sheet.names().get("\7")}


def sheet_names(sheet):
    return {"names": sheet.names().get("owncells")}


def workbook_names(sheet):
    seen = {name.text: sheet.spell(name.tokens) for name in sheet.book.names if name.scope is None}
    seen.update({name.text: sheet.spell(name.tokens) for name in sheet.book.names
                 if name.scope == sheet.index})
    found = seen.get("Tenth")
    return {"twins": found if found and names_itself(found) else None}


def other_names(sheet):
    other = sheet.book.sheet("Other")
    return {"their sheet": {name: formula for name, formula in other.names().items()
                            if name in ("\6", "owncells")}} if other else {}


def autofilter(sheet):
    chosen = [data[:2] + data[-4:] for data in sheet.all_of(0x9E)]
    return {"buttons": sheet.all_of(0x9D), "chosen values": chosen,
            "hidden name": sheet.names().get("\r")}


def protection(sheet):
    if not sheet.flag(0x12):
        return {}
    rights = [data[19:23] for data in sheet.all_of(0x867)
              if struct.unpack_from("<H", data, 12)[0] == 2]
    return {"protection": True, "password": sheet.all_of(0x13),
            "what is allowed": [struct.unpack("<I", data)[0] & 0x4804 for data in rights
                                if len(data) == 4],
            "objects and scenarios": [kind for kind in (0x63, 0xDD) if sheet.flag(kind)],
            "free ranges": sheet.raw.protected_ranges}


def view(sheet):
    window = sheet.first_of(0x23E)
    if not window:
        return {}
    flags, = struct.unpack_from("<H", window)
    scale, pane = sheet.first_of(0xA0), sheet.first_of(0x41)
    return {"frozen panes": bool(flags & 8) and pane and struct.unpack_from("<HH", pane),
            "zoom": scale and Near(struct.unpack("<HH", scale)[0] / struct.unpack("<HH", scale)[1],
                                   0.005),
            "grid lines off": not flags & 2, "headings off": not flags & 4,
            "zeros hidden": not flags & 16,
            "selected cell": [struct.unpack_from("<HH", data, 1) for data in sheet.all_of(0x1D)
                              if data[0] == 0]}


def selected(sheet):
    marked = [each for each in sheet.book.pages
              if struct.unpack_from("<H", each.first_of(0x23E) or b"\0\0")[0] & 0x200]
    return {"one selected sheet": len(marked) <= 1}


def tab(sheet):
    data = sheet.first_of(0x862)
    return {"colour": data and sheet.book.color(struct.unpack_from("<I", data, 16)[0] & 0x7F)}


def custom_views(sheet):
    ids = {data[8:24] for data in sheet.book.all_of(0x1A9)}
    tabs = b"".join(sheet.book.all_of(biff.TABID))
    own = next(iter(struct.unpack_from("<H", tabs, 2 * sheet.index)), None) \
        if len(tabs) > 2 * sheet.index else None
    return {"views": [data[:16] for data in sheet.all_of(0x1AA)
                      if data[:16] in ids and struct.unpack_from("<I", data, 16)[0] == own]}


def ignored_errors(sheet):
    return {"marks": [data[27:] for data in sheet.all_of(0x868)
                      if struct.unpack_from("<H", data, 12)[0] == 3]}
