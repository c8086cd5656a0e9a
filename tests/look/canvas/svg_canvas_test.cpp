#include "look/canvas/svg_canvas.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <string>

namespace orrery::look {
namespace {

using book::Color;
using book::FillPattern;

constexpr Color kRed{0xFF, 0, 0};
constexpr Color kBlue{0, 0, 0xFF};

Brush Solid(Color color)
{
    return {{FillPattern::Solid, color, {}, {}}, 1};
}

/// 12 points are 16 pixels.
TextStyle InRed(const char* font, bool isRightToLeft = false)
{
    TextStyle style;
    style.font.name = font;
    style.font.size = 12;
    style.color = kRed;
    style.isRightToLeft = isRightToLeft;
    return style;
}

/// A picture that was drawn and read again.
class SvgCanvasTest : public testing::Test {
protected:
    pugi::xml_node Read()
    {
        text_ = canvas_.Finish();
        const auto result = document_.load_buffer(text_.data(), text_.size());
        EXPECT_TRUE(result) << result.description() << "\n" << text_;
        return document_.child("svg");
    }
    int Count(const char* query) { return static_cast<int>(document_.select_nodes(query).size()); }
    std::string Css(pugi::xml_node node)
    {
        const std::string style = document_.child("svg").child("style").text().get();
        const std::string name = std::string(".") + node.attribute("class").value() + "{";
        const auto begin = style.find(name);
        if (begin == std::string::npos)
            return {};
        return style.substr(begin + name.size(), style.find('}', begin) - begin - name.size());
    }

    SvgCanvas canvas_{200.5, 100, "May & June"};
    std::string text_;
    pugi::xml_document document_;
};

TEST_F(SvgCanvasTest, SaysHowLargeItIsAndItsTitle)
{
    const auto svg = Read();
    EXPECT_STREQ(svg.attribute("xmlns").value(), "http://www.w3.org/2000/svg");
    EXPECT_STREQ(svg.attribute("width").value(), "200.5px");
    EXPECT_STREQ(svg.attribute("viewBox").value(), "0 0 200.5 100");
    EXPECT_STREQ(svg.child("title").text().get(), "May & June");
    EXPECT_EQ(svg.child("defs"), nullptr);
}

TEST_F(SvgCanvasTest, JoinsBoxesOfOneColourInTurn)
{
    canvas_.FillBox({0, 0, 10, 20}, Solid(kRed));
    canvas_.FillBox({10, 0, 10, 20}, Solid(kRed));
    canvas_.FillBox({20, 0, 10, 20}, Solid(kBlue));
    canvas_.FillBox({30, 0, 0, 20}, Solid(kBlue)); // nothing to see
    const auto svg = Read();
    ASSERT_EQ(Count("//path"), 2);
    EXPECT_STREQ(svg.child("path").attribute("d").value(), "M0 0H10V20H0zM10 0H20V20H10z");
    EXPECT_EQ(Css(svg.child("path")), "fill:#f00");
}

TEST_F(SvgCanvasTest, DrawsNothingForAnEmptyFill)
{
    canvas_.FillBox({0, 0, 10, 20}, Brush{});
    Read();
    EXPECT_EQ(Count("//path"), 0);
}

TEST_F(SvgCanvasTest, JoinsLinesOfOnePenInTurn)
{
    const Pen dashed{kBlue, 2, {3, 1}, 1};
    canvas_.DrawLine({0.5, 0.5}, {20.5, 0.5}, dashed);
    canvas_.DrawLine({0.5, 0.5}, {0.5, 9.5}, dashed);
    canvas_.DrawLine({0.5, 0.5}, {7, 9}, dashed);
    const auto svg = Read();
    ASSERT_EQ(Count("//path"), 1);
    EXPECT_STREQ(svg.child("path").attribute("d").value(), "M0.5 0.5H20.5M0.5 0.5V9.5M0.5 0.5L7 9");
    EXPECT_EQ(Css(svg.child("path")), "fill:none;stroke:#00f;stroke-width:2;stroke-dasharray:3,1");
}

TEST_F(SvgCanvasTest, WritesTextsAsTexts)
{
    canvas_.DrawText({10, 30}, "1 < 2", InRed("Calibri"), 30);
    const auto text = (Read(), document_.child("svg").child("text"));
    EXPECT_STREQ(text.text().get(), "1 < 2");
    EXPECT_STREQ(text.attribute("x").value(), "10");
    EXPECT_STREQ(text.attribute("y").value(), "30");
    EXPECT_EQ(Css(text), "font-family:Calibri, Carlito, sans-serif;font-size:16px;fill:#f00");
    EXPECT_FALSE(text.attribute("textLength")); // a short text in a font with a substitute
    EXPECT_FALSE(text.attribute("xml:space"));
}

TEST_F(SvgCanvasTest, KeepsTheWidthOfTextsInOtherFonts)
{
    canvas_.DrawText({0, 30}, "August", InRed("Snell"), 41.256);
    const auto text = (Read(), document_.child("svg").child("text"));
    EXPECT_STREQ(text.attribute("textLength").value(), "41.26");
    EXPECT_STREQ(text.attribute("lengthAdjust").value(), "spacingAndGlyphs");
}

TEST_F(SvgCanvasTest, KeepsBlanksAndDirections)
{
    canvas_.DrawText({0, 30}, "a  b", InRed("Calibri"), 20);
    canvas_.DrawText({0, 60}, "\xD7\x90", InRed("Arial", true), 10);
    Read();
    const auto texts = document_.child("svg").children("text");
    EXPECT_STREQ(texts.begin()->attribute("xml:space").value(), "preserve");
    EXPECT_STREQ(std::next(texts.begin())->attribute("direction").value(), "rtl");
    EXPECT_STREQ(std::next(texts.begin())->attribute("text-anchor").value(), "end");
}

TEST_F(SvgCanvasTest, GivesGroupsUniqueIds)
{
    for (const char* id : {"B6", "B6", "B 7"}) {
        canvas_.BeginGroup(id, "note <1>");
        canvas_.FillBox({0, 0, 10, 20}, Solid(kRed));
        canvas_.EndGroup();
    }
    canvas_.BeginGroup("B8", "nothing in it");
    canvas_.EndGroup();
    Read();
    ASSERT_EQ(Count("//g"), 3);
    EXPECT_EQ(Count("//g[@id='B6']"), 1);
    EXPECT_EQ(Count("//g[@id='B6-2']"), 1);
    EXPECT_EQ(Count("//g[@id='B_7']/title[.='note <1>']"), 1);
}

TEST_F(SvgCanvasTest, PutsTheIdOnASingleElement)
{
    canvas_.BeginGroup("B6", "");
    canvas_.DrawText({0, 30}, "6", InRed("Calibri"), 7);
    canvas_.EndGroup();
    Read();
    EXPECT_EQ(Count("//text[@id='B6']"), 1);
    EXPECT_EQ(Count("//g"), 0);
}

TEST_F(SvgCanvasTest, IdsOfDefinitionsMeetNoGroup)
{
    canvas_.BeginGroup("clip-1", "a name");
    canvas_.Clip({0, 0, 50, 50});
    canvas_.FillBox({0, 0, 100, 20}, Solid(kRed));
    canvas_.Restore();
    canvas_.EndGroup();
    Read();
    EXPECT_EQ(Count("//*[@id='clip-1']"), 1);
    const auto clip = document_.select_node("//path[@clip-path]").node();
    const std::string id = document_.select_node("//clipPath").node().attribute("id").value();
    EXPECT_EQ(clip.attribute("clip-path").value(), "url(#" + id + ")");
}

TEST_F(SvgCanvasTest, SharesClipPathsOfOneBox)
{
    for (int i = 0; i < 3; ++i) {
        canvas_.Clip({0, 0, 50, 50});
        canvas_.FillBox({0, 0, 100, 20}, Solid(kRed));
        canvas_.DrawLine({0, 0}, {100, 0}, Pen{});
        canvas_.Restore();
    }
    Read();
    EXPECT_EQ(Count("//clipPath"), 1);
    EXPECT_EQ(Count("//g[@clip-path]"), 3);
    EXPECT_STREQ(document_.select_node("//clipPath/path").node().attribute("d").value(),
                 "M0 0H50V50H0z");
}

TEST_F(SvgCanvasTest, ClipsWhatIsTurnedInsideTheClip)
{
    canvas_.Clip({0, 0, 50, 50});
    canvas_.Rotate({25, 25}, 45);
    canvas_.FillBox({0, 0, 50, 50}, Solid(kRed));
    canvas_.Restore();
    canvas_.Restore();
    Read();
    const auto turned = document_.select_node("//g[@clip-path]/path").node();
    EXPECT_STREQ(turned.attribute("transform").value(), "rotate(45 25 25)");
}

TEST_F(SvgCanvasTest, MirrorsAtTheMiddleAndScales)
{
    canvas_.Place({10, 20}, 0.435);
    canvas_.Flip({10, 10, 20, 20}, true, false);
    canvas_.FillBox({10, 10, 5, 5}, Solid(kRed));
    canvas_.Restore();
    canvas_.Restore();
    Read();
    EXPECT_STREQ(document_.select_node("//g").node().attribute("transform").value(),
                 "translate(10 20) scale(43.5e-2)");
    EXPECT_STREQ(document_.select_node("//g/path").node().attribute("transform").value(),
                 "matrix(-1 0 0 1 40 0)");
}

TEST_F(SvgCanvasTest, EndsWhatIsOpen)
{
    canvas_.BeginGroup("B6", "open");
    canvas_.Clip({0, 0, 50, 50});
    canvas_.FillBox({10, 10, 5, 5}, Solid(kRed));
    Read();
    EXPECT_EQ(Count("//g[@id='B6']/path"), 1);
}

TEST_F(SvgCanvasTest, DefinesAPatternOnce)
{
    const Brush brush{{FillPattern::LightHorizontal, kRed, kBlue, {}}, 1};
    canvas_.FillBox({0, 0, 10, 20}, brush);
    canvas_.DrawText({0, 30}, "6", InRed("Calibri"), 7);
    canvas_.FillBox({10, 0, 10, 20}, brush);
    Read();
    ASSERT_EQ(Count("//pattern"), 1);
    const auto pattern = document_.select_node("//pattern").node();
    EXPECT_STREQ(pattern.attribute("width").value(), "8");
    EXPECT_STREQ(pattern.first_child().attribute("fill").value(), "#00f");
    EXPECT_STREQ(pattern.last_child().attribute("fill").value(), "#f00");
    EXPECT_STREQ(pattern.last_child().attribute("d").value(), "M0 0h8v1H0zM0 4h8v1H0z");
}

TEST_F(SvgCanvasTest, TurnsGradientsInTheBox)
{
    const auto gradient = [](double degree) {
        return Brush{{FillPattern::None,
                      {},
                      {},
                      book::Gradient{false, degree, 0, 0, 0, 0, {{0, kRed}, {1, kBlue}}}},
                     1};
    };
    canvas_.FillBox({0, 0, 10, 20}, gradient(0));
    canvas_.FillBox({0, 0, 10, 20}, gradient(90));
    canvas_.FillBox({0, 0, 10, 20}, gradient(45));
    canvas_.FillBox({50, 0, 10, 20}, gradient(45));
    Read();
    ASSERT_EQ(Count("//linearGradient"), 3);
    EXPECT_EQ(Count("//linearGradient[@x1='0' and @x2='1' and @y1='0.5' and @y2='0.5']"), 1);
    EXPECT_EQ(Count("//linearGradient[@x1='0.5' and @x2='0.5' and @y1='0' and @y2='1']"), 1);
    EXPECT_EQ(Count("//linearGradient[@x1='0' and @x2='1' and @y1='0' and @y2='1']"), 1);
}

TEST_F(SvgCanvasTest, FillsFromTheMiddleOutwards)
{
    const Brush brush{{FillPattern::None,
                       {},
                       {},
                       book::Gradient{true, 0, 0.5, 0.5, 0.5, 0.5, {{0, kRed}, {1, kBlue}}}},
                      1};
    canvas_.FillBox({0, 0, 40, 20}, brush);
    Read();
    EXPECT_EQ(Count("//linearGradient"), 4); // towards each edge
    EXPECT_EQ(Count("//path[@d='M0 0L20 10L20 10L0 20z']"), 1);
}

TEST_F(SvgCanvasTest, EmbedsAPictureOnce)
{
    const PictureSource picture{"GIF89a....", "gif", {0, 0, 1, 1}};
    EXPECT_TRUE(canvas_.DrawPicture({1, 2, 30, 40}, picture));
    EXPECT_TRUE(canvas_.DrawPicture({50, 2, 60, 80}, picture));
    Read();
    ASSERT_EQ(Count("//image"), 1);
    ASSERT_EQ(Count("//use"), 2);
    EXPECT_STREQ(document_.select_node("//image").node().attribute("xlink:href").value(),
                 "data:image/gif;base64,R0lGODlhLi4uLg==");
    EXPECT_EQ(Count("//use[@x='50' and @y='2' and @width='60' and @height='80']"), 1);
}

TEST_F(SvgCanvasTest, CutsPictures)
{
    // The right half and the middle half of the height.
    const PictureSource picture{"GIF89a....", "gif", {0.5, 0.25, 0.5, 0.5}};
    EXPECT_TRUE(canvas_.DrawPicture({100, 50, 20, 10}, picture));
    Read();
    // A clip of the element itself would be moved by its place.
    EXPECT_EQ(Count("//g[@clip-path]/use[@x='80' and @y='45' and @width='40' and @height='20']"),
              1);
    EXPECT_EQ(Count("//use[@clip-path]"), 0);
}

TEST_F(SvgCanvasTest, RefusesPicturesThatNobodyShows)
{
    EXPECT_FALSE(canvas_.DrawPicture({0, 0, 9, 9}, {"....", "emf", {0, 0, 1, 1}}));
    EXPECT_FALSE(canvas_.DrawPicture({0, 0, 9, 9}, {"", "png", {0, 0, 1, 1}}));
    EXPECT_FALSE(canvas_.DrawPicture({0, 0, 9, 9}, {"....", "png", {1, 0, 0, 1}}));
    Read();
    EXPECT_EQ(Count("//defs"), 0);
}

TEST_F(SvgCanvasTest, DrawsPathsWithFillAndPen)
{
    using enum PathStep::Kind;
    const Path path{{Move, {1, 2}, {}, {}},
                    {Curve, {7, 8}, {3, 4}, {5, 6}},
                    {Line, {0, 9}, {}, {}},
                    {Close, {}, {}, {}}};
    canvas_.DrawPath(path, Brush{Solid(kRed).fill, 0.5}, Pen{kBlue, 1.5, {}, 1});
    const auto element = (Read(), document_.child("svg").child("path"));
    EXPECT_STREQ(element.attribute("d").value(), "M1 2C3 4 5 6 7 8L0 9z");
    EXPECT_EQ(Css(element), "fill:#f00;fill-opacity:0.5;stroke:#00f;stroke-width:1.5");
}

TEST_F(SvgCanvasTest, HolesAreWhatAPathWindsAroundTwice)
{
    using enum PathStep::Kind;
    const Path path{{Move, {1, 2}, {}, {}}, {Line, {0, 9}, {}, {}}, {Close, {}, {}, {}}};
    canvas_.DrawPath(path, Brush{Solid(kRed).fill, 1, true}, {});
    Read();
    EXPECT_EQ(Css(document_.child("svg").child("path")), "fill:#f00;fill-rule:evenodd");
}

} // namespace
} // namespace orrery::look
