#!/usr/bin/env python3
"""Makes data/macros.xls and data/macros.xlsx: a workbook of the sheets "Month" and "Year" with macros.
The sheet "Month" has an event procedure, "Year" has none, and there is a module of macros alone. The
macros have a digital signature, which is no more than its bytes.

usage: make_macros.py [FOLDER]

Needs python3-xlwt.
"""
import pathlib
import struct
import sys
import tempfile
import zipfile

import xlwt

import project
from project import BOOK_BASE, SHEET_BASE, Module
from xls_writer import Record, XlsBook

HERE = pathlib.Path(__file__).resolve().parent
EOF, CODENAME, OBPROJ, FUNCTION_GROUPS = 0x0A, 0x1BA, 0xD3, 0x9C
BOOK = "ThisWorkbook"
CODE_NAMES = {"Month": "Sheet1", "Year": "Sheet2"}
SIGNATURE = b"not a signature of anybody"


def _event_code():
    """More than a chunk of 4096 bytes."""
    lines = ["Private Sub Worksheet_Change(ByVal Target As Range)", "    Select Case Target.Row"]
    for row in range(1, 121):
        lines += [f"    Case {row}", f"        Sheet1.Cells({row * row % 97 + 1}, 30) = {row}"]
    return "\r\n".join([*lines, "    End Select", "End Sub", ""])


MODULES = [
    Module(BOOK, "Private Sub Workbook_Open()\r\n    Beep\r\nEnd Sub\r\n", BOOK_BASE),
    Module("Sheet1", _event_code(), SHEET_BASE),
    Module("Sheet2", "", SHEET_BASE),
    Module("Module1", "Public Function Twice(x)\r\n    Twice = 2 * x\r\nEnd Function\r\n"),
]


def _summary():
    """The properties of the document: the code page, and the signature. [MS-OLEPS] 2.21"""
    blob = SIGNATURE.ljust(-(-len(SIGNATURE) // 4) * 4, b"\0")
    values = struct.pack("<IHH", 2, 1252, 0), struct.pack("<II", 0x41, len(SIGNATURE)) + blob
    head = struct.pack("<IIII", 1, 24, 0x18, 32)
    size = 8 + len(head) + sum(map(len, values))
    return (struct.pack("<HHI16sI", 0xFFFE, 0, 0x20005, bytes(16), 1)
            + bytes.fromhex("02d5cdd59c2e1b10939708002b2cf9ae") + struct.pack("<I", 48)
            + struct.pack("<II", size, 2) + head + b"".join(values))


def _code_name(name):
    return Record(CODENAME, struct.pack("<HB", len(name), 0) + name.encode("latin-1"))


def workbook_stream(code_names):
    """The workbook stream: what xlwt makes of the sheets, with code names."""
    workbook = xlwt.Workbook()
    for name in code_names:
        sheet = workbook.add_sheet(name)
        sheet.write(0, 0, f"{name} by hand")
        sheet.write(1, 0, 7)
    with tempfile.TemporaryDirectory() as scratch:
        path = pathlib.Path(scratch, "plain.xls")
        workbook.save(str(path))
        book = XlsBook(path)
    while not book.records[-1].kind:  # zeros that fill the stream
        book.records.pop()
    made, names = [], iter(code_names.values())
    for record in book.records:
        if record.kind == FUNCTION_GROUPS:
            made += [Record(OBPROJ, b""), _code_name(BOOK)]
        if record.kind == EOF and any(each.kind == EOF for each in made):  # of a sheet
            made.append(_code_name(next(names)))
        made.append(record)
    book.records = made
    return book.stream()


_RELATIONS = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
_MACROS = "http://schemas.microsoft.com/office/2006/relationships"
SHEET_LINK = _RELATIONS + "/worksheet"
_MAIN = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
_SHEETS = "application/vnd.openxmlformats-officedocument.spreadsheetml"
_HEAD = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n'


def _links(*links):
    return (_HEAD + '<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/'
            'relationships">' + "".join(
                f'<Relationship Id="rId{number}" Type="{kind}" Target="{target}"/>'
                for number, (kind, target) in enumerate(links, 1)) + "</Relationships>")


def _sheet(name, code_name):
    return (f'{_HEAD}<worksheet xmlns="{_MAIN}"><sheetPr codeName="{code_name}"/><sheetData>'
            f'<row r="1"><c r="A1" t="inlineStr"><is><t>{name} by hand</t></is></c></row>'
            '<row r="2"><c r="A2"><v>7</v></c></row></sheetData></worksheet>')


def package():
    """The parts of an .xlsx file whose content is that of a workbook with macros."""
    types = (_HEAD + '<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">'
             '<Default Extension="rels" '
             'ContentType="application/vnd.openxmlformats-package.relationships+xml"/>'
             '<Default Extension="bin" ContentType="application/vnd.ms-office.vbaProject"/>'
             '<Override PartName="/xl/workbook.xml" '
             'ContentType="application/vnd.ms-excel.sheet.macroEnabled.main+xml"/>')
    for number in (1, 2):
        types += (f'<Override PartName="/xl/worksheets/sheet{number}.xml" '
                  f'ContentType="{_SHEETS}.worksheet+xml"/>')
    types += ('<Override PartName="/xl/vbaProjectSignature.bin" '
              'ContentType="application/vnd.ms-office.vbaProjectSignature"/></Types>')
    workbook = (f'{_HEAD}<workbook xmlns="{_MAIN}" xmlns:r="{_RELATIONS}">'
                f'<workbookPr codeName="{BOOK}"/><sheets>'
                '<sheet name="Month" sheetId="1" r:id="rId1"/>'
                '<sheet name="Year" sheetId="2" r:id="rId2"/></sheets></workbook>')
    return {
        "[Content_Types].xml": types,
        "_rels/.rels": _links((f"{_RELATIONS}/officeDocument", "xl/workbook.xml")),
        "xl/workbook.xml": workbook,
        "xl/_rels/workbook.xml.rels": _links(
            (SHEET_LINK, "worksheets/sheet1.xml"),
            (SHEET_LINK, "worksheets/sheet2.xml"),
            (f"{_MACROS}/vbaProject", "vbaProject.bin")),
        "xl/worksheets/sheet1.xml": _sheet("Month", CODE_NAMES["Month"]),
        "xl/worksheets/sheet2.xml": _sheet("Year", CODE_NAMES["Year"]),
        "xl/vbaProject.bin": project.compound_file(project.members(MODULES)),
        "xl/_rels/vbaProject.bin.rels": _links(
            (f"{_MACROS}/vbaProjectSignature", "vbaProjectSignature.bin")),
        "xl/vbaProjectSignature.bin": SIGNATURE,
    }


def _write_package(path):
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as file:
        for name, content in package().items():
            entry = zipfile.ZipInfo(name, (2027, 1, 1, 0, 0, 0))
            entry.compress_type = zipfile.ZIP_DEFLATED
            file.writestr(entry, content)


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else HERE / "data"
    (folder / "macros.xls").write_bytes(project.compound_file({
        "Workbook": workbook_stream(CODE_NAMES), "\5DocumentSummaryInformation": _summary(),
        "_VBA_PROJECT_CUR": project.members(MODULES)}))
    _write_package(folder / "macros.xlsx")


if __name__ == "__main__":
    main()
