#pragma once

#include "look/advisor/block_parts.h"
#include "look/advisor/titles.h"

#include <cstdint>
#include <optional>
#include <string>

namespace orrery::look {

/// A calendar that a sheet may be.
struct Candidate {
    int score = 0;   ///< higher for more parts that calendars have
    double area = 0; ///< in digits and points
    std::string sheet;
    DayGrid grid;
    std::optional<YearGrid> year;
    DayCell day;
    std::optional<HolidayCell> holiday;
    std::optional<WeekdayCells> weekdays;
    std::optional<std::int16_t> firstDay;
    Titles titles;

    /// Small months beside a large one only show the ones before and after.
    bool IsMuchLargerThan(const std::optional<Candidate>& other) const
    {
        constexpr double times = 4;
        return other && area > times * other->area;
    }
    bool IsBetterThan(const std::optional<Candidate>& other) const
    {
        return !other || score > other->score || (score == other->score && area > other->area);
    }
};

/// The best calendars of the sheets so far.
struct Candidates {
    std::optional<Candidate> month;
    std::optional<Candidate> year;
};

/// Takes what calendar a sheet of that name may be, if it is better than those so far.
void LookForCalendars(const SeenSheet& sheet, const std::string& name, const KnownNames& names,
                      Candidates& found);

} // namespace orrery::look
