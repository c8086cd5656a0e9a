"""Compares a workbook as the command look tells it with what LibreOffice makes of it."""

import json
import subprocess

import numpy

import known_differences
import office_sheets
import package_facts
import page_pictures
from bars import Tally

CELLS = 1500         # looked at on each sheet
SHEETS = 6           # of each workbook
PICTURE = 4_000_000  # pixels of a picture at most; larger sheets are cut


def compare_workbook(cli, session, path, folder, pictures):
    """The tally of a workbook. Throws Failed if LibreOffice does not open it."""
    tally = Tally()
    copy = folder / f"workbook{path.suffix}"  # LibreOffice locks what it opens
    copy.write_bytes(path.read_bytes())
    facts = package_facts.facts_of(path)

    def compare(document):
        for sheet in office_sheets.visible_sheets(document)[:SHEETS]:
            svg = folder / "page.svg"
            for old in folder.glob("*.p*"):
                old.unlink()
            try:
                ours = look(cli, path, sheet.Name, svg)
            except ValueError as error:
                tally.notes.append(f"look: {sheet.Name}: {error}")
                tally.count("texts", False)
                continue
            if ours["cells"] or ours["drawings"]:
                SheetComparison(tally, sheet, ours, facts.get(sheet.Name)).run(document, svg)
            if pictures:
                _keep(pictures, path, sheet.Name, folder)

    session.with_document(copy, compare)
    return tally


def look(cli, path, sheet, svg=None):
    """What the command tells of a sheet. Throws ValueError if it tells nothing."""
    command = [cli, "look", str(path), "--sheet", sheet, "--json"]
    if svg:
        command += ["--svg", str(svg)]
    result = subprocess.run(command, capture_output=True, timeout=120)
    answer = json.loads(result.stdout.decode("utf-8"))
    if "cells" not in answer:
        raise ValueError("; ".join(answer.get("reports", ["no answer"])))
    return answer


class SheetComparison:
    def __init__(self, tally, sheet, ours, facts):
        self._tally = tally
        self._sheet = sheet
        self._ours = ours
        self._cells = ours["cells"][:CELLS]
        self._differences = known_differences.SheetDifferences(sheet, facts)
        self._shown = {}          # texts of LibreOffice's cells, by their addresses
        self._words = []          # of LibreOffice's page: boxes and texts
        self._page = None         # width and height of that page
        self._other_boxes = []    # of cells that show something else there

    def run(self, document, svg):
        # Texts first: to save a page changes the sheet. What they lack may stand on that page.
        unequal = self._compare_cells()
        self._compare_page(document, svg)
        for address, box, ours, theirs in unequal:
            self._tally.count("texts", self._prints(box, ours),
                              f"{self._sheet.Name}!{address} {ours!r} not {theirs!r}")

    def _prints(self, box, text):
        """Whether LibreOffice's page has just that text in the box. Its cells tell neither the number
        formats of conditional formats nor that an icon stands for the number."""
        if self._page is None or box[0] + box[2] > self._page[0] or box[1] + box[3] > self._page[1]:
            return False
        printed = "".join(word for place, word in self._words if _contains(box, *_middle(place)))
        return printed == "".join(text.split())

    def _compare_cells(self):
        """Counts sizes, places and texts. Gives the texts that are not equal."""
        unequal = []
        mirrored = bool(self._sheet.getPropertyValue("TableLayout"))
        for cell in self._cells:
            address, ours = cell["cell"], cell["text"]
            column, row = office_sheets.address_of(address)
            # Excel centres across cells, LibreOffice merges them: ECMA-376 18.18.40.
            merges = cell["align"] != "centerContinuous"
            box, theirs = office_sheets.measure(self._sheet, column, row, merges)
            self._shown[address] = theirs
            self._compare_boxes(address, cell["box"], box, mirrored)
            if known_differences.is_equal(ours, theirs):
                self._tally.count("texts", True)
            elif self._differences.means_something_else(address, ours, theirs):
                self._other_boxes.append(cell["clip"])
            else:
                unequal.append((address, cell["box"], ours, theirs))
        return unequal + list(self._texts_that_are_not_ours())

    def _compare_boxes(self, address, ours, theirs, mirrored):
        column, row = office_sheets.address_of(address)
        # Sides that LibreOffice has elsewhere count as equal: x, y, width, height.
        if self._differences.has_other_column(column):
            theirs = [ours[0], theirs[1], ours[2], theirs[3]]
        if self._differences.has_other_row(row):
            theirs = [theirs[0], ours[1], theirs[2], ours[3]]
        note = f"{self._sheet.Name}!{address} {_rounded(ours)} not {_rounded(theirs)}"
        self._tally.count("sizes", all(abs(a - b) <= 1 for a, b in zip(ours[2:], theirs[2:])), note)
        if not mirrored:
            self._tally.count("edges", all(abs(a - b) <= max(2, 0.005 * abs(b)) for a, b
                                           in zip(_corners(ours), _corners(theirs))), note)

    def _texts_that_are_not_ours(self):
        if len(self._ours["cells"]) > CELLS:
            return
        known = {cell["cell"] for cell in self._cells}
        for column, row in office_sheets.filled_cells(self._sheet, CELLS):
            address = office_sheets.text_of(column, row)
            cell = self._sheet.getCellByPosition(column, row)
            if address not in known and cell.String.strip() and not self._is_hidden(column, row) \
                    and not self._differences.means_something_else(address, "", cell.String):
                yield address, office_sheets.measure(self._sheet, column, row)[0], "", cell.String

    def _compare_page(self, document, svg):
        last = _last_cell(self._ours)
        pdf = svg.with_name("page.pdf")
        if last is None or not office_sheets.save_page(document, self._sheet, last, pdf):
            return
        first = office_sheets.address_of(self._ours["range"].split(":")[0])
        columns, rows = self._ours["columns"], self._ours["rows"]
        drawn = page_pictures.from_svg(svg, round(columns[0]), round(rows[0]),
                                       round(columns[last[0] - first[0] + 1] - columns[0]) + 1,
                                       round(rows[last[1] - first[1] + 1] - rows[0]) + 1)
        theirs = page_pictures.from_pdf(pdf)
        self._page = theirs.shape[1], theirs.shape[0]
        self._words = page_pictures.words_of(pdf)
        self._tally.similarities.append((page_pictures.similarity(drawn, theirs), self._sheet.Name))
        self._compare_fills(drawn, theirs)
        self._compare_words()

    def _compare_fills(self, drawn, theirs):
        width, height = (min(drawn.shape[i], theirs.shape[i]) for i in (1, 0))
        for cell in self._cells:
            address, box = cell["cell"], cell["box"]
            column, row = office_sheets.address_of(address)
            if box[0] + box[2] > width or box[1] + box[3] > height \
                    or self._differences.has_other_column(column) \
                    or self._differences.has_other_row(row):
                continue
            one, other = (page_pictures.background(each, box) for each in (drawn, theirs))
            if one is None or other is None:
                continue
            is_right = (abs(one - other).max() <= 8
                        # Patterns are drawn by Excel; LibreOffice has the mean of their colours,
                        # which we tell. Dots beside pixels make the drawn ones a little darker.
                        or (abs(_color(cell["fill"]) - other).max() <= 8
                            and page_pictures.mean_difference(drawn, theirs, box) <= 16))
            if is_right or not (self._differences.has_style_of_table(address)
                                or self._differences.has_full_color(address, one)):
                self._tally.count("fills", is_right, f"{self._sheet.Name}!{address} "
                                                     f"{list(one)} not {list(other)}")

    def _compare_words(self):
        places, broken = self._places_of_words()
        high = [(cell["text"].split(), cell["box"]) for cell in self._ours["cells"] if _is_too_low(cell)]
        elsewhere = [drawing["box"] for drawing in self._ours["drawings"]] + self._other_boxes
        for place, word in self._words:
            if word not in places or any(_shows(box, place) for box in elsewhere):
                continue  # part of a broken word, of a drawing, or of another text
            inside = any(_shows(box, place) for _, box in places[word]) \
                or any(word in whole and _shows(box, place) for whole, box in broken)
            if inside or not (any(self._is_moved(address) for address, _ in places[word])
                              or self._is_cut(word, place, places[word])
                              # Lines that a cell is too low for are cut by Excel alone.
                              or any(word in texts and box[0] <= _middle(place)[0] <= box[0] + box[2]
                                     for texts, box in high)):
                self._tally.count("words", inside, f"{self._sheet.Name} {word!r} at "
                                                   f"{[round(number) for number in place]}")

    def _places_of_words(self):
        """Addresses and boxes of words; and words with their boxes that the page may hold in parts: of
        wrapped texts, and where a number format fills the room between them."""
        places = {}
        broken = []
        for cell in self._ours["cells"]:
            texts = cell["text"].split()
            # A word that differs in LibreOffice is wrong as a text, not for its place.
            for word in {*texts, *self._shown.get(cell["cell"], "").split()}:
                places.setdefault(word, []).append((cell["cell"], cell["clip"]))
            broken += [(word, cell["clip"]) for word in texts]
        return places, broken

    def _is_cut(self, word, place, places):
        """Whether a word beside its cell lies in a cell that is not empty: both programs end texts there,
        but LibreOffice's page holds all of their words."""
        y = _middle(place)[1]
        return any(box[1] <= y <= box[1] + box[3] for _, box in places) and any(
            cell["text"] and word not in cell["text"].split() and _contains(cell["box"], *_middle(place))
            for cell in self._ours["cells"])

    def _is_moved(self, address):
        column, row = office_sheets.address_of(address)
        return self._differences.has_other_column(column) or self._differences.has_other_row(row)

    def _is_hidden(self, column, row):
        return not (self._sheet.Columns.getByIndex(column).IsVisible
                    and self._sheet.Rows.getByIndex(row).IsVisible)


def _is_too_low(cell):
    """Whether a cell surely has more lines than room for them."""
    _, _, width, height = cell["box"]
    size = cell["size"] * 96 / 72
    narrowest = 0.4 * size * len(cell["text"])
    return cell["wrap"] and narrowest / max(width, 1) * size > height


def _shows(box, word):
    """Whether a word stands in a box: its centre does, or any part of it where the box is too small for
    it, since words of a PDF have the size that they had if nothing cut them off."""
    for start, size, low, high in zip(box[:2], box[2:], word[:2], word[2:]):
        if high - low > size:
            inside = low < start + size and start < high
        else:
            inside = start - 1 <= (low + high) / 2 <= start + size + 1
        if not inside:
            return False
    return True


def _contains(box, x, y):
    left, top, width, height = box
    return left - 1 <= x <= left + width + 1 and top - 1 <= y <= top + height + 1


def _middle(place):
    x0, y0, x1, y1 = place
    return (x0 + x1) / 2, (y0 + y1) / 2


def _last_cell(ours):
    """The last cell of the range, or of so much of it as a picture may have."""
    last = office_sheets.address_of(ours["range"].split(":")[-1])
    first = office_sheets.address_of(ours["range"].split(":")[0])
    columns, rows = ours["columns"], ours["rows"]
    while len(rows) > 2 and (columns[-1] - columns[0]) * (rows[-1] - rows[0]) > PICTURE:
        rows = rows[:len(rows) // 2 + 1]
    if (columns[-1] - columns[0]) * (rows[-1] - rows[0]) > PICTURE:
        return None
    return min(last[0], first[0] + len(columns) - 2), min(last[1], first[1] + len(rows) - 2)


def _color(text):
    """The colour "#rrggbb", or white."""
    return numpy.array([int((text or "#ffffff")[at:at + 2], 16) for at in (1, 3, 5)])


def _corners(box):
    return box[0], box[1], box[0] + box[2], box[1] + box[3]


def _rounded(box):
    return [round(number, 1) for number in box]


def _keep(pictures, path, sheet, folder):
    stem = f"{path.name}-{sheet}".replace("/", "_")
    for part, ending in (("drawn.ppm", "ours.ppm"), ("page.ppm", "theirs.ppm")):
        if (folder / part).exists():
            (pictures / f"{stem}-{ending}").write_bytes((folder / part).read_bytes())
