#pragma once

#include <cstdint>

namespace orrery::book {

/// A colour of the sRGB space, without transparency.
struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    friend bool operator==(const Color&, const Color&) = default;
};

inline constexpr Color kBlack{0, 0, 0};
inline constexpr Color kWhite{255, 255, 255};

} // namespace orrery::book
