#include "engines/builtin/xlsx/sheet/sheet_tables.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace orrery::xlsx {
namespace {

using book::CellValue;

/// B2:D6 with a header row and a totals row.
SheetTables Plan()
{
    return SheetTables({Table{"Plan", CellRange{{2, 2}, {6, 4}}, true, true, {"Day", "Sun", "x"}}});
}

struct HeaderCase {
    const char* name;
    CellValue value; // written into the first header cell
    const char* expected;
};
class WriteHeaderTest : public testing::TestWithParam<HeaderCase> {};

TEST_P(WriteHeaderTest, GivesTheNameThatExcelGives)
{
    EXPECT_EQ(Plan().WriteHeader({2, 2}, GetParam().value), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Values, WriteHeaderTest,
                         testing::Values(HeaderCase{"Text", std::string("Mon"), "Mon"},
                                         HeaderCase{"ItsOwnName", std::string("Day"), "Day"},
                                         HeaderCase{"NumberIsAText", std::int16_t{7}, "7"},
                                         HeaderCase{"TakenName", std::string("Sun"), "Sun2"},
                                         HeaderCase{"TakenInOtherCase", std::string("SUN"), "SUN2"},
                                         HeaderCase{"EmptyText", std::string(), "Column1"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(SheetTablesTest, OtherCellsAreNotHeaders)
{
    auto tables = Plan();
    for (const CellAddress cell : {CellAddress{1, 2}, CellAddress{3, 2}, CellAddress{2, 5}})
        EXPECT_EQ(tables.WriteHeader(cell, std::string("Mon")), std::nullopt);
    EXPECT_FALSE(tables.HasChanges());
}

TEST(SheetTablesTest, OldNamesAreFreeAgain)
{
    auto tables = Plan();
    tables.WriteHeader({2, 3}, std::string("Tue"));
    EXPECT_EQ(tables.WriteHeader({2, 2}, std::string("Sun")), "Sun");
    EXPECT_EQ(tables.WriteHeader({2, 2}, std::string("Day")), "Day");
    EXPECT_EQ(tables.Changes().at(0).headers.size(), 1U) << "the first column is as it was";
}

TEST(PatchTableTest, RenamesColumnsAndLabelsTotals)
{
    auto tables = Plan();
    tables.WriteHeader({2, 2}, std::string("A \"day\"\nlong"));
    tables.WriteTotal({6, 2}, std::string("All"));
    tables.WriteTotal({6, 3}, std::int16_t{5});
    const std::string xml =
        "<table displayName=\"Plan\"><tableColumns count=\"2\">"
        "<tableColumn id=\"1\" name=\"Day\"/>"
        "<tableColumn id=\"2\" name='Sun' totalsRowFunction=\"custom\" dataDxfId=\"3\">"
        "<totalsRowFormula>1+1</totalsRowFormula></tableColumn></tableColumns></table>";
    EXPECT_EQ(PatchTable(xml, "/t.xml", tables.ChangeOf("Plan")).Apply(xml),
              "<table displayName=\"Plan\"><tableColumns count=\"2\">"
              "<tableColumn totalsRowLabel=\"All\" id=\"1\" name=\"A &quot;day&quot;_x000a_long\"/>"
              "<tableColumn id=\"2\" name='Sun' dataDxfId=\"3\">"
              "</tableColumn></tableColumns></table>");
}

} // namespace
} // namespace orrery::xlsx
