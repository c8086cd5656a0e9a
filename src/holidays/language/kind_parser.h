#pragma once

#include "holidays/language/rule.h"
#include "util/error.h"

#include <string_view>
#include <variant>

namespace orrery::holidays {

/// Parses the first two fields of a rule that `ParseHolidayLine` does not know, blanks around them
/// allowed. The kind may be followed by days to add: "THU +1". Gives an error of
/// `holidays::ErrorKind` for other texts. Throws nothing.
///     accepted: "1123", "WED BEFORE"    "15 Nisan", "HEBREW"    "1104", "THU +1"
///     rejected: "2", "EASTER +1": what begins with EASTER belongs to the plain rules
std::variant<RuleDay, util::Error> ParseRuleDay(std::string_view date, std::string_view kind);

/// A month and a day as "0131", in that calendar as "1 Shawwal" too. Months [1:13], days [1:31].
std::optional<MonthDay> ParseMonthDay(std::string_view text);

} // namespace orrery::holidays
