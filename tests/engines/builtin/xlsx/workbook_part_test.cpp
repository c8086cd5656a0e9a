#include "xlsx/workbook_fixture.h"

#include "book/error.h"
#include "util/error.h"

#include <gtest/gtest.h>

namespace orrery::xlsx {
namespace {

constexpr std::string_view kSheets = "<sheets><sheet name=\"Desk\" sheetId=\"3\" r:id=\"rId1\"/>"
                                     "<sheet name=\"Year\" sheetId=\"1\" r:id=\"rId2\"/></sheets>";

/// Desk, its two copies, Year.
const std::vector<SavedSheet> kCopied = {{"Jan", 0, false, 0, ""},
                                         {"Feb", 0, true, 4, "rId8"},
                                         {"Mar", 0, true, 5, "rId9"},
                                         {"Year", 1, false, 0, ""}};

TEST(WorkbookPartTest, ReadsSheets)
{
    const WorkbookFixture workbook(
        "<sheets><sheet name=\"A &amp; B\" sheetId=\"7\" state=\"hidden\" r:id=\"rId1\"></sheet>"
        "<sheet r:id=\"rId2\" sheetId=\"x\" name='It&apos;s'/></sheets>");
    ASSERT_EQ(workbook.Part().Sheets().size(), 2U);
    EXPECT_EQ(workbook.Part().Sheets()[0].Name, "A & B");
    EXPECT_EQ(workbook.Part().Sheets()[0].SheetId, 7U);
    EXPECT_EQ(workbook.Part().Sheets()[0].RelationshipId, "rId1");
    EXPECT_EQ(workbook.Part().Sheets()[1].Name, "It's");
    EXPECT_EQ(workbook.Part().Sheets()[1].SheetId, 0U);
}

TEST(WorkbookPartTest, ReadsViewAndProtection)
{
    const WorkbookFixture workbook("<workbookProtection lockStructure=\"1\"/><bookViews>"
                                   "<workbookView activeTab=\"1\"/><workbookView activeTab=\"0\"/>"
                                   "</bookViews>" +
                                   std::string(kSheets));
    EXPECT_TRUE(workbook.Part().IsStructureProtected());
    EXPECT_EQ(workbook.Part().ActiveSheet(), 1U);
}

TEST(WorkbookPartTest, ActiveSheetIsTheFirstIfTheViewNamesNone)
{
    const std::string sheets(kSheets);
    EXPECT_EQ(WorkbookFixture(sheets).Part().ActiveSheet(), 0U);
    EXPECT_EQ(WorkbookFixture("<bookViews><workbookView activeTab=\"2\"/></bookViews>" + sheets)
                  .Part()
                  .ActiveSheet(),
              0U);
    EXPECT_FALSE(WorkbookFixture(sheets).Part().IsStructureProtected());
}

TEST(WorkbookPartTest, ReadsAnyPrefixesAndStrictNamespaces)
{
    const auto workbook = WorkbookFixture::OfXml(
        "<x:workbook xmlns:x=\"http://purl.oclc.org/ooxml/spreadsheetml/main\"><x:sheets>"
        "<x:sheet name=\"Desk\" sheetId=\"1\" "
        "xmlns:ns=\"http://purl.oclc.org/ooxml/officeDocument/relationships\" ns:id=\"rId3\"/>"
        "</x:sheets><other:sheets "
        "xmlns:other=\"urn:other\"><other:sheet/></other:sheets></x:workbook>");
    ASSERT_EQ(workbook.Part().Sheets().size(), 1U);
    EXPECT_EQ(workbook.Part().Sheets()[0].RelationshipId, "rId3");
    EXPECT_EQ(
        workbook.SaveXml({{"Desk", 0, false, 0, ""}, {"Copy", 0, true, 2, "rId4"}}, true),
        "<x:workbook xmlns:x=\"http://purl.oclc.org/ooxml/spreadsheetml/main\"><x:sheets>"
        "<x:sheet name=\"Desk\" sheetId=\"1\" "
        "xmlns:ns=\"http://purl.oclc.org/ooxml/officeDocument/relationships\" ns:id=\"rId3\"/>"
        "<x:sheet name=\"Copy\" sheetId=\"2\" "
        "xmlns:ns=\"http://purl.oclc.org/ooxml/officeDocument/relationships\" ns:id=\"rId4\"/>"
        "</x:sheets><x:calcPr fullCalcOnLoad=\"1\"/>"
        "<other:sheets xmlns:other=\"urn:other\"><other:sheet/></other:sheets></x:workbook>");
}

TEST(WorkbookPartTest, RefusesDamage)
{
    for (const std::string_view content :
         {"", "<sheets/>", "<sheets><sheet sheetId=\"1\"/></sheets>",
          "<sheets><sheet name=\"a\"></sheets>", "<sheets/><sheet name=\"a\"/>",
          "<o:sheets xmlns:o=\"urn:other\"><sheet name=\"a\"/></o:sheets>"}) {
        try {
            const WorkbookFixture workbook(content);
            ADD_FAILURE() << content;
        }
        catch (const util::Error& error) {
            EXPECT_EQ(error.Kind(), book::ErrorKind::DamagedWorkbook);
            EXPECT_NE(error.Cause().find("/xl/workbook.xml"), std::string::npos);
        }
    }
}

TEST(WorkbookPartTest, SavesUnchangedTextAsItWas)
{
    const WorkbookFixture workbook("\n <bookViews><workbookView activeTab='1'/></bookViews>\r\n" +
                                   std::string(kSheets) +
                                   "<definedNames><definedName name=\"a\">desk!$A$1</definedName>"
                                   "</definedNames><!-- x --><calcPr calcId=\"1\"/>");
    auto sheets = workbook.Originals();
    const auto saved = workbook.Save(sheets);
    // Only the spelling of the sheet's name changes, to that of the sheet.
    EXPECT_EQ(saved, "\n <bookViews><workbookView activeTab='1'/></bookViews>\r\n" +
                         std::string(kSheets) +
                         "<definedNames><definedName name=\"a\">Desk!$A$1</definedName>"
                         "</definedNames><!-- x --><calcPr calcId=\"1\"/>");
}

TEST(WorkbookPartTest, ListsCopiesAfterTheSheetThatTheyFollow)
{
    const WorkbookFixture workbook(
        "<sheets>\n<sheet name='Desk' sheetId=\"3\" state=\"hidden\" r:id=\"rId1\" "
        "x=\"y\"/>\n<sheet name=\"Year\" sheetId=\"1\" r:id=\"rId2\"/></sheets>");
    EXPECT_EQ(
        workbook.Save({{"It's", 0, false, 0, ""},
                       {"Year", 1, false, 0, ""},
                       {"It's (2)", 0, true, 4, "rId8"},
                       {"Year (2)", 1, true, 5, "rId9"}}),
        "<sheets>\n<sheet name='It&apos;s' sheetId=\"3\" state=\"hidden\" r:id=\"rId1\" x=\"y\"/>\n"
        "<sheet name=\"Year\" sheetId=\"1\" r:id=\"rId2\"/>"
        "<sheet name='It&apos;s (2)' sheetId=\"4\" state=\"hidden\" r:id=\"rId8\" x=\"y\"/>"
        "<sheet name=\"Year (2)\" sheetId=\"5\" r:id=\"rId9\"/></sheets>");
}

struct ViewCase {
    const char* name;
    std::string_view views;
    std::string_view expected;
};
class WorkbookViewsTest : public testing::TestWithParam<ViewCase> {};
TEST_P(WorkbookViewsTest, FollowTheOrder)
{
    const WorkbookFixture workbook(std::string(GetParam().views) + std::string(kSheets));
    const auto saved = workbook.Save(kCopied);
    EXPECT_EQ(saved.substr(0, saved.find("<sheets>")), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Views, WorkbookViewsTest,
    testing::Values(
        ViewCase{"None", "", ""}, ViewCase{"Default", "<workbookView/>", "<workbookView/>"},
        ViewCase{"First", "<workbookView activeTab=\"0\"/>", "<workbookView activeTab=\"0\"/>"},
        ViewCase{"Last", "<workbookView firstSheet=\"1\" activeTab=\"1\"/>",
                 "<workbookView firstSheet=\"3\" activeTab=\"3\"/>"},
        ViewCase{"Several",
                 "<workbookView activeTab=\"1\"/><workbookView/><workbookView activeTab='1'/>",
                 "<workbookView activeTab=\"3\"/><workbookView/><workbookView activeTab='3'/>"},
        ViewCase{"OutOfRange", "<workbookView activeTab=\"9\"/>",
                 "<workbookView activeTab=\"9\"/>"},
        ViewCase{"CustomView", "<customWorkbookView activeSheetId=\"1\"/>",
                 "<customWorkbookView activeSheetId=\"1\"/>"}),
    [](const auto& test) { return std::string(test.param.name); });

struct CalculationCase {
    const char* name;
    std::string_view behindSheets;
    std::string_view expected;
};
class CalculationTest : public testing::TestWithParam<CalculationCase> {};
TEST_P(CalculationTest, IsAskedFor)
{
    const WorkbookFixture workbook(std::string(kSheets) + std::string(GetParam().behindSheets));
    EXPECT_EQ(workbook.Save(workbook.Originals(), true),
              std::string(kSheets) + std::string(GetParam().expected));
    EXPECT_EQ(workbook.Save(workbook.Originals(), false),
              std::string(kSheets) + std::string(GetParam().behindSheets));
}
INSTANTIATE_TEST_SUITE_P(
    Parts, CalculationTest,
    testing::Values(
        CalculationCase{"Added", "<calcPr calcId=\"1\"/>",
                        "<calcPr fullCalcOnLoad=\"1\" calcId=\"1\"/>"},
        CalculationCase{"Set", "<calcPr fullCalcOnLoad=\"0\"/>", "<calcPr fullCalcOnLoad=\"1\"/>"},
        CalculationCase{"Missing", "", "<calcPr fullCalcOnLoad=\"1\"/>"},
        CalculationCase{
            "AfterNames", "<definedNames></definedNames><oleSize ref=\"A1\"/>",
            "<definedNames></definedNames><calcPr fullCalcOnLoad=\"1\"/><oleSize ref=\"A1\"/>"},
        CalculationCase{"AfterReferences", "<externalReferences/><pivotCaches/>",
                        "<externalReferences/><calcPr fullCalcOnLoad=\"1\"/><pivotCaches/>"},
        CalculationCase{"AfterAlternatives",
                        "<a:AlternateContent xmlns:a=\"urn:a\"><a:Choice><definedNames/></a:Choice>"
                        "</a:AlternateContent><pivotCaches/>",
                        "<a:AlternateContent xmlns:a=\"urn:a\"><a:Choice><definedNames/></a:Choice>"
                        "</a:AlternateContent><calcPr fullCalcOnLoad=\"1\"/><pivotCaches/>"}),
    [](const auto& test) { return std::string(test.param.name); });

} // namespace
} // namespace orrery::xlsx
