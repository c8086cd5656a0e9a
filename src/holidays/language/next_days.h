#pragma once

#include "holidays/language/evaluation.h"

#include <optional>
#include <string>
#include <vector>

namespace orrery::holidays {

/// The days that a rule gives next.
struct NextDays {
    enum class State {
        Given,       ///< there is a day
        None,        ///< none in the years that were looked through
        OtherRegion, ///< the rule does not hold in the chosen region
        OtherKind,   ///< its category is not chosen
    };
    State state = State::None;
    /// The earliest day of the first year that has one; a substitute only if it has no others.
    Date first;
    int more = 0; ///< how many more days, substitutes too, the rule gives in that year
    bool isSubstitute = false;
    bool isEstimated = false;
};

/// How many years are looked through: the longest time between leap days has eight.
inline constexpr int kYearsLookedThrough = 9;

/// For each rule its days in a year [1:9999], or in the first year after it that has some.
std::vector<NextDays> NextDaysOf(const RuleSet& set, int year, const HolidayChoice& choice);

} // namespace orrery::holidays
