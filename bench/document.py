"""The sections of docs/performance.md that scripts of their own write, between marks."""
import re

SECTION = re.compile(r"<!-- (\w+): begin -->\n.*?<!-- \1: end -->\n", re.DOTALL)


def replace_section(document, name, section):
    """Replaces the section of that name, or adds it at the end."""
    text = document.read_text(encoding="utf-8")
    marked = f"<!-- {name}: begin -->\n{section}<!-- {name}: end -->\n"
    found = [match for match in SECTION.finditer(text) if match[1] == name]
    if found:
        text = text[:found[0].start()] + marked + text[found[0].end():]
    else:
        text = f"{text.rstrip()}\n\n{marked}"
    document.write_text(text, encoding="utf-8")


def replace_rest(document, text):
    """Replaces everything but the sections."""
    old = document.read_text(encoding="utf-8") if document.exists() else ""
    sections = [match[0] for match in SECTION.finditer(old)]
    document.write_text("\n".join([text, *sections]), encoding="utf-8")
