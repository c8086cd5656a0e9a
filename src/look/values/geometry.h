#pragma once

namespace orrery::look {

/// Lengths of this floor are pixels at 96 dpi; x grows to the right, y downwards.
struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Box {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double Right() const { return x + width; }
    double Bottom() const { return y + height; }
    Point Middle() const { return {x + width / 2, y + height / 2}; }
    bool Contains(Point point) const
    {
        return point.x >= x && point.x < Right() && point.y >= y && point.y < Bottom();
    }
    friend bool operator==(const Box&, const Box&) = default;
};

inline constexpr double kPixelsPerPoint = 96.0 / 72.0;
inline constexpr double kPixelsPerInch = 96.0;

} // namespace orrery::look
