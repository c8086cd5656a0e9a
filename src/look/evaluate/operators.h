#pragma once

#include "look/evaluate/formula/tree.h"
#include "look/evaluate/values/convert.h"
#include "look/evaluate/values/table_shape.h"
#include "look/evaluate/values/value.h"

namespace orrery::formula {

/// Computes an operator of two single values; not one of references.
Value ApplyBinary(Operator op, const Value& left, const Value& right, const TextRules& rules);
/// "-", "+", "%"
Value ApplyUnary(Operator op, const Value& operand, const TextRules& rules);

/// The table that an operand is, else nullptr.
const Array* TableOf(const Operand& operand);

} // namespace orrery::formula
