#include "look/display/now.h"
#include "util/time_zone_posix.h"

#include <gtest/gtest.h>

namespace orrery::look {
namespace {

using testing_support::kNewYearsEve;
using testing_support::ScopedTimeZone;

TEST(LocalSerial, CountsDaysInTheUsersTimeZone)
{
    const ScopedTimeZone ahead("XXX-1");
    EXPECT_NEAR(LocalSerial(kNewYearsEve), 46388 + 0.5 / 24, 1e-9); // 2027-01-01 00:30
    const ScopedTimeZone behind("XXX+1");
    EXPECT_NEAR(LocalSerial(kNewYearsEve), 46387 + 22.5 / 24, 1e-9);
}

} // namespace
} // namespace orrery::look
