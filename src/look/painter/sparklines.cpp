#include "look/painter/sparklines.h"

#include "look/painter/pixels.h"

#include <algorithm>
#include <cmath>

namespace orrery::look {

namespace {

using Values = std::vector<std::optional<double>>;

constexpr std::size_t kMostValues = 10'000;
constexpr double kMargin = 3;

class SparklinePainter {
public:
    SparklinePainter(const book::SparklineGroup& group, const Values& values, const Box& box,
                     Canvas& canvas)
        : group_(group), values_(values), box_(box), canvas_(canvas)
    {
        bool isFirst = true;
        for (const auto& value : values) {
            if (!value)
                continue;
            lowest_ = isFirst ? *value : std::min(lowest_, *value);
            highest_ = isFirst ? *value : std::max(highest_, *value);
            isFirst = false;
        }
        bottom_ = group.minimum.value_or(lowest_);
        top_ = group.maximum.value_or(highest_);
    }

    void PaintLine()
    {
        Path path;
        bool isOpen = false;
        for (std::size_t i = 0; i < values_.size(); ++i) {
            if (values_[i]) {
                const auto kind = isOpen ? PathStep::Kind::Line : PathStep::Kind::Move;
                path.push_back({kind, {X(i), Y(*values_[i])}, {}, {}});
            }
            isOpen = values_[i].has_value();
        }
        canvas_.DrawPath(path, {}, Pen{group_.color, group_.lineWidth * kPixelsPerPoint, {}, 1});
        for (std::size_t i = 0; i < values_.size(); ++i) {
            const auto color = values_[i] ? MarkOf(i) : std::nullopt;
            if (const auto shown = color ? color : values_[i] ? group_.markers : color)
                canvas_.FillBox({X(i) - 1.5, Y(*values_[i]) - 1.5, 3, 3}, SolidBrush(*shown));
        }
    }

    void PaintColumns(bool isWinLoss)
    {
        if (!isWinLoss) { // columns begin at zero if the bounds lie around it
            bottom_ = group_.minimum.value_or(std::min(lowest_, 0.0));
            top_ = group_.maximum.value_or(std::max(highest_, 0.0));
        }
        const double step = box_.width / static_cast<double>(values_.size());
        const double middle = box_.y + box_.height / 2;
        const double zero =
            isWinLoss ? middle : Y(std::clamp(0.0, bottom_, std::max(bottom_, top_)));
        for (std::size_t i = 0; i < values_.size(); ++i) {
            if (!values_[i] || *values_[i] == 0)
                continue;
            const bool isUp = *values_[i] > 0;
            const double winEnd = isUp ? box_.y : box_.Bottom();
            const double end = isWinLoss ? winEnd : Y(*values_[i]);
            const double x = box_.x + step * static_cast<double>(Place(i));
            canvas_.FillBox({x + step * 0.1, std::min(zero, end), step * 0.8,
                             std::max(std::abs(zero - end), 0.5)},
                            SolidBrush(MarkOf(i).value_or(group_.color)));
        }
    }

    void PaintAxis()
    {
        if (bottom_ < 0 && top_ > 0)
            canvas_.DrawLine({box_.x, Y(0)}, {box_.Right(), Y(0)}, Pen{book::kBlack, 0.75, {}, 1});
    }

private:
    std::size_t Place(std::size_t index) const
    {
        return group_.isRightToLeft ? values_.size() - 1 - index : index;
    }
    double X(std::size_t index) const
    {
        const double steps = static_cast<double>(std::max<std::size_t>(values_.size() - 1, 1));
        return box_.x + box_.width * static_cast<double>(Place(index)) / steps;
    }
    double Y(double value) const
    {
        const double share = top_ > bottom_ ? (value - bottom_) / (top_ - bottom_) : 0.5;
        return box_.Bottom() - box_.height * std::clamp(share, 0.0, 1.0);
    }
    std::optional<book::Color> MarkOf(std::size_t index) const
    {
        const double value = *values_[index];
        if (group_.high && value == highest_)
            return group_.high;
        if (group_.low && value == lowest_)
            return group_.low;
        if (group_.first && index == 0)
            return group_.first;
        if (group_.last && index + 1 == values_.size())
            return group_.last;
        return group_.negative && value < 0 ? group_.negative : std::nullopt;
    }

    const book::SparklineGroup& group_;
    const Values& values_;
    Box box_;
    Canvas& canvas_;
    double lowest_ = 0;
    double highest_ = 0;
    double bottom_ = 0;
    double top_ = 0;
};

} // namespace

void PaintSparkline(const book::SparklineGroup& group, Values values, const Box& cell,
                    Canvas& canvas)
{
    const Box outer = OnPixels(cell);
    const Box box{outer.x + kMargin, outer.y + kMargin, outer.width - 2 * kMargin,
                  outer.height - 2 * kMargin};
    if (box.width <= 0 || box.height <= 0)
        return;
    values.resize(std::min(values.size(), kMostValues));
    for (auto& value : values) {
        if (value && !std::isfinite(*value))
            value.reset();
    }
    if (values.empty())
        return;
    SparklinePainter painter(group, values, box, canvas);
    if (group.kind == book::SparklineKind::Line)
        painter.PaintLine();
    else
        painter.PaintColumns(group.kind == book::SparklineKind::WinLoss);
    if (group.showsAxis)
        painter.PaintAxis();
}

} // namespace orrery::look
