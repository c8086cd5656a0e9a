#pragma once

#include <string>
#include <string_view>

namespace orrery::builtin {

/// Whether a formula must enclose the name of a sheet in apostrophes: without them it could be read
/// as a cell ("JAN27", "R1C1", "RC"), a number or a truth value, or would not be read as one name.
/// It is true a little more often than in Excel, because apostrophes are always allowed.
bool NeedsApostrophes(std::string_view sheet);

/// The text in apostrophes, with those inside doubled.
std::string InApostrophes(std::string_view text);

} // namespace orrery::builtin
