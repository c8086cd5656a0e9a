#include "ui/wx/look/dashes.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace orrery::ui::wx {
namespace {

using look::Box;
using look::Path;
using look::PathStep;
using look::Point;

constexpr int kCurveParts = 24;
constexpr std::size_t kMostSteps = 100'000; ///< of a dashed path; the rest of it is left out
constexpr double kShortestPeriod = 0.1;     ///< pixels; shorter dashes are a whole line

Point Between(Point a, Point b, double share)
{
    return {a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share};
}

Point OnCurve(Point from, const PathStep& curve, double share)
{
    const Point a = Between(from, curve.control1, share);
    const Point b = Between(curve.control1, curve.control2, share);
    const Point c = Between(curve.control2, curve.point, share);
    return Between(Between(a, b, share), Between(b, c, share), share);
}

/// The share of a line that may lie inside a box, or an empty one.
std::pair<double, double> SeenShare(Point from, Point to, const Box& box)
{
    double first = 0;
    double last = 1;
    const auto cut = [&](double start, double way, double low, double high) {
        if (way == 0) {
            if (start < low || start > high)
                last = -1;
            return;
        }
        const double a = (low - start) / way;
        const double b = (high - start) / way;
        first = std::max(first, std::min(a, b));
        last = std::min(last, std::max(a, b));
    };
    cut(from.x, to.x - from.x, box.x, box.Right());
    cut(from.y, to.y - from.y, box.y, box.Bottom());
    return {first, last};
}

/// Walks along lines and keeps what the dashes cover.
class Dasher {
public:
    Dasher(std::vector<double> dashes, const Box& visible)
        : dashes_(std::move(dashes)), visible_(visible)
    {
        for (const double dash : dashes_)
            period_ += dash;
    }
    double Period() const { return period_; }
    void Begin() { position_ = 0; }
    void Line(Point from, Point to)
    {
        const double length = std::hypot(to.x - from.x, to.y - from.y);
        if (!(length > 0) || !std::isfinite(length))
            return;
        const auto [first, last] = SeenShare(from, to, visible_);
        if (first < last)
            LinePart(from, to, length, {first * length, last * length});
        position_ = std::fmod(position_ + length, period_);
    }
    Path Take() { return std::move(out_); }

private:
    void LinePart(Point from, Point to, double length, std::pair<double, double> seen)
    {
        // A dash that begins before the part is made whole; its invisible end does no harm.
        double at =
            -position_ + std::max(0.0, std::floor((seen.first + position_) / period_)) * period_;
        for (std::size_t i = 0; at < seen.second && out_.size() < kMostSteps;
             i = (i + 1) % dashes_.size()) {
            const double end = at + dashes_[i];
            if (i % 2 == 0 && end > 0 && end > at)
                Dash(Between(from, to, std::max(at, 0.0) / length),
                     Between(from, to, std::min(end, length) / length));
            at = end;
        }
    }
    void Dash(Point from, Point to)
    {
        if (out_.empty() || out_.back().point != from)
            out_.push_back({PathStep::Kind::Move, from, {}, {}});
        out_.push_back({PathStep::Kind::Line, to, {}, {}});
    }

    std::vector<double> dashes_;
    Box visible_;
    double period_ = 0;
    double position_ = 0; ///< of the dashes at the next point
    Path out_;
};

/// In pairs, none negative.
std::vector<double> Pairs(const std::vector<double>& dashes)
{
    std::vector<double> pairs;
    pairs.reserve(2 * dashes.size());
    for (const double dash : dashes)
        pairs.push_back(dash > 0 ? dash : 0);
    if (pairs.size() % 2 != 0)
        pairs.insert(pairs.end(), pairs.begin(), pairs.end());
    return pairs;
}

} // namespace

Path DashedPath(const Path& path, const std::vector<double>& dashes, const Box& visible)
{
    Dasher dasher(Pairs(dashes), visible);
    if (!(dasher.Period() >= kShortestPeriod) || !std::isfinite(dasher.Period()))
        return path;
    Point start;
    Point here;
    for (const PathStep& step : path) {
        switch (step.kind) {
        case PathStep::Kind::Move:
            start = step.point;
            dasher.Begin();
            break;
        case PathStep::Kind::Line:
            dasher.Line(here, step.point);
            break;
        case PathStep::Kind::Curve:
            for (int part = 1; part <= kCurveParts; ++part)
                dasher.Line(OnCurve(here, step, (part - 1.0) / kCurveParts),
                            OnCurve(here, step, part * 1.0 / kCurveParts));
            break;
        case PathStep::Kind::Close:
            dasher.Line(here, start);
            break;
        }
        here = step.kind == PathStep::Kind::Close ? start : step.point;
    }
    return dasher.Take();
}

} // namespace orrery::ui::wx
