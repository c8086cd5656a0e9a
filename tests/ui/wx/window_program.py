"""Drives the window program as a user does: sends keys from outside and reads the tree that screen
readers get. Every wait ends as soon as possible."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402  (after the version)

SOURCE = pathlib.Path(os.environ["ORRERY_SOURCE_DIR"])
PATIENCE = float(os.environ.get("ORRERY_PATIENCE", "20"))  # longest time of any step in seconds

State = Atspi.StateType


def wait_for(what, found):
    """Returns the result of `found` as soon as it is true. A control may vanish meanwhile."""
    end = time.monotonic() + PATIENCE
    while True:
        try:
            if result := found():
                return result
        except GLib.Error:
            pass
        if time.monotonic() > end:
            raise AssertionError(f"There is no {what} after {PATIENCE:g} seconds.")
        time.sleep(0.02)


def xdotool(*arguments):
    return subprocess.run(["xdotool", *map(str, arguments)], check=True, text=True,
                          capture_output=True, timeout=PATIENCE).stdout.strip()


def press(*keys):
    """Presses keys such as "alt+f" one after the other."""
    xdotool("key", *keys)


def type_over(key, text):
    """Goes to the text box with that key and replaces its text."""
    press(key, "ctrl+a")
    xdotool("type", text)


# ---- what a screen reader gets

def children(node):
    found = [node.get_child_at_index(i) for i in range(node.get_child_count())]
    return [child for child in found if child is not None]


def descendants(node):
    for child in children(node):
        yield child
        yield from descendants(child)


def has(node, state):
    return node.get_state_set().contains(state)


def shown(node):
    """The visible texts of the node and its descendants."""
    return [part for part in descendants(node) if has(part, State.SHOWING)]


def related(node, kind):
    """The nodes that have a relation of this kind to the node."""
    return [relation.get_target(i) for relation in node.get_relation_set()
            if relation.get_relation_type() == kind for i in range(relation.get_n_targets())]


def text_of(node):
    return Atspi.Text.get_text(node, 0, -1)


class User:
    """A user whose folders are empty at first."""

    def __init__(self, test):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="orrery-person-"))
        test.addCleanup(shutil.rmtree, self.folder)
        self.test = test
        self.settings = self.folder / "config/orrery/orrery.ini"
        self.data = self.folder / "data/orrery"
        self.log = self.folder / "opened"
        self.log.touch()
        # The display provides the desktop's own settings.
        shutil.copytree(os.environ["XDG_CONFIG_HOME"], self.folder / "config")

    def start(self, *arguments, program=os.environ["ORRERY_WINDOW"]):
        environment = os.environ | {"XDG_CONFIG_HOME": str(self.folder / "config"),
                                    "XDG_DATA_HOME": str(self.folder / "data"),
                                    "ORRERY_OPENED": str(self.log)}
        return Program(self.test, [program, *arguments], environment, self.folder / "errors")

    def start_beside(self, library):
        """Starts a program beside a library that it loads on demand."""
        place = self.folder / "program"
        place.mkdir()
        shutil.copy(library, place)
        return self.start(program=shutil.copy(os.environ["ORRERY_WINDOW"], place))

    def opened(self):
        """The files and addresses that the desktop was asked to open."""
        return self.log.read_text().splitlines()

    def without_tips(self):
        """Makes the next start open the main window without a tip; it copies no installed files."""
        self.settings.parent.mkdir()
        self.settings.write_text("[Environment]\nShowTips=N\n")
        return self


class Program:
    def __init__(self, test, command, environment, errors):
        self.errors = errors
        with errors.open("wb") as stream:
            self.process = subprocess.Popen([str(word) for word in command], env=environment,
                                            stderr=stream)
        test.addCleanup(self.stop)

    def stop(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait(PATIENCE)

    def exit_code(self):
        return self.process.wait(PATIENCE)

    def application(self):
        desktop = Atspi.get_desktop(0)
        for application in children(desktop):
            if application.get_process_id() == self.process.pid:
                return application
        return None

    def windows(self):
        application = self.application()
        return children(application) if application else []

    def active_window(self, title, holds=lambda window: True):
        """Waits until the window with the keyboard has that title, and returns it."""
        def find():
            for window in self.windows():
                if window.get_name() == title and has(window, State.ACTIVE) and holds(window):
                    return window
            return None
        return wait_for(f'window "{title}" with the keyboard', find)

    def message_box(self, text):
        """The message box with this text; each line is a label."""
        def says(window):
            return text == "\n".join(part.get_name() for part in descendants(window)
                                     if part.get_role() == Atspi.Role.LABEL)
        return self.active_window("Orrery", says)

    def main_window(self):
        return self.active_window("Orrery", lambda window: find(window, "Generate"))

    def start_work(self):
        """Closes the tip of the day."""
        self.active_window("Tip of the Day")
        press("Escape")
        return self.main_window()


def find(window, name):
    """The control with that name, or None."""
    return next((part for part in descendants(window) if part.get_name() == name), None)
