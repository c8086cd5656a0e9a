#pragma once

#include "holidays/date.h"
#include "holidays/holiday_rule.h"

#include <array>
#include <cstdint>
#include <string>

namespace orrery::holidays {

/// The date of a slot that was never filled: before every calendar.
inline constexpr Date kNoDate = Date::min();

/// The holidays of a year, sorted by date, with the read position of the month writer.
struct HolidayDateList {
    static constexpr std::size_t kCapacity = 1025;
    std::array<Date, kCapacity> Dates;
    std::array<std::string, kCapacity> Names;
    std::int16_t Count = 0;
    std::int16_t Cursor = 0; ///< only moves forward; reset to 0 when the list is rebuilt

    HolidayDateList() { Dates.fill(kNoDate); }
    /// Throws OutOfRangeError beyond the 1,025 slots.
    Date DateAt(std::int16_t index) const;
    const std::string& NameAt(std::int16_t index) const;
};

/// The date of a rule in a year. Throws util::Error if there is none.
Date DateOfRule(std::int16_t year, const HolidayDef& rule, Date easter);

/// Fills `out` with the rules' dates in that year, sorted, and sets its cursor to 0. `easter` is
/// the year's Easter Sunday. A rule whose date cannot be computed leaves its slot unchanged.
void ComputeHolidayDates(std::int16_t year, const HolidayList& holidays, Date easter,
                         HolidayDateList& out);

/// Sorts by date, ascending; equal dates keep their order.
void SortHolidayDates(HolidayDateList& list);

} // namespace orrery::holidays
