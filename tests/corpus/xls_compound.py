"""Compound files ([MS-CFB]): storages and streams, and whether the file is well made."""

import struct
from collections import Counter
from dataclasses import dataclass

_MAGIC = b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1"
_LAST, _FREE, _END, _FAT, _DIFAT = 0xFFFFFFFA, 0xFFFFFFFF, 0xFFFFFFFE, 0xFFFFFFFD, 0xFFFFFFFC
STORAGE, STREAM, ROOT = 1, 2, 5
_RED = 0


@dataclass
class Entry:
    """A storage or stream; `links` are its left, right and child entries."""

    name: str
    kind: int
    color: int
    links: tuple
    class_id: bytes
    state: int
    times: bytes
    start: int
    size: int
    data: bytes = b""

    def identity(self):
        """What has to stay when the file is saved."""
        return self.kind, self.class_id, self.state, self.times, self.data


class CompoundFile:
    """`entries` maps a path of names to its Entry; `problems` says what is against the rules."""

    def __init__(self, path, data=None):
        """`data` are the bytes of a file that is inside another one."""
        self.path, self.bytes = path, data
        if data is None:
            with open(path, "rb") as file:
                self.bytes = file.read()
        if self.bytes[:8] != _MAGIC:
            raise ValueError("no compound file")
        self.problems = []
        self.version, _, shift = struct.unpack_from("<HHH", self.bytes, 26)
        self.sector_size = 1 << shift
        self.cutoff = struct.unpack_from("<I", self.bytes, 56)[0]
        self._owners = Counter()
        self._read_fat()
        self._read_directory()
        self._read_streams()
        self._walk()
        self._judge_sectors()

    def _sector(self, number):
        begin = (number + 1) * self.sector_size
        sector = self.bytes[begin:begin + self.sector_size]
        if not sector:
            self.problems.append(f"sector {number} lies past the end of the file")
        return sector.ljust(self.sector_size, b"\0")

    def _table(self, data):
        return struct.unpack(f"<{len(data) // 4}I", data)

    def _read_fat(self):
        self.header = struct.unpack_from("<9I", self.bytes, 40)  # from the directory's sectors on
        places = list(struct.unpack_from("<109I", self.bytes, 76))
        sector, self.difat_sectors = self.header[7], []
        while sector <= _LAST and sector not in self.difat_sectors:
            self.difat_sectors.append(sector)
            *more, sector = self._table(self._sector(sector))
            places += more
        self.fat_sectors = [place for place in places if place <= _LAST]
        self.fat = [entry for place in self.fat_sectors
                    for entry in self._table(self._sector(place))]
        for special, sectors in ((_FAT, self.fat_sectors), (_DIFAT, self.difat_sectors)):
            for number in sectors:
                self._owners[number] += 1
                if number >= len(self.fat) or self.fat[number] != special:
                    self.problems.append(f"sector {number} is not marked as a table's")
        if self.header[1] != len(self.fat_sectors) or self.header[8] != len(self.difat_sectors):
            self.problems.append("the header counts other table sectors than there are")

    def _chain(self, start, what):
        numbers, seen, number = [], set(), start
        while number != _END:
            if number in seen or number >= len(self.fat):
                self.problems.append(f"the chain of {what} is broken at sector {number}")
                break
            seen.add(number)
            numbers.append(number)
            number = self.fat[number]
        self._owners.update(numbers)
        return numbers

    def _long(self, start, what):
        return b"".join(map(self._sector, self._chain(start, what)))

    def _read_directory(self):
        data = self._long(self.header[2], "the directory")
        self.directory = []
        for at in range(0, len(data), 128):
            length, kind, color, *links = struct.unpack_from("<HBBIII", data, at + 64)
            state, times = struct.unpack_from("<I16s", data, at + 96)
            start, size = struct.unpack_from("<IQ", data, at + 116)
            self.directory.append(Entry(
                data[at:at + max(0, length - 2)].decode("utf-16-le", "surrogatepass"), kind, color,
                tuple(links), data[at + 80:at + 96], state, times, start,
                size & 0xFFFFFFFF if self.version == 3 else size))
        if self.version == 4 and self.header[0] * self.sector_size != len(data):
            self.problems.append("the header counts other directory sectors than there are")

    def _read_streams(self):
        root = self.directory[0]
        if root.kind != ROOT:
            self.problems.append("the first entry is not the root")
        mini = self._long(root.start, "the mini stream") if root.size else b""
        if len(mini) < root.size:
            self.problems.append("the mini stream is shorter than its size")
        self.mini_fat = self._table(self._long(self.header[5], "the mini table")
                                    if self.header[5] <= _LAST else b"")
        used = Counter()
        for entry in self.directory:
            if entry.kind != STREAM or not entry.size:
                continue
            if entry.size >= self.cutoff:
                entry.data = self._long(entry.start, entry.name)[:entry.size]
            else:
                entry.data = self._short(entry, mini[:root.size], used)
            if len(entry.data) < entry.size:
                self.problems.append(f"the stream {entry.name!r} is shorter than its size")
        if any(count > 1 for count in used.values()):
            self.problems.append("streams share a mini sector")

    def _short(self, entry, mini, used):
        parts, number = [], entry.start
        while number < len(self.mini_fat) and len(parts) * 64 < entry.size:
            used[number] += 1
            parts.append(mini[number * 64:number * 64 + 64])
            number = self.mini_fat[number]
        if number != _END:
            self.problems.append(f"the chain of {entry.name!r} does not end with its size")
        return b"".join(parts)[:entry.size]

    def _walk(self):
        self.entries = {(): self.directory[0]}
        reached = {0}
        todo = [((), self.directory[0].links[2])]
        while todo:
            path, child = todo.pop()
            members = list(self._members(child, reached))
            self._judge_tree(child, members, path)
            for entry in members:
                self.entries[(*path, entry.name)] = entry
                if entry.kind == STORAGE:
                    todo.append(((*path, entry.name), entry.links[2]))
        for number, entry in enumerate(self.directory):
            if entry.kind and number not in reached:
                self.problems.append(f"the entry {entry.name!r} is in no storage")

    def _members(self, number, reached):
        """The entries of a storage in the order of their tree."""
        stack = []
        while stack or number <= _LAST:
            while number <= _LAST:
                if number in reached or number >= len(self.directory):
                    self.problems.append(f"the directory's links are broken at entry {number}")
                    break
                reached.add(number)
                stack.append(number)
                number = self.directory[number].links[0]
            if not stack:
                return
            entry = self.directory[stack.pop()]
            yield entry
            number = entry.links[1]

    def _judge_tree(self, child, members, path):
        where = "/".join(path) or "the root"
        keys = [_order(entry.name) for entry in members]
        if any(first >= second for first, second in zip(keys, keys[1:])):
            self.problems.append(f"the names in {where} are out of order")
        if child <= _LAST and self._black_height(child, True, 0) is None:
            self.problems.append(f"the tree of {where} is no red-black tree")

    def _black_height(self, number, below_red, depth):
        """None where two reds follow each other, or paths have different counts of blacks."""
        if number > _LAST:
            return 0
        if depth > 64 or number >= len(self.directory):
            return None
        entry = self.directory[number]
        if below_red and entry.color == _RED:
            return None
        left, right = (self._black_height(link, entry.color == _RED, depth + 1)
                       for link in entry.links[:2])
        return None if left is None or left != right else left + entry.color

    def _judge_sectors(self):
        for number, count in self._owners.items():
            if count > 1:
                self.problems.append(f"sector {number} belongs to {count} chains")
        for number, entry in enumerate(self.fat):
            if entry != _FREE and not self._owners[number]:
                self.problems.append(f"sector {number} is in use and belongs to nothing")

    def workbook(self):
        """The path of the workbook's stream; None where there is none."""
        tops = {path[0].lower(): path for path in self.entries if len(path) == 1}
        return tops.get("workbook") or tops.get("book")


def _order(name):
    units = name.encode("utf-16-le", "surrogatepass")
    upper = "".join(char.upper() if len(char.upper()) == 1 else char for char in name)
    return len(units), upper.encode("utf-16-be", "surrogatepass")


def same_failures(before, after, may_differ=(), may_go=()):
    """Streams and storages of two compound files; those at the paths `may_differ` may differ, and
    those at `may_go` may be missing."""
    for path, entry in before.entries.items():
        shown, twin = "/".join(path) or "the root", after.entries.get(path)
        if twin is None:
            if path not in may_go:
                yield f"{shown!r} is gone"
        elif path not in may_differ and entry.identity() != twin.identity():
            parts = ("kind", "class id", "state", "times", "bytes")
            differing = [part for part, mine, other in zip(parts, entry.identity(), twin.identity())
                         if mine != other]
            yield f"{shown!r} has another {' and '.join(differing)}"
    for failure in dict.fromkeys(after.problems):
        yield f"compound file: {failure}"


def added(before, after):
    return sorted(set(after.entries) - set(before.entries))
