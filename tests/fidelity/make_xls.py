#!/usr/bin/env python3
"""Makes fidelity.xls and protected.xls: what LibreOffice makes of fidelity.xlsx, with the records
that it does not write.

usage: make_xls.py [FOLDER]

The bytes depend on LibreOffice's version, so the files are kept beside this script.
"""
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile

from xlwt.CompoundDoc import XlsDoc

HERE = pathlib.Path(__file__).resolve().parent
sys.path.append(str(HERE.parent / "corpus"))
from xls_book import Book, unicode_text  # noqa: E402

import xls_parts as made  # noqa: E402

NAME, WINDOW2, SCL, PANE, SELECTION, SETUP = 0x18, 0x23E, 0xA0, 0x41, 0x1D, 0xA1
MERGES, CONDFMT, CF, FEATHDR, HLINK, HEADER, NOTE = 0xE5, 0x1B0, 0x1B1, 0x867, 0x1B8, 0x14, 0x1C
OBJ, COMMENT = 0x5D, 0x19
MODEL = 1  # index of the sheet that is copied


def convert(source, folder):
    """What LibreOffice makes of an .xlsx."""
    subprocess.run(["soffice", f"-env:UserInstallation=file://{folder}/profile", "--headless",
                    "--convert-to", "xls", "--outdir", folder, source], check=True, timeout=180,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return Book(pathlib.Path(folder, source.with_suffix(".xls").name))


def _is_doubled_name(record):
    """LibreOffice writes print areas of .xlsx files a second time, under a name of letters."""
    return record.type == NAME and b"_xlnm" in record.data.replace(b"\0", b"")


def globals_of(book):
    for record in book.globals:
        if record.type == made.EOF:
            for kind, data in made.header_pictures_of_book(made.png(0, 90, 160)):
                yield kind, data, None
        if _is_doubled_name(record):
            continue
        if record.type == made.BOUNDSHEET and record is first_of(book.globals, record.type):
            for kind, data in made.custom_view_of_book():
                yield kind, data, None
        yield record.type, record.data, record.offset


def first_of(records, kind):
    return next(record for record in records if record.type == kind)


def model_of(sheet, is_protected):
    """The model's records: unknown and empty ones left out, those that are missing put in."""
    records = [record for record in sheet.records if record.type != 0xFFFF]
    kept = [record for number, record in enumerate(records)
            if not _is_empty_rule(records, number)]
    before = {SETUP: made.printer(), WINDOW2: made.header_pictures(),
              MERGES: made.protection() if is_protected else []}
    behind = {SETUP: made.first_and_even_headers(), HLINK: made.tip()}
    seen = set()
    for record in kept:
        is_own = record.depth == 1 and record.type not in seen
        if is_own and record.type in before:
            yield from fresh(before[record.type])
        if record.depth == 1 and record.type == made.EOF:
            yield from fresh(tail(is_protected))
        if record.depth > 1 or record.type not in (PANE, SELECTION, SCL, FEATHDR):
            if is_own and record.type == WINDOW2:
                yield from fresh(made.views() + made.custom_view(MODEL + 1))
            else:
                yield record.type, _mended(record), record.offset
        if is_own and record.type in behind:
            yield from fresh(behind[record.type])
        if record.depth == 1:
            seen.add(record.type)


def _mended(record):
    """The header with the code of its picture; comments with an author, their shapes with an id
    that is the same each time."""
    if record.type == OBJ and record.data[4] == COMMENT:
        return record.data[:26] + bytes(14) + record.data[6:8] + record.data[42:]
    if record.type == HEADER and record.depth == 1:
        count, = struct.unpack_from("<H", record.data)
        old, _ = unicode_text(record.data, 3, count, record.data[2] & 1)
        return made.text("&L&G" + old)
    return record.data[:8] + made.text("Ann") + b"\0" if record.type == NOTE else record.data


def _is_empty_rule(records, number):
    """A rule of a kind that the format has not, or a conditional format without other rules."""
    def is_rule(record):
        return record.type == CF and record.data[:1] in (b"\1", b"\2")
    record = records[number]
    if record.type == CF:
        return not is_rule(record)
    return record.type == CONDFMT and not is_rule(records[number + 1])


def tail(is_protected):
    rights = made.allowed() if is_protected else []
    return made.bars() + rights + made.ignored_errors() + made.table()


def fresh(records):
    return ((kind, data, None) for kind, data in records)


def assemble(book, is_protected):
    found = list(globals_of(book))
    for index, sheet in enumerate(book.sheets):
        if index == MODEL:
            found += model_of(sheet, is_protected)
        else:
            found += [(record.type, record.data, record.offset) for record in sheet.records]
    return made.stream_of([(kind, data) for kind, data, _ in found],
                          [offset for _, _, offset in found])


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else HERE / "data"
    scratch = tempfile.mkdtemp()
    try:
        book = convert(HERE / "data" / "fidelity.xlsx", scratch)
        for name in ("fidelity", "protected"):
            stream = assemble(book, name == "protected")
            XlsDoc().save(str(folder / f"{name}.xls"), stream)
    finally:
        shutil.rmtree(scratch)


main()
