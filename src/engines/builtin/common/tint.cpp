#include "engines/builtin/common/tint.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace orrery::builtin {
namespace {

/// Each in [0:1], the hue in sixths of the circle [0:6).
struct Hls {
    double hue = 0;
    double luminance = 0;
    double saturation = 0;
};

Hls ToHls(book::Color color)
{
    const double red = color.red / 255.0;
    const double green = color.green / 255.0;
    const double blue = color.blue / 255.0;
    const double highest = std::max({red, green, blue});
    const double lowest = std::min({red, green, blue});
    const double range = highest - lowest;
    Hls hls;
    hls.luminance = (highest + lowest) / 2;
    if (range == 0)
        return hls;
    hls.saturation = range / (hls.luminance <= 0.5 ? highest + lowest : 2 - highest - lowest);
    if (highest == red)
        hls.hue = (green - blue) / range + (green < blue ? 6 : 0);
    else if (highest == green)
        hls.hue = (blue - red) / range + 2;
    else
        hls.hue = (red - green) / range + 4;
    return hls;
}

/// One of red, green and blue, whose own hues are 0, 2 and 4.
std::uint8_t Component(const Hls& hls, double own)
{
    const double strength = hls.saturation * std::min(hls.luminance, 1 - hls.luminance);
    double distance = std::fabs(hls.hue - own);
    distance = std::min(distance, 6 - distance);
    const double share = std::clamp(2 - distance, 0.0, 1.0); // 1 near the own hue, 0 opposite
    const double value = hls.luminance + strength * (2 * share - 1);
    return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
}

} // namespace

book::Color ApplyTint(book::Color color, double tint)
{
    if (std::isnan(tint) || tint == 0)
        return color;
    tint = std::clamp(tint, -1.0, 1.0);
    Hls hls = ToHls(color);
    hls.luminance *= tint < 0 ? 1 + tint : 1 - tint;
    hls.luminance += std::max(tint, 0.0);
    return {Component(hls, 0), Component(hls, 2), Component(hls, 4)};
}

} // namespace orrery::builtin
