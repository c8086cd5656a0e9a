#pragma once

#include "look/evaluate/functions/call/call.h"

namespace orrery::formula {

/// AND, OR, NOT ...; those that do not compute all their arguments belong to the evaluator.
const FunctionList& LogicalFunctions();

} // namespace orrery::formula
