"""What is wrong with an .xls file: its compound file, and the records of each sheet.

A finding is (kind, sheet's name or ""...); damage that was there before is the same finding
afterwards.
"""

import struct

from corpus_modules import biff, xls_compound

_LONGEST = 8224


def findings(path):
    """A set of findings; raises where the file is no compound file with a workbook."""
    file = xls_compound.CompoundFile(path)
    name = file.workbook()
    if name is None:
        raise ValueError("no workbook stream")
    found = {("compound file", _kind(problem)) for problem in file.problems}
    found |= set(_stream_findings(file.entries[name].data))
    return found


def _kind(problem):
    """A problem without its numbers."""
    return "".join("N" if char.isdigit() else char for char in problem).replace("NN", "N")


def _stream_findings(stream):
    sheets = []
    for kind, at, data in _records(stream, 0):
        if kind is None:
            yield "globals are damaged", data
        elif kind == biff.BOUNDSHEET and len(data) >= 8:
            sheets.append((_name(data), struct.unpack_from("<I", data)[0]))
    for name, offset in sheets:
        if struct.unpack_from("<H", stream.ljust(offset + 2), offset)[0] != biff.BOF:
            yield "sheet does not begin", name
            continue
        yield from ((damage, name) for kind, _, damage in _records(stream, offset) if kind is None)


def _name(data):
    size = data[6] * (2 if data[7] & 1 else 1)
    return data[8:8 + size].decode("utf-16-le" if data[7] & 1 else "latin-1", "replace")


def _records(stream, at):
    """(type, offset, data) of a substream's records to its end; (None, offset, damage) where they
    are damaged."""
    depth = 0
    while at + 4 <= len(stream):
        kind, size = struct.unpack_from("<HH", stream, at)
        if at + 4 + size > len(stream):
            yield None, at, "record goes past the end"
            return
        if size > _LONGEST:
            yield None, at, "record too long"
        depth += (kind == biff.BOF) - (kind == biff.EOF)
        yield kind, at, stream[at + 4:at + 4 + size]
        at += 4 + size
        if depth == 0:
            return
    yield None, at, "substream without end"
