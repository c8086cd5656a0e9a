#!/usr/bin/env python3
"""Makes the pictures of docs/look.md that stand side by side: Orrery's left, LibreOffice's right.

usage: side_by_side.py PROGRAM

PROGRAM is orrery-cli. The sheets are calendars of 2027 from the shipped templates, and some that are
made here.
"""

import pathlib
import subprocess
import sys
import tempfile

import numpy
import xlsxwriter
from PIL import Image

ROOT = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests/look/oracle"))
import comparison  # noqa: E402
import office_sheets  # noqa: E402
import page_pictures  # noqa: E402
from office_session import OfficeSession  # noqa: E402

COLORS = 64
GAP = 12   # pixels between the two pictures
# Name of the picture, workbook, number of the sheet, and the part that is shown: left, top, width,
# height in pixels.
PICTURES = [
    ("month", "2027Desk.xlsx", 4, (380, 0, 660, 520)),
    ("year", "2027Year.xlsx", 0, (0, 0, 700, 520)),
    ("family", "2027Family.xlsx", 0, (0, 0, 700, 420)),
    ("notes", "2027Notes.xlsx", 11, (300, 0, 600, 520)),
    ("wall", "2027Wall.xlsx", 0, (0, 330, 700, 420)),
    ("cells", "samples.xlsx", 0, (0, 0, 540, 300)),
    ("chart", "samples.xlsx", 1, (0, 0, 500, 300)),
    ("mirrored", "samples.xlsx", 2, (0, 0, 490, 190)),
]


def make_calendars(program, folder):
    for template in sorted({name[4:] for _, name, _, _ in PICTURES if name.startswith("2027")}):
        subprocess.run([program, "generate", ROOT / "data/template" / template, "2027", "--engine",
                        "builtin", "--output-folder", folder], check=True, stdout=subprocess.DEVNULL)


def make_samples(path):
    """Styles and conditions, a chart, and a week from right to left."""
    with xlsxwriter.Workbook(path) as workbook:
        add_cells(workbook, workbook.add_worksheet("Cells"))
        add_chart(workbook, workbook.add_worksheet("Chart"))
        add_mirrored(workbook, workbook.add_worksheet("שבוע"))


def add_cells(workbook, sheet):
    sheet.hide_gridlines(2)
    sheet.set_column("A:G", 9.5)
    for row, height in ((0, 66), (1, 22), (8, 44)):
        sheet.set_row(row, height)
    for column, (word, angle) in enumerate((("Monday", 45), ("Tuesday", 90), ("Wednesday", -45),
                                            ("Thu", 270), ("wrapped in its cell", 0))):
        sheet.write(0, column, word, workbook.add_format({"rotation": angle, "text_wrap": not angle,
                                                          "border": 1}))
    bold, red = workbook.add_format({"bold": True}), workbook.add_format({"font_color": "#C00000"})
    sheet.write_rich_string(1, 0, "plain, ", bold, "bold, ", red, "red", " and beyond the cell",
                            workbook.add_format({"valign": "vcenter"}))
    for row in range(2, 8):
        for column in range(6):
            sheet.write(row, column, (row * 7 + column * 5) % 23)
    sheet.conditional_format("A3:B8", {"type": "3_color_scale"})
    sheet.conditional_format("C3:C8", {"type": "cell", "criteria": ">", "value": 11, "format":
                                       workbook.add_format({"bold": True, "bg_color": "#FFC7CE"})})
    sheet.conditional_format("D3:D8", {"type": "data_bar", "bar_solid": True})
    sheet.conditional_format("E3:F8", {"type": "icon_set", "icon_style": "3_traffic_lights"})
    for column, (text, style) in enumerate((
            (0.256, {"num_format": "0.0 %", "border": 2}), (46388, {"num_format": "d mmm yyyy"}),
            (-1234.5, {"num_format": "#,##0.00;[Red]-#,##0.00", "border": 6}),
            ("middle", {"align": "center", "valign": "vcenter", "bg_color": "#DDEBF7"}),
            ("crossed", {"diag_type": 3, "diag_border": 1, "diag_color": "#C00000"}),
            ("indented", {"indent": 2, "underline": 1, "top": 5, "bottom": 4}))):
        sheet.write(8, column, text, workbook.add_format(style))
    sheet.merge_range("A10:F11", "merged and italic", workbook.add_format(
        {"italic": True, "align": "center", "valign": "vcenter", "bg_color": "#E2EFDA", "border": 1}))


def add_chart(workbook, sheet):
    sheet.hide_gridlines(2)
    for row, values in enumerate((("", "Work", "Rest"), ("Jan", 21, 10), ("Feb", 20, 8),
                                  ("Mar", 23, 8), ("Apr", 20, 10))):
        sheet.write_row(row, 0, values)
    chart = workbook.add_chart({"type": "column"})
    for column in (1, 2):
        chart.add_series({"name": ["Chart", 0, column], "categories": ["Chart", 1, 0, 4, 0],
                          "values": ["Chart", 1, column, 4, column]})
    chart.set_title({"name": "Days of four months"})
    sheet.insert_chart("A6", chart, {"x_scale": 1, "y_scale": 0.65})


def add_mirrored(workbook, sheet):
    sheet.right_to_left()
    sheet.hide_gridlines(2)
    sheet.set_column("A:G", 8.5)
    head = {"border": 1, "align": "center"}
    name = workbook.add_format({**head, "bold": True, "bg_color": "#1F4E79", "font_color": "#FFFFFF"})
    day = {"border": 1, "valign": "top", "font_size": 12}
    free = {**day, "bg_color": "#FCE4D6", "font_color": "#C00000"}
    sheet.set_row(0, 24)
    sheet.write(0, 0, "ינואר 2027", workbook.add_format({"bold": True, "font_size": 16}))
    for column, word in enumerate(("ראשון", "שני", "שלישי", "רביעי", "חמישי", "שישי", "שבת")):
        sheet.write(1, column, word, name)
        for row in (2, 3):
            sheet.set_row(row, 38)
            sheet.write(row, column, 7 * row + column - 11,
                        workbook.add_format(free if column == 6 else day))
    sheet.write(4, 0, "טקסט עם English באמצע")


def draw(program, session, path, sheet, folder):
    """Pictures of a sheet by both programs."""
    svg, pdf = folder / "page.svg", folder / "page.pdf"

    def save(document):
        found = office_sheets.visible_sheets(document)[sheet]
        ours = comparison.look(program, path, found.Name, svg)
        office_sheets.save_page(document, found,
                                office_sheets.address_of(ours["range"].split(":")[-1]), pdf)
        return round(ours["width"]), round(ours["height"])

    width, height = session.with_document(path, save)
    return page_pictures.from_svg(svg, 0, 0, width, height), page_pictures.from_pdf(pdf)


def beside(one, other, box):
    left, top, width, height = box
    parts = [each[top:top + height, left:left + width] for each in (one, other)]
    height = max(part.shape[0] for part in parts)
    width = max(part.shape[1] for part in parts)
    both = numpy.full((height + 2, 2 * width + GAP + 4, 3), 255, numpy.uint8)
    for part, x in zip(parts, (0, width + GAP + 2)):
        both[:height + 2, x:x + width + 2] = 217  # a frame
        both[1:height + 1, x + 1:x + width + 1] = 255
        both[1:part.shape[0] + 1, x + 1:x + part.shape[1] + 1] = part
    return Image.fromarray(both).quantize(COLORS, dither=Image.Dither.NONE)


def main():
    program = sys.argv[1]
    with tempfile.TemporaryDirectory(prefix="orrery-side-") as scratch:
        folder = pathlib.Path(scratch)
        make_calendars(program, folder)
        make_samples(folder / "samples.xlsx")
        session = OfficeSession(scratch)
        try:
            for name, workbook, sheet, box in PICTURES:
                copy = folder / f"shown{pathlib.Path(workbook).suffix}"  # LibreOffice locks it
                copy.write_bytes((folder / workbook).read_bytes())
                pictures = draw(program, session, copy, sheet, folder)
                beside(*pictures, box).save(ROOT / f"docs/images/look-side-{name}.png", optimize=True)
                print(name)
        finally:
            session.close()


if __name__ == "__main__":
    main()
