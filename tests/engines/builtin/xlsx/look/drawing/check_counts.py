"""Compares how many pictures, shapes, charts ... the reader finds in real workbooks with what the
parts say, read by ElementTree without the reader's rules."""

import argparse
import collections
import io
import os
import posixpath
import subprocess
import sys
import xml.etree.ElementTree as ElementTree
import zipfile
from pathlib import Path

KINDS = ["picture", "shape", "line", "group", "chart", "control", "placeholder"]
COMPATIBILITY = "{http://schemas.openxmlformats.org/markup-compatibility/2006}"
UNDERSTOOD = ("/chartex", "/slicer", "/timeslicer")


class Package(zipfile.ZipFile):
    """Names of parts regardless of case and of the kind of slash."""

    def __init__(self, file):
        super().__init__(file)
        self.parts = {name.replace("\\", "/").lstrip("/").lower(): name
                      for name in self.namelist()}

    def has(self, part):
        return part.lower() in self.parts

    def part(self, part):
        return self.read(self.parts[part.lower()])


def local(element):
    return element.tag.rpartition("}")[2]


def relationships(package, part):
    """Type (its last word) and target of the relationships of a part, by id."""
    folder, name = posixpath.split(part)
    rels = f"{folder}/_rels/{name}.rels".lstrip("/")
    found = {}
    if package.has(rels):
        for relation in ElementTree.fromstring(package.part(rels)):
            if relation.get("TargetMode") == "External":
                continue
            target = posixpath.normpath(posixpath.join(folder, relation.get("Target")))
            found[relation.get("Id")] = (relation.get("Type").rpartition("/")[2],
                                         target.lstrip("/"))
    return found


def has_picture(package, part, element, name):
    """Whether an attribute with a prefix leads to the bytes of a picture that can be shown."""
    for key, value in element.attrib.items():
        if key.endswith("}" + name):
            _, target = relationships(package, part).get(value, ("", ""))
            if package.has(target):
                head = package.part(target)[:64]
                return (head.startswith((b"\x89PNG", b"\xff\xd8", b"GIF8", b"BM", b"\xd7\xcd\xc6\x9a",
                                         b"\x01\0\x09\0", b"II*", b"MM\0"))
                        or head[40:44] == b" EMF")
    return False


def is_shown(element):
    properties = next((e for e in element.iter() if local(e) == "cNvPr"), None)
    return properties is None or properties.get("hidden") not in ("1", "true")


def children(element, namespaces):
    """The children, with a choice or the fallback in the place of alternate content."""
    for child in element:
        if child.tag != COMPATIBILITY + "AlternateContent":
            yield child
            continue
        for option in child:
            required = [namespaces.get(p, "") for p in option.get("Requires", "").split()]
            if local(option) == "Fallback" or all(u.endswith(UNDERSTOOD) for u in required):
                yield from children(option, namespaces)
                break


def count_diagram(package, part, frame, counts):
    """The shapes beside a diagram's data; false if there are none."""
    rels = relationships(package, part)
    drawn = [target for kind, target in rels.values() if kind == "diagramDrawing"]
    if len(drawn) != 1:
        return False
    counts["group"] += 1
    for element in ElementTree.fromstring(package.part(drawn[0])).iter():
        if local(element) == "sp":
            counts["shape"] += 1
    return True


def count_element(package, part, element, namespaces, counts):
    kind = local(element)
    if kind not in ("sp", "cxnSp", "pic", "grpSp", "graphicFrame") or not is_shown(element):
        return
    if kind == "pic":
        blip = next(e for e in element.iter() if local(e) == "blip")
        counts["picture" if has_picture(package, part, blip, "embed") else "placeholder"] += 1
    elif kind == "grpSp":
        counts["group"] += 1
        for child in children(element, namespaces):
            count_element(package, part, child, namespaces, counts)
    elif kind == "graphicFrame":
        data = next(e for e in element.iter() if local(e) == "graphicData").get("uri")
        if data.endswith(("/chart", "/chartex")):
            counts["chart"] += 1
        elif not (data.endswith("/diagram") and count_diagram(package, part, element, counts)):
            counts["placeholder"] += 1
    else:
        shape = next((e.get("prst") for e in element.iter() if local(e) == "prstGeom"), "")
        is_line = kind == "cxnSp" or shape in ("line", "straightConnector1")
        counts["line" if is_line else "shape"] += 1


def namespaces_of(text):
    return {prefix: uri for _, (prefix, uri) in
            ElementTree.iterparse(text, events=["start-ns"])}


def count_drawing(package, part, counts):
    root = ElementTree.fromstring(package.part(part))
    namespaces = namespaces_of(io.BytesIO(package.part(part)))
    for anchor in children(root, namespaces):
        for element in children(anchor, namespaces):
            count_element(package, part, element, namespaces, counts)


def count_controls(package, part, counts):
    for shape in ElementTree.fromstring(package.part(part)):
        data = next((e for e in shape if local(e) == "ClientData"), None)
        if data is None or data.get("ObjectType") == "Note":
            continue
        if not any(local(e) == "Anchor" for e in data):
            continue
        if "visibility:hidden" in "".join(shape.get("style", "").split()):
            continue
        image = next((e for e in shape if local(e) == "imagedata"), None)
        shown = image is not None and has_picture(package, part, image, "relid")
        counts["picture" if shown else "control"] += 1


def count_workbook(file):
    """What is on each sheet, by the name of its part."""
    sheets = {}
    with Package(file) as package:
        book = next(target for kind, target in relationships(package, "").values()
                    if kind == "officeDocument")
        for kind, sheet in relationships(package, book).values():
            if kind not in ("worksheet", "chartsheet") or not package.has(sheet):
                continue
            counts = sheets["/" + sheet] = collections.Counter()
            for below, part in relationships(package, sheet).values():
                if below == "drawing":
                    count_drawing(package, part, counts)
                elif below == "vmlDrawing":
                    count_controls(package, part, counts)
    return sheets


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", required=True)
    parser.add_argument("--corpus", required=True, type=Path)
    options = parser.parse_args()
    files = sorted(file for file in (options.corpus / "xlsx").glob("*.xls*")
                   if not file.name.startswith("."))  # what an open program leaves behind
    if not files and "CI" not in os.environ:
        print("no workbooks in", options.corpus)
        return 0
    lines = subprocess.run([options.program, *files], stdout=subprocess.PIPE, text=True,
                           check=True).stdout.splitlines()
    read = {}
    for line in lines:
        name, part, *counts = line.split("\t")
        read[name, part.lower()] = dict(zip(KINDS, map(int, counts)))
    failures = 0
    total = collections.Counter()
    for file in files:
        for part, expected in count_workbook(file).items():
            found = read.get((file.name, part.lower()), {})
            wanted = {kind: expected[kind] for kind in KINDS}
            total.update(wanted)
            if found != wanted:
                failures += 1
                print(f"{file.name} {part}: expected {wanted}, read {found}")
    print("compared:", dict(total))
    if sum(total.values()) < 150:
        print("too few drawings for a comparison")
        failures += 1
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
