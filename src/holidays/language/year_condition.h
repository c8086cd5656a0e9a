#pragma once

#include "holidays/language/rule.h"

#include <optional>
#include <span>
#include <string>

namespace orrery::holidays {

/// Whether a year can stand in a rule: [1:9999].
bool IsRuleYear(int year);

/// Parses the words behind "years": "2006-", "-2019", "1990-1999 2004-", "even", "odd", "leap",
/// "every 4 from 2008", a cycle also behind years.
std::optional<YearCondition> ParseYearCondition(std::span<const std::string> words);

} // namespace orrery::holidays
