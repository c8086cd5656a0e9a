#pragma once

#include "exchange/rules_of.h"

#include <string>
#include <string_view>

namespace orrery::exchange {

/// A holiday file with the rules, in UTF-8: comment lines that tell its name and where the rules
/// come from, then a line for each entry. The texts are one line each.
std::string HolidayFileText(const ImportedRules& rules, std::string_view name,
                            std::string_view source);

} // namespace orrery::exchange
