#include "look/shape/freeform.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace orrery::look {
namespace {

using From = book::FreeformStep::Kind;

TEST(MakeFreeform, PutsSharesIntoTheBox)
{
    book::Freeform freeform;
    freeform.parts.push_back({{{From::Move, {0, 0.5}, {}, {}},
                               {From::Line, {1, 1}, {}, {}},
                               {From::Curve, {0, 1}, {0.5, 0}, {0.25, 0.25}},
                               {From::Close, {}, {}, {}}},
                              false,
                              true,
                              0.4});
    freeform.text = {0.25, 0, 0.75, 0.5};
    const Shape shape = MakeFreeform(freeform, {10, 20, 80, 40});
    ASSERT_EQ(shape.parts.size(), 1U);
    const ShapePart& part = shape.parts[0];
    EXPECT_FALSE(part.isFilled);
    EXPECT_TRUE(part.isStroked);
    EXPECT_TRUE(part.isEvenOdd);
    EXPECT_EQ(part.shade, 0.4);
    ASSERT_EQ(part.path.size(), 4U);
    EXPECT_EQ(part.path[0].kind, PathStep::Kind::Move);
    EXPECT_EQ(part.path[0].point, (Point{10, 40}));
    EXPECT_EQ(part.path[1].kind, PathStep::Kind::Line);
    EXPECT_EQ(part.path[1].point, (Point{90, 60}));
    EXPECT_EQ(part.path[2].kind, PathStep::Kind::Curve);
    EXPECT_EQ(part.path[2].point, (Point{10, 60}));
    EXPECT_EQ(part.path[2].control1, (Point{50, 20}));
    EXPECT_EQ(part.path[2].control2, (Point{30, 30}));
    EXPECT_EQ(part.path[3].kind, PathStep::Kind::Close);
    EXPECT_EQ(shape.textBox, (Box{30, 20, 40, 20}));
}

TEST(MakeFreeform, PointsStayFinite)
{
    book::Freeform freeform;
    freeform.parts.push_back(
        {{{From::Line, {1e300, std::numeric_limits<double>::quiet_NaN()}, {}, {}}}, true, true, 9});
    const Shape shape = MakeFreeform(freeform, {0, 0, 1e6, 1e6});
    EXPECT_EQ(shape.parts.at(0).path.at(0).point, (Point{1e9, 0}));
    EXPECT_EQ(shape.parts[0].shade, 1);
}

} // namespace
} // namespace orrery::look
