"""Makes everything.xlsx: a workbook whose sheet "Model" has one of everything that a sheet can own.

XlsxWriter writes most of it; the things that it cannot write (threaded comments, a form control,
printer settings, a custom view, an x14 validation, a code name) are added to the package afterwards.
"""
import datetime
import io
import pathlib
import struct
import sys
import zipfile
import zlib

import xlsxwriter

HERE = pathlib.Path(__file__).resolve().parent
VIEW = "{0F0E0D0C-1111-4222-8333-444455556666}"
THREAD = "{11111111-2222-4333-8444-555555555555}"
REPLY = "{66666666-7777-4888-9999-AAAAAAAAAAAA}"
PERSON = "{BBBBBBBB-CCCC-4DDD-8EEE-FFFFFFFFFFFF}"


def png(red, green, blue):
    """An 8 x 8 picture of one colour."""
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))
    row = b"\0" + bytes((red, green, blue)) * 8
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", 8, 8, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(row * 8)) + chunk(b"IEND", b""))


def write_model(workbook, sheet):
    bold = workbook.add_format({"bold": True, "font_color": "#1F4E79"})
    tinted = workbook.add_format({"bg_color": "#FCE4D6"})
    unlocked = workbook.add_format({"locked": False, "num_format": "0.00"})
    sheet.set_column("A:A", 18, bold)
    sheet.set_column("F:H", 4, None, {"level": 1})
    sheet.set_row(4, 30, tinted)
    for row in range(10):
        sheet.write_number(row, 0, row + 1)
        sheet.write_number(row, 1, (row + 1) ** 2, unlocked)
    sheet.write_string(11, 0, "Title", bold)
    sheet.write_formula("D1", "=SUM(Model!B1:B10)", None, 385)
    sheet.write_formula("D2", "=Other!A1+'Third Sheet'!A1", None, 3)
    sheet.write_formula("D3", "=WorkbookName*2", None, 20)
    sheet.write_formula("D4", '=IF(D1>0,"Model!A1","")', None, "Model!A1")
    sheet.merge_range("A14:C15", "merged", bold)
    sheet.conditional_format("B1:B10", {"type": "formula", "criteria": "=Model!$A1>5",
                                        "format": tinted})
    sheet.conditional_format("B1:B10", {"type": "data_bar", "data_bar_2010": True})
    sheet.data_validation("E1", {"validate": "list", "source": "=Model!$A$1:$A$5"})
    sheet.data_validation("E2", {"validate": "whole", "criteria": "between", "minimum": 1,
                                 "maximum": 31})
    sheet.write_comment("B2", "a note", {"author": "Ann"})
    sheet.write_url("A20", "https://example.org/")
    sheet.write_url("A21", "internal:Model!B5")
    sheet.add_sparkline("E5", {"range": "Model!B1:B10"})
    sheet.add_table("J1:K5", {"name": "Plan", "columns": [{"header": "Day"}, {"header": "Work"}]})
    sheet.write_formula("D5", "=SUM(Plan[Day])", None, 0)
    sheet.write_formula("D6", "=SUM(Model:Other!A1)", None, 2)
    sheet.set_background(io.BytesIO(png(240, 240, 255)), is_byte_stream=True)
    sheet.set_header("&L&G&CModel", {"image_left": "header.png",
                                     "image_data_left": io.BytesIO(png(0, 90, 160))})
    sheet.set_footer("&CPage &P of &N")
    sheet.insert_image("M1", "picture.png", {"image_data": io.BytesIO(png(200, 60, 20)),
                                             "url": "internal:Model!A1"})
    sheet.insert_textbox("M6", "linked", {"textlink": "=Model!$A$12"})
    chart = workbook.add_chart({"type": "column"})
    chart.add_series({"name": "=Model!$A$12", "categories": "=Model!$A$1:$A$10",
                      "values": "=Model!$B$1:$B$10"})
    chart.add_series({"values": "=Other!$A$1:$A$3"})
    sheet.insert_chart("M12", chart)
    sheet.print_area("A1:L40")
    sheet.repeat_rows(0)
    sheet.set_h_pagebreaks([20])
    sheet.set_v_pagebreaks([8])
    sheet.fit_to_pages(1, 1)
    sheet.set_landscape()
    sheet.freeze_panes(1, 1)
    sheet.set_tab_color("#70AD47")
    sheet.autofilter("A1:B10")


def write_workbook(path):
    workbook = xlsxwriter.Workbook(str(path))
    workbook.set_properties({"title": "Everything", "author": "Orrery",
                             "created": datetime.datetime(2026, 1, 1)})
    sheet = workbook.add_worksheet("Model")
    write_model(workbook, sheet)
    other = workbook.add_worksheet("Other")
    for row in range(3):
        other.write_number(row, 0, row + 1)
    other.write_formula("B1", "=Model!B1*2", None, 2)
    other.write_formula("B2", "=A1*2", None, 2)
    third = workbook.add_worksheet("Third Sheet")
    third.write_number("A1", 2)
    third.write_formula("A2", "=A1+1", None, 3)
    third.print_area("A1:B2")
    workbook.define_name("WorkbookName", "=Model!$A$10")
    workbook.define_name("Elsewhere", "=Other!$A$1")
    workbook.define_name("Model!OwnName", "=Model!$B$1:$B$10")
    workbook.close()


def threaded_comments():
    space = "http://schemas.microsoft.com/office/spreadsheetml/2018/threadedcomments"
    return (f'<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n<ThreadedComments xmlns="{space}">'
            f'<threadedComment ref="B2" dT="2026-01-01T00:00:00.00" personId="{PERSON}" id="{THREAD}">'
            "<text>a note</text></threadedComment>"
            f'<threadedComment ref="B2" dT="2026-01-02T00:00:00.00" personId="{PERSON}" id="{REPLY}" '
            f'parentId="{THREAD}"><text>a reply</text></threadedComment></ThreadedComments>')


def persons():
    space = "http://schemas.microsoft.com/office/spreadsheetml/2018/threadedcomments"
    return (f'<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n<personList xmlns="{space}">'
            f'<person displayName="Ann" id="{PERSON}" userId="Ann" providerId="None"/></personList>')


CONTROL = (
    '<mc:AlternateContent xmlns:mc="http://schemas.openxmlformats.org/markup-compatibility/2006">'
    '<mc:Choice Requires="x14"><controls><mc:AlternateContent><mc:Choice Requires="x14">'
    '<control shapeId="1040" r:id="rIdControl" name="Check Box 16"><controlPr defaultSize="0" '
    'autoFill="0" autoLine="0" autoPict="0"><anchor moveWithCells="1"><from><xdr:col>3</xdr:col>'
    "<xdr:colOff>0</xdr:colOff><xdr:row>6</xdr:row><xdr:rowOff>0</xdr:rowOff></from><to>"
    "<xdr:col>5</xdr:col><xdr:colOff>0</xdr:colOff><xdr:row>7</xdr:row><xdr:rowOff>0</xdr:rowOff>"
    "</to></anchor></controlPr></control></mc:Choice></mc:AlternateContent></controls></mc:Choice>"
    "</mc:AlternateContent>")
CONTROL_PROPERTIES = (
    '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n<formControlPr '
    'xmlns="http://schemas.microsoft.com/office/spreadsheetml/2009/9/main" objectType="CheckBox" '
    'checked="Checked" fmlaLink="Model!$C$1" lockText="1" noThreeD="1"/>')
CONTROL_SHAPE = (
    '<v:shapetype id="_x0000_t201" coordsize="21600,21600" o:spt="201" '
    'path="m,l,21600r21600,l21600,xe"><v:stroke joinstyle="miter"/><v:path shadowok="f" '
    'o:extrusionok="f" strokeok="f" fillok="f" o:connecttype="rect"/><o:lock v:ext="edit" '
    'shapetype="t"/></v:shapetype><v:shape id="_x0000_s1040" type="#_x0000_t201" '
    'style="position:absolute;margin-left:150pt;margin-top:90pt;width:90pt;height:15pt;z-index:5" '
    'filled="f" fillcolor="window [65]" stroked="f" strokecolor="windowText [64]" o:insetmode="auto">'
    '<v:textbox style="mso-direction-alt:auto"/><x:ClientData ObjectType="Checkbox">'
    "<x:Anchor>3, 0, 6, 0, 5, 0, 7, 0</x:Anchor><x:AutoFill>False</x:AutoFill>"
    "<x:FmlaLink>Model!$C$1</x:FmlaLink><x:Checked>1</x:Checked></x:ClientData></v:shape>")


def relationship(identifier, kind, target):
    family = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
    if kind in ("threadedComment", "person"):
        family = "http://schemas.microsoft.com/office/2017/10/relationships"
    return f'<Relationship Id="{identifier}" Type="{family}/{kind}" Target="{target}"/>'


def add_to_sheet(xml):
    xml = xml.replace(
        "<worksheet ", '<worksheet xmlns:xdr="http://schemas.openxmlformats.org/drawingml/2006/'
        'spreadsheetDrawing" ', 1)
    xml = xml.replace("<sheetPr", '<sheetPr codeName="Sheet1"', 1)
    xml = xml.replace("<pageSetup ", '<pageSetup r:id="rIdPrinter" ', 1)
    view = (f'<customSheetViews><customSheetView guid="{VIEW}" scale="80"><pageMargins left="0.7" '
            'right="0.7" top="0.75" bottom="0.75" header="0.3" footer="0.3"/></customSheetView>'
            "</customSheetViews>")
    xml = xml.replace("<mergeCells", view + "<mergeCells", 1)
    controls = xml.index("<tableParts")
    picture = xml.find("<picture ")
    at = xml.index("/>", picture) + 2 if picture >= 0 else controls
    xml = xml[:at] + CONTROL + xml[at:]
    validation = (
        '<ext uri="{CCE6A557-97BC-4b89-ADB6-D9C93CAAB3DF}" '
        'xmlns:x14="http://schemas.microsoft.com/office/spreadsheetml/2009/9/main">'
        '<x14:dataValidations xmlns:xm="http://schemas.microsoft.com/office/excel/2006/main" '
        'count="1"><x14:dataValidation type="list" allowBlank="1"><x14:formula1><xm:f>Model!$A$1:$A$3'
        "</xm:f></x14:formula1><xm:sqref>E3</xm:sqref></x14:dataValidation></x14:dataValidations></ext>")
    return xml.replace("</extLst>", validation + "</extLst>", 1)


def add_rest(source, target):
    edits = {
        "xl/worksheets/sheet1.xml": add_to_sheet,
        "xl/worksheets/_rels/sheet1.xml.rels": lambda xml: xml.replace(
            "</Relationships>",
            relationship("rIdPrinter", "printerSettings", "../printerSettings/printerSettings1.bin")
            + relationship("rIdControl", "ctrlProp", "../ctrlProps/ctrlProp1.xml")
            + relationship("rIdThread", "threadedComment",
                           "../threadedComments/threadedComment1.xml") + "</Relationships>"),
        "xl/_rels/workbook.xml.rels": lambda xml: xml.replace(
            "</Relationships>",
            relationship("rIdPersons", "person", "persons/person.xml") + "</Relationships>"),
        "xl/workbook.xml": lambda xml: xml.replace(
            "</workbook>", f'<customWorkbookViews><customWorkbookView name="Own" guid="{VIEW}" '
            'includeHiddenRowCol="0" windowWidth="1000" windowHeight="800" activeSheetId="1"/>'
            "</customWorkbookViews></workbook>"),
        "xl/comments1.xml": lambda xml: xml.replace("<author>Ann</author>",
                                                    f"<author>tc={THREAD}</author>"),
        "xl/drawings/vmlDrawing1.vml": lambda xml: xml.replace("</xml>", CONTROL_SHAPE + "</xml>"),
        "[Content_Types].xml": lambda xml: xml.replace(
            "</Types>",
            '<Default Extension="bin" ContentType="application/vnd.openxmlformats-officedocument.'
            'spreadsheetml.printerSettings"/><Override PartName="/xl/ctrlProps/ctrlProp1.xml" '
            'ContentType="application/vnd.ms-excel.controlproperties+xml"/>'
            '<Override PartName="/xl/threadedComments/threadedComment1.xml" '
            'ContentType="application/vnd.ms-excel.threadedcomments+xml"/>'
            '<Override PartName="/xl/persons/person.xml" '
            'ContentType="application/vnd.ms-excel.person+xml"/></Types>'),
    }
    added = {
        "xl/ctrlProps/ctrlProp1.xml": CONTROL_PROPERTIES,
        "xl/threadedComments/threadedComment1.xml": threaded_comments(),
        "xl/persons/person.xml": persons(),
        "xl/printerSettings/printerSettings1.bin": b"\1\2\3\4printer" * 20,
    }
    with zipfile.ZipFile(source) as old, zipfile.ZipFile(target, "w", zipfile.ZIP_DEFLATED) as new:
        parts = [(item.filename, old.read(item)) for item in old.infolist()]
        for name, data in parts + list(added.items()):
            if name in edits:
                data = edits.pop(name)(data.decode("utf-8"))
            info = zipfile.ZipInfo(name, (1980, 1, 1, 0, 0, 0))
            info.compress_type = zipfile.ZIP_DEFLATED
            new.writestr(info, data)
    if edits:
        sys.exit(f"XlsxWriter did not write {sorted(edits)}")


def main():
    target = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else HERE / "everything.xlsx"
    plain = io.BytesIO()
    plain_path = target.with_suffix(".plain")
    write_workbook(plain_path)
    plain.write(plain_path.read_bytes())
    plain_path.unlink()
    add_rest(plain, target)


main()
