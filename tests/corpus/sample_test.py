"""Tests of the choice of a sample."""

import unittest

from sample import sample, traits


def row(name, size, features, producer="Excel 16.0", problems=""):
    return {"file": name, "bytes": str(size), "features": features, "producer": producer,
            "problems": problems}


class SampleTest(unittest.TestCase):
    ROWS = [row("a", 10, "charts,tables"), row("b", 20, "charts"), row("c", 5, "tables"),
            row("d", 99, "macros"), row("e", 1, ""), row("f", 2, "", "Calc 7.4"),
            row("g", 3, "charts", problems="cut")]

    def files(self, least):
        return [one["file"] for one in sample(self.ROWS, least)]

    def test_has_every_feature_problem_and_producer(self):
        self.assertEqual(self.files(0), ["c", "d", "f", "g"])
        chosen = set().union(*(traits(one) for one in sample(self.ROWS, 0)))
        self.assertEqual(chosen, set().union(*(traits(one) for one in self.ROWS)))

    def test_is_filled_with_the_smallest(self):
        self.assertEqual(self.files(6), ["a", "c", "d", "e", "f", "g"])

    def test_is_at_most_everything(self):
        self.assertEqual(self.files(100), [one["file"] for one in self.ROWS])

    def test_versions_are_one_producer(self):
        self.assertEqual(traits(row("a", 1, "", "Excel 16.0")), traits(row("b", 1, "", "Excel 12")))


if __name__ == "__main__":
    unittest.main()
