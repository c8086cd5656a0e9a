"""What XlsxWriter cannot write of a sheet's features, added to the package that it wrote.

Conditional formats and validations of Excel 2010 over other sheets, icons of one's own, threaded
comments, shapes, a connector, a group, a form control, a slicer, a custom view, printer settings,
a code name, other headers for the first and for even pages.
"""
import re
import sys
import zipfile

VIEW = "{0F0E0D0C-1111-4222-8333-444455556666}"
THREAD = "{11111111-2222-4333-8444-555555555555}"
REPLY = "{66666666-7777-4888-9999-AAAAAAAAAAAA}"
PERSON = "{BBBBBBBB-CCCC-4DDD-8EEE-FFFFFFFFFFFF}"
DECLARATION = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n'
MAIN = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
X14 = "http://schemas.microsoft.com/office/spreadsheetml/2009/9/main"
X15 = "http://schemas.microsoft.com/office/spreadsheetml/2010/11/main"
XM = "http://schemas.microsoft.com/office/excel/2006/main"
MC = "http://schemas.openxmlformats.org/markup-compatibility/2006"
RELATIONSHIPS = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
THREADS = "http://schemas.microsoft.com/office/spreadsheetml/2018/threadedcomments"
_FAMILIES = {"threadedComment": "http://schemas.microsoft.com/office/2017/10/relationships",
             "person": "http://schemas.microsoft.com/office/2017/10/relationships",
             "slicer": "http://schemas.microsoft.com/office/2007/relationships",
             "slicerCache": "http://schemas.microsoft.com/office/2007/relationships"}

_COMMENTS = (
    f'{DECLARATION}<ThreadedComments xmlns="{THREADS}">'
    f'<threadedComment ref="B6" dT="2026-01-01T00:00:00.00" personId="{PERSON}" id="{THREAD}">'
    "<text>a question</text></threadedComment>"
    f'<threadedComment ref="B6" dT="2026-01-02T00:00:00.00" personId="{PERSON}" id="{REPLY}" '
    f'parentId="{THREAD}"><text>an answer</text></threadedComment></ThreadedComments>')
_PERSONS = (f'{DECLARATION}<personList xmlns="{THREADS}"><person displayName="Ann" '
            f'id="{PERSON}" userId="Ann" providerId="None"/></personList>')

_CONTROLS = (
    f'<mc:AlternateContent xmlns:mc="{MC}"><mc:Choice xmlns:x14="{X14}" Requires="x14"><controls>'
    '<mc:AlternateContent><mc:Choice Requires="x14"><control shapeId="1040" r:id="rIdControl" '
    'name="Check Box 16"><controlPr defaultSize="0" autoFill="0" autoLine="0" autoPict="0">'
    "<anchor moveWithCells=\"1\"><from><xdr:col>5</xdr:col><xdr:colOff>0</xdr:colOff>"
    "<xdr:row>6</xdr:row><xdr:rowOff>0</xdr:rowOff></from><to><xdr:col>7</xdr:col>"
    "<xdr:colOff>0</xdr:colOff><xdr:row>7</xdr:row><xdr:rowOff>0</xdr:rowOff></to></anchor>"
    "</controlPr></control></mc:Choice></mc:AlternateContent></controls></mc:Choice>"
    "</mc:AlternateContent>")
_CONTROL_PROPERTIES = (
    f'{DECLARATION}<formControlPr xmlns="{X14}" objectType="CheckBox" checked="Checked" '
    'fmlaLink="Model!$C$20" lockText="1" noThreeD="1"/>')
_CONTROL_SHAPE = (
    '<v:shapetype id="_x0000_t201" coordsize="21600,21600" o:spt="201" '
    'path="m,l,21600r21600,l21600,xe"><v:stroke joinstyle="miter"/><v:path shadowok="f" '
    'o:extrusionok="f" strokeok="f" fillok="f" o:connecttype="rect"/><o:lock v:ext="edit" '
    'shapetype="t"/></v:shapetype><v:shape id="_x0000_s1040" type="#_x0000_t201" '
    'style="position:absolute;margin-left:250pt;margin-top:90pt;width:90pt;height:15pt;z-index:5" '
    'filled="f" fillcolor="window [65]" stroked="f" strokecolor="windowText [64]" o:insetmode="auto">'
    '<v:textbox style="mso-direction-alt:auto"><div style="text-align:left">done</div></v:textbox>'
    '<x:ClientData ObjectType="Checkbox"><x:Anchor>5, 0, 6, 0, 7, 0, 7, 0</x:Anchor>'
    "<x:AutoFill>False</x:AutoFill><x:FmlaLink>Model!$C$20</x:FmlaLink><x:Checked>1</x:Checked>"
    "</x:ClientData></v:shape>")

_SLICER = (f'{DECLARATION}<slicers xmlns="{X14}"><slicer name="Day" cache="Slicer_Day" '
           'caption="Day" rowHeight="241300"/></slicers>')
_SLICER_CACHE = (
    f'{DECLARATION}<slicerCacheDefinition xmlns="{X14}" xmlns:x="{MAIN}" name="Slicer_Day" '
    'sourceName="Day"><extLst><x:ext uri="{2F2917AC-EB37-4324-AD4E-5DD8C200BD13}" '
    f'xmlns:x15="{X15}"><x15:tableSlicerCache tableId="1" column="1"/></x:ext></extLst>'
    "</slicerCacheDefinition>")
_SLICER_LIST = ('<ext uri="{3A4CF648-6AED-40f4-86FF-DC5316D8AED3}" '
                f'xmlns:x15="{X15}"><x14:slicerList xmlns:x14="{X14}"><x14:slicer r:id="rIdSlicer"/>'
                "</x14:slicerList></ext>")
_SLICER_CACHES = ('<extLst><ext uri="{46BE6895-7355-4a93-B00E-2C351335B9C9}" '
                  f'xmlns:x15="{X15}"><x15:slicerCaches xmlns:x14="{X14}">'
                  '<x14:slicerCache r:id="rIdCache"/></x15:slicerCaches></ext></extLst>')

_FORMATS_14 = (
    f'<x14:conditionalFormatting xmlns:xm="{XM}"><x14:cfRule type="iconSet" priority="11" '
    'id="{0A0A0A0A-0001-4001-8001-000000000001}"><x14:iconSet iconSet="3Stars" custom="1">'
    "<x14:cfvo type=\"percent\"><xm:f>0</xm:f></x14:cfvo><x14:cfvo type=\"num\"><xm:f>5</xm:f>"
    '</x14:cfvo><x14:cfvo type="num"><xm:f>9</xm:f></x14:cfvo><x14:cfIcon iconSet="NoIcons" '
    'iconId="0"/><x14:cfIcon iconSet="3Stars" iconId="1"/><x14:cfIcon iconSet="3Stars" iconId="2"/>'
    "</x14:iconSet></x14:cfRule><xm:sqref>G26:G30</xm:sqref></x14:conditionalFormatting>"
    f'<x14:conditionalFormatting xmlns:xm="{XM}"><x14:cfRule type="expression" priority="12" '
    'id="{0A0A0A0A-0001-4001-8001-000000000002}"><xm:f>Other!$A$1=Model!$B1</xm:f><x14:dxf><fill>'
    '<patternFill><bgColor rgb="FFBDD7EE"/></patternFill></fill></x14:dxf></x14:cfRule>'
    "<xm:sqref>H26:H30</xm:sqref></x14:conditionalFormatting>")
_VALIDATIONS_14 = (
    f'<ext uri="{{CCE6A557-97BC-4b89-ADB6-D9C93CAAB3DF}}" xmlns:x14="{X14}"><x14:dataValidations '
    f'xmlns:xm="{XM}" count="1"><x14:dataValidation type="list" allowBlank="1" '
    'showErrorMessage="1"><x14:formula1><xm:f>Other!$A$1:$A$3</xm:f></x14:formula1>'
    "<xm:sqref>E5</xm:sqref></x14:dataValidation></x14:dataValidations></ext>")

_VIEWS = (f'<customSheetViews><customSheetView guid="{VIEW}" scale="60"><pageMargins left="0.7" '
          'right="0.7" top="0.75" bottom="0.75" header="0.3" footer="0.3"/></customSheetView>'
          "</customSheetViews>")
_WORKBOOK_VIEW = (f'<customWorkbookViews><customWorkbookView name="Own" guid="{VIEW}" '
                  'windowWidth="1000" windowHeight="800" activeSheetId="1"/></customWorkbookViews>')


def _anchor(column, row, content):
    ends = "".join(f"<xdr:{end}><xdr:col>{column + size}</xdr:col><xdr:colOff>0</xdr:colOff>"
                   f"<xdr:row>{row + size}</xdr:row><xdr:rowOff>0</xdr:rowOff></xdr:{end}>"
                   for end, size in (("from", 0), ("to", 2)))
    return f"<xdr:twoCellAnchor>{ends}{content}<xdr:clientData/></xdr:twoCellAnchor>"


def _form(preset, color):
    return (f'<xdr:spPr><a:xfrm><a:off x="100000" y="100000"/><a:ext cx="1200000" cy="380000"/>'
            f'</a:xfrm><a:prstGeom prst="{preset}"><a:avLst/></a:prstGeom><a:solidFill>'
            f'<a:srgbClr val="{color}"/></a:solidFill><a:ln w="19050"><a:solidFill><a:srgbClr '
            'val="1F4E79"/></a:solidFill></a:ln></xdr:spPr>')


def _shape(number, name, preset, color, text):
    return (f'<xdr:sp macro="" textlink=""><xdr:nvSpPr><xdr:cNvPr id="{number}" name="{name}"/>'
            f"<xdr:cNvSpPr/></xdr:nvSpPr>{_form(preset, color)}<xdr:txBody><a:bodyPr/><a:lstStyle/>"
            f"<a:p><a:r><a:rPr lang=\"en-US\"/><a:t>{text}</a:t></a:r></a:p></xdr:txBody></xdr:sp>")


def _drawn():
    line = ('<xdr:cxnSp macro=""><xdr:nvCxnSpPr><xdr:cNvPr id="32" name="Line"/><xdr:cNvCxnSpPr>'
            '<a:stCxn id="31" idx="0"/></xdr:cNvCxnSpPr></xdr:nvCxnSpPr>'
            + _form("straightConnector1", "FFFFFF").replace(
                '<a:solidFill><a:srgbClr val="FFFFFF"/></a:solidFill>', "") + "</xdr:cxnSp>")
    group = ('<xdr:grpSp><xdr:nvGrpSpPr><xdr:cNvPr id="33" name="Group"/><xdr:cNvGrpSpPr/>'
             '</xdr:nvGrpSpPr><xdr:grpSpPr><a:xfrm><a:off x="100000" y="100000"/><a:ext cx="1200000" '
             'cy="380000"/><a:chOff x="100000" y="100000"/><a:chExt cx="1200000" cy="380000"/>'
             "</a:xfrm></xdr:grpSpPr>" + _shape(34, "Left", "ellipse", "FFD966", "left")
             + _shape(35, "Right", "triangle", "A9D08E", "right") + "</xdr:grpSp>")
    slicer = (f'<mc:AlternateContent xmlns:mc="{MC}"><mc:Choice Requires="sle15" '
              'xmlns:sle15="http://schemas.microsoft.com/office/drawing/2012/slicer">'
              '<xdr:graphicFrame macro=""><xdr:nvGraphicFramePr><xdr:cNvPr id="36" name="Day"/>'
              '<xdr:cNvGraphicFramePr/></xdr:nvGraphicFramePr><xdr:xfrm><a:off x="0" y="0"/>'
              '<a:ext cx="0" cy="0"/></xdr:xfrm><a:graphic><a:graphicData '
              'uri="http://schemas.microsoft.com/office/drawing/2010/slicer"><sle:slicer '
              'xmlns:sle="http://schemas.microsoft.com/office/drawing/2010/slicer" name="Day"/>'
              "</a:graphicData></a:graphic></xdr:graphicFrame></mc:Choice><mc:Fallback>"
              + _shape(37, "No slicer", "rect", "FFFFFF", "a slicer of tables")
              + "</mc:Fallback></mc:AlternateContent>")
    shape = _shape(31, "Star", "star5", "FFC000", "a star")
    return "".join(_anchor(24, 2 + 4 * place, content)
                   for place, content in enumerate((shape, line, group, slicer)))


def _relationship(identifier, kind, target):
    family = _FAMILIES.get(kind, RELATIONSHIPS)
    return f'<Relationship Id="{identifier}" Type="{family}/{kind}" Target="{target}"/>'


def _put(xml, *changes):
    """Each text that has to be there once, replaced."""
    for old, new in changes:
        if xml.count(old) != 1:
            sys.exit(f"{old!r} stands {xml.count(old)} times, not once")
        xml = xml.replace(old, new)
    return xml


def _number_relationships(xml):
    """XlsxWriter numbers a background before the tables and lists it behind them."""
    order = re.findall(r'<(?:picture|tablePart) r:id="(\w+)"/>', xml)
    for old, new in zip(order, order[-1:] + order[:-1]):
        xml = xml.replace(f'r:id="{old}"', f'r:id="*{new}"')
    return xml.replace('r:id="*', 'r:id="')


def _sheet(xml):
    return _put(
        _number_relationships(xml),
        ("<worksheet ", '<worksheet xmlns:xdr="http://schemas.openxmlformats.org/drawingml/2006/'
                        'spreadsheetDrawing" '),
        ('<sheetPr filterMode="1"', '<sheetPr codeName="Sheet7" filterMode="1"'),
        ("<sheetView ", '<sheetView showGridLines="0" showRowColHeaders="0" '),
        ("<mergeCells", _VIEWS + "<mergeCells"),
        ("<pageSetup ", '<pageSetup r:id="rIdPrinter" blackAndWhite="1" '),
        ("<headerFooter>", '<headerFooter differentOddEven="1" differentFirst="1">'),
        ("</headerFooter>", "<evenHeader>&amp;Ceven</evenHeader><evenFooter>&amp;Leven foot"
         "</evenFooter><firstHeader>&amp;Cfirst</firstHeader></headerFooter>"),
        ("<tableParts", _CONTROLS + "<tableParts"),
        ("</x14:conditionalFormattings>", _FORMATS_14 + "</x14:conditionalFormattings>"),
        ("</extLst></worksheet>", _VALIDATIONS_14 + _SLICER_LIST + "</extLst></worksheet>"))


def _sheet_rels(xml):
    return xml.replace("</Relationships>", "".join((
        _relationship("rIdPrinter", "printerSettings", "../printerSettings/printerSettings1.bin"),
        _relationship("rIdControl", "ctrlProp", "../ctrlProps/ctrlProp1.xml"),
        _relationship("rIdSlicer", "slicer", "../slicers/slicer1.xml"),
        _relationship("rIdThread", "threadedComment", "../threadedComments/threadedComment1.xml"),
        "</Relationships>")))


def _types(xml):
    kinds = {"ctrlProps/ctrlProp1": "vnd.ms-excel.controlproperties",
             "threadedComments/threadedComment1": "vnd.ms-excel.threadedcomments",
             "persons/person": "vnd.ms-excel.person", "slicers/slicer1": "vnd.ms-excel.slicer",
             "slicerCaches/slicerCache1": "vnd.ms-excel.slicerCache"}
    printer = ('<Default Extension="bin" ContentType="application/'
               'vnd.openxmlformats-officedocument.spreadsheetml.printerSettings"/>')
    parts = "".join(f'<Override PartName="/xl/{name}.xml" ContentType="application/{kind}+xml"/>'
                    for name, kind in kinds.items())
    return _put(xml, ("</Types>", printer + parts + "</Types>"))


_EDITS = {
    "xl/worksheets/sheet2.xml": _sheet,
    "xl/worksheets/_rels/sheet2.xml.rels": _sheet_rels,
    "xl/drawings/drawing1.xml": lambda xml: _put(xml, ("</xdr:wsDr>", _drawn() + "</xdr:wsDr>")),
    "xl/_rels/workbook.xml.rels": lambda xml: xml.replace("</Relationships>", "".join((
        _relationship("rIdPersons", "person", "persons/person.xml"),
        _relationship("rIdCache", "slicerCache", "slicerCaches/slicerCache1.xml"),
        "</Relationships>"))),
    "xl/workbook.xml": lambda xml: _put(
        xml, ("</workbook>", _WORKBOOK_VIEW + _SLICER_CACHES + "</workbook>"),
        ('<definedName name="Tenth">', '<definedName name="Slicer_Day">#N/A</definedName>'
                                       '<definedName name="Tenth">')),
    "xl/comments1.xml": lambda xml: _put(xml, ("<author>tc</", f"<author>tc={THREAD}</")),
    "xl/drawings/vmlDrawing1.vml": lambda xml: _put(xml, ("</xml>", _CONTROL_SHAPE + "</xml>")),
    "[Content_Types].xml": _types,
}
_ADDED = {
    "xl/ctrlProps/ctrlProp1.xml": _CONTROL_PROPERTIES,
    "xl/threadedComments/threadedComment1.xml": _COMMENTS,
    "xl/persons/person.xml": _PERSONS,
    "xl/slicers/slicer1.xml": _SLICER,
    "xl/slicerCaches/slicerCache1.xml": _SLICER_CACHE,
    "xl/printerSettings/printerSettings1.bin": b"\1\2\3\4printer" * 20,
}


def add_parts(source, target):
    """Writes the package at `source` with the additions to `target`."""
    with zipfile.ZipFile(source) as old, zipfile.ZipFile(target, "w", zipfile.ZIP_DEFLATED) as new:
        parts = {item.filename: old.read(item) for item in old.infolist()}
        for name, edit in _EDITS.items():
            parts[name] = edit(parts[name].decode("utf-8"))
        for name, data in {**parts, **_ADDED}.items():
            info = zipfile.ZipInfo(name, (1980, 1, 1, 0, 0, 0))
            info.compress_type = zipfile.ZIP_DEFLATED
            new.writestr(info, data)
