#pragma once

#include "look/evaluate/formula/tree.h"

#include <optional>
#include <string_view>

namespace orrery::formula {

/// Parses a formula in the notation of the files, without "=":
///     expression  = concat {("=" | "<>" | "<" | "<=" | ">" | ">=") concat}
///     concat      = sum {"&" sum}
///     sum         = product {("+" | "-") product}
///     product     = power {("*" | "/") power}
///     power       = signed {"^" signed}
///     signed      = {"+" | "-" | "@"} reference {"%"}
///     reference   = section {" " section}, in brackets also {"," reference}
///     section     = operand {":" operand} {"#"}
/// The sign binds more than "^": "-2^2" is 4. Accepts "SUM(A1:B2,3)%"; not "1+" or "A1 2".
/// Returns nothing for what is no formula or goes beyond a limit.
std::optional<Formula> ParseFormula(std::string_view text, const FormulaLimits& limits = {});

} // namespace orrery::formula
