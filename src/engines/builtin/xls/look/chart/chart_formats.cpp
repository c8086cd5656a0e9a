#include "engines/builtin/xls/look/chart/chart_formats.h"

#include "engines/builtin/xls/compound/bytes.h"

namespace orrery::xls {
namespace {

constexpr unsigned kIsAutomatic = 1;
constexpr unsigned kIsAxisOn = 4;

/// [MS-XLS] 2.4.156 (we)
double WidthOf(std::int16_t weight)
{
    switch (weight) {
    case -1:
        return 0.25;
    case 1:
        return 1.5;
    case 2:
        return 2.25;
    default:
        return 0.75;
    }
}

/// [MS-XLS] 2.4.156 (lns)
book::LineStyle StyleOf(std::uint16_t style)
{
    using enum book::LineStyle;
    switch (style) {
    case 1:
        return Dashed;
    case 2:
        return Dotted;
    case 3:
        return DashDot;
    case 4:
        return DashDotDot;
    default:
        return Thin;
    }
}

} // namespace

book::Color ReadChartColor(std::string_view data, std::size_t at)
{
    return {ReadU8(data, at), ReadU8(data, at + 1), ReadU8(data, at + 2)};
}

AreaFormat ReadAreaFormat(std::string_view data)
{
    constexpr std::uint16_t kSolid = 1;
    const std::uint16_t pattern = ReadU16(data, 8);
    AreaFormat area;
    area.isAutomatic = (ReadU16(data, 10) & kIsAutomatic) != 0;
    area.isVisible = area.isAutomatic || pattern != 0;
    area.color = ReadChartColor(data, 0);
    if (pattern > kSolid) { // a pattern is shown as the mean of its colours
        const book::Color back = ReadChartColor(data, 4);
        const auto mean = [](std::uint8_t one, std::uint8_t other) {
            return static_cast<std::uint8_t>((one + other) / 2);
        };
        area.color = {mean(area.color.red, back.red), mean(area.color.green, back.green),
                      mean(area.color.blue, back.blue)};
    }
    return area;
}

LineFormat ReadLineFormat(std::string_view data)
{
    constexpr std::uint16_t kNoLine = 5;
    const std::uint16_t style = ReadU16(data, 4);
    const unsigned flags = ReadU16(data, 8);
    LineFormat line;
    line.isAutomatic = (flags & kIsAutomatic) != 0;
    line.isAxisVisible = (flags & kIsAxisOn) != 0;
    line.outline.isVisible = line.isAutomatic || style != kNoLine;
    line.outline.color = ReadChartColor(data, 0);
    line.outline.width = WidthOf(static_cast<std::int16_t>(ReadU16(data, 6)));
    line.outline.style = StyleOf(style);
    return line;
}

MarkerFormat ReadMarkerFormat(std::string_view data)
{
    MarkerFormat marker;
    marker.isAutomatic = (ReadU16(data, 10) & kIsAutomatic) != 0;
    marker.isVisible = marker.isAutomatic || ReadU16(data, 8) != 0;
    constexpr unsigned kHasNoFill = 0x10;
    marker.color = ReadChartColor(data, (ReadU16(data, 10) & kHasNoFill) != 0 ? 0 : 4);
    return marker;
}

} // namespace orrery::xls
