#include "look/layout/axis.h"

#include <algorithm>

namespace orrery::look {

Axis::Axis(double defaultSize, const std::vector<AxisSpan>& spans) : defaultSize_(defaultSize)
{
    spans_.reserve(spans.size());
    std::int32_t next = 1;
    double position = 0;
    for (const AxisSpan& span : spans) {
        if (span.first < next || span.last < span.first)
            continue;
        position += static_cast<double>(span.first - next) * defaultSize_;
        spans_.push_back({span, position});
        position += static_cast<double>(span.last - span.first + 1) * span.size;
        next = span.last + 1;
    }
}

const Axis::PlacedSpan* Axis::SpanBefore(std::int32_t index) const
{
    const auto after = std::upper_bound(
        spans_.begin(), spans_.end(), index,
        [](std::int32_t wanted, const PlacedSpan& each) { return wanted < each.span.first; });
    return after == spans_.begin() ? nullptr : &*(after - 1);
}

double Axis::Position(std::int32_t index) const
{
    const PlacedSpan* before = SpanBefore(index);
    if (before == nullptr)
        return static_cast<double>(index - 1) * defaultSize_;
    const AxisSpan& span = before->span;
    const std::int32_t within = std::min(index, span.last + 1) - span.first;
    const std::int32_t behind = std::max(index - span.last - 1, 0);
    return before->position + static_cast<double>(within) * span.size +
           static_cast<double>(behind) * defaultSize_;
}

double Axis::Size(std::int32_t index) const
{
    const PlacedSpan* before = SpanBefore(index);
    return before != nullptr && index <= before->span.last ? before->span.size : defaultSize_;
}

} // namespace orrery::look
