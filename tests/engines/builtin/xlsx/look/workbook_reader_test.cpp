#include "engines/builtin/xlsx/look/workbook_reader.h"

#include <gtest/gtest.h>

namespace orrery::xlsx {
namespace {

TEST(ReadWorkbookPart, ReadsSheetsAndNames)
{
    const auto entries = ReadWorkbookPart(
        "<workbook xmlns:r=\"urn:r\" xmlns:mc=\"urn:mc\"><workbookPr date1904=\"1\"/><bookViews>"
        "<workbookView activeTab=\"1\"/><workbookView activeTab=\"0\"/></bookViews>"
        "<mc:AlternateContent><mc:Choice><sheets><sheet name=\"A &amp; B\" r:id=\"rId1\"/>"
        "<sheet name=\"C\" state=\"veryHidden\" r:id=\"rId2\"/></sheets></mc:Choice>"
        "</mc:AlternateContent><definedNames><definedName name=\"N\">C!$A$1</definedName>"
        "<definedName name=\"L\" localSheetId=\"1\">\"x\"</definedName></definedNames></workbook>",
        "/xl/workbook.xml");
    const auto& look = entries.look;
    EXPECT_EQ(look.dateSystem, book::DateSystem::From1904);
    EXPECT_EQ(look.activeSheet, 1U);
    ASSERT_EQ(look.sheets.size(), 2U);
    EXPECT_EQ(look.sheets[0].name, "A & B");
    EXPECT_EQ(look.sheets[1].state, book::SheetState::VeryHidden);
    EXPECT_EQ(entries.relationshipIds, (std::vector<std::string>{"rId1", "rId2"}));
    ASSERT_EQ(look.names.size(), 2U);
    EXPECT_EQ(look.names[0].formula, "C!$A$1");
    EXPECT_EQ(look.names[0].sheet, std::nullopt);
    EXPECT_EQ(look.names[1].sheet, 1U);
}

TEST(ReadWorkbookPart, ActivatesTheFirstSheetIfTheActiveOneIsMissing)
{
    const auto entries = ReadWorkbookPart("<workbook><bookViews><workbookView activeTab=\"9\"/>"
                                          "</bookViews><sheets><sheet name=\"A\"/></sheets>"
                                          "</workbook>",
                                          "/xl/workbook.xml");
    EXPECT_EQ(entries.look.activeSheet, 0U);
}

} // namespace
} // namespace orrery::xlsx
