#include "app/today.h"

#include <gtest/gtest.h>

namespace orrery::app {
namespace {

/// The moment when the clocks on this system show this.
std::time_t Locally(int year, int month, int day, int hour)
{
    std::tm parts = {};
    parts.tm_year = year - 1900;
    parts.tm_mon = month - 1;
    parts.tm_mday = day;
    parts.tm_hour = hour;
    parts.tm_isdst = -1;
    return std::mktime(&parts);
}

TEST(LocalMonth, CountsYearsAndMonthsAsPeopleDo)
{
    const YearAndMonth last = LocalMonth(Locally(2026, 12, 31, 23));
    EXPECT_EQ(last.year, 2026);
    EXPECT_EQ(last.month, 12);
    const YearAndMonth first = LocalMonth(Locally(2027, 1, 1, 1));
    EXPECT_EQ(first.year, 2027);
    EXPECT_EQ(first.month, 1);
}

} // namespace
} // namespace orrery::app
