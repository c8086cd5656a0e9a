"""The help pages are valid, linked, listed in the contents, and have their pictures."""

import pathlib
import unittest

from help_pages import SOURCE, WEB, names, parse, text_of

LINKED = {"a": "href", "img": "src", "link": "href"}


def targets(tree):
    for tag, attribute in LINKED.items():
        for element in tree.iter(tag):
            if attribute in element.attrib:
                yield element.attrib[attribute]


def anchors(tree):
    return {element.attrib["id"] for element in tree.iter() if "id" in element.attrib}


class Pages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.trees = {path.name: parse(path) for path in WEB.glob("*.html")}

    def test_there_is_a_page_for_each_source_and_no_other(self):
        self.assertEqual(sorted(self.trees), [f"{name}.html" for name in names()])

    def test_there_is_a_page_for_each_window(self):
        for name in ("main", "parameters", "holidays", "tips", "about"):
            self.assertIn(f"{name}.html", self.trees)

    def test_every_link_has_a_target(self):
        for name, tree in self.trees.items():
            for target in targets(tree):
                self.assertNotIn(":", target, f"{name}: the help needs no network")
                path, _, anchor = target.partition("#")
                if path and not path.endswith(".html"):
                    self.assertTrue((WEB / path).is_file(), f"{name}: {target}")
                    continue
                page = path or name
                self.assertIn(page, self.trees, f"{name}: {target}")
                if anchor:
                    self.assertIn(anchor, anchors(self.trees[page]), f"{name}: {target}")

    def test_every_picture_has_a_text(self):
        pictures = [image for tree in self.trees.values() for image in tree.iter("img")]
        self.assertNotEqual(pictures, [])
        for image in pictures:
            self.assertTrue(image.attrib.get("alt"), image.attrib["src"])

    def test_the_contents_on_every_page_name_every_page_once(self):
        for name, tree in self.trees.items():
            links = [link.attrib["href"] for link in tree.find(".//nav").iter("a")]
            self.assertEqual(sorted(links), sorted(self.trees), name)
            here = [link.attrib["href"] for link in tree.find(".//nav").iter("a")
                    if link.attrib.get("aria-current") == "page"]
            self.assertEqual(here, [name])

    def test_every_page_has_one_title(self):
        titles = [text_of(tree.find(".//title")) for tree in self.trees.values()]
        self.assertEqual(len(set(titles)), len(titles))
        for name, tree in self.trees.items():
            self.assertEqual(len(list(tree.iter("h1"))), 1, name)

    def test_the_links_between_the_sources_are_valid(self):
        for path in SOURCE.glob("*.md"):
            text = path.read_text(encoding="utf-8")
            self.assertNotIn(".html", text, f"{path.name}: sources name the Markdown files")

    def test_every_window_is_shown(self):
        shown = {pathlib.PurePosixPath(image.attrib["src"]).name
                 for tree in self.trees.values() for image in tree.iter("img")}
        self.assertEqual(shown, {"main.png", "main-saved.png", "main-pdf.png", "walk-dropped.png", "walk-pages.png",
                                 "parameters-monthly.png", "parameters-yearly.png", "holidays.png",
                                 "country.png", "own-day.png", "import.png", "tip.png", "about.png"})


if __name__ == "__main__":
    unittest.main()
