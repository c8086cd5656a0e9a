#include "look/cairo/cairo_fills.h"

#include "look/canvas/gradients.h"
#include "look/canvas/pattern_rows.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace orrery::look {
namespace {

constexpr double kMostOfColor = 255;
constexpr int kPatternSize = 8;

void AddStops(cairo_pattern_t* pattern, const std::vector<book::GradientStop>& stops,
              double opacity)
{
    for (const book::GradientStop& stop : stops)
        cairo_pattern_add_color_stop_rgba(pattern, stop.position, stop.color.red / kMostOfColor,
                                          stop.color.green / kMostOfColor,
                                          stop.color.blue / kMostOfColor, opacity);
}

CairoOwned<cairo_pattern_t> SolidPattern(const book::Color& color, double opacity)
{
    return CairoOwned<cairo_pattern_t>(cairo_pattern_create_rgba(
        color.red / kMostOfColor, color.green / kMostOfColor, color.blue / kMostOfColor, opacity));
}

/// A pixel of CAIRO_FORMAT_ARGB32, whose colours are multiplied by the opacity.
std::uint32_t TilePixel(const book::Color& color, double opacity)
{
    const auto part = [opacity](double value) {
        return static_cast<std::uint32_t>(std::lround(value * opacity));
    };
    return part(kMostOfColor) << 24 | part(color.red) << 16 | part(color.green) << 8 |
           part(color.blue);
}

CairoOwned<cairo_pattern_t> TiledPattern(const book::Fill& fill, double opacity)
{
    const auto rows = PatternRows(fill.pattern);
    const std::uint32_t set = TilePixel(fill.foreground.value_or(book::kBlack), opacity);
    const std::uint32_t unset = TilePixel(fill.background.value_or(book::kWhite), opacity);
    const CairoOwned<cairo_surface_t> tile(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kPatternSize, kPatternSize));
    unsigned char* const pixels = cairo_image_surface_get_data(tile.get());
    if (pixels != nullptr) {
        const int stride = cairo_image_surface_get_stride(tile.get());
        for (int y = 0; y < kPatternSize; ++y) {
            auto* const row =
                reinterpret_cast<std::uint32_t*>(pixels + static_cast<std::ptrdiff_t>(y) * stride);
            for (int x = 0; x < kPatternSize; ++x)
                row[x] = (rows[static_cast<std::size_t>(y)] >> (7 - x) & 1) != 0 ? set : unset;
        }
        cairo_surface_mark_dirty(tile.get());
    }
    CairoOwned<cairo_pattern_t> pattern(cairo_pattern_create_for_surface(tile.get()));
    cairo_pattern_set_extend(pattern.get(), CAIRO_EXTEND_REPEAT);
    cairo_pattern_set_filter(pattern.get(), CAIRO_FILTER_NEAREST);
    return pattern;
}

CairoOwned<cairo_pattern_t> CirclePattern(const book::Gradient& gradient, const Box& box,
                                          double opacity)
{
    const auto [middle, radius] = CircleOfGradient(gradient);
    CairoOwned<cairo_pattern_t> pattern(
        cairo_pattern_create_radial(middle.x, middle.y, 0, middle.x, middle.y, radius));
    AddStops(pattern.get(), gradient.stops, opacity);
    cairo_matrix_t toUnit; // from the page to the unit square
    cairo_matrix_init(&toUnit, 1 / box.width, 0, 0, 1 / box.height, -box.x / box.width,
                      -box.y / box.height);
    cairo_pattern_set_matrix(pattern.get(), &toUnit);
    return pattern;
}

} // namespace

void SetColor(cairo_t* cairo, const book::Color& color, double opacity)
{
    cairo_set_source_rgba(cairo, color.red / kMostOfColor, color.green / kMostOfColor,
                          color.blue / kMostOfColor, std::clamp(opacity, 0.0, 1.0));
}

CairoOwned<cairo_pattern_t> LinearPattern(const std::vector<book::GradientStop>& stops,
                                          double degree, const Box& box, double opacity)
{
    const GradientLine line = LineOfGradient(degree, box);
    CairoOwned<cairo_pattern_t> pattern(
        cairo_pattern_create_linear(line.from.x, line.from.y, line.to.x, line.to.y));
    AddStops(pattern.get(), stops, opacity);
    return pattern;
}

CairoOwned<cairo_pattern_t> FillPattern(const Brush& brush, const Box& box)
{
    const book::Fill& fill = brush.fill;
    const double opacity = std::clamp(brush.opacity, 0.0, 1.0);
    if (fill.gradient) {
        const auto& stops = fill.gradient->stops;
        if (stops.size() < 2 || !(box.width > 0 && box.height > 0))
            return SolidPattern(stops.front().color, opacity);
        if (fill.gradient->isPath)
            return CirclePattern(*fill.gradient, box, opacity);
        return LinearPattern(stops, fill.gradient->degree, box, opacity);
    }
    if (fill.pattern == book::FillPattern::Solid)
        return SolidPattern(fill.foreground.value_or(book::kWhite), opacity);
    return TiledPattern(fill, opacity);
}

} // namespace orrery::look
