#include "xls/look/look_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls::test {
namespace {

std::string ColumnsOf(std::uint16_t first, std::uint16_t last, std::uint16_t width,
                      std::uint16_t format = 15, std::uint16_t flags = 0)
{
    return RecordOf(RecordType::ColumnInfo, Numbers({first, last, width, format, flags, 0}));
}

TEST(GridReaderTest, ReadsColumns)
{
    const auto look = LookOf(ColumnsOf(1, 3, 2560) + ColumnsOf(5, 5, 512, 16, 1), FormatOf({}));
    ASSERT_EQ(look.columns.size(), 2U);
    EXPECT_EQ(look.columns[0].first, 2);
    EXPECT_EQ(look.columns[0].last, 4);
    EXPECT_EQ(look.columns[0].width, 10.0);
    EXPECT_FALSE(look.columns[0].isHidden);
    EXPECT_EQ(look.columns[1].first, 6);
    EXPECT_TRUE(look.columns[1].isHidden);
    EXPECT_EQ(look.columns[1].style, 1U);
    EXPECT_EQ(look.StyleAt({9, 6}), 1U);
}

TEST(GridReaderTest, LaterDescriptionOfAColumnCounts)
{
    const auto look = LookOf(ColumnsOf(4, 9, 256) + ColumnsOf(0, 5, 512));
    ASSERT_EQ(look.columns.size(), 2U);
    EXPECT_EQ(look.columns[0].last, 6);
    EXPECT_EQ(look.columns[0].width, 2.0);
    EXPECT_EQ(look.columns[1].first, 7);
}

TEST(GridReaderTest, OneColumnTooManyIsIgnored)
{
    const auto look = LookOf(ColumnsOf(10, 256, 256));
    ASSERT_EQ(look.columns.size(), 1U);
    EXPECT_EQ(look.columns[0].last, 256);
}

TEST(GridReaderTest, ColumnsOutsideTheSheetAreLeftOut)
{
    const auto look = LookOf(ColumnsOf(256, 300, 256) + ColumnsOf(9, 2, 256));
    EXPECT_TRUE(look.columns.empty());
    ASSERT_FALSE(look.leftOut.empty());
    EXPECT_EQ(look.leftOut[0].what, "columns");
}

TEST(GridReaderTest, ReadsRows)
{
    const auto look =
        LookOf(RowOf(7, 0, 1, 0x0160, 16, 630) + RowOf(2, 0, 1, 0x0180, 0x1010, 400), FormatOf({}));
    ASSERT_EQ(look.rows.size(), 2U);
    EXPECT_EQ(look.rows[0].row, 3);
    EXPECT_EQ(look.rows[0].height, 20.0);
    EXPECT_EQ(look.rows[0].style, 1U); // the format counts only with its flag
    EXPECT_FALSE(look.rows[0].isCustomHeight);
    EXPECT_EQ(look.rows[1].height, 31.5);
    EXPECT_TRUE(look.rows[1].isHidden);
    EXPECT_TRUE(look.rows[1].isCustomHeight);
    EXPECT_FALSE(look.rows[1].style);
}

TEST(GridReaderTest, RowMayHaveTheDefaultHeight)
{
    const auto look = LookOf(RowOf(0, 0, 1, 0x0100, 15, 0x80FF) + RowOf(0, 0, 1, 0x0100, 15, 0));
    ASSERT_EQ(look.rows.size(), 1U);
    EXPECT_FALSE(look.rows[0].height);
}

TEST(GridReaderTest, ReadsDefaultSizes)
{
    const auto look = LookOf(RecordOf(RecordType::DefaultRowHeight, Numbers({2, 270})) +
                             RecordOf(RecordType::DefaultColumnWidth, Numbers({10})) +
                             RecordOf(RecordType::StandardWidth, Numbers({2432})));
    EXPECT_EQ(look.defaultRowHeight, 13.5);
    EXPECT_TRUE(look.areRowsHidden);
    EXPECT_EQ(look.baseWidth, 10);
    EXPECT_EQ(look.standardWidth, 9.5);
}

TEST(GridReaderTest, ReadsTheView)
{
    // Formulas, frozen, right to left; a red grid is there but not shown. [MS-XLS] 2.4.346
    const auto look =
        LookOf(RecordOf(RecordType::Window2, Numbers({0x0049, 11, 2, 10, 0, 0, 0, 0, 0})) +
               RecordOf(RecordType::Pane, Numbers({1, 3, 14, 3, 0})) +
               RecordOf(RecordType::Window2, Numbers({0x00B6, 0, 0, 64, 0, 0, 0, 0, 0})));
    EXPECT_TRUE(look.view.showsFormulas);
    EXPECT_FALSE(look.view.showsGridLines);
    EXPECT_FALSE(look.view.showsZeros);
    EXPECT_TRUE(look.view.isRightToLeft);
    EXPECT_EQ(look.view.gridColor, (book::Color{255, 0, 0}));
    EXPECT_EQ(look.view.topLeft, (book::CellAddress{12, 3}));
    EXPECT_EQ(look.view.frozenRows, 3);
    EXPECT_EQ(look.view.frozenColumns, 1);
}

TEST(GridReaderTest, PanesThatAreNotFrozenAreNoneOfTheLook)
{
    const auto look = LookOf(RecordOf(RecordType::Window2, Numbers({0x00B6, 0, 0, 64})) +
                             RecordOf(RecordType::Pane, Numbers({2000, 3000, 0, 0, 0})));
    EXPECT_EQ(look.view.frozenRows, 0);
    EXPECT_FALSE(look.view.gridColor);
}

TEST(MergeReaderTest, ReadsMergesRowByRow)
{
    const auto look = LookOf(MergeCellsOf({4, 5, 0, 1, 0, 0, 2, 3}) + MergeCellsOf({9, 9, 9, 9}));
    const std::vector<book::CellRange> expected = {{{1, 3}, {1, 4}}, {{5, 1}, {6, 2}}};
    EXPECT_EQ(look.merges, expected);
}

TEST(MergeReaderTest, MergesThatOverlapAreLeftOut)
{
    const auto look = LookOf(MergeCellsOf({0, 3, 0, 3, 2, 5, 2, 6, 4, 5, 0, 1}));
    const std::vector<book::CellRange> expected = {{{1, 1}, {4, 4}}, {{5, 1}, {6, 2}}};
    EXPECT_EQ(look.merges, expected);
    ASSERT_EQ(look.leftOut.size(), 1U);
    EXPECT_EQ(look.leftOut[0].where, "C3:G6");
}

TEST(MergeReaderTest, CountThatIsTooLargeEndsWithTheRecord)
{
    const auto record = RecordOf(RecordType::MergeCells, Numbers({60000, 0, 0, 0, 1}));
    const auto look = LookOf(record);
    EXPECT_EQ(look.merges.size(), 1U);
    ASSERT_EQ(look.leftOut.size(), 1U);
    EXPECT_EQ(look.leftOut[0].what, "merged cells");
}

} // namespace
} // namespace orrery::xls::test
