#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace orrery::util {

/// The value of a numeric text: blanks around, an optional sign, digits with an optional
/// fraction, an optional exponent ("12", " -3.5e2 "); nothing else ("", "1,000", "0x1F", "1 2").
std::optional<double> ReadNumber(std::string_view text);

/// Round to the nearest whole number, halves to even. Throw OverflowError if it does not fit, or
/// for NaN.
std::int16_t RoundTo16(double value);
std::int32_t RoundTo32(double value);

} // namespace orrery::util
