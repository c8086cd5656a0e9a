"""A hidden LibreOffice that is started again when it dies."""

import pathlib
import sys

import uno  # noqa: F401  (makes the next ones known)
from com.sun.star.lang import DisposedException
from com.sun.star.task import ErrorCodeIOException
from com.sun.star.uno import RuntimeException

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[3] / "scripts"))
import libreoffice  # noqa: E402

_STARTS = 3  # tried at most
ERRORS = (DisposedException, ErrorCodeIOException, RuntimeException)


class Failed(Exception):
    """LibreOffice did not open or measure a workbook."""


class OfficeSession:
    # Contexts of Python and errors of LibreOffice do not agree, so this begins and ends by calls.
    def __init__(self, folder):
        self._folder = folder
        self._desktop = None
        self._office = None
        self.restart()

    def restart(self):
        """Starts LibreOffice, again if it dies at once. Throws Failed."""
        for _ in range(_STARTS):
            self.close()
            self._desktop = libreoffice.desktop(self._folder)
            try:
                self._office = self._desktop.__enter__()
                return
            except ERRORS:
                self._desktop = None
        raise Failed("does not start")

    def close(self):
        desktop, self._desktop = self._desktop, None
        if desktop is None:
            return
        try:
            desktop.__exit__(None, None, None)
        except ERRORS:
            pass  # it has ended already

    def with_document(self, path, action):
        """What the action gives for the document at the path. Throws Failed."""
        try:
            document = libreoffice.load(self._office, path)
            if document is None or not hasattr(document, "Sheets"):
                raise Failed("does not open it")
            result = action(document)
            document.close(True)
            return result
        except ERRORS as error:
            message = str(error)
        raise Failed(f"fails: {message}")
