#include "look/canvas/gradients.h"

#include <gtest/gtest.h>

namespace orrery::look {
namespace {

constexpr Box kBox{10, 20, 200, 100};

void ExpectNear(Point point, Point expected)
{
    EXPECT_NEAR(point.x, expected.x, 1e-9);
    EXPECT_NEAR(point.y, expected.y, 1e-9);
}

TEST(GradientsTest, ALinearOneRunsByItsDegrees)
{
    const GradientLine across = LineOfGradient(0, kBox);
    ExpectNear(across.from, {10, 70});
    ExpectNear(across.to, {210, 70});
    const GradientLine down = LineOfGradient(90, kBox);
    ExpectNear(down.from, {110, 20});
    ExpectNear(down.to, {110, 120});
}

TEST(GradientsTest, ASlantedOneHasItsEndsInTheCorners)
{
    const GradientLine line = LineOfGradient(45, kBox);
    // Upright to the line from each end of it lies a corner of the box.
    const double wayX = line.to.x - line.from.x;
    const double wayY = line.to.y - line.from.y;
    EXPECT_NEAR((10 - line.from.x) * wayX + (20 - line.from.y) * wayY, 0, 1e-6);
    EXPECT_NEAR((210 - line.to.x) * wayX + (120 - line.to.y) * wayY, 0, 1e-6);
}

TEST(GradientsTest, OneFromTheInsideHasFourSides)
{
    book::Gradient gradient;
    gradient.left = gradient.right = 0.25;
    gradient.top = 0;
    gradient.bottom = 0.5;
    const GradientSides parts = SidesOfGradient(gradient, kBox);
    EXPECT_EQ(parts.inner, (Box{60, 20, 0, 50}));
    ASSERT_EQ(parts.sides.size(), 3U) << "nothing is above the inner rectangle";
    EXPECT_EQ(parts.sides[0].box, (Box{10, 20, 50, 100}));
    EXPECT_EQ(parts.sides[0].degree, 180);
    EXPECT_EQ(parts.sides[1].box, (Box{60, 20, 150, 100}));
    EXPECT_EQ(parts.sides[2].box, (Box{10, 70, 200, 50}));
}

TEST(GradientsTest, ACircleReachesTheFarthestEdge)
{
    book::Gradient gradient;
    gradient.left = gradient.right = 0.25;
    gradient.top = gradient.bottom = 0.5;
    const GradientCircle circle = CircleOfGradient(gradient);
    ExpectNear(circle.middle, {0.25, 0.5});
    EXPECT_EQ(circle.radius, 0.75);
}

} // namespace
} // namespace orrery::look
