#include "xlsx/look/cells/sheet_text.h"

#include <gtest/gtest.h>
#include <string>

namespace orrery::xlsx {
namespace {

using book::CellContent;
using book::CellError;

CellContent Text(const char* text)
{
    return std::string(text);
}

TEST(CellReader, ReadsValuesOfEveryType)
{
    const CellSheet sheet(
        "<row r=\"1\"><c r=\"A1\"><v>1.5E3</v></c><c r=\"B1\" t=\"s\"><v>0</v></c>"
        "<c r=\"C1\" t=\"str\"><v>a&amp;b</v></c><c r=\"D1\" t=\"inlineStr\"><is><t>in</t></is></c>"
        "<c r=\"E1\" t=\"b\"><v>1</v></c><c r=\"F1\" t=\"e\"><v>#DIV/0!</v></c>"
        "<c r=\"G1\" t=\"d\"><v>2026-11-23</v></c><c r=\"H1\"/><c r=\"I1\"><v>x</v></c>"
        "<c r=\"J1\" t=\"e\"><v>#FIELD!</v></c></row>",
        "<si><t>shared</t></si>");
    EXPECT_EQ(sheet.Content(1, 1), CellContent(1500.0));
    EXPECT_EQ(sheet.Content(1, 2), Text("shared"));
    EXPECT_EQ(sheet.Content(1, 3), Text("a&b"));
    EXPECT_EQ(sheet.Content(1, 4), Text("in"));
    EXPECT_EQ(sheet.Content(1, 5), CellContent(true));
    EXPECT_EQ(sheet.Content(1, 6), CellContent(CellError::DivisionByZero));
    EXPECT_EQ(sheet.Content(1, 7), CellContent(46349.0));
    EXPECT_EQ(sheet.Content(1, 8), CellContent());
    EXPECT_EQ(sheet.Content(1, 9), CellContent());
    EXPECT_EQ(sheet.Content(1, 10), CellContent(CellError::Value));
}

TEST(CellReader, DecodesEscapesAndSections)
{
    const CellSheet sheet("<row><c t=\"str\"><v>a_x000D_b</v></c>"
                          "<c t=\"str\"><v>x<![CDATA[<&]]>y&lt;</v></c>"
                          "<c t=\"s\"><v>0</v></c></row>",
                          "<si><t>_x005F_x0041_</t><rPh sb=\"0\" eb=\"1\"><t>no</t></rPh></si>");
    EXPECT_EQ(sheet.Content(1, 1), Text("a\rb"));
    EXPECT_EQ(sheet.Content(1, 2), Text("x<&y<"));
    EXPECT_EQ(sheet.Content(1, 3), Text("_x0041_"));
}

TEST(CellReader, CountsRowsAndCellsWithoutAddresses)
{
    const CellSheet sheet("<row><c><v>1</v></c><c><v>2</v></c></row>"
                          "<row r=\"5\"><c r=\"C5\"><v>3</v></c><c><v>4</v></c></row>"
                          "<row><c><v>5</v></c></row>");
    EXPECT_EQ(sheet.Content(1, 2), CellContent(2.0));
    EXPECT_EQ(sheet.Content(5, 4), CellContent(4.0));
    EXPECT_EQ(sheet.Content(6, 1), CellContent(5.0));
    EXPECT_TRUE(sheet.Look().leftOut.empty());
}

TEST(CellReader, TellsOfAFormulaThatIsTooLong)
{
    const CellSheet sheet("<row><c><f>" + std::string(100'000, '1') + "</f><v>2</v></c></row>");
    EXPECT_EQ(sheet.Content(1, 1), CellContent(2.0));
    EXPECT_EQ(sheet.Formula(1, 1), "");
    ASSERT_EQ(sheet.Look().leftOut.size(), 1U);
    EXPECT_EQ(sheet.Look().leftOut[0].where, "A1");
}

TEST(CellReader, LeavesCellsOutsideTheSheetOut)
{
    const CellSheet sheet("<row r=\"1\"><c r=\"XFD1\"><v>1</v></c><c r=\"XFE1\"><v>2</v></c></row>"
                          "<row r=\"1048576\"><c r=\"A1048576\"><v>3</v></c></row>"
                          "<row r=\"1048577\"><c r=\"A1048577\"><v>4</v></c></row>");
    EXPECT_EQ(sheet.Look().cells.size(), 2U);
    EXPECT_EQ(sheet.Content(1048576, 1), CellContent(3.0));
    ASSERT_EQ(sheet.Look().leftOut.size(), 2U);
    EXPECT_EQ(sheet.Look().leftOut[0],
              (book::LeftOut{"cell", "XFE1", "it lies outside the sheet"}));
    EXPECT_EQ(sheet.Look().leftOut[1].where, "1048577");
}

TEST(CellReader, SortsCellsAndKeepsTheLastOfEqualOnes)
{
    const CellSheet sheet("<row r=\"2\" ht=\"20\"><c r=\"B2\"><v>1</v></c><c r=\"A2\"><v>2</v></c>"
                          "</row><row r=\"1\" ht=\"30\"><c r=\"A1\"><v>3</v></c></row>"
                          "<row r=\"2\" ht=\"25\"><c r=\"B2\"><v>4</v></c></row>");
    ASSERT_EQ(sheet.Look().cells.size(), 3U);
    EXPECT_EQ(sheet.Content(1, 1), CellContent(3.0));
    EXPECT_EQ(sheet.Content(2, 1), CellContent(2.0));
    EXPECT_EQ(sheet.Content(2, 2), CellContent(4.0));
    ASSERT_EQ(sheet.Look().rows.size(), 2U);
    EXPECT_EQ(sheet.Look().FindRow(2)->height, 25);
}

TEST(CellReader, ReadsRows)
{
    const CellSheet sheet(
        "<row r=\"1\" spans=\"1:3\"/><row r=\"2\" ht=\"9.75\" customHeight=\"1\"/>"
        "<row r=\"3\" hidden=\"1\"/><row r=\"4\" s=\"1\" customFormat=\"1\"/>"
        "<row r=\"5\" s=\"1\"/><row r=\"6\" ht=\"9999\"/>",
        "", "<cellXfs><xf/><xf numFmtId=\"9\"/></cellXfs>");
    const auto& look = sheet.Look();
    EXPECT_EQ(look.FindRow(1), nullptr);
    EXPECT_EQ(look.FindRow(2)->height, 9.75);
    EXPECT_TRUE(look.FindRow(2)->isCustomHeight);
    EXPECT_TRUE(look.FindRow(3)->isHidden);
    EXPECT_EQ(look.Style({4, 7}).numberFormat, "0%");
    EXPECT_EQ(look.FindRow(5), nullptr); // without customFormat the style does not count
    EXPECT_EQ(look.FindRow(6)->height, 409.5);
}

TEST(CellReader, ListsEachUsedStyleOnce)
{
    const CellSheet sheet("<row><c s=\"2\"/><c s=\"2\"/><c s=\"99\"/><c/></row>", "",
                          "<cellXfs><xf/><xf numFmtId=\"9\"/><xf numFmtId=\"10\"/></cellXfs>");
    ASSERT_EQ(sheet.Look().styles.size(), 2U);
    EXPECT_EQ(sheet.Look().styles[1].numberFormat, "0.00%");
    EXPECT_EQ(sheet.Find(1, 1)->style, 1U);
    EXPECT_EQ(sheet.Find(1, 3)->style, 0U);
    EXPECT_EQ(sheet.Find(1, 4)->style, 0U);
}

TEST(CellReader, WritesSharedFormulasOutForEachCell)
{
    const CellSheet sheet("<row r=\"1\"><c r=\"B1\"><f t=\"shared\" si=\"3\"/></c></row>"
                          "<row r=\"2\"><c r=\"B2\"><f t=\"shared\" ref=\"B2:B9\" si=\"3\">"
                          "A1+$A$1</f><v>7</v></c></row>"
                          "<row r=\"3\"><c r=\"B3\"><f t=\"shared\" si=\"3\"/><v>8</v></c>"
                          "<c r=\"C3\"><f t=\"shared\" si=\"4\"/></c></row>");
    EXPECT_EQ(sheet.Formula(2, 2), "A1+$A$1");
    EXPECT_EQ(sheet.Formula(3, 2), "A2+$A$1");
    EXPECT_EQ(sheet.Formula(1, 2), "A1048576+$A$1"); // wraps at the edge
    EXPECT_EQ(sheet.Formula(3, 3), "");
    EXPECT_EQ(sheet.Content(3, 2), CellContent(8.0));
}

TEST(CellReader, ReadsArrayFormulas)
{
    const CellSheet sheet("<row><c><f t=\"array\" ref=\"A1:B2\">ROW(A1:A2)</f><v>1</v></c>"
                          "<c><v>2</v></c></row>");
    ASSERT_EQ(sheet.Look().formulas.size(), 1U);
    EXPECT_EQ(sheet.Look().formulas[0].array, (book::CellRange{{1, 1}, {2, 2}}));
    EXPECT_EQ(sheet.Find(1, 2)->formula, -1);
}

TEST(CellReader, LeavesDataTablesOut)
{
    const CellSheet sheet(
        "<row><c r=\"B1\"><f t=\"dataTable\" ref=\"B1:B4\" r1=\"A1\"/><v>5</v></c>"
        "</row>");
    EXPECT_EQ(sheet.Content(1, 2), CellContent(5.0));
    EXPECT_EQ(sheet.Find(1, 2)->formula, -1);
    ASSERT_EQ(sheet.Look().leftOut.size(), 1U);
    EXPECT_EQ(sheet.Look().leftOut[0].what, "data table");
}

TEST(CellReader, DropsTheSignBeforeAFormula)
{
    const CellSheet sheet("<row><c><f> =SUM(A1)</f></c><c><f></f></c></row>");
    EXPECT_EQ(sheet.Formula(1, 1), "SUM(A1)");
    EXPECT_EQ(sheet.Find(1, 2)->formula, -1);
}

TEST(CellReader, ReadsRunsWithTheirFonts)
{
    const std::string rich =
        "<si><r><t>ab</t></r><r><rPr><b/><sz val=\"8\"/></rPr><t>c</t></r></si>";
    const CellSheet sheet("<row><c t=\"s\" s=\"1\"><v>0</v></c><c t=\"s\" s=\"1\"><v>0</v></c>"
                          "<c t=\"s\"><v>0</v></c></row>",
                          rich,
                          "<fonts><font/><font><sz val=\"20\"/><color rgb=\"FF0000FF\"/>"
                          "<name val=\"Arial\"/></font></fonts>"
                          "<cellXfs><xf/><xf fontId=\"1\"/></cellXfs>");
    const auto& look = sheet.Look();
    EXPECT_EQ(sheet.Content(1, 1), Text("abc"));
    ASSERT_EQ(look.richTexts.size(), 2U); // for each of the two styles
    EXPECT_EQ(sheet.Find(1, 1)->richText, sheet.Find(1, 2)->richText);
    const auto& runs = look.richTexts[static_cast<std::size_t>(sheet.Find(1, 1)->richText)];
    ASSERT_EQ(runs.size(), 2U);
    EXPECT_EQ(runs[0].begin, 0U);
    EXPECT_EQ(runs[0].font.size, 20);
    EXPECT_EQ(runs[1].begin, 2U);
    EXPECT_TRUE(runs[1].font.bold);
    EXPECT_EQ(runs[1].font.size, 8);
    EXPECT_EQ(runs[1].font.name, "Arial");
    EXPECT_EQ(runs[0].font.color, (book::Color{0, 0, 255})); // the cell's own font
    EXPECT_EQ(runs[1].font.color, std::nullopt);             // automatic
}

TEST(CellReader, TellsWhatSharedTextIsMissing)
{
    const CellSheet sheet("<row><c t=\"s\"><v>4</v></c><c t=\"s\"><v>-1</v></c></row>",
                          "<si><t>a</t></si>");
    EXPECT_EQ(sheet.Content(1, 1), CellContent());
    EXPECT_EQ(sheet.Look().leftOut.size(), 2U);
}

TEST(CellReader, BoundsTextsOfManyCells)
{
    CellLimits limits;
    limits.textBytes = 10000;
    std::string cells;
    for (int i = 0; i < 300; ++i)
        cells += "<c t=\"s\"><v>0</v></c>";
    const CellSheet sheet("<row>" + cells + "</row>",
                          "<si><t>" + std::string(1000, 'x') + "</t></si>", "", limits);
    EXPECT_EQ(sheet.Look().cells.size(), 300U);
    EXPECT_EQ(std::get<std::string>(sheet.Content(1, 10)).size(), 1000U);
    EXPECT_EQ(sheet.Content(1, 11), CellContent());
    EXPECT_EQ(sheet.Look().leftOut.size(), 200U);
}

TEST(CellReader, BoundsFormulasOfManyCells)
{
    CellLimits limits;
    limits.formulaBytes = 100;
    std::string cells = "<c><f t=\"shared\" si=\"0\">A1+22222</f></c>";
    for (int i = 0; i < 300; ++i)
        cells += "<c><f t=\"shared\" si=\"0\"/></c>";
    const CellSheet sheet("<row>" + cells + "</row>", "", "", limits);
    EXPECT_EQ(sheet.Look().formulas.size(), 12U);
    EXPECT_EQ(sheet.Formula(1, 12), "L1+22222");
    EXPECT_EQ(sheet.Look().leftOut.size(), 1U);
}

} // namespace
} // namespace orrery::xlsx
