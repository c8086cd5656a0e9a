"""Turns a PNG into the bitmap that a set-up program shows: bitmap.py PNG BMP.

Reads what rsvg-convert writes: 8 bits a channel, with or without opacity, which is left out.
"""

import pathlib
import struct
import sys
import zlib


def chunks(png):
    """The chunks of a PNG as (type, bytes)."""
    place = 8
    while place < len(png):
        size, kind = struct.unpack_from(">I4s", png, place)
        yield kind, png[place + 8:place + 8 + size]
        place += size + 12


def predicted(filter_type, left, above, corner):
    """What the filter of a row adds to a byte."""
    if filter_type == 4:
        guess = left + above - corner
        return min((left, above, corner), key=lambda value: abs(guess - value))
    return (0, left, above, (left + above) // 2)[filter_type]


def rows(packed, row_size, channels):
    """The rows of the picture from the top, without their filters."""
    packed = zlib.decompress(packed)
    above = bytes(row_size)
    for start in range(0, len(packed), row_size + 1):
        row = bytearray(packed[start + 1:start + 1 + row_size])
        for i in range(row_size):
            left, corner = (row[i - channels], above[i - channels]) if i >= channels else (0, 0)
            row[i] = (row[i] + predicted(packed[start], left, above[i], corner)) & 0xFF
        above = bytes(row)
        yield above


def bitmap(png):
    """The bytes of a Windows bitmap of 24 bits, whose rows go from the bottom to the top."""
    found = list(chunks(png))
    width, height, depth, colours, *_, interlaced = struct.unpack(">IIBBBBB", found[0][1])
    channels = {2: 3, 6: 4}.get(colours)
    if depth != 8 or channels is None or interlaced:
        sys.exit("bitmap.py: the PNG is not of the kind that rsvg-convert writes")
    packed = b"".join(data for kind, data in found if kind == b"IDAT")
    lines = []
    for row in rows(packed, width * channels, channels):
        line = bytearray()
        for x in range(0, len(row), channels):
            line += bytes((row[x + 2], row[x + 1], row[x]))
        lines.append(bytes(line).ljust((width * 3 + 3) // 4 * 4, b"\0"))
    pixels = b"".join(reversed(lines))
    header = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(pixels), 2835, 2835, 0, 0)
    return struct.pack("<2sIHHI", b"BM", 54 + len(pixels), 0, 0, 54) + header + pixels


if __name__ == "__main__":
    source, target = map(pathlib.Path, sys.argv[1:])
    target.write_bytes(bitmap(source.read_bytes()))
