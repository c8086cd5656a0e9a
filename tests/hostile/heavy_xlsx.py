"""Large .xlsx workbooks that are legal, or nearly: each has very many of one thing.

Each function takes how many and gives the parts of a workbook, name -> bytes. The sheet "Model" is
the calendar's model.
"""

import io
import zipfile
import zlib

from zip_container import Container, Entry

MAIN = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
PACKAGE = "http://schemas.openxmlformats.org/package/2006"
OFFICE = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
SPREADSHEET = "application/vnd.openxmlformats-officedocument.spreadsheetml."
DRAWING = "application/vnd.openxmlformats-officedocument.drawing+xml"
_X14 = "http://schemas.microsoft.com/office/spreadsheetml/2009/9/main"
_X15 = "http://schemas.microsoft.com/office/spreadsheetml/2010/11/main"
DECLARATION = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n'
SHEET = "xl/worksheets/sheet1.xml"


def to_bytes(parts):
    file = io.BytesIO()
    with zipfile.ZipFile(file, "w", zipfile.ZIP_DEFLATED, compresslevel=1) as container:
        for name, data in parts.items():
            container.writestr(zipfile.ZipInfo(name), data, zipfile.ZIP_DEFLATED)
    return file.getvalue()


def link_text(number, kind, target, mode=""):
    return f'<Relationship Id="{number}" Type="{OFFICE}/{kind}" Target="{target}"{mode}/>'


def links_text(links):
    return f'{DECLARATION}<Relationships xmlns="{PACKAGE}/relationships">{"".join(links)}' \
           "</Relationships>"


def rels_of(part):
    folder, _, base = part.rpartition("/")
    return f"{folder}/_rels/{base}.rels"


def workbook_text(sheets, names="", attributes="", more=""):
    listed = "".join(f'<sheet name="{name}" sheetId="{number}" r:id="rId{number}"/>'
                     for number, name in enumerate(sheets, 1))
    return f'{DECLARATION}<workbook xmlns="{MAIN}" xmlns:r="{OFFICE}"{attributes}>' \
           f"<sheets>{listed}</sheets>{names}{more}</workbook>"


def sheet_text(rows="", behind=""):
    return f'{DECLARATION}<worksheet xmlns="{MAIN}" xmlns:r="{OFFICE}">' \
           f"<sheetData>{rows}</sheetData>{behind}</worksheet>"


def package_of(sheets, workbook=None, parts=None, types=()):
    """A workbook of these sheets (name -> text), other parts, and the types of those: (part, type)
    or (extension, type)."""
    overrides = [("xl/workbook.xml", SPREADSHEET + "sheet.main+xml")]
    overrides += [(f"xl/worksheets/sheet{number}.xml", SPREADSHEET + "worksheet+xml")
                  for number in range(1, len(sheets) + 1)]
    overrides += [(name, kind) for name, kind in types if "." in name]
    defaults = [("rels", "application/vnd.openxmlformats-package.relationships+xml"),
                ("xml", "application/xml"), *((name, kind) for name, kind in types
                                              if "." not in name)]
    listed = [f'<Default Extension="{name}" ContentType="{kind}"/>' for name, kind in defaults]
    listed += [f'<Override PartName="/{name}" ContentType="{kind}"/>' for name, kind in overrides]
    made = {
        "[Content_Types].xml": f'{DECLARATION}<Types xmlns="{PACKAGE}/content-types">'
                               f'{"".join(listed)}</Types>',
        "_rels/.rels": links_text([link_text("rId1", "officeDocument", "xl/workbook.xml")]),
        "xl/workbook.xml": workbook or workbook_text(sheets),
        "xl/_rels/workbook.xml.rels": links_text(
            link_text(f"rId{number}", "worksheet", f"worksheets/sheet{number}.xml")
            for number in range(1, len(sheets) + 1))}
    for number, text in enumerate(sheets.values(), 1):
        made[f"xl/worksheets/sheet{number}.xml"] = text
    return {name: data.encode() if isinstance(data, str) else data
            for name, data in {**made, **(parts or {})}.items()}


def hyperlinks(count):
    """Hyperlinks of one sheet, each with a relationship."""
    links = "".join(f'<hyperlink ref="A{100 + number}" r:id="rId{number}"/>'
                    for number in range(count))
    rels = links_text(link_text(f"rId{number}", "hyperlink", f"https://example.org/{number}",
                                ' TargetMode="External"') for number in range(count))
    return package_of({"Model": sheet_text(behind=f"<hyperlinks>{links}</hyperlinks>")},
                      parts={rels_of(SHEET): rels})


def parts_of_one_sheet(count):
    """Custom properties, each a part of its own."""
    listed = "".join(f'<customPr name="p{number}" r:id="rId{number}"/>' for number in range(count))
    rels = links_text(link_text(f"rId{number}", "customProperty", f"../customProperty{number}.bin")
                       for number in range(count))
    own = {f"xl/customProperty{number}.bin": b"x" for number in range(count)}
    return package_of(
        {"Model": sheet_text(behind=f"<customProperties>{listed}</customProperties>")},
        parts={rels_of(SHEET): rels, **own},
        types=[("bin", SPREADSHEET + "customProperty")])


def _tables(count, name_of, names=""):
    """Tables of one column below each other, far from the calendar."""
    rows, parts, types = [], {}, []
    for number in range(count):
        row = 1000 + 3 * number
        rows.append(f'<row r="{row}"><c r="A{row}" t="inlineStr"><is><t>Column</t></is></c></row>')
        part, name = f"xl/tables/table{number + 1}.xml", name_of(number)
        parts[part] = f'{DECLARATION}<table xmlns="{MAIN}" id="{number + 1}" name="{name}" ' \
            f'displayName="{name}" ref="A{row}:A{row + 1}" totalsRowShown="0">' \
            '<tableColumns count="1"><tableColumn id="1" name="Column"/></tableColumns></table>'
        types.append((part, SPREADSHEET + "table+xml"))
    listed = "".join(f'<tablePart r:id="rId{number}"/>' for number in range(count))
    parts[rels_of(SHEET)] = links_text(
        link_text(f"rId{number}", "table", f"../tables/table{number + 1}.xml")
        for number in range(count))
    behind = f'<tableParts count="{count}">{listed}</tableParts>'
    return package_of({"Model": sheet_text("".join(rows), behind)},
                      workbook_text(["Model"], names), parts, types)


def tables_of_one_name(count):
    """Tables of one name, which is not legal; their copies need names that are free."""
    return _tables(count, lambda number: "Table")


def tables_of_one_stem(count):
    """Table, Table_2, Table_3: legal, and just the names that copies of the first would get."""
    return _tables(count, lambda number: f"Table_{number + 1}" if number else "Table")


def names_and_tables(count):
    """Defined names, half of them the sheet's own, and a table for every forty."""
    own = ' localSheetId="0"'
    names = "".join(f'<definedName name="name_{number}"{"" if number % 2 else own}>'
                    f"Model!$A${number + 1}</definedName>" for number in range(count))
    return _tables(count // 40, lambda number: f"Table{number + 1}",
                   f"<definedNames>{names}</definedNames>")


def _add(parts, part, content):
    """Adds content at the end of the part's root."""
    before, end = parts[part].rsplit(b"</", 1)
    parts[part] = before + content.encode() + b"</" + end


def _slicer_cache(number):
    return f'<slicerCacheDefinition xmlns="{_X14}" name="Cache{number}" sourceName="Column">' \
           f'<extLst><x:ext xmlns:x="{MAIN}" uri="{{2F2917AC-EB37-4324-AD4E-5DD8C200BD13}}">' \
           f'<x15:tableSlicerCache xmlns:x15="{_X15}" tableId="1" column="1"/></x:ext></extLst>' \
           "</slicerCacheDefinition>"


def slicers(count):
    """Slicers of a table of the sheet, each with a cache that the workbook lists and names."""
    numbers = range(1, count + 1)
    names = "".join(f'<definedName name="Cache{number}">#N/A</definedName>' for number in numbers)
    listed = "".join(f'<x14:slicerCache r:id="cache{number}"/>' for number in numbers)
    shown = "".join(f'<slicer name="Slicer{number}" cache="Cache{number}" rowHeight="241300"/>'
                    for number in numbers)
    made = _tables(1, lambda number: "Table", f"<definedNames>{names}</definedNames>")
    _add(made, "xl/workbook.xml", f'<extLst><ext uri="{{46BE6895-7355-4a93-B00E-2C351335B9C9}}">'
         f'<x15:slicerCaches xmlns:x15="{_X15}" xmlns:x14="{_X14}">{listed}</x15:slicerCaches>'
         "</ext></extLst>")
    _add(made, rels_of("xl/workbook.xml"), "".join(
        link_text(f"cache{number}", "slicerCache", f"slicerCaches/slicerCache{number}.xml")
        for number in numbers))
    _add(made, SHEET, '<extLst><ext uri="{3A4CF648-6AED-40f4-86FF-DC5316D8AED3}">'
         f'<x14:slicerList xmlns:x14="{_X14}"><x14:slicer r:id="slicers"/></x14:slicerList>'
         "</ext></extLst>")
    _add(made, rels_of(SHEET), link_text("slicers", "slicer", "../slicers/slicer1.xml"))
    made["xl/slicers/slicer1.xml"] = f'<slicers xmlns="{_X14}">{shown}</slicers>'.encode()
    own = {f"xl/slicerCaches/slicerCache{number}.xml": _slicer_cache(number).encode()
           for number in numbers}
    _add(made, "[Content_Types].xml", "".join(
        f'<Override PartName="/{part}" ContentType="application/vnd.ms-excel.{kind}+xml"/>'
        for part, kind in [("xl/slicers/slicer1.xml", "slicer"),
                           *((part, "slicerCache") for part in own)]))
    return {**made, **own}


def relationships(count):
    """Relationships of a sheet that nothing uses."""
    rels = links_text(link_text(f"rId{number}", "hyperlink", f"https://example.org/{number}",
                                ' TargetMode="External"') for number in range(count))
    return package_of({"Model": sheet_text()}, parts={rels_of(SHEET): rels})


def sheets_that_read_the_next(count):
    """Each sheet reads the one behind it, the last but one reads the model."""
    names = [*(f"Sheet{number}" for number in range(1, count)), "Model"]
    sheets = {name: sheet_text(f'<row r="1"><c r="A1"><f>{following}!A1+1</f><v>1</v></c></row>')
              for name, following in zip(names, names[1:])}
    return package_of({**sheets, "Model": sheet_text('<row r="1"><c r="A1"><v>1</v></c></row>')})


def namespaces(count):
    """Prefixes declared at the root of the workbook part, each used by one element."""
    declared = "".join(f' xmlns:n{number}="urn:n{number}"' for number in range(count))
    used = "".join(f"<n{number}:e/>" for number in range(count))
    workbook = workbook_text(["Model"], attributes=declared,
                         more=f'<extLst><ext uri="urn:x">{used}</ext></extLst>')
    return package_of({"Model": sheet_text()}, workbook)


def blanks(count):
    """Blanks between two rows of a sheet."""
    rows = f'<row r="1"><c r="A1"><v>1</v></c></row>{" " * count}<row r="2"/>'
    return package_of({"Model": sheet_text(rows)})


def blanks_in_a_tag(count):
    """Blanks within the tag of a cell."""
    rows = f'<row r="1"><c r="A1"{" " * count}><v>1</v></c></row>'
    return package_of({"Model": sheet_text(rows)})


def packed_blanks(count):
    """Blanks of which that many bytes are left when they are packed; about 900 times as many are
    there. One block is packed, and stands as often as it has to. Gives the whole file."""
    block = b" " * (1 << 16)
    packer = zlib.compressobj(9, zlib.DEFLATED, -15)
    first = packer.compress(block) + packer.flush(zlib.Z_FULL_FLUSH)
    begin, end = sheet_text(behind="\0").split("\0")
    times = count // len(first)
    last = packer.compress(end.encode()) + packer.flush()
    head = zlib.compressobj(9, zlib.DEFLATED, -15)
    packed = head.compress(begin.encode()) + head.flush(zlib.Z_FULL_FLUSH) + first * times + last
    crc = zlib.crc32(begin.encode())
    for _ in range(times):
        crc = zlib.crc32(block, crc)
    container = Container([Entry(name.encode(), data) for name, data in
                           package_of({"Model": ""}).items()])
    for entry in container.entries:
        if entry.text_name == SHEET:
            entry.packed, entry.crc = packed, zlib.crc32(end.encode(), crc)
            entry.size = len(begin) + times * len(block) + len(end)
    return container.to_bytes()


def chain(count):
    """Parts of which each owns the next; the sheet owns the first."""
    parts = {rels_of(SHEET): links_text([link_text("rId1", "drawing", "../drawings/drawing0.xml")])}
    for number in range(count):
        name = f"xl/drawings/drawing{number}.xml"
        parts[name] = '<xdr:wsDr xmlns:xdr="http://schemas.openxmlformats.org/drawingml/2006/' \
                      'spreadsheetDrawing"/>'
        if number + 1 < count:
            parts[rels_of(name)] = links_text(
                [link_text("rId1", "drawing", f"drawing{number + 1}.xml")])
    return package_of({"Model": sheet_text(behind='<drawing r:id="rId1"/>')}, parts=parts,
                      types=[(f"xl/drawings/drawing{number}.xml", DRAWING)
                             for number in range(count)])


def _spelled(name, number):
    """One of the spellings of a name, in large and small letters."""
    return "".join(letter.upper() if number >> index & 1 else letter
                   for index, letter in enumerate(name))


def spellings(count):
    """One part that the sheet owns, under as many spellings."""
    name = "abcdefghijklmnopq.xml"
    rels = links_text(link_text(f"rId{number}", "drawing", f"../drawings/{_spelled(name, number)}")
                       for number in range(count))
    return package_of({"Model": sheet_text()},
                      parts={rels_of(SHEET): rels, f"xl/drawings/{name}": "<a/>"},
                      types=[(f"xl/drawings/{name}", DRAWING)])


def ring_of_spellings(count):
    """One part that owns itself under as many spellings."""
    name = "abcdefghijklmnopq.xml"
    own = links_text(link_text(f"rId{number}", "drawing", _spelled(name, number))
                     for number in range(count))
    return package_of({"Model": sheet_text(behind='<drawing r:id="rId1"/>')},
                      parts={rels_of(SHEET): links_text(
                                 [link_text("rId1", "drawing", f"../drawings/{name}")]),
                             f"xl/drawings/{name}": "<a/>", rels_of(f"xl/drawings/{name}"): own},
                      types=[(f"xl/drawings/{name}", DRAWING)])
