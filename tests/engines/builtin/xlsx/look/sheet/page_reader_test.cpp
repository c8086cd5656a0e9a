#include "engines/builtin/xlsx/look/sheet/page_reader.h"

#include "xlsx/look/sheet/read_sheet.h"

#include <gtest/gtest.h>
#include <string>

namespace orrery::xlsx {
namespace {

using book::CellRange;

book::PageSetup ReadPage(const std::string& elements)
{
    return ReadSheet(elements).page;
}

TEST(Page, ReadsTheSetup)
{
    const auto page = ReadPage("<sheetPr><pageSetUpPr fitToPage=\"1\"/></sheetPr>"
                               "<pageMargins left=\"0.5\" right=\"0.25\" top=\"1\" bottom=\"-1\" "
                               "header=\"0.1\" footer=\"0.2\"/><pageSetup paperSize=\"9\" "
                               "orientation=\"landscape\" scale=\"75\" fitToWidth=\"2\" "
                               "fitToHeight=\"0\" pageOrder=\"overThenDown\" firstPageNumber=\"5\" "
                               "useFirstPageNumber=\"1\"/><printOptions horizontalCentered=\"1\" "
                               "gridLines=\"1\" headings=\"1\"/>");
    EXPECT_EQ(page.paper, 9);
    EXPECT_TRUE(page.isLandscape);
    EXPECT_EQ(page.scale, 75);
    EXPECT_TRUE(page.fitsPages);
    EXPECT_EQ(page.pagesWide, 2);
    EXPECT_EQ(page.pagesHigh, 0);
    EXPECT_EQ(page.left, 0.5);
    EXPECT_EQ(page.bottom, 0.75); // damaged
    EXPECT_TRUE(page.isOverThenDown);
    EXPECT_EQ(page.firstPageNumber, 5);
    EXPECT_TRUE(page.centersHorizontally);
    EXPECT_FALSE(page.centersVertically);
    EXPECT_TRUE(page.printsGridLines);
    EXPECT_TRUE(page.printsHeadings);
}

TEST(Page, ReadsLengthsOfPapers)
{
    const auto page = ReadPage("<pageSetup paperWidth=\"210mm\" paperHeight=\"11in\" "
                               "firstPageNumber=\"5\"/>");
    EXPECT_NEAR(page.paperWidth.value(), 8.2677, 0.0001);
    EXPECT_EQ(page.paperHeight, 11);
    EXPECT_EQ(page.firstPageNumber, 1);
    EXPECT_EQ(ReadPage("<pageSetup paperWidth=\"-1mm\" paperHeight=\"9e9cm\"/>").paperWidth,
              std::nullopt);
}

TEST(Page, ReadsHeadersAndFooters)
{
    const auto page = ReadPage("<headerFooter differentFirst=\"1\"><oddHeader>&amp;L&amp;P"
                               "</oddHeader><oddFooter>foot</oddFooter><evenHeader>even"
                               "</evenHeader><firstFooter>first</firstFooter></headerFooter>");
    EXPECT_EQ(page.header, "&L&P");
    EXPECT_EQ(page.footer, "foot");
    EXPECT_EQ(page.evenHeader, std::nullopt);
    EXPECT_EQ(page.firstHeader, "");
    EXPECT_EQ(page.firstFooter, "first");
    EXPECT_TRUE(page.scalesHeaders);
    EXPECT_FALSE(ReadPage("<headerFooter scaleWithDoc=\"0\"/>").scalesHeaders);
}

TEST(Page, ReadsBreaks)
{
    const auto page = ReadPage("<rowBreaks><brk id=\"20\"/><brk id=\"5\" man=\"1\"/><brk id=\"5\"/>"
                               "<brk id=\"0\"/><brk id=\"1048576\"/></rowBreaks>"
                               "<colBreaks><brk id=\"3\"/><brk id=\"16384\"/></colBreaks>");
    EXPECT_EQ(page.rowBreaks, (std::vector<std::int32_t>{6, 21}));
    EXPECT_EQ(page.columnBreaks, std::vector<std::int32_t>{4});
}

struct NameCase {
    const char* test;
    const char* name;
    const char* formula;
    std::vector<CellRange> areas;
    std::optional<CellRange> rows;
    std::optional<CellRange> columns;
    std::size_t leftOut = 0;
};

class PrintNamesTest : public testing::TestWithParam<NameCase> {};

TEST_P(PrintNamesTest, SetsThePage)
{
    const NameCase& row = GetParam();
    book::PageSetup page;
    std::vector<book::LeftOut> leftOut;
    LeftOutList list(leftOut);
    ApplyPrintNames({{row.name, 3, row.formula}}, 3, page, list);
    EXPECT_EQ(page.printAreas, row.areas);
    EXPECT_EQ(page.titleRows, row.rows);
    EXPECT_EQ(page.titleColumns, row.columns);
    EXPECT_EQ(leftOut.size(), row.leftOut);
    book::PageSetup other;
    ApplyPrintNames({{row.name, 3, row.formula}}, 2, other, list);
    EXPECT_TRUE(other.printAreas.empty());
}

constexpr const char* kArea = "_xlnm.Print_Area";
constexpr const char* kTitles = "_xlnm.Print_Titles";

INSTANTIATE_TEST_SUITE_P(
    Names, PrintNamesTest,
    testing::Values(
        NameCase{"Area", kArea, "Sheet1!$B$2:$D$9", {{{2, 2}, {9, 4}}}, {}, {}},
        NameCase{"OneCell", kArea, "Sheet1!$B$2", {{{2, 2}, {2, 2}}}, {}, {}},
        NameCase{"SeveralAreas",
                 kArea,
                 "'It''s, here'!$A$1:$B$2,'It''s, here'!$D$4",
                 {{{1, 1}, {2, 2}}, {{4, 4}, {4, 4}}},
                 {},
                 {}},
        NameCase{"WholeColumns", kArea, "Sheet1!$A:$B", {{{1, 1}, {1048576, 2}}}, {}, {}},
        NameCase{"ComputedArea", kArea, "OFFSET(Sheet1!$A$1,0,0,9,9)", {}, {}, {}, 1},
        NameCase{"LostArea", kArea, "Sheet1!#REF!", {}, {}, {}, 1},
        NameCase{"Titles",
                 kTitles,
                 "Sheet1!$A:$B,Sheet1!$1:$3",
                 {},
                 CellRange{{1, 1}, {3, 16384}},
                 CellRange{{1, 1}, {1048576, 2}}},
        NameCase{"RowsAlone", kTitles, "Sheet1!$2:$2", {}, CellRange{{2, 1}, {2, 16384}}, {}},
        NameCase{"OtherName", "Area", "Sheet1!$A$1", {}, {}, {}}),
    [](const auto& row) { return std::string(row.param.test); });

} // namespace
} // namespace orrery::xlsx
