"""Pictures of sheets, and how alike two of them are."""

import pathlib
import re
import subprocess

import numpy
from PIL import Image

WINDOW = 8   # pixels, of the parts that are compared


def from_pdf(path):
    """The first page of a PDF at 96 dpi, as an array of RGB pixels."""
    stem = pathlib.Path(path).with_suffix("")
    subprocess.run(["pdftoppm", "-r", "96", "-f", "1", "-l", "1", "-singlefile", path, stem],
                   check=True, timeout=120, stderr=subprocess.DEVNULL)
    return _read(stem.with_suffix(".ppm"))


def from_svg(path, left, top, width, height):
    """So much of a picture of the command, in pixels, without grid lines: LibreOffice prints none."""
    path = pathlib.Path(path)
    text = path.read_text(encoding="utf-8")
    text = re.sub(r'<g id="grid">.*?</g>|<path id="grid"[^>]*/>', "", text, count=1, flags=re.S)
    text = re.sub(r'width="[^"]*" height="[^"]*" viewBox="[^"]*"',
                  f'width="{width}px" height="{height}px" viewBox="{left} {top} {width} {height}"',
                  text, count=1)
    path.write_text(text, encoding="utf-8")
    pdf = path.with_name("drawn.pdf")  # so that one program turns both pages into pixels
    subprocess.run(["rsvg-convert", "--unlimited", "-f", "pdf", "-d", "96", "-p", "96", "-o", pdf, path],
                   check=True, timeout=120)
    return from_pdf(pdf)


def words_of(path):
    """Words of a PDF's first page: the text, and its box in pixels."""
    text = subprocess.run(["pdftotext", "-bbox", "-f", "1", "-l", "1", path, "-"], check=True,
                          capture_output=True, timeout=120).stdout.decode("utf-8", "replace")
    found = re.findall(r'<word xMin="([\d.-]+)" yMin="([\d.-]+)" xMax="([\d.-]+)" '
                       r'yMax="([\d.-]+)">(.*?)</word>', text)
    scale = 96 / 72
    return [([float(x0) * scale, float(y0) * scale, float(x1) * scale, float(y1) * scale],
             _unescape(word)) for x0, y0, x1, y1, word in found]


def similarity(one, other):
    """The mean structural similarity of two pictures over their common part, 1 if they are equal."""
    height = min(one.shape[0], other.shape[0]) // WINDOW * WINDOW
    width = min(one.shape[1], other.shape[1]) // WINDOW * WINDOW
    if not height or not width:
        return 1.0
    first, second = (_blocks(each[:height, :width]) for each in (one, other))
    mean1, mean2 = first.mean(axis=1), second.mean(axis=1)
    var1, var2 = first.var(axis=1), second.var(axis=1)
    both = ((first - mean1[:, None]) * (second - mean2[:, None])).mean(axis=1)
    c1, c2 = (0.01 * 255) ** 2, (0.03 * 255) ** 2
    each = ((2 * mean1 * mean2 + c1) * (2 * both + c2)
            / ((mean1 ** 2 + mean2 ** 2 + c1) * (var1 + var2 + c2)))
    return float(each.mean())


def background(picture, box):
    """The commonest colour inside a box of pixels, or None if it is too small."""
    part = _inside(picture, box)
    if part.size < 12:
        return None
    colours, counts = numpy.unique(part.reshape(-1, 3), axis=0, return_counts=True)
    return colours[counts.argmax()].astype(int)


def mean_difference(one, other, box):
    """How far the mean colours inside a box of pixels differ, at most [0:255]."""
    first, second = (_inside(each, box).mean(axis=(0, 1)) for each in (one, other))
    return abs(first - second).max()


def _inside(picture, box):
    left, top, width, height = box
    return picture[max(0, round(top) + 2):round(top + height) - 2,
                   max(0, round(left) + 2):round(left + width) - 2]


def _blocks(picture):
    """Grey levels of the windows, one row each."""
    grey = picture.astype(float) @ (0.299, 0.587, 0.114)
    rows, columns = grey.shape[0] // WINDOW, grey.shape[1] // WINDOW
    return (grey.reshape(rows, WINDOW, columns, WINDOW).swapaxes(1, 2)
            .reshape(rows * columns, WINDOW * WINDOW))


def _read(path):
    Image.MAX_IMAGE_PIXELS = None
    return numpy.asarray(Image.open(path).convert("RGB"))


def _unescape(text):
    for entity, sign in (("&lt;", "<"), ("&gt;", ">"), ("&quot;", '"'), ("&amp;", "&")):
        text = text.replace(entity, sign)
    return text
