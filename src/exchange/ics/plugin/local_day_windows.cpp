#include "exchange/ics/plugin/clock_time.h"

#include <windows.h>

namespace orrery::exchange {

std::int32_t LocalDayOf(ClockTime utc)
{
    const icaltimetype time = IcalTimeOf(utc, false);
    SYSTEMTIME moment{};
    moment.wYear = static_cast<WORD>(time.year);
    moment.wMonth = static_cast<WORD>(time.month);
    moment.wDay = static_cast<WORD>(time.day);
    moment.wHour = static_cast<WORD>(time.hour);
    moment.wMinute = static_cast<WORD>(time.minute);
    moment.wSecond = static_cast<WORD>(time.second);
    SYSTEMTIME local{};
    if (::SystemTimeToTzSpecificLocalTime(nullptr, &moment, &local) == 0) // before 1601
        return DayOf(utc);
    icaltimetype shown = icaltime_null_date();
    shown.year = local.wYear;
    shown.month = local.wMonth;
    shown.day = local.wDay;
    return DayOf(ClockTimeOf(shown));
}

} // namespace orrery::exchange
