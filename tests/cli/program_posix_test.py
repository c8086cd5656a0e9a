"""How the command-line program uses terminals, the desktop and the folders of Linux."""

import os
import pty
import subprocess
import time
import unittest

from program import CLI, DATA, Program


class Surroundings(Program):
    def test_open_hands_the_workbook_to_the_desktop(self):
        programs = self.home / "bin"
        programs.mkdir()
        opener = programs / "xdg-open"
        opener.write_text(f'#!/bin/sh\necho "$1" >> {self.home}/opened\n')
        opener.chmod(0o755)
        self.environment["PATH"] = f"{programs}:{self.environment['PATH']}"
        self.generate("Desk.xlsx", 2027)
        self.assertFalse((self.home / "opened").exists(), "nobody asked")
        result = self.generate("Desk.xlsx", 2027, "--open")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        for _ in range(50):  # the program does not wait for the desktop's opener
            if (self.home / "opened").exists():
                break
            time.sleep(0.1)
        self.assertEqual((self.home / "opened").read_text(), f"{self.output}/2027Desk.xlsx\n")

    def test_a_terminal_shows_a_progress_bar_for_several_years(self):
        for years, expected in (("2027-2028", True), ("2027", False)):
            terminal, inside = pty.openpty()
            result = subprocess.run(
                [CLI, "generate", "Desk.xlsx", years, "--output-folder", str(self.output)],
                env=self.environment, stdout=subprocess.PIPE, stderr=inside, timeout=120)
            os.close(inside)
            os.set_blocking(terminal, False)
            try:
                seen = os.read(terminal, 1 << 20).decode()
            except OSError:
                seen = ""
            os.close(terminal)
            self.assertEqual(result.returncode, 0)
            self.assertEqual("#" * 40 + "] 2/2  2028" in seen, expected, seen)
            if expected:
                self.assertTrue(seen.endswith("\r\x1b[K"), "the bar is gone at the end")


class Places(Program):
    def test_only_the_first_start_fills_the_users_folders(self):
        self.run_program("templates")
        settings = self.home / ".config/orrery/orrery.ini"
        data = self.home / ".local/share/orrery"
        self.assertEqual(settings.read_bytes(), (DATA / "orrery.ini").read_bytes())
        self.assertEqual((data / "tips.txt").read_bytes(), (DATA / "tips.txt").read_bytes())
        for path in DATA.glob("holiday/*"):
            self.assertEqual((data / "holiday" / path.name).read_bytes(), path.read_bytes())
        (data / "template/Desk.xlsx").unlink()
        self.run_program("templates")
        self.assertFalse((data / "template/Desk.xlsx").exists())

    def test_the_xdg_folders_are_used(self):
        self.environment["XDG_CONFIG_HOME"] = str(self.home / "c")
        self.environment["XDG_DATA_HOME"] = str(self.home / "d")
        self.run_program("templates")
        self.assertTrue((self.home / "c/orrery/orrery.ini").exists())
        self.assertTrue((self.home / "d/orrery/template/Desk.xlsx").exists())
        self.assertFalse((self.home / ".config").exists())


if __name__ == "__main__":
    unittest.main()
