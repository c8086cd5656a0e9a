"""The full colours that the formats of an .xls file have beside those of its palette, read from the
records themselves."""

import colorsys
import dataclasses
import io
import pathlib
import re
import struct
import zipfile

from xlrd import compdoc

_EOF, _THEME, _XF_EXT = 0x000A, 0x0896, 0x087D
_FOREGROUND, _GRADIENT = 4, 6  # [MS-XLS] 2.5.108 (ExtProp)
_RGB, _FROM_THEME = 2, 3       # [MS-XLS] 2.5.155 (FullColorExt); others are of the palette
# Of Office 2007, which a THEME record without a package means.
_OFFICE = ("FFFFFF", "000000", "EEECE1", "1F497D", "4F81BD", "C0504D", "9BBB59", "8064A2", "4BACC6",
           "F79646", "0000FF", "800080")
_NAMES = ("lt1", "dk1", "lt2", "dk2", "accent1", "accent2", "accent3", "accent4", "accent5", "accent6",
          "hlink", "folHlink")


@dataclasses.dataclass
class FullFill:
    """The darkest and the lightest that each part (red, green, blue; to 255) of the fill may be."""
    low: tuple
    high: tuple
    is_gradient: bool = False

    def has(self, color):
        """Whether a colour is one of the fill, but for what a picture changes."""
        return all(low - 8 <= part <= high + 8
                   for low, part, high in zip(self.low, color, self.high))


def full_fills(path):
    """The fills with a full colour, by the numbers of XF that XFEXT tells ([MS-XLS] 2.4.355). Nothing
    of a file that cannot be read so."""
    try:
        records = list(_globals(path))
    except Exception:  # xlrd has many ways to say that a file is damaged
        return {}
    theme = _OFFICE
    for kind, data in records:
        if kind == _THEME:
            theme = _theme(data[16:])
    fills = {}
    for kind, data in records:
        if kind == _XF_EXT:
            for number, fill in _extension(data, theme):
                fills[number] = fill
    return fills


def _globals(path):
    """Types and data of the records of the workbook itself, which come first."""
    container = compdoc.CompDoc(pathlib.Path(path).read_bytes(), logfile=io.StringIO())
    stream = container.get_named_stream("Workbook")
    place, kind = 0, None
    while kind != _EOF:
        kind, size = struct.unpack_from("<HH", stream, place)
        yield kind, stream[place + 4:place + 4 + size]
        place += 4 + size


def _theme(package):
    """The twelve colours of a theme ([MS-XLS] 2.4.326), as six digits each."""
    if not package:
        return _OFFICE
    with zipfile.ZipFile(io.BytesIO(package)) as parts:
        text = "".join(parts.read(name).decode("utf-8") for name in parts.namelist()
                       if re.search(r"theme/theme\d*\.xml$", name))
    found = [re.search(rf"<a:{name}>.*?(?:lastClr|srgbClr val)=\"([0-9A-Fa-f]{{6}})\"", text, re.S)
             for name in _NAMES]
    return [each.group(1) if each else office for each, office in zip(found, _OFFICE)]


def _extension(data, theme):
    number, _, count = struct.unpack_from("<HHH", data, 14)
    place = 20
    for _ in range(count):
        kind, size = struct.unpack_from("<HH", data, place)
        body = data[place + 4:place + size]
        if kind == _FOREGROUND:
            color = _color(*struct.unpack_from("<HhI", body), theme)
            if color:
                yield number, FullFill(color, color)
        elif kind == _GRADIENT:
            stops = list(_stops(body, theme))
            if stops and all(stops):
                yield number, FullFill(tuple(map(min, zip(*stops))), tuple(map(max, zip(*stops))), True)
        place += max(size, 4)


def _stops(body, theme):
    """[MS-XLS] 2.5.352 (XFExtGradient)"""
    count, = struct.unpack_from("<I", body, 44)
    for at in range(min(count, 256)):
        kind, value, _, tint = struct.unpack_from("<HIdd", body, 48 + 22 * at)
        yield _color(kind, tint * 32767, value, theme)


def _color(kind, tint, value, theme):
    """Red, green and blue; nothing of another kind. Tint: ECMA-376 18.8.19"""
    if kind == _RGB:
        color = value & 0xFF, value >> 8 & 0xFF, value >> 16 & 0xFF
    elif kind == _FROM_THEME and value < len(theme):
        color = tuple(bytes.fromhex(theme[value]))
    else:
        return None
    hue, light, saturation = colorsys.rgb_to_hls(*(part / 255 for part in color))
    share = tint / 32767
    light = light * (1 + share) if share < 0 else light * (1 - share) + share
    return tuple(round(part * 255) for part in colorsys.hls_to_rgb(hue, light, saturation))
