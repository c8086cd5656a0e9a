#include "look/chart/axis_scale.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace orrery::look {
namespace {

constexpr double kMaxTicks = 1000;
constexpr double kLargest = 1e300;

/// The smallest of 1, 2 and 5 times a power of ten that is not below the size.
double NiceUnit(double size)
{
    const double power = std::pow(10, std::floor(std::log10(size)));
    for (const double factor : std::array{1.0, 2.0, 5.0}) {
        if (factor * power >= size * (1 - 1e-9))
            return factor * power;
    }
    return 10 * power;
}

/// Rounds to a multiple of the unit; what is a multiple but for the last digits stays.
double RoundDown(double value, double unit)
{
    return std::floor(value / unit + 1e-9) * unit;
}

double RoundUp(double value, double unit)
{
    return std::ceil(value / unit - 1e-9) * unit;
}

/// The ends before they are rounded. An axis begins at zero unless all values lie close together:
/// within a sixth of the farthest one.
void ExtendRange(double& low, double& high)
{
    const double size = high - low;
    const bool isAbove = low >= 0;
    const bool isBelow = high <= 0;
    const double farthest = std::max(std::abs(low), std::abs(high));
    const bool isClose = size < farthest / 6;
    const double lowBefore = low;
    if (isAbove)
        low = isClose ? low - size / 2 : 0;
    else
        low -= size * 0.05;
    if (isBelow && !isAbove)
        high = isClose ? high + size / 2 : 0;
    else
        high += (isAbove && !isClose ? high : size) * 0.05;
    if (isBelow && !isAbove && !isClose)
        low = lowBefore * 1.05;
}

AxisScale LogarithmicScale(const ValueRange& range, const book::ChartAxis& axis)
{
    AxisScale scale;
    scale.isLogarithmic = true;
    scale.isReversed = axis.isReversed;
    scale.majorUnit = 10;
    const double low = range.low > 0 ? range.low : 1;
    const double high = std::max(range.high, low);
    scale.minimum = std::pow(10, std::floor(std::log10(low) + 1e-9));
    scale.maximum = std::pow(10, std::ceil(std::log10(high) - 1e-9));
    if (axis.minimum && *axis.minimum > 0)
        scale.minimum = *axis.minimum;
    if (axis.maximum && *axis.maximum > 0)
        scale.maximum = *axis.maximum;
    if (!(scale.maximum > scale.minimum))
        scale.maximum = scale.minimum * 10;
    return scale;
}

} // namespace

void ValueRange::Add(double value)
{
    if (!(std::abs(value) < kLargest))
        return;
    low = isEmpty ? value : std::min(low, value);
    high = isEmpty ? value : std::max(high, value);
    isEmpty = false;
}

AxisScale ChooseScale(const ValueRange& range, const book::ChartAxis& axis, double room)
{
    if (axis.isLogarithmic)
        return LogarithmicScale(range, axis);
    double low = range.isEmpty ? 0 : range.low;
    double high = range.isEmpty ? 1 : range.high;
    if (low == high) // one value: from zero to it
        (high > 0 ? low : high) = 0;
    if (low == high)
        high = 1;
    ExtendRange(low, high);
    low = axis.minimum.value_or(low);
    high = axis.maximum.value_or(high);
    if (!(high > low))
        (axis.minimum ? high : low) = axis.minimum ? low + 1 : high - 1;
    AxisScale scale;
    scale.isReversed = axis.isReversed;
    const double intervals = std::clamp(room, 1.0, 10.0);
    scale.majorUnit = NiceUnit((high - low) / intervals);
    if (axis.majorUnit && (high - low) / *axis.majorUnit <= kMaxTicks)
        scale.majorUnit = *axis.majorUnit;
    scale.minimum = axis.minimum ? low : RoundDown(low, scale.majorUnit);
    scale.maximum = axis.maximum ? high : RoundUp(high, scale.majorUnit);
    if (!(scale.maximum > scale.minimum)) // so far from zero that the unit is lost
        scale.maximum = scale.minimum + std::max(1.0, std::abs(scale.minimum));
    return scale;
}

double AxisScale::Share(double value) const
{
    double share = (value - minimum) / (maximum - minimum);
    if (isLogarithmic)
        share = std::log(std::max(value, 1e-300) / minimum) / std::log(maximum / minimum);
    share = std::clamp(share, -100.0, 100.0);
    return isReversed ? 1 - share : share;
}

std::vector<double> AxisScale::Ticks() const
{
    std::vector<double> ticks;
    for (int i = 0; i < static_cast<int>(kMaxTicks); ++i) {
        const double value =
            isLogarithmic ? minimum * std::pow(majorUnit, i) : minimum + i * majorUnit;
        if (value > maximum + (isLogarithmic ? maximum * 1e-9 : majorUnit * 1e-6))
            break;
        // Zero itself, not what rounding leaves of it.
        ticks.push_back(std::abs(value) < majorUnit * 1e-9 ? 0 : value);
    }
    return ticks;
}

double AxisScale::Crossing() const
{
    return isLogarithmic ? minimum : std::clamp(0.0, minimum, maximum);
}

} // namespace orrery::look
