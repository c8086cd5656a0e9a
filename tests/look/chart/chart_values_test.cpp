#include "look/chart/chart_values.h"

#include <gtest/gtest.h>
#include <limits>

namespace orrery::look {
namespace {

TEST(ShortNumber, HasTenDigits)
{
    EXPECT_EQ(ShortNumber(0), "0");
    EXPECT_EQ(ShortNumber(-0.0), "0");
    EXPECT_EQ(ShortNumber(1200), "1200");
    EXPECT_EQ(ShortNumber(0.1 + 0.2), "0.3");
    EXPECT_EQ(ShortNumber(-3.5), "-3.5");
    EXPECT_EQ(ShortNumber(1.0 / 3), "0.3333333333");
    EXPECT_EQ(ShortNumber(12345678901.0), "12345678901");
    EXPECT_EQ(ShortNumber(1e20), "1.0000e+20");
    EXPECT_EQ(ShortNumber(std::numeric_limits<double>::infinity()), "");
}

TEST(CachedChartValues, FormatsThroughTheFormatter)
{
    const CachedChartValues values(
        [](double number, const std::string& format) { return format + ShortNumber(number); });
    EXPECT_EQ(values.Format(2, "kg "), "kg 2");
    EXPECT_EQ(CachedChartValues().Format(2, "0.00"), "2");
}

} // namespace
} // namespace orrery::look
