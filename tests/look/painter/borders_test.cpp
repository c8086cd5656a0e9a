#include "look/painter/borders.h"
#include "made_layout.h"
#include "recording_canvas.h"

#include <gmock/gmock.h>

namespace orrery::look {
namespace {

using book::LineStyle;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

constexpr Box kAll{0, 0, 1000, 1000};

class BordersTest : public testing::Test {
protected:
    void Paint() { PaintBorders(layout_, kAll, canvas_); }

    Layout layout_ = MakeLayout(4, 4); // 200 by 80 pixels
    RecordingCanvas canvas_;
};

TEST_F(BordersTest, ThinLinesFillOnePixel)
{
    auto cell = MakeCell(2, 2);
    cell.border.bottom = {LineStyle::Thin, {}};
    cell.border.left = {LineStyle::Thin, book::Color{255, 0, 0}};
    layout_.cells = {cell};
    Paint();
    // The last pixel row before 40, from the pixel of the left edge on.
    EXPECT_THAT(canvas_.lines, UnorderedElementsAre("line 49 39.5 100 39.5 #000000 1",
                                                    "line 49.5 19 49.5 40 #ff0000 1"));
}

TEST_F(BordersTest, OnPaperEdgesAreTheMiddlesOfLines)
{
    auto cell = MakeCell(1, 1);
    cell.border.top = {LineStyle::Thin, {}};
    cell.border.right = {LineStyle::Medium, {}};
    layout_.cells = {cell};
    PaintBorders(layout_, kAll, canvas_, LinesLie::OnEdges);
    EXPECT_THAT(canvas_.lines,
                UnorderedElementsAre("line -0.5 0 50.5 0 #000000 1", "line 50 -1 50 21 #000000 2"));
}

TEST_F(BordersTest, LinesAtTheEndsOfTheSheetStayInside)
{
    auto cell = MakeCell(1, 1);
    cell.border.top = {LineStyle::Thin, {}};
    cell.border.left = {LineStyle::Thick, {}};
    layout_.cells = {cell};
    Paint();
    EXPECT_THAT(canvas_.lines,
                UnorderedElementsAre("line 0 0.5 50 0.5 #000000 1", "line 1.5 0 1.5 21 #000000 3"));
}

TEST_F(BordersTest, LinesThatFollowEachOtherAreOne)
{
    for (std::int32_t column = 1; column <= 4; ++column) {
        auto cell = MakeCell(2, column);
        cell.border.bottom = {LineStyle::Dashed, {}};
        layout_.cells.push_back(cell);
        auto below = MakeCell(3, column);
        below.border.top = {LineStyle::Dashed, {}};
        layout_.cells.push_back(below);
    }
    Paint();
    EXPECT_THAT(canvas_.lines, ElementsAre("line 0 39.5 200 39.5 #000000 1,3,1"));
}

TEST_F(BordersTest, LinesWithAGapStayTwo)
{
    for (const std::int32_t column : {1, 3}) {
        auto cell = MakeCell(2, column);
        cell.border.bottom = {LineStyle::Thin, {}};
        layout_.cells.push_back(cell);
    }
    Paint();
    EXPECT_THAT(canvas_.lines,
                ElementsAre("line 0 39.5 50 39.5 #000000 1", "line 99 39.5 150 39.5 #000000 1"));
}

TEST_F(BordersTest, MediumAndThickLinesFillTwoAndThreePixels)
{
    auto cell = MakeCell(2, 2);
    cell.border.bottom = {LineStyle::Medium, {}};
    cell.border.right = {LineStyle::Thick, {}};
    layout_.cells = {cell};
    Paint();
    EXPECT_THAT(canvas_.lines, ElementsAre("line 48 39 100 39 #000000 2",      // y 38 to 40
                                           "line 99.5 18 99.5 41 #000000 3")); // x 98 to 101
}

TEST_F(BordersTest, HeavierLinesLieAbove)
{
    auto cell = MakeCell(2, 2);
    cell.border.top = {LineStyle::Thick, {}};
    cell.border.left = {LineStyle::Hair, {}};
    cell.border.bottom = {LineStyle::Thin, {}};
    layout_.cells = {cell};
    Paint();
    ASSERT_EQ(canvas_.lines.size(), 3u);
    EXPECT_THAT(canvas_.lines[0], testing::EndsWith("1,1,1"));
    EXPECT_THAT(canvas_.lines[2], testing::EndsWith(" 3"));
}

TEST_F(BordersTest, DoubleLinesMeetAtCorners)
{
    auto cell = MakeCell(2, 2); // from (50, 20) to (100, 40)
    cell.border.left = cell.border.right = cell.border.top =
        cell.border.bottom = {LineStyle::Double, {}};
    layout_.cells = {cell};
    Paint();
    // Two nested frames: the outer one from 48 to 101, the inner one from 50 to 99.
    EXPECT_THAT(
        canvas_.lines,
        UnorderedElementsAre("line 48 18.5 101 18.5 #000000 1", "line 50 20.5 99 20.5 #000000 1",
                             "line 50 38.5 99 38.5 #000000 1", "line 48 40.5 101 40.5 #000000 1",
                             "line 48.5 18 48.5 41 #000000 1", "line 50.5 20 50.5 39 #000000 1",
                             "line 98.5 20 98.5 39 #000000 1", "line 100.5 18 100.5 41 #000000 1"));
}

TEST_F(BordersTest, SlantedDashesAreTwoShiftedLines)
{
    auto cell = MakeCell(2, 2);
    cell.border.bottom = {LineStyle::SlantDashDot, {}};
    layout_.cells = {cell};
    Paint();
    EXPECT_THAT(canvas_.lines, ElementsAre("line 49 38.5 100 38.5 #000000 1,11,1,5,1",
                                           "line 48 39.5 100 39.5 #000000 1,11,1,5,1"));
}

TEST_F(BordersTest, DiagonalsAreCutAtTheCell)
{
    auto cell = MakeCell(2, 2);
    cell.border.diagonal = {LineStyle::Thin, {}};
    cell.border.diagonalUp = true;
    layout_.cells = {cell};
    Paint();
    EXPECT_THAT(canvas_.lines,
                ElementsAre("clip 50 20 50 20", "line 50 40 100 20 #000000 1", "restore"));
}

TEST_F(BordersTest, WhatIsNotVisibleIsNotDrawn)
{
    auto cell = MakeCell(4, 4);
    cell.border.bottom = {LineStyle::Thin, {}};
    layout_.cells = {cell};
    PaintBorders(layout_, {0, 0, 100, 40}, canvas_);
    EXPECT_THAT(canvas_.lines, testing::IsEmpty());
}

} // namespace
} // namespace orrery::look
