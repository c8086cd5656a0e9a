#!/usr/bin/env python3
"""Compares the calendars made from the .xlsx and the .xls of the same template.

usage: check_two_formats.py --cli PROGRAM --data FOLDER [--year 2027] [--keep DIR]

LibreOffice opens both, calculates, and writes them as .xlsx and as PDF. In the one cells with their
formats, formulas and their results, widths and heights, conditional formats, validations and print
set-up are compared, in the other the pictures of the pages.
"""

import os
import pathlib
import sys

import numpy
import openpyxl

import page_command
import pages
from check_templates_pages import generate

sys.path.append(str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))
import libreoffice  # noqa: E402

XLSX, PDF = "Calc MS Excel 2007 XML", "calc_pdf_Export"
MARGIN_TOLERANCE = 0.005  # of an inch: LibreOffice counts in hundredths of a millimetre

# What LibreOffice makes of a workbook differs by its format where neither file says anything. The
# text in the cells of an .xls stands two points from the edge instead of one, and a step of
# indentation is ten points instead of seven and a half. A conditional format of an .xls brings the
# size and the place of text along that unformatted cells have, that of an .xlsx does not.
PADDING = 35  # hundredths of a millimetre: one point
INDENT_RATIO = 7.5 / 10
FOOTER = 750  # hundredths of a millimetre, as the templates have it


def through_office(paths, folder):
    """For each calendar, the .xlsx and the PDF that LibreOffice makes of it."""
    made = {}
    with libreoffice.desktop(folder) as office:
        for number, path in enumerate(paths):
            document = libreoffice.load(office, pathlib.Path(path))
            document.calculateAll()
            base = pathlib.Path(folder, f"{number}-{os.path.basename(path).replace('.', '-')}")
            copy, pdf = base.with_suffix(".xlsx"), base.with_suffix(".pdf")
            _bring_nothing_along(document)
            libreoffice.store(document, copy, XLSX)
            if path.endswith(".xls"):
                _even_paddings(document)
            libreoffice.store(document, pdf, PDF)
            document.close(True)
            made[path] = (str(copy), str(pdf))
    return made


def _even_paddings(document):
    for sheet in document.Sheets:
        for ranges in sheet.UniqueCellFormatRanges:
            ranges.ParaIndent = round(ranges.ParaIndent * INDENT_RATIO)
            for side in ("Left", "Right", "Top", "Bottom"):
                setattr(ranges, f"Para{side}Margin", PADDING)


def _bring_nothing_along(document):
    """Every conditional format inherits from the default cell style, which then sets nothing. The
    height of footers depends on that style too, and stays what it is."""
    for style in document.StyleFamilies.getByName("PageStyles"):
        style.FooterIsDynamicHeight = False
        style.FooterHeight = FOOTER
    styles = document.StyleFamilies.getByName("CellStyles")
    for name in styles.ElementNames:
        if "Cond" in name:
            styles.getByName(name).ParentStyle = "Default"
    styles.getByName("Default").setAllPropertiesToDefault()


def office_failures(one_path, other_path):
    one, other = facts(one_path), facts(other_path)
    for sheet in one.keys() | other.keys():
        ours, theirs = one.get(sheet, {}), other.get(sheet, {})
        for what in ours.keys() | theirs.keys():
            if ours.get(what) != theirs.get(what):
                yield f"{sheet}: {what}: {ours.get(what)!r} and {theirs.get(what)!r}"


def facts(path):
    formulas, results = openpyxl.load_workbook(path), openpyxl.load_workbook(path, data_only=True)
    return {sheet.title: {**_cells(sheet, "formula"), **_cells(results[sheet.title], "result"),
                          **_looks(sheet), **_rules(formulas, sheet), **_print_setup(sheet)}
            for sheet in formulas.worksheets} | {"sheets": dict(enumerate(formulas.sheetnames))}


def _cells(sheet, kind):
    return {f"{kind} {cell.coordinate}": cell.value for row in sheet.iter_rows() for cell in row
            if cell.value is not None}


def _looks(sheet):
    looks = {f"look of {cell.coordinate}": repr((
        cell.number_format, cell.font, cell.fill, cell.border, cell.alignment, cell.protection))
        for row in sheet.iter_rows() for cell in row}
    return {**looks, "merged cells": sorted(map(str, sheet.merged_cells.ranges)),
            "widths": {name: (column.min, column.max, column.width, column.hidden)
                       for name, column in sheet.column_dimensions.items()},
            "heights": {number: (row.height, row.hidden)
                        for number, row in sheet.row_dimensions.items()}}


def _rules(book, sheet):
    rules = {f"conditional format of {ranges.sqref}":
             [(rule.type, rule.operator, rule.formula, _differential(rule.dxf))
              for rule in ranges.rules] for ranges in sheet.conditional_formatting}
    for rule in sheet.data_validations.dataValidation:
        rules[f"validation of {rule.sqref}"] = (rule.type, rule.operator, rule.formula1,
                                                rule.formula2, rule.error, rule.errorTitle,
                                                rule.prompt, rule.promptTitle)
    rules["pictures and charts"] = len(sheet._images), len(sheet._charts)
    rules["names"] = {name.name: name.attr_text for name in book.defined_names.definedName
                      if name.localSheetId == book.index(sheet)}
    rules["panes"], rules["tab"] = sheet.freeze_panes, sheet.sheet_properties.tabColor.rgb
    rules["gridlines"] = sheet.sheet_view.showGridLines
    rules["state"] = sheet.sheet_state
    return rules


def _differential(look):
    font, fill = look.font, look.fill
    return (font and (font.b, font.strike, font.color and font.color.rgb),
            fill and fill.bgColor.rgb)


def _print_setup(sheet):
    setup, margins = sheet.page_setup, sheet.page_margins
    round_margin = {side: round(getattr(margins, side) / MARGIN_TOLERANCE)
                    for side in ("left", "right", "top", "bottom")}
    footer = sheet.oddFooter
    return {"paper": (setup.orientation, setup.paperSize, sheet.print_area,
                      sheet.print_title_rows, sheet.print_title_cols),
            "fit": (sheet.sheet_properties.pageSetUpPr.fitToPage, setup.fitToWidth,
                    setup.fitToHeight, setup.scale),
            "centred": (sheet.print_options.horizontalCentered,
                        sheet.print_options.verticalCentered),
            "margins": round_margin,
            "footer": [part.text for part in (footer.left, footer.center, footer.right)],
            "breaks": [mark.id for mark in sheet.row_breaks.brk]}


def page_failures(name, one_pdf, other_pdf, keep):
    one, other = pages.render(one_pdf), pages.render(other_pdf)
    if len(one) != len(other):
        yield f"{len(one)} and {len(other)} pages"
        return
    for number, (ours, theirs) in enumerate(zip(one, other), 1):
        mask = numpy.zeros(ours.shape[:2], dtype=bool)
        differing = pages.differing(ours, theirs, mask)
        slight = 0 if ours.shape != theirs.shape else int((ours != theirs).any(axis=2).sum())
        print(f"{name}, page {number}: {int((ours.min(axis=2) < 230).sum())} printed pixels, "
              f"{len(differing)} differ, {slight} in the least degree")
        if keep:
            pages.save_picture(pages.marked_up(ours, mask, differing),
                               os.path.join(keep, f"{name}-{number}.png"))
        if differing:
            yield f"page {number}: {len(differing)} pixels differ, the first at {differing[0]}"


def check(options, work):
    folder = pathlib.Path(options.data, "template")
    names = sorted(path.stem for path in folder.glob("*.xls"))
    if names != sorted(path.stem for path in folder.glob("*.xlsx")) or len(names) < 5:
        yield f"not every template exists in both formats: {names}"
        return
    pairs = {name: [generate(options, str(folder / f"{name}{suffix}"), work)
                    for suffix in (".xlsx", ".xls")] for name in names}
    made = through_office([path for pair in pairs.values() for path in pair], work)
    for name, (one, other) in pairs.items():
        failures = [*office_failures(made[one][0], made[other][0]),
                    *page_failures(name, made[one][1], made[other][1], options.keep)]
        yield from (f"{name}: {failure}" for failure in failures)


if __name__ == "__main__":
    sys.exit(page_command.run(check, __doc__.splitlines()[0], "orrery-formats-"))
