#pragma once

#include <cstdint>

namespace orrery::util {

// Arithmetic that throws OverflowError instead of wrapping when the result does not fit.

std::int16_t Add16(std::int16_t left, std::int16_t right);
std::int16_t Subtract16(std::int16_t left, std::int16_t right);
std::int16_t Multiply16(std::int16_t left, std::int16_t right);
std::int32_t Add32(std::int32_t left, std::int32_t right);
std::int32_t Multiply32(std::int32_t left, std::int32_t right);
/// Throws OverflowError if the value is not in [-32768:32767].
std::int16_t Narrow16(std::int64_t value);

} // namespace orrery::util
