#include "look/evaluate/functions/statistics/numbers.h"
#include "look/evaluate/functions/statistics/statistics.h"
#include "util/text.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace orrery::formula {
namespace {

/// The number of the function that counts values of all kinds.
constexpr double kCountOfValues = 3;

/// What a subtotal leaves out.
struct Exclusions {
    bool hiddenRows = false;
    bool errors = false;
    bool subtotals = true;
    bool failsForErrors = true; ///< false: they are values like others
};

struct Collected {
    std::vector<double> numbers;
    double values = 0; ///< all that is not empty
};

bool IsSubtotal(Context& context, std::size_t sheet, book::CellAddress cell)
{
    const auto formula = context.FormulaAt(sheet, cell);
    if (!formula)
        return false;
    const std::string upper = util::ToUpperAscii(*formula);
    return upper.find("SUBTOTAL(") != std::string::npos ||
           upper.find("AGGREGATE(") != std::string::npos;
}

Collected Collect(Call& call, std::size_t from, std::size_t end, const Exclusions& without)
{
    Collected collected;
    const auto take = [&](const Value& value) {
        if (IsError(value) && without.errors)
            return true;
        ++collected.values;
        if (const auto* number = std::get_if<double>(&value))
            collected.numbers.push_back(*number);
        else if (IsError(value) && without.failsForErrors)
            call.Convert(value);
        return !call.failure;
    };
    for (std::size_t at = from; at < std::min(end, call.Count()) && !call.failure; ++at) {
        const Reference* reference = call.AsReference(at);
        if (reference == nullptr) {
            call.ForEach(at, [&](const Value& value, Call::Source) { return take(value); });
            continue;
        }
        for (const Area& area : *reference) {
            call.context.ForEachCell(
                area, [&](std::size_t sheet, book::CellAddress cell, const Value& value) {
                    const bool isLeftOut =
                        (without.hiddenRows && call.context.IsRowHidden(sheet, cell.row)) ||
                        (without.subtotals && IsSubtotal(call.context, sheet, cell));
                    return isLeftOut || take(value);
                });
        }
    }
    return collected;
}

Value Root(const std::optional<double>& number)
{
    return number ? Value(std::sqrt(*number)) : Value(CellError::DivisionByZero);
}

/// The functions in the order of their numbers, 1 to 11.
Value Apply(int function, const Collected& collected)
{
    const auto& numbers = collected.numbers;
    switch (function) {
    case 1:
        return NumberOr(Mean(numbers), CellError::DivisionByZero);
    case 2:
        return static_cast<double>(numbers.size());
    case 3:
        return collected.values;
    case 4:
        return numbers.empty() ? 0.0 : *std::max_element(numbers.begin(), numbers.end());
    case 5:
        return numbers.empty() ? 0.0 : *std::min_element(numbers.begin(), numbers.end());
    case 6:
        return numbers.empty() ? Value(0.0)
                               : NumberOrError(std::accumulate(numbers.begin(), numbers.end(), 1.0,
                                                               std::multiplies<>()));
    case 7:
        return Root(Variance(numbers, true));
    case 8:
        return Root(Variance(numbers, false));
    case 9:
        return NumberOrError(std::accumulate(numbers.begin(), numbers.end(), 0.0));
    case 10:
        return NumberOr(Variance(numbers, true), CellError::DivisionByZero);
    case 11:
        return NumberOr(Variance(numbers, false), CellError::DivisionByZero);
    case 12:
        return NumberOr(Median(numbers), CellError::Number);
    case 13:
        return NumberOr(Mode(numbers), CellError::NotAvailable);
    default:
        return CellError::Value;
    }
}

Value ApplyWithArgument(int function, const Collected& collected, double argument)
{
    const auto& numbers = collected.numbers;
    const auto count = static_cast<double>(numbers.size());
    switch (function) {
    case 14:
        return NumberOr(AtRank(numbers, count + 1 - std::ceil(argument)), CellError::Number);
    case 15:
        return NumberOr(AtRank(numbers, std::ceil(argument)), CellError::Number);
    case 16:
    case 18:
        return NumberOr(Percentile(numbers, argument, function == 18), CellError::Number);
    default:
        return NumberOr(Percentile(numbers, std::trunc(argument) / 4, function == 19),
                        CellError::Number);
    }
}

/// Functions from 101 on leave out hidden rows.
Value Subtotal(Call& call)
{
    const double number = call.Whole(0);
    const bool isVisibleOnly = number > 100;
    const double function = isVisibleOnly ? number - 100 : number;
    if (function < 1 || function > 11)
        return CellError::Value;
    Exclusions without;
    without.hiddenRows = isVisibleOnly;
    // An error in a cell does not keep COUNT from counting.
    without.errors = function == 2;
    without.failsForErrors = function != kCountOfValues;
    return Apply(static_cast<int>(function), Collect(call, 1, call.Count(), without));
}

Value Aggregate(Call& call)
{
    const double function = call.Whole(0);
    const double option = call.Whole(1);
    if (function < 1 || function > 19 || option < 0 || option > 7)
        return CellError::Value;
    const int bits = static_cast<int>(option);
    Exclusions without;
    without.hiddenRows = bits % 2 == 1;
    without.errors = bits == 2 || bits == 3 || bits >= 6;
    without.subtotals = bits < 4;
    without.failsForErrors = function != kCountOfValues;
    if (function < 14)
        return Apply(static_cast<int>(function), Collect(call, 2, call.Count(), without));
    if (!call.Has(3))
        return CellError::Value;
    return ApplyWithArgument(static_cast<int>(function), Collect(call, 2, 3, without),
                             call.Number(3));
}

} // namespace

const FunctionList& SubtotalFunctions()
{
    static const FunctionList kFunctions = {
        {"SUBTOTAL", "vr", Subtotal, 1},
        {"AGGREGATE", "vva", Aggregate, 1},
    };
    return kFunctions;
}

} // namespace orrery::formula
