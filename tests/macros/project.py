"""Writes projects of macros ([MS-OVBA]) into compound files, as a spreadsheet program leaves them: with
what it compiled."""

import os
import struct
import sys
from types import SimpleNamespace

sys.path.append(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "hostile"))
from corpus_modules import xls_compound  # noqa: E402
from xls_writer import CompoundWriter  # noqa: E402

STORAGE, STREAM, ROOT = xls_compound.STORAGE, xls_compound.STREAM, xls_compound.ROOT
_NONE = 0xFFFFFFFF
_RED, _BLACK = 0, 1
_CACHE = 300  # bytes in the place of what a program compiles of a module
SHEET_BASE, BOOK_BASE = "00020820", "00020819"
PROJECT_ID = "{5B6E4C1A-3D2F-4A1B-9C8D-0E1F2A3B4C5D}"


class Module:
    """`base` is that of a sheet or of the workbook; a module of macros alone has none."""

    def __init__(self, name, code="", base=None):
        self.name, self.code, self.base = name, code, base

    def source(self):
        lines = [f'Attribute VB_Name = "{self.name}"']
        if self.base:
            lines += [f'Attribute VB_Base = "0{{{self.base}-0000-0000-C000-000000000046}}"',
                      "Attribute VB_GlobalNameSpace = False", "Attribute VB_Creatable = False",
                      "Attribute VB_PredeclaredId = True", "Attribute VB_Exposed = True",
                      "Attribute VB_TemplateDerived = False", "Attribute VB_Customizable = True"]
        return ("\r\n".join(lines) + "\r\n" + self.code).encode("latin-1")

    def stream(self, cache):
        return bytes((7 * i + len(self.name)) % 256 for i in range(cache)) + compress(self.source())


def compress(data):
    parts = [b"\x01"]
    for at in range(0, len(data), 4096):
        tokens = _tokens(data[at:at + 4096])
        parts.append(struct.pack("<H", 0xB000 | len(tokens) - 1) + tokens)
    return b"".join(parts)


def _tokens(chunk):
    out, at = bytearray(), 0
    while at < len(chunk):
        flags, piece = 0, bytearray()
        for bit in range(8):
            if at == len(chunk):
                break
            back, length = _match(chunk, at)
            if length < 3:
                piece.append(chunk[at])
                at += 1
                continue
            low = 16 - max(4, (at - 1).bit_length())
            piece += struct.pack("<H", back - 1 << low | length - 3)
            flags |= 1 << bit
            at += length
        out += bytes([flags]) + piece
    return bytes(out)


def _match(chunk, at):
    """How far back the longest repetition begins, and its length."""
    longest = (0xFFFF >> max(4, (at - 1).bit_length())) + 3 if at else 0
    size, found = 2, -1
    while size < longest and at + size < len(chunk):
        place = chunk.rfind(chunk[at:at + size + 1], 0, at + size)
        if place < 0:
            break
        size, found = size + 1, place
    return (at - found, size) if found >= 0 else (0, 0)


def _record(kind, data=b""):
    return struct.pack("<HI", kind, len(data)) + data


def _text(kind, kind_in_unicode, text):
    return _record(kind, text.encode("latin-1")) + _record(kind_in_unicode,
                                                           text.encode("utf-16-le"))


def dir_stream(modules, cache=_CACHE):
    library = b"*\\G{00020430-0000-0000-C000-000000000046}#2.0#0#stdole2.tlb#OLE Automation"
    reference = struct.pack("<I", len(library)) + library + bytes(6)
    parts = [_record(1, struct.pack("<I", 1)), _record(2, struct.pack("<I", 0x409)),
             _record(0x14, struct.pack("<I", 0x409)), _record(3, struct.pack("<H", 1252)),
             _record(4, b"VBAProject"), _text(5, 0x40, ""), _text(6, 0x3D, ""),
             _record(7, bytes(4)), _record(8, bytes(4)),
             struct.pack("<HIIH", 9, 4, 0x4AF0, 3), _text(0x0C, 0x3C, ""),
             _text(0x16, 0x3E, "stdole"), _record(0x0D, reference),
             _record(0x0F, struct.pack("<H", len(modules))), _record(0x13, b"\xff\xff")]
    for module in modules:
        parts += [_text(0x19, 0x47, module.name), _text(0x1A, 0x32, module.name),
                  _text(0x1C, 0x48, ""), _record(0x31, struct.pack("<I", cache)),
                  _record(0x1E, bytes(4)), _record(0x2C, b"\xff\xff"),
                  _record(0x22 if module.base else 0x21), _record(0x2B)]
    return b"".join(parts) + _record(0x10)


def _encrypted(data, seed):
    """Hides a value of the project. [MS-OVBA] 2.4.3.2"""
    key = sum(PROJECT_ID.encode()) & 0xFF
    out = [seed, seed ^ 2, seed ^ key]
    last, encrypted1, encrypted2 = key, seed ^ key, seed ^ 2
    for byte in [0] * ((seed & 6) // 2) + [*struct.pack("<I", len(data)), *data]:
        made = byte ^ (encrypted2 + last) & 0xFF
        out.append(made)
        last, encrypted2, encrypted1 = byte, encrypted1, made
    return bytes(out).hex().upper()


def _project(modules):
    def item(module):
        return f"Document={module.name}/&H00000000" if module.base else f"Module={module.name}"
    lines = [f'ID="{PROJECT_ID}"', *map(item, modules), 'Name="VBAProject"', 'HelpContextID="0"',
             'VersionCompatible32="393222000"', f'CMG="{_encrypted(bytes(4), 0x1A)}"',
             f'DPB="{_encrypted(bytes(1), 0x2C)}"', f'GC="{_encrypted(bytes([255]), 0x33)}"', "",
             "[Host Extender Info]",
             "&H00000001={3832D640-CF90-11CF-8E43-00A0C911005A};VBE;&H00000000", "",
             "[Workspace]", *[f"{module.name}=0, 0, 0, 0, C" for module in modules], ""]
    return "\r\n".join(lines).encode("latin-1")


def _names(modules):
    return b"".join(module.name.encode("latin-1") + b"\0" + module.name.encode("utf-16-le")
                    + b"\0\0" for module in modules) + b"\0\0"


def members(modules, is_compiled=True):
    """The members of a project's storage: names with bytes, or with members of their own."""
    cache = _CACHE if is_compiled else 0
    streams = {"dir": compress(dir_stream(modules, cache)),
               "_VBA_PROJECT": b"\xcc\x61\xff\xff\x00\x00\x00"}
    if is_compiled:
        compiled = b"\xcc\x61\x79\x00\x00\x01\x00\xff" + bytes(range(200))
        streams |= {"_VBA_PROJECT": compiled, "__SRP_0": compiled * 3, "__SRP_1": compiled}
    streams |= {module.name: module.stream(cache) for module in modules}
    return {"VBA": streams, "PROJECT": _project(modules), "PROJECTwm": _names(modules)}


def compound_file(tree):
    """A compound file with these members of its root."""
    directory = [xls_compound.Entry("Root Entry", ROOT, _BLACK, (_NONE, _NONE, _NONE), bytes(16), 0,
                                    bytes(16), 0, 0)]
    _add_members(directory, 0, tree)
    return CompoundWriter(SimpleNamespace(directory=directory), {}).to_bytes()


def _add_members(directory, storage, tree):
    numbers = {}
    for name, content in tree.items():
        is_stream = isinstance(content, bytes)
        numbers[name] = len(directory)
        directory.append(xls_compound.Entry(
            name, STREAM if is_stream else STORAGE, _BLACK, (_NONE, _NONE, _NONE), bytes(16), 0,
            bytes(16), 0, 0, content if is_stream else b""))
    order = sorted(tree, key=lambda name: (len(name), name.upper()))
    levels = (len(order) + 1).bit_length() - 1
    child = _linked(directory, [numbers[name] for name in order], levels)
    directory[storage].links = (*directory[storage].links[:2], child)
    for name, content in tree.items():
        if not isinstance(content, bytes):
            _add_members(directory, numbers[name], content)


def _linked(directory, numbers, black_levels):
    """Links entries to a balanced tree and returns the number of its root."""
    if not numbers:
        return _NONE
    middle = len(numbers) // 2
    entry = directory[numbers[middle]]
    entry.color = _BLACK if black_levels > 0 else _RED
    entry.links = (_linked(directory, numbers[:middle], black_levels - 1),
                   _linked(directory, numbers[middle + 1:], black_levels - 1), entry.links[2])
    return numbers[middle]
