"""Times whole processes side by side and prints ratios; see compare.sh."""
import configparser
import json
import pathlib
import statistics
import subprocess
import sys
import tempfile
import zipfile

import openpyxl

HERE = pathlib.Path(__file__).resolve().parent
YEAR = 2027
MEASURE = pathlib.Path(sys.argv[2]).with_name("measure")


def run(command):
    """Seconds and peak memory in MiB of one process."""
    done = subprocess.run([MEASURE, *map(str, command)], capture_output=True, text=True)
    if done.returncode != 0:
        sys.exit(f"failed: {' '.join(map(str, command))}\n{done.stderr}")
    microseconds, kibibytes = map(int, done.stdout.split())
    return microseconds / 1e6, kibibytes / 1024


def generate(cli, template, years, output):
    return [cli, "generate", template, str(years), "--output-folder", output]


def written_cells(template, output):
    """What the calendar wrote: every value of the output that its model sheet lacks."""
    model_names = {}
    settings = configparser.ConfigParser(strict=False, interpolation=None)
    settings.optionxform = str
    settings.read(template.with_suffix(".ini"), encoding="utf-8-sig")
    before = openpyxl.load_workbook(template)
    after = openpyxl.load_workbook(output)
    monthly = settings["Monthly Calendar"]
    yearly = settings["Yearly Calendar"]
    untouched = [name for name in before.sheetnames if name in after.sheetnames]
    if yearly.get("Output") == "Y":
        model_names[str(YEAR)] = yearly["SheetName"]
    for name in after.sheetnames:
        if name not in model_names and name not in untouched:
            model_names[name] = monthly["SheetName"]
    sheets = []
    for name, model in model_names.items():
        cells = []
        for row in after[name].iter_rows():
            for cell in row:
                if cell.value is not None and \
                        cell.value != before[model].cell(cell.row, cell.column).value:
                    cells.append([cell.row, cell.column, cell.value])
        sheets.append({"name": name, "model": model, "cells": cells})
    return sheets


def milliseconds(values):
    return statistics.median(values) * 1000


def compare(cli, limit, template, rounds, folder):
    output = folder / f"{YEAR}{template.name}"
    run(generate(cli, template, YEAR, folder))
    cells = folder / "cells.json"
    sheets = written_cells(template, output)
    cells.write_text(json.dumps(sheets), encoding="utf-8")
    ours, theirs, floor, peak = [], [], [], 0
    for number in range(rounds):
        seconds, memory = run(generate(cli, template, YEAR, folder))
        ours.append(seconds)
        peak = max(peak, memory)
        floor.append(int(subprocess.check_output([limit, template, output])) / 1e6)
        if number % 5 == 0:
            theirs.append(run([sys.executable, HERE / "openpyxl_calendar.py", template, cells,
                               folder / "openpyxl.xlsx"])[0])
    count = sum(len(sheet["cells"]) for sheet in sheets)
    print(f"{template.name:12} {count:6} {milliseconds(ours):9.2f} {milliseconds(floor):9.2f} "
          f"{milliseconds(theirs):9.1f} {milliseconds(ours) / milliseconds(floor):8.2f} "
          f"{milliseconds(theirs) / milliseconds(ours):10.1f} {peak:9.1f}")


def compare_years(cli, template, rounds, folder):
    start = [run([cli, "--version"])[0] for _ in range(rounds)]
    one = [run(generate(cli, template, YEAR, folder))[0] for _ in range(rounds)]
    runs = [run(generate(cli, template, f"{YEAR}-{YEAR + 99}", folder)) for _ in range(3)]
    hundred = statistics.median(seconds for seconds, _ in runs)
    allowed = 100 * (statistics.median(one) - statistics.median(start))
    single = run(generate(cli, template, YEAR, folder))[1]
    print(f"\nA hundred years of {template.name}: {hundred * 1000:.0f} ms, "
          f"{hundred / allowed:.2f} of a hundred times one year less the start-up; "
          f"peak {max(memory for _, memory in runs):.1f} MiB (one year: {single:.1f} MiB)")


def weighted(template, mebibytes, folder):
    """The template whose model sheet has that much more text, in cells below the calendar."""
    target = folder / f"{mebibytes}{template.name}"
    target.with_suffix(".ini").write_bytes(template.with_suffix(".ini").read_bytes())
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
    return target


def compare_sizes(cli, template, folder):
    print(f"\n{template.name} with more text in the model sheet, which is copied eleven times:")
    print(f"{'MiB':>5} {'milliseconds':>13} {'per MiB':>9} {'peak MiB':>9}")
    for mebibytes in (2, 10, 50):
        heavy = weighted(template, mebibytes, folder)
        seconds, peak = run(generate(cli, heavy, YEAR, folder))
        print(f"{mebibytes:5} {seconds * 1000:13.0f} {seconds * 1000 / mebibytes:9.1f} {peak:9.0f}")


def main():
    cli, limit, rounds = sys.argv[1], sys.argv[2], int(sys.argv[3])
    templates = [pathlib.Path(name) for name in sys.argv[4:]]
    print("Medians of whole processes in milliseconds, one calendar of twelve months and a year.")
    print(f"{'template':12} {'cells':>6} {'orrery':>9} {'limit':>9} {'openpyxl':>9} "
          f"{'/ limit':>8} {'x openpyxl':>10} {'peak MiB':>9}")
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for template in templates:
            compare(cli, limit, template, rounds, folder)
        compare_years(cli, templates[0], rounds, folder)
        compare_sizes(cli, templates[0], folder)


main()
