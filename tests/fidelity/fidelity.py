#!/usr/bin/env python3
"""Measures what a copied sheet keeps through each program, feature by feature.

usage: fidelity.py --cli PROGRAM --docs FILE [--write] [--without-office] [--keep FOLDER]

Templates whose model sheet owns every feature are made into a calendar of twelve months by the
built-in engine, by LibreOffice and by a Python library. Each of the twelve sheets is compared with
the model by code that reads the files itself. With --write the tables are written to the file;
else they are compared with it: the built-in engine keeps everything, and every other program's
column says what was measured, where its version is that of the file.
"""
import argparse
import datetime
import pathlib
import re
import sys
import tempfile

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "corpus"))  # the readers' place
import engines  # noqa: E402
import xls_features  # noqa: E402
import xls_sheets  # noqa: E402
import xlsx_book  # noqa: E402
import xlsx_features  # noqa: E402
from facts import KEPT, is_empty, judge  # noqa: E402

DATA = pathlib.Path(__file__).resolve().parent / "data"
MODEL = "Model"
ON_PROTECTED = "Protection"  # is measured on the template whose sheet is protected
_ROW = re.compile(r"\| (.+?) \| (.+?) \| (.+?) \| (.+?) \|$")


def _xlsx_value(sheet, where):
    cell = sheet.cells.cells.get(where)
    found = sheet.value(cell) if cell else None
    return found and found[1]


def _xls_value(sheet, where):
    cell = sheet.raw.cells.get(where)
    return cell and cell.value


FORMATS = {".xlsx": (xlsx_book.Book, xlsx_features.FEATURES, _xlsx_value),
           ".xls": (xls_sheets.Book, xls_features.FEATURES, _xls_value)}


def verdicts(template, output):
    """What became of each feature of the template in a calendar, by the feature's name."""
    read, features, value_of = FORMATS[template.suffix]
    book, model = read(output), read(template).sheet(MODEL)
    failures = list(engines.calendar_failures(book, value_of))
    if failures:
        sys.exit(f"{output} is not the calendar: {failures[0]}")
    found = {}
    for name, tell in features:
        expected = tell(model)
        missing = [part for part, fact in expected.items() if is_empty(fact)]
        if missing or not (expected or name == ON_PROTECTED):
            sys.exit(f"{template.name} lacks {missing or 'everything'} of: {name}")
        found[name] = judge(expected, [tell(book.sheet(month)) for month in engines.MONTHS])
    return found


def measured(program, suffix, folder, with_office):
    """For each program, the verdicts on the template and on the protected one."""
    made = {}
    for name in ("fidelity", "protected"):
        template = DATA / f"{name}{suffix}"
        library = engines.LIBRARIES[suffix][0]
        outputs = {"built-in": engines.generate(program, template, folder, "builtin"),
                   library: engines.by_library(template, folder)}
        if with_office:
            outputs["LibreOffice"] = engines.generate(program, template, folder, "libreoffice")
        for maker, output in outputs.items():
            made.setdefault(maker, []).append(verdicts(template, output))
    return made


def columns(made, suffix):
    """The column of each program: one text for each feature."""
    return {maker: {name: (protected if name == ON_PROTECTED else plain)[name]
                    for name, _ in FORMATS[suffix][1]}
            for maker, (plain, protected) in made.items()}


# --------------------------------------------------------------------- the document

_INTRODUCTION = """\
# What a copied sheet keeps

A template's month sheet is copied eleven times. The tables show what the copies keep of everything that
a sheet can own, through the built-in engine, through LibreOffice and through a widely used Python library.
`tests/fidelity` makes templates that own it all, has each program make the same calendar from them, and
compares each of the twelve sheets with the model, with its own code that reads the files. This command
writes the tables:

    tests/fidelity/fidelity.py --cli build/linux/src/cli/orrery-cli --docs docs/fidelity.md --write

The test `fidelity.tables` compares them with a new measurement.

- **kept**: all twelve sheets have it as the model has it, and references that name the model name the
  copy instead.
- **in part**: what is named is missing, or is not as in the model.
- **lost**: the copies have nothing of it.

LibreOffice reads a workbook and writes a new one, so what its columns lack is mostly what it does not
know, or keeps in another way. Some of its references still name the first month because it does not move
them along with a copy. Protection is measured on a second template, whose sheet is protected.

What the other programs do not know at all is proved by tests of the built-in engine
(`tests/engines/builtin/xlsx/copied_*_test.cpp`): on a copied sheet charts of the 2016 kinds show the copy's
cells; slicers, timelines and named sheet views filter the copy's tables and pivot tables; add-ins are bound
to its ranges; mentions in threads, shapes of comments and controls, the sheet and its filters have ids of
their own. Cells and tables that are mapped to XML stay mapped once, on the model, as in Excel, in `.xls`
too (`tests/engines/builtin/xls/copied_tables_test.cpp`).

Macros, in both formats: if the model's module has code, each copy has a module of its own with that code and a
code name of its own, *Sheet4* after *Sheet3*. The password of the macros stays, a digital signature of them
falls away. Macros that cannot be read stay as they are, and the copies have none; the program says so in
both cases. `tests/macros` proves it, with LibreOffice as a witness.
"""


def table(suffix, made):
    library = engines.LIBRARIES[suffix][0]
    makers = ("built-in", "LibreOffice", library)
    found = columns(made, suffix)
    lines = [f"## {suffix}\n", f"| feature | {' | '.join(makers)} |", "| --- | --- | --- | --- |"]
    lines += [f"| {name} | {' | '.join(found[maker][name] for maker in makers)} |"
              for name, _ in FORMATS[suffix][1]]
    plain, protected = made["LibreOffice"]
    worse = [f"{name} ({protected[name]})" for name, _ in FORMATS[suffix][1]
             if name != ON_PROTECTED and plain[name] == KEPT != protected[name]]
    if worse:
        lines.append("\nOf a protected sheet LibreOffice keeps less: " + "; ".join(worse) + ".")
    return "\n".join(lines) + "\n"


def document(tables, versions):
    used = ", ".join(f"{name} {number}" for name, number in sorted(versions.items()))
    return (f"{_INTRODUCTION}\nMeasured on {datetime.date.today()} with {used}.\n\n"
            + "\n".join(table(suffix, made) for suffix, made in tables.items()))


def written(text):
    """The document's columns by format and program, and its versions."""
    found, makers, suffix = {}, (), None
    for line in text.splitlines():
        row = _ROW.match(line)
        if line.startswith("## "):
            suffix = line[3:]
        elif row and row[1] == "feature":
            makers = row.groups()[1:]
            found[suffix] = {maker: {} for maker in makers}
        elif row and row[1] != "---":
            for maker, verdict in zip(makers, row.groups()[1:]):
                found[suffix][maker][row[1]] = verdict
    line = re.search(r"^Measured on .*? with (.*)\.$", text, re.MULTILINE)
    pairs = [each.rsplit(" ", 1) for each in line[1].split(", ")] if line else []
    return found, dict(pairs)


def failures(tables, text, versions):
    """Gaps of the built-in engine, and where the document says something else."""
    said, said_versions = written(text)
    for suffix, made in tables.items():
        for kind, verdicts_ in zip(("", " (of the protected sheet)"), made["built-in"]):
            for name, verdict in verdicts_.items():
                if verdict != KEPT:
                    yield f"{suffix}: the built-in engine: {name}{kind}: {verdict}"
        for maker, column in columns(made, suffix).items():
            if maker != "built-in" and said_versions.get(maker) != versions.get(maker):
                print(f"{suffix}: {maker} is {versions.get(maker)}, the document's is "
                      f"{said_versions.get(maker)}: its column is not compared")
                continue
            theirs = said.get(suffix, {}).get(maker, {})
            for name in sorted(column.keys() | theirs.keys()):
                if column.get(name) != theirs.get(name):
                    yield f"{suffix}: {maker}: {name} is {column.get(name)!r}, the document says " \
                          f"{theirs.get(name)!r}"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cli", required=True, type=pathlib.Path)
    parser.add_argument("--docs", required=True, type=pathlib.Path)
    parser.add_argument("--write", action="store_true")
    parser.add_argument("--without-office", action="store_true")
    parser.add_argument("--keep", type=pathlib.Path)
    options = parser.parse_args()
    versions = engines.versions()
    with tempfile.TemporaryDirectory() as scratch:
        folder = options.keep or pathlib.Path(scratch)
        folder.mkdir(parents=True, exist_ok=True)
        tables = {suffix: measured(options.cli.resolve(), suffix, folder.resolve(),
                                   not options.without_office) for suffix in FORMATS}
    if options.write:
        options.docs.write_text(document(tables, versions), encoding="utf-8")
    found = list(failures(tables, options.docs.read_text(encoding="utf-8"), versions))
    for failure in found:
        print(failure)
    print(f"{sum(len(features) for _, features, _ in FORMATS.values())} features, "
          f"{len(found)} failures")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
