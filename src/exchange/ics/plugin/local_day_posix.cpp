#include "exchange/ics/plugin/clock_time.h"

#include <ctime>

namespace orrery::exchange {

std::int32_t LocalDayOf(ClockTime utc)
{
    const auto moment = static_cast<std::time_t>(utc);
    std::tm local{};
    if (::localtime_r(&moment, &local) == nullptr)
        return DayOf(utc);
    return DayOf(utc + local.tm_gmtoff);
}

} // namespace orrery::exchange
