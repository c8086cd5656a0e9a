#pragma once

#include "look/evaluate/functions/call/call.h"

namespace orrery::formula {

/// VLOOKUP, MATCH, XLOOKUP ...
const FunctionList& LookupFunctions();
/// INDEX, OFFSET, INDIRECT, ROW ...: references.
const FunctionList& ReferenceFunctions();
/// TRANSPOSE, FILTER, SORT, UNIQUE, SEQUENCE: tables of tables.
const FunctionList& TableFunctions();

} // namespace orrery::formula
