#pragma once

#include "look/evaluate/functions/call/call.h"

namespace orrery::formula {

/// ABS to TRUNC: of single numbers.
const FunctionList& MathFunctions();
/// ROUND and its relatives.
const FunctionList& RoundingFunctions();
/// SUM, SUMPRODUCT, SUMX2MY2, MMULT ...: of tables.
const FunctionList& SumFunctions();
/// BASE, DEC2HEX, ROMAN ...: numbers in other systems.
const FunctionList& NotationFunctions();

} // namespace orrery::formula
