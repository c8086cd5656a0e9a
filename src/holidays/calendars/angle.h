#pragma once

#include <cmath>
#include <numbers>

namespace orrery::holidays::calendars {

constexpr double Radians(double degrees)
{
    return degrees * (std::numbers::pi / 180);
}

/// An angle in degrees as [0:360).
inline double Turned(double degrees)
{
    return degrees - 360 * std::floor(degrees / 360);
}

} // namespace orrery::holidays::calendars
