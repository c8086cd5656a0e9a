"""What other readers open in the input they open in the output.

Each reader gives None where it does not judge (it does not open the input, or gives up), else a
set of findings; a finding of the output that the input does not have is a failure.
"""

import contextlib
import os
import signal
import warnings
import zipfile

import openpyxl
import xlrd

import stream_findings
from corpus_modules import package_findings  # whose readers set openpyxl up
from judge import Failure
from parameters import suffix_of

_SECONDS = 10
_LARGEST = 48 << 20  # bytes


class TooLong(BaseException):
    """A reader takes too long. Not caught by readers that catch every exception."""


@contextlib.contextmanager
def time_limit(seconds=_SECONDS):
    def stop(*_):
        raise TooLong
    previous = signal.signal(signal.SIGALRM, stop)
    signal.alarm(seconds)
    try:
        yield
    finally:
        signal.alarm(0)
        signal.signal(signal.SIGALRM, previous)


class GaveUp(Exception):
    """The reader cannot say anything: out of time or of memory."""


def _attempt(read, path):
    """What a reader sees; None where it does not open the file, with the reason."""
    try:
        with time_limit(), warnings.catch_warnings():
            warnings.simplefilter("ignore")
            return read(path), ""
    except (TooLong, MemoryError, RecursionError) as error:
        raise GaveUp(type(error).__name__) from None
    except Exception as error:  # hostile files raise whatever they like
        return None, f"{type(error).__name__}: {str(error)[:200]}"


def _openpyxl(path):
    book = openpyxl.load_workbook(path, keep_vba=False)
    return [sheet.title for sheet in book._sheets]


def _xlrd(path):
    with open(os.devnull, "w", encoding="utf-8") as log:
        return xlrd.open_workbook(path, formatting_info=True, ragged_rows=True,
                                  logfile=log).sheet_names()


def _opens(name, read):
    """A judge: the reader opens the output where it opens the input, and shows as many sheets. Of
    sheets with one name some readers show one, or give the second a name of their own."""
    def failures(before, after):
        names, _ = _attempt(read, before)
        if not names:
            return None
        found, why = _attempt(read, after)
        if found is None:
            return [Failure(f"{name} does not open the output", why)]
        if len(found) < len(names):
            return [Failure(f"{name} does not show every sheet", f"{names} became {found}")]
        return []
    return failures


def _well_made(name, findings):
    """A judge: the output has no finding that the input has not."""
    def failures(before, after):
        known, _ = _attempt(findings, before)
        if known is None:
            return None
        found, why = _attempt(findings, after)
        if found is None:
            return [Failure(f"{name} cannot be read", why)]
        if any(finding[0] == package_findings.UNREADABLE for finding in known):
            found = {finding for finding in found if finding[0] == package_findings.UNREADABLE}
        return [Failure(finding[0], " ".join(map(str, finding[1:])))
                for finding in sorted(found - known, key=repr)]
    return failures


_READERS = {
    ".xlsx": {"package": _well_made("container", package_findings.findings),
              "openpyxl": _opens("openpyxl", _openpyxl)},
    ".xls": {"records": _well_made("compound file", stream_findings.findings),
             "xlrd": _opens("xlrd", _xlrd)},
}


def _is_too_large(path):
    """Whether a package unpacks to more than readers in Python get through in time."""
    try:
        with zipfile.ZipFile(path) as container:
            return sum(entry.file_size for entry in container.infolist()) > _LARGEST
    except Exception:  # the readers will tell
        return False


def reader_failures(before, after):
    """(failures, names of the readers that judged)."""
    failures, judged = [], []
    if _is_too_large(before):
        return failures, judged
    for name, judge in _READERS[suffix_of(before)].items():
        try:
            found = judge(before, after)
        except GaveUp:
            continue
        if found is not None:
            failures += found
            judged.append(name)
    return failures, judged
