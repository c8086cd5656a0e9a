#pragma once

#include "look/evaluate/functions/call/call.h"

namespace orrery::formula {

/// PMT, FV, NPV, IRR ...
const FunctionList& FinancialFunctions();

} // namespace orrery::formula
