"""The compiled help contains every page and picture; contents and index link to them."""

import html.parser
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

from help_pages import BUILD, WEB, names, parse

CHM = BUILD / "Orrery.chm"
PROJECT = BUILD / "chm"


def chmls(*arguments):
    return subprocess.run([os.environ["ORRERY_CHMLS"], "--no-page", *arguments], text=True,
                          capture_output=True, check=True, timeout=60).stdout


class Sitemap(html.parser.HTMLParser):
    """The targets in a .hhc or .hhk file."""

    def __init__(self, path):
        super().__init__()
        self.targets = []
        self.feed(path.read_text(encoding="cp1252"))

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        if tag == "param" and values.get("name") == "Local":
            self.targets.append(values["value"])


class CompiledHelp(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.files = set(chmls("--name-only", "list", str(CHM)).split())

    def test_it_is_a_file_of_compiled_help(self):
        self.assertEqual(CHM.read_bytes()[:4], b"ITSF")

    def test_it_contains_every_page_and_picture(self):
        for name in names():
            self.assertIn(f"/{name}.html", self.files)
        pictures = list((WEB / "images").iterdir())
        self.assertNotEqual(pictures, [])
        for picture in pictures:
            self.assertIn(f"/images/{picture.name}", self.files)
        self.assertLessEqual({"/style.css", "/Orrery.hhc", "/Orrery.hhk"}, self.files)

    def test_its_pages_are_unchanged(self):
        with tempfile.TemporaryDirectory(prefix="orrery-chm-") as folder:
            out = pathlib.Path(folder) / "page.html"
            for name in names():
                chmls("extract", str(CHM), f"/{name}.html", str(out))
                self.assertEqual(out.read_bytes(), (PROJECT / f"{name}.html").read_bytes(), name)

    def test_its_pages_are_valid(self):
        for name in names():
            parse(PROJECT / f"{name}.html")

    def test_the_contents_name_every_page_once(self):
        targets = Sitemap(PROJECT / "Orrery.hhc").targets
        self.assertEqual(sorted(targets), [f"{name}.html" for name in names()])

    def test_the_index_links_to_existing_targets(self):
        targets = Sitemap(PROJECT / "Orrery.hhk").targets
        self.assertGreater(len(targets), 30)
        for target in targets:
            page, _, anchor = target.partition("#")
            text = (PROJECT / page).read_text(encoding="utf-8")
            if anchor:
                self.assertRegex(text, f'id="{re.escape(anchor)}"')


if __name__ == "__main__":
    unittest.main()
