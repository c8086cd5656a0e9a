#include "holidays/calendars/hebrew.h"

namespace orrery::holidays::calendars {
namespace {

// Time is counted in parts, 1,080 an hour; the day begins at 18 h.
constexpr int kPartsOfDay = 24 * 1080;
constexpr int kPartsOfMonth = 12 * 1080 + 793; // beyond 29 days
constexpr int kEpoch = -2092590;               // 1 Tishri of year 1, 7 October 3761 BC, from 1970

bool IsLeapYear(int year)
{
    return FloorRemainder(7 * year + 1, 19) < 7;
}

/// Days from 1 Tishri of year 1 to that of a year, before the rule on the lengths of years.
int DaysByMoon(int year)
{
    const int months = FloorDivide(235 * year - 234, 19);
    // The first new moon was 5 hours and 204 parts into the second day. A new moon at noon or
    // later moves the year to the next day.
    const long long parts =
        5LL * 1080 + 204 + 6LL * 1080 + static_cast<long long>(months) * kPartsOfMonth;
    const long long wholeDays =
        parts >= 0 ? parts / kPartsOfDay : -((-parts + kPartsOfDay - 1) / kPartsOfDay);
    const int day = 29 * months + static_cast<int>(wholeDays);
    // Day 0 is a Monday. The year begins on no Sunday, Wednesday and Friday.
    const int weekday = FloorRemainder(day + 1, 7);
    return weekday == 0 || weekday == 3 || weekday == 5 ? day + 1 : day;
}

/// Likewise with that rule: no year has 356 days, and none follows one of 382.
int DaysToYear(int year)
{
    const int day = DaysByMoon(year);
    if (DaysByMoon(year + 1) - day == 356)
        return day + 2;
    return day - DaysByMoon(year - 1) == 382 ? day + 1 : day;
}

} // namespace

CalendarYear HebrewYear(int year)
{
    const int first = DaysToYear(year);
    const int length = DaysToYear(year + 1) - first;
    CalendarYear result(year, Date(std::chrono::days(kEpoch + first)));
    result.Add(7, 30);
    result.Add(8, length % 10 == 5 ? 30 : 29); // a complete year has 355 or 385 days
    result.Add(9, length % 10 == 3 ? 29 : 30); // a deficient one 353 or 383
    result.Add(10, 29);
    result.Add(11, 30);
    if (IsLeapYear(year))
        result.Add(12, 30, true);
    result.Add(12, 29);
    for (int month = 1; month <= 6; ++month)
        result.Add(month, month % 2 == 1 ? 30 : 29);
    return result;
}

} // namespace orrery::holidays::calendars
