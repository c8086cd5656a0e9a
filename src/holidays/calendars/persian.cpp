#include "holidays/calendars/persian.h"

#include "holidays/calendars/sun.h"

namespace orrery::holidays::calendars {
namespace {

Date Nowruz(int year)
{
    constexpr int firstYear = 621; // the Gregorian year in which year 0 began
    constexpr Zone iran = ZoneOfHours(3.5);
    // An equinox after noon is on the next day when the day begins twelve hours earlier.
    return iran.DateAt(SunMoment(year + firstYear, 0) + 0.5);
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
