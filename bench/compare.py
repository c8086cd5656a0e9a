"""Times whole processes side by side and prints ratios; see compare.sh.

usage: compare.py ORRERY_CLI TOOLS_FOLDER ROUNDS TEMPLATE.xlsx...
Each template is measured as .xlsx and as the .xls beside it.
"""
import json
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import zipfile

import xlwt

from processes import HERE, Processes, written_cells

YEAR = 2027
CLI, TOOLS, ROUNDS = sys.argv[1], pathlib.Path(sys.argv[2]), int(sys.argv[3])
PROCESSES = Processes(CLI, TOOLS)
run, generate = PROCESSES.run, PROCESSES.generate


def median(rounds, *command):
    """The median time of a process in milliseconds, and its highest peak."""
    runs = [run(*command) for _ in range(rounds)]
    return statistics.median(seconds for seconds, _ in runs) * 1000, max(peak for _, peak in runs)


class Design:
    """A template in both formats, and the cells that a calendar made from it contains."""

    def __init__(self, path, folder):
        self.xlsx, self.xls, self.folder = path, path.with_suffix(".xls"), folder
        self.cells = folder / f"{path.stem}.json"
        for template in (self.xlsx, self.xls):
            run(*generate(template, YEAR, folder))
        sheets = written_cells(path, self.output(path), YEAR)
        self.cells.write_text(json.dumps(sheets), encoding="utf-8")
        self.count = sum(len(sheet["cells"]) for sheet in sheets)

    def output(self, template):
        return self.folder / f"{YEAR}{template.name}"

    def library(self, script, template):
        return [sys.executable, HERE / script, template, self.cells,
                self.folder / f"library{template.suffix}"]

    def office(self, template):
        """The first run creates LibreOffice's profile and is not counted."""
        command = [*self.library("office_calendar.py", template), self.folder]
        run(*command)
        return median(3, *command)[0]


def limit(template, output):
    """A time in milliseconds that the process measures itself, without its start."""
    os.sync()
    return int(subprocess.check_output([TOOLS / "limit", template, output])) / 1000


def side_by_side(fast, slow, between=lambda: None):
    """Medians in milliseconds, and the peak memory of the first command. The processes take turns,
    so that other load on the machine slows all of them; `between` is called once a turn."""
    times, peak = {name: [] for name in fast | slow}, 0
    for number in range(ROUNDS):
        between()
        for name, command in (fast | slow if number % 5 == 0 else fast).items():
            seconds, memory = run(*command)
            times[name].append(seconds * 1000)
            peak = max(peak, memory) if name == "orrery" else peak
    return {name: statistics.median(values) for name, values in times.items()}, peak


def compare_xlsx(designs):
    print(f"{'.xlsx':8} {'cells':>6} {'orrery':>8} {'limit':>8} {'openpyxl':>9} {'/ limit':>8} "
          f"{'x openpyxl':>10} {'peak MiB':>9}")
    for design in designs:
        output = design.output(design.xlsx)
        limits = []
        times, peak = side_by_side({"orrery": generate(design.xlsx, YEAR, design.folder)},
                                   {"openpyxl": design.library("openpyxl_calendar.py",
                                                               design.xlsx)},
                                   lambda: limits.append(limit(design.xlsx, output)))
        ours, theirs, least = times["orrery"], times["openpyxl"], statistics.median(limits)
        print(f"{design.xlsx.stem:8} {design.count:6} {ours:8.2f} {least:8.2f} {theirs:9.1f} "
              f"{ours / least:8.2f} {theirs / ours:10.1f} {peak:9.1f}")


def compare_xls(designs):
    print(f"\n{'.xls':8} {'cells':>6} {'orrery':>8} {'copies':>8} {'xlwt':>8} {'office':>8} "
          f"{'/ copies':>8} {'x xlwt':>8} {'x office':>8} {'x .xlsx':>8} {'peak MiB':>9}")
    for design in designs:
        times, peak = side_by_side(
            {"orrery": generate(design.xls, YEAR, design.folder),
             "copies": [TOOLS / "copies", design.xls, design.folder / "copies.xls"],
             "newer": generate(design.xlsx, YEAR, design.folder)},
            {"xlwt": design.library("xlwt_calendar.py", design.xls)})
        ours, office = times["orrery"], design.office(design.xls)
        print(f"{design.xls.stem:8} {design.count:6} {ours:8.2f} {times['copies']:8.2f} "
              f"{times['xlwt']:8.1f} {office:8.0f} {ours / times['copies']:8.2f} "
              f"{times['xlwt'] / ours:8.1f} {office / ours:8.0f} {times['newer'] / ours:8.2f} "
              f"{peak:9.1f}")


def compare_starts():
    times, _ = side_by_side({"orrery": [CLI, "--version"], "empty": [TOOLS / "empty"]}, {})
    print(f"\nStart-up: {times['orrery']:.2f} ms, {times['orrery'] - times['empty']:.2f} ms more than "
          "an empty program")


def compare_years(template, folder):
    start = median(ROUNDS, CLI, "--version")[0]
    one, single = median(ROUNDS, *generate(template, YEAR, folder))
    hundred, peak = median(3, *generate(template, f"{YEAR}-{YEAR + 99}", folder))
    print(f"A hundred years of {template.name}: {hundred:.0f} ms, "
          f"{hundred / (100 * (one - start)):.2f} of a hundred times one year less the start-up; "
          f"peak {peak:.1f} MiB (one year: {single:.1f} MiB)")


def heavy_xlsx(template, mebibytes, target):
    """The template with that much more text in its model sheet, in cells below the calendar."""
    with zipfile.ZipFile(template) as old, zipfile.ZipFile(target, "w", zipfile.ZIP_DEFLATED) as new:
        for item in old.infolist():
            data = old.read(item)
            if item.filename == "xl/worksheets/sheet1.xml":
                rows, size, number = [], 0, 1000
                while size < mebibytes << 20:
                    cells = "".join(f'<c r="{chr(65 + i)}{number}"><v>{number * 26 + i}</v></c>'
                                    for i in range(26))
                    rows.append(f'<row r="{number}">{cells}</row>')
                    size += len(rows[-1])
                    number += 1
                data = data.replace(b"</sheetData>", "".join(rows).encode() + b"</sheetData>")
            new.writestr(item, data)


def heavy_xls(_, mebibytes, target):
    """A workbook with the template's sheet names and that much data in its model sheet."""
    book = xlwt.Workbook()
    model = book.add_sheet("Month")
    book.add_sheet("Year")
    for number in range((mebibytes << 20) // (18 * 26)):  # a number takes 18 bytes
        for column in range(26):
            model.write(1000 + number, column, number * 26 + column + 0.123)
        model.flush_row_data()
    book.save(str(target))


def compare_sizes(template, sizes, make, folder):
    print(f"\n{template.name} with more cells in the model sheet, which is copied eleven times:")
    print(f"{'MiB':>5} {'milliseconds':>13} {'per MiB':>9} {'peak MiB':>9}")
    for mebibytes in sizes:
        heavy = folder / f"{mebibytes}{template.name}"
        heavy.with_suffix(".ini").write_bytes(template.with_suffix(".ini").read_bytes())
        make(template, mebibytes, heavy)
        seconds, peak = run(*generate(heavy, YEAR, folder))
        print(f"{mebibytes:5} {seconds * 1000:13.0f} {seconds * 1000 / mebibytes:9.1f} {peak:9.0f}")


def main():
    templates = [pathlib.Path(name) for name in sys.argv[4:]]
    print("Medians of whole processes in milliseconds, one calendar of twelve months and a year.")
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        designs = [Design(template, folder) for template in templates]
        compare_xlsx(designs)
        compare_xls(designs)
        compare_starts()
        for template in (designs[0].xlsx, designs[0].xls):
            compare_years(template, folder)
        compare_sizes(designs[0].xlsx, (2, 10, 50), heavy_xlsx, folder)
        compare_sizes(designs[0].xls, (1, 5, 25), heavy_xls, folder)


main()
