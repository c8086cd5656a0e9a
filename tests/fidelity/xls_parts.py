"""Records of .xls files that LibreOffice does not write, and how they become a stream."""
import struct
import zlib

BOF, EOF, CONTINUE, INDEX, BOUNDSHEET = 0x809, 0x0A, 0x3C, 0x20B, 0x85
VIEW = bytes.fromhex("0c0d0e0f111122428333444455556666")


def text(characters, count="<H"):
    """A text of UTF-16 units behind its count."""
    return struct.pack(count + "B", len(characters), 1) + characters.encode("utf-16-le")


def future(kind, area=None):
    """The header of records that later versions added."""
    return struct.pack("<HH8s", kind, 1 if area else 0, struct.pack("<4H", *area) if area else b"")


# ------------------------------------------------------------------------ views

def views():
    """A window without grid lines, headings and zeros, at 85 %, frozen below row 2 and right of A."""
    return [(0x23E, struct.pack("<HHHHHHHI", 0x01A8, 0, 0, 64, 0, 0, 85, 0)),
            (0xA0, struct.pack("<HH", 17, 20)), (0x41, struct.pack("<5H", 1, 2, 2, 1, 0)),
            *((0x1D, struct.pack("<BHHHHHHBB", pane, row, column, 0, 1, row, row, column, column))
              for pane, row, column in ((3, 0, 0), (1, 0, 1), (2, 2, 0), (0, 2, 1)))]


def custom_view_of_book():
    name = text("Own")
    return [(0x1A9, struct.pack("<II16sIIIIHHHBB", 0, 1, VIEW, 0, 0, 1000, 800, 600, 0, 0, 0, 0)
             + name)]


def custom_view(sheet):
    """The sheet's part of a custom view, with the sheet's number in TABID."""
    fixed = struct.pack("<16sIIIIHH8sdd", VIEW, sheet, 60, 64, 0, 0, 0, b"\0" * 8, 0.0, 0.0)
    return [(0x1AA, fixed + struct.pack("<HHHH", 0, 0, 0xFFFF, 0xFFFF)), (0x1AB, b"\1\0")]


# ------------------------------------------------------------- pages and pictures

def first_and_even_headers():
    texts = ("&Ceven", "&Leven foot", "&Cfirst", "")
    return [(0x89C, future(0x89C) + b"\0" * 16 + struct.pack("<5H", 3, *map(len, texts))
             + b"".join(text(each) for each in texts if each))]


def printer():
    return [(0x4D, b"\0\0" + b"\1\2\3\4printer" * 20)]


def atom(version, instance, kind, data):
    return struct.pack("<HHI", instance << 4 | version, kind, len(data)) + data


def _blip(png):
    body = atom(0, 0x6E0, 0xF01E, b"\x11" * 16 + b"\xFF" + png)
    head = struct.pack("<BB16sHIIIBBBB", 6, 6, b"\x11" * 16, 0xFF, len(body), 1, 0, 0, 0, 0, 0)
    return atom(2, 6, 0xF007, head + body)


def header_pictures_of_book(png):
    """The drawing group of the pictures in headers: one cluster of two used ids, one picture."""
    group = struct.pack("<IIIIII", 1026, 2, 2, 1, 1, 2)
    art = atom(15, 0, 0xF000, atom(0, 0, 0xF006, group) + atom(15, 1, 0xF001, _blip(png)))
    return [(0x866, future(0x866) + b"\4\0" + art)]


def header_pictures():
    """The drawing of a picture on the left of the header."""
    patriarch = atom(15, 0, 0xF004, atom(1, 0, 0xF009, b"\0" * 16)
                     + atom(2, 0, 0xF00A, struct.pack("<II", 1024, 5)))
    name = "LH\0".encode("utf-16-le")
    properties = struct.pack("<HIHI", 0x4104, 1, 0xC380, len(name)) + name
    shape = atom(15, 0, 0xF004, atom(2, 75, 0xF00A, struct.pack("<II", 1025, 0xA00))
                 + atom(3, 2, 0xF00B, properties)
                 + atom(0, 0, 0xF010, struct.pack("<II", 720, 720)))
    art = atom(15, 0, 0xF002, atom(0, 1, 0xF008, struct.pack("<II", 2, 1025))
               + atom(15, 0, 0xF003, patriarch + shape))
    return [(0x866, future(0x866) + b"\2\0" + art)]


# ----------------------------------------------------------- tables, rules, marks

def _column(number, name):
    return struct.pack("<9I", number, 0, 0, 0, 0, 0, 0, 0, 0) + text(name)


def table():
    """A table "Plan" over J1:K4 with two columns and a style."""
    area = (0, 3, 9, 10)
    fixed = struct.pack("<6IHHI4I16s", 0, 1, 1, 0, 3, 64, 2600, 0, 0x10000, 0, 0, 0, 0, b"\0" * 16)
    body = fixed + text("Plan") + struct.pack("<H", 2) + _column(1, "Day") + _column(2, "Work")
    feature = future(0x872, area) + struct.pack("<HBIHIH4H", 5, 0, 0, 1, len(body), 0, *area) + body
    listed = future(0x877)
    return [(0x871, future(0x871) + struct.pack("<HBIIIH", 5, 1, 0xFFFFFFFF, 0xFFFFFFFF, 2, 0)),
            (0x872, feature),
            (0x877, listed + struct.pack("<HIH", 1, 1, 4) + text("TableStyleMedium4")),
            (0x877, listed + struct.pack("<HI", 2, 1) + text("Plan") + text(""))]


def bars():
    """A conditional format of bars over E26:E30."""
    area = (25, 29, 4, 4)
    header = future(0x879, area) + struct.pack("<HH4HH4H", 1, 0x0020, *area, 1, *area)
    drawn = struct.pack("<HBBBB", 0, 0, 2, 10, 90) + struct.pack("<I4sd", 2, b"\x63\x8e\xc6\xff", 0)
    drawn += struct.pack("<BH", 2, 0) + struct.pack("<BH", 3, 0)
    rule = future(0x87A, area) + struct.pack("<BBHHIHHBHHB16s", 4, 0, 0, 0, 0, 0, 0, 0, 20, 2, 16,
                                             b"\0" * 16) + drawn
    return [(0x879, header), (0x87A, rule)]


def ignored_errors():
    area = (0, 9, 0, 0)
    mark = struct.pack("<HBIHIH4HI", 3, 0, 0, 1, 4, 0, *area, 4)
    return [(0x867, future(0x867) + struct.pack("<HBI", 3, 1, 0)), (0x868, future(0x868) + mark)]


def tip():
    return [(0x800, struct.pack("<H4H", 0x800, 19, 19, 0, 0) + "a tip\0".encode("utf-16-le"))]


def protection():
    return [(0x12, b"\1\0"), (0xDD, b"\1\0"), (0x63, b"\1\0"), (0x13, struct.pack("<H", 0xDAA7))]


def allowed():
    """Sorting and formatting cells are allowed, and E1:E4 is free."""
    area = (0, 3, 4, 4)
    free = struct.pack("<I", 0) + struct.pack("<I", 0) + text("Inputs")
    head = struct.pack("<HBIHIH4H", 2, 0, 0, 1, len(free), 0, *area)
    return [(0x867, future(0x867) + struct.pack("<HBIi", 2, 1, 0xFFFFFFFF, 0x4804)),
            (0x868, future(0x868) + head + free)]


# ----------------------------------------------------------------- the stream

def packed(kind, data):
    return struct.pack("<HH", kind, len(data)) + data


def stream_of(records, offsets):
    """The stream of (type, data) records. `offsets` are those that the records had, None for a
    new one; places that are counted from the beginning of the stream follow."""
    places, at = {}, 0
    for (_, data), old in zip(records, offsets):
        if old is not None:
            places[old] = at
        at += 4 + len(data)
    made = []
    for kind, data in records:
        if kind == BOUNDSHEET:
            data = struct.pack("<I", places[struct.unpack_from("<I", data)[0]]) + data[4:]
        made.append(packed(kind, data))
    return b"".join(made)


def png(red, green, blue):
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))
    row = b"\0" + bytes((red, green, blue)) * 8
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", 8, 8, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(row * 8)) + chunk(b"IEND", b""))
