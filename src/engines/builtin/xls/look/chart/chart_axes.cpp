#include "engines/builtin/xls/look/chart/chart_axes.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/look/chart/chart_formats.h"

#include <bit>
#include <cmath>

namespace orrery::xls {
namespace {

// Flags of value axes. [MS-XLS] 2.4.340
constexpr unsigned kAutomaticMinimum = 0x01;
constexpr unsigned kAutomaticMaximum = 0x02;
constexpr unsigned kAutomaticMajor = 0x04;
constexpr unsigned kIsLogarithmic = 0x20;
constexpr unsigned kIsReversed = 0x40;
constexpr unsigned kIsCategoryReversed = 0x04; // [MS-XLS] 2.4.39

constexpr std::uint16_t kAxisItself = 0; // [MS-XLS] 2.4.12
constexpr std::uint16_t kMajorGrid = 1;

std::optional<double> NumberAt(std::string_view data, std::size_t at)
{
    const auto number = std::bit_cast<double>(ReadU64(data, at));
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

} // namespace

void AxisReader::Add(ChartRecord type, std::string_view data)
{
    switch (type) {
    case ChartRecord::ValueRange:
        return ReadValueRange(data);
    case ChartRecord::CategoryRange:
        axis_.isReversed = (ReadU16(data, 6) & kIsCategoryReversed) != 0;
        return;
    case ChartRecord::Tick:
        return ReadTick(data);
    case ChartRecord::NumberFormat:
        axis_.numberFormat = styles_.numberFormat(ReadU16(data, 0));
        return;
    case ChartRecord::Font:
        axis_.font = styles_.font(ReadU16(data, 0));
        if (textColor_)
            axis_.font->color = textColor_;
        return;
    case ChartRecord::AxisLine:
        line_ = ReadU16(data, 0);
        axis_.hasMajorGridLines |= line_ == kMajorGrid;
        return;
    case ChartRecord::LineFormat:
        return ReadLine(data);
    default:
        return;
    }
}

void AxisReader::ReadValueRange(std::string_view data)
{
    const unsigned flags = ReadU16(data, 40);
    axis_.isLogarithmic = (flags & kIsLogarithmic) != 0;
    axis_.isReversed = (flags & kIsReversed) != 0;
    const auto value = [&](std::size_t at) { // of logarithmic axes the exponent
        const auto number = NumberAt(data, at);
        return number && axis_.isLogarithmic ? std::optional(std::pow(10.0, *number)) : number;
    };
    if ((flags & kAutomaticMinimum) == 0)
        axis_.minimum = value(0);
    if ((flags & kAutomaticMaximum) == 0)
        axis_.maximum = value(8);
    if ((flags & kAutomaticMajor) == 0 && !axis_.isLogarithmic)
        axis_.majorUnit = NumberAt(data, 16);
}

void AxisReader::ReadTick(std::string_view data)
{
    constexpr unsigned kAutomaticColor = 1;
    axis_.hasLabels = ReadU8(data, 2) != 0;
    if ((ReadU16(data, 24) & kAutomaticColor) == 0)
        textColor_ = ReadChartColor(data, 4);
    if (axis_.font && textColor_)
        axis_.font->color = textColor_;
}

void AxisReader::ReadLine(std::string_view data)
{
    const LineFormat line = ReadLineFormat(data);
    if (line_ == kAxisItself) {
        axis_.hasLine = line.outline.isVisible;
        if (!line.isAutomatic)
            axis_.lineColor = line.outline.color;
    }
    else if (line_ == kMajorGrid) {
        axis_.hasMajorGridLines = line.outline.isVisible;
        if (!line.isAutomatic)
            axis_.gridColor = line.outline.color;
    }
}

} // namespace orrery::xls
