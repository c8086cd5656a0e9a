#pragma once

#include "holidays/date.h"
#include "holidays/holiday_rule.h"

#include <array>
#include <cstdint>
#include <string>

namespace orrery::holidays {

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
