#!/usr/bin/env python3
"""Compares how drawings look with what LibreOffice makes of them.

usage: check_drawings.py --cli PROGRAM [--pictures FOLDER]

The drawings are made here, once in each format. Each has cells of its own, of which the pictures have
to be alike.
"""

import argparse
import pathlib
import sys
import tempfile

import numpy
from PIL import Image, ImageFilter

import comparison
import made_drawings
import office_sheets
import page_pictures
import xls_drawings
import xlsx_drawings
from made_drawings import Freeform, Made, Piece, Preset, Written
from office_session import OfficeSession

# What LibreOffice shows otherwise in .xls than in .xlsx workbooks, where it agrees: there it turns before
# it mirrors, and takes the cells of a group for those before the turn.
DIFFERENT_IN_XLS = {"mirrored triangle by 90 degrees", "group by 90 degrees",
                    "group by 270 degrees with a triangle by 90 degrees"}
WAVE = Freeform(1000, 600, [("M", 0, 300), ("C", 200, -100, 400, 0, 500, 300), ("L", 1000, 100),
                            ("L", 800, 600), ("L", 100, 500), ("Z",)])
FRAME = Freeform(100, 100, [("M", 0, 0), ("L", 100, 0), ("L", 100, 100), ("L", 0, 100), ("Z",),
                            ("M", 30, 20), ("L", 80, 20), ("L", 80, 70), ("L", 30, 70), ("Z",)])
OPEN = Freeform(200, 100, [("M", 0, 100), ("L", 100, 0), ("L", 200, 80)])
PIE = Written(
    '<a:avLst><a:gd name="a" fmla="val 30000"/></a:avLst><a:gdLst><a:gd name="x" fmla="*/ w a 100000"/>'
    '<a:gd name="y" fmla="+- vc 0 hd4"/></a:gdLst><a:pathLst><a:path><a:moveTo><a:pt x="l" y="vc"/>'
    '</a:moveTo><a:arcTo wR="wd2" hR="hd2" stAng="cd2" swAng="cd4"/><a:lnTo><a:pt x="x" y="y"/></a:lnTo>'
    '<a:close/></a:path><a:path w="100" h="100"><a:moveTo><a:pt x="50" y="90"/></a:moveTo><a:quadBezTo>'
    '<a:pt x="100" y="100"/><a:pt x="90" y="50"/></a:quadBezTo><a:close/></a:path></a:pathLst>')
TRIANGLE = Preset("rtTriangle", 6)  # no two of its turns and mirrors look alike

DIFFERENT = 96      # of 255, of one colour of a pixel
MOST_PIXELS = 0.02  # of a drawing's cells that may differ
BORDER = 1          # cells around a drawing that are looked at with it


def turned(degrees, geometry=None, flips=""):
    """A shape, or a picture, in the box that it fills once it is turned, by quarters at least."""
    def make(box):
        piece = Piece(box, degrees, flips, geometry)
        piece.box = piece.stored_box()
        return piece
    return make


def turned_group(degrees, child_degrees):
    """A group of a triangle and a picture, each in one half of it."""
    def make(box):
        own = turned(degrees)(box)
        left, top, width, height = own.box
        own.children = [
            turned(child_degrees, TRIANGLE)((left, top + height * 0.3, width * 0.3, height * 0.4)),
            Piece((left + width / 2, top, width / 2, height))]
        return own
    return make


def all_drawings():
    """Every drawing, in rows of four."""
    makers = {
        "triangle": turned(0, TRIANGLE),
        "triangle by 30 degrees": turned(30, TRIANGLE),
        "triangle by 60 degrees": turned(60, TRIANGLE),
        "triangle by 90 degrees": turned(90, TRIANGLE),
        "triangle by 200 degrees": turned(200, TRIANGLE),
        "triangle by 270 degrees": turned(270, TRIANGLE),
        "triangle by 314 degrees": turned(314, TRIANGLE),
        "mirrored triangle by 90 degrees": turned(90, TRIANGLE, "H"),
        "picture": turned(0),
        "picture by 90 degrees": turned(90),
        "picture by 180 degrees": turned(180),
        "picture by 250 degrees": turned(250),
        "group": turned_group(0, 0),
        "group by 90 degrees": turned_group(90, 0),
        "group with a triangle by 90 degrees": turned_group(0, 90),
        "group by 270 degrees with a triangle by 90 degrees": turned_group(270, 90),
        "freeform with curves": turned(0, WAVE),
        "freeform with a hole": turned(0, FRAME),
        "open freeform": turned(0, OPEN),
        "freeform by 90 degrees": turned(90, WAVE),
        "freeform with arcs and guides": turned(0, PIE),
    }
    places = [(2 + index % 4 * 5, 4 + index // 4 * 12, 2, 4) for index in range(len(makers))]
    return [Made(name, place, make(made_drawings.box_of(place)))
            for place, (name, make) in zip(places, makers.items())]


def differing(one, other):
    """Share of pixels that differ between two pictures, each softened by a pixel."""
    soft = [numpy.asarray(Image.fromarray(each).filter(ImageFilter.BoxBlur(1))).astype(int)
            for each in (one, other)]
    return float((abs(soft[0] - soft[1]).max(axis=2) > DIFFERENT).mean())


def in_both(made):
    return not isinstance(made.piece.geometry, Written)


def compare(cli, document, path, drawings, folder):
    """The share of differing pixels of each drawing, by its name."""
    sheet = document.Sheets.getByIndex(0)
    last = (max(made.cells[0] + made.cells[2] for made in drawings) + 2,
            max(made.cells[1] + made.cells[3] for made in drawings) + 4)
    svg, pdf = folder / "page.svg", folder / "page.pdf"
    comparison.look(cli, path, sheet.Name, svg)
    if not office_sheets.save_page(document, sheet, last, pdf):
        raise ValueError("the page is too large")
    theirs = page_pictures.from_pdf(pdf)
    ours = page_pictures.from_svg(svg, 0, 0, theirs.shape[1], theirs.shape[0])
    shares = {}
    for made in drawings:
        left, top, width, height = made.box()
        rows = slice(top - BORDER * made_drawings.COLUMN, top + height + BORDER * made_drawings.COLUMN)
        columns = slice(left - BORDER * made_drawings.COLUMN,
                        left + width + BORDER * made_drawings.COLUMN)
        shares[made.name] = differing(ours[rows, columns], theirs[rows, columns])
    return shares, (ours, theirs)


def keep(folder, kind, pictures):
    for each, name in zip(pictures, ("ours", "theirs")):
        Image.fromarray(each).save(folder / f"drawings-{kind}-{name}.png")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cli", required=True)
    parser.add_argument("--pictures", type=pathlib.Path)
    arguments = parser.parse_args()
    drawings = all_drawings()
    bad = 0
    with tempfile.TemporaryDirectory(prefix="orrery-drawings-") as scratch:
        folder = pathlib.Path(scratch)
        books = {"xlsx": folder / "drawings.xlsx", "xls": folder / "drawings.xls"}
        xlsx_drawings.save(books["xlsx"], drawings)
        xls_drawings.save(books["xls"], list(filter(in_both, drawings)))
        session = OfficeSession(scratch)
        try:
            for kind, path in books.items():
                shares, pictures = session.with_document(
                    path, lambda document, path=path, kind=kind: compare(
                        arguments.cli, document, path,
                        [made for made in drawings if kind == "xlsx" or in_both(made)], folder))
                if arguments.pictures:
                    keep(arguments.pictures, kind, pictures)
                for name, share in shares.items():
                    if kind == "xls" and name in DIFFERENT_IN_XLS:
                        continue
                    is_bad = share > MOST_PIXELS
                    bad += is_bad
                    print(f"{'BAD ' if is_bad else ''}.{kind} {name}: {share:.2%} differ")
        finally:
            session.close()
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
