#!/usr/bin/env python3
"""Compares the PDF files that the program makes itself with LibreOffice's of the same calendars.

usage: check_pdf.py --cli PROGRAM --data FOLDER [--kind xlsx|xls] [--all-pages] [--pictures FOLDER]

Makes the calendar of each shipped template. Its PDF has to have LibreOffice's pages, in the same sizes;
each that is looked at, the first and the last unless all are asked for, must look alike. All words can be
selected, all fonts are embedded, and the file is small.

LibreOffice puts what is centred up to 1.5 pixels elsewhere, and 3 pixels in an .xls file with a chart. So
that this alone does not decide whether lines meet, its page is moved by quarters of pixels, no further
than MOST_SHIFT.
"""

import argparse
import collections
import pathlib
import subprocess
import sys
import tempfile

import numpy
import uno  # noqa: F401, which knows the modules below com
from com.sun.star.beans import PropertyValue
from PIL import Image

import office_sheets
import page_pictures
from office_session import OfficeSession

YEAR = "2027"
LEAST_ALIKE = 0.93      # of each page
MOST_SHIFT = 12         # quarters of pixels
MOST_BYTES = 1_000_000
FINE = 4                # times 96 dpi


def main():
    arguments = read_arguments()
    templates = [path for kind in arguments.kind or ("xlsx", "xls")
                 for path in sorted((arguments.data / "template").glob(f"*.{kind}"))]
    if not templates:
        print("FAILED there are no templates")
        return 1
    with tempfile.TemporaryDirectory(prefix="orrery-pdf-") as scratch:
        session = OfficeSession(scratch)
        try:
            failures = sum(check(arguments, session, path, pathlib.Path(scratch))
                           for path in templates)
        finally:
            session.close()
    return 1 if failures else 0


def read_arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cli", required=True)
    parser.add_argument("--data", required=True, type=pathlib.Path)
    parser.add_argument("--kind", action="append", choices=("xlsx", "xls"))
    parser.add_argument("--all-pages", action="store_true")
    parser.add_argument("--pictures", type=pathlib.Path)
    return parser.parse_args()


def check(arguments, session, template, scratch):
    """Reports on one template. How much is wrong."""
    workbook, ours = make_calendar(arguments, template, scratch)
    theirs = workbook.with_name("theirs.pdf")
    session.with_document(workbook, lambda document: save_pdf(document, theirs))
    problems = unembedded(ours)
    sizes = page_sizes(ours)
    if not sizes or sizes != page_sizes(theirs):
        problems.append(f"pages of {sizes}, of LibreOffice {page_sizes(theirs)}")
    problems += unlike_texts(text_of(ours), text_of(theirs))
    if ours.stat().st_size > MOST_BYTES:
        problems.append("too large")
    alike, shifts = [], []
    for number in range(1, len(sizes) + 1) if arguments.all_pages else sorted({1, len(sizes)}):
        shift, pages = aligned(fine_page(ours, number), fine_page(theirs, number))
        alike.append(page_pictures.similarity(*pages))
        shifts += map(abs, shift)
        if alike[-1] < LEAST_ALIKE:
            problems.append(f"page {number} is alike {alike[-1]:.3f}, moved by {shift} quarters of pixels")
        if arguments.pictures:
            save_picture(arguments.pictures, template, number, pages)
    print(f"{template.name}: {len(sizes)} pages, {ours.stat().st_size} bytes, {len(alike)} alike "
          f"{min(alike, default=0):.3f} to {max(alike, default=0):.3f} (bar {LEAST_ALIKE}), moved by "
          f"at most {max(shifts, default=0) / FINE} pixels")
    for problem in problems:
        print(f"  FAILED {problem}")
    return len(problems)


def make_calendar(arguments, template, scratch):
    folder = scratch / template.name
    settings = scratch / "orrery.ini"
    settings.touch()
    subprocess.run([arguments.cli, "generate", template, YEAR, "--engine", "builtin", "--pdf-by", "builtin",
                    "--settings", settings, "--output-folder", folder,
                    "--holiday-folder", arguments.data / "holiday"],
                   check=True, timeout=60, stdout=subprocess.DEVNULL)
    return folder / f"{YEAR}{template.name}", folder / f"{YEAR}{template.stem}.pdf"


def save_pdf(document, path):
    """Prints all sheets. The templates' calendars have no others than those of months and years."""
    for sheet in document.Sheets:
        cursor = sheet.createCursor()
        cursor.gotoEndOfUsedArea(False)
        last = cursor.RangeAddress
        office_sheets.show_as_measured(sheet.getCellRangeByPosition(0, 0, last.EndColumn, last.EndRow))
    document.storeToURL(path.resolve().as_uri(),
                        (PropertyValue("FilterName", 0, "calc_pdf_Export", 0),))


def page_sizes(pdf):
    """Width and height of each page, in whole points."""
    info = subprocess.run(["pdfinfo", "-l", "1000", pdf], check=True, capture_output=True, text=True,
                          timeout=60).stdout
    return [tuple(round(float(size)) for size in line.split()[3:6:2])
            for line in info.splitlines() if line.startswith("Page ") and " size:" in line]


def fine_page(pdf, number):
    """Grey levels of a page, FINE times 96 dpi."""
    stem = pdf.with_suffix("")
    subprocess.run(["pdftoppm", "-gray", "-r", str(FINE * 96), "-f", str(number), "-l", str(number),
                    "-singlefile", pdf, stem], check=True, timeout=120, stderr=subprocess.DEVNULL)
    return numpy.asarray(Image.open(stem.with_suffix(".pgm"))).astype(float)


def aligned(one, other):
    """Both pages at 96 dpi, the other one moved over the first, and how far it was."""
    shift = tuple(best_shift(one.mean(axis=axis), other.mean(axis=axis)) for axis in (1, 0))
    other = numpy.roll(other, shift, axis=(0, 1))
    return shift, (at_96_dpi(one), at_96_dpi(other))


def best_shift(one, other):
    """By how much a profile has to be moved to meet another one."""
    inside = slice(MOST_SHIFT, min(len(one), len(other)) - MOST_SHIFT)
    return min(range(-MOST_SHIFT, MOST_SHIFT + 1),
               key=lambda by: abs(one[inside] - numpy.roll(other, by)[inside]).mean())


def at_96_dpi(fine):
    height, width = fine.shape[0] // FINE, fine.shape[1] // FINE
    grey = fine[:height * FINE, :width * FINE].reshape(height, FINE, width, FINE).mean(axis=(1, 3))
    return numpy.repeat(grey[:, :, None], 3, axis=2)


def text_of(pdf):
    return subprocess.run(["pdftotext", pdf, "-"], check=True, capture_output=True,
                          timeout=60).stdout.decode()


def unlike_texts(ours, theirs):
    """What cannot be selected. Numbers beside each other may be one word or two, so their digits count."""
    characters = [collections.Counter("".join(text.split())) for text in (ours, theirs)]
    words = [collections.Counter(word for word in text.split() if word.isalpha())
             for text in (ours, theirs)]
    return [f"not alike in text: {dict(one - other)}, in LibreOffice's {dict(other - one)}"
            for one, other in (characters, words) if one != other or not one]


def unembedded(pdf):
    lines = subprocess.run(["pdffonts", pdf], check=True, capture_output=True, text=True,
                           timeout=60).stdout.splitlines()
    embedded = lines[0].index("emb")
    fonts = lines[2:]
    if not fonts:
        return ["there are no fonts"]
    return [f"not embedded: {line}" for line in fonts if line[embedded:embedded + 3] != "yes"]


def save_picture(folder, template, number, pages):
    """Both pages beside each other, for people."""
    folder.mkdir(parents=True, exist_ok=True)
    both = numpy.concatenate(pages, axis=1).astype(numpy.uint8)
    Image.fromarray(both).save(folder / f"{template.name}-{number:02}.png")


if __name__ == "__main__":
    sys.exit(main())
