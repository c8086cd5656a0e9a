#include "look/conditions/range_statistics.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace orrery::look {

void RangeStatistics::ReadNumbers()
{
    if (std::exchange(hasNumbers_, true))
        return;
    for (const book::CellRange& range : *ranges_) {
        evaluator_->ForEachCell(sheet_, range, 1, [this](book::CellAddress, const Value& value) {
            if (const auto* number = std::get_if<double>(&value))
                numbers_.push_back(*number);
        });
    }
    std::sort(numbers_.begin(), numbers_.end());
    const auto count = static_cast<double>(numbers_.size());
    // Divided once: the mean of equal numbers is not a little less than they are.
    for (const double number : numbers_)
        mean_ += number;
    mean_ = numbers_.empty() ? 0 : mean_ / count;
    double squares = 0;
    for (const double number : numbers_)
        squares += (number - mean_) * (number - mean_);
    deviation_ = numbers_.empty() ? 0 : std::sqrt(squares / count);
}

void RangeStatistics::ReadCounts()
{
    constexpr std::uint64_t kStepsOfCount = 25; // it keeps each value
    if (std::exchange(hasCounts_, true))
        return;
    for (const book::CellRange& range : *ranges_) {
        evaluator_->ForEachCell(sheet_, range, kStepsOfCount,
                                [this](book::CellAddress, const Value& value) {
                                    if (!formula::IsError(value))
                                        ++counts_[value];
                                });
    }
}

const std::vector<double>& RangeStatistics::Numbers()
{
    ReadNumbers();
    return numbers_;
}

double RangeStatistics::Mean()
{
    ReadNumbers();
    return mean_;
}

double RangeStatistics::Deviation()
{
    ReadNumbers();
    return deviation_;
}

double RangeStatistics::Percentile(double share)
{
    ReadNumbers();
    if (numbers_.empty())
        return 0;
    const double place = std::clamp(share, 0.0, 1.0) * static_cast<double>(numbers_.size() - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, numbers_.size() - 1);
    return numbers_[below] +
           (place - static_cast<double>(below)) * (numbers_[above] - numbers_[below]);
}

std::size_t RangeStatistics::CountOf(const Value& value)
{
    ReadCounts();
    const auto found = counts_.find(value);
    return found == counts_.end() ? 0 : found->second;
}

} // namespace orrery::look
