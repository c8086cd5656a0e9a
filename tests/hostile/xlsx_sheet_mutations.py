"""Mutations of what a workbook says: its sheets, names, texts, cells, rows, merges and tables."""

import re

import xml_text
from mutation import Kinds, numbers
from xlsx_book import set_text, text_of
from xlsx_part_mutations import add_link

KINDS = Kinds()
_SHEET_TYPE = "application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml"
_TABLE_TYPE = "application/vnd.openxmlformats-officedocument.spreadsheetml.table+xml"
RELATIONSHIPS = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
MAIN = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
_CELLS = ("A1", "C40", "D38", "XFD1048576", "XFE1", "A1048577", "A0", "AAAA1", "1A", "", "$A$1",
          "a1", "R1C1", "A1:B2", "A99999999999", "\u0410 1")
_ODD_NAMES = ("", " ", "a/b", "x" * 32, "x" * 300, "'quoted'", "History", "January", "2027",
              "&lt;&amp;&gt;", "a&#10;b", "\U0001f600" * 31, "[1]", "A1", "_x0000_")
_FORMULAS = ("#REF!", "Sheet1!A1", "'", "(" * 500, "'a''b'!A1:", "[1]x!A1", "A1:XFD1048576", "{1,2",
             "SUM(" * 200 + ")" * 200, "\"open", "Table1[[#This Row],[x]]", "Table1[", "!A1",
             "'January'!A1", "1" * 9000)


def _elements(book, random, kinds, *names):
    """(entry, text, elements) of one part of these kinds; the elements may be none."""
    entry = book.one(random, *kinds)
    text = text_of(entry) if entry else ""
    return entry, text, xml_text.elements(text, *names)


def _set(book, random, kinds, names, attribute, make):
    """Gives an attribute of one of these elements the value that `make(old)` gives."""
    entry, text, found = _elements(book, random, kinds, *names)
    if not found:
        return None
    element = random.choice(found)
    old = xml_text.attribute(text, element, attribute)
    new = make(xml_text.value(text, old) if old else "")
    set_text(entry, xml_text.set_attribute(text, element, attribute, new))
    return f"{entry.text_name} {element.name} {attribute} {new[:40]}"


def _same_value_twice(book, random, kinds, name, attribute):
    """Two elements with one value; an only one stands twice."""
    entry, text, found = _elements(book, random, kinds, name)
    if not found:
        return None
    one, other = random.sample(found, 2) if len(found) > 1 else (found[0], None)
    if other is None:
        set_text(entry, text[:one.end] + text[one.start:one.end] + text[one.end:])
        return f"{entry.text_name} {name} twice"
    given = xml_text.attribute(text, one, attribute)
    if given is None:
        return None
    set_text(entry, xml_text.set_attribute(text, other, attribute, xml_text.value(text, given)))
    return f"{entry.text_name} {attribute}"


# ----------------------------------------------------------------- sheets

@KINDS
def sheet_id_twice(book, random):
    return _same_value_twice(book, random, ["workbook"], "sheet", "sheetId")


@KINDS
def sheet_name_twice(book, random):
    return _same_value_twice(book, random, ["workbook"], "sheet", "name")


@KINDS
def sheet_link_twice(book, random):
    """Two sheets are one part."""
    return _same_value_twice(book, random, ["workbook"], "sheet", "id")


@KINDS
def odd_sheet_name(book, random):
    return _set(book, random, ["workbook"], ["sheet"], "name", lambda _: random.choice(_ODD_NAMES))


@KINDS
def odd_sheet_id(book, random):
    return _set(book, random, ["workbook"], ["sheet"], "sheetId", lambda _: numbers(random))


@KINDS
def many_sheets(book, random):
    """More sheets, with parts of their own."""
    workbook = book.one(random, "workbook")
    if workbook is None:
        return None
    count = random.choice((20, 300, 1200))
    listed = []
    for number in range(count):
        name = f"xl/worksheets/more{number}.xml"
        book.add(name, f'<worksheet xmlns="{MAIN}"><sheetData/></worksheet>'.encode())
        listed.append(f'<sheet name="More {number}" sheetId="{9000 + number}" '
                      f'r:id="rIdMore{number}"/>')
        add_link(book, workbook, f"rIdMore{number}", "worksheet", f"worksheets/more{number}.xml")
    _add_types(book, [f"xl/worksheets/more{number}.xml" for number in range(count)], _SHEET_TYPE)
    text = text_of(workbook)
    set_text(workbook, text.replace("</sheets>", "".join(listed) + "</sheets>", 1))
    return f"{count}"


def _add_types(book, names, content_type):
    types = book.types()
    if types:
        added = "".join(f'<Override PartName="/{name}" ContentType="{content_type}"/>'
                        for name in names)
        types.data = types.data.replace(b"</Types>", added.encode() + b"</Types>")


# ------------------------------------------------------------------ names

@KINDS
def defined_name(book, random):
    """A name more: one that is there, or an odd one."""
    entry, text, found = _elements(book, random, ["workbook"], "definedName")
    if entry is None:
        return None
    scope = random.choice(("", "", ' localSheetId="0"', ' localSheetId="99"',
                           ' localSheetId="-1"'))
    name = random.choice(("_xlnm.Print_Area", "_xlnm.Print_Titles", "same", "A1", "", "x" * 300))
    made = f'<definedName name="{name}"{scope}>{random.choice(_FORMULAS)}</definedName>'
    if found and random.random() < 0.5:
        one = random.choice(found)
        made = text[one.start:one.end]
    if found:
        at = found[-1].end
        set_text(entry, text[:at] + made + text[at:])
    else:
        set_text(entry, re.sub(r"(</(\w+:)?sheets>)",
                               lambda tag: f"{tag[1]}<definedNames>{made * 2}</definedNames>",
                               text, count=1))
    return made[:100]


@KINDS
def many_names(book, random):
    entry, text, found = _elements(book, random, ["workbook"], "sheets")
    if not found or "<definedNames" in text:
        return None
    count = random.choice((100, 2000))
    sheet = random.choice(("Sheet1", "'x y'", "January"))
    made = "".join(f'<definedName name="name{number}">{sheet}!$A${number + 1}</definedName>'
                   for number in range(count))
    at = found[0].end
    set_text(entry, f"{text[:at]}<definedNames>{made}</definedNames>{text[at:]}")
    return f"{count}"


# ------------------------------------------------------------------ texts

@KINDS
def string_counts(book, random):
    return _set(book, random, ["strings"], ["sst"], random.choice(("count", "uniqueCount")),
                lambda _: numbers(random))


@KINDS
def drop_strings(book, random):
    entry, text, found = _elements(book, random, ["strings"], "si")
    if not found:
        return None
    kept = random.randrange(len(found))
    set_text(entry, text[:found[kept].start] + text[found[-1].end:])
    return f"{entry.text_name} {len(found) - kept}"


@KINDS
def string_index(book, random):
    """A cell's value, which may be the index of a text."""
    entry, text, found = _elements(book, random, ["sheet"], "v")
    if not found:
        return None
    element = random.choice(found)
    end = text.rfind("</", element.start, element.end)
    set_text(entry, text[:element.open_end] + numbers(random) + text[max(end, element.open_end):])
    return entry.text_name


# ------------------------------------------------------------ cells, rows

@KINDS
def cell_place(book, random):
    return _set(book, random, ["sheet"], ["c"], "r", lambda _: random.choice(_CELLS))


@KINDS
def row_number(book, random):
    return _set(book, random, ["sheet"], ["row"], "r", lambda _: numbers(random))


@KINDS
def without_places(book, random):
    """Rows or cells that do not say where they are."""
    entry, text, found = _elements(book, random, ["sheet"], "sheetData")
    if not found:
        return None
    name = random.choice(("row", "c"))
    share = random.choice((1.0, 0.5, 0.1))
    set_text(entry, re.sub(rf'(<{name}\b[^>]*?) r="[^"]*"',
                           lambda tag: tag[1] if random.random() < share else tag[0], text))
    return f"{entry.text_name} {name} {share}"


@KINDS
def cells_out_of_order(book, random):
    """Cells of one row, or rows, in another order or twice."""
    name = random.choice(("c", "row"))
    entry, text, found = _elements(book, random, ["sheet"], name)
    if len(found) < 2:
        return None
    first = random.randrange(len(found) - 1)
    chosen = found[first:first + random.choice((2, 5, 50))]
    pieces = [text[element.start:element.end] for element in chosen]
    if random.random() < 0.5:
        pieces.append(random.choice(pieces))
    random.shuffle(pieces)
    if any(one.end > other.start for one, other in zip(chosen, chosen[1:])):
        return None
    set_text(entry, text[:chosen[0].start] + "".join(pieces) + text[chosen[-1].end:])
    return f"{entry.text_name} {name} {len(chosen)}"


@KINDS
def cells_where_the_calendar_is(book, random):
    """Cells and rows where the calendar writes: twice, of odd kinds, without order."""
    entry, text, found = _elements(book, random, ["sheet"], "sheetData")
    if not found:
        return None
    kind = random.choice((' t="s"><v>0</v>', ' t="inlineStr"><is><t>x</t></is>', "><f>A1</f>",
                          ' t="b"><v>7</v>', ' t="zz"><v>1</v>', ' s="99999"><v>1</v>',
                          '><f t="array" ref="A1:Z99">1</f>', '><f t="shared" si="9">x</f>',
                          '><f t="dataTable" ref="A1:Z99" r1="A1"/>', ">"))
    cells = "".join(f'<c r="{letter}{row}"{kind}</c>' for letter in "CDEC"
                    for row in (random.choice((38, 39, 40, 42)),))
    rows = f'<row r="40">{cells}</row>' * random.choice((1, 2)) + "<row>" + cells + "</row>"
    if text[found[0].open_end - 2:found[0].open_end] == "/>":
        return None
    at = random.choice((found[0].open_end, text.rfind("</", 0, found[0].end)))
    set_text(entry, text[:at] + rows + text[at:])
    return f"{entry.text_name} {kind}"


@KINDS
def dimension(book, random):
    return _set(book, random, ["sheet"], ["dimension"], "ref",
                lambda _: random.choice((*_CELLS, "A1:A1", "C3:A1", "A1:XFD1048576", "A:A")))


@KINDS
def cell_style(book, random):
    return _set(book, random, ["sheet"], ["c", "row", "col"], random.choice(("s", "style")),
                lambda _: numbers(random))


@KINDS
def formula(book, random):
    entry, text, found = _elements(book, random, ["sheet", "workbook", "table"], "f", "formula",
                                   "formula1", "definedName", "calculatedColumnFormula")
    if not found:
        return None
    element = random.choice(found)
    end = text.rfind("</", element.open_end, element.end)
    if end < 0:
        return None
    set_text(entry, text[:element.open_end] + random.choice(_FORMULAS) + text[end:])
    return f"{entry.text_name} {element.name}"


@KINDS
def shared_formula(book, random):
    return _set(book, random, ["sheet"], ["f"], random.choice(("si", "ref", "t")),
                lambda _: random.choice(("0", "99999", "-1", "shared", "array", "A1:XFD1048576",
                                         "dataTable", "B2:A1", "")))


# --------------------------------------------------- what lies on a sheet

def _add_to_sheet(book, random, markup):
    """Markup behind the cells, or in place of the first element of that name."""
    entry, text, found = _elements(book, random, ["sheet"], "sheetData")
    if not found:
        return None
    at = found[0].end
    set_text(entry, text[:at] + markup + text[at:])
    return f"{entry.text_name} {markup[:60]}"


@KINDS
def merges(book, random):
    areas = random.choice((["A1:C3", "B2:D4"], ["C40:I50", "C40:D41"], ["A1"], ["C3:A1"],
                           ["A1:XFE9"], [""], ["A1:B2"] * 3, ["C40:XFD1048576"],
                           [f"A{row}:B{row + 1}" for row in range(1, 2000, 2)]))
    cells = "".join(f'<mergeCell ref="{area}"/>' for area in areas)
    return _add_to_sheet(book, random, f'<mergeCells count="7">{cells}</mergeCells>')


@KINDS
def protection(book, random):
    return _add_to_sheet(book, random, random.choice((
        '<sheetProtection sheet="1"/>', '<sheetProtection sheet="2" password="zz"/>',
        '<sheetProtection sheet="1"/><protectedRanges><protectedRange sqref="C40:I60" name="a"/>'
        '</protectedRanges>', '<sheetProtection sheet="true"/><protectedRanges><protectedRange '
        'sqref="C40:C"/></protectedRanges>')))


@KINDS
def hyperlinks(book, random):
    count = random.choice((1, 50, 3000))
    links = "".join(f'<hyperlink ref="A{number + 1}" r:id="rIdGone{number}" location="x!A1" '
                    f'xmlns:r="{RELATIONSHIPS}"/>' for number in range(count))
    return _add_to_sheet(book, random, f"<hyperlinks>{links}</hyperlinks>")


@KINDS
def lead_nowhere(book, random):
    """An element of a sheet that names a relationship that is not there."""
    name = random.choice(("drawing", "legacyDrawing", "picture", "tableParts", "oleObjects"))
    inner = f'<{name} r:id="rIdNowhere" xmlns:r="{RELATIONSHIPS}"/>'
    if name == "tableParts":
        inner = f'<tableParts>{inner.replace("tableParts", "tablePart")}</tableParts>'
    return _add_to_sheet(book, random, inner)


# ----------------------------------------------------------------- tables

@KINDS
def table_name(book, random):
    tables = book.of_kind("table")
    if not tables:
        return None
    names = [xml_text.value(text_of(table), found) for table in tables
             for element in xml_text.elements(text_of(table), "table")
             for found in [xml_text.attribute(text_of(table), element, "displayName")] if found]
    return _set(book, random, ["table"], ["table"], random.choice(("name", "displayName")),
                lambda _: random.choice((*names, "", "A1", "x" * 300, "Table 1", "History")))


@KINDS
def table_number(book, random):
    return _set(book, random, ["table"], ["table"], random.choice(("id", "ref", "headerRowCount",
                                                                   "totalsRowCount")),
                lambda _: random.choice((numbers(random), "A1:C3", "C40:I45", "B2:A1", "A1")))


@KINDS
def table_column(book, random):
    """Names of columns: none, twice, or other than the header cell."""
    if random.random() < 0.3:
        return _same_value_twice(book, random, ["table"], "tableColumn", "name")
    return _set(book, random, ["table"], ["tableColumn"], "name",
                lambda _: random.choice(("", "x", "_x000a_", "x" * 400, "[#All]", "a&#10;b")))


@KINDS
def add_table(book, random):
    """A table over the calendar, with a name that is there already or not."""
    sheet = book.one(random, "sheet")
    if sheet is None or "</worksheet>" not in text_of(sheet):
        return None
    area = random.choice(("C39:E60", "A1:C3", "C40:E41", "XFB1:XFD3"))
    count = random.choice((1, 2, 60))
    for number in range(count):
        name = f"xl/tables/added{number}.xml"
        book.add(name, table_text(7, "Added", area).encode())
        add_link(book, sheet, f"rIdAdded{number}", "table", f"/{name}")
    _add_types(book, [f"xl/tables/added{number}.xml" for number in range(count)], _TABLE_TYPE)
    parts = "".join(f'<tablePart r:id="rIdAdded{number}"/>' for number in range(count))
    set_text(sheet, text_of(sheet).replace(
        "</worksheet>", f'<tableParts xmlns:r="{RELATIONSHIPS}">{parts}</tableParts></worksheet>'))
    return f"{sheet.text_name} {area} {count}"


def table_text(number, name, area):
    """A table of three columns."""
    columns = "".join(f'<tableColumn id="{column}" name="Column{column}"/>' for column in (1, 2, 3))
    return f'<table xmlns="{MAIN}" id="{number}" name="{name}" displayName="{name}" ' \
           f'ref="{area}" totalsRowShown="0"><tableColumns count="3">{columns}</tableColumns>' \
           "</table>"
