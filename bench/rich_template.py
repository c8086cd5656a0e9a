"""Makes a template with much in it: pictures, charts, comments, validations, conditional formats,
links, print set-up. Shipped templates are simpler than what people make.

usage: rich_template.py FOLDER INI

Writes Rich.xlsx, the same as Rich.xls (converted by LibreOffice), and the parameters for both, which
are those of INI.
"""
import datetime
import io
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile

import xlsxwriter
from PIL import Image

FOLDER, INI = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])


def picture(width, height, seed):
    """A photograph as far as compression is concerned: noise that changes slowly."""
    source = random.Random(seed)
    small = Image.new("RGB", (width // 8, height // 8))
    small.putdata([tuple(source.randrange(256) for _ in range(3))
                   for _ in range(small.width * small.height)])
    file = io.BytesIO()
    small.resize((width, height), Image.BICUBIC).save(file, "PNG")
    return file


def chart(book, kind, sheet, column):
    made = book.add_chart({"type": kind})
    made.add_series({"name": ["Data", 0, column], "categories": ["Data", 1, 0, 12, 0],
                     "values": ["Data", 1, column, 12, column]})
    made.add_series({"name": "Days", "values": [sheet, 5, 1, 5, 7]})
    made.set_title({"name": f"Chart {column}"})
    return made


def fill_data(sheet):
    for row in range(13):
        sheet.write_row(row, 0, [f"Item {row}", row * 3, row * row, 100 - row])


def fill_model(book, sheet, name, rows, columns, seed):
    """A framed grid with a format of its own for each second cell."""
    formats = [book.add_format({"border": 1, "font_size": 9 + i % 3, "bg_color": f"#FF{i:02X}E0",
                                "num_format": "0" if i % 2 else "General"})
               for i in range(0xC0, 0xD0)]
    for row in range(rows):
        sheet.set_row(row, 18 + row % 4)
        for column in range(columns):
            sheet.write_blank(row, column, None, formats[(row * 7 + column) % len(formats)])
    for row in range(0, rows, 5):
        sheet.write_comment(row, columns, f"A note on row {row} of {name}", {"author": "Orrery"})
        sheet.data_validation(row, columns + 1, row, columns + 1,
                              {"validate": "list", "source": ["yes", "no", str(row)]})
        sheet.write_url(row, columns + 2, f"internal:'Data'!A{row + 1}", string=f"link {row}")
        sheet.write_formula(row, columns + 3, f"=SUM(B{row + 1}:H{row + 1})")
    sheet.conditional_format(3, 0, rows, columns, {"type": "cell", "criteria": ">", "value": 28,
                                                   "format": formats[0]})
    sheet.conditional_format(3, 0, rows, columns, {"type": "2_color_scale"})
    sheet.insert_image(rows + 1, 0, "picture.png", {"image_data": picture(320, 200, seed)})
    sheet.insert_image(rows + 1, 6, "logo.png", {"image_data": picture(96, 96, seed + 1)})
    sheet.insert_textbox(rows + 1, 9, f"Notes on {name}")
    sheet.set_header("&C&G&R&A", {"image_center": "header.png",
                                  "image_data_center": picture(200, 40, seed + 2)})
    sheet.print_area(0, 0, rows, columns)
    sheet.repeat_rows(0, 1)
    sheet.set_landscape()
    sheet.fit_to_pages(1, 1)


def write_book(path):
    with xlsxwriter.Workbook(str(path)) as book:
        book.set_properties({"title": "Rich", "created": datetime.datetime(2026, 1, 1)})
        month, year, data = (book.add_worksheet(name) for name in ("Month", "Year", "Data"))
        fill_data(data)
        fill_model(book, month, "Month", 30, 8, 1)
        fill_model(book, year, "Year", 62, 30, 4)
        month.insert_chart(40, 0, chart(book, "column", "Month", 1))
        month.insert_chart(40, 9, chart(book, "pie", "Month", 2))
        year.insert_chart(70, 0, chart(book, "line", "Year", 3))


def convert(path):
    with tempfile.TemporaryDirectory() as profile:
        subprocess.run(["soffice", f"-env:UserInstallation=file://{profile}", "--headless",
                        "--convert-to", "xls:MS Excel 97", "--outdir", path.parent, path],
                       check=True, capture_output=True)


def main():
    FOLDER.mkdir(parents=True, exist_ok=True)
    book = FOLDER / "Rich.xlsx"
    write_book(book)
    shutil.copyfile(INI, book.with_suffix(".ini"))
    convert(book)


main()
