#include "holidays/calendars/indian.h"

namespace orrery::holidays::calendars {

CalendarYear IndianYear(int year)
{
    constexpr int sakaEra = 78; // year 1 is 79
    const std::chrono::year gregorian(year + sakaEra);
    const int firstDay = gregorian.is_leap() ? 21 : 22;
    CalendarYear result(year, gregorian / std::chrono::March / firstDay);
    result.Add(1, gregorian.is_leap() ? 31 : 30);
    for (int month = 2; month <= 12; ++month)
        result.Add(month, month <= 6 ? 31 : 30);
    return result;
}

} // namespace orrery::holidays::calendars
