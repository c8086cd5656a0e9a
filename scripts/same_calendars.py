#!/usr/bin/env python3
"""Compares the calendars of two builds of the command-line program.

Usage: same_calendars.py OLD NEW WORKBOOK...

Both programs generate the calendar of one year from every workbook: with the parameter file beside
it, else with its first sheet as the month's template and its second as the year's. Exit status,
messages and calendar have to be the same. A calendar in .xlsx is compared entry by entry; only
the time of saving and the packed size are left out.
"""
import collections
import contextlib
import hashlib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import warnings
import zipfile

import openpyxl
import xlrd

YEAR = "2027"
PARAMETERS = """[Monthly Calendar]
Output=Y
SheetName={month}
FirstCellOfDay=C40
RowIntervalOfDay=2
OutWeekday=Y
FirstCellOfWeekday=C39
OutMonth=Y
FirstCellOfMonth=C38
OutYear=Y
FirstCellOfYear=D38
[Yearly Calendar]
Output={has_year}
SheetName={year}
FirstCellOfDay=C40
"""


def sheet_names(workbook):
    """The names of the sheets. Of a damaged workbook any name does: both programs have to refuse it
    alike."""
    with contextlib.suppress(Exception), open(os.devnull, "w") as nothing:
        if workbook.suffix.startswith(".xlsx"):
            return openpyxl.load_workbook(workbook, read_only=True).sheetnames or ["Sheet1"]
        return xlrd.open_workbook(workbook, on_demand=True, logfile=nothing).sheet_names()
    return ["Sheet1"]


def parameters_for(workbook):
    own = workbook.with_suffix(".ini")
    if own.exists():
        return own.read_bytes()
    names = sheet_names(workbook)
    return PARAMETERS.format(month=names[0], has_year="Y" if len(names) > 1 else "N",
                             year=names[-1]).encode()


def entries_of(path):
    """Every entry of a container: its header without time and packed size, and its content."""
    with zipfile.ZipFile(path) as container:
        for entry in container.infolist():
            yield (entry.filename, entry.flag_bits, entry.compress_type, entry.external_attr,
                   entry.extra, hashlib.sha256(container.read(entry)).hexdigest())


def fingerprint(path):
    if not path.exists():
        return "no calendar"
    if zipfile.is_zipfile(path):
        return tuple(entries_of(path))
    return hashlib.sha256(path.read_bytes()).hexdigest()


def calendar(program, workbook, parameters):
    """Exit status, messages and fingerprint of one run in a scratch folder."""
    with tempfile.TemporaryDirectory() as scratch:
        folder = pathlib.Path(scratch)
        template = folder / ("Template" + workbook.suffix)
        shutil.copy(workbook, template)
        template.with_suffix(".ini").write_bytes(parameters)
        output = folder / "output"
        output.mkdir()
        homes = {name: str(folder / "home") for name in
                 ("HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME")}
        run = subprocess.run([program, "generate", str(template), YEAR, "--engine", "builtin",
                              "--output-folder", str(output)], env={**os.environ, **homes},
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=120)
        messages = re.sub(re.escape(scratch), "FOLDER", run.stdout.decode("utf-8", "replace"))
        made = output / (YEAR + template.name)
        return run.returncode, messages, fingerprint(made)


def main():
    warnings.simplefilter("ignore")
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    old, new, *workbooks = sys.argv[1:]
    counts = collections.Counter()
    for workbook in map(pathlib.Path, workbooks):
        parameters = parameters_for(workbook)
        before = calendar(old, workbook, parameters)
        after = calendar(new, workbook, parameters)
        counts["made" if before[2] != "no calendar" else "refused"] += 1
        if before != after:
            counts["different"] += 1
            print(f"{workbook}: before: {before[0]} {before[1].strip()}\n"
                  f"  after: {after[0]} {after[1].strip()}\n"
                  f"  calendar: {'the same' if before[2] == after[2] else 'another'}")
    print(f"{counts['made']} calendars and {counts['refused']} refusals compared, "
          f"{counts['different']} different")
    sys.exit(counts["different"] != 0)


if __name__ == "__main__":
    main()
