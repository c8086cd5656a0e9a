"""The same job with xlrd and xlwt: read the template with its formats, write a workbook with the
model sheet's cells twelve times and the calendar's values in them.

usage: xlwt_calendar.py TEMPLATE CELLS OUTPUT
CELLS is the JSON file that compare.py writes. The two libraries cannot do all that the calendar
needs: conditional formats, validations, pictures, charts and the print set-up are left out.
"""
import json
import os
import sys

import xlrd
import xlwt


def copied_style(book, xf):
    """An xlwt style from what xlrd reads of a format."""
    style = xlwt.XFStyle()
    style.num_format_str = book.format_map[xf.format_key].format_str
    source, font = book.font_list[xf.font_index], style.font
    font.name, font.height, font.bold = source.name, source.height, source.weight > 500
    font.italic, font.struck_out = bool(source.italic), bool(source.struck_out)
    font.colour_index = source.colour_index
    align = style.alignment
    align.horz, align.vert = xf.alignment.hor_align, xf.alignment.vert_align
    align.wrap, align.shri = xf.alignment.text_wrapped, xf.alignment.shrink_to_fit
    align.inde = xf.alignment.indent_level
    for side in ("left", "right", "top", "bottom"):
        setattr(style.borders, side, getattr(xf.border, f"{side}_line_style"))
        setattr(style.borders, f"{side}_colour", getattr(xf.border, f"{side}_colour_index"))
    style.pattern.pattern = xf.background.fill_pattern
    style.pattern.pattern_fore_colour = xf.background.pattern_colour_index
    style.pattern.pattern_back_colour = xf.background.background_colour_index
    return style


def copy_sheet(model, target, styles):
    for column, info in model.colinfo_map.items():
        target.col(column).width = info.width
    for row, info in model.rowinfo_map.items():
        target.row(row).height_mismatch, target.row(row).height = True, info.height
    for top, bottom, left, right in model.merged_cells:
        target.merge(top, bottom - 1, left, right - 1)
    for row in range(model.nrows):
        for column in range(model.row_len(row)):
            cell = model.cell(row, column)
            value = cell.value if cell.ctype in (xlrd.XL_CELL_TEXT, xlrd.XL_CELL_NUMBER) else None
            target.write(row, column, value, styles[cell.xf_index])


def main():
    template, cells, output = sys.argv[1:]
    with open(cells, encoding="utf-8") as file:
        sheets = json.load(file)
    with open(os.devnull, "w", encoding="utf-8") as silence:
        book = xlrd.open_workbook(template, formatting_info=True, logfile=silence)
    styles = [copied_style(book, xf) for xf in book.xf_list]
    made = xlwt.Workbook()
    for index, color in book.colour_map.items():
        if color is not None and 8 <= index < 64:
            made.set_colour_RGB(index, *color)
    for sheet in sheets:
        model = book.sheet_by_name(sheet["model"])
        target = made.add_sheet(sheet["name"], cell_overwrite_ok=True)
        copy_sheet(model, target, styles)
        for row, column, value in sheet["cells"]:
            index = model.cell_xf_index(row - 1, column - 1)
            target.write(row - 1, column - 1, value, styles[index])
    made.save(output)


main()
