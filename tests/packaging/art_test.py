"""The logo in all sizes: the PNGs and the Windows icon, clear even when small."""

import os
import pathlib
import unittest

from PIL import Image

ICONS = pathlib.Path(os.environ["ORRERY_BUILD_DIR"]) / "packaging/icons"
SIZES = (16, 24, 32, 48, 64, 128, 256, 512)


def contrast(first, second):
    """The contrast ratio of two colours as defined by the web guidelines, 1 to 21."""
    def luminance(colour):
        parts = [part / 255 for part in colour[:3]]
        parts = [part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4
                 for part in parts]
        return 0.2126 * parts[0] + 0.7152 * parts[1] + 0.0722 * parts[2]

    high, low = sorted((luminance(first), luminance(second)), reverse=True)
    return (high + 0.05) / (low + 0.05)


class Art(unittest.TestCase):
    def test_every_size_is_a_picture_with_clear_corners(self):
        for size in SIZES:
            picture = Image.open(ICONS / f"orrery-{size}.png").convert("RGBA")
            self.assertEqual(picture.size, (size, size))
            for corner in ((0, 0), (size - 1, 0), (0, size - 1), (size - 1, size - 1)):
                self.assertLess(picture.getpixel(corner)[3], 200, f"{size}: {corner}")
            self.assertEqual(picture.getpixel((size // 2, size * 5 // 8))[3], 255, size)

    def test_the_sun_stands_out_in_every_size(self):
        for size in SIZES:
            picture = Image.open(ICONS / f"orrery-{size}.png").convert("RGBA")
            sun = picture.getpixel((size // 2, size * 5 // 8))
            sky = picture.getpixel((size // 8, size * 5 // 8))
            self.assertGreater(contrast(sun, sky), 4.5, size)

    def test_the_windows_icon_has_the_sizes_up_to_256(self):
        icon = Image.open(ICONS / "orrery.ico")
        self.assertEqual(sorted(icon.info["sizes"]),
                         [(size, size) for size in SIZES if size <= 256])


if __name__ == "__main__":
    unittest.main()
