#include "look/canvas/svg_fills.h"

#include "look/canvas/pattern_rows.h"
#include "look/canvas/svg_text.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orrery::look {

namespace {

constexpr std::size_t kMostStops = 64;

std::string UrlOf(const std::string& id)
{
    return "url(#" + id + ")";
}

/// The set pixels, row by row, as boxes of one pixel's height.
std::string PatternPath(const std::array<std::uint8_t, 8>& rows)
{
    std::string path;
    for (unsigned y = 0; y < 8; ++y) {
        for (unsigned x = 0; x < 8; ++x) {
            unsigned end = x;
            while (end < 8 && (rows[y] >> (7 - end) & 1) != 0)
                ++end;
            if (end == x)
                continue;
            path += "M" + std::to_string(x) + " " + std::to_string(y) + "h" +
                    std::to_string(end - x) + "v1H" + std::to_string(x) + "z";
            x = end;
        }
    }
    return path;
}

std::string PatternPaint(const book::Fill& fill, SvgDefinitions& definitions)
{
    std::string rest = R"( width="8" height="8" patternUnits="userSpaceOnUse"><path fill=")";
    rest += SvgColor(fill.background.value_or(book::kWhite));
    rest += R"(" d="M0 0h8v8H0z"/><path shape-rendering="crispEdges" fill=")";
    rest += SvgColor(fill.foreground.value_or(book::kBlack));
    rest += "\" d=\"" + PatternPath(PatternRows(fill.pattern)) + "\"/></pattern>";
    return UrlOf(definitions.Use("pattern", "fill-", std::move(rest)));
}

void AppendAttribute(std::string& out, std::string_view name, double value)
{
    out += " ";
    out += name;
    out += "=\"";
    AppendNumber(out, value);
    out += "\"";
}

std::string StopElements(const std::vector<book::GradientStop>& stops)
{
    std::string elements;
    for (std::size_t i = 0; i < std::min(stops.size(), kMostStops); ++i) {
        elements += "<stop";
        AppendAttribute(elements, "offset", std::clamp(stops[i].position, 0.0, 1.0));
        elements += " stop-color=\"" + SvgColor(stops[i].color) + "\"/>";
    }
    return elements;
}

std::string RadialGradient(const book::Gradient& gradient, SvgDefinitions& definitions)
{
    const double x = (gradient.left + gradient.right) / 2;
    const double y = (gradient.top + gradient.bottom) / 2;
    std::string rest;
    AppendAttribute(rest, "cx", x);
    AppendAttribute(rest, "cy", y);
    AppendAttribute(rest, "r", std::max({x, 1 - x, y, 1 - y}));
    rest += ">" + StopElements(gradient.stops) + "</radialGradient>";
    return UrlOf(definitions.Use("radialGradient", "fill-", std::move(rest)));
}

} // namespace

std::string SvgLinearGradient(const std::vector<book::GradientStop>& stops, double degree,
                              SvgDefinitions& definitions)
{
    // In the unit square of the box, long enough to begin and end in its corners.
    const double angle = degree * std::numbers::pi / 180;
    const double x = std::cos(angle);
    const double y = std::sin(angle);
    const double half = (std::abs(x) + std::abs(y)) / 2;
    std::string rest;
    AppendAttribute(rest, "x1", 0.5 - x * half);
    AppendAttribute(rest, "y1", 0.5 - y * half);
    AppendAttribute(rest, "x2", 0.5 + x * half);
    AppendAttribute(rest, "y2", 0.5 + y * half);
    rest += ">" + StopElements(stops) + "</linearGradient>";
    return UrlOf(definitions.Use("linearGradient", "fill-", std::move(rest)));
}

std::string SvgPaint(const book::Fill& fill, SvgDefinitions& definitions)
{
    if (fill.gradient) {
        const auto& stops = fill.gradient->stops;
        if (stops.size() < 2)
            return stops.empty() ? std::string() : SvgColor(stops[0].color);
        return fill.gradient->isPath ? RadialGradient(*fill.gradient, definitions)
                                     : SvgLinearGradient(stops, fill.gradient->degree, definitions);
    }
    if (fill.pattern == book::FillPattern::None)
        return {};
    if (fill.pattern == book::FillPattern::Solid)
        return SvgColor(fill.foreground.value_or(book::kWhite));
    return PatternPaint(fill, definitions);
}

} // namespace orrery::look
