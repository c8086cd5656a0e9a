"""Drives a hidden LibreOffice, with a profile of its own, through its programming interface."""

import contextlib
import os
import subprocess
import time

import uno
from com.sun.star.beans import PropertyValue
from com.sun.star.connection import NoConnectException

LONGEST_START = 60  # seconds


@contextlib.contextmanager
def desktop(folder):
    """The desktop of a new LibreOffice, whose profile is in the folder. Locale and time are neutral."""
    pipe = f"orrery{os.getpid()}"
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
