#pragma once

#include "exchange/ics/ics_parser.h"
#include "exchange/ics/plugin/repetition.h"

namespace orrery::exchange {

/// A rule as holiday rules can say it: every year the same date, the same weekday of a month, or
/// 29 February, beginning with the event's start. Otherwise `Kind::None`.
YearlyDay YearlyDayOf(const Repetition& repetition);

} // namespace orrery::exchange
