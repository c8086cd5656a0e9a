#include "ui/wx/look/brushes.h"

#include "look/canvas/gradients.h"
#include "look/canvas/pattern_rows.h"

#include <wx/bitmap.h>
#include <wx/brush.h>
#include <wx/image.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace orrery::ui::wx {
namespace {

using look::Box;

constexpr std::size_t kMostStops = 64;
constexpr int kPatternSize = 8;

unsigned char Alpha(double opacity)
{
    return static_cast<unsigned char>(std::lround(std::clamp(opacity, 0.0, 1.0) * 255));
}

wxGraphicsGradientStops Stops(const std::vector<book::GradientStop>& stops, double opacity)
{
    wxGraphicsGradientStops all(ToColour(stops.front().color, opacity),
                                ToColour(stops.back().color, opacity));
    for (std::size_t i = 0; i < std::min(stops.size(), kMostStops); ++i) {
        const double position = stops[i].position;
        if (position > 0 && position < 1)
            all.Add(ToColour(stops[i].color, opacity), static_cast<float>(position));
    }
    return all;
}

wxGraphicsBrush PatternBrush(wxGraphicsContext& context, const book::Fill& fill, double opacity)
{
    const auto rows = look::PatternRows(fill.pattern);
    const book::Color set = fill.foreground.value_or(book::kBlack);
    const book::Color unset = fill.background.value_or(book::kWhite);
    wxImage image(kPatternSize, kPatternSize);
    if (opacity < 1)
        image.SetAlpha();
    for (int y = 0; y < kPatternSize; ++y) {
        for (int x = 0; x < kPatternSize; ++x) {
            const bool isSet = (rows[static_cast<std::size_t>(y)] >> (7 - x) & 1) != 0;
            const book::Color& color = isSet ? set : unset;
            image.SetRGB(x, y, color.red, color.green, color.blue);
            if (opacity < 1)
                image.SetAlpha(x, y, Alpha(opacity));
        }
    }
    return context.CreateBrush(wxBrush(wxBitmap(image)));
}

} // namespace

wxColour ToColour(const book::Color& color, double opacity)
{
    return {color.red, color.green, color.blue, Alpha(opacity)};
}

wxGraphicsBrush LinearBrush(wxGraphicsContext& context,
                            const std::vector<book::GradientStop>& stops, double degree,
                            const Box& box, double opacity)
{
    const look::GradientLine line = look::LineOfGradient(degree, box);
    return context.CreateLinearGradientBrush(line.from.x, line.from.y, line.to.x, line.to.y,
                                             Stops(stops, opacity));
}

wxGraphicsBrush RadialBrush(wxGraphicsContext& context, const book::Gradient& gradient,
                            double opacity)
{
    const auto [middle, radius] = look::CircleOfGradient(gradient);
    return context.CreateRadialGradientBrush(middle.x, middle.y, middle.x, middle.y, radius,
                                             Stops(gradient.stops, opacity));
}

wxGraphicsBrush PlainBrush(wxGraphicsContext& context, const look::Brush& brush, const Box& box)
{
    const book::Fill& fill = brush.fill;
    const auto solid = [&](const book::Color& color) {
        return context.CreateBrush(wxBrush(ToColour(color, brush.opacity)));
    };
    if (fill.gradient) {
        const auto& stops = fill.gradient->stops;
        if (stops.size() < 2 || !(box.width > 0 && box.height > 0))
            return solid(stops.front().color);
        return LinearBrush(context, stops, fill.gradient->degree, box, brush.opacity);
    }
    if (fill.pattern == book::FillPattern::Solid)
        return solid(fill.foreground.value_or(book::kWhite));
    return PatternBrush(context, fill, brush.opacity);
}

} // namespace orrery::ui::wx
