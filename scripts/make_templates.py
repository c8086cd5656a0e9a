#!/usr/bin/env python3
"""Writes the calendar templates and their parameter files.

    make_templates.py [FOLDER]      (default: data/template)

Every run writes the same bytes. Needs python3-xlsxwriter and python3-pil.
"""

import pathlib
import sys

from templates import desk, family, notes, wall, year
from templates.parameters import parameter_file

TEMPLATES = {"Desk": desk, "Wall": wall, "Year": year, "Family": family, "Notes": notes}


def main():
    home = pathlib.Path(__file__).resolve().parent.parent
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else home / "data" / "template"
    folder.mkdir(parents=True, exist_ok=True)
    for name, template in TEMPLATES.items():
        (folder / f"{name}.xlsx").write_bytes(template.make())
        text = parameter_file(template.MONTHLY, template.YEARLY)
        (folder / f"{name}.ini").write_text(text, encoding="ascii", newline="\r\n")


if __name__ == "__main__":
    main()
