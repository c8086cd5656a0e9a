"""Workbooks of the corpus that miss a bar, each with its reasons."""

_NO_FONT = "its styles name no font: LibreOffice takes two millimetres for a digit (Excel: Calibri 11)"
_WHOLE_PIXELS = "Excel ends rows at whole pixels, LibreOffice does not; the difference adds up"
_NO_WIDTH = "it has no DefColWidth: Excel takes eight digits, LibreOffice 0.889 inches"
_FIRST_FONT = ("columns are measured in digits of the Normal style's font ([MS-XLS] 2.4.53), LibreOffice "
               "takes the first font of the file, which is another")
_TOO_HIGH = "a row is higher than 409 points, the highest of Excel, which LibreOffice does not mind"

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
    "calamine-xls_formula_columns_beyond_z.xls": {
        "sizes": _NO_WIDTH, "edges": _NO_WIDTH, "words": _NO_WIDTH,
    },
    "edr-ExcelLibrary_newdoc.xls": {"sizes": _NO_WIDTH, "edges": _NO_WIDTH, "words": _NO_WIDTH},
    "phpss-30template.xls": {
        "fills": "a gradient of XFExt ([MS-XLS] 2.4.355), of which LibreOffice shows nothing, has no one "
                 "colour",
    },
    "poi-41139.xls": {"sizes": _FIRST_FONT, "edges": _FIRST_FONT},
    "poi-44235.xls": {"sizes": _FIRST_FONT, "edges": _FIRST_FONT, "words": _FIRST_FONT},
    "poi-44958_1.xls": {
        "texts": "LibreOffice computes the first cell of a data table; the file holds its result",
    },
    "poi-45538_classic_Footer.xls": {
        "words": "a raised mark of a footnote is a word of its own on LibreOffice's page",
    },
    "poi-49219.xls": {
        "words": "its links lead nowhere: #REF! is stored, LibreOffice has #N/A",
    },
    "poi-NewStyleConditionalFormattings.xls": {
        "fills": "LibreOffice reads neither the scales of CF12 ([MS-XLS] 2.4.43) nor the full colours of "
                 "conditional formats",
    },
    "poi-NoGutsRecords.xls": {"edges": _TOO_HIGH, "words": _TOO_HIGH},
}
