"""Sheet names and table names inside formulas."""

import re

SELF = "\u00abself\u00bb"  # stands for the name of a formula's own sheet
_QUOTED = r"'(?:[^']|'')+'"
_WORDS = r"[\w.\u00a1-\uffff\U00010000-\U0010ffff?\\]+"
_BARE = rf"(?:\[\d+\])?{_WORDS}(?::{_WORDS})?"
_REFERENCE = re.compile(rf'"(?:[^"]|"")*"|({_QUOTED}|{_BARE})!')
_WORD = re.compile(r"""("(?:[^"]|"")*"|'(?:[^']|'')*')|(?<![\w.\]])([^\W\d][\w.]*)(?![\w.(!'])""")
_ADDRESS = re.compile(r"(?i)[a-z]{1,3}\d{1,7}$|r\d*c\d*$|[rc]$")


def sheet_references(formula):
    """The sheet references of a formula: (start, end, names, quoted). A range of sheets has two
    names; references into other workbooks are left out."""
    for match in _REFERENCE.finditer(formula):
        text = match[1]
        if text is None:
            continue
        quoted = text.startswith("'")
        if quoted:
            text = text[1:-1].replace("''", "'")
        if "[" in text or "#REF" in text:
            continue
        yield match.start(1), match.end(1), text.split(":"), quoted


def names_sheet(formula, sheet):
    """Whether a formula names the sheet itself, not as the end of a range of sheets."""
    return any([name.casefold() for name in names] == [sheet.casefold()]
               for _, _, names, _ in sheet_references(formula))


def names_table(formula, tables):
    """Whether a formula names one of the tables."""
    wanted = {table.casefold() for table in tables}
    return any(match[2] and match[2].casefold() in wanted for match in _WORD.finditer(formula))


def in_sheet_range(formula, sheet):
    return any(len(names) > 1 and sheet.casefold() in [name.casefold() for name in names]
               for _, _, names, _ in sheet_references(formula))


def needs_quotes(name):
    """Whether a sheet name must stand in apostrophes in front of a reference."""
    return (not re.match(r"[^\W\d][\w.]*$", name) or bool(_ADDRESS.match(name)))


def unquoted_by_mistake(formula):
    """The names that stand without the apostrophes that they need."""
    return [name for _, _, names, quoted in sheet_references(formula) if not quoted
            for name in names if needs_quotes(name)]


_STRUCTURED = re.compile(  # a table of the sheet, as it is spelled here, and the brackets behind it
    r"(\u00abself\u00bb\d+)(\[(?:'.|[^\[\]']|\[(?:'.|[^\[\]'])*\])*\])", re.DOTALL)
_BRACKETS = re.compile(r"\[((?:'.|[^\[\]'])+)\]", re.DOTALL)
_DOUBLED = re.compile(r"\[\[(\u00abcolumn \d+\u00bb)\]\]")


def _unmarked(name):
    """The name of a column without the apostrophes before its odd signs."""
    return re.sub(r"'(.)", r"\1", name, flags=re.DOTALL)


class Names:
    """Replaces names of sheets and tables, to compare formulas of two sheets.

    `sheets` and `tables` map a name to what stands for it; `ranges` does the same for the ends
    of a range of sheets, `columns` for the columns of tables in structured references."""

    def __init__(self, sheets=None, tables=None, ranges=None, columns=None):
        self.columns = {key.casefold(): value for key, value in (columns or {}).items()}
        self.sheets = {key.casefold(): value for key, value in (sheets or {}).items()}
        self.tables = {key.casefold(): value for key, value in (tables or {}).items()}
        self.ranges = {key.casefold(): value for key, value in (ranges or {}).items()}
        self.ranges = {**self.sheets, **self.ranges}

    def neutral(self, formula):
        """The formula with every sheet reference spelled the same way, and names replaced."""
        pieces, at = [], 0
        for start, end, names, _ in sheet_references(formula):
            table = self.ranges if len(names) > 1 else self.sheets
            spelled = ":".join(table.get(name.casefold(), name.casefold()) for name in names)
            pieces += [formula[at:start], "\u27e6", spelled, "\u27e7"]
            at = end
        return self._columns(self._tables("".join(pieces) + formula[at:]))

    def _columns(self, formula):
        """A column alone may stand in one pair of brackets or, with odd signs, in two."""
        if not self.columns:
            return formula
        return _STRUCTURED.sub(lambda match: match[1] + self._brackets(match[2]), formula)

    def _brackets(self, brackets):
        neutral = _BRACKETS.sub(
            lambda match: f"[{self.columns.get(_unmarked(match[1]).casefold(), match[1])}]",
            brackets)
        return _DOUBLED.sub(r"[\1]", neutral)

    def _tables(self, formula):
        if not self.tables:
            return formula
        return _WORD.sub(lambda match: match[1] or self.tables.get(match[2].casefold(), match[2]),
                         formula)
