#include "look/chart/chart_values.h"

#include "util/numbers.h"

#include <algorithm>
#include <cmath>

namespace orrery::look {

std::vector<book::CellContent> CachedChartValues::Values(const book::ChartData& data) const
{
    return data.cached;
}

std::string CachedChartValues::Format(double number, const std::string& format) const
{
    return formatter_ ? formatter_(number, format) : ShortNumber(number);
}

std::string ShortNumber(double number)
{
    if (!std::isfinite(number))
        return {};
    constexpr int kDigits = 10;
    constexpr double kLargestPlain = 1e11;
    constexpr double kSmallestPlain = 1e-9;
    const double size = std::abs(number);
    const bool isPlain = size == 0 || (size < kLargestPlain && size >= kSmallestPlain);
    // A value of 1e-9 keeps one digit, one of 1e10 no decimals.
    const int decimals =
        size < 1 ? kDigits : std::max(0, kDigits - 1 - static_cast<int>(std::log10(size)));
    std::string result = isPlain ? util::DecimalText(number, decimals)
                                 : ScientificText(util::RoundToDigits(number, 5));
    if (isPlain && result.find('.') != result.npos) {
        result.erase(result.find_last_not_of('0') + 1);
        if (result.back() == '.')
            result.pop_back();
    }
    return result == "-0" ? "0" : result;
}

} // namespace orrery::look
