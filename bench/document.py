"""The section of docs/performance.md about looking at sheets, which has a script of its own."""
START, END = "<!-- looking: begin -->\n", "<!-- looking: end -->\n"


def replace_section(document, section):
    """Replaces the section, or adds it at the end."""
    text = document.read_text(encoding="utf-8")
    head, _, rest = text.partition(START)
    tail = rest.partition(END)[2]
    document.write_text(f"{head.rstrip()}\n\n{START}{section}{END}{tail}", encoding="utf-8")


def replace_rest(document, text):
    """Replaces everything but the section."""
    old = document.read_text(encoding="utf-8") if document.exists() else ""
    begin, end = old.find(START), old.find(END)
    section = f"\n{old[begin:end]}{END}" if 0 <= begin < end else ""
    document.write_text(text + section, encoding="utf-8")
