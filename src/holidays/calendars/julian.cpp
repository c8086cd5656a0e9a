#include "holidays/calendars/julian.h"

namespace orrery::holidays::calendars {
namespace {

using std::chrono::days;

/// 1 January of year 0 of the Julian calendar, as days from 1970.
constexpr int kJulianStart = -719530;
/// 1 Thout of year 0 of the Coptic calendar: 29 August 283 of the Julian calendar; before a leap
/// year of the Julian calendar it is the 30th.
constexpr int kCopticStart = -615923;
constexpr int kEthiopicBefore = 276;

CalendarYear YearOfThirtyDays(int year, int copticYear)
{
    const int first = kCopticStart + 365 * copticYear + FloorDivide(copticYear, 4);
    CalendarYear result(year, Date(days(first)));
    for (int month = 1; month <= 12; ++month)
        result.Add(month, 30);
    result.Add(13, FloorRemainder(copticYear, 4) == 3 ? 6 : 5);
    return result;
}

} // namespace

CalendarYear JulianYear(int year)
{
    constexpr std::array<int, 12> lengths = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const int first = kJulianStart + 365 * year + FloorDivide(year + 3, 4);
    CalendarYear result(year, Date(days(first)));
    for (int month = 1; month <= 12; ++month) {
        const bool leap = month == 2 && FloorRemainder(year, 4) == 0;
        result.Add(month, lengths[static_cast<std::size_t>(month - 1)] + (leap ? 1 : 0));
    }
    return result;
}

Date OrthodoxEaster(int gregorianYear)
{
    // Full moon by the cycle of 19 years, as days from 21 March of the Julian calendar, and the
    // Sunday after it.
    const int fullMoon = (19 * (gregorianYear % 19) + 15) % 30;
    const Date march21 = *JulianYear(gregorianYear).Find(3, 21);
    const Date moon = march21 + days(fullMoon);
    const int weekday = static_cast<int>(std::chrono::weekday(moon).c_encoding());
    return moon + days(7 - weekday);
}

CalendarYear CopticYear(int year)
{
    return YearOfThirtyDays(year, year);
}

CalendarYear EthiopicYear(int year)
{
    return YearOfThirtyDays(year, year - kEthiopicBefore);
}

} // namespace orrery::holidays::calendars
