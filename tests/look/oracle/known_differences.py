"""Where LibreOffice shows something else than Excel does, and we follow Excel."""

import re

import office_sheets
import package_facts

_NUMBER = re.compile(r"-?[0-9]+(\.[0-9]+)?(E[+-]?[0-9]+)?$")
_SECONDS = re.compile(r"(.*[0-9]:[0-9]{2}:)([0-9]{2})(\.[0-9]+)?( [AP]M)?$")
_EARLY = 61  # the serial number of the 1st of March 1900


def is_equal(ours, theirs):
    """Whether two displayed texts are the same but for what is told here."""
    ours, theirs = " ".join(ours.split()), " ".join(theirs.split())
    return (ours == theirs  # the room of "_x" is as many blanks there as it takes
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


class SheetDifferences:
    """What LibreOffice makes otherwise of one sheet. `facts` is what the file says of it, or None."""

    def __init__(self, sheet, facts):
        self._sheet = sheet
        self._facts = facts or package_facts.SheetFacts()
        self._pivot_tables = list(self._facts.pivot_tables)
        for table in sheet.getDataPilotTables():
            area = table.OutputRange
            self._pivot_tables.append((area.StartColumn, area.StartRow, area.EndColumn, area.EndRow))

    def means_something_else(self, address, ours, theirs):
        """Whether LibreOffice has another value than the file, or an error that Excel does not know."""
        cell = self._sheet.getCellRangeByName(address)
        where = office_sheets.address_of(address)
        return (theirs.startswith("Err:")
                # Days before March 1900 are others there.
                or (cell.Type.value in ("VALUE", "FORMULA") and 0 <= cell.Value < _EARLY
                    and _is_date(theirs))
                # Logical values are numbers there, shown as the number format says: ECMA-376
                # 18.18.11 knows them as a type of their own.
                or (ours in ("TRUE", "FALSE") and cell.Value == (ours == "TRUE"))
                # Data tables are computed again, or not at all; the file holds their results.
                or "MULTIPLE.OPERATIONS" in cell.Formula
                or any(package_facts.contains(area, *where) for area in self._facts.data_tables)
                or self.is_in_pivot_table(address)
                or self._has_other_result(cell, address, ours)
                or "NOW()" in cell.Formula)  # some seconds pass between the two programs

    def is_in_pivot_table(self, address):
        """LibreOffice lays pivot tables out again when it opens them, without their styles."""
        where = office_sheets.address_of(address)
        return any(package_facts.contains(area, *where) for area in self._pivot_tables)

    def has_other_column(self, column):
        """Whether the column (from 0) has another place: LibreOffice fits columns to pivot tables."""
        return any(column >= area[0] for area in self._pivot_tables)

    def has_other_row(self, row):
        """Whether the row (from 0) has another place: where the file names no default height (ECMA-376
        18.3.1.81), Excel takes that of the Normal style's font, LibreOffice 0.45 cm."""
        if self._facts.has_default_height:
            return False
        return not all(each in self._facts.rows_with_height for each in range(row + 1))

    def has_style_of_table(self, address):
        """Styles of tables (ECMA-376 18.5.1.5) are not read by LibreOffice: such a cell has no fill."""
        where = office_sheets.address_of(address)
        return (any(package_facts.contains(area, *where) for area in self._facts.styled_tables)
                and self._sheet.getCellRangeByName(address).IsCellBackgroundTransparent)

    def has_full_color(self, address, color):
        """Whether we show the full colour of a fill that XFExt ([MS-XLS] 2.4.355) adds to the palette's;
        LibreOffice reads nothing of it, and shows the nearest of the palette."""
        fill = self._facts.full_fills.get(address)
        return fill is not None and fill.has(color)

    def _has_other_result(self, cell, address, ours):
        """Whether we show the result that Excel stored, but LibreOffice has computed another: random
        numbers, links, and what it computes by other rules ("FALSE=0")."""
        if address not in self._facts.results or cell.Type.value != "FORMULA":
            return False
        kind, stored = self._facts.results[address]
        if kind == "n" and stored:
            return not _are_close(cell.Value, float(stored)) and is_equal(ours, stored)
        if kind == "b":
            stored = "TRUE" if stored == "1" else "FALSE"
        return cell.String != stored and is_equal(ours, stored)


def _are_close(one, other):
    return abs(one - other) <= 1e-9 * max(abs(one), abs(other))


def _is_date(text):
    return bool(re.search(r"[A-Za-z]{3}|[0-9][/.-][0-9]", text))
