"""Opens workbooks in LibreOffice: a path on each line of standard input, and on standard output how
many sheets it has, or "no" where LibreOffice does not open it. The first argument is a folder for
the profile. See slow_readers.py, which starts and ends it."""

import os
import pathlib
import sys

sys.path.append(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "scripts"))
import libreoffice  # noqa: E402
import uno  # noqa: E402,F401  which makes the next import possible
from com.sun.star.lang import DisposedException  # noqa: E402
from com.sun.star.uno import Exception as OfficeError  # noqa: E402


def sheets(office, path):
    try:
        document = libreoffice.load(office, pathlib.Path(path))
    except DisposedException:  # it crashed
        sys.exit(1)
    except OfficeError:
        return "no"
    if document is None:
        return "no"
    try:
        return str(document.Sheets.Count)
    except AttributeError:  # a text, or whatever else it took the file for
        return "no"
    finally:
        document.close(True)


def main():
    with libreoffice.desktop(sys.argv[1]) as office:
        print("ready", flush=True)
        for line in sys.stdin:
            print(sheets(office, line.rstrip("\n")), flush=True)


if __name__ == "__main__":
    main()
