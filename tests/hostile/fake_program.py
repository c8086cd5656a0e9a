"""Stands in for the program in the tests of the judge. The first argument says what it does wrong;
the others are those of the program."""

import os
import re
import shutil
import signal
import sys
import time
import zipfile

SOUND = "sound"


def _template():
    return sys.argv[3]


def _output():
    folder = sys.argv[sys.argv.index("--output-folder") + 1]
    return os.path.join(folder, "2027" + os.path.basename(_template()))


def _write(path, data=b"x"):
    with open(path, "wb") as file:
        file.write(data)


def _say(text, code):
    os.write(2, text if isinstance(text, bytes) else text.encode())
    os._exit(code)


def _save():
    shutil.copyfile(_template(), _output())


def _say_and_save(text, code):
    _save()
    _say(text, code)


def _spin():
    while True:
        pass


def _take_memory():
    taken = bytearray(700 << 20)
    taken[::4096] = b"x" * len(taken[::4096])
    _save()


def _save_changed(change):
    """Saves the template with other parts: `change(name, data)` gives a part's bytes or None."""
    with zipfile.ZipFile(_template()) as old, zipfile.ZipFile(_output(), "w") as new:
        for name in old.namelist():
            data = change(name, old.read(name))
            if data is not None:
                new.writestr(name, data)


def _without_sheet(name, data):
    if name == "xl/workbook.xml":
        data = re.sub(rb"<definedNames>.*</definedNames>", b"", data, flags=re.S)
        return re.sub(rb"<sheet [^>]*/></sheets>", b"</sheets>", data)
    return data


_REPORT = "Error!\nError Info: "
_WRONG = {
    SOUND: _save,
    "refuses": lambda: _say(_REPORT + '"a.xlsx" is damaged.\n', 1),
    "reports-a-month": lambda: _say_and_save(_REPORT + "The cell A1 is locked.\n", 1),
    "crashes": lambda: os.kill(os.getpid(), signal.SIGSEGV),
    "asserts": lambda: _say("a.cpp:19: Assertion `a' failed.\n", 1),
    "sanitizer": lambda: _say("ERROR: AddressSanitizer: heap-use-after-free\n", 99),
    "unknown-code": lambda: _say("Broken.\n", 3),
    "spins": _spin,
    "sleeps": lambda: time.sleep(60),
    "memory": _take_memory,
    "writes-into-home": lambda: (_save(), _write(os.path.join(os.environ["HOME"], "more"))),
    "writes-into-current": lambda: (_save(), _write("more")),
    "writes-beside-template": lambda: (_save(), _write(_template() + ".tmp")),
    "changes-template": lambda: (_save(), _write(_template())),
    "deletes-template": lambda: (_save(), os.remove(_template())),
    "says-nothing": lambda: _say("", 1),
    "no-sentence": lambda: _say("12\n", 1),
    "empty-name": lambda: _say('"" is damaged.\n', 1),
    "control": lambda: _say("The sheet \x1b[31m is damaged.\n", 1),
    "not-utf-8": lambda: _say(b"The sheet \xff is damaged.\n", 1),
    "speaks-with-success": lambda: _say_and_save("Something.\n", 0),
    "warns": lambda: _say_and_save('Warning: "a.xls" has signed macros.\n', 0),
    "warns-of-nothing": lambda: _say_and_save("Warning: 12\n", 0),
    "out-of-memory": lambda: _say("Out of memory.\n", 1),
    "no-output": lambda: None,
    "output-after-failure": lambda: _say_and_save(
        _REPORT + "Failed to save the calendar file.\nThe disk is full.\n", 1),
    "output-with-usage": lambda: _say_and_save("What?\n", 2),
    "leaves-temporary": lambda: (_save(), _write(_output() + ".tmp")),
    "garbage": lambda: _write(_output(), b"garbage" * 100),
    "loses-sheet": lambda: _save_changed(_without_sheet),
    "loses-part": lambda: _save_changed(
        lambda name, data: None if name.endswith("styles.xml") else data),
    "prefix": lambda: _save_changed(
        lambda name, data: data.replace(b"<a:themeElements", b"<zz:themeElements").replace(
            b"</a:themeElements", b"</zz:themeElements")),
    "ill-formed": lambda: _save_changed(
        lambda name, data: data[:-5] if name.endswith("theme1.xml") else data),
}

if __name__ == "__main__":
    if sys.argv[2] == "generate":
        _WRONG[sys.argv[1]]()
