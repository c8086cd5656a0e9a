#include "engines/builtin/xlsx/look/sheet/table_reader.h"

#include <gtest/gtest.h>

namespace orrery::xlsx {
namespace {

using book::TablePart;

TEST(ParseTable, ReadsIt)
{
    const StyleSheet styles{builtin::ThemeColors()};
    const auto table = ParseTable(
        "<table ref=\"B2:C9\" name=\"n\" displayName=\"Table1\" totalsRowCount=\"1\">"
        "<tableColumns><tableColumn name=\"A_x000a_B\"/><tableColumn name=\"C\"/></tableColumns>"
        "<tableStyleInfo name=\"TableStyleMedium2\" showFirstColumn=\"1\" showRowStripes=\"1\"/>"
        "</table>",
        styles);
    ASSERT_TRUE(table.has_value());
    EXPECT_EQ(table->name, "Table1");
    EXPECT_EQ(table->range, (book::CellRange{{2, 2}, {9, 3}}));
    EXPECT_EQ(table->headerRows, 1);
    EXPECT_EQ(table->totalRows, 1);
    EXPECT_EQ(table->columns, (std::vector<std::string>{"A\nB", "C"}));
    EXPECT_TRUE(table->showsFirstColumn);
    EXPECT_FALSE(table->showsLastColumn);
    EXPECT_TRUE(table->showsRowStripes);
    EXPECT_TRUE(table->style.parts.contains(TablePart::HeaderRow));
}

TEST(ParseTable, NeedsARange)
{
    const StyleSheet styles{builtin::ThemeColors()};
    EXPECT_FALSE(ParseTable("<table/>", styles).has_value());
    EXPECT_FALSE(ParseTable("<table ref=\"A1:XFE2\"/>", styles).has_value());
    const auto plain = ParseTable("<table ref=\"A1\" headerRowCount=\"7\"/>", styles);
    EXPECT_EQ(plain->headerRows, 1);
    EXPECT_TRUE(plain->style.parts.empty());
}

TEST(ParsePivotTable, ReadsItsPlaceAndStyle)
{
    const StyleSheet styles{builtin::ThemeColors()};
    const auto table = ParsePivotTable(
        "<pivotTableDefinition name=\"Pivot\" rowGrandTotals=\"1\"><location ref=\"A3:C20\" "
        "firstDataRow=\"2\"/><pivotTableStyleInfo name=\"PivotStyleLight16\" showRowHeaders=\"1\" "
        "showColHeaders=\"1\"/></pivotTableDefinition>",
        styles);
    ASSERT_TRUE(table.has_value());
    EXPECT_EQ(table->range, (book::CellRange{{3, 1}, {20, 3}}));
    EXPECT_EQ(table->headerRows, 2);
    EXPECT_EQ(table->totalRows, 1);
    EXPECT_TRUE(table->showsFirstColumn);
    EXPECT_TRUE(table->style.parts.contains(TablePart::HeaderRow));
    EXPECT_FALSE(ParsePivotTable("<pivotTableDefinition/>", styles).has_value());
}

} // namespace
} // namespace orrery::xlsx
