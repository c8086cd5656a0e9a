"""The macros of a workbook ([MS-OVBA]): a project in a compound file, and whether it is well made."""

import re
import struct
from collections import Counter
from dataclasses import dataclass

_VERSION = 9  # a record whose size says 4, and whose data has 6 bytes
_OF_MODULE = {0x19, 0x47, 0x1A, 0x32, 0x1C, 0x48, 0x31, 0x1E, 0x2C, 0x21, 0x22, 0x25, 0x28, 0x2B}
_MODULES, _END = 0x0F, 0x10
COMPILED = b"\xcc\x61\xff\xff\x00\x00\x00"  # what says that nothing is compiled
STORAGE = "_VBA_PROJECT_CUR"  # in an .xls workbook


def decompress(container):
    if container[:1] != b"\x01":
        raise ValueError("no compressed container")
    out, at = bytearray(), 1
    while at < len(container):
        header, = struct.unpack_from("<H", container, at)
        end = at + (header & 0xFFF) + 3
        if header >> 12 & 7 != 3 or end > len(container):
            raise ValueError(f"a damaged chunk at {at}")
        out += _tokens(container[at + 2:end]) if header >> 15 else container[at + 2:end]
        at = end
    return bytes(out)


def _tokens(data):
    out, at = bytearray(), 0
    while at < len(data):
        flags, at = data[at], at + 1
        for bit in range(8):
            if at == len(data):
                break
            if not flags >> bit & 1:
                out.append(data[at])
                at += 1
                continue
            token, = struct.unpack_from("<H", data, at)
            bits = max(4, (len(out) - 1).bit_length())
            back = (token >> 16 - bits) + 1
            if back > len(out):
                raise ValueError("a copy from before the chunk")
            for _ in range((token & 0xFFFF >> bits) + 3):
                out.append(out[-back])
            at += 2
    return bytes(out)


@dataclass
class Module:
    name: str
    bytes: bytes = b""  # the name in the code page
    stream: str = ""
    offset: int = 0
    is_document: bool = False
    source: bytes = b""

    @property
    def code(self):
        """Its lines without the attributes."""
        return [line for line in self.source.rstrip(b"\0").splitlines()
                if line.strip() and not line.startswith(b"Attribute ")]


class Project:
    """`entries` of a compound file, and the path of the storage. `problems` says what is against
    the rules."""

    def __init__(self, entries, storage=()):
        self.problems = []
        self._entries, self._storage = entries, storage
        self.records = list(_records(decompress(self.stream("VBA", "dir"))))
        self.modules = list(self._modules())
        self.lines = re.split(rb"\r\n|\n\r|\r|\n", self.stream("PROJECT"))
        self.documents = [line[9:].partition(b"/")[0] for line in self.lines
                          if line.startswith(b"Document=")]
        self._judge()

    def stream(self, *path):
        return self._entries[(*self._storage, *path)].data

    def paths(self):
        return [path for path in self._entries if path[:len(self._storage)] == self._storage]

    def module(self, name):
        return next((each for each in self.modules if each.name.lower() == name.lower()), None)

    @property
    def is_compiled(self):
        return self.stream("VBA", "_VBA_PROJECT") != COMPILED or any(
            module.offset for module in self.modules) or any(
            path[-1].startswith("__SRP_") for path in self.paths() if path)

    def outside_of_modules(self):
        """The records of the project that are not those of a module, without their number."""
        return [record for record in self.records
                if record[0] not in _OF_MODULE and record[0] != _MODULES]

    def _modules(self):
        found = None
        for kind, data in self.records:
            if kind == 0x19:
                found = Module(data.decode("latin-1"), data)
            elif kind == 0x47:
                found.name = data.decode("utf-16-le")
            elif kind == 0x32:
                found.stream = data.decode("utf-16-le")
            elif kind == 0x31:
                found.offset, = struct.unpack("<I", data)
            elif kind == 0x22:
                found.is_document = True
            elif kind == 0x2B:
                found.source = decompress(self.stream("VBA", found.stream)[found.offset:])
                yield found

    def _judge(self):
        counts = [struct.unpack("<H", data)[0] for kind, data in self.records if kind == _MODULES]
        if counts != [len(self.modules)]:
            self.problems.append(f"{counts} modules are counted, {len(self.modules)} are there")
        if self.records[-1][0] != _END:
            self.problems.append("the dir stream has no end")
        names = Counter(module.name.lower() for module in self.modules)
        self.problems += [f"two modules are {name}" for name, count in names.items() if count > 1]
        for module in self.modules:
            if not module.source.startswith(b'Attribute VB_Name = "' + module.bytes + b'"'):
                self.problems.append(f"the code of {module.name} has another name")
        unknown = set(self.documents) - {each.bytes for each in self.modules if each.is_document}
        if unknown or len(set(self.documents)) != len(self.documents):
            self.problems.append(f"the documents are {self.documents}")
        self._judge_names()

    def _judge_names(self):
        if (*self._storage, "PROJECTwm") not in self._entries:
            return
        listed = sorted(_names(self.stream("PROJECTwm")))
        if listed != sorted((module.bytes, module.name) for module in self.modules):
            self.problems.append(f"the names in Unicode are {listed}")


def _records(data):
    at = 0
    while at < len(data):
        kind, size = struct.unpack_from("<HI", data, at)
        size = 6 if kind == _VERSION else size
        yield kind, data[at + 6:at + 6 + size]
        at += 6 + size


def _names(data):
    at = 0
    while data[at:] != b"\0\0":
        end = data.index(b"\0", at)
        last = next(place for place in range(end + 1, len(data), 2)
                    if data[place:place + 2] == b"\0\0")
        yield data[at:end], data[end + 1:last].decode("utf-16-le")
        at = last + 2
