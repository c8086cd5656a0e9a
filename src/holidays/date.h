#pragma once

#include <chrono>
#include <cstdint>

namespace orrery::holidays {

/// A calendar date without a time; proleptic Gregorian, from the year 1 to 9999.
using Date = std::chrono::sys_days;

/// Days of a month [1:12] of a year. Throws OutOfRangeError for another month.
std::int16_t DaysInMonth(std::int16_t year, std::int16_t month);

/// The length of a month [1:12] in the fixed table, where February always has 28 days.
/// Throws OutOfRangeError for another month.
std::int16_t TableDaysInMonth(std::int16_t month);

/// 1 Sunday to 7 Saturday.
std::int16_t WeekdayOf(Date date);

/// The date built from year, month and day; a month or day beyond its range rolls over. Throws
/// OutOfRangeError for a date outside the years [1:9999].
Date MakeDate(std::int16_t year, std::int16_t month, std::int16_t day);

/// Easter Sunday, computed in 16-bit steps: throws OverflowError from the year 6554 on.
Date EasterDate(std::int16_t year);

} // namespace orrery::holidays
