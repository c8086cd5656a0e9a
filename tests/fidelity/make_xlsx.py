#!/usr/bin/env python3
"""Makes fidelity.xlsx, a template whose sheet "Model" owns every feature that a copy can own, and
protected.xlsx, the same with the sheet protected (which keeps some programs from reading more).

usage: make_xlsx.py [FOLDER]

XlsxWriter writes most of it; xlsx_parts.py adds what it cannot write. The same versions make the
same bytes.
"""
import datetime
import io
import pathlib
import struct
import sys
import tempfile
import zlib

import xlsxwriter

import xlsx_parts

HERE = pathlib.Path(__file__).resolve().parent


def png(red, green, blue, size=8):
    """A square picture of one colour."""
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))
    row = b"\0" + bytes((red, green, blue)) * size
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(row * size)) + chunk(b"IEND", b""))


def stream(*color):
    return io.BytesIO(png(*color))


def write_cells(workbook, sheet):
    bold = workbook.add_format({"bold": True, "font_color": "#1F4E79", "font_size": 14,
                                "font_name": "Georgia", "underline": 1})
    sheet.write_string("A1", "Title", bold)
    sheet.write_string("A2", "=1+1 stays a text")
    sheet.write_string("A3", " blanks around ")
    sheet.write_string("A4", "two\nlines", workbook.add_format({"text_wrap": True}))
    sheet.write_rich_string("A5", "plain ", bold, "rich", " plain")
    sheet.write_boolean("A6", True)
    sheet.write_datetime("A7", datetime.datetime(2027, 1, 31),
                         workbook.add_format({"num_format": "yyyy-mm-dd"}))
    sheet.write_number("A8", 1234.5, workbook.add_format({"num_format": "#,##0.00"}))
    for row in range(10):
        sheet.write_number(row, 1, (row + 1) ** 2)
    boxed = {"border": 1, "border_color": "#7F7F7F", "align": "center", "valign": "top"}
    sheet.write_string("C1", "boxed", workbook.add_format({**boxed, "bottom": 6}))
    sheet.write_string("C2", "turned", workbook.add_format({"rotation": 45, "indent": 1}))
    sheet.write_string("C3", "filled", workbook.add_format({"bg_color": "#FCE4D6"}))
    sheet.write_string("C4", "pattern", workbook.add_format(
        {"pattern": 4, "fg_color": "#C00000", "bg_color": "#FFFFCC"}))
    sheet.write_string("C5", "crossed", workbook.add_format(
        {"diag_type": 3, "diag_border": 1, "diag_color": "#FF0000"}))
    sheet.write_string("C6", "unlocked", workbook.add_format({"locked": False}))
    sheet.write_string("C7", "hidden formula", workbook.add_format({"hidden": True}))
    sheet.write_string("C8", "shrunk", workbook.add_format({"shrink": True}))


def write_formulas(sheet):
    sheet.write_formula("D1", "=SUM(B1:B10)", None, 385)
    sheet.write_formula("D2", "=Model!B1+1", None, 2)
    sheet.write_formula("D3", "=Other!A1*2", None, 2)
    sheet.write_formula("D4", "=Tenth*2", None, 200)
    sheet.write_formula("D5", "=SUM(OwnCells)", None, 385)
    sheet.write_formula("D6", "=SUM(Plan[Work])", None, 6)
    sheet.write_array_formula("D7:D8", "{=B1:B2*2}", None, 2)


def write_frame(workbook, sheet):
    tinted = workbook.add_format({"bg_color": "#DDEBF7"})
    sheet.set_column("A:A", 18)
    sheet.set_column("C:D", 12)
    sheet.set_column("P:P", 5, workbook.add_format({"bg_color": "#E2EFDA"}))
    sheet.set_column("Q:R", 4, None, {"level": 1})
    sheet.set_column("T:T", 9, None, {"hidden": True})
    sheet.set_row(0, 30)
    sheet.set_row(11, 22, tinted)
    sheet.set_row(12, None, None, {"hidden": True})
    sheet.set_row(50, None, None, {"level": 1, "collapsed": True})
    sheet.set_row(51, None, None, {"level": 2, "hidden": True})
    sheet.set_row(52, None, None, {"level": 1})
    sheet.outline_settings(True, False, False, False)
    sheet.merge_range("A14:C15", "merged", tinted)
    sheet.merge_range("F41:H41", None)
    sheet.freeze_panes(2, 1)
    sheet.set_zoom(85)
    sheet.hide_gridlines(2)
    sheet.hide_zero()
    sheet.set_selection("B3")
    sheet.set_tab_color("#70AD47")


def write_rules(workbook, sheet):
    red = workbook.add_format({"font_color": "#9C0006", "bg_color": "#FFC7CE", "bold": True})
    sheet.conditional_format("B1:B10", {"type": "formula", "criteria": "=$A$8+Model!$B1>50",
                                        "format": red, "stop_if_true": True})
    sheet.conditional_format("C1:C10", {"type": "cell", "criteria": "between", "minimum": 1,
                                        "maximum": 9, "format": red})
    sheet.conditional_format("D1:D10", {"type": "2_color_scale", "min_color": "#FFFFFF",
                                        "max_color": "#63BE7B"})
    sheet.conditional_format("E20:E24", {"type": "text", "criteria": "containing", "value": "day",
                                         "format": red})
    sheet.conditional_format("F20:F24", {"type": "duplicate", "format": red})
    sheet.conditional_format("G20:G24", {"type": "top", "value": 2, "format": red})
    sheet.conditional_format("H20:H24", {"type": "time_period", "criteria": "this week",
                                         "format": red})
    sheet.conditional_format("I20:I24", {"type": "icon_set", "icon_style": "3_arrows"})
    sheet.conditional_format("E26:E30", {"type": "data_bar", "bar_color": "#638EC6"})
    sheet.conditional_format("F26:F30", {"type": "data_bar", "data_bar_2010": True,
                                         "bar_solid": True, "bar_negative_color": "#FF00FF"})
    sheet.data_validation("E1", {"validate": "list", "source": "=Model!$A$1:$A$5"})
    sheet.data_validation("E2", {"validate": "whole", "criteria": "between", "minimum": 1,
                                 "maximum": 31, "input_title": "Day", "input_message": "1 to 31",
                                 "error_title": "Wrong", "error_message": "No such day",
                                 "error_type": "warning"})
    sheet.data_validation("E3", {"validate": "custom", "value": "=Model!$B$1>0"})
    sheet.data_validation("E4", {"validate": "date", "criteria": ">",
                                 "value": datetime.date(2027, 1, 1)})


def write_notes(sheet):
    sheet.write_comment("B2", "a note", {"author": "Ann"})
    sheet.write_comment("B4", "shown and wide", {"author": "Ben", "visible": True, "width": 200,
                                                 "height": 40, "color": "#CCFFCC"})
    sheet.write_comment("B6", "a thread's stand-in", {"author": "tc"})
    sheet.write_url("A20", "https://example.org/calendar", tip="a tip")
    sheet.write_url("A21", "internal:Model!B5", string="to a cell of its own")
    sheet.write_url("A22", "internal:Other!A1", string="to another sheet")
    sheet.write_url("A23", "mailto:ann@example.org")


def write_things(workbook, sheet):
    sheet.add_sparkline("F1", {"range": "Model!B1:B10"})
    sheet.add_sparkline("F2", {"range": "Model!B1:B10", "type": "column", "series_color": "#C00000",
                               "high_point": True})
    sheet.add_sparkline("F3", {"range": "Other!A1:A3", "type": "win_loss"})
    sheet.add_table("J1:L5", {"name": "Plan", "style": "Table Style Medium 4", "total_row": True,
                              "columns": [{"header": "Day", "total_string": "Sum"},
                                          {"header": "Work", "total_function": "sum"},
                                          {"header": "Twice",
                                           "formula": "=Plan[[#This Row],[Work]]*2"}],
                              "data": [["Monday", 1], ["Tuesday", 2], ["Sunday", 3]]})
    sheet.add_table("J8:K10", {"name": "Bare", "autofilter": False, "header_row": False,
                               "style": None})
    sheet.insert_image("M1", "picture.png", {
        "image_data": stream(200, 60, 20), "description": "a square", "x_scale": 6, "y_scale": 6})
    sheet.insert_image("M5", "linked.png", {"image_data": stream(200, 60, 20), "x_scale": 4,
                                            "y_scale": 4, "url": "internal:Model!A1"})
    sheet.insert_textbox("M8", "a text box", {"width": 150, "height": 50,
                                              "font": {"bold": True, "color": "#1F4E79"},
                                              "fill": {"color": "#FFF2CC"}})
    sheet.insert_textbox("M12", "linked", {"width": 120, "height": 30,
                                           "textlink": "=Model!$A$1"})
    chart = workbook.add_chart({"type": "column"})
    chart.add_series({"name": "=Model!$A$1", "categories": "=Model!$A$1:$A$5",
                      "values": "=Model!$B$1:$B$5", "fill": {"color": "#1F4E79"}})
    chart.add_series({"name": "elsewhere", "values": "=Other!$A$1:$A$3"})
    chart.set_title({"name": "Work"})
    chart.set_x_axis({"name": "days"})
    chart.set_legend({"position": "bottom"})
    sheet.insert_chart("M18", chart)
    pie = workbook.add_chart({"type": "pie"})
    pie.add_series({"values": "=Model!$B$1:$B$3"})
    pie.set_title({"name": "=Model!$A$1"})
    sheet.insert_chart("U18", pie)


def write_page(sheet):
    sheet.set_background(stream(240, 240, 255), is_byte_stream=True)
    sheet.set_header("&L&G&C&\"Georgia,Bold\"&12&A&RPage &P of &N",
                     {"image_left": "header.png", "image_data_left": stream(0, 90, 160)})
    sheet.set_footer("&C&F&R&G", {"image_right": "footer.png",
                                  "image_data_right": stream(0, 160, 90)})
    sheet.set_paper(9)
    sheet.set_landscape()
    sheet.set_margins(0.5, 0.6, 0.8, 0.9)
    sheet.center_horizontally()
    sheet.center_vertically()
    sheet.fit_to_pages(1, 2)
    sheet.hide_gridlines(0)
    sheet.print_row_col_headers()
    sheet.print_across()
    sheet.set_start_page(3)
    sheet.set_h_pagebreaks([20, 30])
    sheet.set_v_pagebreaks([8])
    sheet.print_area("A1:L49")
    sheet.repeat_rows(0, 1)
    sheet.repeat_columns("A:B")
    sheet.ignore_errors({"number_stored_as_text": "A1:A10"})


def write_open_cells(workbook, sheet):
    """The cells that a calendar writes are unlocked."""
    open_cells = workbook.add_format({"locked": False, "num_format": "0", "align": "right"})
    for row in range(42, 48):
        for column in range(1, 8):
            sheet.write_blank(row, column, None, open_cells)
    sheet.write_blank("B41", None, open_cells)
    sheet.write_blank("D41", None, open_cells)


def protect(sheet):
    sheet.protect("secret", {"sort": True, "format_cells": True, "select_locked_cells": False})
    sheet.unprotect_range("E1:E4", "Inputs")


def write_filter(sheet):
    for row, value in enumerate(("Kind", "sun", "moon", "sun")):
        sheet.write_string(31 + row, 0, value)
    sheet.autofilter("A32:A35")
    sheet.filter_column(0, "x == sun")
    sheet.set_row(33, None, None, {"hidden": True})


def write_others(workbook, cover, other):
    cover.write_formula("A1", "=Model!B1", None, 1)
    cover.write_url("A2", "internal:Model!A1")
    for row in range(3):
        other.write_number(row, 0, row + 1)
    other.print_area("A1:B2")
    workbook.define_name("Tenth", "=Model!$B$10")
    workbook.define_name("Elsewhere", "=Other!$A$1")
    workbook.define_name("Model!OwnCells", "=Model!$B$1:$B$10")
    workbook.define_name("Other!OwnCells", "=Other!$A$1:$A$3")


def write_workbook(path, is_protected):
    workbook = xlsxwriter.Workbook(str(path))
    workbook.set_properties({"title": "Fidelity", "author": "Orrery",
                             "created": datetime.datetime(2026, 1, 1)})
    cover, model, other = map(workbook.add_worksheet, ("Cover", "Model", "Other"))
    for write in (write_cells, write_frame, write_rules, write_things, write_open_cells):
        write(workbook, model)
    for write in (write_formulas, write_notes, write_page, write_filter):
        write(model)
    if is_protected:
        protect(model)
    write_others(workbook, cover, other)
    workbook.close()


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else HERE / "data"
    with tempfile.TemporaryDirectory() as scratch:
        for name in ("fidelity", "protected"):
            plain = pathlib.Path(scratch, "plain.xlsx")
            write_workbook(plain, name == "protected")
            xlsx_parts.add_parts(plain, folder / f"{name}.xlsx")


main()
