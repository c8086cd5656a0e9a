"""Facts about what lies on an .xlsx sheet: comments, drawings, charts, tables, links, controls."""
from facts import Near
from opc import is_true, local
from xlsx_book import attribute, deep, first, kids, text_of


_THREAD = "B6"  # the cell of a threaded comment
_NO_SLICER = "a slicer of tables"  # what is shown where a program knows no slicers


# --------------------------------------------------------------------- comments

def _comments(sheet):
    for part in sheet.related("comments"):
        root = sheet.package.tree(part)
        authors = [author.text or "" for author in kids(root, "authors", "author")]
        for comment in kids(root, "commentList", "comment"):
            yield comment.get("ref"), text_of(comment, "t"), authors[int(comment.get("authorId"))]


def comments(sheet):
    found = list(_comments(sheet))
    plain = [comment for comment in found if comment[0] != _THREAD]
    return {"texts": {where: text for where, text, _ in plain},
            "authors": {where: author for where, _, author in plain if author.strip()}}


def _notes(sheet):
    """The shapes of comments: (row, column) counted from 0, shape, its data."""
    for part in sheet.related("vmlDrawing"):
        for shape in deep(sheet.package.tree(part), "shape"):
            data = first(shape, "ClientData")
            if data is not None and data.get("ObjectType") == "Note":
                yield (text_of(data, "Row"), text_of(data, "Column")), shape, data


def _style(shape):
    return dict(part.strip().split(":", 1) for part in shape.get("style", "").split(";")
                if ":" in part)


def comment_shapes(sheet):
    sizes, colors, visible = {}, {}, []
    for where, shape, data in _notes(sheet):
        anchor = [int(number) for number in text_of(data, "Anchor").split(",") if number.strip()]
        if len(anchor) == 8:
            sizes[where] = [Near(anchor[0], 1), Near(anchor[2], 1),
                            Near(anchor[4] - anchor[0], 1), Near(anchor[6] - anchor[2], 1)]
        colors[where] = (shape.get("fillcolor") or "").split()[0].lower()
        if first(data, "Visible") is not None or "visible" in _style(shape).get("visibility", ""):
            visible.append(where)
    return {"places and sizes": sizes, "colours": colors, "which are shown": sorted(visible)}


def threads(sheet):
    found, people = [], set()
    for part in sheet.package.rels(sheet.package.workbook).values():
        if part.kind == "person" and part.target in sheet.package:
            people |= {person.get("id") for person in sheet.package.tree(part.target)}
    ids = {}
    for part in sheet.related("threadedComment"):
        for comment in sheet.package.tree(part):
            ids[comment.get("id")] = len(ids)
            found.append((comment.get("ref"), text_of(comment, "text"),
                          ids.get(comment.get("parentId")), comment.get("personId") in people))
    stand_ins = {author[3:] for _, _, author in _comments(sheet) if author.startswith("tc=")}
    return {"questions": [each for each in found if each[2] is None],
            "answers": [each for each in found if each[2] is not None],
            "their stand-ins among the comments": bool(stand_ins & set(ids))}


# --------------------------------------------------------------------- drawings

def _anchors(sheet):
    """(part, anchor, place) of everything drawn."""
    for part in sheet.related("drawing"):
        for anchor in sheet.package.tree(part):
            start = first(anchor, "from")
            if start is not None:
                yield part, anchor, [Near(int(text_of(start, "col")), 1),
                                     Near(int(text_of(start, "row")), 1)]


def _of_kind(sheet, name):
    for part, anchor, place in _anchors(sheet):
        for element in kids(anchor, name) or kids(anchor, "AlternateContent", "Choice", name):
            yield part, element, place


def pictures(sheet):
    found = []
    for part, element, place in _of_kind(sheet, "pic"):
        blip = deep(element, "blip")
        media = sheet.target(part, attribute(blip[0], "embed")) if blip else None
        found.append((place, part, media, deep(element, "cNvPr")[0]))
    found.sort(key=lambda each: each[0][1].value)
    targets = [sheet.target(part, attribute(link, "id")) or "nowhere"
               for _, part, _, properties in found for link in deep(properties, "hlinkClick")]
    return {"pictures": [sheet.digest(media) for _, _, media, _ in found if media],
            "places": [place for place, _, _, _ in found],
            "descriptions": [properties.get("descr") for _, _, _, properties in found
                             if properties.get("descr")],
            "links": [sheet.neutral(target.lstrip("#")) for target in targets]}


def _fill(element):
    color = first(element, "spPr", "solidFill", "srgbClr")
    return None if color is None else color.get("val").upper()


def _preset(element):
    form = first(element, "spPr", "prstGeom")
    return None if form is None else form.get("prst")


def shapes(sheet):
    found = {}
    for _, element, place in _of_kind(sheet, "sp"):
        if not _is_text_box(element):
            found["shapes"] = _preset(element), place
            found["their texts"] = text_of(element, "t")
            found["their colours"] = _fill(element)
    for _, element, place in _of_kind(sheet, "cxnSp"):
        found["connectors"] = (_preset(element) or "").rstrip("1").replace("straightConnector",
                                                                           "line"), place
    for _, element, place in _of_kind(sheet, "grpSp"):
        found["groups"] = [(_preset(member), text_of(member, "t"))
                           for member in kids(element, "sp")], place
    return found


def _is_text_box(element):
    box = first(element, "nvSpPr", "cNvSpPr")
    return is_true(box.get("txBox")) or _preset(element) == "rect"


def text_boxes(sheet):
    boxes = [(element, place) for _, element, place in _of_kind(sheet, "sp")
             if _is_text_box(element) and text_of(element, "t") != _NO_SLICER]
    return {"texts": [text_of(element, "t") for element, _ in boxes],
            "places": [place for _, place in boxes],
            "colours": [_fill(element) for element, _ in boxes if _fill(element)],
            "bold text": any(is_true(run.get("b")) for element, _ in boxes
                             for run in deep(element, "rPr")),
            "linked cells": [sheet.neutral(element.get("textlink")) for element, _ in boxes
                             if element.get("textlink")]}


# ----------------------------------------------------------------------- charts

def _charts(sheet):
    found = []
    for part, element, place in _of_kind(sheet, "graphicFrame"):
        for chart in deep(element, "chart"):
            target = sheet.target(part, attribute(chart, "id"))
            if target:
                found.append((place, sheet.package.tree(target)))
    return sorted(found, key=lambda each: each[0][0].value)


def charts(sheet):
    found = _charts(sheet)
    plots = [first(root, "chart", "plotArea") for _, root in found]
    return {"kinds": [[local(each.tag) for each in plot if local(each.tag).endswith("Chart")]
                      for plot in plots],
            "places": [place for place, _ in found],
            "series": [_series(deep(plot, "ser")) for plot in plots],
            "titles": [text for _, root in found for title in kids(root, "chart", "title")
                       for text in [text_of(title, "t", "v")] if text],
            "axis titles": [text_of(title, "t") for plot in plots for title in deep(plot, "title")],
            "legends": [each.get("val") for _, root in found
                        for each in kids(root, "chart", "legend", "legendPos")],
            "colours": [each.get("val").upper() for plot in plots for series in deep(plot, "ser")
                        for each in kids(series, "spPr", "solidFill", "srgbClr")][:1]}


def _series(found):
    """The cells of categories and values of each series; the first one's categories are for all."""
    cells = [{local(part.tag): text_of(part, "f").rpartition("!")[2] for part in series}
             for series in found]
    return [(each.get("cat") or cells[0].get("cat"), each.get("val")) for each in cells]


def chart_references(sheet):
    own, others = [], []
    for _, root in _charts(sheet):
        for element in (each for each in deep(root, "f") if "!" in each.text):
            target = sheet.own_target(element.text)
            (own if target else others).append(target or sheet.neutral(element.text))
    return {"to the own sheet": own, "to other sheets": others}


# ----------------------------------------------------------------------- tables

def tables(sheet):
    everywhere = [table for each in sheet.book.sheets for table in each.tables]
    ids, names = ([table.get(key).lower() for table in everywhere] for key in ("id", "displayName"))
    unique = all(ids.count(table.get("id").lower()) == 1
                 and names.count(table.get("displayName").lower()) == 1 for table in sheet.tables)
    styles = [first(table, "tableStyleInfo") for table in sheet.tables]
    columns = [kids(table, "tableColumns", "tableColumn") for table in sheet.tables]
    return {"tables": [table.get("ref") for table in sheet.tables],
            "ids and names of their own": unique and bool(sheet.tables),
            "columns": [[column.get("name") for column in each] for each in columns],
            "styles": [(style.get("name"), is_true(style.get("showRowStripes"))) for style in styles
                       if style is not None and style.get("name")],
            "total rows": [(column.get("totalsRowLabel"), column.get("totalsRowFunction"))
                           for each in columns for column in each
                           if column.get("totalsRowLabel") or column.get("totalsRowFunction")],
            "calculated columns": [text_of(column, "calculatedColumnFormula") != ""
                                   for each in columns for column in each
                                   if kids(column, "calculatedColumnFormula")],
            "filter buttons": [first(table, "autoFilter").get("ref")[:2] for table in sheet.tables
                               if first(table, "autoFilter") is not None]}


# -------------------------------------------------------- links, sparklines, controls

def links(sheet):
    facts = {}
    for element in deep(sheet.root, "hyperlink"):
        place = element.get("location")
        target = place or sheet.target(sheet.part, attribute(element, "id")) or ""
        if target.startswith("#"):
            place = target[1:]
        outside = "to mail" if target.startswith("mail") else "to the web"
        inside = "to the own sheet" if place and sheet.own_target(place) else "to another sheet"
        kind = inside if place else outside
        facts[kind] = element.get("ref"), sheet.neutral(place) if place else target
        if element.get("tooltip"):
            facts["tips"] = element.get("ref"), element.get("tooltip")
    return facts


def sparklines(sheet):
    groups = {}
    for group in deep(sheet.root, "sparklineGroup"):
        for line in deep(group, "sparkline"):
            groups[text_of(line, "sqref")] = group, sheet.neutral(text_of(line, "f"))
    return {"places and data": {where: data for where, (_, data) in groups.items()},
            "kinds": {where: group.get("type", "line") for where, (group, _) in groups.items()},
            "colours": {where: sheet.styles.color(first(group, "colorSeries"))
                        for where, (group, _) in groups.items()
                        if attribute(first(group, "colorSeries"), "rgb")},
            "marks": [where for where, (group, _) in groups.items() if is_true(group.get("high"))]}


def controls(sheet):
    found = [sheet.package.tree(part) for part in sheet.related("ctrlProp")]
    anchored = [element for element in deep(sheet.root, "control")
                if sheet.target(sheet.part, attribute(element, "id"))]
    return {"controls": [root.get("objectType") for root in found if anchored],
            "states": [root.get("checked") for root in found],
            "linked cells": [sheet.neutral(root.get("fmlaLink")) for root in found
                             if root.get("fmlaLink")]}


def _filtered_tables(sheet):
    """The ids of the tables that the slicers of a sheet filter, through caches of the workbook."""
    package = sheet.package
    caches = [package.tree(rel.target) for rel in package.rels(package.workbook).values()
              if rel.kind == "slicerCache" and rel.target in package]
    shown = {element.get("cache") for part in sheet.related("slicer")
             for element in package.tree(part)}
    return {filtered.get("tableId") for cache in caches if cache.get("name") in shown
            for filtered in deep(cache, "tableSlicerCache")}


def slicers(sheet):
    def names(each):
        return [element.get("name") for part in each.related("slicer")
                for element in sheet.package.tree(part)]
    own = names(sheet)
    filtered = _filtered_tables(sheet)
    everywhere = [name for each in sheet.book.sheets for name in names(each)]
    drawn = [element.get("name") for part in sheet.related("drawing")
             for element in deep(sheet.package.tree(part), "slicer")]
    return {"slicers": len([name for name in own if name in drawn]) or None,
            "names of their own": bool(own) and all(everywhere.count(name) == 1 for name in own),
            "the tables of the sheet": bool(filtered) and filtered <= {table.get("id")
                                                                       for table in sheet.tables}}
