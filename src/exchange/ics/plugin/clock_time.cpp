#include "exchange/ics/plugin/clock_time.h"

#include <chrono>

namespace orrery::exchange {
namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr int kMinuteSeconds = 60;
constexpr int kHourSeconds = 3600;

year_month_day DateOf(const icaltimetype& time)
{
    return {std::chrono::year(time.year), std::chrono::month(static_cast<unsigned>(time.month)),
            std::chrono::day(static_cast<unsigned>(time.day))};
}

sys_days PointOf(std::int32_t day)
{
    return sys_days(std::chrono::days(day));
}

} // namespace

std::int32_t DayOf(ClockTime time)
{
    const ClockTime day = time / kDaySeconds - (time % kDaySeconds < 0 ? 1 : 0);
    return static_cast<std::int32_t>(day);
}

std::int32_t FirstDayOfYear(int year)
{
    using std::chrono::January;
    const sys_days day(std::chrono::year(year) / January / 1);
    return static_cast<std::int32_t>(day.time_since_epoch().count());
}

int YearOf(std::int32_t day)
{
    return static_cast<int>(year_month_day(PointOf(day)).year());
}

bool IsValidTime(const icaltimetype& time)
{
    if (time.year < 1 || time.year > kLastYear || time.month < 1 || time.day < 1)
        return false;
    const bool isInDay = time.hour >= 0 && time.hour < 24 && time.minute >= 0 && time.minute < 60 &&
                         time.second >= 0 && time.second <= 60;
    return DateOf(time).ok() && (time.is_date != 0 || isInDay);
}

ClockTime ClockTimeOf(const icaltimetype& time)
{
    const ClockTime days = sys_days(DateOf(time)).time_since_epoch().count();
    const ClockTime inDay =
        time.is_date != 0 ? 0
                          : time.hour * kHourSeconds + time.minute * kMinuteSeconds + time.second;
    return days * kDaySeconds + inDay;
}

icaltimetype IcalTimeOf(ClockTime time, bool isDate)
{
    const std::int32_t day = DayOf(time);
    const year_month_day date(PointOf(day));
    const auto inDay = static_cast<int>(time - day * kDaySeconds);
    icaltimetype result = icaltime_null_time();
    result.year = static_cast<int>(date.year());
    result.month = static_cast<int>(static_cast<unsigned>(date.month()));
    result.day = static_cast<int>(static_cast<unsigned>(date.day()));
    result.is_date = isDate ? 1 : 0;
    if (isDate)
        return result;
    result.hour = inDay / kHourSeconds;
    result.minute = inDay % kHourSeconds / kMinuteSeconds;
    result.second = inDay % kMinuteSeconds;
    return result;
}

} // namespace orrery::exchange
