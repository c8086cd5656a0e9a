"""Reads edited workbooks back with programs that are not ours: openpyxl and LibreOffice."""

import os
import re
import shutil
import subprocess
import tempfile
import warnings
from multiprocessing.pool import ThreadPool

import openpyxl
import openpyxl.reader.drawings
from openpyxl.utils.datetime import from_excel

from cells import SheetCells
from opc import cell_name, inside

_CONTROL = re.compile(r"[\x00-\x08\x0b\x0c\x0e-\x1f]")
_ESCAPED = re.compile(r"_x([0-9A-Fa-f]{4})_")


openpyxl.reader.drawings.PILImage = False  # pictures are not read: some of them it cannot


def load(path):
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")  # about features that openpyxl drops when it saves
        return openpyxl.load_workbook(path, keep_vba=False)


def _expected(cell, value, epoch):
    """What openpyxl makes of a value: control characters stay escaped, numbers become dates."""
    if isinstance(value, str):
        return _CONTROL.sub(lambda match: f"_x{ord(match[0]):04X}_", value)
    if cell.is_date:
        try:
            return from_excel(value, epoch, timedelta=cell.data_type == "d" and
                              cell.number_format.startswith("["))
        except (OverflowError, ValueError):
            return cell.value
    return value


def value_failures(program, workbook, plan, merges):
    """The written cells hold their values, as the right types."""
    for sheet in plan.sheets:
        worksheet = workbook[sheet.name]
        for where, value in _judged(sheet, merges):
            cell = worksheet.cell(*where)
            expected = _expected(cell, value, workbook.epoch)
            kinds = ("s",) if isinstance(value, str) else ("n", "d")
            if _same_escapes(cell.value) != expected or cell.data_type not in kinds:
                yield (f"{program} reads {cell.value!r} ({cell.data_type}) in "
                       f"{sheet.name}!{cell_name(where)}, should be {expected!r}")


def _same_escapes(value):
    """Escapes in one spelling: programs write them in capitals or not."""
    if not isinstance(value, str):
        return value
    return _ESCAPED.sub(lambda match: f"_x{match[1].upper()}_", value)


def _judged(sheet, merges):
    """The written cells that every reader shows: not those under a merge."""
    for where, value in sheet.written.items():
        if where not in sheet.either and \
                not any(inside(where, area) and where != area[:2] for area in merges):
            yield where, value


def style_failures(before, after, plan, model_cells):
    """Each written cell has the format that the cell, its row or its column had."""
    looks = {}
    for sheet in plan.sheets:
        worksheet = after[sheet.name]
        for where, _ in _judged(sheet, model_cells.merges):
            cell = worksheet.cell(*where)
            # openpyxl gives the corner of a merged area the borders of the whole.
            old = before[plan.model.name]._cells.get(where)
            style = old._style if old else before._cell_styles[model_cells.style_at(where)]
            key = (tuple(style), tuple(cell._style))
            if key not in looks:
                looks[key] = _look(before, style) == _look(after, cell._style)
            if not looks[key]:
                yield f"openpyxl sees another format in {sheet.name}!{cell_name(where)}"


def _look(workbook, style):
    """A cell format with everything that it refers to."""
    return [repr(part) for part in (
        workbook._fonts[style.fontId], workbook._fills[style.fillId],
        workbook._borders[style.borderId], workbook._alignments[style.alignmentId],
        workbook._protections[style.protectionId], style.numFmtId if style.numFmtId < 164
        else workbook._number_formats[style.numFmtId - 164], style.quotePrefix)]


def openpyxl_failures(before_path, after_path, plan, model_root):
    """None instead of failures where openpyxl shows no sheet of the input: it cannot judge."""
    before, after = load(before_path), load(after_path)
    if not before.sheetnames:
        return None
    return list(_openpyxl_failures(before, after, plan, SheetCells(model_root)))


def _openpyxl_failures(before, after, plan, cells):
    names = [sheet.title for sheet in after._sheets]
    missing = [sheet.name for sheet in plan.sheets if sheet.name not in names]
    if missing:
        yield f"openpyxl does not show {missing}"
        return
    yield from value_failures("openpyxl", after, plan, cells.merges)
    yield from style_failures(before, after, plan, cells)


# ------------------------------------------------------------- LibreOffice

FILTER = "xlsx:Calc MS Excel 2007 XML"


class Office:
    """LibreOffice without a window, with a profile of its own."""

    def __init__(self, folder, profile=None):
        self.profile = profile or tempfile.mkdtemp(prefix="profile-", dir=folder)

    def convert(self, paths, outdir, filter_name=FILTER, seconds=60):
        """Converts the files in one call, and one by one those that came out of it with none.
        Returns the path made of each, or None."""
        os.makedirs(outdir, exist_ok=True)
        self._run(paths, outdir, filter_name, seconds + 10 * len(paths))
        for path in paths:
            if not os.path.exists(self._made(path, outdir, filter_name)):
                self._run([path], outdir, filter_name, seconds)
        made = {path: self._made(path, outdir, filter_name) for path in paths}
        return {path: result if os.path.exists(result) else None for path, result in made.items()}

    def _run(self, paths, outdir, filter_name, seconds):
        command = [shutil.which("soffice") or "soffice",
                   f"-env:UserInstallation=file://{self.profile}", "--headless", "--norestore",
                   "--convert-to", filter_name, "--outdir", outdir]
        try:
            subprocess.run(command + list(paths), stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL, timeout=seconds, check=False)
        except subprocess.TimeoutExpired:
            pass  # the files that are missing then are tried alone

    @staticmethod
    def _made(path, outdir, filter_name):
        stem = os.path.splitext(os.path.basename(path))[0]
        return os.path.join(outdir, f"{stem}.{filter_name.partition(':')[0]}")


def convert_all(options, paths, folder, filter_name=FILTER):
    """One LibreOffice for each job, each with its share of the files."""
    shares = [paths[start::options.jobs] for start in range(options.jobs)]
    with ThreadPool(options.jobs) as threads:
        made = threads.map(lambda share: Office(options.work).convert(
            share, os.path.join(options.work, folder), filter_name),
            [share for share in shares if share])
    return {path: result for part in made for path, result in part.items()}


def office_failures(resaved_path, plan, sheet_names, merges, has_pivots):
    """What LibreOffice made of the workbook has the sheets in order and the written values. It
    lays out pivot tables anew when it opens them: of sheets with one, values are not judged."""
    workbook = load(resaved_path)
    names = [sheet.title for sheet in workbook._sheets]
    if names != sheet_names:
        yield f"LibreOffice has the sheets {names}, should have {sheet_names}"
        return
    if not has_pivots:
        yield from value_failures("LibreOffice", workbook, plan, merges)
