#include "look/painter/text_bodies.h"
#include "recording_canvas.h"

#include <gmock/gmock.h>

namespace orrery::look {
namespace {

using testing::ElementsAre;

/// Characters are 8 pixels wide and lines 20 high, with the baseline 14 below the top.
class TextBodiesTest : public testing::Test {
protected:
    void Add(const std::string& text, book::HorizontalAlignment alignment)
    {
        book::ParagraphRun run;
        run.text = text;
        run.font.size = 12;
        body_.paragraphs.push_back({{run}, alignment});
    }
    void Paint(const Box& box)
    {
        body_.left = body_.top = body_.right = body_.bottom = 3; // 4 pixels
        PaintTextBody(body_, box, measure_, canvas_);
    }

    book::TextBody body_;
    EvenMeasure measure_;
    RecordingCanvas canvas_;
};

TEST_F(TextBodiesTest, BeginsInsideTheInsets)
{
    Add("ab", book::HorizontalAlignment::Left);
    Paint({100, 50, 88, 60});
    EXPECT_THAT(canvas_.lines, ElementsAre("text 104 68 ab #000000 12"));
}

TEST_F(TextBodiesTest, PlacesLinesAcrossAndUpright)
{
    Add("ab", book::HorizontalAlignment::Center);
    Add("cd", book::HorizontalAlignment::Right);
    body_.vertical = book::VerticalAlignment::Bottom;
    Paint({100, 50, 88, 60}); // from 104 to 184, and down to 106
    EXPECT_THAT(canvas_.lines,
                ElementsAre("text 136 80 ab #000000 12", "text 168 100 cd #000000 12"));
    canvas_.lines.clear();
    body_.vertical = book::VerticalAlignment::Center;
    Paint({100, 50, 88, 60}); // 12 pixels are free
    EXPECT_THAT(canvas_.lines,
                ElementsAre("text 136 74 ab #000000 12", "text 168 94 cd #000000 12"));
}

TEST_F(TextBodiesTest, WrapsAtBlanks)
{
    Add("one two", book::HorizontalAlignment::Left);
    Paint({0, 0, 48, 60}); // room for 40 pixels
    EXPECT_THAT(canvas_.lines, ElementsAre("text 4 18 one #000000 12", "text 4 38 two #000000 12"));
}

TEST_F(TextBodiesTest, MayStayOnOneLine)
{
    Add("one two", book::HorizontalAlignment::Left);
    body_.wraps = false;
    Paint({0, 0, 48, 60});
    EXPECT_THAT(canvas_.lines, ElementsAre("text 4 18 one two #000000 12"));
}

TEST_F(TextBodiesTest, WhatIsTooHighIsCut)
{
    for (int i = 0; i < 100; ++i)
        Add("line", book::HorizontalAlignment::Left);
    Paint({0, 0, 100, 60});
    EXPECT_EQ(canvas_.lines.front(), "clip 0 0 100 60");
    EXPECT_EQ(canvas_.All("text").size(), 3u); // the others begin below the box
}

TEST_F(TextBodiesTest, TurnedTextHasTheTurnedBox)
{
    Add("ab", book::HorizontalAlignment::Left);
    body_.rotation = 90;
    Paint({0, 0, 40, 100}); // as if it were 100 by 40 around (20, 50)
    EXPECT_THAT(canvas_.lines,
                ElementsAre("rotate 20 50 90", "text -26 48 ab #000000 12", "restore"));
}

TEST_F(TextBodiesTest, AnEmptyParagraphIsALine)
{
    Add("", book::HorizontalAlignment::Left);
    Add("b", book::HorizontalAlignment::Left);
    Paint({0, 0, 100, 60});
    EXPECT_THAT(canvas_.lines, ElementsAre("text 4 38 b #000000 12"));
}

TEST_F(TextBodiesTest, VeryLongTextsEnd)
{
    for (int i = 0; i < 100; ++i)
        Add(std::string(10'000, 'x'), book::HorizontalAlignment::Left);
    Paint({0, 0, 1e9, 1e9});
    EXPECT_LT(canvas_.lines.size(), 10u);
}

} // namespace
} // namespace orrery::look
