#pragma once

#include "holidays/holiday_rule.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <string>

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

/// The holidays of a year, sorted by date, with the reading position of the month block writer.
struct HolidayDateList {
    static constexpr std::size_t kCapacity = 1025;
    std::array<Date, kCapacity> Dates{};
    std::array<std::string, kCapacity> Names;
    std::int16_t Count = 0;
    std::int16_t Cursor = 0; ///< only moves forward; 0 when the list is rebuilt

    /// Throws OutOfRangeError beyond the 1,025 slots.
    Date DateAt(std::int16_t index) const;
    const std::string& NameAt(std::int16_t index) const;
};

/// Fills `out` with the rules' dates in that year, sorted, its cursor at 0. `easter` is the
/// year's Easter Sunday. A rule whose date cannot be computed leaves its slot as it was.
void ComputeHolidayDates(std::int16_t year, const HolidayList& holidays, Date easter,
                         HolidayDateList& out);

/// Ascending by date; equal dates keep their order.
void SortHolidayDates(HolidayDateList& list);

} // namespace orrery::holidays
