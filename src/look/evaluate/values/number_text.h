#pragma once

#include "book/date_system.h"

#include <optional>
#include <string_view>

namespace orrery::formula {

/// What texts are read by: dates need a system, those without a year the current one.
struct TextRules {
    book::DateSystem system = book::DateSystem::From1900;
    double now = 0; ///< serial number in the system
};

/// The number of a text as of en-US: "1,234.5", "-12%", "($3)", "1.5e3", a date, a time. Nothing
/// for other texts, the empty one too.
std::optional<double> NumberOfText(std::string_view text, const TextRules& rules);
/// "2027-01-31", "1/31/2027", "31-Jan-27", "January 31, 2027", "Jan 2027", with a time or without.
std::optional<double> DateOfText(std::string_view text, const TextRules& rules);

} // namespace orrery::formula
