#include "look/shape/shape.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace orrery::look {
namespace {

using testing::ElementsAre;

constexpr Box kBox{10, 20, 80, 40};

/// The corners of a part, rounded to hundredths.
std::vector<Point> Corners(const ShapePart& part)
{
    std::vector<Point> corners;
    for (const auto& step : part.path) {
        if (step.kind != PathStep::Kind::Close)
            corners.push_back(
                {std::round(step.point.x * 100) / 100, std::round(step.point.y * 100) / 100});
    }
    return corners;
}

/// The points along a part's outline, closed.
std::vector<Point> Along(const ShapePart& part)
{
    std::vector<Point> points;
    Point last;
    Point first;
    for (const auto& step : part.path) {
        if (step.kind == PathStep::Kind::Close) {
            points.push_back(first);
            continue;
        }
        if (step.kind == PathStep::Kind::Move)
            first = step.point;
        for (int i = 1; step.kind == PathStep::Kind::Curve && i < 20; ++i) {
            const double t = i / 20.0;
            const double u = 1 - t;
            const auto mix = [&](double a, double b, double c, double d) {
                return u * u * u * a + 3 * u * u * t * b + 3 * u * t * t * c + t * t * t * d;
            };
            points.push_back({mix(last.x, step.control1.x, step.control2.x, step.point.x),
                              mix(last.y, step.control1.y, step.control2.y, step.point.y)});
        }
        points.push_back(step.point);
        last = step.point;
    }
    return points;
}

/// Whether a point is filled: the outline winds around it.
bool IsInside(const Shape& shape, Point point)
{
    for (const auto& part : shape.parts) {
        if (!part.isFilled)
            continue;
        double turned = 0;
        std::vector<ShapePart> pieces;
        for (const auto& step : part.path) { // every piece for itself
            if (step.kind == PathStep::Kind::Move)
                pieces.emplace_back();
            pieces.back().path.push_back(step);
        }
        for (const auto& one : pieces) {
            const auto points = Along(one);
            for (std::size_t i = 0; i < points.size(); ++i) {
                const Point& a = points[i];
                const Point& b = points[(i + 1) % points.size()];
                turned += std::remainder(std::atan2(b.y - point.y, b.x - point.x) -
                                             std::atan2(a.y - point.y, a.x - point.x),
                                         2 * 3.14159265358979);
            }
        }
        if (std::abs(turned) > 1)
            return true;
    }
    return false;
}

TEST(MakeShapeTest, ARectangleIsItsBox)
{
    const auto shape = MakeShape("rect", kBox, {});
    ASSERT_EQ(shape.parts.size(), 1u);
    EXPECT_THAT(Corners(shape.parts[0]),
                ElementsAre(Point{10, 20}, Point{90, 20}, Point{90, 60}, Point{10, 60}));
    EXPECT_EQ(shape.textBox, kBox);
}

TEST(MakeShapeTest, AnUnknownShapeIsARectangle)
{
    EXPECT_FALSE(IsKnownShape("spiral"));
    EXPECT_EQ(Corners(MakeShape("spiral", kBox, {}).parts[0]),
              Corners(MakeShape("rect", kBox, {}).parts[0]));
}

TEST(MakeShapeTest, AnEllipseTouchesItsBox)
{
    const auto points = Along(MakeShape("ellipse", kBox, {}).parts[0]);
    for (const auto& point : points) {
        const double x = (point.x - 50) / 40;
        const double y = (point.y - 40) / 20;
        EXPECT_NEAR(x * x + y * y, 1, 0.002);
    }
}

TEST(MakeShapeTest, CornersAreRoundByAShareOfTheShorterSide)
{
    // 25 percent of 40 pixels.
    const auto corners = Corners(MakeShape("roundRect", kBox, {25'000}).parts[0]);
    EXPECT_EQ(corners.front(), (Point{10, 30}));
    EXPECT_NE(std::find(corners.begin(), corners.end(), Point{20, 20}), corners.end());
    EXPECT_NE(std::find(corners.begin(), corners.end(), Point{80, 60}), corners.end());
}

TEST(MakeShapeTest, AnArrowHasItsAdjustments)
{
    // The shaft has half of the height; the head is as long as half of the shorter side.
    EXPECT_THAT(Corners(MakeShape("rightArrow", kBox, {}).parts[0]),
                ElementsAre(Point{10, 30}, Point{70, 30}, Point{70, 20}, Point{90, 40},
                            Point{70, 60}, Point{70, 50}, Point{10, 50}, Point{10, 40}));
    EXPECT_EQ(Corners(MakeShape("rightArrow", kBox, {20'000, 100'000}).parts[0])[1],
              (Point{50, 36}));
}

TEST(MakeShapeTest, ArrowsPointWhereTheirNamesSay)
{
    const auto tip = [](const char* name) {
        return Corners(MakeShape(name, kBox, {}).parts[0])[3];
    };
    EXPECT_EQ(tip("rightArrow"), (Point{90, 40}));
    EXPECT_EQ(tip("leftArrow"), (Point{10, 40}));
    EXPECT_EQ(tip("upArrow"), (Point{50, 20}));
    EXPECT_EQ(tip("downArrow"), (Point{50, 60}));
}

TEST(MakeShapeTest, RingsAndFramesAreHollow)
{
    for (const char* name : {"donut", "frame"}) {
        const auto shape = MakeShape(name, kBox, {});
        EXPECT_FALSE(IsInside(shape, {50, 40})) << name;
        EXPECT_TRUE(IsInside(shape, {50, 22})) << name;
    }
    const auto sign = MakeShape("noSmoking", kBox, {});
    EXPECT_TRUE(IsInside(sign, {50, 40})); // the bar
    EXPECT_FALSE(IsInside(sign, {62, 33}));
    EXPECT_FALSE(IsInside(sign, {38, 47}));
}

TEST(MakeShapeTest, PiesAndArcsGoClockwiseFromTheRight)
{
    // A quarter is missing at the upper right, from 270 degrees on.
    const auto pie = MakeShape("pie", kBox, {0, 16'200'000});
    EXPECT_FALSE(IsInside(pie, {60, 35}));
    EXPECT_TRUE(IsInside(pie, {60, 45}));
    EXPECT_TRUE(IsInside(pie, {40, 35}));
    const auto arc = MakeShape("arc", kBox, {16'200'000, 0});
    EXPECT_TRUE(IsInside(arc, {60, 35}));
    EXPECT_FALSE(IsInside(arc, {40, 35}));
}

TEST(MakeShapeTest, StarsTouchTheTop)
{
    for (const char* name : {"star4", "star5", "star6", "star8", "star32"})
        EXPECT_EQ(Corners(MakeShape(name, kBox, {}).parts[0])[0], (Point{50, 20})) << name;
    const auto corners = Corners(MakeShape("star5", kBox, {}).parts[0]);
    const auto [left, right] = std::minmax_element(corners.begin(), corners.end(),
                                                   [](Point a, Point b) { return a.x < b.x; });
    EXPECT_NEAR(left->x, 10, 0.01);
    EXPECT_NEAR(right->x, 90, 0.01);
}

TEST(MakeShapeTest, ConnectorsBendWhereTheyAreAdjusted)
{
    EXPECT_THAT(Corners(MakeShape("bentConnector3", kBox, {25'000}).parts[0]),
                ElementsAre(Point{10, 20}, Point{30, 20}, Point{30, 60}, Point{90, 60}));
    const auto shape = MakeShape("curvedConnector3", kBox, {});
    EXPECT_FALSE(shape.parts[0].isFilled);
    EXPECT_EQ(Corners(shape.parts[0]).back(), (Point{90, 60}));
}

TEST(MakeShapeTest, CalloutsPointAtTheirTips)
{
    // The tip lies 50 percent left of the middle and 100 percent below it.
    for (const char* name : {"wedgeRectCallout", "wedgeRoundRectCallout", "wedgeEllipseCallout"}) {
        const auto corners = Corners(MakeShape(name, kBox, {-50'000, 100'000}).parts[0]);
        EXPECT_NE(std::find(corners.begin(), corners.end(), Point{10, 80}), corners.end()) << name;
    }
    const auto line = MakeShape("borderCallout1", kBox, {50'000, 0, 150'000, -25'000});
    EXPECT_THAT(Corners(line.parts[1]), ElementsAre(Point{10, 40}, Point{-10, 80}));
}

const char* const kNames[] = {"rect",
                              "roundRect",
                              "ellipse",
                              "triangle",
                              "rtTriangle",
                              "diamond",
                              "parallelogram",
                              "trapezoid",
                              "pentagon",
                              "hexagon",
                              "heptagon",
                              "octagon",
                              "decagon",
                              "dodecagon",
                              "plus",
                              "star4",
                              "star5",
                              "star6",
                              "star7",
                              "star8",
                              "star10",
                              "star12",
                              "star16",
                              "star24",
                              "star32",
                              "rightArrow",
                              "leftArrow",
                              "upArrow",
                              "downArrow",
                              "leftRightArrow",
                              "upDownArrow",
                              "quadArrow",
                              "leftRightUpArrow",
                              "leftUpArrow",
                              "bentUpArrow",
                              "bentArrow",
                              "uturnArrow",
                              "notchedRightArrow",
                              "stripedRightArrow",
                              "curvedRightArrow",
                              "curvedLeftArrow",
                              "curvedUpArrow",
                              "curvedDownArrow",
                              "chevron",
                              "homePlate",
                              "cube",
                              "can",
                              "bevel",
                              "donut",
                              "noSmoking",
                              "blockArc",
                              "foldedCorner",
                              "smileyFace",
                              "heart",
                              "lightningBolt",
                              "sun",
                              "moon",
                              "cloud",
                              "arc",
                              "leftBracket",
                              "rightBracket",
                              "leftBrace",
                              "rightBrace",
                              "bracketPair",
                              "bracePair",
                              "ribbon",
                              "ribbon2",
                              "wave",
                              "doubleWave",
                              "flowChartProcess",
                              "flowChartDecision",
                              "flowChartInputOutput",
                              "flowChartPredefinedProcess",
                              "flowChartInternalStorage",
                              "flowChartDocument",
                              "flowChartMultidocument",
                              "flowChartTerminator",
                              "flowChartPreparation",
                              "flowChartManualInput",
                              "flowChartManualOperation",
                              "flowChartConnector",
                              "flowChartOffpageConnector",
                              "flowChartPunchedCard",
                              "flowChartPunchedTape",
                              "flowChartSummingJunction",
                              "flowChartOr",
                              "flowChartCollate",
                              "flowChartSort",
                              "flowChartExtract",
                              "flowChartMerge",
                              "flowChartOnlineStorage",
                              "flowChartDelay",
                              "flowChartMagneticTape",
                              "flowChartMagneticDisk",
                              "flowChartMagneticDrum",
                              "flowChartDisplay",
                              "flowChartAlternateProcess",
                              "line",
                              "lineInv",
                              "straightConnector1",
                              "bentConnector2",
                              "bentConnector3",
                              "bentConnector4",
                              "bentConnector5",
                              "curvedConnector2",
                              "curvedConnector3",
                              "curvedConnector4",
                              "curvedConnector5",
                              "snip1Rect",
                              "snip2SameRect",
                              "snip2DiagRect",
                              "snipRoundRect",
                              "round1Rect",
                              "round2SameRect",
                              "round2DiagRect",
                              "frame",
                              "halfFrame",
                              "corner",
                              "diagStripe",
                              "pie",
                              "pieWedge",
                              "chord",
                              "teardrop",
                              "plaque",
                              "mathPlus",
                              "mathMinus",
                              "mathEqual",
                              "mathNotEqual",
                              "mathMultiply",
                              "mathDivide"};

class EveryShapeTest : public testing::TestWithParam<const char*> {};

TEST_P(EveryShapeTest, StaysInItsBoxAndFillsIt)
{
    ASSERT_TRUE(IsKnownShape(GetParam()));
    const auto shape = MakeShape(GetParam(), kBox, {});
    Point low{1e9, 1e9};
    Point high{-1e9, -1e9};
    for (const auto& part : shape.parts) {
        for (const auto& point : Along(part)) {
            low = {std::min(low.x, point.x), std::min(low.y, point.y)};
            high = {std::max(high.x, point.x), std::max(high.y, point.y)};
        }
    }
    constexpr double kTolerance = 1.5; // bumps and curves are no exact circles
    EXPECT_GE(low.x, kBox.x - kTolerance);
    EXPECT_GE(low.y, kBox.y - kTolerance);
    EXPECT_LE(high.x, kBox.Right() + kTolerance);
    EXPECT_LE(high.y, kBox.Bottom() + kTolerance);
    // Signs leave a margin, and an arc is a quarter.
    EXPECT_GE(high.x - low.x, kBox.width * 0.4);
    EXPECT_GE(high.y - low.y, kBox.height * 0.2);
    EXPECT_GE(shape.textBox.width, 0);
    EXPECT_GE(shape.textBox.height, 0);
}

TEST_P(EveryShapeTest, BearsAnyBoxAndAdjustment)
{
    const double infinity = std::numeric_limits<double>::infinity();
    for (const Box& box : {Box{0, 0, 0, 0}, Box{0, 0, 100, 0}, Box{0, 0, 0, 100}, Box{0, 0, 1e9, 1},
                           Box{0, 0, -5, -5}, Box{0, 0, infinity, 5}}) {
        for (const double value : {0.0, -1e12, 1e12, 50'000.0, infinity, std::nan("")}) {
            const auto shape = MakeShape(GetParam(), box, std::vector<double>(8, value));
            EXPECT_LT(shape.parts.size(), 20u);
            for (const auto& part : shape.parts) {
                EXPECT_LT(part.path.size(), 200u);
                for (const auto& step : part.path) {
                    EXPECT_TRUE(std::isfinite(step.point.x) && std::isfinite(step.point.y) &&
                                std::isfinite(step.control1.x) && std::isfinite(step.control2.y));
                }
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Names, EveryShapeTest, testing::ValuesIn(kNames),
                         [](const auto& test) { return std::string(test.param); });

} // namespace
} // namespace orrery::look
