#pragma once

#include "holidays/language/rule.h"

#include <optional>
#include <string_view>

namespace orrery::holidays {

/// Parses what follows "if":
///     condition  weekdays and "holiday", with "or" between them
///     "also" or "move to"
///     target     "next workday", "next day", "Fri before", "Mon after", "+2", "-1"
///     optional   "from 2014", "until 2020"; last, "called" and a name
std::optional<Substitute> ParseSubstitute(std::string_view text);

} // namespace orrery::holidays
