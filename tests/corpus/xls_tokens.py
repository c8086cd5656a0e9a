"""Formula tokens of BIFF8: spelled so that formulas of two sheets can be compared."""

import struct

from formulas import SELF

_FIXED = {0x01: 4, 0x02: 4, 0x18: 5, 0x1C: 1, 0x1D: 1, 0x1E: 2, 0x1F: 8, 0x20: 7, 0x21: 2, 0x22: 3,
          0x23: 4, 0x24: 4, 0x25: 8, 0x26: 6, 0x27: 6, 0x28: 6, 0x29: 2, 0x2A: 4, 0x2B: 8, 0x2C: 4,
          0x2D: 8, 0x39: 6, 0x3A: 6, 0x3B: 10, 0x3C: 6, 0x3D: 10}
_OF_SHEETS = (0x39, 0x3A, 0x3B, 0x3C, 0x3D)
_NAME, _NAME_OF_BOOK, _EXP, _TABLE = 0x23, 0x39, 0x01, 0x02


def kind_of(token):
    """A token without its class (reference, value, array)."""
    return token if token < 0x20 else (token & 0x1F) | 0x20


def _size(kind, data, at):
    if 0x03 <= kind <= 0x16:
        return 0
    if kind == 0x17:
        return 2 + data[at] * (2 if data[at + 1] & 1 else 1)
    if kind == 0x19:
        jumps = data[at] & 4
        return 3 + (2 * (struct.unpack_from("<H", data, at + 1)[0] + 1) if jumps else 0)
    return _FIXED[kind]


def tokens(data):
    """(token, payload) of each; a KeyError, IndexError or struct.error where one is unknown."""
    at = 0
    while at < len(data):
        size = _size(kind_of(data[at]), data, at + 1)
        if at + 1 + size > len(data):
            raise IndexError("a token goes past the end")
        yield data[at], data[at + 1:at + 1 + size]
        at += 1 + size


def shared_master(data):
    """The (row, column), from 1, that an array's or shared formula's cell points to, or None."""
    if len(data) == 5 and data[0] in (_EXP, _TABLE):
        row, column = struct.unpack_from("<HH", data, 1)
        return row + 1, column + 1
    return None


def _placed(row, column, origin):
    """A reference of a shared formula, seen from a cell."""
    if column & 0x8000:
        row = (row + origin[0] - 1) & 0xFFFF
    if column & 0x4000:
        column = (column & 0xC000) | ((column + origin[1] - 1) & 0xFF)
    return row, column


def unshared(data, origin):
    """The tokens that a shared formula stands for in a cell (row and column from 1)."""
    parts = []
    for token, payload in tokens(data):
        kind = kind_of(token)
        if kind == 0x2C:
            payload = struct.pack("<HH", *_placed(*struct.unpack("<HH", payload), origin))
        elif kind == 0x2D:
            first, last, left, right = struct.unpack("<HHHH", payload)
            first, left = _placed(first, left, origin)
            last, right = _placed(last, right, origin)
            payload = struct.pack("<HHHH", first, last, left, right)
        if kind in (0x2C, 0x2D):
            token -= 8
        parts.append(bytes([token]) + payload)
    return b"".join(parts)


class Speller:
    """Spells the tokens of one sheet; `own` is that sheet's index, None for none.

    `renamed` maps a sheet's index to what stands for it in a range of sheets; with it a copy,
    which still names its model there, can be compared with the model."""

    def __init__(self, book, own, renamed=None):
        self.book, self.own = book, own
        self.renamed = renamed or {}

    def sheets(self, index):
        """What an entry of EXTERNSHEET leads to."""
        if index >= len(self.book.externsheets):
            return "no such entry"
        book, first, last = self.book.externsheets[index]
        if book >= len(self.book.supbooks) or self.book.supbooks[book] != "self":
            return book, first, last
        if first == last:
            return SELF if first == self.own else self._sheet(first)
        return tuple(self.renamed.get(end, self._sheet(end)) for end in (first, last))

    def _sheet(self, index):
        if 0 <= index < len(self.book.sheets):
            return self.book.sheets[index].name
        return index

    def name(self, number):
        """What a defined name (from 1) is: its text, and whether the sheet owns it."""
        if not 0 < number <= len(self.book.names):
            return "no such name"
        name = self.book.names[number - 1]
        if name.scope is None:
            own = refers_to(self.book, name.tokens, self.own)
            return name.text.lower(), SELF if own else None
        return name.text.lower(), SELF if name.scope == self.own else self._sheet(name.scope)

    def spell(self, data):
        """The formula as a tuple that equals that of the same formula of another sheet."""
        try:
            return tuple(self._token(*token) for token in tokens(data))
        except (KeyError, IndexError, struct.error):
            return (data,)

    def _token(self, token, payload):
        kind = kind_of(token)
        if kind in _OF_SHEETS:
            index = struct.unpack_from("<H", payload)[0]
            if kind == _NAME_OF_BOOK and self.is_self(index):
                number = struct.unpack_from("<H", payload, 2)[0]
                return token, self.sheets(index), self.name(number), payload[4:]
            return token, self.sheets(index), payload[2:]
        if kind == _NAME:
            return token, self.name(struct.unpack_from("<H", payload)[0]), payload[2:]
        return token, payload

    def is_self(self, index):
        if index >= len(self.book.externsheets):
            return False
        book = self.book.externsheets[index][0]
        return book < len(self.book.supbooks) and self.book.supbooks[book] == "self"


def sheets_read(book, data):
    """Indexes of the workbook's own sheets that a formula reads by reference."""
    found = set()
    speller = Speller(book, None)
    try:
        for token, payload in tokens(data):
            if kind_of(token) in _OF_SHEETS:
                index = struct.unpack_from("<H", payload)[0]
                if speller.is_self(index):
                    _, first, last = book.externsheets[index]
                    if 0 <= first <= last < len(book.sheets):
                        found.update(range(first, last + 1))
    except (KeyError, IndexError, struct.error):
        pass
    return found


def refers_to(book, data, own):
    """Whether a formula names the sheet itself, not as an end of a range of sheets."""
    speller = Speller(book, own)
    try:
        return any(kind_of(token) in _OF_SHEETS
                   and speller.sheets(struct.unpack_from("<H", payload)[0]) == SELF
                   for token, payload in tokens(data))
    except (KeyError, IndexError, struct.error):
        return False


def bad_indexes(book, data):
    """What is out of range in a formula."""
    try:
        for token, payload in tokens(data):
            kind = kind_of(token)
            if kind in _OF_SHEETS:
                index = struct.unpack_from("<H", payload)[0]
                if index >= len(book.externsheets):
                    yield f"entry {index} of {len(book.externsheets)} in EXTERNSHEET"
            elif kind == _NAME:
                number = struct.unpack_from("<H", payload)[0]
                if not 0 < number <= len(book.names):
                    yield f"name {number} of {len(book.names)}"
    except (KeyError, IndexError, struct.error) as error:
        yield f"tokens that cannot be read ({error!r})"
