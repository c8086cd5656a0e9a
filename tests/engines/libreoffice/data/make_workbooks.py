"""Makes the workbooks of these tests with openpyxl and xlwt; the one that needs a password to be
opened, with LibreOffice."""

import pathlib
import sys
import tempfile

import openpyxl
import xlwt
from openpyxl.chart import BarChart, Reference
from openpyxl.styles import PatternFill, Protection
from openpyxl.worksheet.scenario import InputCells, Scenario, ScenarioList

HERE = pathlib.Path(__file__).resolve().parent
sys.path.append(str(HERE.parents[3] / "scripts"))

import libreoffice
import uno
from com.sun.star.beans import NamedValue, PropertyValue


def guards():
    workbook = openpyxl.Workbook()
    merged = workbook.active
    merged.title = "Merged"
    merged["B2"] = "origin"
    for area in ("B2:D3", "A10:A12", "C20:XFD20", "F5:G5"):
        merged.merge_cells(area)
    arrays = workbook.create_sheet("Arrays")
    for row in (1, 2, 3):
        arrays.cell(row, 1, row)
    arrays["E1"] = "=A1:A3*2"
    arrays.formula_attributes["E1"] = {"t": "array", "ref": "E1:E3"}
    arrays["F1"] = "=SUM(A1:A3*2)"
    arrays.formula_attributes["F1"] = {"t": "array", "ref": "F1:F1"}
    arrays["G1"] = "=A1*2"
    locked = workbook.create_sheet("Locked")
    locked["A1"] = "locked"
    locked["B1"] = "free"
    locked["B1"].protection = Protection(locked=False)
    locked.protection.sheet = True
    workbook.save(HERE / "guards.xlsx")


def structure():
    workbook = xlwt.Workbook()
    workbook.add_sheet("Month")
    workbook.protect = True
    workbook.save(str(HERE / "structure.xls"))
    workbook = openpyxl.Workbook()
    workbook.active.title = "Month"
    workbook.security.lockStructure = True
    workbook.save(HERE / "structure.xlsx")


def scenario():
    workbook = openpyxl.Workbook()
    workbook.active.title = "Month"
    workbook.active["B2"] = 7
    workbook.active.scenarios = ScenarioList(scenario=[
        Scenario(name="Best", inputCells=[InputCells(r="B2", val="50")])])
    year = workbook.create_sheet("Year")
    year["A1"] = "printed"
    year.print_area = "A1:B2"
    workbook.save(HERE / "scenario.xlsx")


def view():
    workbook = openpyxl.Workbook()
    workbook.active.title = "Cover"
    month = workbook.create_sheet("Month")
    month["B3"] = "first cell that moves"
    month.freeze_panes = "B3"
    month.sheet_view.showGridLines = False
    month.sheet_view.zoomScale = 85
    workbook.save(HERE / "view.xlsx")


def own_references():
    workbook = openpyxl.Workbook()
    month = workbook.active
    month.title = "It's May"
    month["A1"] = 5
    month["A2"] = "='It''s May'!A1*2"
    month["A3"] = "=SUM('It''s May'!$A$1:$A$2)+Other!A1"
    month["A4"] = "=\"$'It''s May'.A1\"&'It''s May'!A1"
    month["E1"] = "='It''s May'!A1:A3*2"
    month.formula_attributes["E1"] = {"t": "array", "ref": "E1:E3"}
    other = workbook.create_sheet("Other")
    other["A1"] = 3
    chart = BarChart()
    chart.add_data(Reference(month, min_col=1, min_row=1, max_row=3), titles_from_data=True)
    chart.set_categories(Reference(other, min_col=1, min_row=1, max_row=2))
    month.add_chart(chart, "G2")
    other["B1"] = "='It''s May'!A1"
    workbook.save(HERE / "own_references.xlsx")


def whole_formats():
    workbook = openpyxl.Workbook()
    month = workbook.active
    month.title = "Month"
    month["B2"] = "in use"
    columns = month.column_dimensions["A"]
    columns.min, columns.max, columns.width = 1, 16384, 10
    columns.fill = PatternFill("solid", fgColor="FFFFFF00")
    month.row_dimensions[7].fill = PatternFill("solid", fgColor="FF00FF00")
    workbook.save(HERE / "whole_formats.xlsx")


def links():
    workbook = openpyxl.Workbook()
    month = workbook.active
    month.title = "Month"
    for row, target in enumerate(("notes.txt", "https://example.org/calendar"), start=1):
        month.cell(row, 1, "link").hyperlink = target
    workbook.save(HERE / "links.xlsx")


def template():
    workbook = openpyxl.Workbook()
    workbook.active.title = "Month"
    workbook.template = True
    workbook.save(HERE / "template.xltx")
    workbook = xlwt.Workbook()
    workbook.add_sheet("Month")
    workbook.save(str(HERE / "template.xlt"))


def password():
    key = uno.Any("[]com.sun.star.beans.NamedValue", (
        NamedValue("OOXPassword", "secret"), NamedValue("CryptoType", "Standard")))
    with tempfile.TemporaryDirectory() as folder, libreoffice.desktop(folder) as office:
        document = libreoffice.load(office, HERE / "structure.xls")
        document.storeToURL((HERE / "password.xlsx").as_uri(), (
            PropertyValue("FilterName", 0, "Calc MS Excel 2007 XML", 0),
            PropertyValue("EncryptionData", 0, key, 0)))
        document.close(True)


guards()
scenario()
own_references()
structure()
view()
links()
template()
whole_formats()
password()
