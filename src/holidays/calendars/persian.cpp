#include "holidays/calendars/persian.h"

#include "holidays/calendars/sky_dates.h"

namespace orrery::holidays::calendars {
namespace {

Date Nowruz(int year)
{
    constexpr int firstYear = 621; // the Gregorian year in which year 0 began
    // An equinox after noon counts for the next day: as if days began twelve hours earlier.
    constexpr Zone fromNoon = ZoneOfHours(3.5 + 12);
    return SunDate(year + firstYear, 0, fromNoon);
}

} // namespace

CalendarYear PersianYear(int year)
{
    const Date first = Nowruz(year);
    const int length = static_cast<int>((Nowruz(year + 1) - first).count());
    CalendarYear result(year, first);
    for (int month = 1; month <= 11; ++month)
        result.Add(month, month <= 6 ? 31 : 30);
    result.Add(12, length - (6 * 31 + 5 * 30));
    return result;
}

} // namespace orrery::holidays::calendars
