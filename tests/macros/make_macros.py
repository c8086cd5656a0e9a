#!/usr/bin/env python3
"""Makes data/macros.xls: a workbook of the sheets "Month" and "Year" with macros. The sheet "Month" has
an event procedure, "Year" has none, and there is a module of macros alone. The properties have a
digital signature, which is no more than its bytes.

usage: make_macros.py [FOLDER]

Needs python3-xlwt.
"""
import pathlib
import struct
import sys
import tempfile

import xlwt

import project
from project import BOOK_BASE, SHEET_BASE, Module
from xls_writer import Record, XlsBook

HERE = pathlib.Path(__file__).resolve().parent
EOF, CODENAME, OBPROJ, FUNCTION_GROUPS = 0x0A, 0x1BA, 0xD3, 0x9C
CODE_NAMES = ["ThisWorkbook", "Sheet1", "Sheet2"]
SIGNATURE = b"not a signature of anybody"


def _event_code():
    """More than a chunk of 4096 bytes."""
    lines = ["Private Sub Worksheet_Change(ByVal Target As Range)", "    Select Case Target.Row"]
    for row in range(1, 121):
        lines += [f"    Case {row}", f"        Sheet1.Cells({row * row % 97 + 1}, 30) = {row}"]
    return "\r\n".join([*lines, "    End Select", "End Sub", ""])


MODULES = [
    Module("ThisWorkbook", "Private Sub Workbook_Open()\r\n    Beep\r\nEnd Sub\r\n", BOOK_BASE),
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


def _stream(scratch):
    """The workbook stream: what xlwt makes of two sheets, with code names."""
    workbook = xlwt.Workbook()
    for name in ("Month", "Year"):
        sheet = workbook.add_sheet(name)
        sheet.write(0, 0, f"{name} by hand")
        sheet.write(1, 0, 7)
    path = pathlib.Path(scratch, "plain.xls")
    workbook.save(str(path))
    book = XlsBook(path)
    while not book.records[-1].kind:  # zeros that fill the stream
        book.records.pop()
    made, sheets = [], iter(CODE_NAMES[1:])
    for record in book.records:
        if record.kind == FUNCTION_GROUPS:
            made += [Record(OBPROJ, b""), _code_name(CODE_NAMES[0])]
        if record.kind == EOF and any(each.kind == EOF for each in made):  # of a sheet
            made.append(_code_name(next(sheets)))
        made.append(record)
    book.records = made
    return book.stream()


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else HERE / "data"
    with tempfile.TemporaryDirectory() as scratch:
        stream = _stream(scratch)
    (folder / "macros.xls").write_bytes(project.compound_file({
        "Workbook": stream, "\5DocumentSummaryInformation": _summary(),
        "_VBA_PROJECT_CUR": project.members(MODULES)}))


if __name__ == "__main__":
    main()
