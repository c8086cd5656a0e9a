#pragma once

#include "holidays/calendars/calendar.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace orrery::holidays::calendars {

inline Date On(int year, int month, int day)
{
    return std::chrono::year(year) / month / day;
}

/// "2027-2-6".
inline std::string Text(Date date)
{
    const std::chrono::year_month_day parts(date);
    return std::to_string(static_cast<int>(parts.year())) + '-' +
           std::to_string(static_cast<unsigned>(parts.month())) + '-' +
           std::to_string(static_cast<unsigned>(parts.day()));
}

inline std::string Text(const Dates& dates)
{
    std::string text;
    for (const Date date : dates)
        text += (text.empty() ? "" : " ") + Text(date);
    return text;
}

/// The dates of a day of a calendar in a Gregorian year, with blanks between.
inline std::string InYear(Calendar calendar, int gregorianYear, int month, int day)
{
    return Text(DatesInYear(calendar, gregorianYear, month, day));
}

} // namespace orrery::holidays::calendars
