#pragma once

#include "exchange/ics/plugin/effort.h"
#include "exchange/ics/plugin/repetition.h"

#include <vector>

namespace orrery::exchange {

/// `AddTimes` for rules that repeat by weeks, days, hours, minutes or seconds: of a day the first
/// time only. They are computed here because libical would go through every second up to the next
/// time, however far away it is, and has mistakes: weeks of a rule that begin on another day than
/// Monday, days counted from the end of a month.
RuleResult AddFrequentTimes(const Repetition& repetition, const DayWindow& window, Effort& effort,
                            std::vector<ClockTime>& times);

} // namespace orrery::exchange
