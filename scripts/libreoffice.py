"""Drives a hidden LibreOffice, with a profile of its own, through its programming interface."""

import contextlib
import os
import pathlib
import subprocess
import time

import uno
from com.sun.star.beans import PropertyValue
from com.sun.star.connection import NoConnectException

LONGEST_START = 60  # seconds

# No lock files beside the documents: whoever lists their folder meanwhile would find them.
_SETTINGS = (
    '<?xml version="1.0" encoding="UTF-8"?>\n'
    '<oor:items xmlns:oor="http://openoffice.org/2001/registry"'
    ' xmlns:xs="http://www.w3.org/2001/XMLSchema"'
    ' xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">'
    '<item oor:path="/org.openoffice.Office.Common/Misc">'
    '<prop oor:name="UseLocking" oor:op="fuse"><value>false</value></prop></item>'
    '</oor:items>\n')


@contextlib.contextmanager
def desktop(folder):
    """The desktop of a new LibreOffice, whose profile is in the folder. Locale and time are neutral."""
    pipe = f"orrery{os.getpid()}"
    settings = pathlib.Path(folder, "profile", "user", "registrymodifications.xcu")
    if not settings.exists():
        settings.parent.mkdir(parents=True, exist_ok=True)
        settings.write_text(_SETTINGS, encoding="utf-8")
    office = subprocess.Popen(
        ["soffice", f"-env:UserInstallation=file://{folder}/profile", "--headless", "--norestore",
         f"--accept=pipe,name={pipe};urp;"],
        env={**os.environ, "LC_ALL": "C.UTF-8", "TZ": "UTC"}, stderr=subprocess.DEVNULL)
    try:
        connected = _connect(pipe)
        yield connected
        connected.terminate()
        office.wait(timeout=LONGEST_START)
    finally:
        office.kill()
        office.wait()


def _connect(pipe):
    local = uno.getComponentContext()
    resolver = local.ServiceManager.createInstanceWithContext(
        "com.sun.star.bridge.UnoUrlResolver", local)
    end = time.monotonic() + LONGEST_START
    while True:
        try:
            context = resolver.resolve(f"uno:pipe,name={pipe};urp;StarOffice.ComponentContext")
            return context.ServiceManager.createInstanceWithContext(
                "com.sun.star.frame.Desktop", context)
        except NoConnectException:
            if time.monotonic() > end:
                raise
            time.sleep(0.05)


def load(office, path):
    return office.loadComponentFromURL(path.resolve().as_uri(), "_blank", 0, _options(Hidden=True))


def store(document, path, filter_name):
    document.storeToURL(path.resolve().as_uri(), _options(FilterName=filter_name))


def _options(**values):
    return tuple(PropertyValue(name, 0, value, 0) for name, value in values.items())
