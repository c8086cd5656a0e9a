#include "look/evaluate/functions/statistics/statistics.h"

#include "look/evaluate/functions/statistics/numbers.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace orrery::formula {
namespace {

template <bool IsSample> Value VarianceOf(Call& call)
{
    return NumberOr(Variance(call.Numbers(), IsSample), CellError::DivisionByZero);
}

template <bool IsSample> Value DeviationOf(Call& call)
{
    const auto variance = Variance(call.Numbers(), IsSample);
    return variance ? Value(std::sqrt(*variance)) : Value(CellError::DivisionByZero);
}

/// STDEVA, VARPA ...: texts count as 0.
template <bool IsSample, bool IsRoot> Value VarianceOfAll(Call& call)
{
    const auto variance = Variance(call.NumbersOfAll(), IsSample);
    if (!variance)
        return CellError::DivisionByZero;
    return IsRoot ? std::sqrt(*variance) : *variance;
}

Value SumOfDeviations(Call& call)
{
    const auto numbers = call.Numbers();
    return numbers.empty() ? Value(CellError::Number) : Value(SquaredDeviations(numbers));
}

/// Texts do not count, not even those of numbers that are arguments themselves.
Value ModeOf(Call& call)
{
    std::vector<double> numbers;
    for (std::size_t at = 0; at < call.Count() && !call.failure; ++at) {
        call.ForEach(at, [&](const Value& value, Call::Source) {
            if (const auto* number = std::get_if<double>(&value))
                numbers.push_back(*number);
            else if (IsError(value))
                call.Convert(value);
            return !call.failure;
        });
    }
    return NumberOr(Mode(numbers), CellError::NotAvailable);
}

Value MeanDeviation(Call& call)
{
    auto numbers = call.Numbers();
    const double mean = Mean(numbers).value_or(0);
    for (double& number : numbers)
        number = std::fabs(number - mean);
    return NumberOr(Mean(numbers), CellError::Number);
}

/// The mean of what a function makes of the numbers, all above 0, made back.
Value MeanThrough(Call& call, double (*make)(double), double (*back)(double))
{
    auto numbers = call.Numbers();
    for (double& number : numbers) {
        if (number <= 0)
            return CellError::Number;
        number = make(number);
    }
    const auto mean = Mean(numbers);
    return mean ? NumberOrError(back(*mean)) : Value(CellError::Number);
}

double Inverse(double number)
{
    return 1 / number;
}

template <bool IsLargest> Value Ranked(Call& call)
{
    auto numbers = call.Numbers(0, 1);
    const double rank = std::ceil(call.Number(1));
    const auto count = static_cast<double>(numbers.size());
    return NumberOr(AtRank(std::move(numbers), IsLargest ? count + 1 - rank : rank),
                    CellError::Number);
}

template <bool IsExclusive> Value PercentileOf(Call& call)
{
    return NumberOr(Percentile(call.Numbers(0, 1), call.Number(1), IsExclusive), CellError::Number);
}

template <bool IsExclusive> Value QuartileOf(Call& call)
{
    return NumberOr(Percentile(call.Numbers(0, 1), std::trunc(call.Number(1)) / 4, IsExclusive),
                    CellError::Number);
}

template <bool IsAverage> Value RankOf(Call& call)
{
    const double number = call.Number(0);
    const bool isRising = call.Number(2) != 0;
    const auto numbers = call.Numbers(1, 1);
    const auto same = std::count(numbers.begin(), numbers.end(), number);
    if (same == 0)
        return CellError::NotAvailable;
    const auto before = std::count_if(numbers.begin(), numbers.end(), [&](double other) {
        return isRising ? other < number : other > number;
    });
    return static_cast<double>(before + 1) + (IsAverage ? static_cast<double>(same - 1) / 2 : 0);
}

template <bool IsExclusive> Value PercentRank(Call& call)
{
    auto numbers = call.Numbers(0, 1);
    const double number = call.Number(1);
    const double digits = call.Whole(2, 3);
    std::sort(numbers.begin(), numbers.end());
    if (numbers.empty() || digits < 1 || digits > 15)
        return CellError::Number;
    if (number < numbers.front() || number > numbers.back())
        return CellError::NotAvailable;
    const auto above = std::lower_bound(numbers.begin(), numbers.end(), number);
    double place = static_cast<double>(above - numbers.begin());
    if (*above != number)
        place -= (*above - number) / (*above - *(above - 1));
    const auto count = static_cast<double>(numbers.size());
    const double share = IsExclusive  ? (place + 1) / (count + 1)
                         : count == 1 ? 1
                                      : place / (count - 1);
    const double scale = std::pow(10, digits);
    return std::floor(share * scale) / scale;
}

Value TrimmedMean(Call& call)
{
    auto numbers = call.Numbers(0, 1);
    const double share = call.Number(1);
    if (share < 0 || share >= 1)
        return CellError::Number;
    std::sort(numbers.begin(), numbers.end());
    const auto cut =
        static_cast<std::ptrdiff_t>(std::floor(static_cast<double>(numbers.size()) * share / 2));
    const std::vector<double> rest(numbers.begin() + cut, numbers.end() - cut);
    return NumberOr(Mean(rest), CellError::Number);
}

/// Pairs of numbers of two tables, with their means.
struct Pairs {
    std::vector<double> first;
    std::vector<double> second;
    double products = 0; ///< of the distances from the means
};

Pairs ReadPairs(Call& call, std::size_t first, std::size_t second)
{
    Pairs pairs;
    const ArrayPointer left = call.WholeTable(first);
    const ArrayPointer right = call.WholeTable(second);
    if (!call.Require(left->values.size() == right->values.size(), CellError::NotAvailable))
        return pairs;
    for (std::size_t at = 0; at < left->values.size(); ++at) {
        const Value& x = left->values[at];
        const Value& y = right->values[at];
        if (IsError(x) || IsError(y))
            call.Convert(IsError(x) ? x : y);
        if (!std::holds_alternative<double>(x) || !std::holds_alternative<double>(y))
            continue;
        pairs.first.push_back(std::get<double>(x));
        pairs.second.push_back(std::get<double>(y));
    }
    call.Require(!pairs.first.empty(), CellError::DivisionByZero);
    const double meanX = Mean(pairs.first).value_or(0);
    const double meanY = Mean(pairs.second).value_or(0);
    for (std::size_t at = 0; at < pairs.first.size(); ++at)
        pairs.products += (pairs.first[at] - meanX) * (pairs.second[at] - meanY);
    return pairs;
}

Value Quotient(double number, double divisor)
{
    return divisor == 0 ? Value(CellError::DivisionByZero) : NumberOrError(number / divisor);
}

double Correlation(const Pairs& pairs)
{
    return pairs.products /
           std::sqrt(SquaredDeviations(pairs.first) * SquaredDeviations(pairs.second));
}

template <bool IsSquare> Value CorrelationOf(Call& call)
{
    const double correlation = Correlation(ReadPairs(call, 0, 1));
    return std::isfinite(correlation) ? Value(IsSquare ? correlation * correlation : correlation)
                                      : Value(CellError::DivisionByZero);
}

template <bool IsSample> Value Covariance(Call& call)
{
    const Pairs pairs = ReadPairs(call, 0, 1);
    return Quotient(pairs.products, static_cast<double>(pairs.first.size()) - (IsSample ? 1 : 0));
}

/// The arguments are the known y and the known x.
Value Slope(Call& call)
{
    const Pairs pairs = ReadPairs(call, 0, 1);
    return Quotient(pairs.products, SquaredDeviations(pairs.second));
}

Value LineAt(Call& call, const Pairs& pairs, double x)
{
    const double spread = SquaredDeviations(pairs.second);
    if (spread == 0)
        return call.failure ? Value() : Value(CellError::DivisionByZero);
    const double slope = pairs.products / spread;
    return NumberOrError(Mean(pairs.first).value_or(0) +
                         slope * (x - Mean(pairs.second).value_or(0)));
}

/// How many numbers lie at or below each bound, and above the last.
Operand Frequency(Call& call)
{
    const auto numbers = call.Numbers(0, 1);
    const auto bounds = call.Numbers(1, 1);
    std::vector<std::size_t> order(bounds.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
        return bounds[left] < bounds[right];
    });
    std::vector<double> counts(bounds.size() + 1);
    for (const double number : numbers) {
        const auto found =
            std::lower_bound(order.begin(), order.end(), number,
                             [&](std::size_t at, double wanted) { return bounds[at] < wanted; });
        ++counts[found == order.end() ? bounds.size() : *found];
    }
    Array table(static_cast<std::int32_t>(counts.size()), 1);
    std::copy(counts.begin(), counts.end(), table.values.begin());
    return MakeTable(std::move(table));
}

Value Poisson(Call& call)
{
    const double events = call.Whole(0);
    const double mean = call.Number(1);
    if (events < 0 || mean < 0 || events > 1e6)
        return CellError::Number;
    const auto density = [&](double count) {
        return std::exp(count * std::log(mean) - mean - std::lgamma(count + 1));
    };
    if (mean == 0)
        return call.Logical(2) || events == 0 ? 1.0 : 0.0;
    if (!call.Logical(2))
        return density(events);
    if (!call.context.Spend(static_cast<std::size_t>(events)))
        return {};
    double sum = 0;
    double count = 0;
    while (count <= events)
        sum += density(count++);
    return sum;
}

Value Normal(Call& call)
{
    const double deviation = call.Number(2);
    if (deviation <= 0)
        return CellError::Number;
    const double distance = (call.Number(0) - call.Number(1)) / deviation;
    if (call.Logical(3))
        return std::erfc(-distance / std::sqrt(2.0)) / 2;
    return std::exp(-distance * distance / 2) / (deviation * std::sqrt(2 * std::acos(-1.0)));
}

} // namespace

const FunctionList& StatisticsFunctions()
{
    static const FunctionList kFunctions = {
        {"VAR", "r", VarianceOf<true>, 1},
        {"VAR.S", "r", VarianceOf<true>, 1},
        {"VARP", "r", VarianceOf<false>, 1},
        {"VAR.P", "r", VarianceOf<false>, 1},
        {"STDEV", "r", DeviationOf<true>, 1},
        {"STDEV.S", "r", DeviationOf<true>, 1},
        {"STDEVP", "r", DeviationOf<false>, 1},
        {"STDEV.P", "r", DeviationOf<false>, 1},
        {"VARA", "r", VarianceOfAll<true, false>, 1},
        {"VARPA", "r", VarianceOfAll<false, false>, 1},
        {"STDEVA", "r", VarianceOfAll<true, true>, 1},
        {"STDEVPA", "r", VarianceOfAll<false, true>, 1},
        {"DEVSQ", "r", SumOfDeviations, 1},
        {"AVEDEV", "r", MeanDeviation, 1},
        {"GEOMEAN", "r", [](Call& call) { return MeanThrough(call, std::log, std::exp); }, 1},
        {"HARMEAN", "r", [](Call& call) { return MeanThrough(call, Inverse, Inverse); }, 1},
        {"MEDIAN", "r",
         [](Call& call) { return NumberOr(Median(call.Numbers()), CellError::Number); }, 1},
        {"MODE", "r", ModeOf, 1},
        {"MODE.SNGL", "r", ModeOf, 1},
        {"LARGE", "rv", Ranked<true>},
        {"SMALL", "rv", Ranked<false>},
        {"PERCENTILE", "rv", PercentileOf<false>},
        {"PERCENTILE.INC", "rv", PercentileOf<false>},
        {"PERCENTILE.EXC", "rv", PercentileOf<true>},
        {"QUARTILE", "rv", QuartileOf<false>},
        {"QUARTILE.INC", "rv", QuartileOf<false>},
        {"QUARTILE.EXC", "rv", QuartileOf<true>},
        {"RANK", "vr|v", RankOf<false>},
        {"RANK.EQ", "vr|v", RankOf<false>},
        {"RANK.AVG", "vr|v", RankOf<true>},
        {"PERCENTRANK", "rv|v", PercentRank<false>},
        {"PERCENTRANK.INC", "rv|v", PercentRank<false>},
        {"PERCENTRANK.EXC", "rv|v", PercentRank<true>},
        {"TRIMMEAN", "rv", TrimmedMean},
        {"CORREL", "aa", CorrelationOf<false>},
        {"PEARSON", "aa", CorrelationOf<false>},
        {"RSQ", "aa", CorrelationOf<true>},
        {"COVAR", "aa", Covariance<false>},
        {"COVARIANCE.P", "aa", Covariance<false>},
        {"COVARIANCE.S", "aa", Covariance<true>},
        {"SLOPE", "aa", Slope},
        {"INTERCEPT", "aa", [](Call& call) { return LineAt(call, ReadPairs(call, 0, 1), 0); }},
        {"FORECAST", "vaa",
         [](Call& call) { return LineAt(call, ReadPairs(call, 1, 2), call.Number(0)); }},
        {"FORECAST.LINEAR", "vaa",
         [](Call& call) { return LineAt(call, ReadPairs(call, 1, 2), call.Number(0)); }},
        {"FREQUENCY", "rr", Frequency},
        {"POISSON", "vvv", Poisson},
        {"POISSON.DIST", "vvv", Poisson},
        {"NORMDIST", "vvvv", Normal},
        {"NORM.DIST", "vvvv", Normal},
        {"NORMSDIST", "v",
         [](Call& call) -> Value { return std::erfc(-call.Number(0) / std::sqrt(2.0)) / 2; }},
        {"STANDARDIZE", "vvv",
         [](Call& call) -> Value {
             const double deviation = call.Number(2);
             return deviation <= 0 ? Value(CellError::Number)
                                   : Value((call.Number(0) - call.Number(1)) / deviation);
         }},
    };
    return kFunctions;
}

} // namespace orrery::formula
