"""Where LibreOffice shows something else than Excel does, and we follow Excel."""

import re

import office_sheets

_NUMBER = re.compile(r"-?[0-9]+(\.[0-9]+)?(E[+-]?[0-9]+)?$")
_SECONDS = re.compile(r"(.*[0-9]:[0-9]{2}:)([0-9]{2})(\.[0-9]+)?( [AP]M)?$")
_EARLY = 61  # the serial number of the 1st of March 1900


def is_equal(ours, theirs):
    """Whether two displayed texts are the same but for what is told here."""
    ours, theirs = " ".join(ours.split()), " ".join(theirs.split())
    return (ours == theirs  # the room of "_x" is as many blanks there as it takes
            or (ours, theirs) in (("TRUE", "1"), ("FALSE", "0"))  # logical values are numbers there
            or _same_number(ours, theirs) or _same_seconds(ours, theirs))


def _same_number(ours, theirs):
    """General has at most eleven characters in Excel, and as many as fit in LibreOffice."""
    if not _NUMBER.match(ours) or not _NUMBER.match(theirs) or len(ours.lstrip("-")) > 11:
        return False
    digits = ours.lstrip("-").split("E")[0]
    step = 10.0 ** -len(digits.partition(".")[2])
    if "E" in ours:
        step *= 10.0 ** int(ours.split("E")[1])
    return len(theirs) > len(ours) and abs(float(ours) - float(theirs)) <= step * 0.5000001


def _same_seconds(ours, theirs):
    """Excel rounds to the seconds that it shows, LibreOffice cuts them off or shows their parts."""
    one, other = _SECONDS.match(ours), _SECONDS.match(theirs)
    if not one or not other or one.group(1) != other.group(1):
        return False
    return 0 <= int(one.group(2)) - int(other.group(2)) <= 1


def means_something_else(sheet, address, text):
    """Whether LibreOffice has another value than the file, or an error that Excel does not know."""
    cell = sheet.getCellRangeByName(address)
    if text.startswith("Err:"):
        return True
    if "MULTIPLE.OPERATIONS" in cell.Formula:  # data tables: computed again, or not at all
        return True
    if cell.Type.value in ("VALUE", "FORMULA") and 0 <= cell.Value < _EARLY and _is_date(text):
        return True  # days before March 1900 are others there
    return _is_in_pivot_table(sheet, address)


def _is_date(text):
    return bool(re.search(r"[A-Za-z]{3}|[0-9][/.-][0-9]", text))


def _is_in_pivot_table(sheet, address):
    """LibreOffice lays pivot tables out again when it opens them."""
    column, row = office_sheets.address_of(address)
    for table in sheet.getDataPilotTables():
        area = table.OutputRange
        if area.StartColumn <= column <= area.EndColumn and area.StartRow <= row <= area.EndRow:
            return True
    return False
