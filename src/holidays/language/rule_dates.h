#pragma once

#include "holidays/language/rule.h"

#include <vector>

namespace orrery::holidays {

/// The dates of a rule's day whose own day, before the shift, is in that year; in order. Days
/// between holidays have none of their own. Throws nothing: a date that does not exist is left out.
std::vector<Date> DatesOf(const RuleDay& day, int year);

/// Whether such dates are computed for a calendar whose days are announced.
bool IsEstimate(const RuleKind& kind);

} // namespace orrery::holidays
