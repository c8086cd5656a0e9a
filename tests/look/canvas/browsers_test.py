#!/usr/bin/env python3
"""Compares how Chromium, Firefox and librsvg show pictures that the SVG canvas wrote.

usage: browsers_test.py --draw PROGRAM [--keep FOLDER]

Each pair must look alike: a small mean difference of the pixels and a high structural similarity.
Pixels whose colour is known are checked in all of them, and texts can be found in the files.
Exit code 0 if all of this holds, else 1.
"""

import argparse
import pathlib
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

import numpy
from PIL import Image

WIDTH, HEIGHT = 480, 200
SVG = "{http://www.w3.org/2000/svg}"
# The mean difference of a channel, of 255, and the least similarity. Texts are rasterised by
# different programs; gradients, clips and pictures have no such excuse.
LIMITS = {"texts": (7, 0.90), "month": (2, 0.96), "borders": (1, 0.98), "shapes": (2, 0.98),
          "fills": (1, 0.98), "pictures": (2, 0.97)}


def make_pictures(folder):
    """A picture with four colours, none of which may be exchanged for another."""
    image = Image.new("RGB", (12, 8), (255, 255, 255))
    for place, color in {(0, 0): (200, 0, 0), (6, 0): (0, 150, 0),
                         (0, 4): (0, 0, 200), (6, 4): (230, 200, 0)}.items():
        image.paste(color, (*place, place[0] + 6, place[1] + 4))
    image = image.resize((120, 80), Image.NEAREST)
    image.save(folder / "sample.png")
    image.save(folder / "sample.jpeg", quality=95, subsampling=0)
    image.save(folder / "sample.gif")
    image.save(folder / "sample.bmp")


def show_rsvg(svg, png, _profile):
    subprocess.run(["rsvg-convert", "--background-color=white", "-o", png, svg], check=True)


def show_chromium(svg, png, profile):
    subprocess.run(["chromium", "--headless", "--no-sandbox", "--disable-gpu", "--no-first-run",
                    "--disable-background-networking", "--hide-scrollbars", "--disable-lcd-text",
                    "--force-device-scale-factor=1", f"--user-data-dir={profile}",
                    f"--window-size={WIDTH},{HEIGHT}", f"--screenshot={png}", svg.as_uri()],
                   check=True, timeout=120, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def show_firefox(svg, png, profile):
    profile.mkdir(exist_ok=True)
    subprocess.run(["firefox-esr", "--headless", "--no-remote", "--profile", profile,
                    "--window-size", f"{WIDTH},{HEIGHT}", "--screenshot", png, svg.as_uri()],
                   check=True, timeout=120, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


PROGRAMS = {"rsvg-convert": show_rsvg, "chromium": show_chromium, "firefox-esr": show_firefox}


def read_pixels(path):
    image = Image.open(path).convert("RGB")
    return image.crop((0, 0, WIDTH, HEIGHT))


def box_mean(array, size=7):
    """The mean of each window of size by size pixels."""
    sums = numpy.pad(array.cumsum(0).cumsum(1), ((1, 0), (1, 0)))
    return (sums[size:, size:] - sums[:-size, size:] - sums[size:, :-size]
            + sums[:-size, :-size]) / size ** 2


def similarity(one, other):
    """The mean structural similarity of two grey pictures, in windows of 7 by 7 pixels."""
    one, other = (numpy.asarray(image.convert("L"), numpy.float64) for image in (one, other))
    mean_one, mean_other = box_mean(one), box_mean(other)
    variance_one = box_mean(one * one) - mean_one ** 2
    variance_other = box_mean(other * other) - mean_other ** 2
    covariance = box_mean(one * other) - mean_one * mean_other
    c1, c2 = (0.01 * 255) ** 2, (0.03 * 255) ** 2
    values = ((2 * mean_one * mean_other + c1) * (2 * covariance + c2)
              / ((mean_one ** 2 + mean_other ** 2 + c1) * (variance_one + variance_other + c2)))
    return values.mean()


def difference(one, other):
    one, other = (numpy.asarray(image, numpy.float64) for image in (one, other))
    return numpy.abs(one - other).mean()


# Pixels in the middle of something plain: sample, place, colour.
KNOWN_PIXELS = [
    ("fills", (30, 30), (0x1F, 0x4E, 0x79)),       # the solid one
    ("fills", (50, 155), (0xFF, 0xFF, 0xFF)),      # the middle of a gradient
    ("fills", (12, 150), (0xC0, 0x30, 0x20)),      # its beginning
    ("fills", (87, 150), (0x1F, 0x4E, 0x79)),      # its end
    ("pictures", (25, 20), (200, 0, 0)),           # whole: upper left
    ("pictures", (55, 40), (230, 200, 0)),         # lower right
    ("pictures", (120, 15), (0, 150, 0)),          # cut to the right half
    ("pictures", (95, 45), (230, 200, 0)),
    ("pictures", (145, 190), (230, 200, 0)),
    ("pictures", (185, 20), (0, 150, 0)),          # mirrored
    ("pictures", (345, 15), (200, 0, 0)),          # made smaller
    ("pictures", (390, 15), (255, 255, 255)),      # so that this is free
    ("pictures", (25, 164), (200, 0, 0)),          # the last kind, too
    ("texts", (400, 150), (255, 255, 255)),        # behind the clip
    ("month", (412, 60), (0xDD, 0xEB, 0xF7)),      # a weekend
]


def check_pixels(pictures):
    failures = []
    for sample, place, color in KNOWN_PIXELS:
        for program in PROGRAMS:
            found = pictures[sample, program].getpixel(place)
            if max(abs(a - b) for a, b in zip(found, color)) > 16:
                failures.append(f"{program} shows {found} at {place} of {sample}, not {color}")
    return failures


def check_likeness(pictures):
    failures = []
    for sample, (most, least) in LIMITS.items():
        for one, other in (("chromium", "firefox-esr"), ("chromium", "rsvg-convert"),
                           ("firefox-esr", "rsvg-convert")):
            pair = pictures[sample, one], pictures[sample, other]
            differs, similar = difference(*pair), similarity(*pair)
            print(f"{sample}: {one} and {other}: difference {differs:.2f}, similarity "
                  f"{similar:.3f}")
            if differs > most or similar < least:
                failures.append(f"{one} and {other} show {sample} differently")
    return failures


def check_texts(folder):
    """Texts are whole in the file, each in one element, in the order of reading."""
    texts = {element.text: element
             for element in ElementTree.parse(folder / "texts.svg").iter(SVG + "text")}
    failures = [f"{text!r} cannot be found" for text in
                ("December 31, AVATAR ", "Both  <&>", "\u05d9\u05e0\u05d5\u05d0\u05e8", "cut off here")
                if text not in texts]
    if not failures and texts["\u05d9\u05e0\u05d5\u05d0\u05e8"].get("id") != "C6":
        failures.append("the cell of a text cannot be found")
    days = [element.text for element in ElementTree.parse(folder / "month.svg").iter(SVG + "text")]
    if days != [str(day) for day in range(1, 32)]:
        failures.append(f"the days of the month are {days}")
    return failures


def check_judge():
    """What would be different pictures must not pass for alike."""
    white = Image.new("RGB", (WIDTH, HEIGHT), "white")
    black = Image.new("RGB", (WIDTH, HEIGHT), "black")
    boxes = white.copy()
    boxes.paste((0, 0, 0), (40, 40, 200, 160))
    failures = []
    if similarity(white, white) < 0.999 or difference(white, white) != 0:
        failures.append("the judge finds a picture unlike itself")
    if difference(white, black) < 250 or similarity(boxes, white) > 0.9:
        failures.append("the judge finds unlike pictures alike")
    return failures


def run(draw, folder):
    make_pictures(folder)
    subprocess.run([draw, folder], check=True)
    pictures = {}
    for sample in LIMITS:
        for program, show in PROGRAMS.items():
            png = folder / f"{sample}-{program}.png"
            show(folder / f"{sample}.svg", png, folder / f"profile-{program}")
            pictures[sample, program] = read_pixels(png)
    return check_judge() + check_texts(folder) + check_pixels(pictures) + check_likeness(pictures)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--draw", required=True)
    parser.add_argument("--keep", type=pathlib.Path, help="a folder that keeps all pictures")
    arguments = parser.parse_args()
    missing = [program for program in PROGRAMS if not shutil.which(program)]
    if missing:
        print("missing:", ", ".join(missing))
        return 1
    if arguments.keep:
        arguments.keep.mkdir(parents=True, exist_ok=True)
        failures = run(arguments.draw, arguments.keep.resolve())
    else:
        with tempfile.TemporaryDirectory() as folder:
            failures = run(arguments.draw, pathlib.Path(folder))
    for failure in failures:
        print(failure)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
