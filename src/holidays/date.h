#pragma once

#include <chrono>
#include <cstdint>

namespace orrery::holidays {

/// A calendar date without a time; proleptic Gregorian, years [1:9999].
using Date = std::chrono::sys_days;

/// Days of a month [1:12] of a year. Throws OutOfRangeError for another month.
std::int16_t DaysInMonth(std::int16_t year, std::int16_t month);

/// Days of a month [1:12] in a year that is not a leap year. Throws OutOfRangeError for another
/// month.
std::int16_t TableDaysInMonth(std::int16_t month);

/// 1 Sunday to 7 Saturday.
std::int16_t WeekdayOf(Date date);

/// Builds a date; a month or day beyond its range rolls over. Throws OutOfRangeError if the date is
/// not in the years [1:9999].
Date MakeDate(std::int16_t year, std::int16_t month, std::int16_t day);

/// The last year whose Easter Sunday can be computed, and so the last of a calendar.
inline constexpr std::int16_t kLastYear = 6553;

/// Easter Sunday. Kept on purpose: it is computed in 16 bits and throws OverflowError after
/// `kLastYear`.
Date EasterDate(std::int16_t year);

} // namespace orrery::holidays
