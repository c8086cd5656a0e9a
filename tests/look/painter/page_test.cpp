#include "look/painter/painter.h"
#include "made_layout.h"
#include "recording_canvas.h"

#include <gmock/gmock.h>

namespace orrery::look {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A sheet of 200 by 80 pixels whose second page has the columns C and D of the rows 2 to 4.
class PaintPageTest : public testing::Test {
protected:
    PaintPageTest()
    {
        page_.area = {100, 20, 100, 60};
        page_.scale = 0.5;
        page_.place = {60, 70};
        page_.paperWidth = 300;
        page_.paperHeight = 400;
    }
    void Paint() { PaintPage(layout_, page_, canvas_, measure_, options_); }

    Layout layout_ = MakeLayout(4, 4);
    PageBox page_;
    PaintOptions options_;
    EvenMeasure measure_;
    RecordingCanvas canvas_;
};

TEST_F(PaintPageTest, PlacesAndCutsItsArea)
{
    layout_.showsGridLines = true; // on the screen
    Paint();
    // The area's corner (100, 20), at half its size, comes to (60, 70).
    EXPECT_THAT(canvas_.lines, ElementsAre("fill 0 0 300 400 #ffffff", "place 10 60 0.5",
                                           "clip 100 20 100 60", "restore", "restore"));
}

TEST_F(PaintPageTest, PrintsGridLinesOnRequest)
{
    options_.printsGridLines = true;
    Paint();
    EXPECT_THAT(canvas_.All("line"),
                ElementsAre("line 99.5 20 99.5 80 #d4d4d4 1", "line 149.5 20 149.5 80 #d4d4d4 1",
                            "line 199.5 20 199.5 80 #d4d4d4 1", "line 100 19.5 200 19.5 #d4d4d4 1",
                            "line 100 39.5 200 39.5 #d4d4d4 1", "line 100 59.5 200 59.5 #d4d4d4 1",
                            "line 100 79.5 200 79.5 #d4d4d4 1"));
}

TEST_F(PaintPageTest, RepeatsTitleRowsAndColumns)
{
    page_.titleRows = {0, 0, 200, 20};
    page_.titleColumns = {0, 0, 50, 80};
    Paint();
    EXPECT_THAT(canvas_.All("clip"), ElementsAre("clip 0 0 50 20", "clip 100 0 100 20",
                                                 "clip 0 20 50 60", "clip 100 20 100 60"));
    // Ten pixels above the area, and 25 at its left.
    EXPECT_THAT(canvas_.All("place"), ElementsAre("place 35 60 0.5", "place 10 60 0.5",
                                                  "place 35 60 0.5", "place 10 60 0.5"));
}

TEST_F(PaintPageTest, PaintsWhatLiesInItsArea)
{
    auto inside = MakeCell(2, 3);
    inside.lines = {MakeLine("in", {102, 36}, 16)};
    auto outside = MakeCell(1, 1);
    outside.lines = {MakeLine("out", {2, 16}, 24)};
    layout_.cells = {outside, inside};
    Paint();
    EXPECT_THAT(canvas_.All("text"), ElementsAre("text 102 36 in #000000 12"));
}

TEST_F(PaintPageTest, HeadersAreOnThePaper)
{
    page_.headerAndFooter = {MakeLine("Page 2", {130, 30}, 48)};
    Paint();
    EXPECT_EQ(canvas_.lines.back(), "text 130 30 Page 2 #000000 12");
}

TEST_F(PaintPageTest, PicturesOfHeadersAreUnderTheSheet)
{
    book::Drawing logo;
    logo.kind = book::DrawingKind::Picture;
    logo.picture = Gif();
    page_.headerPictures = {{&logo, {10, 20, 30, 40}}};
    Paint();
    const int picture = canvas_.Find("picture 10 20 30 40 gif");
    EXPECT_GE(picture, 0);
    EXPECT_LT(picture, canvas_.Find("place"));
}

} // namespace
} // namespace orrery::look
