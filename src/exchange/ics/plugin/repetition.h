#pragma once

#include "exchange/ics/plugin/clock_time.h"

#include <cstddef>

namespace orrery::exchange {

/// What a repetition rule says of an event. All times are those of the event's own clocks.
struct Repetition {
    icalrecurrencetype rule{}; ///< its end is in the field `until`
    ClockTime start = 0;
    bool isDate = false; ///< the event has no times
};

/// Days [first:last] of interest.
struct DayWindow {
    std::int32_t first = 0;
    std::int32_t last = 0;
};

enum class RuleResult {
    Complete,
    NotUnderstood,
    TooMany, ///< more than `kMostTimes`, or more than the effort allows
};
inline constexpr std::size_t kMostTimes = 200'000;

/// Whether a list of a rule is empty.
inline bool IsEmptyList(const short* list)
{
    return list[0] == ICAL_RECURRENCE_ARRAY_MAX;
}

inline int LengthOfList(const short* list)
{
    int length = 0;
    while (list[length] != ICAL_RECURRENCE_ARRAY_MAX)
        ++length;
    return length;
}

} // namespace orrery::exchange
