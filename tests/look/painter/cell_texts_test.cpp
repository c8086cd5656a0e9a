#include "look/painter/cell_texts.h"
#include "made_layout.h"
#include "recording_canvas.h"

#include <gmock/gmock.h>

namespace orrery::look {
namespace {

using testing::ElementsAre;

class CellTextsTest : public testing::Test {
protected:
    CellBox MakeText(const std::string& text, double width)
    {
        auto cell = MakeCell(2, 2);
        cell.lines = {MakeLine(text, {52, 36}, width)};
        return cell;
    }
    void Paint(const CellBox& cell) { PaintCellText(cell, measure_, canvas_); }

    EvenMeasure measure_;
    RecordingCanvas canvas_;
};

TEST_F(CellTextsTest, TextThatFitsIsNotCut)
{
    Paint(MakeText("June", 32));
    EXPECT_THAT(canvas_.lines, ElementsAre("text 52 36 June #000000 12"));
}

TEST_F(CellTextsTest, TextThatIsTooWideIsCut)
{
    Paint(MakeText("September", 72));
    EXPECT_THAT(canvas_.lines,
                ElementsAre("clip 50 20 50 20", "text 52 36 September #000000 12", "restore"));
}

TEST_F(CellTextsTest, TextThatIsTooHighIsCut)
{
    auto cell = MakeText("June", 32);
    cell.lines[0].pieces[0].font.size = 36; // 36 pixels above the baseline
    Paint(cell);
    EXPECT_EQ(canvas_.Find("clip"), 0);
}

TEST_F(CellTextsTest, TheColourOfAFormatComesBeforeThePieces)
{
    auto cell = MakeText("6", 8);
    cell.lines[0].pieces[0].font.color = book::Color{1, 1, 1};
    Paint(cell);
    cell.lines[0].pieces[0].color = book::Color{2, 2, 2};
    Paint(cell);
    cell.display.color = book::Color{3, 3, 3}; // "[Red]0", or a condition
    Paint(cell);
    EXPECT_THAT(canvas_.lines, ElementsAre("text 52 36 6 #010101 12", "text 52 36 6 #020202 12",
                                           "text 52 36 6 #030303 12"));
}

TEST_F(CellTextsTest, UnderlinesAreAsWideAsTheText)
{
    auto cell = MakeText("June", 32);
    cell.lines[0].pieces[0].font.underline = book::Underline::Single;
    Paint(cell);
    EXPECT_THAT(canvas_.All("line"), ElementsAre("line 52 38.5 84 38.5 #000000 1"));
}

TEST_F(CellTextsTest, DoubleUnderlinesLeaveAPixel)
{
    auto cell = MakeText("June", 32);
    cell.lines[0].pieces[0].font.underline = book::Underline::Double;
    Paint(cell);
    EXPECT_THAT(canvas_.All("line"),
                ElementsAre("line 52 38.5 84 38.5 #000000 1", "line 52 40.5 84 40.5 #000000 1"));
}

TEST_F(CellTextsTest, AccountingUnderlinesSpanTheCell)
{
    auto cell = MakeText("June", 32);
    cell.lines[0].pieces[0].font.underline = book::Underline::SingleAccounting;
    Paint(cell);
    EXPECT_THAT(canvas_.All("line"), ElementsAre("line 52 40.5 98 40.5 #000000 1"));
}

TEST_F(CellTextsTest, StrikesGoThroughSmallLetters)
{
    auto cell = MakeText("June", 32);
    cell.lines[0].pieces[0].font.strike = true;
    Paint(cell); // small letters reach from 36 up to about 28
    EXPECT_THAT(canvas_.All("line"), ElementsAre("line 52 31.5 84 31.5 #000000 1"));
}

TEST_F(CellTextsTest, RaisedPiecesAreSmallerAndOffTheBaseline)
{
    auto cell = MakeText("2", 6);
    cell.lines[0].pieces[0].font.position = book::TextPosition::Superscript;
    Paint(cell);
    cell.lines[0].pieces[0].font.position = book::TextPosition::Subscript;
    Paint(cell);
    EXPECT_THAT(canvas_.lines,
                ElementsAre("text 52 30.4 2 #000000 8", "text 52 38.24 2 #000000 8"));
}

TEST_F(CellTextsTest, TurnsAroundThePivotInsideOfTheClip)
{
    auto cell = MakeText("June", 32);
    cell.rotation = 90; // upwards
    cell.pivot = {60, 30};
    Paint(cell);
    EXPECT_THAT(canvas_.lines, ElementsAre("clip 50 20 50 20", "rotate 60 30 -90",
                                           "text 52 36 June #000000 12", "restore", "restore"));
}

} // namespace
} // namespace orrery::look
