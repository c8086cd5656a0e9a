#include "look/conditions/range_statistics.h"

#include <algorithm>
#include <cmath>

namespace orrery::look {

void RangeStatistics::Read()
{
    if (isRead_)
        return;
    isRead_ = true;
    for (const book::CellRange& range : *ranges_) {
        evaluator_->ForEachCell(sheet_, range, [this](book::CellAddress, const Value& value) {
            if (formula::IsError(value))
                return;
            ++counts_[value];
            if (const auto* number = std::get_if<double>(&value))
                numbers_.push_back(*number);
        });
    }
    std::sort(numbers_.begin(), numbers_.end());
    const auto count = static_cast<double>(numbers_.size());
    for (const double number : numbers_)
        mean_ += number / count;
    double squares = 0;
    for (const double number : numbers_)
        squares += (number - mean_) * (number - mean_);
    deviation_ = numbers_.empty() ? 0 : std::sqrt(squares / count);
}

const std::vector<double>& RangeStatistics::Numbers()
{
    Read();
    return numbers_;
}

double RangeStatistics::Mean()
{
    Read();
    return mean_;
}

double RangeStatistics::Deviation()
{
    Read();
    return deviation_;
}

double RangeStatistics::Percentile(double share)
{
    Read();
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
    Read();
    const auto found = counts_.find(value);
    return found == counts_.end() ? 0 : found->second;
}

} // namespace orrery::look
