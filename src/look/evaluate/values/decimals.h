#pragma once

#include <cstdint>
#include <string>

namespace orrery::formula {

enum class Rounding : std::uint8_t { Nearest, TowardsZero, AwayFromZero };

/// Rounds to so many decimals, before the point if negative, as a person would who sees fifteen
/// digits: 2.675 becomes 2.68 although its binary form lies below. Halves go away from zero.
double RoundDecimals(double number, double decimals, Rounding rounding);

/// A number as it becomes a text: fifteen digits, no zeros at the end ("0.1", "1E+21").
std::string GeneralText(double number);

/// Whether two numbers differ by no more than what arithmetic loses.
bool IsNearly(double left, double right);
/// Sums; what is left where two numbers cancel out but for lost digits is 0.
double AddNearly(double left, double right);

} // namespace orrery::formula
