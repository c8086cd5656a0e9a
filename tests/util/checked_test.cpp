#include "util/checked.h"
#include "util/error.h"

#include <gtest/gtest.h>

namespace orrery::util {
namespace {

TEST(Checked16, AddsUpToTheLimits)
{
    EXPECT_EQ(Add16(32766, 1), 32767);
    EXPECT_EQ(Add16(-32767, -1), -32768);
    EXPECT_THROW(Add16(32767, 1), OverflowError);
    EXPECT_THROW(Add16(-32768, -1), OverflowError);
}

TEST(Checked16, SubtractsUpToTheLimits)
{
    EXPECT_EQ(Subtract16(-32767, 1), -32768);
    EXPECT_EQ(Subtract16(-1, -32768), 32767);
    EXPECT_THROW(Subtract16(-32768, 1), OverflowError);
    EXPECT_THROW(Subtract16(0, -32768), OverflowError);
}

TEST(Checked16, MultipliesUpToTheLimits)
{
    EXPECT_EQ(Multiply16(5, 6553), 32765);
    EXPECT_EQ(Multiply16(-16384, 2), -32768);
    EXPECT_THROW(Multiply16(5, 6554), OverflowError);
    EXPECT_THROW(Multiply16(-32768, -1), OverflowError);
    EXPECT_THROW(Multiply16(-32768, -32768), OverflowError);
}

TEST(Checked32, AddsAndMultipliesUpToTheLimits)
{
    EXPECT_EQ(Add32(2147483646, 1), 2147483647);
    EXPECT_THROW(Add32(2147483647, 1), OverflowError);
    EXPECT_THROW(Add32(-2147483647, -2), OverflowError);
    EXPECT_EQ(Multiply32(65536, 32767), 2147418112);
    EXPECT_THROW(Multiply32(65536, 32768), OverflowError);
    EXPECT_THROW(Multiply32(-2147483647 - 1, -1), OverflowError);
}

TEST(Narrow16, KeepsWhatFits)
{
    EXPECT_EQ(Narrow16(-32768), -32768);
    EXPECT_EQ(Narrow16(32767), 32767);
    EXPECT_THROW(Narrow16(32768), OverflowError);
    EXPECT_THROW(Narrow16(-32769), OverflowError);
    EXPECT_THROW(Narrow16(65536), OverflowError); // would wrap to 0
}

} // namespace
} // namespace orrery::util
