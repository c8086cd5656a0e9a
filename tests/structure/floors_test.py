"""Tests of the include checks."""

import pathlib
import tempfile
import unittest

import floors

FLOORS = "low low 1\nmiddle middle/one 1 low\nhigh high 2 middle\n"


class FloorsTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.sources = pathlib.Path(self.folder.name)
        self.write("low/a.h", "")
        self.write("middle/one/b.h", '#include "low/a.h"\n')
        self.write("high/c.h", '#include "middle/one/b.h"\n#include <vector>\n')
        self.write("high/c.cpp", '#include "high/c.h"\n\n#include "low/a.h"\n')

    def tearDown(self):
        self.folder.cleanup()

    def write(self, name, text):
        path = self.sources / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def problems(self, text=FLOORS):
        return list(floors.problems(self.sources, text))

    def test_downward_includes_are_allowed(self):
        self.assertEqual(self.problems(), [])

    def test_upward_includes_are_reported(self):
        self.write("low/a.h", '#include "high/d.h"\n')
        self.write("high/d.h", "")
        self.assertEqual(self.problems(), ["low/a.h includes high/d.h, which its library is not "
                                           "linked with"])

    def test_includes_without_a_link_are_reported(self):
        self.assertEqual(len(self.problems(FLOORS.replace(" low\n", "\n"))), 2)

    def test_folders_of_other_systems_are_skipped(self):
        self.write("other/a.cpp", '#include "low/a.h"\n#include "other/gone.h"\n')
        self.assertEqual(self.problems(), [])

    def test_missing_headers_are_reported(self):
        self.write("low/a.h", '#include "low/gone.h"\n')
        self.assertEqual(self.problems(), ["low/a.h includes low/gone.h, which does not exist"])

    def test_cycles_through_sources_of_one_system(self):
        self.write("low/a_posix.cpp", '#include "low/e.h"\n')
        self.write("low/e.h", '#include "low/f.h"\n')
        self.write("low/f.h", "")
        self.assertEqual(self.problems(), [])
        self.write("low/f.cpp", '#include "low/a.h"\n')
        self.assertEqual(self.problems(), ["these include each other: low/a, low/e, low/f"])

    def test_large_libraries(self):
        self.assertEqual(self.problems("low low 16\n" + FLOORS.partition("\n")[2]),
                         ["low has 16 sources; the maximum is 15"])

    def test_nothing(self):
        self.assertEqual(list(floors.problems(self.sources / "none", "")),
                         ["there are no sources to check"])


if __name__ == "__main__":
    unittest.main()
