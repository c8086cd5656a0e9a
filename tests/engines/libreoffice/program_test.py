"""The program and LibreOffice from outside, on a display: what the user sees, and what is left
after the program is killed."""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import tempfile
import time
import unittest

CLI = os.environ["ORRERY_CLI"]
TEMPLATES = pathlib.Path(os.environ["ORRERY_SOURCE_DIR"]) / "data/template"
PICTURES = pathlib.Path(os.environ["ORRERY_PICTURES_DIR"])


def wait_until(condition, what):
    end = time.monotonic() + 60
    while not condition():
        if time.monotonic() > end:
            raise AssertionError(f"not within a minute: {what}")
        time.sleep(0.05)


def accept_interrupts():
    """A shell makes its background processes ignore interrupts."""
    signal.signal(signal.SIGINT, signal.SIG_DFL)


def windows(name):
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", name],
                           capture_output=True, text=True, timeout=60, check=False)
    return found.stdout.split()


class Program(unittest.TestCase):
    def setUp(self):
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="orrery-office-"))
        self.addCleanup(shutil.rmtree, self.home)
        self.addCleanup(self.end_all)
        self.environment = dict(os.environ, HOME=str(self.home),
                                XDG_CACHE_HOME=str(self.home / "cache"))

    def processes(self):
        """The ids of LibreOffice's processes that use the test's profiles."""
        found = []
        for folder in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                if str(self.home).encode() + b"/cache" in (folder / "cmdline").read_bytes():
                    found.append(int(folder.name))
            except OSError:
                pass  # it has just ended
        return found

    def end_all(self):
        for number in self.processes():
            os.kill(number, signal.SIGKILL)

    def command(self, template, years):
        return [CLI, "generate", str(TEMPLATES / template), years, "--engine", "libreoffice",
                "--output-folder", str(self.home / "out")]

    def generate(self, template, year):
        result = subprocess.run(self.command(template, year), env=self.environment, text=True,
                                capture_output=True, timeout=120, check=False)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        name = f"{year}{template}"
        self.assertEqual(result.stdout, f"{self.home}/out/{name}\n")
        wait_until(lambda: windows(re.escape(name)), f"a window of {name}")
        return windows(re.escape(name))[0]

    def test_the_saved_workbook_is_shown_and_ends_with_its_window(self):
        first = self.generate("Desk.xlsx", "2027")
        before = self.processes()
        second = self.generate("Wall.xls", "2028")
        self.assertLess(set(before), set(self.processes()))
        profiles = {path.name for path in (self.home / "cache/orrery/libreoffice").iterdir()}
        self.assertEqual(profiles, {"1", "1.lock", "2", "2.lock"})
        wait_until(self.sheet_is_painted, "a sheet with its cells")
        for number in self.processes():
            status = pathlib.Path(f"/proc/{number}/status").read_text()
            self.assertNotIn("State:\tZ", status)
        self.close(second)
        wait_until(lambda: set(self.processes()) == set(before), "the end of the second one")
        self.close(first)
        wait_until(lambda: not self.processes(), "the end of the first one")

    def sheet_is_painted(self):
        """Takes a picture, which shows more than a few plain areas if the cells are painted."""
        PICTURES.mkdir(parents=True, exist_ok=True)
        picture = str(PICTURES / "libreoffice.png")
        subprocess.run(["import", "-window", "root", picture], check=True, timeout=60)
        colours = subprocess.run(["convert", picture, "-crop", "1500x1000+100+200", "-format",
                                  "%k", "info:"], check=True, timeout=60, capture_output=True)
        return int(colours.stdout) > 20

    def close(self, window):
        """Like the window manager's button."""
        subprocess.run(["xdotool", "windowactivate", "--sync", window, "key", "alt+F4"],
                       check=True, timeout=60)

    def end_in_the_middle(self, end):
        """Ends the program when it has just started LibreOffice."""
        with subprocess.Popen(self.command("Desk.xlsx", "2001-2009"), env=self.environment,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              start_new_session=True, preexec_fn=accept_interrupts) as program:
            wait_until(self.processes, "LibreOffice's start")
            end(program)
            program.wait(60)
        wait_until(lambda: not self.processes(), "LibreOffice's end")

    def test_killed_program_leaves_no_spreadsheet_program(self):
        self.end_in_the_middle(lambda program: program.kill())

    def test_keys_of_a_terminal_end_both(self):
        self.end_in_the_middle(lambda program: os.killpg(program.pid, signal.SIGINT))


if __name__ == "__main__":
    unittest.main()
