#pragma once

#include "exchange/event.h"
#include "holidays/holiday_rule.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace orrery::exchange {

/// What the events of a calendar become.
struct ImportedRules {
    std::vector<holidays::ListEntry> entries; ///< lines of a holiday file
    std::size_t rules = 0;                    ///< that give days in every year
    std::size_t datedDays = 0;                ///< days of certain dates
    std::size_t duplicates = 0;               ///< what says the same as another
    std::size_t outside = 0;                  ///< events that have no day in the years
    std::vector<PassedOver> passedOver;       ///< the calendar's, and events without a name
};

/// Makes a rule of every event that comes again in each year, and lists the dates of the others:
/// those of one name in one rule. With years, what lies outside of them is left out; an event that
/// reaches into them stays whole. Throws Error(TooManyRules) for more than a list holds.
ImportedRules RulesOf(const Calendar& calendar, std::optional<Years> years = std::nullopt);

} // namespace orrery::exchange
