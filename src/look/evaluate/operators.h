#pragma once

#include "look/evaluate/formula/tree.h"
#include "look/evaluate/values/convert.h"
#include "look/evaluate/values/value.h"

namespace orrery::formula {

/// Computes an operator of two single values; not one of references.
Value ApplyBinary(Operator op, const Value& left, const Value& right, const TextRules& rules);
/// "-", "+", "%"
Value ApplyUnary(Operator op, const Value& operand, const TextRules& rules);

/// The table that an operand is, else nullptr.
const Array* TableOf(const Operand& operand);
/// The value at a place of a table, which a single row or column repeats; else "#N/A".
const Value& ElementOf(const Array& table, std::int32_t row, std::int32_t column);

} // namespace orrery::formula
