"""Reads the help pages of the build."""

import os
import pathlib
import re

import html5lib

BUILD = pathlib.Path(os.environ["ORRERY_HELP_BUILD_DIR"])
SOURCE = pathlib.Path(os.environ["ORRERY_SOURCE_DIR"]) / "docs/help"
WEB = BUILD / "html"


def names():
    return sorted(path.stem for path in SOURCE.glob("*.md"))


def parse(path):
    """The page as a tree; raises an exception if its HTML is invalid."""
    parser = html5lib.HTMLParser(strict=True, namespaceHTMLElements=False)
    return parser.parse(path.read_text(encoding="utf-8"))


def text_of(element):
    return " ".join("".join(element.itertext()).split())


def page_text(name):
    """The text of a page, with blanks for line breaks and between cells."""
    main = re.sub(r"<br>|</t[dh]>", " ", (WEB / f"{name}.html").read_text(encoding="utf-8"))
    parser = html5lib.HTMLParser(namespaceHTMLElements=False)
    return text_of(parser.parse(main).find(".//main"))


def rows_of(name):
    """The cells of every table row on a page."""
    return [list(row) for row in parse(WEB / f"{name}.html").iterfind(".//main//tr")]
