"""Workbooks of the corpus that miss a bar, each with its reasons."""

_NO_FONT = "its styles name no font: LibreOffice takes two millimetres for a digit (Excel: Calibri 11)"
_WHOLE_PIXELS = "Excel ends rows at whole pixels, LibreOffice does not; the difference adds up"

KNOWN = {
    "calamine-inlineStr_with_value.xlsx": {
        "sizes": "it names no width of columns: LibreOffice has one of its own",
        "texts": "LibreOffice drops the text of a cell that has a number, too",
        "words": "LibreOffice's page holds the line of a text that its cell is too low for",
    },
    "calamine-nonstandard-xml-ns-prefix.xlsx": {"sizes": _NO_FONT, "edges": _NO_FONT},
    "closedxml-UsingPhonetics.xlsx": {
        "sizes": "LibreOffice does not fit the row, which has no height, to the larger font of its text",
        "edges": "as the sizes",
    },
    "phpss-issue.3770.xlsx": {
        "sizes": _WHOLE_PIXELS, "edges": _WHOLE_PIXELS, "words": _WHOLE_PIXELS,
    },
    "phpss-namespacenonstd.xlsx": {"edges": _WHOLE_PIXELS},
    "phpss-rootZipFiles.xlsx": {"sizes": _NO_FONT, "edges": _NO_FONT},
    "phpss-without_cell_reference.xlsx": {
        "edges": "the Normal font, -apple-system, is on no other system; each program has another for it",
    },
    "poi-right-to-left.xlsx": {
        "texts": "[$-3000401] asks for the digits of Persian, LibreOffice has those of the language",
    },
}
