// Reads how the sheets of a workbook look: the result is an error or looks that keep what their
// headers say, whatever the input. An input that begins like a zip container is the workbook; any
// other replaces one part of a small workbook: the first byte chooses the part, the rest is its
// text.

#include "engines/builtin/xlsx/look/look.h"
#include "engines/builtin/zip/writer.h"
#include "util/error.h"
#include "util/file_replace.h"

#include "edit_workbook.h"
#include "require.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace {

using namespace orrery;
using fuzz::Require;

struct Part {
    const char* name;
    const char* text;
};

const std::array<Part, 11> kParts =
    {
        {
            {"[Content_Types].xml",
             R"(<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types"><Default Extension="xml" ContentType="application/xml"/><Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/><Override PartName="/xl/workbook.xml" ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml"/></Types>)"},
            {"_rels/.rels",
             R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships"><Relationship Id="rId1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument" Target="xl/workbook.xml"/></Relationships>)"},
            {"xl/workbook.xml",
             R"(<workbook xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships"><workbookPr date1904="1"/><bookViews><workbookView activeTab="0"/></bookViews><sheets><sheet name="Model" sheetId="1" r:id="rId1"/></sheets><definedNames><definedName name="_xlnm.Print_Area" localSheetId="0">Model!$A$1:$B$2</definedName><definedName name="_xlnm.Print_Titles" localSheetId="0">Model!$A:$A,Model!$1:$2</definedName></definedNames></workbook>)"},
            {"xl/_rels/workbook.xml.rels", R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships"><Relationship Id="rId1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet" Target="sheet1.xml"/><Relationship Id="rId2" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/sharedStrings" Target="sst.xml"/><Relationship Id="rId3" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/styles" Target="styles.xml"/><Relationship Id="rId4" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/theme" Target="theme.xml"/></Relationships>)"},
            {"xl/sheet1.xml",
             R"(<worksheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" xmlns:x14="u:14" xmlns:xm="u:m"><sheetPr><pageSetUpPr fitToPage="1"/></sheetPr><sheetViews><sheetView colorId="3" defaultGridColor="0"><pane xSplit="1" ySplit="2" state="frozen"/></sheetView></sheetViews><sheetFormatPr defaultRowHeight="15"/><cols><col min="1" max="3" width="9.1" style="1"/></cols><sheetData><row r="2" ht="20" s="1" customFormat="1"><c r="B2" s="1"><f t="shared" si="0" ref="B2:B4">A1+1</f><v>1</v></c><c r="C2" t="s"><v>0</v></c><c t="d"><v>2026-11-23T12:00:00</v></c></row><row><c r="B3"><f t="shared" si="0"/></c><c t="e"><v>#N/A</v></c><c t="inlineStr"><is><r><t>a</t></r></is></c></row></sheetData><mergeCells><mergeCell ref="A1:B1"/></mergeCells><conditionalFormatting sqref="A1:B2"><cfRule type="dataBar" priority="1"><dataBar><cfvo type="min"/><cfvo type="max"/><color rgb="FF00FF00"/></dataBar><extLst><ext><x14:id>{A}</x14:id></ext></extLst></cfRule></conditionalFormatting><pageMargins left="1"/><pageSetup paperSize="9" paperWidth="20mm"/><headerFooter differentFirst="1"><oddHeader>&amp;L1</oddHeader></headerFooter><rowBreaks><brk id="3"/></rowBreaks><extLst><ext><x14:conditionalFormattings><x14:conditionalFormatting><x14:cfRule type="dataBar" id="{A}"><x14:dataBar><x14:cfvo type="autoMin"/></x14:dataBar></x14:cfRule><xm:sqref>A1</xm:sqref></x14:conditionalFormatting></x14:conditionalFormattings></ext><ext><x14:sparklineGroups><x14:sparklineGroup high="1"><x14:colorHigh theme="1"/><x14:sparklines><x14:sparkline><xm:f>A1:B1</xm:f><xm:sqref>C1</xm:sqref></x14:sparkline></x14:sparklines></x14:sparklineGroup></x14:sparklineGroups></ext></extLst></worksheet>)"},
            {"xl/_rels/sheet1.xml.rels",
             R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships"><Relationship Id="rId1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/table" Target="table1.xml"/><Relationship Id="rId2" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/pivotTable" Target="pivot.xml"/></Relationships>)"},
            {"xl/sst.xml",
             R"(<sst xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main"><si><r><rPr><b/><sz val="9"/></rPr><t>a_x000D_</t></r><r><t>b</t></r></si></sst>)"},
            {"xl/styles.xml",
             R"(<styleSheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main"><numFmts><numFmt numFmtId="164" formatCode="0.0"/></numFmts><fonts><font/><font><b/><sz val="8"/><color theme="4" tint="-0.5"/><name val="x"/><scheme val="minor"/></font></fonts><fills><fill><patternFill patternType="solid"><fgColor indexed="9"/></patternFill></fill><fill><gradientFill><stop position="0"><color auto="1"/></stop></gradientFill></fill></fills><borders><border><left style="thin"><color rgb="FF000000"/></left></border></borders><cellStyleXfs><xf/></cellStyleXfs><cellXfs><xf/><xf numFmtId="164" fontId="1" fillId="1"><alignment textRotation="135" indent="2"/></xf></cellXfs><cellStyles><cellStyle builtinId="0" xfId="0"/></cellStyles><dxfs><dxf><font><b/></font><fill><patternFill><bgColor theme="5"/></patternFill></fill></dxf></dxfs><tableStyles><tableStyle name="Mine"><tableStyleElement type="headerRow" dxfId="0"/></tableStyle></tableStyles><colors><indexedColors><rgbColor rgb="00112233"/></indexedColors></colors></styleSheet>)"},
            {"xl/table1.xml",
             R"(<table xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" displayName="T" ref="A1:A2"><tableColumns count="1"><tableColumn id="1" name="a"/></tableColumns><tableStyleInfo name="TableStyleDark9"/></table>)"},
            {"xl/pivot.xml",
             R"(<pivotTableDefinition name="P"><location ref="A3:C20" firstDataRow="1"/><pivotTableStyleInfo name="PivotStyleLight16"/></pivotTableDefinition>)"},
            {"xl/theme.xml",
             R"(<a:theme xmlns:a="u:a"><a:themeElements><a:clrScheme><a:dk1><a:sysClr val="windowText" lastClr="000000"/></a:dk1><a:accent1><a:srgbClr val="4472C4"/></a:accent1></a:clrScheme><a:fontScheme><a:minorFont><a:latin typeface="x"/></a:minorFont></a:fontScheme></a:themeElements></a:theme>)"},
        }};

void WriteInput(const std::filesystem::path& path, std::string_view input)
{
    if (input.starts_with("PK")) {
        util::ReplaceFile(path, input);
        return;
    }
    const std::size_t chosen =
        input.empty() ? 0 : static_cast<unsigned char>(input.front()) % kParts.size();
    orrery::zip::Writer writer;
    for (std::size_t i = 0; i < kParts.size(); ++i) {
        const std::string text(i == chosen && !input.empty() ? input.substr(1) : kParts[i].text);
        writer.AddEntry(kParts[i].name, [text](orrery::zip::EntrySink& sink) { sink.Add(text); });
    }
    writer.Write(path);
}

bool IsInside(const book::CellRange& range)
{
    return range.first.row >= 1 && range.first.column >= 1 && range.first.row <= range.last.row &&
           range.first.column <= range.last.column && range.last.row <= 1048576 &&
           range.last.column <= 16384;
}

void CheckCells(const book::SheetLook& sheet)
{
    book::CellAddress last{0, 0};
    for (const book::Cell& cell : sheet.cells) {
        Require(last < cell.address && IsInside({cell.address, cell.address}));
        Require(cell.style < sheet.styles.size());
        Require(cell.formula < static_cast<std::int64_t>(sheet.formulas.size()));
        Require(cell.richText < static_cast<std::int64_t>(sheet.richTexts.size()));
        last = cell.address;
        if (cell.richText < 0)
            continue;
        const auto& text = std::get<std::string>(cell.content);
        for (const auto& run : sheet.richTexts[static_cast<std::size_t>(cell.richText)])
            Require(run.begin < text.size());
    }
}

void CheckSheet(const book::SheetLook& sheet)
{
    Require(!sheet.styles.empty());
    CheckCells(sheet);
    std::int32_t column = 0;
    for (const book::ColumnLook& one : sheet.columns) {
        Require(one.first > column && one.last >= one.first && one.last <= 16384);
        Require(one.style < sheet.styles.size());
        column = one.last;
    }
    std::int32_t row = 0;
    for (const book::RowLook& one : sheet.rows) {
        Require(one.row > row && one.style.value_or(0) < sheet.styles.size());
        row = one.row;
    }
    for (const book::CellRange& merge : sheet.merges)
        Require(IsInside(merge));
    for (const book::ConditionalFormat& format : sheet.conditions) {
        Require(!format.ranges.empty() && !format.rules.empty());
        for (const book::CellRange& range : format.ranges)
            Require(IsInside(range));
    }
    for (const book::Table& table : sheet.tables)
        Require(IsInside(table.range));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const auto source = fuzz::Scratch(".in");
    WriteInput(source, {reinterpret_cast<const char*>(data), size});
    try {
        const auto view = xlsx::OpenLook(source);
        const std::size_t count = std::min<std::size_t>(view->Workbook().sheets.size(), 8);
        for (std::size_t index = 0; index < count; ++index)
            fuzz::Attempt([&] { CheckSheet(view->Sheet(index)); });
    }
    catch (const Error&) {
        // it is no workbook
    }
    std::filesystem::remove(source);
    return 0;
}
