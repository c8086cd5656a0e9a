#pragma once

#include "look/evaluate/functions/call/call.h"

namespace orrery::formula {

/// ISNUMBER, TYPE, CELL, N ...: what a value or a reference is.
const FunctionList& InformationFunctions();

} // namespace orrery::formula
