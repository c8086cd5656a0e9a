"""The parameter file of a case: which sheets are the calendar's models, and where it writes."""

from dataclasses import dataclass

from corpus_modules import biff, opc

_WEEKDAYS = "Mon,Tue,Wed,Thu,Fri,Sat,Sun"
_MONTHS = "January,February,March,April,May,June,July,August,September,October,November,December"


@dataclass
class Block:
    """Where a calendar writes. The places are the usual ones of these tests, below what most
    workbooks use."""

    day: str = "C40"
    weekday: str = "C39"
    month: str = "C38"
    year: str = "D38"
    holiday: str = ""  # none are written
    columns: int = 1
    rows: int = 2


PLAIN = Block()
_BLOCKS = (PLAIN, PLAIN, PLAIN, Block("B3", "B2", "A1", "B1"), Block("A1", "A1", "A1", "A1"),
           Block("C40", "C39", "C38", "D38", "C41", 2, 3), Block(rows=7, columns=30),
           Block("IO65500", "A2", "A1", "B1"), Block("XFA1048570", "C39", "C38", "D38"))


def suffix_of(path):
    """".xls" or ".xlsx", by the file's content."""
    with open(path, "rb") as file:
        return ".xls" if file.read(8) == b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1" else ".xlsx"


def sheet_names(path):
    """The names of a workbook's sheets, the first worksheet's first."""
    if suffix_of(path) == ".xls":
        book = biff.Book(path)
        first, sheets = book.first_worksheet(), book.sheets
    else:
        sheets = opc.Package(path).sheets
        first = next((index for index, sheet in enumerate(sheets) if sheet.kind == "worksheet"),
                     None)
    names = [sheet.name for sheet in sheets]
    if first is None:
        raise ValueError("no worksheet")
    return [names.pop(first), *names]


def plain(path):
    """The parameters with the first worksheet as the monthly model and no yearly calendar."""
    return text(sheet_names(path)[0], PLAIN)


def chosen(names, random):
    """Parameters of a mutated workbook whose sheets had these names."""
    block = random.choice(_BLOCKS) if random.random() < 0.4 else PLAIN
    yearly, kind = "", random.random()
    if kind < 0.1:
        yearly = names[0]
    elif kind < 0.2:
        yearly = random.choice(names)
    return text(names[0], block, yearly, has_monthly=kind > 0.05)


def text(sheet, block, yearly="", has_monthly=True):
    """A parameter file; without a name of a sheet there is no yearly calendar."""
    return _section("Monthly", sheet if has_monthly else "", block) + \
        _section("Yearly", yearly, block, "MonthLayout=3\nColIntervalOfMonth=9\n"
                                          "RowIntervalOfMonth=14\n")


def _section(kind, sheet, block, more=""):
    return f"""[{kind} Calendar]
Output={'Y' if sheet else 'N'}
SheetName={sheet}
FirstDayOfWeek=1
{more}FirstCellOfDay={block.day}
ColIntervalOfDay={block.columns}
RowIntervalOfDay={block.rows}
OutWeekday=Y
FirstCellOfWeekday={block.weekday}
WeekdayName={_WEEKDAYS}
OutMonth=Y
FirstCellOfMonth={block.month}
MonthName={_MONTHS}
OutYear=Y
FirstCellOfYear={block.year}
OutHoliday={'Y' if block.holiday else 'N'}
FirstCellOfHoliday={block.holiday}
MultiHolidays=1
Holiday1=0101,,New Year's Day
Holiday2=1225,,Christmas Day

"""
