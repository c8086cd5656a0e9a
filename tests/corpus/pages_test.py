"""Tests of the comparison of pages."""

import unittest

import numpy

import pages


def page(*dark):
    array = numpy.full((20, 20, 3), 255, dtype=numpy.int16)
    for row, column in dark:
        array[row, column] = 0
    return array


class PagesTest(unittest.TestCase):
    def marked(self):
        array = page()
        array[5:8, 5:8] = (255, 0, 255)
        return pages.mask_of(array)

    def test_a_mask_is_as_large_as_its_cells_and_their_borders(self):
        mask = self.marked()
        self.assertTrue(mask[3, 5] and mask[9, 7] and mask[5, 3] and mask[7, 9])
        self.assertFalse(mask[2, 5] or mask[10, 7] or mask[5, 2] or mask[7, 10])

    def test_only_pixels_outside_the_mask_count(self):
        self.assertEqual(pages.differing(page(), page((6, 6)), self.marked()), [])
        self.assertEqual(pages.differing(page(), page((15, 4)), self.marked()), [(15, 4)])

    def test_pages_of_another_size_differ(self):
        self.assertTrue(pages.differing(page(), page()[:10], self.marked()))


if __name__ == "__main__":
    unittest.main()
