#!/usr/bin/env python3
"""Writes the calendar templates and their parameter files.

    make_templates.py [FOLDER]      (default: data/template)

Writes each workbook as .xlsx and as .xls: one design, two files. Every run writes the same bytes.
Needs python3-xlsxwriter, python3-pil, python3-uno, libreoffice-calc and, for the column widths,
fonts-crosextra-carlito.
"""

import pathlib
import sys

from templates import desk, excel97, family, notes, wall, year
from templates.parameters import parameter_file

TEMPLATES = {"Desk": desk, "Wall": wall, "Year": year, "Family": family, "Notes": notes}


def main():
    home = pathlib.Path(__file__).resolve().parent.parent
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else home / "data" / "template"
    folder.mkdir(parents=True, exist_ok=True)
    workbooks = {name: template.make() for name, template in TEMPLATES.items()}
    for name, data in workbooks.items():
        (folder / f"{name}.xlsx").write_bytes(data)
    for name, data in excel97.convert(workbooks).items():
        (folder / f"{name}.xls").write_bytes(data)
    for name, template in TEMPLATES.items():
        text = parameter_file(template.MONTHLY, template.YEARLY)
        (folder / f"{name}.ini").write_text(text, encoding="ascii", newline="\r\n")


if __name__ == "__main__":
    main()
