"""Writes a neutral workbook as .xlsx, the same bytes each time."""

import datetime
import io
import zipfile

import openpyxl
from openpyxl.drawing.image import Image
from openpyxl.styles import Alignment, Border, Font, PatternFill, Side
from openpyxl.utils.indexed_list import IndexedList
from PIL import Image as Pixels

from .sheet import Formula, address, letters

MADE = datetime.datetime(2026, 1, 1)


def write(book, path):
    file = openpyxl.Workbook()
    normal = Font(name=book.font, size=book.size)
    file._fonts = IndexedList([normal])
    file._named_styles["Normal"].font = normal
    file.remove(file.active)
    for sheet in book.sheets:
        _write_sheet(file.create_sheet(sheet.name), sheet)
    file.active = next(n for n, sheet in enumerate(book.sheets) if not sheet.hidden)
    file.properties.created = MADE
    data = io.BytesIO()
    file.save(data)
    _repack(data, path)


def _repack(data, path):
    """Takes the time of writing out of the package."""
    with zipfile.ZipFile(data) as old, zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as new:
        for name in old.namelist():
            content = old.read(name)
            if name == "docProps/core.xml":
                start = content.index(b"<dcterms:modified")
                end = content.index(b"</dcterms:modified>") + len(b"</dcterms:modified>")
                content = content[:start] + content[end:]
            new.writestr(zipfile.ZipInfo(name, (2026, 1, 1, 0, 0, 0)), content,
                         zipfile.ZIP_DEFLATED)


def _write_sheet(target, sheet):
    styles = {}
    for (row, column), cell in sorted(sheet.cells.items()):
        made = target.cell(row, column)
        value = cell.value
        made.value = f"={value}" if isinstance(value, Formula) else value
        if not isinstance(value, Formula) and isinstance(value, str):
            made.data_type = "s"
        if cell.style not in styles:
            styles[cell.style] = _style(cell.style)
        for name, part in styles[cell.style].items():
            setattr(made, name, part)
    for top, left, bottom, right in sheet.merges:
        _merge(target, top, left, bottom, right)
    for column, width in sheet.widths.items():
        target.column_dimensions[letters(column)].width = width
    for column in sheet.hidden_columns:
        target.column_dimensions[letters(column)].hidden = True
    for row, height in sheet.heights.items():
        target.row_dimensions[row].height = height
    for row in sheet.hidden_rows:
        target.row_dimensions[row].hidden = True
    for picture in sheet.pictures:
        target.add_image(_picture(picture), address((picture.row, picture.column)))
    _set_up(target, sheet)


def _merge(target, top, left, bottom, right):
    """Unlike openpyxl's own way, this keeps the styles of the cells that are covered."""
    target.merged_cells.add(f"{letters(left)}{top}:{letters(right)}{bottom}")


def _set_up(target, sheet):
    view = target.sheet_view
    view.showGridLines = sheet.gridlines
    view.rightToLeft = sheet.right_to_left or None
    view.zoomScale = sheet.zoom
    if sheet.frozen:
        target.freeze_panes = address((sheet.frozen[0] + 1, sheet.frozen[1] + 1))
    target.sheet_state = "hidden" if sheet.hidden else "visible"
    target.page_setup.orientation = "landscape" if sheet.landscape else "portrait"
    target.page_setup.paperSize = 9
    target.sheet_properties.pageSetUpPr.fitToPage = sheet.one_page
    target.oddHeader.center.text = sheet.header or None
    target.oddFooter.center.text = sheet.footer or None
    target.sheet_properties.tabColor = sheet.tab_color
    if sheet.print_area:
        top, left, bottom, right = sheet.print_area
        target.print_area = f"{address((top, left))}:{address((bottom, right))}"


def _style(style):
    def side(edge):
        return Side(style=edge[0], color="FF" + edge[1]) if edge else Side()

    turned = style.turned if style.turned >= 0 else 90 - style.turned
    return {
        "font": Font(name=style.font, size=style.size, bold=style.bold, italic=style.italic,
                     underline="single" if style.underline else None, color="FF" + style.color),
        "fill": PatternFill("solid", fgColor="FF" + style.fill) if style.fill else PatternFill(),
        "border": Border(left=side(style.left), right=side(style.right), top=side(style.top),
                         bottom=side(style.bottom)),
        "alignment": Alignment(horizontal=style.across, vertical=style.down, wrap_text=style.wrap,
                               shrink_to_fit=style.shrink, text_rotation=turned,
                               indent=style.indent),
        "number_format": style.number,
    }


def pixels(picture):
    """The picture as RGB pixels: its colours in stripes, the first one as a frame."""
    made = Pixels.new("RGB", (picture.width, picture.height), "#" + picture.colors[0])
    stripe = max(1, (picture.width - 4) // len(picture.colors))
    for number, color in enumerate(picture.colors):
        left = 2 + number * stripe
        made.paste("#" + color, (left, 2, left + stripe, picture.height - 2))
    return made


def _picture(picture):
    data = io.BytesIO()
    pixels(picture).save(data, "PNG")
    data.seek(0)
    return Image(data)
