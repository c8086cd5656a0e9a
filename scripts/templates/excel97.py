"""Converts a template's .xlsx into its .xls by LibreOffice, and repairs what that gets wrong."""

import pathlib
import tempfile

import libreoffice

FILTER = "MS Excel 97"
NARROWED = 2  # hundredths of a millimetre that every column loses in an .xls


def convert(workbooks):
    """The bytes of an .xls for those of each .xlsx, by name."""
    with tempfile.TemporaryDirectory(prefix="orrery-xls-") as name, \
            libreoffice.desktop(name) as office:
        return {stem: _convert(office, pathlib.Path(name, stem), data)
                for stem, data in workbooks.items()}


def _convert(office, base, data):
    source, target = base.with_suffix(".xlsx"), base.with_suffix(".xls")
    source.write_bytes(data)
    document = libreoffice.load(office, source)
    for sheet in document.Sheets:
        _mend_names(sheet)
        _mend_widths(sheet)
    document.setModified(False)  # otherwise the file would hold the time of this run
    libreoffice.store(document, target, FILTER)
    document.close(True)
    return target.read_bytes()


def _mend_names(sheet):
    """LibreOffice reads print areas and titles twice, once as an ordinary name: trouble for Excel."""
    for name in sheet.NamedRanges.ElementNames:
        if name.startswith("_xlnm."):
            sheet.NamedRanges.removeByName(name)


def _mend_widths(sheet):
    cursor = sheet.createCursor()
    cursor.gotoEndOfUsedArea(False)
    for number in range(cursor.RangeAddress.EndColumn + 1):
        sheet.Columns.getByIndex(number).Width += NARROWED
