"""Runs processes to be timed, and finds the cells of a calendar."""
import configparser
import os
import pathlib
import subprocess
import sys

import openpyxl

HERE = pathlib.Path(__file__).resolve().parent


class Processes:
    def __init__(self, cli, tools):
        self.cli, self.tools = cli, pathlib.Path(tools)

    def run(self, *command):
        """Seconds and peak memory in MiB of one process. Everything is flushed to disk before, so
        that a process that flushes its own output does not wait for others' output."""
        os.sync()
        done = subprocess.run([self.tools / "measure", *map(str, command)], capture_output=True,
                              text=True)
        if done.returncode != 0:
            sys.exit(f"failed: {' '.join(map(str, command))}\n{done.stderr}")
        microseconds, kibibytes = map(int, done.stdout.split())
        return microseconds / 1e6, kibibytes / 1024

    def generate(self, template, years, output, *options):
        return [self.cli, "generate", template, str(years), "--output-folder", output, *options]


def written_cells(template, output, year):
    """The cells that the calendar wrote: those of the output that differ from its model sheet."""
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
        model_names[str(year)] = yearly["SheetName"]
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
