#include "look/painter/painter.h"
#include "made_layout.h"
#include "recording_canvas.h"

#include <gmock/gmock.h>

namespace orrery::look {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr book::Color kRed{255, 0, 0};
constexpr book::Color kBlue{0, 0, 255};

class PaintSheetTest : public testing::Test {
protected:
    void Paint() { PaintSheet(layout_, canvas_, measure_, options_); }
    CellBox Filled(std::int32_t row, std::int32_t column, book::Color color)
    {
        auto cell = MakeCell(row, column);
        cell.display.style.Edit().fill = SolidFill(color);
        return cell;
    }

    Layout layout_ = MakeLayout(2, 3); // 150 by 40 pixels
    PaintOptions options_;
    EvenMeasure measure_;
    RecordingCanvas canvas_;
};

TEST_F(PaintSheetTest, AnEmptySheetIsWhite)
{
    Paint();
    EXPECT_THAT(canvas_.lines, ElementsAre("fill 0 0 150 40 #ffffff"));
}

TEST_F(PaintSheetTest, GridLinesAreTheLastPixelsOfColumnsAndRows)
{
    layout_.showsGridLines = true;
    Paint();
    EXPECT_THAT(canvas_.All("line"),
                ElementsAre("line 49.5 0 49.5 40 #d4d4d4 1", "line 99.5 0 99.5 40 #d4d4d4 1",
                            "line 149.5 0 149.5 40 #d4d4d4 1", "line 0 19.5 150 19.5 #d4d4d4 1",
                            "line 0 39.5 150 39.5 #d4d4d4 1"));
}

TEST_F(PaintSheetTest, HiddenColumnsHaveNoGridLine)
{
    layout_.showsGridLines = true;
    layout_.columns = {0, 50, 50, 100};
    Paint();
    EXPECT_EQ(canvas_.All("line 49.5").size(), 1u);
}

TEST_F(PaintSheetTest, ASheetFromRightToLeftHasItsGrid)
{
    layout_.showsGridLines = true;
    layout_.columns = {150, 100, 50, 0};
    Paint();
    EXPECT_EQ(canvas_.All("line 49.5 0").size(), 1u);
    EXPECT_EQ(canvas_.All("line 99.5 0").size(), 1u);
    EXPECT_EQ(canvas_.All("line 149.5 0").size(), 1u);
}

TEST_F(PaintSheetTest, InASheetFromRightToLeftTextsHideTheLinesThatTheyCross)
{
    layout_.showsGridLines = true;
    layout_.columns = {150, 100, 50, 0};
    auto cell = MakeCell(1, 1);
    cell.box = {100, 0, 50, 20};
    cell.clip = {0, 0, 150, 20};
    cell.lines = {MakeLine("Sunday", {78, 15}, 70)}; // across the line at 100 alone
    layout_.cells = {cell};
    Paint();
    EXPECT_THAT(canvas_.All("fill"),
                ElementsAre("fill 0 0 150 40 #ffffff", "fill 99 0 1 19 #ffffff"));
}

TEST_F(PaintSheetTest, InASheetFromRightToLeftFillsKeepTheirLeftNeighbours)
{
    layout_.showsGridLines = true;
    layout_.columns = {150, 100, 50, 0};
    auto first = Filled(1, 1, kRed); // at the right
    first.box = {100, 0, 50, 20};
    auto second = Filled(1, 2, kBlue);
    layout_.cells = {first, second};
    Paint();
    EXPECT_TRUE(canvas_.All("fill 99 0 1 20 #ff0000").empty());
    EXPECT_EQ(canvas_.All("fill 49 0 1 20 #0000ff").size(), 1u);
}

TEST_F(PaintSheetTest, FillsCoverTheGridAroundThem)
{
    layout_.showsGridLines = true;
    layout_.cells = {Filled(2, 2, kRed), Filled(2, 3, kBlue)};
    Paint();
    EXPECT_THAT(canvas_.All("fill"),
                ElementsAre("fill 0 0 150 40 #ffffff",
                            "fill 49 20 1 20 #ff0000", // the line at the left
                            "fill 50 19 50 1 #ff0000", // the line above
                            "fill 50 20 50 20 #ff0000",
                            "fill 100 19 50 1 #0000ff", // the left neighbour keeps its pixels
                            "fill 100 20 50 20 #0000ff"));
}

TEST_F(PaintSheetTest, WithoutAGridFillsAreTheirBoxes)
{
    layout_.cells = {Filled(2, 2, kRed)};
    Paint();
    EXPECT_THAT(canvas_.All("fill"),
                ElementsAre("fill 0 0 150 40 #ffffff", "fill 50 20 50 20 #ff0000"));
}

TEST_F(PaintSheetTest, EdgesOfFillsAreWholePixels)
{
    auto cell = Filled(1, 1, kRed);
    cell.box = {10.4, 0.6, 20.2, 19.0}; // up to 30.6 and 19.6
    layout_.cells = {cell};
    Paint();
    EXPECT_NE(canvas_.Find("fill 10 1 21 19 #ff0000"), -1);
}

TEST_F(PaintSheetTest, MergedCellsHaveNoGridInside)
{
    layout_.showsGridLines = true;
    layout_.cells = {MakeCell({{1, 1}, {2, 2}})};
    Paint();
    EXPECT_NE(canvas_.Find("fill 0 0 99 39 #ffffff"), -1);
    EXPECT_LT(canvas_.Find("line"), canvas_.Find("fill 0 0 99 39"));
}

TEST_F(PaintSheetTest, OverflowingTextsHideTheLinesThatTheyCross)
{
    layout_.showsGridLines = true;
    auto cell = MakeCell(1, 1);
    cell.clip.width = 150;
    cell.lines = {MakeLine("Sunday", {2, 15}, 70)}; // up to 72: across the line at 50 alone
    layout_.cells = {cell};
    Paint();
    EXPECT_THAT(canvas_.All("fill"),
                ElementsAre("fill 0 0 150 40 #ffffff", "fill 49 0 1 19 #ffffff"));
}

TEST_F(PaintSheetTest, PaintsInOrder)
{
    layout_.showsGridLines = true;
    auto cell = Filled(1, 1, kRed);
    cell.display.bar = BarDisplay{0, 0.5, kBlue, {}, false, false, {}, {}};
    cell.border.bottom = {book::LineStyle::Thin, kRed};
    cell.lines = {MakeLine("6", {2, 15}, 8)};
    layout_.cells = {cell};
    Paint();
    const int grid = canvas_.Find("line 49.5");
    const int fill = canvas_.Find("fill 0 0 50 20 #ff0000");
    const int bar = canvas_.Find("fill 1 1 24 17 #0000ff");
    const int border = canvas_.Find("line 0 19.5 50 19.5 #ff0000");
    const int text = canvas_.Find("text");
    EXPECT_EQ(canvas_.Find("fill 0 0 150 40"), 0);
    EXPECT_LT(0, grid);
    EXPECT_LT(grid, fill);
    EXPECT_LT(fill, bar);
    EXPECT_LT(bar, border);
    EXPECT_LT(border, text);
}

TEST_F(PaintSheetTest, GroupsTextsByCell)
{
    auto cell = MakeCell(1, 2);
    cell.lines = {MakeLine("6", {52, 15}, 8)};
    layout_.cells = {cell};
    Paint();
    EXPECT_THAT(canvas_.lines, ElementsAre("fill 0 0 150 40 #ffffff", "group B1",
                                           "text 52 15 6 #000000 12", "end"));
}

TEST_F(PaintSheetTest, PaintsTheVisiblePartAlone)
{
    layout_.cells = {Filled(1, 1, kRed), Filled(1, 3, kBlue)};
    options_.visible = Box{90, 0, 500, 500};
    Paint();
    EXPECT_THAT(canvas_.lines, ElementsAre("fill 90 0 60 40 #ffffff", "fill 100 0 50 20 #0000ff"));
}

TEST_F(PaintSheetTest, MarksWhatCannotBeComputed)
{
    auto cell = MakeCell(1, 1);
    cell.display.isComputed = false;
    layout_.cells = {cell};
    Paint();
    EXPECT_EQ(canvas_.All("path 49 0 49 5 44 0").size(), 1u);
    options_.marksNotComputed = false;
    canvas_.lines.clear();
    Paint();
    EXPECT_THAT(canvas_.All("path"), IsEmpty());
}

TEST_F(PaintSheetTest, BarsFadeFromWhereTheyBegin)
{
    auto cell = MakeCell(1, 1); // room for 47 by 17 pixels
    cell.display.bar = BarDisplay{0.5, 1, kBlue, kRed, true, true, 0.5, kRed};
    layout_.cells = {cell};
    Paint();
    EXPECT_NE(canvas_.Find("fill 25 1 23 17 gradient 180"), -1);
    EXPECT_NE(canvas_.Find("path 25.5 1.5 47.5 1.5 47.5 17.5 25.5 17.5 with #ff0000 1"), -1);
    EXPECT_NE(canvas_.Find("line 25.5 0 25.5 20 #ff0000 1,3,1"), -1);
}

} // namespace
} // namespace orrery::look
