"""Times looking at sheets and writes the section of docs/performance.md about it; see look.sh.

usage: look.py ORRERY_CLI TOOLS_FOLDER SHEETS_FOLDER DOCUMENT ROUNDS

TOOLS_FOLDER contains `measure` and `look_bench`, SHEETS_FOLDER what look_sheets.py made. Leaves with 1
if a figure is outside of its limit.
"""
import datetime
import json
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile

from document import replace_section
from look_sheets import CELLS, LARGE_MEBIBYTES
from machine import machine
from processes import HERE, Processes

YEAR = 2027
TEMPLATES = HERE.parent / "data" / "template"
COLD_MS, WARM_MS, TEMPLATE_MIB = 100, 30, 20
CELLS_MS, LARGE_MS, LARGE_MIB = 500, 1000, 200
LINEAR = 1.5  # ten times the cells may take this many times ten times the time


class Results:
    """Collects what is outside of its limit."""

    def __init__(self):
        self.missed = []

    def shown(self, what, value, limit, unit):
        """The value, marked if it is over its limit."""
        text = f"{value:,.1f} {unit}" if value < 100 else f"{value:,.0f} {unit}"
        if value <= limit:
            return text
        self.missed.append(f"{what}: {text}, not {limit} {unit}")
        return f"**{text}**"


def table(head, lines):
    ruler = ["---"] + ["---:"] * (len(head) - 1)
    return "\n".join("| " + " | ".join(line) + " |" for line in [head, ruler, *lines])


def look(processes, path, picture, *options):
    return processes.run(processes.cli, "look", path, *options, "--svg", picture)


def measure(processes, rounds, path, picture, *options):
    """Median milliseconds, the fastest, and the highest peak in MiB."""
    runs = [look(processes, path, picture, *options) for _ in range(rounds)]
    times = [seconds * 1000 for seconds, _ in runs]
    return statistics.median(times), min(times), max(peak for _, peak in runs)


# ---------------------------------------------------------------- the shipped templates

def warm_times(tools):
    """Milliseconds of each page in a running process, by template and page ("May" or "year")."""
    done = subprocess.run([tools / "look_bench", "--benchmark_format=json",
                           "--benchmark_repetitions=5", "--benchmark_min_time=0.05"],
                          capture_output=True, text=True, check=True)
    return {one["run_name"]: one["real_time"] for one in json.loads(done.stdout)["benchmarks"]
            if one.get("aggregate_name") == "median"}


def template_table(processes, rounds, results, picture):
    lines = []
    for name, warm in sorted(warm_times(processes.tools).items()):
        file, page = name.split(" ")
        month = ["--month", "5"] if page == "May" else []
        cold, fastest, peak = measure(processes, rounds, TEMPLATES / file, picture,
                                      "--year", str(YEAR), *month)
        lines.append([f"{file}, {page}", results.shown(f"{name}, cold", cold, COLD_MS, "ms"),
                      f"{fastest:.1f} ms", results.shown(f"{name}, warm", warm, WARM_MS, "ms"),
                      f"{cold / warm:.1f}",
                      results.shown(f"{name}, memory", peak, TEMPLATE_MIB, "MiB")])
        print(*lines[-1], sep="\t", flush=True)
    return table(["page", "whole process", "fastest", "in a running process", "ratio", "peak memory"],
                 lines)


# ---------------------------------------------------------------- large sheets

def sheet_line(name, figures, limit_ms, limit_mib, results, before):
    median, fastest, peak = figures
    return [name, results.shown(f"{name}, time", median, limit_ms, "ms"), f"{fastest:.1f} ms",
            f"{median / before:.1f}" if before else "",
            results.shown(f"{name}, memory", peak, limit_mib, "MiB")]


def scaling_lines(processes, rounds, results, sheets, suffix, picture):
    """The time for each size; the ratio is that to the size before."""
    lines, before = [], None
    for cells in CELLS:
        figures = measure(processes, rounds, sheets / f"{cells}{suffix}", picture)
        limit = CELLS_MS if cells == CELLS[-1] else float("inf")
        lines.append(sheet_line(f"{cells:,} cells, {suffix}", figures, limit, float("inf"), results,
                                before))
        if before and figures[0] / before > 10 * LINEAR:
            results.missed.append(f"{lines[-1][0]}: {figures[0] / before:.1f} times the time of a "
                                  "tenth of the cells")
        before = figures[0]
        print(*lines[-1], sep="\t", flush=True)
    return lines


def sheet_table(processes, rounds, results, sheets, picture):
    lines = []
    for suffix in (".xlsx", ".xls"):
        lines += scaling_lines(processes, rounds, results, sheets, suffix, picture)
    few = max(3, rounds // 5)
    tall = measure(processes, few, sheets / "tall.xls", picture)
    lines.append(sheet_line("65,536 rows of two cells, .xls", tall, float("inf"), float("inf"),
                            results, None))
    large = measure(processes, few, sheets / "large.xlsx", picture)
    lines.append(sheet_line(f"a workbook of {LARGE_MEBIBYTES} MiB, .xlsx", large, LARGE_MS, LARGE_MIB,
                            results, None))
    for line in lines[-2:]:
        print(*line, sep="\t", flush=True)
    return table(["sheet", "whole process", "fastest", "ratio", "peak memory"], lines)


# ---------------------------------------------------------------- the document

_SECTION = """\
## Looking at sheets

How long `orrery-cli look FILE --svg PICTURE` takes, from the start of the process to its end.

The pages of the shipped templates, filled for {year}:

{templates}

Lists of 20 columns with texts, numbers, amounts and dates in four styles:

{sheets}

- Measured on {date} on {machine}; load of the machine {before} before, {after} after.
- Times are medians of {rounds} runs, of {few} for the last two; the ratio of a template's page is that
  of the whole process to the same work in a running one, the ratio of a list is that to the list of a
  tenth of its cells.
- The limits: a page {cold} ms, in a running process {warm} ms, with {mib} MiB; 100,000 cells {cells} ms;
  the large workbook {large} ms with {large_mib} MiB. What is outside of its limit is in bold.
- The large workbook has five sheets of {large_mebi} MiB together when packed, of numbers without a
  pattern; the beginning of its first sheet is shown.

`bench/look.sh` measures again and writes this section.
"""


def main():
    cli, tools, sheets, document, rounds = sys.argv[1:]
    processes, rounds = Processes(cli, tools), int(rounds)
    sheets, document, results = pathlib.Path(sheets), pathlib.Path(document), Results()
    before = os.getloadavg()[0]
    with tempfile.TemporaryDirectory() as folder:
        os.environ.update(HOME=folder, XDG_CONFIG_HOME=folder, XDG_DATA_HOME=folder)
        picture = pathlib.Path(folder) / "page.svg"
        templates = template_table(processes, rounds, results, picture)
        lists = sheet_table(processes, rounds, results, sheets, picture)
    replace_section(document, "looking", _SECTION.format(
        year=YEAR, templates=templates, sheets=lists, date=datetime.date.today(), machine=machine(),
        before=f"{before:.1f}", after=f"{os.getloadavg()[0]:.1f}", rounds=rounds,
        few=max(3, rounds // 5), cold=COLD_MS, warm=WARM_MS, mib=TEMPLATE_MIB, cells=CELLS_MS,
        large=LARGE_MS, large_mib=LARGE_MIB, large_mebi=LARGE_MEBIBYTES))
    for missed in results.missed:
        print("outside of its limit:", missed)
    sys.exit(1 if results.missed else 0)


main()
