"""Mutations change what they say, and a seed always gives the same case."""

import hashlib
import os
import subprocess
import sys
import unittest

import cases
from mutate import own_workbooks

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


class MutationsTest(unittest.TestCase):
    def test_every_mutation_changes_some_workbook(self):
        for suffix, paths in _templates().items():
            whole = {path: cases.apply(path, _Nothing, 1) for path in paths}
            for (module, name), mutation in cases.kinds(suffix).items():
                with self.subTest(f"{module} {name}"):
                    self.assertTrue(any(_changes(path, mutation, whole[path]) for path in paths),
                                    "no workbook is changed")


class _Nothing:
    @staticmethod
    def change(_book, _random):
        return ""


def _changes(path, mutation, whole):
    return any(cases.apply(path, mutation, seed) not in (None, whole) for seed in range(3))


if __name__ == "__main__":
    unittest.main()
