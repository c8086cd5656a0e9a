"""Times the same calendars with every engine, in turns, and writes docs/performance.md.

usage: engines.py ORRERY_CLI TOOLS_FOLDER DOCUMENT TEMPLATE.xlsx...

One calendar and ten years of each template: the built-in engine with the .xlsx and with the .xls
beside it, LibreOffice with an existing profile and with a new one, and openpyxl.
"""
import datetime
import json
import os
import pathlib
import platform
import statistics
import sys
import tempfile
import zipfile

import openpyxl

from document import replace_rest
from machine import first_match, machine, output_of
from processes import HERE, Processes, written_cells

FIRST, TEN = 2027, range(2027, 2037)
REFERENCE = "built-in, .xlsx"
ONE_ROUNDS, TEN_ROUNDS = 7, 3


class Comparison:
    """The same work by five programs. `years` are those of one call."""

    def __init__(self, processes, template, years, folder):
        self.processes, self.template, self.folder = processes, template, folder
        self.years = f"{years[0]}-{years[-1]}" if len(years) > 1 else str(years[0])
        self.expected = [f"{year}{template.name}" for year in years]
        self.profiles = 0
        self.pairs = []
        for year in years:
            output = folder / "cells" / f"{year}{template.name}"
            processes.run(*processes.generate(template, year, output.parent))
            cells = folder / f"{year}.json"
            cells.write_text(json.dumps(written_cells(template, output, year)), encoding="utf-8")
            self.pairs += [cells, folder / "openpyxl" / output.name]
        self._office("warm", years[0])  # creates its profile

    def _generate(self, name, template, years, *options):
        return self.processes.generate(template, years, self.folder / name, *options)

    def _office(self, profile, years):
        command = self._generate("office", self.template, years, "--engine", "libreoffice")
        return self.processes.run("env", f"XDG_CACHE_HOME={self.folder / profile}", *command)

    def _cold_office(self):
        self.profiles += 1
        return self._office(f"cold{self.profiles}", self.years)

    def programs(self):
        run, years = self.processes.run, self.years
        xls = self.template.with_suffix(".xls")
        return {REFERENCE: lambda: run(*self._generate("xlsx", self.template, years)),
                "built-in, .xls": lambda: run(*self._generate("xls", xls, years)),
                "LibreOffice, .xlsx, warm": lambda: self._office("warm", years),
                "LibreOffice, .xlsx, cold": self._cold_office,
                "openpyxl": lambda: run(sys.executable, HERE / "openpyxl_calendar.py",
                                        self.template, *self.pairs)}

    def measure(self, rounds):
        """(seconds, peak) of each program in each round; they take turns, so that other load on the
        machine slows all of them."""
        for name in ("xlsx", "xls", "office", "openpyxl"):
            (self.folder / name).mkdir(exist_ok=True)
        found = {name: [] for name in self.programs()}
        for _ in range(rounds):
            for name, program in self.programs().items():
                found[name].append(program())
        for name in ("xlsx", "office", "openpyxl"):
            made = {path.name for path in (self.folder / name).iterdir()}
            missing = set(self.expected) - made
            if missing:
                sys.exit(f"{name} did not make {sorted(missing)}")
        return found


def summary(found):
    """For each program: median milliseconds, median ratio to the reference in the same round,
    highest peak in MiB."""
    reference = [seconds for seconds, _ in found[REFERENCE]]
    return {name: (statistics.median(seconds for seconds, _ in runs) * 1000,
                   statistics.median(seconds / other
                                     for (seconds, _), other in zip(runs, reference)),
                   max(peak for _, peak in runs)) for name, runs in found.items()}


def shown(number):
    digits = 2 if number < 10 else 1 if number < 100 else 0
    return f"{number:,.{digits}f}"


def table(one, ten):
    """As Markdown. LibreOffice is a separate process, whose memory is not measured."""
    lines = ["| | one calendar | ratio | ten years | ratio | peak memory, one and ten |",
             "| --- | ---: | ---: | ---: | ---: | ---: |"]
    for name in one:
        times = " | ".join(f"{shown(milliseconds)} ms | {shown(ratio)}"
                           for milliseconds, ratio, _ in (one[name], ten[name]))
        memory = "" if name.startswith("LibreOffice") else \
            f"{one[name][2]:.1f} and {ten[name][2]:.1f} MiB"
        lines.append(f"| {name} | {times} | {memory} |")
    return "\n".join(lines)


# ---------------------------------------------------------------- the document

def versions(cli):
    office = first_match(r"(LibreOffice [\d.]+)", output_of("soffice", "--version"))
    own = first_match(r"([\d.]+)", output_of(cli, "--version"))
    return (f"Orrery {own} (release build), {office}, openpyxl {openpyxl.__version__} on Python "
            f"{platform.python_version()}")


_DOCUMENT = """\
# Performance

How long a whole process takes for calendars of twelve month sheets and a year sheet, from the start of
the process to its end, with the workbook on the disk.

{tables}

- Measured on {date} on {machine}; {versions}; load of the machine {before} before, {after} after.
- Times are medians of {one} runs for one calendar and {ten} for ten years. The programs took turns;
  a ratio is the median of the ratios to the built-in engine's .xlsx in the same turn. A busy machine
  changes the times more than the ratios.
- One call makes the ten years. Python starts once for them; LibreOffice starts for every calendar,
  because each gets an instance of its own.
- LibreOffice is the engine `--engine libreoffice`. Warm, it starts with the profile of an earlier
  run, as in every run but a user's first; cold, it makes its profile first. Its memory is not
  measured: it is a process of its own.
- openpyxl does only part of the work: it gets the same cells to write, and its copies lack much of
  the template ([fidelity.md](fidelity.md)).
- The built-in engine leaves formulas to the program that opens the workbook. LibreOffice computes them.
- `Rich.xlsx` is made by `bench/rich_template.py`: pictures, charts, comments, validations, conditional
  formats on both sheets.

`bench/compare.sh` measures again and writes this part. It also compares the built-in engine with the
least that any program must do, and for .xls with xlrd and xlwt.
"""


def parts(template):
    with zipfile.ZipFile(template) as package:
        return len(package.namelist())


def measured_table(processes, template):
    found = []
    for years, rounds in (((FIRST,), ONE_ROUNDS), (TEN, TEN_ROUNDS)):
        with tempfile.TemporaryDirectory() as folder:
            found.append(summary(Comparison(processes, template, years, pathlib.Path(folder))
                                 .measure(rounds)))
    text = f"From the template `{template.name}` ({parts(template)} parts):\n\n{table(*found)}"
    print(f"\n{text}")
    return text


def main():
    cli, tools, document, *templates = sys.argv[1:]
    processes, before = Processes(cli, tools), os.getloadavg()[0]
    tables = "\n\n".join(measured_table(processes, pathlib.Path(template).resolve())
                         for template in templates)
    replace_rest(pathlib.Path(document), _DOCUMENT.format(
        tables=tables, date=datetime.date.today(), machine=machine(), versions=versions(cli),
        before=f"{before:.1f}", after=f"{os.getloadavg()[0]:.1f}", one=ONE_ROUNDS,
        ten=TEN_ROUNDS))


main()
