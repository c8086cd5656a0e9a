"""A whole run in folders whose paths are difficult for a program: they contain the settings, the
templates, the holidays and the output."""

import os
import pathlib
import shutil
import subprocess
import sys
import unittest

sys.path.append(str(pathlib.Path(__file__).resolve().parents[2] / "cli"))
from program import DATA, RUNNER, Program, shown  # noqa: E402

JAPANESE = "\u30ab\u30ec\u30f3\u30c0\u30fc \u8868"  # its last character has a backslash in 932


class Paths(Program):
    def setUp(self):
        super().setUp()
        self.plain = self.filled(self.home / "plain")
        self.expected = self.made(self.plain, shown(self.plain))

    def filled(self, folder):
        """Fills the folder with the files that a portable program has beside itself."""
        shutil.copytree(DATA, folder)
        return folder

    def made(self, folder, path):
        """The bytes of a calendar made there; `path` is the folder as passed to the program."""
        result = self.run_program("generate", "Desk.xlsx", 2027, "--settings",
                                  path + "\\orrery.ini", "--engine", "builtin")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertEqual(result.stdout, path + "\\output\\2027Desk.xlsx\n")
        return (folder / "output/2027Desk.xlsx").read_bytes()

    def assert_same(self, folder, path=None):
        self.assertEqual(self.made(folder, path or shown(folder)), self.expected)

    def test_blanks(self):
        self.assert_same(self.filled(self.home / " two  blanks and more "[:-1] / "sub folder"))

    def test_japanese(self):
        self.assert_same(self.filled(self.home / JAPANESE))

    def test_characters_of_no_code_page(self):
        self.assert_same(self.filled(self.home / "\u0436 \u05d0 \u0e01 \U0001f4c5"))

    def test_japanese_names_of_templates_and_holiday_files(self):
        folder = self.filled(self.home / "names")
        (folder / "template/Desk.xlsx").rename(folder / f"template/{JAPANESE}.xlsx")
        (folder / "template/Desk.ini").rename(folder / f"template/{JAPANESE}.ini")
        result = self.run_program("generate", JAPANESE + ".xlsx", 2027, "--settings",
                                  folder / "orrery.ini", "--engine", "builtin")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertEqual((folder / f"output/2027{JAPANESE}.xlsx").read_bytes(), self.expected)
        (folder / f"holiday/{JAPANESE}.txt").write_text(f"0101, DAY,{JAPANESE}\n", "utf-8")
        result = self.run_program("holidays", JAPANESE + ".txt", 2027, "--settings",
                                  folder / "orrery.ini")
        self.assertEqual(result.stdout, f"2027-01-01\t{JAPANESE}\n", result.stderr)

    def test_a_path_of_300_characters(self):
        folder = self.home
        while len(str(folder)) < 300:
            folder = folder / "a folder of a name that is long"
        self.assert_same(self.filled(folder))

    def test_a_path_of_300_japanese_characters(self):
        folder = self.home
        while len(str(folder)) < 300:
            folder = folder / (JAPANESE * 3)
        self.assert_same(self.filled(folder))

    @unittest.skipUnless(RUNNER, "a share of this computer is not made for a test")
    def test_a_share_of_the_network(self):
        prefix = subprocess.run([*RUNNER, "--folder"], check=True, capture_output=True,
                                text=True).stdout.strip()
        server = pathlib.Path(prefix, "dosdevices/unc", f"orrery-{os.getpid()}")
        server.mkdir(parents=True)
        self.addCleanup(shutil.rmtree, server)
        folder = self.filled(self.home / "shared")
        (server / "calendars").symlink_to(folder)
        self.assert_same(folder, f"\\\\{server.name}\\calendars")
        long = folder
        while len(str(long)) < 300:
            long = long / "a folder of a name that is long"
        self.filled(long)
        inside = str(long.relative_to(folder)).replace("/", "\\")
        self.assert_same(long, f"\\\\{server.name}\\calendars\\{inside}")


if __name__ == "__main__":
    unittest.main()
