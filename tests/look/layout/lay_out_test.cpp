#include "look/layout/lay_out.h"

#include "fake_sheet.h"

#include <gtest/gtest.h>

namespace orrery::look {
namespace {

using book::CellAddress;
using book::CellRange;

/// Columns of the fake sheet are as wide as ten digits of ten pixels; the digit ends at whole
/// twips.
constexpr double kColumn = 100;
constexpr double kRow = 20;

TEST(LayOut, HasEdgesFromTheFirstCellOn)
{
    FakeSheet sheet;
    sheet.Put({3, 2}, "a");
    sheet.sheet.columns = {{1, 1, 5.0, false, 0}};
    sheet.sheet.rows = {{2, 30.0, false, true, std::nullopt}};
    const Layout layout = sheet.LayOut();
    EXPECT_EQ(layout.range, (CellRange{{1, 1}, {3, 2}}));
    EXPECT_EQ(layout.columns, (std::vector<double>{0, 50, 150}));
    EXPECT_EQ(layout.rows, (std::vector<double>{0, 20, 60, 80}));
    EXPECT_EQ(layout.width, 150);
    EXPECT_EQ(layout.height, 80);
    ASSERT_EQ(layout.cells.size(), 1U);
    EXPECT_EQ(layout.cells[0].box, (Box{50, 60, 100, 20}));
}

TEST(LayOut, TellsWhatTheSheetLeavesOut)
{
    FakeSheet sheet;
    sheet.sheet.leftOut = {{"row", "1048577", "it lies outside the sheet"}};
    EXPECT_EQ(sheet.LayOut().leftOut, sheet.sheet.leftOut);
}

TEST(LayOut, AnEmptySheetHasOneCell)
{
    const Layout layout = FakeSheet().LayOut();
    EXPECT_EQ(layout.range, (CellRange{{1, 1}, {1, 1}}));
    EXPECT_TRUE(layout.cells.empty());
}

TEST(LayOut, HiddenColumnsAndRowsHaveNoRoom)
{
    FakeSheet sheet;
    sheet.Put({1, 1}, "a");
    sheet.Put({2, 2}, "b");
    sheet.Put({3, 3}, "c");
    sheet.sheet.columns = {{1, 1, 5.0, true, 0}};
    sheet.sheet.rows = {{2, std::nullopt, true, false, std::nullopt}};
    const Layout layout = sheet.LayOut();
    ASSERT_EQ(layout.cells.size(), 1U);
    EXPECT_EQ(layout.cells[0].box, (Box{kColumn, kRow, kColumn, kRow}));
    EXPECT_EQ(layout.CellAt({1, 1}), (CellAddress{1, 2}));
    EXPECT_EQ(layout.CellAt({1, kRow}), (CellAddress{3, 2}));
    EXPECT_EQ(layout.CellAt({1, 2 * kRow}), std::nullopt);
    EXPECT_EQ(layout.CellAt({-1, 0}), std::nullopt);
}

TEST(LayOut, ARightToLeftSheetIsMirrored)
{
    FakeSheet sheet;
    sheet.sheet.view.isRightToLeft = true;
    sheet.Put({1, 1}, "a");
    sheet.Put({1, 3}, "c");
    const Layout layout = sheet.LayOut();
    EXPECT_EQ(layout.columns, (std::vector<double>{300, 200, 100, 0}));
    EXPECT_EQ(FindBox(layout, {1, 1})->box.x, 200);
    EXPECT_EQ(FindBox(layout, {1, 3})->box.x, 0);
    EXPECT_EQ(layout.CellAt({250, 5}), (CellAddress{1, 1}));
    EXPECT_EQ(layout.CellAt({5, 5}), (CellAddress{1, 3}));
    EXPECT_EQ(layout.BoxOf({{1, 1}, {1, 2}}), (Box{100, 0, 200, kRow}));
}

TEST(LayOut, MergedCellsAreThereOnce)
{
    FakeSheet sheet;
    sheet.sheet.merges = {{{1, 1}, {2, 3}}};
    sheet.Put({1, 1}, "a");
    sheet.Put({1, 2}, "never seen");
    sheet.Put({2, 1}, "nor this");
    const Layout layout = sheet.LayOut();
    ASSERT_EQ(layout.cells.size(), 1U);
    EXPECT_EQ(layout.cells[0].range, (CellRange{{1, 1}, {2, 3}}));
    EXPECT_EQ(layout.cells[0].box, (Box{0, 0, 3 * kColumn, 2 * kRow}));
}

TEST(LayOut, EmptyMergedCellsAreThereToHideTheGrid)
{
    FakeSheet sheet;
    sheet.Put({4, 4}, "x");
    sheet.sheet.merges = {{{1, 1}, {2, 3}}, {{3, 1}, {3, 1}}};
    Layout layout = sheet.LayOut();
    ASSERT_EQ(layout.cells.size(), 2U);
    EXPECT_EQ(layout.cells[0].range, (CellRange{{1, 1}, {2, 3}}));
    sheet.sheet.view.showsGridLines = false;
    EXPECT_EQ(sheet.LayOut().cells.size(), 1U);
}

TEST(LayOut, APartOfTheSheetHasMergedCellsFromOutside)
{
    FakeSheet sheet;
    sheet.sheet.merges = {{{1, 1}, {3, 3}}};
    sheet.Put({1, 1}, "a");
    sheet.Put({2, 4}, "b");
    const Layout layout = sheet.LayOut({CellRange{{2, 3}, {2, 4}}, 100, 100});
    ASSERT_EQ(layout.cells.size(), 2U);
    EXPECT_EQ(layout.cells[0].box, (Box{-200, -20, 300, 60}));
    EXPECT_EQ(layout.cells[1].box, (Box{100, 0, 100, 20}));
}

TEST(LayOut, StyledCellsShowWithoutText)
{
    FakeSheet sheet;
    sheet.Put({1, 1}, "").style.Edit().fill.pattern = book::FillPattern::Solid;
    sheet.Put({1, 2}, "");
    sheet.Put({1, 3}, "x");
    const Layout layout = sheet.LayOut();
    EXPECT_NE(FindBox(layout, {1, 1}), nullptr);
    EXPECT_EQ(FindBox(layout, {1, 2}), nullptr);
}

TEST(LayOut, FilledColumnsAndRowsShowWithinTheRange)
{
    FakeSheet sheet;
    book::CellStyle filled = sheet.sheet.styles[0];
    filled.fill.pattern = book::FillPattern::Solid;
    sheet.sheet.styles.push_back(filled);
    sheet.sheet.columns = {{2, 2, 10.0, false, 1}};
    sheet.sheet.rows = {{2, std::nullopt, false, false, 1U}};
    sheet.Put({3, 3}, "x");
    const Layout layout = sheet.LayOut();
    EXPECT_EQ(layout.cells.size(), 6U); // B1, A2, B2, C2, B3 and C3
    EXPECT_NE(FindBox(layout, {1, 2}), nullptr);
    EXPECT_NE(FindBox(layout, {2, 3}), nullptr);
    EXPECT_EQ(FindBox(layout, {1, 1}), nullptr);
}

TEST(Overflow, TextFlowsIntoEmptyCells)
{
    FakeSheet sheet;
    sheet.Put({1, 1}, "fifteen letters"); // 150 pixels
    sheet.Put({1, 4}, "x");
    const Layout layout = sheet.LayOut();
    const CellBox& cell = *FindBox(layout, {1, 1});
    EXPECT_EQ(cell.box.width, kColumn);
    EXPECT_EQ(cell.clip.x, 0);
    EXPECT_NEAR(cell.clip.Right(), 150 + 4 * 20.0 / 15 - 2 * 20.0 / 15, 1e-9);
}

TEST(Overflow, EndsAtTheNextContent)
{
    FakeSheet sheet;
    sheet.Put({1, 1}, "fifteen letters");
    sheet.Put({1, 2}, "x");
    sheet.Put({2, 1}, "twenty-seven letters, or so");
    sheet.Put({2, 2}, "").style.Edit().fill.pattern = book::FillPattern::Solid; // does not stop it
    sheet.Put({2, 3}, "x");
    const Layout layout = sheet.LayOut();
    EXPECT_EQ(FindBox(layout, {1, 1})->clip, (Box{0, 0, kColumn, kRow}));
    EXPECT_EQ(FindBox(layout, {2, 1})->clip, (Box{0, kRow, 2 * kColumn, kRow}));
}

TEST(Overflow, EndsAtMergedCellsEvenIfTheyAreEmpty)
{
    FakeSheet sheet;
    sheet.Put({2, 1}, "fifteen letters");
    sheet.Put({1, 3}, "x");
    sheet.sheet.merges = {{{1, 2}, {1'000'000, 2}}};
    const Layout layout = sheet.LayOut();
    EXPECT_EQ(FindBox(layout, {2, 1})->clip.width, kColumn);
}

TEST(Overflow, RightAndCentredTextsFlowToTheLeft)
{
    FakeSheet sheet;
    sheet.Put({1, 2}, "fifteen letters").horizontal = book::HorizontalAlignment::Right;
    sheet.Put({2, 2}, "fifteen letters").horizontal = book::HorizontalAlignment::Center;
    sheet.Put({3, 1}, "x");
    sheet.Put({3, 2}, "fifteen letters").horizontal = book::HorizontalAlignment::Right;
    sheet.Put({4, 3}, "x");
    const Layout layout = sheet.LayOut();
    EXPECT_LT(FindBox(layout, {1, 2})->clip.x, 60);
    EXPECT_EQ(FindBox(layout, {1, 2})->clip.Right(), 200);
    EXPECT_NEAR(FindBox(layout, {2, 2})->clip.x, 75 - 20.0 / 15, 1e-9);
    EXPECT_NEAR(FindBox(layout, {2, 2})->clip.Right(), 225 + 20.0 / 15, 1e-9);
    EXPECT_EQ(FindBox(layout, {3, 2})->clip.x, 100);
}

TEST(Overflow, IsMirroredInARightToLeftSheet)
{
    FakeSheet sheet;
    sheet.sheet.view.isRightToLeft = true;
    sheet.Put({1, 1}, "x");
    sheet.Put({1, 2}, "fifteen letters").horizontal = book::HorizontalAlignment::Right;
    sheet.Put({1, 4}, "x");
    const Layout layout = sheet.LayOut();
    const CellBox& cell = *FindBox(layout, {1, 2}); // from 200 to 300
    EXPECT_EQ(cell.clip.Right(), 300);
    EXPECT_LT(cell.clip.x, 200);
    EXPECT_GE(cell.clip.x, 100);
}

TEST(Overflow, BehindTheLastColumnTheSheetHasMoreColumns)
{
    FakeSheet sheet;
    sheet.Put({1, 1}, "twenty-five letters, or so"); // 260 pixels
    sheet.Put({2, 1}, "x");
    sheet.sheet.columns = {{2, 2, 5.0, true, 0}}; // hidden
    const Layout layout = sheet.LayOut();
    EXPECT_EQ(layout.range.last, (CellAddress{2, 4}));
    EXPECT_EQ(layout.width, 3 * kColumn);
    EXPECT_GT(FindBox(layout, {1, 1})->clip.Right(), 260);
}

TEST(Overflow, ColumnsBehindTheLastOneHaveTheStylesOfTheirRows)
{
    FakeSheet sheet;
    book::CellStyle filled = sheet.sheet.styles[0];
    filled.fill.pattern = book::FillPattern::Solid;
    sheet.sheet.styles.push_back(filled);
    sheet.sheet.rows = {{1, std::nullopt, false, false, 1U}};
    sheet.Put({1, 1}, "fifteen letters").style = SharedStyle(filled);
    const Layout layout = sheet.LayOut();
    EXPECT_EQ(layout.range.last, (CellAddress{1, 2}));
    EXPECT_NE(FindBox(layout, {1, 2}), nullptr);
}

TEST(Overflow, OnlyWhatIsSeenMakesMoreColumns)
{
    FakeSheet sheet;
    sheet.Put({1, 1}, "fifteen letters").horizontal = book::HorizontalAlignment::Right;
    sheet.Put({2, 1}, "fifteen letters").style.Edit().alignment.wrap = true;
    sheet.Put({3, 1}, "fifteen letters");
    sheet.sheet.rows = {{3, std::nullopt, true, false, std::nullopt}};
    EXPECT_EQ(sheet.LayOut().range.last, (CellAddress{3, 1}));
    sheet.sheet.view.isRightToLeft = true; // flows to the left, where the next column is
    EXPECT_EQ(sheet.LayOut().range.last, (CellAddress{3, 2}));
}

TEST(Overflow, NumbersStayInTheirCells)
{
    FakeSheet sheet;
    CellDisplay& fixed = sheet.Put({1, 1}, "1234567890123");
    fixed.isNumber = true;
    CellDisplay& general = sheet.Put({2, 1}, "1.234567890123");
    general.isNumber = general.isGeneralNumber = true;
    general.number = 1.234567890123;
    sheet.Put({1, 3}, "x");
    const Layout layout = sheet.LayOut();
    EXPECT_EQ(LinesOf(layout, {1, 1}), "#########|");
    EXPECT_EQ(LinesOf(layout, {2, 1}), "1.2345679|");
    EXPECT_EQ(FindBox(layout, {1, 1})->clip.width, kColumn);
}

TEST(CenterContinuous, CentresAcrossEmptyCellsThatAreAlignedSo)
{
    FakeSheet sheet;
    constexpr auto kAcross = book::HorizontalAlignment::CenterContinuous;
    CellDisplay& title = sheet.Put({1, 1}, "x");
    title.horizontal = title.style.Edit().alignment.horizontal = kAcross;
    sheet.Put({1, 2}, "").style.Edit().alignment.horizontal = kAcross;
    sheet.Put({1, 3}, "").style.Edit().alignment.horizontal = kAcross;
    sheet.Put({1, 4}, "y");
    const Layout layout = sheet.LayOut();
    EXPECT_NEAR(FindBox(layout, {1, 1})->lines.at(0).x, 145, 1e-9);
    EXPECT_EQ(FindBox(layout, {1, 1})->box.width, kColumn);
}

TEST(RowHeights, GrowForWrappedTextsAndLargerFonts)
{
    FakeSheet sheet;
    sheet.Put({1, 1}, "twenty-two letters, ok").style.Edit().alignment.wrap = true;
    sheet.Put({2, 1}, "large").style.Edit().font.size = 40;
    sheet.Put({3, 1}, "fixed").style.Edit().font.size = 40;
    sheet.Put({4, 1}, "x");
    sheet.sheet.rows = {{3, 15.0, false, true, std::nullopt}};
    const Layout layout = sheet.LayOut();
    // Four lines of 12 pixels; 42 pixels; as stored; the default.
    EXPECT_EQ(layout.rows, (std::vector<double>{0, 48, 90, 110, 130}));
}

TEST(RowHeights, AreNotMovedBySmallDifferences)
{
    FakeSheet sheet;
    sheet.Put({1, 1}, "x").style.Edit().font.size = 21; // needs 23 pixels of 20
    EXPECT_EQ(sheet.LayOut().rows, (std::vector<double>{0, 20}));
}

TEST(RowHeights, RowsWithoutEntryMayBeHidden)
{
    FakeSheet sheet;
    sheet.Put({1, 1}, "x");
    sheet.Put({2, 1}, "x").style.Edit().alignment.wrap = true;
    sheet.sheet.areRowsHidden = true;
    sheet.sheet.rows = {{1, std::nullopt, false, false, std::nullopt}};
    EXPECT_EQ(sheet.LayOut().rows, (std::vector<double>{0, 20, 20}));
}

TEST(Drawings, StandAtTheirAnchors)
{
    FakeSheet sheet;
    sheet.Put({1, 1}, "x");
    book::Drawing drawing;
    drawing.anchor.from = {{2, 2}, 0.5, 0, 0, 9525 * 5};
    drawing.anchor.to = book::AnchorPoint{{4, 3}, 0, 0.5, 9525 * 20, 0};
    sheet.sheet.drawings = {drawing};
    drawing.anchor = {{{1, 2}, 0, 0, 9525 * 5000, 0}, std::nullopt, 9525 * 30, 9525 * 40};
    sheet.sheet.drawings.push_back(drawing);
    const Layout layout = sheet.LayOut();
    ASSERT_EQ(layout.drawings.size(), 2U);
    EXPECT_EQ(layout.drawings[0].box, (Box{150, 25, 70, 45}));
    EXPECT_EQ(layout.drawings[1].box, (Box{200, 0, 30, 40})); // no further than its column
    EXPECT_EQ(layout.drawings[0].drawing, &sheet.sheet.drawings[0]);
    EXPECT_EQ(layout.range.last, (CellAddress{4, 3}));
}

TEST(Drawings, OnTheirSideHaveTheirAnchorOnlyAfterTheTurn)
{
    FakeSheet sheet;
    sheet.Put({9, 9}, "x");
    book::Drawing drawing;
    drawing.rotation = 90;
    drawing.isAnchorTurned = true;
    drawing.anchor.from = {{2, 2}, 0, 0, 0, 0}; // 200 by 60 pixels, with (200, 50) in the middle
    drawing.anchor.to = book::AnchorPoint{{5, 4}, 0, 0, 0, 0};
    sheet.sheet.drawings = {drawing};
    EXPECT_EQ(sheet.LayOut().drawings.at(0).box, (Box{170, -50, 60, 200}));
}

TEST(Limits, LargeRangesCostNothing)
{
    FakeSheet sheet;
    sheet.sheet.merges = {{{1, 1}, {1'048'576, 3}}, {{1, 5}, {1'048'576, 16'384}}};
    sheet.Put({1, 1}, "x");
    const Layout layout = sheet.LayOut();
    ASSERT_EQ(layout.cells.size(), 1U);
    EXPECT_EQ(layout.cells[0].box.height, 20.0 * 1'048'576);
    EXPECT_EQ(layout.range.last, (CellAddress{1, 1}));
}

TEST(Limits, TooManyCellsAreLeftOut)
{
    FakeSheet sheet;
    for (std::int32_t row = 1; row <= 20; ++row)
        sheet.Put({row, 1}, "x");
    const Layout layout = sheet.LayOut({std::nullopt, 10, 10});
    EXPECT_EQ(layout.cells.size(), 10U);
    ASSERT_EQ(layout.leftOut.size(), 1U);
    EXPECT_EQ(layout.leftOut[0].what, "cells");
}

TEST(Limits, ConditionsOfTheWholeSheetEnd)
{
    FakeSheet sheet;
    sheet.Put({1000, 1000}, "x");
    sheet.sheet.conditions = {{{{{1, 1}, {1'048'576, 16'384}}}, {}}};
    const Layout layout = sheet.LayOut();
    EXPECT_EQ(layout.cells.size(), 1U);
    EXPECT_EQ(layout.leftOut.size(), 1U);
}

TEST(Limits, ManyConditionsOfTheSameCellsAreNoManyCells)
{
    FakeSheet sheet;
    book::CellStyle filled = sheet.sheet.styles[0];
    filled.fill.pattern = book::FillPattern::Solid;
    for (std::int32_t i = 0; i < 8; ++i) // of 24 cells each, no two alike
        sheet.sheet.conditions.push_back({{{{1 + i, 1}, {8 + i, 3}}}, {}});
    sheet.Put({15, 3}, "x");
    for (std::int32_t row = 1; row <= 15; ++row)
        sheet.displays[{row, 1}].style = SharedStyle(filled);
    const Layout layout = sheet.LayOut({std::nullopt, 100, 10});
    EXPECT_TRUE(layout.leftOut.empty());
    EXPECT_EQ(layout.cells.size(), 16U);
}

TEST(Limits, DamagedGeometryIsBorne)
{
    FakeSheet sheet;
    sheet.Put({1, 1}, "x");
    sheet.sheet.merges = {{{5, 5}, {2, 2}}, {{-4, 0}, {1, 1}}};
    sheet.sheet.columns = {{3, 1, 1e300, false, 0}, {1, 2, -5.0, false, 0}};
    book::Drawing drawing;
    drawing.anchor.from.cell = {-1, 2'000'000};
    drawing.anchor.from.emuX = INT64_MIN;
    drawing.anchor.width = INT64_MAX;
    sheet.sheet.drawings = {drawing};
    const Layout layout = sheet.LayOut();
    EXPECT_LE(layout.range.last.column, 16'384);
    EXPECT_EQ(layout.drawings.size(), 1U);
}

} // namespace
} // namespace orrery::look
