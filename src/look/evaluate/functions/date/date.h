#pragma once

#include "look/evaluate/functions/call/call.h"

namespace orrery::formula {

/// DATE, YEAR, WEEKDAY, TIME ...
const FunctionList& DateFunctions();
/// WEEKNUM, NETWORKDAYS, DATEDIF, YEARFRAC ...: spans of days.
const FunctionList& DaySpanFunctions();

} // namespace orrery::formula
