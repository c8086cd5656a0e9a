#include "xlsx/workbook_fixture.h"

#include <gtest/gtest.h>

namespace orrery::xlsx {
namespace {

constexpr std::string_view kTwoSheets =
    "<sheets><sheet name=\"Desk\" sheetId=\"1\" r:id=\"rId1\"/>"
    "<sheet name=\"Year\" sheetId=\"2\" r:id=\"rId2\"/></sheets>";

/// Desk, which is renamed; its copy; Year.
const std::vector<SavedSheet> kDeskCopied = {
    {"Jan", 0, false, 0, ""}, {"Feb", 0, true, 3, "rId3"}, {"Year", 1, false, 0, ""}};

struct NamesCase {
    const char* name;
    std::string_view names;
    std::string_view expected;
};
class DefinedNamesTest : public testing::TestWithParam<NamesCase> {};
TEST_P(DefinedNamesTest, FollowTheSheets)
{
    const WorkbookFixture workbook(std::string(kTwoSheets) + std::string(GetParam().names));
    const auto saved = workbook.Save(kDeskCopied);
    EXPECT_EQ(saved.substr(saved.find("</sheets>") + 9), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    OfSheets, DefinedNamesTest,
    testing::Values(
        NamesCase{
            "Repeated",
            "<definedName name=\"_xlnm.Print_Area\" "
            "localSheetId=\"0\">Desk!$A$1:$B$2</definedName>",
            "<definedName name=\"_xlnm.Print_Area\" localSheetId=\"0\">Jan!$A$1:$B$2</definedName>"
            "<definedName name=\"_xlnm.Print_Area\" "
            "localSheetId=\"1\">Feb!$A$1:$B$2</definedName>"},
        NamesCase{"MovedAlong",
                  "<definedName name=\"_xlnm.Print_Titles\" "
                  "localSheetId=\"1\">Year!$1:$2,Desk!$A:$A</definedName>",
                  "<definedName name=\"_xlnm.Print_Titles\" "
                  "localSheetId=\"2\">Year!$1:$2,Jan!$A:$A</definedName>"},
        NamesCase{"WithItsAttributes",
                  "<definedName name=\"_xlnm._FilterDatabase\" localSheetId=\"0\" hidden=\"1\" "
                  "comment=\"&amp;\">Desk!$A$1</definedName>",
                  "<definedName name=\"_xlnm._FilterDatabase\" localSheetId=\"0\" hidden=\"1\" "
                  "comment=\"&amp;\">Jan!$A$1</definedName>"
                  "<definedName name=\"_xlnm._FilterDatabase\" localSheetId=\"1\" hidden=\"1\" "
                  "comment=\"&amp;\">Feb!$A$1</definedName>"},
        NamesCase{"ReferringElsewhere",
                  "<definedName name=\"x\" localSheetId=\"0\">Year!$A$1</definedName>",
                  "<definedName name=\"x\" localSheetId=\"0\">Year!$A$1</definedName>"
                  "<definedName name=\"x\" localSheetId=\"1\">Year!$A$1</definedName>"},
        NamesCase{"MacroOfTheSheet",
                  "<definedName name=\"x\" localSheetId=\"0\" function=\"1\" "
                  "vbProcedure=\"1\">0</definedName>",
                  "<definedName name=\"x\" localSheetId=\"0\" function=\"1\" "
                  "vbProcedure=\"1\">0</definedName>"
                  "<definedName name=\"x\" localSheetId=\"1\" function=\"1\" "
                  "vbProcedure=\"1\">0</definedName>"},
        NamesCase{"WithoutFormula", "<definedName name=\"x\" localSheetId=\"0\"/>",
                  "<definedName name=\"x\" localSheetId=\"0\"/><definedName name=\"x\" "
                  "localSheetId=\"1\"/>"},
        NamesCase{"OfTable", "<definedName name=\"x\" localSheetId=\"0\">Days[Day]</definedName>",
                  "<definedName name=\"x\" localSheetId=\"0\">Days[Day]</definedName>"
                  "<definedName name=\"x\" localSheetId=\"1\">Days_3[Day]</definedName>"},
        NamesCase{"OfNoSheet", "<definedName name=\"x\" localSheetId=\"7\">Desk!$A$1</definedName>",
                  "<definedName name=\"x\" localSheetId=\"7\">Desk!$A$1</definedName>"},
        NamesCase{"OfBrokenSheet",
                  "<definedName name=\"x\" localSheetId=\"-1\">Desk!$A$1</definedName>",
                  "<definedName name=\"x\" localSheetId=\"-1\">Desk!$A$1</definedName>"},
        NamesCase{"TwiceInTheFile",
                  "<definedName name=\"x\" localSheetId=\"0\">1</definedName><definedName "
                  "name=\"X\" localSheetId=\"0\">2</definedName>",
                  "<definedName name=\"x\" localSheetId=\"0\">1</definedName><definedName "
                  "name=\"x\" localSheetId=\"1\">1</definedName>"
                  "<definedName name=\"X\" localSheetId=\"0\">2</definedName>"}),
    [](const auto& test) { return std::string(test.param.name); });

INSTANTIATE_TEST_SUITE_P(
    OfTheWorkbook, DefinedNamesTest,
    testing::Values(
        NamesCase{"WorkbookNameOfTheModel", "<definedName name=\"x\">Desk!$A$1</definedName>",
                  "<definedName name=\"x\">Jan!$A$1</definedName>"
                  "<definedName localSheetId=\"1\" name=\"x\">Feb!$A$1</definedName>"},
        NamesCase{
            "AmongOthers", "<definedName name=\"x\">SUM(Year!$A$1,Desk!$A$1)</definedName>",
            "<definedName name=\"x\">SUM(Year!$A$1,Jan!$A$1)</definedName>"
            "<definedName localSheetId=\"1\" name=\"x\">SUM(Year!$A$1,Feb!$A$1)</definedName>"},
        NamesCase{"HiddenName", "<definedName name=\"x\" hidden='1'>Desk!$A$1</definedName>",
                  "<definedName name=\"x\" hidden='1'>Jan!$A$1</definedName>"
                  "<definedName localSheetId=\"1\" name=\"x\" hidden='1'>Feb!$A$1</definedName>"},
        NamesCase{"Table", "<definedName name=\"x\">Days[Day]</definedName>",
                  "<definedName name=\"x\">Days[Day]</definedName>"
                  "<definedName localSheetId=\"1\" name=\"x\">Days_3[Day]</definedName>"},
        NamesCase{"OtherSheet", "<definedName name=\"x\">Year!$A$1</definedName>",
                  "<definedName name=\"x\">Year!$A$1</definedName>"},
        NamesCase{"Constant", "<definedName name=\"x\">\"Desk!A1\"</definedName>",
                  "<definedName name=\"x\">\"Desk!A1\"</definedName>"},
        NamesCase{"OtherBook", "<definedName name=\"x\">[1]Desk!$A$1</definedName>",
                  "<definedName name=\"x\">[1]Desk!$A$1</definedName>"},
        NamesCase{"Macro",
                  "<definedName name=\"x\" function=\"1\" xlm=\"1\">Desk!$A$1</definedName>",
                  "<definedName name=\"x\" function=\"1\" xlm=\"1\">Jan!$A$1</definedName>"},
        NamesCase{"SheetHasItsOwn",
                  "<definedName name=\"x\">Desk!$A$1</definedName><definedName name=\"X\" "
                  "localSheetId=\"0\">Desk!$B$1</definedName>",
                  "<definedName name=\"x\">Jan!$A$1</definedName><definedName name=\"X\" "
                  "localSheetId=\"0\">Jan!$B$1</definedName>"
                  "<definedName name=\"X\" localSheetId=\"1\">Feb!$B$1</definedName>"},
        NamesCase{"OtherSheetHasItsOwn",
                  "<definedName name=\"x\">Desk!$A$1</definedName><definedName name=\"x\" "
                  "localSheetId=\"1\">1</definedName>",
                  "<definedName name=\"x\">Jan!$A$1</definedName><definedName localSheetId=\"1\" "
                  "name=\"x\">Feb!$A$1</definedName>"
                  "<definedName name=\"x\" localSheetId=\"2\">1</definedName>"},
        NamesCase{"Escaped", "<definedName name=\"x\">Desk!$A$1&amp;\"&lt;\"</definedName>",
                  "<definedName name=\"x\">Jan!$A$1&amp;\"&lt;\"</definedName>"
                  "<definedName localSheetId=\"1\" name=\"x\">Feb!$A$1&amp;\"&lt;\"</definedName>"},
        NamesCase{"DeletedReference", "<definedName name=\"x\">#REF!</definedName>",
                  "<definedName name=\"x\">#REF!</definedName>"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(DefinedNamesTest, EveryCopyHasItsOwn)
{
    const WorkbookFixture workbook(std::string(kTwoSheets) +
                                   "<definedName name=\"x\">Desk!$A$1</definedName>");
    const auto saved = workbook.Save({{"Desk", 0, false, 0, ""},
                                      {"Desk (2)", 0, true, 3, "rId3"},
                                      {"Year", 1, false, 0, ""},
                                      {"Desk (3)", 0, true, 4, "rId4"},
                                      {"Year (2)", 1, true, 5, "rId5"}});
    EXPECT_EQ(saved.substr(saved.find("</sheets>") + 9),
              "<definedName name=\"x\">Desk!$A$1</definedName>"
              "<definedName localSheetId=\"1\" name=\"x\">'Desk (2)'!$A$1</definedName>"
              "<definedName localSheetId=\"3\" name=\"x\">'Desk (3)'!$A$1</definedName>");
}

TEST(DefinedNamesTest, AreListedDecoded)
{
    const WorkbookFixture workbook(
        std::string(kTwoSheets) +
        "<definedName name=\"a&amp;b\" localSheetId=\"1\">1&lt;2</definedName>"
        "<definedName name=\"c\"/>");
    ASSERT_EQ(workbook.Part().Names().size(), 2U);
    EXPECT_EQ(workbook.Part().Names()[0].Name, "a&b");
    EXPECT_EQ(workbook.Part().Names()[0].LocalSheet, 1U);
    EXPECT_EQ(workbook.Part().Names()[0].Formula, "1<2");
    EXPECT_FALSE(workbook.Part().Names()[1].LocalSheet);
    EXPECT_EQ(workbook.Part().Names()[1].Formula, "");
}

} // namespace
} // namespace orrery::xlsx
