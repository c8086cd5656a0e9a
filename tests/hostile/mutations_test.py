"""Mutations change what they say, and a seed always gives the same case."""

import hashlib
import os
import subprocess
import sys
import tempfile
import unittest
import zipfile

import cases
from mutate import own_workbooks
from xls_writer import XlsBook
from xlsx_book import XlsxBook

_HERE = os.path.dirname(os.path.abspath(__file__))
_HASHES = """
import sys; sys.path.insert(0, sys.argv[1])
import mutations_test
print(mutations_test.hashes())
"""
_SEEDS = range(1, 41)


def _templates():
    return cases.templates("", own_workbooks())


def hashes():
    """What the seeds give."""
    found = _templates()
    made = [cases.make(seed, found) for seed in _SEEDS]
    return [hashlib.sha256(case.data + case.parameters.encode()).hexdigest() for case in made]


class CasesTest(unittest.TestCase):
    def test_a_seed_gives_the_same_bytes_in_every_process(self):
        environment = {**os.environ, "PYTHONHASHSEED": "7", "PYTHONDONTWRITEBYTECODE": "1"}
        other = subprocess.run([sys.executable, "-c", _HASHES, _HERE], env=environment, text=True,
                               capture_output=True, check=True)
        self.assertEqual(other.stdout.strip(), str(hashes()))

    def test_seeds_differ(self):
        self.assertGreater(len(set(hashes())), 0.95 * len(_SEEDS))

    def test_a_case_says_what_was_done(self):
        case = cases.make(3, _templates())
        self.assertTrue(1 <= len(case.mutations) <= 4)
        for name, place in case.mutations:
            self.assertIn(f"{name} ({place})", case.told())
        self.assertIn("SheetName=", case.parameters)


class MutationsTest(unittest.TestCase):
    def test_every_mutation_changes_some_workbook(self):
        for suffix, paths in _templates().items():
            whole = {path: cases.apply(path, _Nothing, 1) for path in paths}
            for (module, name), mutation in cases.kinds(suffix).items():
                with self.subTest(f"{module} {name}"):
                    self.assertTrue(any(_changes(path, mutation, whole[path]) for path in paths),
                                    "no workbook is changed")

    def test_names_are_unique(self):
        for suffix in (".xlsx", ".xls"):
            names = [name for _, name in cases.kinds(suffix)]
            self.assertEqual(sorted(set(names)), sorted(names))


class _Nothing:
    @staticmethod
    def change(_book, _random):
        return ""


def _changes(path, mutation, whole):
    return any(cases.apply(path, mutation, seed) not in (None, whole) for seed in range(3))


class WritersTest(unittest.TestCase):
    """A workbook that is written without a mutation is the same workbook."""

    def test_packages(self):
        for path in _templates()[".xlsx"]:
            with tempfile.NamedTemporaryFile(suffix=".xlsx") as file:
                file.write(XlsxBook(path).to_bytes())
                file.flush()
                with zipfile.ZipFile(path) as old, zipfile.ZipFile(file.name) as new:
                    self.assertIsNone(new.testzip())
                    self.assertEqual([(name, old.read(name)) for name in old.namelist()],
                                     [(name, new.read(name)) for name in new.namelist()])

    def test_compound_files(self):
        for path in _templates()[".xls"]:
            old = XlsBook(path)
            with tempfile.NamedTemporaryFile(suffix=".xls") as file:
                file.write(old.to_bytes())
                file.flush()
                new = XlsBook(file.name)
                self.assertEqual({name: entry.identity() for name, entry in
                                  old.file.entries.items()},
                                 {name: entry.identity() for name, entry in
                                  new.file.entries.items()})
                self.assertEqual(sorted(set(new.file.problems) - set(old.file.problems)), [])


if __name__ == "__main__":
    unittest.main()
