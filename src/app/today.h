#pragma once

#include <cstdint>
#include <ctime>

namespace orrery::app {

/// A year and a month [1:12].
struct YearAndMonth {
    std::int16_t year;
    std::int16_t month;
};

/// The month in which a moment lies, in local time.
YearAndMonth LocalMonth(std::time_t moment);

} // namespace orrery::app
