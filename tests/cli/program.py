"""Runs the command-line program as a user does, here or through a runner such as Wine."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

CLI = pathlib.Path(os.environ["ORRERY_CLI"])
DATA = pathlib.Path(os.environ["ORRERY_SOURCE_DIR"]) / "data"
RUNNER = os.environ.get("ORRERY_RUNNER", "").split()  # starts Windows programs
# Whether leaks are searched for: the font library keeps what it read until a program ends.
SANITIZER = {name: os.environ[name] for name in ("ASAN_OPTIONS",) if name in os.environ}
IS_WINDOWS = CLI.suffix == ".exe"


def shown(path):
    """A local path as the program reads and prints it."""
    text = str(path)
    return "Z:" + text.replace("/", "\\") if RUNNER and text.startswith("/") else text


class Program(unittest.TestCase):
    """A new user, whose home folder is the current folder. A Windows program is in a writable
    folder, beside its installed files."""

    def setUp(self):
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="orrery-cli-"))
        self.addCleanup(shutil.rmtree, self.home)
        self.output = self.home / "out"
        self.program = CLI
        self.environment = {"HOME": str(self.home), "PATH": os.environ["PATH"], **SANITIZER}
        if IS_WINDOWS:
            self.environment = dict(os.environ)
            self.installation = pathlib.Path(tempfile.mkdtemp(prefix="orrery-installed-"))
            self.addCleanup(shutil.rmtree, self.installation)
            self.program = self.installation / CLI.name
            shutil.copy(CLI, self.program)
            shutil.copytree(DATA, self.installation / "data")

    def run_program(self, *arguments, program=None, **options):
        return subprocess.run(
            [*RUNNER, program or self.program, *map(shown, arguments)], env=self.environment,
            encoding="utf-8", capture_output=True, cwd=self.home, timeout=120, **options)

    def generate(self, *arguments):
        return self.run_program("generate", *arguments, "--output-folder", self.output)

    def assert_usage(self, result):
        self.assertEqual(result.returncode, 2, result)
        self.assertEqual(result.stdout, "")
        self.assertEqual(result.stderr.count("\n"), 1, result.stderr)
