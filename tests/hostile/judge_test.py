"""The judge finds what it has to find, and nothing else."""

import os
import sys
import tempfile
import unittest

import parameters
import reopen
from judge import Judge, Program
from mutate import own_workbooks
from limited_processes import Limits, Processes
from scratch import Scratch

_FAKE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "fake_program.py")
_LIMITS = Limits(seconds=1)
_SHORT = Limits(wall_seconds=2)  # for what sleeps

# What a program does, and the kinds of failure that the judge has to find.
_EXPECTED = (
    ("sound", []),
    ("refuses", []),
    ("reports-a-month", []),
    ("crashes", ["signal SIGSEGV"]),
    ("asserts", ["message speaks of Assertion"]),
    ("sanitizer", ["sanitizer"]),
    ("unknown-code", ["exit code 3"]),
    ("spins", ["time"]),
    ("sleeps", ["hang"]),
    ("memory", ["memory"]),
    ("writes-into-home", ["change outside the output folder"]),
    ("writes-into-current", ["change outside the output folder"]),
    ("writes-beside-template", ["change outside the output folder"]),
    ("changes-template", ["template changed"]),
    ("deletes-template", ["template changed"]),
    ("says-nothing", ["no sentence"]),
    ("no-sentence", ["no sentence"]),
    ("empty-name", ["empty name"]),
    ("control", ["control characters in a message"]),
    ("not-utf-8", ["message is not UTF-8"]),
    ("speaks-with-success", ["message with success"]),
    ("warns", []),
    ("warns-of-nothing", ["message with success"]),
    ("out-of-memory", ["message speaks of Out of memory"]),
    ("no-output", ["no output"]),
    ("output-after-failure", ["output after a failure"]),
    ("output-with-usage", ["output after a failure"]),
    ("leaves-temporary", ["leftover in the output folder"]),
)
_READ = (
    ("sound", []),
    ("garbage", ["container cannot be read", "openpyxl does not open the output"]),
    ("loses-sheet", ["openpyxl does not show every sheet"]),
    ("loses-part", ["link to nothing", "openpyxl does not open the output", "type of nothing"]),
    ("ill-formed", ["not well-formed"]),
    ("prefix", ["prefix without a namespace"]),
)


def _own(name):
    return next(path for path in own_workbooks() if os.path.basename(path) == name)


class JudgeTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.place = Scratch(folder.name)
        self.processes = Processes(self.place.place("printed"))
        self.addCleanup(self.processes.close)
        self.template = _own("Desk.xlsx")

    def _judge(self, behaviour):
        program = Program([sys.executable, "-IS", _FAKE, behaviour],
                          own_limits=_SHORT if behaviour == "sleeps" else _LIMITS)
        judge = Judge(program, self.place, self.processes)
        return judge.judge(self.template, parameters.plain(self.template))

    def test_finds_what_the_program_does_wrong(self):
        for behaviour, expected in _EXPECTED:
            with self.subTest(behaviour):
                found = sorted({failure.kind for failure in self._judge(behaviour).failures})
                self.assertEqual(found, expected)

    def test_finds_outputs_that_are_worse_than_the_input(self):
        for behaviour, expected in _READ:
            with self.subTest(behaviour):
                verdict = self._judge(behaviour)
                failures, judged = reopen.reader_failures(self.template, verdict.output)
                self.assertEqual(sorted({failure.kind for failure in failures}), expected)
                self.assertEqual(judged, ["package", "openpyxl"])


class ReopenTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def _file(self, data):
        path = os.path.join(self.folder, "damaged.xls")
        with open(path, "wb") as file:
            file.write(data)
        return path

    def test_finds_an_xls_that_is_worse_than_the_input(self):
        template = _own("Desk.xls")
        with open(template, "rb") as file:
            data = file.read()
        half = reopen.reader_failures(template, self._file(data[:len(data) // 2]))[0]
        self.assertIn("xlrd does not open the output", {failure.kind for failure in half})
        self.assertEqual(reopen.reader_failures(template, template), ([], ["records", "xlrd"]))

    def test_finds_a_sheet_that_does_not_begin(self):
        from xls_writer import XlsBook, biff
        template = _own("Desk.xls")
        book = XlsBook(template)
        book.follows = False
        for record in book.of_kind(biff.BOUNDSHEET):
            record.data = b"\xff\xff\0\0" + record.data[4:]
        failures, _ = reopen.reader_failures(template, self._file(book.to_bytes()))
        self.assertIn("sheet does not begin", {failure.kind for failure in failures})

    def test_damage_of_the_input_is_no_failure(self):
        with open(_own("Desk.xls"), "rb") as file:
            damaged = self._file(file.read()[:3000])
        self.assertEqual(reopen.reader_failures(damaged, damaged), ([], []))


if __name__ == "__main__":
    unittest.main()
