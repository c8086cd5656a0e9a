#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::util {

/// The value of a numeric text: blanks around, an optional sign, digits with an optional
/// fraction, an optional exponent ("12", " -3.5e2 "); nothing else ("", "1,000", "0x1F", "1 2").
std::optional<double> ReadNumber(std::string_view text);

/// Round to the nearest whole number, halves to even. Throw OverflowError if it does not fit, or
/// for NaN.
std::int16_t RoundTo16(double value);
std::int32_t RoundTo32(double value);

// Finite numbers as text, whatever the process's locale is. std::to_chars does the same, but its
// tables take an eighth of a megabyte in each program.

/// The most digits that a number needs to be read back.
inline constexpr int kMostDigits = 17;

/// d.ddd times ten to the power of `exponent`; the sign is apart.
struct Digits {
    bool isNegative = false;
    std::string digits; ///< one at least; the first is 0 for zero only
    int exponent = 0;
};

/// So many digits of a number, correctly rounded.
Digits RoundToDigits(double number, int count);

/// The number that is nearest to the digits.
double NumberOf(const Digits& number);

/// The fewest digits that are read back as the number, `kMostDigits` at most.
Digits ShortestDigits(double number);

/// "2.50", "-0.0": correctly rounded to so many decimals.
std::string DecimalText(double number, int decimals);

/// "2.5e+00", "-1e-07": at least two digits in the exponent.
std::string ScientificText(const Digits& number);

/// "1500", "0.015": no more than the digits and the zeros up to the point.
std::string PlainText(const Digits& number);

/// The shorter of the two with the fewest digits, plain if they are as long.
std::string ShortestText(double number);

} // namespace orrery::util
