#include "look/layout/axis.h"

#include <gtest/gtest.h>

namespace orrery::look {
namespace {

TEST(Axis, HasTheDefaultSizeBetweenSpans)
{
    const Axis axis(10, {{2, 3, 5}, {6, 6, 0}});
    EXPECT_EQ(axis.Position(1), 0);
    EXPECT_EQ(axis.Position(2), 10);
    EXPECT_EQ(axis.Position(3), 15);
    EXPECT_EQ(axis.Position(4), 20);
    EXPECT_EQ(axis.Position(6), 40);
    EXPECT_EQ(axis.Position(7), 40);
    EXPECT_EQ(axis.Position(9), 60);
    EXPECT_EQ(axis.Size(1), 10);
    EXPECT_EQ(axis.Size(3), 5);
    EXPECT_EQ(axis.Size(6), 0);
    EXPECT_EQ(axis.Size(7), 10);
    EXPECT_EQ(axis.Length(3, 6), 25);
}

TEST(Axis, LeavesOutSpansThatOverlap)
{
    const Axis axis(10, {{1, 3, 5}, {2, 4, 7}, {5, 4, 1}, {0, 0, 1}, {4, 4, 2}});
    EXPECT_EQ(axis.Position(5), 17);
}

TEST(Axis, AMillionRowsCostNothing)
{
    EXPECT_EQ(Axis(20, {{1, 1'048'576, 3}}).Position(1'048'577), 3.0 * 1'048'576);
}

} // namespace
} // namespace orrery::look
