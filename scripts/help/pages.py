"""Reads the sources of the help: the pages, their order, and the text of each as HTML."""

import dataclasses
import html
import pathlib
import re

import markdown


@dataclasses.dataclass
class Heading:
    level: int
    text: str
    anchor: str


@dataclasses.dataclass
class Page:
    name: str  # of the file, without an ending
    body: str  # HTML
    headings: list

    @property
    def title(self):
        return self.headings[0].text


def read_page(path):
    converter = markdown.Markdown(extensions=["tables", "toc", "sane_lists"],
                                  output_format="html")
    body = converter.convert(path.read_text(encoding="utf-8"))
    # Sources link each other and the pictures where they are; the pages are in one folder.
    body = re.sub(r'(href="[^":#]+)\.md(["#])', r"\1.html\2", body)
    body = body.replace('src="../images/window/', 'src="images/')

    headings = []

    def walk(tokens):
        for token in tokens:
            headings.append(Heading(token["level"], html.unescape(token["name"]), token["id"]))
            walk(token["children"])

    walk(converter.toc_tokens)
    return Page(path.stem, body, headings)


def read_contents(source):
    """A list of (heading or None, [page, ...]), as contents.txt orders them."""
    groups = [(None, [])]
    for line in (source / "contents.txt").read_text(encoding="utf-8").splitlines():
        name = line.strip()
        if not name or name.startswith("#"):
            continue
        path = source / f"{name}.md"
        if path.exists():
            groups[-1][1].append(read_page(path))
        elif line.startswith(" "):
            raise SystemExit(f"contents.txt names the page \"{name}\", but {path} does not exist.")
        else:
            groups.append((name, []))
    return groups


def pages_of(groups):
    return [page for _, pages in groups for page in pages]


def pictures_of(pages):
    """The file names of the pictures that the pages show."""
    return sorted({pathlib.PurePosixPath(source).name for page in pages
                   for source in re.findall(r'src="(images/[^"]+)"', page.body)})
