"""Writes the help as a project of compiled HTML help (.hhp, .hhc, .hhk) and compiles it."""

import html
import subprocess

PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta http-equiv="Content-Type" content="text/html; charset=utf-8">
<title>{title}</title>
<link rel="stylesheet" href="style.css">
</head>
<body>
{body}
</body>
</html>
"""

PROJECT = """[OPTIONS]
Compatibility=1.1 or later
Compiled file=Orrery.chm
Contents file=Orrery.hhc
Index file=Orrery.hhk
Default topic=index.html
Display compile progress=No
Full-text search=Yes
Language=0x409 English (United States)
Title=Orrery help
Default Window=main

[WINDOWS]
main="Orrery help","Orrery.hhc","Orrery.hhk","index.html","index.html",,,,,0x63520,240,0x387e,,,,,,,,0

[FILES]
{files}
"""

OUTLINE = """<!DOCTYPE HTML PUBLIC "-//IETF//DTD HTML//EN">
<html>
<head>
</head>
<body>
<ul>
{items}</ul>
</body>
</html>
"""


def item(name, target):
    local = f'<param name="Local" value="{target}">' if target else ""
    return (f'<li><object type="text/sitemap"><param name="Name" value="{html.escape(name)}">'
            f"{local}</object>\n")


def contents_items(groups):
    text = ""
    for heading, pages in groups:
        entries = "".join(item(page.title, f"{page.name}.html") for page in pages)
        text += item(heading, None) + f"<ul>\n{entries}</ul>\n" if heading else entries
    return text


def index_items(pages):
    """An entry for each heading; a heading that several pages have names its page."""
    places = {}
    for page in pages:
        for heading in page.headings:
            anchor = "" if heading.level == 1 else f"#{heading.anchor}"
            places.setdefault(heading.text, []).append((page, f"{page.name}.html{anchor}"))
    entries = []
    for text, targets in places.items():
        for page, target in targets:
            name = text if len(targets) == 1 else f"{text} ({page.title})"
            entries.append((name, target))
    return "".join(item(name, target) for name, target in sorted(entries, key=lambda e: e[0].lower()))


def write(groups, pages, pictures, style, folder):
    """Writes the project into the folder, which already has the folder images."""
    (folder / "style.css").write_text(style.read_text(encoding="utf-8"), encoding="utf-8")
    for page in pages:
        (folder / f"{page.name}.html").write_text(
            PAGE.format(title=html.escape(page.title), body=page.body), encoding="utf-8")
    files = [f"{page.name}.html" for page in pages] + ["style.css"]
    files += [f"images\\{picture}" for picture in pictures]
    # The viewer reads these three in the code page of their language.
    for name, text in (("Orrery.hhp", PROJECT.format(files="\n".join(files))),
                       ("Orrery.hhc", OUTLINE.format(items=contents_items(groups))),
                       ("Orrery.hhk", OUTLINE.format(items=index_items(pages)))):
        (folder / name).write_text(text, encoding="cp1252", newline="\r\n")


def compile_project(chmcmd, folder):
    """Makes Orrery.chm in the folder. Shows what the compiler says only when it fails."""
    result = subprocess.run([chmcmd, "Orrery.hhp"], cwd=folder, text=True, capture_output=True)
    if result.returncode != 0 or not (folder / "Orrery.chm").is_file():
        raise SystemExit(f"{chmcmd} did not make Orrery.chm:\n{result.stdout}{result.stderr}")
