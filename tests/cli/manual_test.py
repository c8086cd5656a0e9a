"""The manual page renders without warnings and names all commands and options."""

import os
import pathlib
import re
import subprocess
import unittest

CLI = os.environ["ORRERY_CLI"]
PAGE = pathlib.Path(os.environ["ORRERY_SOURCE_DIR"]) / "packaging/orrery-cli.1"


def rendered():
    return subprocess.run(["groff", "-man", "-ww", "-Tutf8", "-P-cbou", PAGE], text=True,
                          capture_output=True, timeout=60)


class Manual(unittest.TestCase):
    def test_renders_without_warnings(self):
        result = rendered()
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertIn("ORRERY-CLI(1)", result.stdout)

    def test_names_every_command_and_option_of_the_help(self):
        page = rendered().stdout.replace("\u2010", "-").replace("\u2212", "-")
        overview = subprocess.run([CLI, "--help"], text=True, capture_output=True).stdout
        commands = re.findall(r"^  ([a-z]+) {2,}", overview, re.MULTILINE)
        self.assertEqual(len(commands), 9)
        for command in commands:
            self.assertIn(f"orrery-cli {command}", page)
            text = subprocess.run([CLI, command, "--help"], text=True, capture_output=True).stdout
            for option in re.findall(r"--[a-z-]+", text):
                self.assertIn(option, page, command)


if __name__ == "__main__":
    unittest.main()
