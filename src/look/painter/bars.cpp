#include "look/painter/bars.h"

#include "look/painter/pixels.h"

#include <algorithm>

namespace orrery::look {

namespace {

/// A gradient ends in this share of white.
constexpr double kFade = 0.9;

book::Color Faded(const book::Color& color)
{
    const auto fade = [](std::uint8_t part) {
        return static_cast<std::uint8_t>(part + (255 - part) * kFade);
    };
    return {fade(color.red), fade(color.green), fade(color.blue)};
}

Brush BarBrush(const BarDisplay& bar)
{
    Brush brush = SolidBrush(bar.color);
    if (bar.isGradient) {
        book::Gradient gradient;
        gradient.degree = bar.growsLeft ? 180 : 0;
        gradient.stops = {{0, bar.color}, {1, Faded(bar.color)}};
        brush.fill.gradient = gradient;
    }
    return brush;
}

} // namespace

void PaintBar(const BarDisplay& bar, const Box& cell, Canvas& canvas)
{
    // One pixel inside of the cell and its grid lines.
    const Box outer = OnPixels(cell);
    const Box room{outer.x + 1, outer.y + 1, outer.width - 3, outer.height - 3};
    if (room.width <= 0 || room.height <= 0)
        return;
    const double begin = std::clamp(bar.begin, 0.0, 1.0);
    const double end = std::clamp(bar.end, begin, 1.0);
    const Box box =
        OnPixels({room.x + begin * room.width, room.y, (end - begin) * room.width, room.height});
    if (box.width > 0) {
        canvas.FillBox(box, BarBrush(bar));
        if (bar.border && box.width > 1)
            canvas.DrawPath(FrameOfPixels(box), {}, Pen{*bar.border, 1, {}, 1});
    }
    if (bar.axis) {
        const double x = std::round(room.x + std::clamp(*bar.axis, 0.0, 1.0) * room.width) + 0.5;
        canvas.DrawLine({x, outer.y}, {x, outer.Bottom()}, Pen{bar.axisColor, 1, {3, 1}, 1});
    }
}

} // namespace orrery::look
