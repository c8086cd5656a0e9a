"""Templates such as people make, from a seed, each with its truth. README.md tells how to use them."""

import dataclasses
import pathlib
import random
import tempfile

from . import decoys, month_page, names, other_sheets, theme, truth, xls_file, xlsx_file, year_page
from .sheet import Book
from .truth import Truth

WRITERS = {"xlsx": xlsx_file.write, "xls": xls_file.write}
KINDS = {"monthly": 46, "yearly": 20, "both": 11, "none": 23}


@dataclasses.dataclass
class Design:
    name: str            # of the file, without its ending
    truth: Truth
    labels: list         # what kind of design it is, for reports
    book: Book           # the sheets as they were designed
    pages: dict          # "monthly" and "yearly": the month_page.Page with the cells as they were painted
    path: pathlib.Path = None


def design(seed, number):
    """One design; which one depends on the seed and the number alone."""
    rng = random.Random(f"{seed}/{number}")
    kind = rng.choices(list(KINDS), KINDS.values())[0]
    own_names = names.pick(rng)
    words = names.Words(own_names.base)
    own_theme = theme.pick(rng, own_names.base)
    sheets, pages, why, labels = [], {}, "", [kind]
    sheet_names = other_sheets.Names(rng, own_names, words)
    if kind == "none":
        sheet, why = decoys.make(rng, own_theme, own_names, words)
        labels.append(why)
        sheet.name = sheet_names.take(sheet.name)
        sheets.append(sheet)
    for which, maker in (("monthly", month_page), ("yearly", year_page)):
        if kind in (which, "both"):
            page = maker.make(rng, own_theme, own_names, words, sheet_names.for_page(which[:-2]))
            pages[which] = page
            labels += page.labels
            sheets.append(page.sheet)
    if kind == "both" and rng.random() < 0.5:
        sheets.reverse()
    sheets = other_sheets.add(rng, own_theme, own_names, words, sheet_names, sheets, labels)
    book = Book(sheets, *_normal_font(rng, own_theme), _palette(rng))
    calendars = {which: page.calendar for which, page in pages.items()}
    return Design(f"{kind.title()}{number:04}", truth.make(**calendars, why_none=why), labels, book, pages)


def _normal_font(rng, own_theme):
    if rng.random() < 0.5:
        return "Calibri", 11
    return ("Arial", 10) if rng.random() < 0.6 else (own_theme.font, rng.choice((10, 11)))


def _palette(rng):
    """Old workbooks often have some colours of the palette changed, used or not."""
    if rng.random() > 0.25:
        return None
    return [(index, f"{rng.randrange(1 << 24):06X}")
            for index in rng.sample(range(16, 64), rng.randint(1, 8))]


def designs(seed, count, ending="xlsx", folder=None, first=0):
    """Writes `count` designs, one after the other, and yields each with its path.

    `ending` is "xlsx" or "xls". Without a folder the files live until the next design is asked for.
    """
    with tempfile.TemporaryDirectory(prefix="designs-") as scratch:
        for number in range(first, first + count):
            made = design(seed, number)
            made.path = pathlib.Path(folder or scratch, f"{made.name}.{ending}")
            WRITERS[ending](made.book, made.path)
            yield made
            if folder is None:
                made.path.unlink(missing_ok=True)
