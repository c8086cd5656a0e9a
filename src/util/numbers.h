#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace orrery::util {

/// The value of a numeric text: blanks around, an optional sign, digits with an optional
/// fraction, an optional exponent ("12", " -3.5e2 "); nothing else ("", "1,000", "0x1F", "1 2").
std::optional<double> ReadNumber(std::string_view text);

/// Nearest whole number, halves to even. Throw OverflowError beyond the width (also NaN).
std::int16_t RoundTo16(double value);
std::int32_t RoundTo32(double value);

} // namespace orrery::util
