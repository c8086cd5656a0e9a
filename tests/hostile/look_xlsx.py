"""Workbooks whose look is hostile (.xlsx): each has one thing that is out of range, endless or
very often there.

Each function takes how many and gives the bytes of a workbook whose first sheet is "Model".
"""

import struct
import zlib

from heavy_xlsx import (DECLARATION, DRAWING, MAIN, OFFICE, SHEET, SPREADSHEET, link_text,
                        links_text, package_of, rels_of, sheet_text, to_bytes, workbook_text)

_ART = "http://schemas.openxmlformats.org/drawingml/2006"
_PLACES = f'xmlns:xdr="{_ART}/spreadsheetDrawing" xmlns:a="{_ART}/main" xmlns:r="{OFFICE}"'
_SPARKLINES = ('xmlns:x14="http://schemas.microsoft.com/office/spreadsheetml/2009/9/main" '
               'xmlns:xm="http://schemas.microsoft.com/office/excel/2006/main"')
_CHART = "application/vnd.openxmlformats-officedocument.drawingml.chart+xml"
_THEME = "application/vnd.openxmlformats-officedocument.theme+xml"
_XF = '<xf numFmtId="0" fontId="0" fillId="0" borderId="0"/>'
_FONTS = '<fonts><font><sz val="11"/><name val="Calibri"/></font></fonts>'
_FILLS = '<fills><fill><patternFill patternType="none"/></fill></fills>'
_BORDERS = "<borders><border/></borders>"
_LAST_ROW = 1_048_576


def styles_text(formats="", fonts=_FONTS, fills=_FILLS, cell_formats=_XF, behind=""):
    return f'{DECLARATION}<styleSheet xmlns="{MAIN}">{formats}{fonts}{fills}{_BORDERS}' \
           f"<cellStyleXfs>{_XF}</cellStyleXfs><cellXfs>{cell_formats}</cellXfs>{behind}" \
           "</styleSheet>"


def number(place, value=1, style=0):
    return f'<c r="{place}" s="{style}"><v>{value}</v></c>'


def row(cells, at=1, attributes=""):
    return f'<row r="{at}"{attributes}>{cells}</row>'


def text(place, value, style=0):
    return f'<c r="{place}" s="{style}" t="inlineStr"><is>{value}</is></c>'


def formula(place, value):
    return f'<c r="{place}"><f>{value}</f></c>'


def book(sheet=None, styles=None, parts=None, types=(), names="", theme=None):
    """The bytes of a workbook of one sheet, with its style sheet and theme."""
    more, types, links = dict(parts or {}), list(types), []
    if styles is not None:
        more["xl/styles.xml"] = styles
        types.append(("xl/styles.xml", SPREADSHEET + "styles+xml"))
        links.append(link_text("styles", "styles", "styles.xml"))
    if theme is not None:
        more["xl/theme/theme1.xml"] = theme
        types.append(("xl/theme/theme1.xml", _THEME))
        links.append(link_text("theme", "theme", "theme/theme1.xml"))
    links.append(link_text("rId1", "worksheet", "worksheets/sheet1.xml"))
    more["xl/_rels/workbook.xml.rels"] = links_text(links)
    return to_bytes(package_of({"Model": sheet or sheet_text(row(number("A1")))},
                               workbook_text(["Model"], names), more, types))


def with_drawing(anchors, parts=None, types=(), links=(), rows=None):
    """A workbook with a drawing of these anchors, which owns these parts."""
    name = "xl/drawings/drawing1.xml"
    return book(sheet_text(rows or row(number("A1")), '<drawing r:id="rId1"/>'), parts={
        rels_of(SHEET): links_text([link_text("rId1", "drawing", "../drawings/drawing1.xml")]),
        name: f"{DECLARATION}<xdr:wsDr {_PLACES}>{anchors}</xdr:wsDr>",
        rels_of(name): links_text(links), **(parts or {})}, types=[(name, DRAWING), *types])


def _anchor(content, column=1, line=1):
    def place(tag, more):
        return f"<xdr:{tag}><xdr:col>{column + more}</xdr:col><xdr:colOff>0</xdr:colOff>" \
               f"<xdr:row>{line + more}</xdr:row><xdr:rowOff>0</xdr:rowOff></xdr:{tag}>"
    return f'<xdr:twoCellAnchor>{place("from", 0)}{place("to", 3)}{content}<xdr:clientData/>' \
           "</xdr:twoCellAnchor>"


def _identity(kind, at):
    return f'<xdr:nv{kind}Pr><xdr:cNvPr id="{at}" name="n{at}"/><xdr:cNv{kind}Pr/></xdr:nv{kind}Pr>'


_BOX = '<a:off x="0" y="0"/><a:ext cx="90000" cy="90000"/>'


def _shape(at):
    return f'<xdr:sp>{_identity("Sp", at)}<xdr:spPr><a:xfrm>{_BOX}</a:xfrm>' \
           '<a:prstGeom prst="star12"><a:avLst/></a:prstGeom></xdr:spPr></xdr:sp>'


def _with_picture(data, suffix):
    picture = f'<xdr:pic>{_identity("Pic", 2)}<xdr:blipFill><a:blip r:embed="rId1"/>' \
        f'</xdr:blipFill><xdr:spPr><a:xfrm>{_BOX}</a:xfrm></xdr:spPr></xdr:pic>'
    return with_drawing(_anchor(picture), {f"xl/media/image1.{suffix}": data},
                        [(suffix, f"image/{suffix}")],
                        [link_text("rId1", "image", f"../media/image1.{suffix}")])


# Styles

def no_such_style(count):
    return book(sheet_text(row("".join(number(f"{column}1", 1, count + at)
                                       for at, column in enumerate("ABCDE")), 1,
                               f' s="{1 << 31}" customFormat="1"'),
                           ""), styles_text())


def no_such_parts_of_styles(count):
    """Cell formats whose font, fill, border, number format and parent are not there."""
    formats = f'<xf numFmtId="{count}" fontId="{count}" fillId="-1" borderId="{1 << 40}" ' \
              f'xfId="{count}"/>'
    return book(sheet_text(row(number("A1", 2, 1))), styles_text(cell_formats=_XF + formats))


def styles(count):
    formats = "".join(f'<xf numFmtId="{at % 50}" fontId="{at}" fillId="{at}" borderId="0" '
                      'applyFont="1" applyFill="1"/>' for at in range(count))
    fonts = "".join(f'<font><sz val="{1 + at % 400}"/><name val="Font {at}"/></font>'
                    for at in range(count))
    fills = "".join(f'<fill><patternFill patternType="solid"><fgColor rgb="FF{at:06X}"/>'
                    "</patternFill></fill>" for at in range(count))
    rows = "".join(row(number(f"A{at + 1}", at, at), at + 1) for at in range(count))
    return book(sheet_text(rows), styles_text(
        fonts=f"<fonts>{fonts}</fonts>", fills=f"<fills>{fills}</fills>", cell_formats=formats))


def _with_format(code):
    made = f'<numFmts><numFmt numFmtId="200" formatCode="{code}"/></numFmts>'
    return book(sheet_text("".join(row(number(f"A{at}", 40000.5 + at, 1), at)
                                   for at in range(1, 200))),
                styles_text(made, cell_formats=_XF + '<xf numFmtId="200" fontId="0" fillId="0" '
                            'borderId="0" applyNumberFormat="1"/>'))


def long_number_format(count):
    return _with_format("0" * count)


def number_format_of_dates(count):
    return _with_format(("yyyy-mmmm-dddd " * count)[:count])


def number_format_of_fractions(count):
    return _with_format("# " + "?" * count + "/" + "?" * count)


def number_format_of_sections(count):
    return _with_format("[&gt;1]0;" * count)


def number_format_of_blanks(count):
    return _with_format("_" * count + "*" * count)


def palette(count):
    colors = '<rgbColor rgb="zz"/><rgbColor/><rgbColor rgb="FFFFFFFFFFFFFF"/>' * count
    fills = "".join(f'<fill><patternFill patternType="solid"><fgColor {color}/></patternFill>'
                    "</fill>" for color in (
                        'indexed="4294967295"', 'indexed="-1"', 'theme="99" tint="1e308"',
                        'theme="4" tint="NaN"', 'rgb="#12"', 'indexed="8" tint="-1e999"'))
    formats = "".join(f'<xf fontId="0" fillId="{at}" borderId="0" numFmtId="0" applyFill="1"/>'
                      for at in range(6))
    return book(sheet_text("".join(row(number(f"A{at + 1}", at, at), at + 1) for at in range(6))),
                styles_text(fills=f"<fills>{fills}</fills>", cell_formats=formats,
                            behind=f"<colors><indexedColors>{colors}</indexedColors></colors>"))


def damaged_theme(count):
    fills = '<fills><fill><patternFill patternType="solid"><fgColor theme="4"/></patternFill>' \
            "</fill></fills>"
    return book(styles=styles_text(fills=fills), theme=(
        f'<a:theme xmlns:a="{_ART}/main"><a:themeElements><a:clrScheme name="x">'
        + '<a:accent1><a:srgbClr val="GGGGGG"/><a:sysClr lastClr="1"/></a:accent1>' * count
        + "</a:clrScheme></a:themeElem").encode())


# Geometry

def merge_of_all_rows(count):
    merges = "".join(f'<mergeCell ref="{ref}"/>' for ref in (
        f"A1:B{count}", f"D1:XFD{count}", "B2:A1", "A0:B2", "XFE1:ZZZ3", "A1:A99999999999"))
    return book(sheet_text(row(number("A1") + number("D1")), f"<mergeCells>{merges}</mergeCells>"))


def overlapping_merges(count):
    merges = "".join(f'<mergeCell ref="A{1 + at % 1000}:Z{1000 + at}"/>' for at in range(count))
    return book(sheet_text(row(number("A1")), f"<mergeCells>{merges}</mergeCells>"))


def nested_merges_of_the_sheet(count):
    """Merges that begin in one column each and reach to the sheet's end."""
    merges = "".join(f'<mergeCell ref="A{at + 1}:XFD{_LAST_ROW}"/>' for at in range(count))
    cells = "".join(row(number(f"A{at + 1}"), at + 1) for at in range(count))
    return book(sheet_text(cells, f"<mergeCells>{merges}</mergeCells>"))


_SIZES = ("NaN", "1e308", "-1e308", "-5", "INF", "1e999", "0x10", "", "1e-320")


def sizes(count):
    columns = "".join(f'<col min="{at + 1}" max="{at + 1}" width="{size}" customWidth="1"/>'
                      for at, size in enumerate(_SIZES))
    columns += f'<col min="20" max="{count}" width="255"/><col min="0" max="0" width="3"/>' \
               '<col min="9" max="3" width="3"/>'
    rows = "".join(row(number(f"A{at + 1}"), at + 1, f' ht="{size}" customHeight="1"')
                   for at, size in enumerate(_SIZES))
    made = sheet_text(rows).replace(
        "<sheetData>", '<sheetFormatPr baseColWidth="4294967295" defaultColWidth="1e308" '
        f'defaultRowHeight="NaN"/><cols>{columns}</cols><sheetData>')
    return book(made)


def default_sizes(count):
    """A default row height that overflows, and cells at the sheet's corners."""
    made = sheet_text(row(number("A1")) + row(number(f"XFD{_LAST_ROW}"), _LAST_ROW))
    return book(made.replace("<sheetData>", f'<sheetFormatPr defaultColWidth="{count}" '
                             f'defaultRowHeight="{count}" customHeight="1"/><sheetData>'))


def text_in_a_narrow_column(count):
    wrapped = _XF.replace("/>", ' applyAlignment="1"><alignment wrapText="1"/></xf>')
    made = sheet_text(row(text("A1", "<t>" + "\U0001F469\u200d\u0301\u0323" * (count // 4)
                               + "</t>", 1)))
    return book(made.replace("<sheetData>", '<cols><col min="1" max="1" width="1" '
                             'customWidth="1"/></cols><sheetData>'),
                styles_text(cell_formats=_XF + wrapped))


def rich_text(count):
    runs = "".join(f"<r><rPr><b/><sz val=\"{at % 90}\"/></rPr><t>x</t></r>" for at in range(count))
    return book(sheet_text(row(text("A1", runs))))


def rotated_texts(count):
    turned = "".join(_XF.replace("/>", ' applyAlignment="1"><alignment textRotation="'
                                 f'{angle}" wrapText="1" indent="4294967295" '
                                 'shrinkToFit="1"/></xf>') for angle in ("45", "255", "-1", "999"))
    cells = "".join(row(text(f"A{at + 1}", f"<t>{'long text ' * 3000}</t>", 1 + at % 4), at + 1)
                    for at in range(count))
    return book(sheet_text(cells), styles_text(cell_formats=_XF + turned))


# Pages

_CORNERS = row(number("A1")) + row(number("Z5000"), 5000)


def _print_name(name, value):
    return f'<definedNames><definedName name="_xlnm.{name}" localSheetId="0">{value}' \
           "</definedName></definedNames>"


def page_of_no_size(count):
    """A print area of all cells on paper that has no room between its margins."""
    setup = '<pageMargins left="1e308" right="-1" top="NaN" bottom="50" header="9" footer="9"/>' \
            f'<pageSetup scale="0" fitToWidth="{count}" paperSize="4294967295" ' \
            'paperWidth="0.001mm" paperHeight="0.001mm"/>'
    return book(sheet_text(_CORNERS, setup),
                names=_print_name("Print_Area", f"Model!$A$1:$XFD${_LAST_ROW}"))


def print_areas(count):
    areas = ",".join(f"Model!$A${at}:$XFD${_LAST_ROW}" for at in range(1, count + 1))
    return book(sheet_text(_CORNERS), names=_print_name("Print_Area", areas))


def print_titles(count):
    """Titles that are the whole sheet."""
    titles = ",".join([f"Model!$A:$XFD,Model!$1:${_LAST_ROW}"] * count)
    return book(sheet_text(_CORNERS), names=_print_name("Print_Titles", titles))


def page_breaks(count):
    rows = "".join(f'<brk id="{at}" max="16383" man="1"/>' for at in range(1, count + 1))
    columns = "".join(f'<brk id="{at}" man="1"/>' for at in range(1, min(count, 16_000)))
    cells = "".join(row(number(f"A{at}"), at) for at in range(1, count + 1))
    return book(sheet_text(cells, f"<rowBreaks>{rows}</rowBreaks>"
                           f"<colBreaks>{columns}</colBreaks>"))


def long_footer(count):
    return book(sheet_text(_CORNERS, "<headerFooter><oddFooter>" + '&amp;L&amp;"x"&amp;99&amp;P'
                           * count + "</oddFooter></headerFooter>"))


# Formulas

def deep_formula(count):
    return book(sheet_text(row(formula("A1", "ABS(" * count + "1" + ")" * count)
                               + formula("B1", "(" * count + "1" + ")" * count)
                               + formula("C1", "-" * count + "1")
                               + formula("D1", "1" + "%" * count))))


def deep_formula_within_limits(count):
    """Formulas of at most 8192 characters, which Excel could store, that nest as deep as that."""
    return deep_formula(min(count, 2000))


def long_formula(count):
    return book(sheet_text(row(formula("A1", "1+" * (count // 2) + "1"))))


def chain_of_cells(count):
    rows = row(number("A1")) + "".join(row(formula(f"A{at}", f"A{at - 1}+1"), at)
                                       for at in range(2, count + 1))
    return book(sheet_text(rows))


def chain_upwards(count):
    """The first cell waits for the last."""
    rows = "".join(row(formula(f"A{at}", f"A{at + 1}+1"), at) for at in range(1, count))
    return book(sheet_text(rows + row(number(f"A{count}"), count)))


def circle_of_cells(count):
    rows = "".join(row(formula(f"A{at}", f"A{at % count + 1}+1"), at)
                   for at in range(1, count + 1))
    return book(sheet_text(rows))


def sums_of_all_before(count):
    rows = row(number("A1")) + "".join(row(formula(f"A{at}", f"SUM(A$1:A{at - 1})"), at)
                                       for at in range(2, count + 1))
    return book(sheet_text(rows))


def expensive_cells(count):
    rows = "".join(row(number(f"B{at}") + formula(
        f"A{at}", f"SUMPRODUCT((B:B=B{at})*(C:C&lt;&gt;\"x\")*(ROW(B:B)&gt;{at}))"), at)
        for at in range(1, count + 1))
    return book(sheet_text(rows))


def large_texts(count):
    """Formulas that double a text in every row."""
    rows = row(text("A1", "<t>abcdefgh</t>")) + "".join(
        row(formula(f"A{at}", f"A{at - 1}&amp;A{at - 1}")
            + formula(f"B{at}", f"REPT(A{at},32767)")
            + formula(f"C{at}", f'SUBSTITUTE(B{at},"a",B{at})'), at)
        for at in range(2, count + 1))
    return book(sheet_text(rows))


def names_in_a_circle(count):
    names = "".join(f'<definedName name="_n{at}">_n{(at + 1) % count}+_n{(at + 7) % count}'
                    "</definedName>" for at in range(count))
    return book(sheet_text(row(formula("A1", "_n0") + formula("B1", "SUM(_n1,_n2)"))),
                names=f"<definedNames>{names}</definedNames>")


def names_that_double(count):
    """Each name is the next one twice."""
    names = "".join(f'<definedName name="_d{at}">_d{at + 1}+_d{at + 1}</definedName>'
                    for at in range(count)) + f'<definedName name="_d{count}">1</definedName>'
    return book(sheet_text(row(formula("A1", "_d0"))),
                names=f"<definedNames>{names}</definedNames>")


# Conditions

def _condition(place, value, at=1):
    return f'<conditionalFormatting sqref="{place}"><cfRule type="expression" dxfId="0" ' \
           f'priority="{at}"><formula>{value}</formula></cfRule></conditionalFormatting>'


_DXF = "<dxfs><dxf><font><b/></font></dxf></dxfs>"


def expensive_condition(count):
    rows = "".join(row("".join(number(f"{column}{at}", at) for column in "ABCDEFGHIJ"), at)
                   for at in range(1, count + 1))
    value = "SUMPRODUCT((A:A=A1)*(B:B&lt;&gt;B1)*(ROW(C:C)&gt;COLUMN()))&gt;0"
    return book(sheet_text(rows, _condition(f"A1:XFD{_LAST_ROW}", value)),
                styles_text(behind=_DXF))


def conditions(count):
    listed = "".join(_condition(f"A{1 + at % 1000}:C{2 + at % 1000}", f"A1&gt;{at}", at + 1)
                     for at in range(count))
    rows = "".join(row(number(f"A{at}"), at) for at in range(1, 1000))
    return book(sheet_text(rows, listed), styles_text(behind=_DXF))


def conditions_of_all_cells(count):
    listed = "".join(_condition(f"A1:XFD{_LAST_ROW}", f"A1={at}+COUNT($A$1:$A$1000)", at + 1)
                     for at in range(count))
    rows = "".join(row(number(f"A{at}"), at) for at in range(1, 1000))
    return book(sheet_text(rows, listed), styles_text(behind=_DXF))


def ranges_of_a_condition(count):
    places = " ".join(f"A{at}:XFD{at + 1}" for at in range(1, count + 1))
    return book(sheet_text(row(number("A1")), _condition(places, "A1&gt;0")),
                styles_text(behind=_DXF))


def scales(count):
    """Scales and rankings of whole columns."""
    kinds = ('<cfRule type="top10" dxfId="0" priority="{}" rank="4294967295"/>',
             '<cfRule type="duplicateValues" dxfId="0" priority="{}"/>',
             '<cfRule type="aboveAverage" dxfId="0" priority="{}" stdDev="99"/>',
             '<cfRule type="colorScale" priority="{}"><colorScale><cfvo type="percentile" '
             'val="1e308"/><cfvo type="formula" val="SUM(A:A)"/><color rgb="1"/>'
             '<color theme="99"/></colorScale></cfRule>',
             '<cfRule type="dataBar" priority="{}"><dataBar minLength="-9" maxLength="1e9">'
             '<cfvo type="min"/><cfvo type="num" val="NaN"/><color/></dataBar></cfRule>',
             '<cfRule type="iconSet" priority="{}"><iconSet iconSet="9Stars"><cfvo type="percent" '
             'val="-1"/></iconSet></cfRule>')
    listed = "".join(f'<conditionalFormatting sqref="A1:B{_LAST_ROW}">'
                     f"{kinds[at % len(kinds)].format(at + 1)}</conditionalFormatting>"
                     for at in range(count))
    rows = "".join(row(number(f"A{at}", at % 7), at) for at in range(1, 2000))
    return book(sheet_text(rows, listed), styles_text(behind=_DXF))


# Drawings

def shapes(count):
    return with_drawing("".join(_anchor(_shape(at + 2), at % 50, at % 500)
                                for at in range(count)))


def shapes_of_one_group(count):
    inner = "".join(f'<xdr:sp id="{at * 2654435761 % 2**32:x}"/>' for at in range(count))
    return with_drawing(_anchor(f'<xdr:grpSp>{_identity("GrpSp", 2)}<xdr:grpSpPr/>{inner}'
                                "</xdr:grpSp>"))


def nested_groups(count):
    group = f'<xdr:grpSp>{_identity("GrpSp", 2)}<xdr:grpSpPr><a:xfrm>{_BOX}<a:chOff x="0" y="0"/>' \
            '<a:chExt cx="0" cy="0"/></a:xfrm></xdr:grpSpPr>'
    return with_drawing(_anchor(group * count + _shape(3) + "</xdr:grpSp>" * count))


def huge_drawing(count):
    huge = _shape(2).replace("90000", "9" * 18).replace('x="0"', f'x="-{"9" * 18}"')
    far = _anchor(huge).replace("<xdr:col>1<", f"<xdr:col>{count}<").replace(
        "<xdr:rowOff>0<", f'<xdr:rowOff>{"9" * 18}<')
    return with_drawing(far + f'<xdr:absoluteAnchor><xdr:pos x="-{"9" * 17}" y="{"9" * 17}"/>'
                        f'<xdr:ext cx="{"9" * 19}" cy="-1"/>{huge}<xdr:clientData/>'
                        "</xdr:absoluteAnchor>")


def shape_of_many_points(count):
    path = "".join(f'<a:lnTo><a:pt x="{at * 7919 % 1000}" y="{at * 31 % 1000}"/></a:lnTo>'
                   for at in range(count))
    custom = f'<a:custGeom><a:pathLst><a:path w="1000" h="0"><a:moveTo><a:pt x="0" y="0"/>' \
             f"</a:moveTo>{path}</a:path></a:pathLst></a:custGeom>"
    return with_drawing(_anchor(_shape(2).replace(
        '<a:prstGeom prst="star12"><a:avLst/></a:prstGeom>', custom)))


def _chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def png(width, height, packed):
    return b"\x89PNG\r\n\x1a\n" + _chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 6, 0,
                                                             0, 0)) \
        + _chunk(b"IDAT", packed) + _chunk(b"IEND", b"")


def large_png(count):
    return _with_picture(png(count, count, zlib.compress(bytes(100_000))), "png")


def large_jpeg(count):
    side = min(count, 0xFFFF)
    frame = struct.pack(">HBHHB", 17, 8, side, side, 3) + b"\1\x22\0\2\x11\1\3\x11\1"
    return _with_picture(b"\xff\xd8\xff\xe0\0\x10JFIF\0\1\1\0\0\1\0\1\0\0\xff\xc0" + frame
                         + b"\xff\xda\0\x0c\3\1\0\2\x11\3\x11\0\x3f\0" + bytes(1000)
                         + b"\xff\xd9", "jpeg")


def packed_picture(count):
    """A picture of that many bytes, which are nearly nothing in the package."""
    return _with_picture(png(100, 100, zlib.compress(bytes(40_100))) + bytes(count), "png")


def packed_vectors(count):
    return _with_picture(b'<svg xmlns="http://www.w3.org/2000/svg">' + b"<g>" * (count // 3), "svg")


def metafile(count):
    head = struct.pack("<II4i4i4sIIIHHIII", 1, 88, 0, 0, 2 ** 31 - 1, 2 ** 31 - 1, -2 ** 31,
                       -2 ** 31, 2 ** 31 - 1, 2 ** 31 - 1, b" EMF", 0x10000, 0xFFFFFFFF,
                       0xFFFFFFFF, 0xFFFF, 0, 0, 0, 0)
    return _with_picture(head + struct.pack("<II", 76, 0xFFFFFFF0) * count, "emf")


def chart_of_points(count):
    points = "".join(f'<c:pt idx="{at}"><c:v>{at % 1000}</c:v></c:pt>' for at in range(count))
    chart = f'<c:chartSpace xmlns:c="{_ART}/chart"><c:chart><c:plotArea><c:lineChart><c:ser>' \
            '<c:idx val="0"/><c:val><c:numRef><c:f>Model!$A$1:$A$9</c:f><c:numCache>' \
            f'<c:ptCount val="4294967295"/>{points}</c:numCache></c:numRef></c:val></c:ser>' \
            "</c:lineChart></c:plotArea></c:chart></c:chartSpace>"
    return _with_chart(chart)


def chart_of_extremes(count):
    values = ("1e308", "-1e308", "NaN", "INF", "", "1e-320")
    points = "".join(f'<c:pt idx="{at * 700_000_000}"><c:v>{value}</c:v></c:pt>'
                     for at, value in enumerate(values))
    series = '<c:ser><c:idx val="4294967295"/><c:order val="-1"/><c:val><c:numLit>' \
             f"{points}</c:numLit></c:val></c:ser>"
    axis = '<c:valAx><c:axId val="1"/><c:scaling><c:logBase val="1"/><c:max val="-1e308"/>' \
           '<c:min val="1e308"/></c:scaling><c:majorUnit val="1e-300"/></c:valAx>'
    kinds = "".join(f"<c:{kind}>{series * count}</c:{kind}>" for kind in (
        "barChart", "pieChart", "scatterChart", "areaChart", "radarChart", "bubbleChart"))
    return _with_chart(f'<c:chartSpace xmlns:c="{_ART}/chart"><c:chart><c:plotArea>{kinds}{axis}'
                       "</c:plotArea></c:chart></c:chartSpace>")


def _with_chart(chart):
    frame = f'<xdr:graphicFrame>{_identity("GraphicFrame", 2)}<xdr:xfrm>{_BOX}</xdr:xfrm>' \
            f'<a:graphic><a:graphicData uri="{_ART}/chart"><c:chart xmlns:c="{_ART}/chart" ' \
            'r:id="rId1"/></a:graphicData></a:graphic></xdr:graphicFrame>'
    return with_drawing(_anchor(frame), {"xl/charts/chart1.xml": chart},
                        [("xl/charts/chart1.xml", _CHART)],
                        [link_text("rId1", "chart", "../charts/chart1.xml")])


def sparklines(count):
    listed = "".join(f"<x14:sparkline><xm:f>Model!A1:XFD{1 + at % 1000}</xm:f>"
                     f"<xm:sqref>B{at + 1}</xm:sqref></x14:sparkline>" for at in range(count))
    ext = '<extLst><ext uri="{05C60535-1F16-4fd2-B633-F4F36F0B64E0}" ' + _SPARKLINES + \
          f"><x14:sparklineGroups><x14:sparklineGroup><x14:sparklines>{listed}</x14:sparklines>" \
          "</x14:sparklineGroup></x14:sparklineGroups></ext></extLst>"
    return book(sheet_text("".join(row(number(f"A{at}"), at) for at in range(1, 100)), ext))
