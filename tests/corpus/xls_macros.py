"""The macros of an edited .xls workbook, and what their changes mean for its streams."""

import struct

import xls_book as biff
from macros import macro_failures
from vba import STORAGE, Project
from xls_places import CODENAME

_LISTS = ("dir", "_VBA_PROJECT")  # streams beside those of the modules


def _project(file):
    return Project(file.entries, (STORAGE,)) if (STORAGE,) in file.entries else None


def _code_name(sheet):
    for data in sheet.all_of(CODENAME)[:1]:
        count, wide = struct.unpack_from("<HB", data)
        return biff.unicode_text(data, 3, count, wide & 1)[0]
    return None


class EditedMacros:
    """`may_differ` and `may_go` are the paths of streams that other checks pass over, `added` those
    of the copies' modules."""

    def __init__(self, before, after, first, copies):
        self.may_differ, self.may_go, self.added, self.failures = set(), set(), set(), []
        old = _project(before.file)
        name = _code_name(before.sheets[first])
        model = old.module(name) if old and name else None
        if not copies or not model or not model.code:
            return
        new = _project(after.file)
        names = [_code_name(sheet) for sheet in after.sheets[first + 1:first + 1 + copies]]
        self.failures += macro_failures(old, new, model, names)
        self._find_paths(old, names)

    def _find_paths(self, old, names):
        modules = (STORAGE, "VBA")
        self.may_differ = {(STORAGE, "PROJECT"), (STORAGE, "PROJECTwm")}
        self.may_differ |= {(*modules, stream) for stream in
                            [*_LISTS, *[each.stream for each in old.modules]]}
        self.may_go = {path for path in old.paths() if path[-1].startswith("__SRP_")}
        self.added = {(*modules, name) for name in names if name}
