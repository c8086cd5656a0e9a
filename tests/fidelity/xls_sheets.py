"""What the measuring code knows of an .xls workbook, formats resolved to what they look like."""
import functools
import hashlib
import struct

import xls_book as biff
from formulas import SELF
from xls_drawing import atoms, properties
from xls_tokens import Speller

FONT, FORMAT, PALETTE = 0x31, 0x41E, 0x92
_STANDARD = ("000000", "FFFFFF", "FF0000", "00FF00", "0000FF", "FFFF00", "FF00FF", "00FFFF",
             "000000", "FFFFFF", "FF0000", "00FF00", "0000FF", "FFFF00", "FF00FF", "00FFFF",
             "800000", "008000", "000080", "808000", "800080", "008080", "C0C0C0", "808080",
             "9999FF", "993366", "FFFFCC", "CCFFFF", "660066", "FF8080", "0066CC", "CCCCFF",
             "000080", "FF00FF", "FFFF00", "00FFFF", "800080", "800000", "008080", "0000FF",
             "00CCFF", "CCFFFF", "CCFFCC", "FFFF99", "99CCFF", "FF99CC", "CC99FF", "FFCC99",
             "3366FF", "33CCCC", "99CC00", "FFCC00", "FF9900", "FF6600", "666699", "969696",
             "003366", "339966", "003300", "333300", "993300", "993366", "333399", "333333")
_SHAPE, _ANCHOR = 0xF00A, 0xF010
_PLAIN_FONT = ("Calibri", 220, False, 0, 0, "000000")
_CODES = {1: "0", 2: "0.00", 3: "#,##0", 4: "#,##0.00", 9: "0%", 10: "0.00%"}


def names_itself(formula):
    """Whether a spelled formula names the sheet that it stands on."""
    return any(SELF in token for token in formula)


def digest(data):
    return hashlib.sha256(data).hexdigest()[:12]


class Shape:
    """What belongs to one OBJ record."""

    def __init__(self, kind, data, art, text):
        self.kind, self.text = kind, text
        self.form = self.anchor = None
        self.properties = {}
        for atom in atoms(art):
            if atom.type == _SHAPE:
                self.form = atom.instance
            elif atom.type == _ANCHOR and len(atom.data) >= 18:
                self.anchor = struct.unpack_from("<8H", atom.data, 2)
            elif atom.type in (0xF00B, 0xF122):
                self.properties.update({number: value for number, value, _ in properties(atom)})
        self.number = struct.unpack_from("<H", data, 6)[0]


class Sheet:
    def __init__(self, book, index):
        self.book, self.index, self.raw = book, index, book.sheets[index]
        self.name = self.raw.name
        self.speller = Speller(book, index)

    def all_of(self, *kinds):
        return [record.data for record in self.raw.own if record.type in kinds]

    def first_of(self, kind):
        return next(iter(self.all_of(kind)), None)

    def flag(self, kind):
        return (self.first_of(kind) or b"\0")[:1] == b"\1"

    def spell(self, tokens):
        """A formula as any sheet would have it."""
        return self.speller.spell(tokens)

    def names(self):
        """The sheet's own names: text to spelled formula."""
        return {name.text.lower(): self.spell(name.tokens) for name in self.book.names
                if name.scope == self.index}

    @functools.cached_property
    def shapes(self):
        """The objects of the sheet in their order, with the text of each."""
        found, art, waiting, text, is_text = [], b"", None, "", False
        for record in self.raw.own:
            if record.type == biff.MSODRAWING:
                art += record.data
            elif record.type == biff.OBJ:
                if waiting:
                    found.append(Shape(*waiting, text))
                kind = struct.unpack_from("<H", record.data, 4)[0]
                waiting, art, text = (kind, record.data, art), b"", ""
            elif record.type == biff.TXO:
                is_text = struct.unpack_from("<H", record.data, 10)[0] > 0
            elif record.type == biff.CONTINUE and is_text:
                wide = record.data[0] & 1
                count = (len(record.data) - 1) // (2 if wide else 1)
                text, is_text = biff.unicode_text(record.data, 1, count, wide)[0], False
        if waiting:
            found.append(Shape(*waiting, text))
        return found

    @functools.cached_property
    def charts(self):
        """The records of each chart."""
        found = []
        for record in self.raw.records:
            if record.depth > 1 and record.type == biff.BOF:
                found.append([])
            if record.depth > 1:
                found[-1].append(record)
        return found


class Book(biff.Book):
    def __init__(self, path, stream=None):
        super().__init__(path, stream)
        self.pages = [Sheet(self, index) for index in range(len(self.sheets))]
        self.colors = list(_STANDARD)
        for data in self.all_of(PALETTE):
            count = struct.unpack_from("<H", data)[0]
            self.colors[8:8 + count] = [data[2 + 4 * at:5 + 4 * at].hex().upper()
                                        for at in range(count)]
        self.fonts = self.all_of(FONT)
        self.codes = {}
        for data in self.all_of(FORMAT):
            number, count, wide = struct.unpack_from("<HHB", data)
            self.codes[number] = biff.unicode_text(data, 5, count, wide & 1)[0]

    def sheet(self, name):
        return next((page for page in self.pages if page.name == name), None)

    def color(self, index):
        return self.colors[index] if index < len(self.colors) else "automatic"

    def font(self, index):
        data = self.fonts[index - (index > 4)]  # number 4 is never used
        height, flags, color, weight, _, underline = struct.unpack_from("<HHHHHB", data)
        name = biff.unicode_text(data, 16, data[14], data[15] & 1)[0]
        color = self.color(color)
        return (name, height, weight > 500, flags & 0x0A, underline,
                "000000" if color == "automatic" else color)

    @functools.lru_cache(maxsize=None)
    def format(self, index):
        """What a cell format looks like, by aspect; None for what a plain cell has."""
        font, code, flags = struct.unpack_from("<HHH", self.formats[index])
        align, turned, indent, _ = struct.unpack_from("<BBBB", self.formats[index], 6)
        lines, sides, fill = struct.unpack_from("<IIH", self.formats[index], 10)
        pattern, front, back = sides >> 26, self.color(fill & 0x7F), self.color(fill >> 7 & 0x7F)
        borders = {side: (lines >> 4 * place & 15, self._line_color(place, lines, sides))
                   for place, side in enumerate(("left", "right", "top", "bottom"))
                   if lines >> 4 * place & 15}
        alignment = (align & 7, align >> 4 & 7, bool(align & 8), turned, indent & 15,
                     bool(indent & 16))
        number = self.codes.get(code, _CODES.get(code, code))
        return {"fonts": None if self.font(font) == _PLAIN_FONT else self.font(font),
                "fills": ("solid", front) if pattern == 1 else None,
                "patterned fills": (pattern, front, back) if pattern > 1 else None,
                "borders": borders or None,
                "diagonal borders": (lines >> 30, sides >> 21 & 15) if lines >> 30 else None,
                "number formats": None if number in (0, "General") else
                str(number).replace("\\", "").lower(),
                "alignment": None if alignment == (0, 2, False, 0, 0, False) else alignment,
                "locking": None if flags & 3 == 1 else (flags & 1, flags >> 1 & 1)}

    def _line_color(self, place, lines, sides):
        value = (lines >> 16, lines >> 23, sides, sides >> 7)[place] & 0x7F
        color = self.color(value)
        return "000000" if color == "automatic" else color
