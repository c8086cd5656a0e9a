"""The bash completion, called as bash calls it."""

import os
import pathlib
import shlex
import shutil
import subprocess
import tempfile
import unittest

CLI = os.environ["ORRERY_CLI"]
SOURCE = pathlib.Path(os.environ["ORRERY_SOURCE_DIR"])
SCRIPT = SOURCE / "packaging/orrery-cli.bash"


class Completion(unittest.TestCase):
    def setUp(self):
        scratch = pathlib.Path(tempfile.mkdtemp(prefix="orrery-completion-"))
        self.addCleanup(shutil.rmtree, scratch)
        self.home = scratch / "home"
        self.here = scratch / "here"  # the current folder
        self.here.mkdir()

    def complete(self, *words):
        """The completions of the last word."""
        line = [CLI, *words]
        script = (f"source {shlex.quote(str(SCRIPT))}\n"
                  f"COMP_WORDS=({' '.join(map(shlex.quote, line))})\n"
                  f"COMP_CWORD={len(line) - 1}\n"
                  "_orrery_cli\nprintf '%s\\n' \"${COMPREPLY[@]}\"\n")
        result = subprocess.run(["bash", "-c", script], text=True, capture_output=True, timeout=60,
                                cwd=self.here, env={"HOME": str(self.home),
                                                    "PATH": os.environ["PATH"]})
        self.assertEqual(result.stderr, "")
        return [word for word in result.stdout.split("\n") if word]

    def test_is_registered_for_the_program(self):
        result = subprocess.run(["bash", "-c", f"source {shlex.quote(str(SCRIPT))}; "
                                               "complete -p orrery-cli; compgen -A function"],
                                text=True, capture_output=True, timeout=60)
        self.assertIn("-F _orrery_cli orrery-cli", result.stdout)
        self.assertIn("_orrery_cli\n", result.stdout)

    def test_commands(self):
        self.assertEqual(self.complete(""), ["generate", "templates", "parameters", "check",
                                             "look", "propose", "holidays", "import", "easter",
                                             "--help", "--version"])
        self.assertEqual(self.complete("g"), ["generate"])

    def test_offers_exactly_the_options_that_the_help_names(self):
        for command in ("generate", "templates", "parameters", "check", "look", "propose",
                        "holidays", "import", "easter"):
            text = subprocess.run([CLI, command, "--help"], text=True, capture_output=True).stdout
            named = {word.split(",")[-1] for line in text.split("\n")
                     for word in line.split()[:1] if word.startswith("-")}
            self.assertEqual(set(self.complete(command, "--")), named, command)

    def test_templates_of_the_template_folder(self):
        names = sorted(path.name for path in SOURCE.glob("data/template/*.xls*"))
        self.assertEqual(self.complete("generate", ""), names)
        self.assertEqual(self.complete("check", "D"), ["Desk.xls", "Desk.xlsx"])
        (self.here / "my templates").mkdir()
        (self.here / "my templates/Wide wall.xlsx").touch()
        self.assertEqual(self.complete("generate", "--template-folder", "my templates", "W"),
                         ["Wide wall.xlsx"])

    def test_values(self):
        self.assertEqual(self.complete("generate", "--engine", ""),
                         ["auto", "builtin", "excel", "libreoffice"])
        self.assertEqual(self.complete("holidays", "--section", "m"), ["monthly"])
        self.assertEqual(self.complete("look", "Desk.xlsx", "--month", "1"),
                         ["1", "10", "11", "12"])
        self.assertEqual(len(self.complete("look", "Desk.xlsx", "--year", "")), 2)
        self.assertEqual(self.complete("import", "a.csv", "--date-order", ""),
                         ["dmy", "mdy", "ymd"])
        self.assertEqual(len(self.complete("import", "a.csv", "--years", "")), 3)
        self.assertEqual(self.complete("import", "a.hol", "--section", ""), [])
        years = self.complete("generate", "Desk.xlsx", "")
        self.assertEqual(len(years), 3)
        self.assertEqual(subprocess.run([CLI, "easter", *years], capture_output=True).returncode, 0)

    def test_files_and_folders(self):
        (self.here / "mine.ini").touch()
        (self.here / "folder").mkdir()
        self.assertEqual(self.complete("templates", "--settings", "m"), ["mine.ini"])
        self.assertEqual(self.complete("templates", "--template-folder", "f"), ["folder"])
        self.assertEqual(self.complete("holidays", "m"), ["mine.ini"])
        self.assertEqual(self.complete("import", "m"), ["mine.ini"])
        self.assertEqual(self.complete("holidays", "--region", "BY", "a.txt", "m"), ["mine.ini"])
        self.assertEqual(len(self.complete("holidays", "a.txt", "")), 5, "years and files")


if __name__ == "__main__":
    unittest.main()
