#include "look/conditions/scales.h"

#include <algorithm>
#include <cmath>

namespace orrery::look {
namespace {

using book::Color;
using book::ScalePoint;

/// Where a point lies among the values of the range.
class BoundReader {
public:
    BoundReader(const RuleSubject& subject, Evaluator& evaluator, RangeStatistics& statistics)
        : subject_(subject), evaluator_(evaluator), statistics_(statistics)
    {
    }
    std::optional<double> Read(const ScalePoint& point)
    {
        const auto& numbers = statistics_.Numbers();
        if (numbers.empty())
            return std::nullopt;
        switch (point.kind) {
        case ScalePoint::Kind::Minimum:
            return numbers.front();
        case ScalePoint::Kind::Maximum:
            return numbers.back();
        case ScalePoint::Kind::AutomaticMinimum:
            return std::min(numbers.front(), 0.0);
        case ScalePoint::Kind::AutomaticMaximum:
            return std::max(numbers.back(), 0.0);
        default:
            return FromValue(point, numbers.front(), numbers.back());
        }
    }

private:
    std::optional<double> FromValue(const ScalePoint& point, double lowest, double highest)
    {
        const auto number = NumberOf(point.value, subject_, evaluator_);
        if (!number)
            return std::nullopt;
        if (point.kind == ScalePoint::Kind::Percent)
            return lowest + (highest - lowest) * *number / 100;
        if (point.kind == ScalePoint::Kind::Percentile)
            return statistics_.Percentile(*number / 100);
        return *number;
    }

    const RuleSubject& subject_;
    Evaluator& evaluator_;
    RangeStatistics& statistics_;
};

std::uint8_t Mixed(std::uint8_t from, std::uint8_t to, double share)
{
    return static_cast<std::uint8_t>(std::lround(from + (to - from) * share));
}

Color Mix(const Color& from, const Color& to, double share)
{
    return {Mixed(from.red, to.red, share), Mixed(from.green, to.green, share),
            Mixed(from.blue, to.blue, share)};
}

/// The place of a number between two bounds [0:1].
double ShareBetween(double number, double low, double high)
{
    if (!(high > low))
        return number < low ? 0 : 1;
    return std::clamp((number - low) / (high - low), 0.0, 1.0);
}

/// A bar on both sides of an axis.
void PlaceBesideAxis(BarDisplay& display, double number, double low, double high, double axis)
{
    display.axis = axis;
    if (number < 0) {
        const double share = low < 0 ? std::clamp(number / low, 0.0, 1.0) : 0;
        display.begin = axis * (1 - share);
        display.end = axis;
        display.growsLeft = true;
        return;
    }
    const double share = high > 0 ? std::clamp(number / high, 0.0, 1.0) : 0;
    display.begin = axis;
    display.end = axis + (1 - axis) * share;
}

void Mirror(BarDisplay& display)
{
    const double begin = display.begin;
    display.begin = 1 - display.end;
    display.end = 1 - begin;
    display.growsLeft = !display.growsLeft;
    if (display.axis)
        display.axis = 1 - *display.axis;
}

} // namespace

std::optional<Color> ColorOnScale(const std::vector<ScalePoint>& points, double number,
                                  const RuleSubject& subject, Evaluator& evaluator,
                                  RangeStatistics& statistics)
{
    BoundReader bounds(subject, evaluator, statistics);
    if (points.size() < 2)
        return std::nullopt;
    auto low = bounds.Read(points[0]);
    for (std::size_t at = 1; at < points.size(); ++at) {
        const auto high = bounds.Read(points[at]);
        if (!low || !high)
            return std::nullopt;
        if (number <= *high || at + 1 == points.size())
            return Mix(points[at - 1].color, points[at].color, ShareBetween(number, *low, *high));
        low = high;
    }
    return std::nullopt;
}

std::optional<BarDisplay> BarOf(const book::DataBar& bar, double number, const RuleSubject& subject,
                                Evaluator& evaluator, RangeStatistics& statistics)
{
    BoundReader bounds(subject, evaluator, statistics);
    const auto low = bounds.Read(bar.minimum);
    const auto high = bounds.Read(bar.maximum);
    if (!low || !high)
        return std::nullopt;
    BarDisplay display;
    display.color = number < 0 && bar.negativeColor ? *bar.negativeColor : bar.color;
    display.border = bar.borderColor;
    display.isGradient = bar.isGradient;
    display.axisColor = bar.axisColor.value_or(book::kBlack);
    const bool hasAxis = bar.axis != book::DataBar::Axis::None && *low < 0;
    if (hasAxis && bar.axis == book::DataBar::Axis::Middle)
        PlaceBesideAxis(display, number, *low, *high, 0.5);
    else if (hasAxis)
        PlaceBesideAxis(display, number, *low, *high, *high > 0 ? -*low / (*high - *low) : 1);
    else {
        const double shortest = std::clamp(bar.minimumLength / 100, 0.0, 1.0);
        const double longest = std::clamp(bar.maximumLength / 100, shortest, 1.0);
        display.end = shortest + (longest - shortest) * ShareBetween(number, *low, *high);
    }
    if (bar.isRightToLeft)
        Mirror(display);
    return display;
}

std::optional<IconDisplay> IconOf(const book::IconSet& icons, double number,
                                  const RuleSubject& subject, Evaluator& evaluator,
                                  RangeStatistics& statistics)
{
    BoundReader bounds(subject, evaluator, statistics);
    const std::size_t count = icons.points.size();
    if (count == 0)
        return std::nullopt;
    std::size_t place = 0;
    for (std::size_t at = 1; at < count; ++at) {
        const auto bound = bounds.Read(icons.points[at]);
        if (!bound)
            return std::nullopt;
        if (icons.points[at].isGreaterOrEqual ? number >= *bound : number > *bound)
            place = at;
    }
    if (icons.isReversed)
        place = count - 1 - place;
    if (place >= icons.icons.size())
        return IconDisplay{icons.name, static_cast<std::int32_t>(place)};
    const auto& icon = icons.icons[place];
    if (icon.set == "NoIcons")
        return std::nullopt;
    return IconDisplay{icon.set, icon.position};
}

} // namespace orrery::look
