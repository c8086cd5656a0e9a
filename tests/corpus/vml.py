"""The numbers of the shapes in VML drawings. They come in blocks of 1,024 that one drawing lists as
its own, so a copy's differ from its model's by whole blocks."""

import re

_SHAPE = re.compile(rb"(?<=_x0000_s)\d+")
_LIST = re.compile(rb"(:idmap [^>]*?data=[\"'])([\d, ]*)")
_BLOCK, _LAST = 1024, 65525


def in_block(number):
    """A shape's number within its block; some writers number from 1, in no block."""
    value = int(number)
    return str(_BLOCK + value % _BLOCK if value >= _BLOCK else value)


def neutral(data):
    """The bytes of a drawing with every block called the first."""
    data = _SHAPE.sub(lambda match: in_block(match[0]).encode(), data)
    return _LIST.sub(lambda match: match[1] + re.sub(rb"\d+", b"1", match[2]), data)


def blocks(data):
    """The blocks that a drawing lists, those that its format knows."""
    listed = {int(number) for match in _LIST.finditer(data)
              for number in re.findall(rb"\d+", match[2])}
    return {block for block in listed if 0 < block <= _LAST}
