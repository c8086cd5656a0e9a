"""Facts about an .xlsx sheet's cells, rows, columns, rules and validations."""
from facts import Near
from opc import cell_name, is_true, local
from xlsx_book import attribute, deep, first, kids, text_of

ROWS, COLUMNS = range(1, 61), range(1, 27)  # what is looked at for formats
CALENDAR = (41, 48)  # rows that the calendar writes
_CALCULATED = {(row, 4) for row in range(1, 9)} | {(row, 12) for row in (2, 3, 4)} | {(5, 11)}
_DATE = (7, 1)
_PATTERNED = (4, 3)                  # a cell whose fill has a pattern
_FORMATTED_ROW, _FORMATTED_COLUMN = 12, 16


def _outside_calendar(sheet):
    return {where: cell for where, cell in sheet.cells.cells.items()
            if not CALENDAR[0] <= where[0] <= CALENDAR[1]}


def values(sheet):
    facts = {}
    for where, cell in sorted(_outside_calendar(sheet).items()):
        value = None if cell.formula is not None or where in _CALCULATED else sheet.value(cell)
        if value:
            kind = "dates" if where == _DATE else f"{value[0]} cells"
            facts.setdefault(kind, {})[cell_name(where)] = value[1]
    return facts


def rich_text(sheet):
    runs = {}
    for where, cell in _outside_calendar(sheet).items():
        if cell.kind == "s" and kids(sheet.book.strings[int(cell.value)], "r"):
            runs[cell_name(where)] = [
                (text_of(run, "t"), first(run, "rPr", "b") is not None)
                for run in kids(sheet.book.strings[int(cell.value)], "r")]
    return {"runs of text": runs}


def formulas(sheet):
    texts = {where: sheet.neutral(text) for where, text in sheet.cells.formula_texts.items()}
    arrays = {master: cell_name(area[2:]) for area, master in sheet.cells.array_areas("array")}
    table = {(row, 12): texts.get((row, 12)) for row in (2, 3, 4)}
    named = {"plain formulas": (1, 4), "formulas that name their sheet": (2, 4),
             "formulas over another sheet": (3, 4), "formulas with a workbook's name": (4, 4),
             "formulas with a sheet's name": (5, 4), "formulas with a table's column": (6, 4)}
    return {**{what: texts.get(where) for what, where in named.items()},
            "array formulas": {cell_name(where): (texts.get(where), end)
                               for where, end in arrays.items()},
            "formulas in a table": {cell_name(where): _this_row(text)
                                    for where, text in table.items() if text}}


def _this_row(text):
    """The two spellings of a cell in the table's own row."""
    return text.replace("[#This Row],", "").replace("[[", "[").replace("]]", "]").replace("@", "")


def formats(sheet):
    facts = {}
    for row in ROWS:
        for column in COLUMNS:
            look = sheet.styles.format(sheet.cells.style_at((row, column)))
            for aspect, value in look.items():
                if value is not None and ((row, column) == _PATTERNED) == ("pattern" in aspect):
                    what = _where_from(row, column) or aspect
                    facts.setdefault(what, {})[cell_name((row, column))] = value
    return facts


def _where_from(row, column):
    """Cells that are not there show the format of their row or column."""
    if row == _FORMATTED_ROW and column > 4:
        return "formats of rows"
    return "formats of columns" if column == _FORMATTED_COLUMN else None


def _columns(sheet):
    for element in kids(sheet.root, "cols", "col"):
        for number in range(int(element.get("min")), min(int(element.get("max")), 26) + 1):
            yield number, element


def columns(sheet):
    standard = first(sheet.root, "sheetFormatPr")
    width = float(standard.get("defaultColWidth", "8.43")) if standard is not None else 8.43
    widths = {number: width for number in COLUMNS}
    hidden = []
    for number, element in _columns(sheet):
        widths[number] = float(element.get("width", width))
        if is_true(element.get("hidden")):
            hidden.append(number)
    return {"widths": {number: Near(value, 0.8) for number, value in widths.items()
                       if abs(value - 8.43) > 1}, "hidden columns": hidden}


def rows(sheet):
    found = {number: row for number, row in sheet.cells.rows.items() if number in ROWS}
    heights = {number: float(row.get("ht")) for number, row in found.items()
               if row.get("ht") and is_true(row.get("customHeight"))
               and not is_true(row.get("hidden"))}
    return {"heights": {number: Near(height, 0.6) for number, height in heights.items()
                        if abs(height - 15) > 0.5},
            "hidden rows": [number for number, row in found.items() if is_true(row.get("hidden"))]}


def outline(sheet):
    levels = {number: int(row.get("outlineLevel")) for number, row in sheet.cells.rows.items()
              if int(row.get("outlineLevel", "0"))}
    across = {number: int(element.get("outlineLevel")) for number, element in _columns(sheet)
              if int(element.get("outlineLevel", "0"))}
    place = first(sheet.root, "sheetPr", "outlinePr")
    above = place is not None and place.get("summaryBelow") in ("0", "false") \
        and place.get("summaryRight") in ("0", "false")
    collapsed = [number for number, row in sheet.cells.rows.items()
                 if is_true(row.get("collapsed"))]
    return {"levels of rows": levels, "levels of columns": across,
            "sums above and on the left": above, "closed groups": collapsed}


def merges(sheet):
    return {"merged cells": sorted(sheet.cells.merges)}


# --------------------------------------------------------- conditional formats

_RULES = {"B1:B10": "formula", "C1:C10": "comparison", "D1:D10": "colour scale", "E20:E24": "text",
          "F20:F24": "duplicates", "G20:G24": "highest values", "H20:H24": "date",
          "I20:I24": "icons", "E26:E30": "bars"}
_LATER_RULES = {"F26:F30": "solid bars with a colour for negative values",
                "G26:G30": "icons of one's own choice", "H26:H30": "a formula over another sheet"}


def _drawn(sheet, rule):
    """Thresholds, colours and icons of what a rule draws."""
    drawn = next((each for each in rule if local(each.tag) in ("colorScale", "iconSet", "dataBar")),
                 None)
    if drawn is None:
        return None
    return {"icons": [drawn.get("iconSet")] + [(icon.get("iconSet"), icon.get("iconId"))
                                               for icon in kids(drawn, "cfIcon")],
            "from": [each.get("type") for each in kids(drawn, "cfvo")],
            "colours": [sheet.styles.color(color) for color in drawn
                        if local(color.tag) in ("color", "negativeFillColor")],
            "gradient": drawn.get("gradient") not in ("0", "false")}


def _rule(sheet, rule):
    kind = rule.get("type")
    own = kind in ("expression", "cellIs")  # others spell in a formula what they say elsewhere
    dxf = first(rule, "dxf")
    return {"kind": kind, "operator": rule.get("operator"),
            "stops": is_true(rule.get("stopIfTrue")),
            "formulas": [sheet.neutral(each.text) for each in rule
                         if local(each.tag) in ("formula", "f")] if own else [],
            "look": sheet.styles.rule_format(
                dxf if dxf is not None else sheet.styles.dxf(rule.get("dxfId"))),
            "drawn": _drawn(sheet, rule), "rank": rule.get("rank") if kind == "top10" else None,
            "period": rule.get("timePeriod"), "text": rule.get("text") or None}


def _rules(sheet, names):
    """The rules over these cells, whichever list they stand in."""
    found = {}
    for element in deep(sheet.root, "conditionalFormatting"):
        in_extension = "microsoft" in element.tag
        what = names.get(text_of(element, "sqref") if in_extension else element.get("sqref"))
        for rule in kids(element, "cfRule"):
            if what and (in_extension or not deep(rule, "id")):  # not what stands for another
                found[what] = _rule(sheet, rule)
    return found


def rules(sheet):
    return _rules(sheet, _RULES)


def later_rules(sheet):
    return _rules(sheet, _LATER_RULES)


# ------------------------------------------------------------------ validations

_VALIDATIONS = {"E1": "list", "E2": "whole numbers", "E3": "formula", "E4": "dates"}
_LATER_VALIDATIONS = {"E5": "a list over another sheet"}


def _validations(sheet, names):
    found = {}
    for element in deep(sheet.root, "dataValidation"):
        what = names.get(element.get("sqref") or text_of(element, "sqref"))
        operator, kind = element.get("operator", "between"), element.get("type")
        count = 2 if kind in ("whole", "date") and operator in ("between", "notBetween") else 1
        formulas_ = [sheet.neutral(text_of(each, "f") or each.text) for each in element
                     if local(each.tag) in ("formula1", "formula2")]
        if what:
            found[what] = {
                "kind": kind, "operator": operator, "formulas": formulas_[:count],
                "texts": [element.get(name, "") for name in ("errorTitle", "error", "promptTitle",
                                                             "prompt")],
                "style": element.get("errorStyle", "stop")}
    return found


def validations(sheet):
    return _validations(sheet, _VALIDATIONS)


def later_validations(sheet):
    return _validations(sheet, _LATER_VALIDATIONS)


def own_references(sheet):
    """Where the sheet names itself: what each of these places refers to."""
    found = {"in formulas": sheet.neutral(sheet.cells.formula_texts.get((2, 4), "")),
             "in conditional formats": rules(sheet).get("formula", {}).get("formulas"),
             "in validations": [validations(sheet)[what]["formulas"] for what in ("list", "formula")
                                if what in validations(sheet)],
             "in sparklines": [sheet.neutral(text_of(each, "f"))
                               for each in deep(sheet.root, "sparkline")
                               if text_of(each, "sqref") != "F3"],
             "in controls": [sheet.neutral(attribute(sheet.package.tree(part), "fmlaLink"))
                             for part in sheet.related("ctrlProp")],
             "in links": [sheet.neutral(each.get("location")) for each in
                          deep(sheet.root, "hyperlink") if each.get("ref") == "A21"]}
    for part in sheet.related("drawing"):
        found["in text boxes"] = [sheet.neutral(shape.get("textlink")) for shape in
                                  deep(sheet.package.tree(part), "sp") if shape.get("textlink")]
        found["in charts"] = [sheet.neutral(each.text) for chart in sheet.related("chart", part)
                              for each in deep(sheet.package.tree(chart), "f")
                              if "!" in each.text and "Other" not in each.text]
    return found
