#pragma once

#include "look/canvas/canvas.h"

#include <algorithm>
#include <cmath>

/// Edges of cells lie on whole pixels when they are painted, so that lines and fills are crisp.
namespace orrery::look {

inline Box OnPixels(const Box& box)
{
    const double left = std::round(box.x);
    const double top = std::round(box.y);
    return {left, top, std::round(box.Right()) - left, std::round(box.Bottom()) - top};
}

/// A line of one pixel inside of a box on pixels.
inline Path FrameOfPixels(const Box& box)
{
    return PathOfBox({box.x + 0.5, box.y + 0.5, box.width - 1, box.height - 1});
}

inline bool Overlaps(const Box& a, const Box& b)
{
    return a.x < b.Right() && b.x < a.Right() && a.y < b.Bottom() && b.y < a.Bottom();
}

inline Box Common(const Box& a, const Box& b)
{
    const double left = std::max(a.x, b.x);
    const double top = std::max(a.y, b.y);
    return {left, top, std::max(std::min(a.Right(), b.Right()) - left, 0.0),
            std::max(std::min(a.Bottom(), b.Bottom()) - top, 0.0)};
}

/// Where the middle of a line along an edge runs: the last pixel before the edge belongs to it, as
/// spreadsheets draw their grid. Lines at the ends of the sheet stay inside.
inline double LineMiddle(double edge, double width, double end)
{
    const double middle = std::round(edge) - (std::fmod(width, 2) == 0 ? 1 : 0.5);
    return std::max(std::min(middle, std::floor(end) - width / 2), width / 2);
}

} // namespace orrery::look
