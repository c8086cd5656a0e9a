// Opens a workbook, renames, copies and fills its first sheet, and saves it: the result is an error
// or a workbook that opens again, whatever the input. An input that begins like a zip container is
// the workbook; any other replaces one part of a small workbook: the first byte chooses the part,
// the rest is its text.

#include "edit_workbook.h"
#include "parts.h"

#include "engines/builtin/xlsx/workbook.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace {

using namespace orrery;

const std::array<fuzz::Part, 9> kParts = {
    {
        {"[Content_Types].xml",
         R"(<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types"><Default Extension="xml" ContentType="application/xml"/><Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/><Override PartName="/xl/workbook.xml" ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml"/><Override PartName="/xl/sheet1.xml" ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml"/><Override PartName="/xl/sst.xml" ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.sharedStrings+xml"/><Override PartName="/xl/styles.xml" ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml"/><Override PartName="/xl/table1.xml" ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.table+xml"/></Types>)"},
        {"_rels/.rels",
         R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships"><Relationship Id="rId1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument" Target="xl/workbook.xml"/></Relationships>)"},
        {"xl/workbook.xml",
         R"(<workbook xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships"><sheets><sheet name="Model" sheetId="1" r:id="rId1"/></sheets><definedNames><definedName name="N">Model!$A$1</definedName></definedNames></workbook>)"},
        {"xl/_rels/workbook.xml.rels", R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships"><Relationship Id="rId1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet" Target="sheet1.xml"/><Relationship Id="rId2" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/sharedStrings" Target="sst.xml"/><Relationship Id="rId3" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/styles" Target="styles.xml"/></Relationships>)"},
        {"xl/sheet1.xml",
         R"(<worksheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main"><sheetData><row r="2"><c r="B2" s="1"><f>Model!A1+1</f><v>1</v></c></row></sheetData></worksheet>)"},
        {"xl/_rels/sheet1.xml.rels",
         R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships"><Relationship Id="rId1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/table" Target="table1.xml"/></Relationships>)"},
        {"xl/sst.xml",
         R"(<sst xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" count="1" uniqueCount="1"><si><t>a</t></si></sst>)"},
        {"xl/styles.xml",
         R"(<styleSheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main"><cellXfs><xf/><xf><protection locked="0"/></xf></cellXfs></styleSheet>)"},
        {"xl/table1.xml",
         R"(<table xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" id="1" name="T" displayName="T" ref="A1:A2"><tableColumns count="1"><tableColumn id="1" name="a"/></tableColumns></table>)"},
    }};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const auto source = fuzz::Scratch(".in");
    fuzz::WriteWithPart(source, kParts, {reinterpret_cast<const char*>(data), size});
    fuzz::EditAndOpenAgain<xlsx::Workbook>(source, {"Model"});
    return 0;
}
