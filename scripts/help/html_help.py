"""Writes the help as web pages, with the contents beside each page."""

import html

PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{title} - Orrery help</title>
<link rel="stylesheet" href="style.css">
</head>
<body>
<nav aria-label="Contents">
{contents}</nav>
<main>
{body}
<footer>Orrery {version}</footer>
</main>
</body>
</html>
"""


def contents_html(groups, current):
    lines = []
    for heading, pages in groups:
        if heading:
            lines.append(f"<h2>{html.escape(heading)}</h2>")
        lines.append("<ul>")
        for page in pages:
            here = ' aria-current="page"' if page is current else ""
            lines.append(f'<li><a href="{page.name}.html"{here}>{html.escape(page.title)}</a></li>')
        lines.append("</ul>")
    return "\n".join(lines) + "\n"


def write(groups, pages, style, version, folder):
    (folder / "style.css").write_text(style.read_text(encoding="utf-8"), encoding="utf-8")
    for page in pages:
        (folder / f"{page.name}.html").write_text(
            PAGE.format(title=html.escape(page.title), contents=contents_html(groups, page),
                        body=page.body, version=html.escape(version)), encoding="utf-8")
