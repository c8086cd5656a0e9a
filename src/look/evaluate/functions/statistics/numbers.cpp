#include "look/evaluate/functions/statistics/numbers.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <unordered_map>

namespace orrery::formula {

std::optional<double> Mean(const std::vector<double>& numbers)
{
    if (numbers.empty())
        return std::nullopt;
    return std::accumulate(numbers.begin(), numbers.end(), 0.0) /
           static_cast<double>(numbers.size());
}

double SquaredDeviations(const std::vector<double>& numbers)
{
    const double mean = Mean(numbers).value_or(0);
    return std::accumulate(numbers.begin(), numbers.end(), 0.0, [mean](double sum, double number) {
        return sum + (number - mean) * (number - mean);
    });
}

std::optional<double> Variance(const std::vector<double>& numbers, bool isSample)
{
    const double count = static_cast<double>(numbers.size()) - (isSample ? 1 : 0);
    if (count < 1)
        return std::nullopt;
    return SquaredDeviations(numbers) / count;
}

std::optional<double> Median(std::vector<double> numbers)
{
    return Percentile(std::move(numbers), 0.5, false);
}

std::optional<double> Mode(const std::vector<double>& numbers)
{
    std::unordered_map<double, std::size_t> counts;
    std::size_t highest = 1;
    for (const double number : numbers)
        highest = std::max(highest, ++counts[number]);
    const auto found = std::find_if(numbers.begin(), numbers.end(), [&](double number) {
        return highest > 1 && counts[number] == highest;
    });
    return found == numbers.end() ? std::nullopt : std::optional(*found);
}

std::optional<double> AtRank(std::vector<double> numbers, double rank)
{
    if (!(rank >= 1 && rank <= static_cast<double>(numbers.size())))
        return std::nullopt;
    const auto at = numbers.begin() + static_cast<std::ptrdiff_t>(rank) - 1;
    std::nth_element(numbers.begin(), at, numbers.end());
    return *at;
}

std::optional<double> Percentile(std::vector<double> numbers, double share, bool isExclusive)
{
    const auto count = static_cast<double>(numbers.size());
    const double place = isExclusive ? share * (count + 1) - 1 : share * (count - 1);
    if (numbers.empty() || !(share >= 0 && share <= 1) || !(place >= 0 && place <= count - 1))
        return std::nullopt;
    const double below = std::floor(place);
    const auto at = numbers.begin() + static_cast<std::ptrdiff_t>(below);
    std::nth_element(numbers.begin(), at, numbers.end());
    const double low = *at;
    if (place == below)
        return low;
    const double high = *std::min_element(at + 1, numbers.end());
    return low + (place - below) * (high - low);
}

} // namespace orrery::formula
