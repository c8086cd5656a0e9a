#include "look/painter/drawings.h"
#include "made_layout.h"
#include "recording_canvas.h"

#include <gmock/gmock.h>

#include <limits>
#include <memory>

namespace orrery::look {
namespace {

using book::Drawing;
using book::DrawingKind;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr Box kPlace{10, 20, 80, 40};
constexpr book::Color kPaint{255, 0, 0};

class DrawingsTest : public testing::Test {
protected:
    Drawing Make(DrawingKind kind, const char* name)
    {
        Drawing drawing;
        drawing.kind = kind;
        drawing.name = name;
        return drawing;
    }
    void Paint(const Drawing& drawing, const Box& box = kPlace)
    {
        layout_.drawings = {{&drawing, box}};
        PaintDrawings(layout_, {0, 0, 500, 500}, canvas_, measure_, options_);
    }

    Layout layout_ = MakeLayout(10, 10);
    PaintOptions options_;
    EvenMeasure measure_;
    RecordingCanvas canvas_;
};

TEST_F(DrawingsTest, AShapeHasFillAndOutline)
{
    auto shape = Make(DrawingKind::Shape, "Rectangle 1");
    shape.fill = SolidFill(kPaint);
    shape.outline.width = 1.5; // points
    Paint(shape);
    EXPECT_THAT(canvas_.lines,
                ElementsAre("group Rectangle 1",
                            "path 10 20 90 20 90 60 10 60 in #ff0000 with #000000 2", "end"));
}

TEST_F(DrawingsTest, AnOutlineMayBeAbsentOrDashed)
{
    auto shape = Make(DrawingKind::Shape, "A");
    shape.outline.style = book::LineStyle::Dashed;
    shape.outline.width = 1.5;
    Paint(shape);
    EXPECT_THAT(canvas_.lines, Contains("path 10 20 90 20 90 60 10 60 with #000000 2,6,2"));
    canvas_.lines.clear();
    shape.outline.isVisible = false;
    shape.fill = SolidFill(kPaint);
    Paint(shape);
    EXPECT_THAT(canvas_.lines, Contains("path 10 20 90 20 90 60 10 60 in #ff0000"));
}

TEST_F(DrawingsTest, TurnsAroundTheMiddleAndMirrorsInside)
{
    auto shape = Make(DrawingKind::Shape, "A");
    shape.rotation = 30;
    shape.flipsHorizontally = true;
    Paint(shape);
    EXPECT_EQ(canvas_.Find("rotate 50 40 30"), 1);
    EXPECT_EQ(canvas_.Find("flip 10 20 80 40 h"), 2);
    EXPECT_EQ(canvas_.All("restore").size(), 2u);
}

TEST_F(DrawingsTest, TextIsNotMirrored)
{
    auto shape = Make(DrawingKind::Shape, "A");
    shape.flipsHorizontally = true;
    shape.text.emplace();
    shape.text->paragraphs = {{{{"x", {}}}, book::HorizontalAlignment::Left}};
    Paint(shape);
    EXPECT_LT(canvas_.Find("restore"), canvas_.Find("text"));
}

TEST_F(DrawingsTest, LinesHaveHeadsAtTheirEnds)
{
    auto line = Make(DrawingKind::Line, "Line 1"); // "rect" is no line: it is a straight one
    line.outline.width = 0.75;
    line.hasArrowAtEnd = true;
    Paint(line, {0, 50, 100, 0});
    // A head of three times two pixels, with its tip at the end.
    EXPECT_THAT(canvas_.lines, ElementsAre("group Line 1", "path 0 50 100 50 with #000000 1",
                                           "path 100 50 94 47 94 53 in #000000", "end"));
}

TEST_F(DrawingsTest, FreeformsHaveTheirOwnOutlineAndHeads)
{
    auto shape = Make(DrawingKind::Shape, "Freeform 1");
    auto freeform = std::make_shared<book::Freeform>();
    using enum book::FreeformStep::Kind;
    freeform->parts.push_back(
        {{{Move, {0, 0}, {}, {}}, {Line, {1, 0}, {}, {}}, {Line, {1, 1}, {}, {}}}});
    shape.freeform = freeform;
    shape.fill = SolidFill(kPaint);
    shape.outline.width = 1.5;
    shape.hasArrowAtEnd = true;
    Paint(shape);
    EXPECT_THAT(canvas_.lines,
                ElementsAre("group Freeform 1", "path 10 20 90 20 90 60 in #ff0000 with #000000 2",
                            "path 90 60 93 54 87 54 in #000000", "end"));
}

TEST_F(DrawingsTest, PicturesAreCropped)
{
    auto picture = Make(DrawingKind::Picture, "Picture 1");
    picture.picture = Gif();
    picture.pictureType = "png"; // the bytes know better
    picture.crop = {0.25, 0, 0.75, 1};
    Paint(picture);
    EXPECT_THAT(canvas_.lines,
                ElementsAre("group Picture 1", "picture 10 20 80 40 gif 0.25 0 0.5 1", "end"));
}

TEST_F(DrawingsTest, WhatCannotBeShownIsAFrameWithItsName)
{
    auto picture = Make(DrawingKind::Picture, "Logo");
    picture.picture = std::make_shared<const std::string>("what is this?");
    Paint(picture);
    EXPECT_THAT(canvas_.All("path 10.5 20.5 89.5 20.5 89.5 59.5 10.5 59.5"), testing::SizeIs(1));
    EXPECT_THAT(canvas_.lines, Contains(HasSubstr(" Logo #595959")));
    EXPECT_THAT(canvas_.All("picture"), IsEmpty());
}

TEST_F(DrawingsTest, PlaceholdersSayWhatTheyWouldBe)
{
    auto box = Make(DrawingKind::Placeholder, "Slicer 1");
    box.description = "slicer";
    Paint(box);
    EXPECT_EQ(canvas_.lines.front(), "group Slicer 1: slicer");
    EXPECT_THAT(canvas_.lines, Contains(HasSubstr(" slicer #595959")));
}

TEST_F(DrawingsTest, SmallFramesHaveNoText)
{
    Paint(Make(DrawingKind::Control, "Check Box 1"), {10, 20, 16, 16});
    EXPECT_THAT(canvas_.All("path"), testing::SizeIs(1));
    EXPECT_THAT(canvas_.All("text"), IsEmpty());
}

TEST_F(DrawingsTest, ChildrenHaveTheirShareOfAGroup)
{
    auto group = Make(DrawingKind::Group, "Group 1");
    auto child = Make(DrawingKind::Shape, "Child");
    child.place = {0.5, 0.25, 1, 0.75};
    child.fill = SolidFill(kPaint);
    child.outline.isVisible = false;
    group.children = {child};
    Paint(group);
    EXPECT_THAT(canvas_.lines,
                ElementsAre("group Group 1", "group Child",
                            "path 50 30 90 30 90 50 50 50 in #ff0000", "end", "end"));
}

TEST_F(DrawingsTest, ChartsAreDrawnByWhoKnowsHow)
{
    auto chart = Make(DrawingKind::Chart, "Chart 1");
    chart.chart = std::make_shared<const book::Chart>();
    Paint(chart);
    EXPECT_THAT(canvas_.lines, Contains(HasSubstr("Chart 1 #595959"))); // a placeholder
    canvas_.lines.clear();
    Box drawn;
    options_.chart = [&drawn](const book::Chart&, const Box& box, Canvas&) { drawn = box; };
    Paint(chart);
    EXPECT_EQ(drawn, kPlace);
    EXPECT_THAT(canvas_.lines, ElementsAre("group Chart 1", "end"));
}

TEST_F(DrawingsTest, DeepGroupsEnd)
{
    auto drawing = Make(DrawingKind::Shape, "deep");
    for (int i = 0; i < 500; ++i) {
        auto group = Make(DrawingKind::Group, "g");
        group.children.push_back(std::move(drawing));
        drawing = std::move(group);
    }
    Paint(drawing);
    EXPECT_LT(canvas_.All("group").size(), 50u);
}

TEST_F(DrawingsTest, ManyDrawingsEnd)
{
    const auto shape = Make(DrawingKind::Shape, "s");
    for (int i = 0; i < 100'000; ++i)
        layout_.drawings.push_back({&shape, kPlace});
    PaintDrawings(layout_, {0, 0, 500, 500}, canvas_, measure_, options_);
    EXPECT_EQ(canvas_.All("group").size(), 20'000u);
}

TEST_F(DrawingsTest, DamagedPlacesAreLeftOut)
{
    auto shape = Make(DrawingKind::Shape, "s");
    Paint(shape, {std::numeric_limits<double>::quiet_NaN(), 0, 10, 10});
    Paint(shape, {0, 0, -10, 10});
    layout_.drawings = {{nullptr, kPlace}};
    PaintDrawings(layout_, {0, 0, 500, 500}, canvas_, measure_, options_);
    EXPECT_THAT(canvas_.lines, IsEmpty());
}

} // namespace
} // namespace orrery::look
