"""The same job with LibreOffice: start it, open the template, copy the model sheet, write the cells,
save, and end it.

usage: office_calendar.py TEMPLATE CELLS OUTPUT PROFILE
CELLS is the JSON file that compare.py writes; PROFILE is a folder for LibreOffice's profile, which
only the first run creates.
"""
import json
import pathlib
import sys

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent / "scripts"))
import libreoffice  # noqa: E402

FILTERS = {".xls": "MS Excel 97", ".xlsx": "Calc MS Excel 2007 XML"}


def main():
    template, cells, output, profile = map(pathlib.Path, sys.argv[1:])
    sheets = json.loads(cells.read_text(encoding="utf-8"))
    with libreoffice.desktop(profile) as office:
        document = libreoffice.load(office, template)
        models = {}
        for sheet in sheets:
            if sheet["model"] in models:
                place = document.Sheets.Count
                document.Sheets.copyByName(models[sheet["model"]], sheet["name"], place)
            else:
                document.Sheets.getByName(sheet["model"]).Name = sheet["name"]
                models[sheet["model"]] = sheet["name"]
        for sheet in sheets:
            target = document.Sheets.getByName(sheet["name"])
            for row, column, value in sheet["cells"]:
                cell = target.getCellByPosition(column - 1, row - 1)
                if isinstance(value, str):
                    cell.String = value
                else:
                    cell.Value = value
        libreoffice.store(document, output, FILTERS[output.suffix])
        document.close(True)


main()
