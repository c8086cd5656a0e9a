#pragma once

#include "exchange/ics/plugin/effort.h"
#include "exchange/ics/plugin/repetition.h"

#include <vector>

namespace orrery::exchange {

/// Appends when the event comes again within the days, in order, its start perhaps among them. A
/// rule that gives several times a day gives one of them at least.
RuleResult AddTimes(const Repetition& repetition, const DayWindow& window, Effort& effort,
                    std::vector<ClockTime>& times);

} // namespace orrery::exchange
