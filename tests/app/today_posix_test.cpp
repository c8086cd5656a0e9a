#include "app/today.h"
#include "util/time_zone_posix.h"

#include <gtest/gtest.h>

namespace orrery::app {
namespace {

using testing_support::kNewYearsEve;
using testing_support::ScopedTimeZone;

TEST(LocalMonth, IsThatOfTheUsersTimeZone)
{
    const ScopedTimeZone ahead("XXX-1");
    EXPECT_EQ(LocalMonth(kNewYearsEve).year, 2027);
    EXPECT_EQ(LocalMonth(kNewYearsEve).month, 1);
    const ScopedTimeZone behind("XXX+1");
    EXPECT_EQ(LocalMonth(kNewYearsEve).year, 2026);
    EXPECT_EQ(LocalMonth(kNewYearsEve + 3600).year, 2026) << "half an hour after midnight";
}

} // namespace
} // namespace orrery::app
