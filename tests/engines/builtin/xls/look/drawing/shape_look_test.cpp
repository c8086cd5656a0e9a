#include "engines/builtin/xls/look/drawing/shape_look.h"

#include "xls/art_builder.h"
#include "xls/look/test_styles.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using book::Color;
using Values = std::vector<std::pair<std::uint16_t, std::uint32_t>>;

book::Drawing LookOf(const Values& values, std::uint16_t type = 1, bool hasFrame = true,
                     std::uint32_t flags = 0, std::string_view data = {})
{
    const std::string table = test::PropertiesOf(values).substr(8) + std::string(data);
    ArtShape shape;
    shape.type = type;
    shape.flags = flags;
    shape.properties.Add(table, values.size());
    book::Drawing drawing;
    ReadShapeLook(shape, test::StylesForTests(), hasFrame, drawing);
    return drawing;
}

TEST(ShapeLookTest, IsWhiteWithABlackLineByDefault)
{
    const auto drawing = LookOf({});
    ASSERT_TRUE(drawing.fill);
    EXPECT_EQ(drawing.fill->pattern, book::FillPattern::Solid);
    EXPECT_EQ(drawing.fill->foreground, book::kWhite);
    EXPECT_TRUE(drawing.outline.isVisible);
    EXPECT_EQ(drawing.outline.color, book::kBlack);
    EXPECT_EQ(drawing.outline.width, 0.75);
}

TEST(ShapeLookTest, HasNeitherIfItIsAPicture)
{
    const auto drawing = LookOf({}, 75, false);
    EXPECT_FALSE(drawing.fill);
    EXPECT_FALSE(drawing.outline.isVisible);
    const auto framed = LookOf({{0x01FF, 0x00080008}, {0x01BF, 0x00100010}}, 75, false);
    EXPECT_TRUE(framed.fill);
    EXPECT_TRUE(framed.outline.isVisible);
}

TEST(ShapeLookTest, ReadsFillAndLine)
{
    const auto drawing = LookOf({{0x0181, 0x0000FF},
                                 {0x0182, 0x8000},
                                 {0x01C0, 0x0800000A},
                                 {0x01CB, 38100},
                                 {0x01CE, 6},
                                 {0x01D0, 1}});
    EXPECT_EQ(drawing.fill->foreground, (Color{0xFF, 0, 0}));
    EXPECT_EQ(drawing.fillOpacity, 0.5);
    EXPECT_EQ(drawing.outline.color, (Color{10, 1, 2}));
    EXPECT_EQ(drawing.outline.width, 3);
    EXPECT_EQ(drawing.outline.style, book::LineStyle::MediumDashed);
    EXPECT_TRUE(drawing.hasArrowAtStart);
    EXPECT_FALSE(drawing.hasArrowAtEnd);
}

TEST(ShapeLookTest, HasNoFillOrLineIfTheyAreOff)
{
    const auto drawing = LookOf({{0x01BF, 0x00100000}, {0x01FF, 0x00080000}});
    EXPECT_FALSE(drawing.fill);
    EXPECT_FALSE(drawing.outline.isVisible);
}

TEST(ShapeLookTest, NeverFillsLines)
{
    const auto drawing = LookOf({{0x01BF, 0x00100010}}, 20);
    EXPECT_FALSE(drawing.fill);
    EXPECT_EQ(drawing.geometry, "line");
}

TEST(ShapeLookTest, TurnsAndFlips)
{
    const auto drawing = LookOf({{0x0004, 0xFFA60000}}, 3, true, 0xC0); // -90 degrees
    EXPECT_EQ(drawing.rotation, 270);
    EXPECT_TRUE(drawing.flipsHorizontally);
    EXPECT_TRUE(drawing.flipsVertically);
    EXPECT_EQ(drawing.geometry, "ellipse");
    EXPECT_TRUE(LiesOnItsSide(270));
    EXPECT_TRUE(LiesOnItsSide(45));
    EXPECT_FALSE(LiesOnItsSide(44));
    EXPECT_FALSE(LiesOnItsSide(135));
    EXPECT_FALSE(LiesOnItsSide(180));
}

TEST(ShapeLookTest, ShadesFromTopToBottom)
{
    const auto drawing =
        LookOf({{0x0180, 7}, {0x0181, 0x0000FF}, {0x0183, 0xFF0000}, {0x018C, 100}});
    ASSERT_TRUE(drawing.fill->gradient);
    const auto& gradient = *drawing.fill->gradient;
    EXPECT_FALSE(gradient.isPath);
    EXPECT_EQ(gradient.degree, 90);
    EXPECT_EQ(gradient.stops,
              (std::vector<book::GradientStop>{{0, Color{0xFF, 0, 0}}, {1, Color{0, 0, 0xFF}}}));
}

TEST(ShapeLookTest, ShadesToTheMiddleAndBack)
{
    const auto drawing = LookOf({{0x0180, 7},
                                 {0x0181, 0x0000FF},
                                 {0x0183, 0xFF0000},
                                 {0x018B, 0xFFA60000}, // -90 degrees
                                 {0x018C, 50}});
    const auto& gradient = *drawing.fill->gradient;
    EXPECT_EQ(gradient.degree, 0);
    EXPECT_EQ(gradient.stops, (std::vector<book::GradientStop>{{0, Color{0xFF, 0, 0}},
                                                               {0.5, Color{0, 0, 0xFF}},
                                                               {0.5, Color{0, 0, 0xFF}},
                                                               {1, Color{0xFF, 0, 0}}}));
}

TEST(ShapeLookTest, ShadesThroughItsOwnColors)
{
    std::string stops = test::LongNumbers({0x00030003, 0x00010008});
    stops.resize(6);
    stops += test::LongNumbers({0x0000FF, 0, 0x00FF00, 0x4000, 0xFF0000, 0x10000});
    const auto drawing = LookOf({{0x0180, 7}, {0x018C, 100}, {0x8197, 30}}, 1, true, 0, stops);
    EXPECT_EQ(drawing.fill->gradient->stops,
              (std::vector<book::GradientStop>{
                  {0, Color{0xFF, 0, 0}}, {0.25, Color{0, 0xFF, 0}}, {1, Color{0, 0, 0xFF}}}));
}

TEST(CropTest, IsWhatIsLeft)
{
    const auto cropOf = [](const Values& values) {
        const std::string table = test::PropertiesOf(values).substr(8);
        ShapeProperties properties;
        properties.Add(table, values.size());
        return CropOf(properties);
    };
    EXPECT_EQ(cropOf({}), book::ShareBox());
    EXPECT_EQ(cropOf({{0x0100, 0x4000}, {0x0101, 0x2000}, {0x0102, 0x8000}, {0x0103, 0x1000}}),
              (book::ShareBox{0.5, 0.25, 0.9375, 0.875}));
    EXPECT_EQ(cropOf({{0x0100, 0x10000}}), book::ShareBox()) << "nothing would be left";
}

} // namespace
} // namespace orrery::xls
