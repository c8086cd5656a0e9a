#pragma once

#include "look/evaluate/functions/call/call.h"

namespace orrery::formula {

/// COUNT, AVERAGE, MIN, MAX ... of all kinds of values.
const FunctionList& CountFunctions();
/// MEDIAN, STDEV, LARGE, RANK, PERCENTILE ...
const FunctionList& StatisticsFunctions();
/// COUNTIF, SUMIFS ...
const FunctionList& ConditionFunctions();
/// SUBTOTAL, AGGREGATE.
const FunctionList& SubtotalFunctions();

} // namespace orrery::formula
