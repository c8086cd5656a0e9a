"""Shows values as LibreOffice does: they go into a workbook with their codes, and come back as displayed."""

import csv
import os
import subprocess
import zipfile
from pathlib import Path
from xml.sax.saxutils import escape, quoteattr

FIRST_CODE = 200  # smaller numbers are those of formats that every program knows
CSV_AS_SHOWN = "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,true"
LONGEST_RUN = 300  # seconds

PARTS = {
    "[Content_Types].xml": """<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">
<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>
<Default Extension="xml" ContentType="application/xml"/>
<Override PartName="/xl/workbook.xml" ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml"/>
<Override PartName="/xl/worksheets/sheet1.xml" ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml"/>
<Override PartName="/xl/styles.xml" ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml"/>
</Types>""",
    "_rels/.rels": """<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">
<Relationship Id="r1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument" Target="xl/workbook.xml"/>
</Relationships>""",
    "xl/_rels/workbook.xml.rels": """<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">
<Relationship Id="r1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet" Target="worksheets/sheet1.xml"/>
<Relationship Id="r2" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/styles" Target="styles.xml"/>
</Relationships>""",
    "xl/workbook.xml": """<workbook xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships"><sheets><sheet name="Values" sheetId="1" r:id="r1"/></sheets></workbook>""",
}


def _styles(codes):
    formats = "".join(f'<numFmt numFmtId="{FIRST_CODE + i}" formatCode={quoteattr(code)}/>'
                      for i, code in enumerate(codes))
    cells = "".join(f'<xf numFmtId="{FIRST_CODE + i}" applyNumberFormat="1" xfId="0"/>'
                    for i in range(len(codes)))
    return f"""<styleSheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main">
<numFmts count="{len(codes)}">{formats}</numFmts>
<fonts count="1"><font><sz val="11"/><name val="Carlito"/></font></fonts>
<fills count="1"><fill><patternFill patternType="none"/></fill></fills>
<borders count="1"><border/></borders>
<cellStyleXfs count="1"><xf numFmtId="0"/></cellStyleXfs>
<cellXfs count="{len(codes) + 1}"><xf numFmtId="0" xfId="0"/>{cells}</cellXfs>
</styleSheet>"""


def _cell(value, row, style):
    place = f'r="A{row}" s="{style}"'
    if isinstance(value, bool):
        return f'<c {place} t="b"><v>{int(value)}</v></c>'
    if isinstance(value, str):
        return f'<c {place} t="inlineStr"><is><t xml:space="preserve">{escape(value)}</t></is></c>'
    return f"<c {place}><v>{value!r}</v></c>"


def _sheet(pairs, style_of):
    rows = "".join(f'<row r="{row}">{_cell(value, row, style_of[code])}</row>'
                   for row, (code, value) in enumerate(pairs, 1))
    return f"""<worksheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main">
<cols><col min="1" max="1" width="250" customWidth="1"/></cols>
<sheetData>{rows}</sheetData></worksheet>"""


def _write_workbook(path, pairs):
    codes = list(dict.fromkeys(code for code, _ in pairs))
    style_of = {code: i for i, code in enumerate(codes, 1)}
    parts = {**PARTS, "xl/styles.xml": _styles(codes),
             "xl/worksheets/sheet1.xml": _sheet(pairs, style_of)}
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as package:
        for name, text in parts.items():
            package.writestr(name, '<?xml version="1.0" encoding="UTF-8"?>\n' + text)


def office_texts(pairs, folder):
    """The text of each pair of a code and a value."""
    book = Path(folder) / "values.xlsx"
    _write_workbook(book, pairs)
    subprocess.run(
        ["soffice", f"-env:UserInstallation=file://{folder}/profile", "--headless", "--norestore",
         "--convert-to", CSV_AS_SHOWN, "--outdir", folder, str(book)],
        env={**os.environ, "LC_ALL": "C.UTF-8", "TZ": "UTC"}, check=True, timeout=LONGEST_RUN,
        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    with open(Path(folder) / "values.csv", encoding="utf-8", newline="") as lines:
        texts = [row[0] if row else "" for row in csv.reader(lines)]
    return texts + [""] * (len(pairs) - len(texts))
