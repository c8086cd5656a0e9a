#include "look/layout/borders.h"

#include "fake_sheet.h"

#include <gtest/gtest.h>

namespace orrery::look {
namespace {

using book::BorderLine;
using book::LineStyle;

TEST(IsHeavier, PutsLinesInOrder)
{
    const auto line = [](LineStyle style) { return BorderLine{style, std::nullopt}; };
    EXPECT_TRUE(IsHeavier(line(LineStyle::Thick), line(LineStyle::Double)));
    EXPECT_TRUE(IsHeavier(line(LineStyle::Double), line(LineStyle::Medium)));
    EXPECT_TRUE(IsHeavier(line(LineStyle::Medium), line(LineStyle::Thin)));
    EXPECT_TRUE(IsHeavier(line(LineStyle::Thin), line(LineStyle::Hair)));
    EXPECT_TRUE(IsHeavier(line(LineStyle::Hair), line(LineStyle::None)));
    EXPECT_FALSE(IsHeavier(line(LineStyle::None), line(LineStyle::None)));
    EXPECT_TRUE(IsHeavier({LineStyle::Thin, book::kBlack}, {LineStyle::Thin, book::kWhite}));
    EXPECT_FALSE(IsHeavier({LineStyle::Thin, std::nullopt}, {LineStyle::Thin, book::kBlack}));
}

TEST(ResolveBorders, TheHeavierOfTwoLinesIsBothCells)
{
    FakeSheet sheet;
    sheet.Put({1, 1}, "a").style.Edit().border.right.style = LineStyle::Thin;
    sheet.Put({1, 2}, "b").style.Edit().border.left.style = LineStyle::Thick;
    sheet.Put({2, 1}, "c").style.Edit().border.top.style = LineStyle::Hair;
    const Layout layout = sheet.LayOut();
    EXPECT_EQ(FindBox(layout, {1, 1})->border.right.style, LineStyle::Thick);
    EXPECT_EQ(FindBox(layout, {1, 2})->border.left.style, LineStyle::Thick);
    EXPECT_EQ(FindBox(layout, {1, 1})->border.bottom.style, LineStyle::Hair);
    EXPECT_EQ(FindBox(layout, {1, 2})->border.bottom.style, LineStyle::None);
}

TEST(ResolveBorders, MergedCellsHaveTheLinesOfTheirEdgeCells)
{
    FakeSheet sheet;
    sheet.sheet.merges = {{{2, 2}, {3, 4}}};
    sheet.Put({2, 2}, "a").style.Edit().border.left.style = LineStyle::Thin;
    sheet.Put({2, 4}, "").style.Edit().border.right.style = LineStyle::Medium;
    sheet.Put({3, 2}, "").style.Edit().border.bottom.style = LineStyle::Double;
    const Layout layout = sheet.LayOut();
    ASSERT_EQ(layout.cells.size(), 1U);
    const book::Border& border = layout.cells[0].border;
    EXPECT_EQ(border.left.style, LineStyle::Thin);
    EXPECT_EQ(border.right.style, LineStyle::Medium);
    EXPECT_EQ(border.bottom.style, LineStyle::Double);
    EXPECT_EQ(border.top.style, LineStyle::None);
}

TEST(ResolveBorders, LinesInsideOfMergedCellsAreNotSeen)
{
    FakeSheet sheet;
    sheet.sheet.merges = {{{2, 2}, {3, 4}}};
    book::Border& border = sheet.Put({2, 2}, "a").style.Edit().border;
    for (BorderLine* line : {&border.left, &border.right, &border.top, &border.bottom})
        line->style = LineStyle::Thin;
    const Layout layout = sheet.LayOut();
    ASSERT_EQ(layout.cells.size(), 1U);
    EXPECT_EQ(layout.cells[0].border.left.style, LineStyle::Thin);
    EXPECT_EQ(layout.cells[0].border.top.style, LineStyle::Thin);
    EXPECT_EQ(layout.cells[0].border.right.style, LineStyle::None);
    EXPECT_EQ(layout.cells[0].border.bottom.style, LineStyle::None);
}

TEST(ResolveBorders, ALineOfAConditionIsAroundMergedCells)
{
    FakeSheet sheet;
    sheet.sheet.merges = {{{2, 2}, {3, 4}}};
    sheet.Put({2, 2}, "a");
    sheet.LayOut(); // the sheet has its styles
    sheet.displays.at({2, 2}).style.Edit().border.right.style = LineStyle::Thick;
    const Layout layout = LayOut(sheet.sheet, sheet.workbook, sheet, sheet.measure);
    EXPECT_EQ(layout.cells.at(0).border.right.style, LineStyle::Thick);
}

} // namespace
} // namespace orrery::look
