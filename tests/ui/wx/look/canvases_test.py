#!/usr/bin/env python3
"""Compares what the window's canvas paints with what librsvg makes of the SVG canvas's pictures.

usage: canvases_test.py --draw PROGRAM --data FOLDER [--keep FOLDER]

Compared are samples of all that a canvas can do and pages of the shipped templates. Exit code 0 if each
pair is alike, else 1.
"""

import argparse
import pathlib
import shutil
import subprocess
import sys
import tempfile

import numpy
from PIL import Image

TESTS = pathlib.Path(__file__).resolve().parents[3]
sys.path += [str(TESTS / "look" / "oracle"), str(TESTS / "look" / "canvas")]
import browsers_test  # noqa: E402
import page_pictures  # noqa: E402

LEAST = 0.99         # structural similarity
LEAST_OF = {"texts": 0.93}   # librsvg kerns although it is told not to, and does not stretch
SHIPPED_PAGES = 10   # at least one of each template


def read(path):
    return numpy.asarray(Image.open(path).convert("RGB"))


def show(svg):
    """The picture as librsvg shows it."""
    png = svg.with_suffix(".rsvg.png")
    subprocess.run(["rsvg-convert", "--unlimited", "--background-color=white", "-o", png, svg],
                   check=True, timeout=120)
    return read(png)


def compare(folder):
    failures = []
    pages = sorted(folder.glob("*.svg"))
    for svg in pages:
        painted, shown = read(svg.with_suffix(".png")), show(svg)
        alike = page_pictures.similarity(painted, shown)
        ink = (painted < 250).any(axis=2).mean()
        print(f"{svg.stem}: similarity {alike:.4f}, {ink:.1%} not white")
        if alike < LEAST_OF.get(svg.stem, LEAST):
            failures.append(f"{svg.stem} differs")
        if any(abs(a - b) > 1 for a, b in zip(painted.shape, shown.shape)):
            failures.append(f"{svg.stem} has another size: {painted.shape}, {shown.shape}")
        if ink < 0.002:
            failures.append(f"{svg.stem} is empty")
    shipped = {svg.stem.rsplit("-", 1)[0] for svg in pages if "-" in svg.stem}
    if len(shipped) < SHIPPED_PAGES:
        failures.append(f"only {sorted(shipped)} were painted")
    return failures


def check_pixels(folder):
    failures = []
    for sample, place, color in browsers_test.KNOWN_PIXELS:
        found = read(folder / f"{sample}.png")[place[1], place[0]]
        if max(abs(int(a) - b) for a, b in zip(found, color)) > 16:
            failures.append(f"the canvas paints {tuple(found)} at {place} of {sample}, not {color}")
    return failures


def check_judge(folder):
    """What would be different pictures must not pass for alike."""
    one, other = read(folder / "fills.png"), read(folder / "borders.png")
    alike = page_pictures.similarity(one, other)
    return [] if alike < LEAST else [f"the judge finds unlike pictures alike: {alike:.3f}"]


def run(draw, data, folder):
    installed = folder / "data"
    shutil.copytree(data, installed)  # the program may make folders there
    browsers_test.make_pictures(folder)
    subprocess.run([draw, installed / "orrery.ini", folder], check=True, timeout=600)
    return compare(folder) + check_pixels(folder) + check_judge(folder)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--draw", required=True)
    parser.add_argument("--data", type=pathlib.Path, required=True)
    parser.add_argument("--keep", type=pathlib.Path, help="a folder that keeps all pictures")
    arguments = parser.parse_args()
    if arguments.keep:
        arguments.keep.mkdir(parents=True)
        failures = run(arguments.draw, arguments.data, arguments.keep.resolve())
    else:
        with tempfile.TemporaryDirectory() as folder:
            failures = run(arguments.draw, arguments.data, pathlib.Path(folder))
    for failure in failures:
        print(failure)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
