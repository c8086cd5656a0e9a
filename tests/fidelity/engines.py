"""The same calendar made by each program, and whether it is the calendar."""
import calendar
import json
import os
import pathlib
import re
import subprocess
import sys

BENCH = pathlib.Path(__file__).resolve().parents[2] / "bench"
YEAR = 2027
MONTHS = calendar.month_name[1:]
LIBRARIES = {".xlsx": ("openpyxl", "openpyxl_calendar.py"), ".xls": ("xlwt", "xlwt_calendar.py")}
LONGEST = 300  # seconds


def month_cells(month):
    """What the templates' parameter files have written: (row, column, value)."""
    cells = [(41, 2, MONTHS[month - 1]), (41, 4, YEAR)]
    first = (calendar.weekday(YEAR, month, 1) + 1) % 7  # counted from Sunday
    for day in range(1, calendar.monthrange(YEAR, month)[1] + 1):
        week, weekday = divmod(first + day - 1, 7)
        cells.append((43 + week, 2 + weekday, day))
    return cells


def run(*command, **environment):
    done = subprocess.run([str(part) for part in command], capture_output=True, text=True,
                          timeout=LONGEST, check=False, env={**os.environ, **environment})
    if done.returncode != 0:
        sys.exit(f"failed: {' '.join(map(str, command))}\n{done.stdout}{done.stderr}")
    return done.stdout


def generate(program, template, folder, engine):
    """The program's calendar; LibreOffice gets a profile of its own."""
    output = folder / engine
    run(program, "generate", template, YEAR, "--engine", engine, "--output-folder", output,
        XDG_CACHE_HOME=str(folder / "cache"))
    return output / f"{YEAR}{template.name}"


def by_library(template, folder):
    """The calendar of the Python library for the template's format."""
    cells = folder / "cells.json"
    cells.write_text(json.dumps([{"name": name, "model": "Model", "cells": month_cells(number)}
                                 for number, name in enumerate(MONTHS, 1)]), encoding="utf-8")
    output = folder / f"library{template.suffix}"
    library, script = LIBRARIES[template.suffix]
    run(sys.executable, "-W", "ignore", BENCH / script, template, cells, output)
    return output


def calendar_failures(book, value_of):
    """What of the calendar is not there. `value_of` reads a cell of a sheet."""
    for number, name in enumerate(MONTHS, 1):
        sheet = book.sheet(name)
        if sheet is None:
            yield f"there is no sheet {name}"
            continue
        for row, column, value in month_cells(number):
            if value_of(sheet, (row, column)) != value:
                yield f"{name}, row {row}, column {column} is not {value}"


def versions():
    """The version of each program that is measured, by its name."""
    import openpyxl
    import xlwt
    found = {"openpyxl": openpyxl.__version__, "xlwt": xlwt.__VERSION__}
    try:
        text = subprocess.run(["soffice", "--version"], capture_output=True, text=True,
                              timeout=LONGEST, check=False).stdout
        number = re.search(r"LibreOffice (\d+\.\d+\.\d+)", text)
        found["LibreOffice"] = number[1] if number else "unknown"
    except FileNotFoundError:
        pass
    return found
