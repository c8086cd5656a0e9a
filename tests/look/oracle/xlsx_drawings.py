"""Writes a workbook with one sheet of drawings by hand: ECMA-376 20.5."""

import zipfile

from made_drawings import COLUMN, ROW, Freeform, Preset, Written, four_colours

EMU = 9525  # of a pixel

_MAIN = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
_RELATION = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
_TYPES = "application/vnd.openxmlformats-officedocument"
_NAMESPACES = (
    'xmlns:xdr="http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing" '
    f'xmlns:a="http://schemas.openxmlformats.org/drawingml/2006/main" xmlns:r="{_RELATION}"')
_FORMAT = ('<a:solidFill><a:srgbClr val="3366CC"/></a:solidFill>'
           '<a:ln w="19050"><a:solidFill><a:srgbClr val="000000"/></a:solidFill></a:ln>')


class _Writer:
    def __init__(self):
        self._number = 1

    def anchor(self, made):
        column, row, columns, rows = made.cells
        return (f"<xdr:twoCellAnchor>{_marker('from', column, row)}"
                f"{_marker('to', column + columns, row + rows)}{self._piece(made.piece)}"
                "<xdr:clientData/></xdr:twoCellAnchor>")

    def _piece(self, piece):
        self._number += 1
        name = f'<xdr:cNvPr id="{self._number}" name="Drawing {self._number}"/>'
        if piece.children:
            children = "".join(self._piece(child) for child in piece.children)
            return (f"<xdr:grpSp><xdr:nvGrpSpPr>{name}<xdr:cNvGrpSpPr/></xdr:nvGrpSpPr>"
                    f"<xdr:grpSpPr>{_transform(piece)}</xdr:grpSpPr>{children}</xdr:grpSp>")
        if piece.geometry is None:
            return (f"<xdr:pic><xdr:nvPicPr>{name}<xdr:cNvPicPr/></xdr:nvPicPr><xdr:blipFill>"
                    '<a:blip r:embed="rId1"/><a:stretch><a:fillRect/></a:stretch></xdr:blipFill>'
                    f"<xdr:spPr>{_transform(piece)}{_geometry(Preset('rect', 1))}</xdr:spPr></xdr:pic>")
        return (f'<xdr:sp macro="" textlink=""><xdr:nvSpPr>{name}<xdr:cNvSpPr/></xdr:nvSpPr>'
                f"<xdr:spPr>{_transform(piece)}{_geometry(piece.geometry)}{_FORMAT}</xdr:spPr></xdr:sp>")


def save(path, drawings):
    writer = _Writer()
    anchors = "".join(map(writer.anchor, drawings))
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as package:
        for name, text in _parts(anchors).items():
            package.writestr(name, text)
        package.writestr("xl/media/image1.png", four_colours())


def _parts(anchors):
    override = f'ContentType="{_TYPES}.spreadsheetml'
    return {
        "[Content_Types].xml":
            '<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">'
            '<Default Extension="rels" '
            'ContentType="application/vnd.openxmlformats-package.relationships+xml"/>'
            '<Default Extension="png" ContentType="image/png"/>'
            f'<Override PartName="/xl/workbook.xml" {override}.sheet.main+xml"/>'
            f'<Override PartName="/xl/styles.xml" {override}.styles+xml"/>'
            f'<Override PartName="/xl/worksheets/sheet1.xml" {override}.worksheet+xml"/>'
            f'<Override PartName="/xl/drawings/drawing1.xml" ContentType="{_TYPES}.drawing+xml"/>'
            "</Types>",
        "_rels/.rels": _relations(("officeDocument", "xl/workbook.xml")),
        "xl/workbook.xml":
            f'<workbook xmlns="{_MAIN}" xmlns:r="{_RELATION}"><sheets>'
            '<sheet name="Drawings" sheetId="1" r:id="rId1"/></sheets></workbook>',
        "xl/_rels/workbook.xml.rels": _relations(("worksheet", "worksheets/sheet1.xml"),
                                                 ("styles", "styles.xml")),
        "xl/styles.xml":
            f'<styleSheet xmlns="{_MAIN}"><fonts><font><sz val="10"/><name val="Arial"/></font></fonts>'
            '<fills><fill><patternFill patternType="none"/></fill></fills><borders><border/></borders>'
            '<cellStyleXfs><xf/></cellStyleXfs><cellXfs><xf xfId="0"/></cellXfs>'
            '<cellStyles><cellStyle name="Normal" xfId="0" builtinId="0"/></cellStyles></styleSheet>',
        "xl/worksheets/sheet1.xml":
            f'<worksheet xmlns="{_MAIN}" xmlns:r="{_RELATION}">'
            f'<sheetFormatPr defaultRowHeight="{ROW * 0.75}" customHeight="1"/>'
            f'<cols><col min="1" max="100" width="{COLUMN / 7}" customWidth="1"/></cols>'
            '<sheetData/><drawing r:id="rId1"/></worksheet>',
        "xl/worksheets/_rels/sheet1.xml.rels": _relations(("drawing", "../drawings/drawing1.xml")),
        "xl/drawings/drawing1.xml": f"<xdr:wsDr {_NAMESPACES}>{anchors}</xdr:wsDr>",
        "xl/drawings/_rels/drawing1.xml.rels": _relations(("image", "../media/image1.png")),
    }


def _transform(piece):
    left, top, width, height = (round(each * EMU) for each in piece.box)
    place = f'<a:{{0}}ff x="{left}" y="{top}"/><a:{{1}}xt cx="{width}" cy="{height}"/>'
    children = place.format("chO", "chE") if piece.children else ""
    flips = "".join(f' flip{each}="1"' for each in piece.flips)
    return (f'<a:xfrm rot="{round(piece.degrees * 60000)}"{flips}>{place.format("o", "e")}{children}'
            "</a:xfrm>")


def _geometry(geometry):
    if isinstance(geometry, Written):
        return f"<a:custGeom>{geometry.xml}</a:custGeom>"
    if isinstance(geometry, Freeform):
        steps = "".join(map(_step, geometry.steps))
        return (f'<a:custGeom><a:pathLst><a:path w="{geometry.width}" h="{geometry.height}">{steps}'
                "</a:path></a:pathLst></a:custGeom>")
    return f'<a:prstGeom prst="{geometry.name}"><a:avLst/></a:prstGeom>'


def _step(step):
    kind, *numbers = step
    name = {"M": "moveTo", "L": "lnTo", "C": "cubicBezTo", "Z": "close"}[kind]
    points = "".join(f'<a:pt x="{x}" y="{y}"/>' for x, y in zip(numbers[::2], numbers[1::2]))
    return f"<a:{name}>{points}</a:{name}>"


def _marker(tag, column, row):
    return (f"<xdr:{tag}><xdr:col>{column}</xdr:col><xdr:colOff>0</xdr:colOff>"
            f"<xdr:row>{row}</xdr:row><xdr:rowOff>0</xdr:rowOff></xdr:{tag}>")


def _relations(*targets):
    return ('<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">'
            + "".join(f'<Relationship Id="rId{index + 1}" Type="{_RELATION}/{kind}" Target="{target}"/>'
                      for index, (kind, target) in enumerate(targets)) + "</Relationships>")
