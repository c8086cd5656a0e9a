#include "look/evaluate/functions/statistics/statistics.h"

#include <algorithm>

namespace orrery::formula {
namespace {

/// Calls for the summaries of areas, and for the other values of the arguments.
template <class TakeArea, class TakeValue>
void VisitSummaries(Call& call, const TakeArea& takeArea, const TakeValue& takeValue)
{
    for (std::size_t at = 0; at < call.Count() && !call.failure; ++at) {
        if (const Reference* reference = call.AsReference(at)) {
            for (const Area& area : *reference)
                takeArea(call.context.Summarize(area));
            continue;
        }
        if (!call.Has(at))
            takeValue(Value(0.0), Call::Source::Direct);
        call.ForEach(at, [&](const Value& value, Call::Source source) {
            takeValue(value, source);
            return !call.failure;
        });
    }
}

/// Whether a value counts as a number: an argument that is the text of one does.
bool IsCounted(Call& call, const Value& value, Call::Source source)
{
    if (std::holds_alternative<double>(value))
        return true;
    if (source != Call::Source::Direct || IsError(value))
        return false;
    return !ToNumber(value, call.context.Rules()).error;
}

Value Count(Call& call)
{
    double count = 0;
    VisitSummaries(
        call, [&](const AreaSummary& summary) { count += static_cast<double>(summary.numbers); },
        [&](const Value& value, Call::Source source) {
            count += IsCounted(call, value, source) ? 1 : 0;
        });
    return count;
}

Value CountValues(Call& call)
{
    double count = 0;
    VisitSummaries(
        call, [&](const AreaSummary& summary) { count += static_cast<double>(summary.values); },
        [&](const Value&, Call::Source) { ++count; });
    return count;
}

Value CountBlank(Call& call)
{
    const Reference* reference = call.AsReference(0);
    if (reference == nullptr)
        return CellError::Value;
    const Area& area = reference->front();
    double filled = 0;
    call.ForEach(0, [&](const Value& value, Call::Source) {
        const auto* text = std::get_if<std::string>(&value);
        filled += text == nullptr || !text->empty() ? 1 : 0;
        return true;
    });
    return static_cast<double>(area.Rows()) * area.Columns() - filled;
}

/// The summary of all arguments: numbers only.
AreaSummary SummarizeAll(Call& call)
{
    AreaSummary all;
    const auto add = [&](const AreaSummary& more) {
        if (more.error)
            call.Fail(*more.error);
        if (more.numbers == 0)
            return;
        all.minimum = all.numbers == 0 ? more.minimum : std::min(all.minimum, more.minimum);
        all.maximum = all.numbers == 0 ? more.maximum : std::max(all.maximum, more.maximum);
        all.sum += more.sum;
        all.numbers += more.numbers;
    };
    VisitSummaries(call, add, [&](const Value& value, Call::Source source) {
        if (source != Call::Source::Direct && !IsError(value) &&
            !std::holds_alternative<double>(value))
            return;
        const double number = call.Convert(value);
        add({number, number, number, 1, 1, std::nullopt});
    });
    return all;
}

Value Average(Call& call)
{
    const AreaSummary all = SummarizeAll(call);
    if (all.numbers == 0)
        return CellError::DivisionByZero;
    return NumberOrError(all.sum / static_cast<double>(all.numbers));
}

template <bool IsHighest> Value ExtremeOfAll(Call& call)
{
    const auto numbers = call.NumbersOfAll();
    if (numbers.empty())
        return 0.0;
    return IsHighest ? *std::max_element(numbers.begin(), numbers.end())
                     : *std::min_element(numbers.begin(), numbers.end());
}

Value AverageOfAll(Call& call)
{
    const auto numbers = call.NumbersOfAll();
    double sum = 0;
    for (const double number : numbers)
        sum += number;
    return numbers.empty() ? Value(CellError::DivisionByZero)
                           : NumberOrError(sum / static_cast<double>(numbers.size()));
}

} // namespace

const FunctionList& CountFunctions()
{
    static const FunctionList kFunctions = {
        {"COUNT", "r", Count, 1},
        {"COUNTA", "r", CountValues, 1},
        {"COUNTBLANK", "r", CountBlank},
        {"AVERAGE", "r", Average, 1},
        {"AVERAGEA", "r", AverageOfAll, 1},
        {"MIN", "r", [](Call& call) -> Value { return SummarizeAll(call).minimum; }, 1},
        {"MAX", "r", [](Call& call) -> Value { return SummarizeAll(call).maximum; }, 1},
        {"MINA", "r", ExtremeOfAll<false>, 1},
        {"MAXA", "r", ExtremeOfAll<true>, 1},
    };
    return kFunctions;
}

} // namespace orrery::formula
