#include "drawing_book.h"
#include "engines/builtin/xlsx/look/drawing/geometry/custom_geometry.h"
#include "engines/builtin/xlsx/look/drawing/geometry/guides.h"

#include <gmock/gmock.h>

#include <cmath>
#include <memory>

namespace orrery::xlsx {
namespace {

using Kind = book::FreeformStep::Kind;
using drawing::Guides;
using test::DrawingBook;
using testing::ElementsAre;
using testing::SizeIs;

/// A text as elements.
class Parsed {
public:
    explicit Parsed(std::string text) : text_(std::move(text)), scanner_(text_)
    {
        scanner_.Next();
        tree_ = std::make_unique<xml::Tree>(
            scanner_, [](std::string_view) { return false; }, 100'000);
    }
    xml::Element Root() const { return tree_->Root(); }

private:
    std::string text_;
    xml::Scanner scanner_;
    std::unique_ptr<xml::Tree> tree_;
};

struct FormulaCase {
    const char* name;
    const char* formula;
    double expected;
};
class GuideTest : public testing::TestWithParam<FormulaCase> {};

TEST_P(GuideTest, ComputesFormula)
{
    const Parsed list("<l><gd name=\"three\" fmla=\"val 3\"/><gd name=\"x\" fmla=\"" +
                      std::string(GetParam().formula) + "\"/></l>");
    Guides guides(4000, 1000);
    guides.Add(list.Root());
    EXPECT_NEAR(guides.Value("x"), GetParam().expected, 1e-6);
}

INSTANTIATE_TEST_SUITE_P(
    Formulas, GuideTest,
    testing::Values(
        FormulaCase{"Value", "val 12", 12}, FormulaCase{"Guide", "val three", 3},
        FormulaCase{"MultiplyDivide", "*/ 10 three 4", 7.5},
        FormulaCase{"AddSubtract", "+- 10 three 4", 9}, FormulaCase{"AddDivide", "+/ 10 4 7", 2},
        FormulaCase{"IfPositive", "?: 1 7 8", 7}, FormulaCase{"IfZero", "?: 0 7 8", 8},
        FormulaCase{"Absolute", "abs -5", 5}, FormulaCase{"ArcTangent", "at2 1 1", 2'700'000},
        FormulaCase{"CosineOfArcTangent", "cat2 10 3 4", 6},
        FormulaCase{"Cosine", "cos 10 3600000", 5}, FormulaCase{"Maximum", "max 3 9", 9},
        FormulaCase{"Minimum", "min 3 9", 3}, FormulaCase{"Length", "mod 2 3 6", 7},
        FormulaCase{"PinnedBelow", "pin 5 1 9", 5}, FormulaCase{"PinnedAbove", "pin 5 12 9", 9},
        FormulaCase{"SineOfArcTangent", "sat2 10 3 4", 8}, FormulaCase{"Sine", "sin 10 1800000", 5},
        FormulaCase{"Root", "sqrt 49", 7}, FormulaCase{"Tangent", "tan 10 2700000", 10},
        FormulaCase{"DividedByZero", "*/ 1 1 0", 0}, FormulaCase{"RootOfLess", "sqrt -1", 0},
        FormulaCase{"Unknown", "pow 2 3", 0}, FormulaCase{"Nothing", "", 0},
        FormulaCase{"Width", "val w", 4000}, FormulaCase{"Bottom", "val b", 1000},
        FormulaCase{"Middle", "val hc", 2000}, FormulaCase{"Quarter", "val wd4", 1000},
        FormulaCase{"HalfOfShorter", "val ssd2", 500}, FormulaCase{"Longer", "val ls", 4000},
        FormulaCase{"QuarterCircle", "val cd4", 5'400'000},
        FormulaCase{"ThreeQuarters", "val 3cd4", 16'200'000}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(Guides, KeepsALimit)
{
    std::string text = "<l>";
    for (std::size_t i = 0; i <= Guides::kMaxGuides; ++i)
        text += "<gd name=\"g" + std::to_string(i) + "\" fmla=\"val 7\"/>";
    const Parsed list(text + "</l>");
    Guides guides(1, 1);
    guides.Add(list.Root());
    EXPECT_EQ(guides.Value("g" + std::to_string(Guides::kMaxGuides - 1)), 7);
    EXPECT_EQ(guides.Value("g" + std::to_string(Guides::kMaxGuides)), 0);
}

std::shared_ptr<const book::Freeform> ReadGeometry(const std::string& content,
                                                   std::size_t steps = 1000)
{
    const Parsed geometry("<custGeom>" + content + "</custGeom>");
    return drawing::ReadCustomGeometry(geometry.Root(), 2000, 1000, steps);
}

TEST(CustomGeometry, PointsAreSharesOfThePath)
{
    const auto freeform = ReadGeometry(
        "<pathLst><path w=\"40\" h=\"20\"><moveTo><pt x=\"10\" y=\"0\"/></moveTo><lnTo><pt "
        "x=\"40\" "
        "y=\"20\"/></lnTo><cubicBezTo><pt x=\"20\" y=\"0\"/><pt x=\"0\" y=\"10\"/><pt x=\"0\" "
        "y=\"20\"/></cubicBezTo><close/></path></pathLst>");
    ASSERT_THAT(freeform->parts, SizeIs(1));
    EXPECT_TRUE(freeform->parts[0].isFilled);
    EXPECT_TRUE(freeform->parts[0].isStroked);
    EXPECT_THAT(freeform->parts[0].steps,
                ElementsAre(book::FreeformStep{Kind::Move, {0.25, 0}, {}, {}},
                            book::FreeformStep{Kind::Line, {1, 1}, {}, {}},
                            book::FreeformStep{Kind::Curve, {0, 1}, {0.5, 0}, {0, 0.5}},
                            book::FreeformStep{Kind::Close, {}, {}, {}}));
}

TEST(CustomGeometry, APathWithoutASizeHasTheShapes)
{
    const auto freeform = ReadGeometry(
        "<avLst><gd name=\"a\" fmla=\"val 50000\"/></avLst><gdLst><gd name=\"x\" fmla=\"*/ w a "
        "100000\"/></gdLst><rect l=\"x\" t=\"0\" r=\"r\" b=\"vc\"/><pathLst><path "
        "fill=\"darkenLess\" "
        "stroke=\"0\"><moveTo><pt x=\"x\" y=\"b\"/></moveTo></path></pathLst>");
    ASSERT_THAT(freeform->parts, SizeIs(1));
    EXPECT_EQ(freeform->parts[0].steps[0].point, (book::SharePoint{0.5, 1}));
    EXPECT_FALSE(freeform->parts[0].isStroked);
    EXPECT_EQ(freeform->parts[0].shade, -0.2);
    EXPECT_EQ(freeform->text, (book::ShareBox{0.5, 0, 1, 0.5}));
}

TEST(CustomGeometry, AQuadraticCurveKeepsItsCourse)
{
    const auto freeform = ReadGeometry(
        "<pathLst><path w=\"100\" h=\"100\" fill=\"none\"><moveTo><pt x=\"0\" y=\"0\"/></moveTo>"
        "<quadBezTo><pt x=\"30\" y=\"60\"/><pt x=\"60\" y=\"0\"/></quadBezTo></path></pathLst>");
    ASSERT_THAT(freeform->parts, SizeIs(1));
    EXPECT_FALSE(freeform->parts[0].isFilled);
    const book::FreeformStep& curve = freeform->parts[0].steps.at(1);
    EXPECT_NEAR(curve.control1.x, 0.2, 1e-9);
    EXPECT_NEAR(curve.control1.y, 0.4, 1e-9);
    EXPECT_NEAR(curve.control2.x, 0.4, 1e-9);
    EXPECT_NEAR(curve.control2.y, 0.4, 1e-9);
}

TEST(CustomGeometry, AnArcGoesAroundItsMiddle)
{
    const auto freeform = ReadGeometry("<pathLst><path w=\"200\" h=\"100\"><moveTo><pt x=\"0\" "
                                       "y=\"50\"/></moveTo><arcTo wR=\"100\" "
                                       "hR=\"50\" stAng=\"cd2\" swAng=\"cd2\"/></path></pathLst>");
    const auto& steps = freeform->parts.at(0).steps;
    ASSERT_THAT(steps, SizeIs(3));
    EXPECT_NEAR(steps[1].point.x, 0.5, 1e-9); // over the top to the right
    EXPECT_NEAR(steps[1].point.y, 0, 1e-9);
    EXPECT_NEAR(steps[2].point.x, 1, 1e-9);
    EXPECT_NEAR(steps[2].point.y, 0.5, 1e-9);
}

TEST(CustomGeometry, WhatFollowsAnEndBeginsThere)
{
    const auto freeform = ReadGeometry(
        "<pathLst><path w=\"10\" h=\"10\"><moveTo><pt x=\"5\" y=\"5\"/></moveTo><lnTo><pt x=\"10\" "
        "y=\"5\"/></lnTo><close/><lnTo><pt x=\"0\" y=\"0\"/></lnTo></path></pathLst>");
    const auto& steps = freeform->parts.at(0).steps;
    ASSERT_THAT(steps, SizeIs(5));
    EXPECT_EQ(steps[3], (book::FreeformStep{Kind::Move, {0.5, 0.5}, {}, {}}));
}

TEST(CustomGeometry, TooManyPointsAreNoOutline)
{
    std::string path = "<pathLst><path w=\"1\" h=\"1\">";
    for (int i = 0; i < 100; ++i)
        path += "<lnTo><pt x=\"1\" y=\"1\"/></lnTo>";
    path += "</path></pathLst>";
    EXPECT_TRUE(ReadGeometry(path, 200));
    EXPECT_FALSE(ReadGeometry(path, 100));
}

TEST(CustomGeometry, DamagedPathsAreFinite)
{
    const auto freeform = ReadGeometry(
        "<gdLst><gd name=\"x\" fmla=\"*/ 1e14 1e14 1\"/></gdLst><pathLst><path w=\"-1\" h=\"nan\">"
        "<arcTo wR=\"x\" hR=\"-5\" stAng=\"x\" swAng=\"x\"/><lnTo/><cubicBezTo><pt "
        "x=\"x\"/></cubicBezTo>"
        "<close/><close/><unknown/></path></pathLst>");
    ASSERT_TRUE(freeform);
    for (const auto& step : freeform->parts.at(0).steps) {
        for (const auto& point : {step.point, step.control1, step.control2})
            EXPECT_TRUE(std::isfinite(point.x) && std::isfinite(point.y));
    }
}

TEST(CustomGeometry, IsReadOfShapes)
{
    DrawingBook book(DrawingBook::Anchored(
        DrawingBook::Shape("<a:xfrm><a:off x=\"0\" y=\"0\"/><a:ext cx=\"80\" "
                           "cy=\"40\"/></a:xfrm><a:custGeom><a:pathLst>"
                           "<a:path><a:moveTo><a:pt x=\"20\" "
                           "y=\"vc\"/></a:moveTo></a:path></a:pathLst></a:custGeom>")));
    const auto drawings = book.Read();
    ASSERT_THAT(drawings, SizeIs(1));
    EXPECT_EQ(drawings[0].geometry, "custom");
    ASSERT_TRUE(drawings[0].freeform);
    EXPECT_EQ(drawings[0].freeform->parts.at(0).steps.at(0).point, (book::SharePoint{0.25, 0.5}));
    EXPECT_THAT(book.leftOut, SizeIs(0));
}

} // namespace
} // namespace orrery::xlsx
