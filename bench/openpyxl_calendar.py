"""The same job with openpyxl: open the template, copy the model sheet, write the cells, save.

usage: openpyxl_calendar.py TEMPLATE {CELLS OUTPUT}...
Each pair makes one calendar. CELLS is the JSON file that compare.py writes: for each sheet of the
output its name, the template sheet that it is or was copied from, and the cells that were written.
"""
import json
import sys

import openpyxl


def make(template, cells, output):
    with open(cells, encoding="utf-8") as file:
        sheets = json.load(file)
    workbook = openpyxl.load_workbook(template)
    models = {sheet["model"]: workbook[sheet["model"]] for sheet in sheets}
    renamed = set()
    for sheet in sheets:
        model = models[sheet["model"]]
        if sheet["model"] in renamed:
            target = workbook.copy_worksheet(model)
        else:
            target = model
            renamed.add(sheet["model"])
        sheet["target"] = target
    for sheet in sheets:
        sheet["target"].title = sheet["name"]
        for row, column, value in sheet["cells"]:
            sheet["target"].cell(row, column).value = value
    workbook.save(output)


def main():
    template, *pairs = sys.argv[1:]
    for cells, output in zip(pairs[::2], pairs[1::2]):
        make(template, cells, output)


main()
