"""Pages of workbooks as pictures, and the cells of a page as a mask."""

import glob
import os
import subprocess

import numpy
import openpyxl
from openpyxl.styles import Border, Font, PatternFill
from PIL import Image

DPI = 80
TOLERANCE = 24   # grey levels; the same page renders the same, but for the edges of letters
GROWN = 2        # pixels around a cell: its border is drawn on the line
MARK = "FFFF00FF"


def render(pdf):
    """The pages of a PDF as arrays of RGB pixels."""
    stem = pdf[:-len(".pdf")] + "-page"
    subprocess.run(["pdftoppm", "-r", str(DPI), pdf, stem], check=True)
    return [numpy.asarray(Image.open(name).convert("RGB"), dtype=numpy.int16)
            for name in sorted(glob.glob(glob.escape(stem) + "*.ppm"))]


def write_marked(template, sheet_name, cells, path):
    """Writes one sheet of the template with nothing on it but marked cells, to be rendered:
    widths, heights and print set-up stay, so that the marks stand where the cells do."""
    workbook = openpyxl.load_workbook(template)
    for other in [sheet for sheet in workbook.worksheets if sheet.title != sheet_name]:
        workbook.remove(other)
    sheet = workbook.worksheets[0]
    sheet._charts, sheet._images = [], []
    sheet.conditional_formatting = type(sheet.conditional_formatting)()
    for margin in (sheet.oddFooter, sheet.oddHeader):
        margin.left.text = margin.center.text = margin.right.text = None
    for row in sheet.iter_rows():
        for cell in row:
            _paint(cell, "FFFFFFFF")
    for where in cells:
        _paint(sheet.cell(*where), MARK)
    workbook.save(path)


def fill_print_area(sheet, corner):
    """Puts a blank into the last cell of a LibreOffice sheet's print area, where it is empty.
    LibreOffice passes over empty rows when it fits a sheet to a page, and would print a model page
    larger than a filled one."""
    cell = sheet.getCellRangeByName(corner)
    if not cell.Formula:
        cell.String = "\u00a0"


def _paint(cell, color):
    """Fills a cell, and writes in the same colour: LibreOffice leaves out a page without text."""
    cell.border = Border()
    cell.fill = PatternFill("solid", fgColor=color)
    cell.font = Font(size=2, color=color)
    cell.number_format = "General"
    if not isinstance(cell, openpyxl.cell.MergedCell):
        cell.value = "."


def mask_of(marked_page):
    """True where the page is marked, grown by the width of a border."""
    red, green, blue = (marked_page[:, :, channel] for channel in range(3))
    mask = (red > 200) & (green < 100) & (blue > 200)
    for _ in range(GROWN):
        grown = mask.copy()
        grown[1:] |= mask[:-1]
        grown[:-1] |= mask[1:]
        grown[:, 1:] |= mask[:, :-1]
        grown[:, :-1] |= mask[:, 1:]
        mask = grown
    return mask


def mask_margins(mask, sheet):
    """Adds the margins whose header or footer shows the sheet's name, which changes."""
    for side, texts in (("top", sheet.oddHeader), ("bottom", sheet.oddFooter)):
        shown = "".join(part.text or "" for part in (texts.left, texts.center, texts.right))
        if "&A" not in shown and "&[Tab]" not in shown:
            continue
        height = int(getattr(sheet.page_margins, side) * DPI)
        if side == "top":
            mask[:height] = True
        else:
            mask[-height:] = True
    return mask


def differing(model, page, mask):
    """The pixels outside the mask that differ, as (row, column) pairs."""
    if model.shape != page.shape:
        return [(0, 0)]
    differs = (abs(model - page).max(axis=2) > TOLERANCE) & ~mask
    return list(zip(*numpy.nonzero(differs)))


def marked_up(page, mask, pixels):
    """The page with the mask in a light tint and the given pixels in red."""
    picture = page.copy()
    picture[mask] = picture[mask] * 3 // 4 + numpy.array((40, 60, 40))
    for where in pixels:
        picture[where] = (255, 0, 0)
    return picture


def save_picture(array, path):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    Image.fromarray(array.astype(numpy.uint8)).save(path)
