#include "look/evaluate/functions/statistics/criterion.h"
#include "look/evaluate/functions/statistics/statistics.h"

#include <algorithm>

namespace orrery::formula {
namespace {

/// An area of cells of the same shape as a table, from the area's first cell on.
ArrayPointer SameShape(Call& call, const Area& area, const Array& shape)
{
    Area wanted = area;
    wanted.range.last = {std::min(area.range.first.row + shape.rows - 1, kSheetRows),
                         std::min(area.range.first.column + shape.columns - 1, kSheetColumns)};
    return call.context.ValuesOf(wanted);
}

/// The values of an argument at the places where all criteria hold. Criteria are pairs of a range
/// and a condition, from one argument on.
class Selection {
public:
    Selection(Call& call, std::size_t from)
    {
        for (std::size_t at = from; at + 1 < call.Count(); at += 2) {
            tables_.push_back(call.Table(at));
            criteria_.emplace_back(call.Single(at + 1), call.context.Rules());
            if (!call.Require(tables_.back()->rows == tables_.front()->rows &&
                                  tables_.back()->columns == tables_.front()->columns,
                              CellError::Value))
                return;
        }
        const std::size_t size = tables_.empty() ? 0 : tables_.front()->values.size();
        if (call.context.Spend(size * tables_.size()))
            size_ = size;
    }
    const Array& Shape() const { return *tables_.front(); }
    template <class Take> void ForEach(const Take& take) const
    {
        for (std::size_t at = 0; at < size_; ++at) {
            bool isSelected = true;
            for (std::size_t table = 0; table < tables_.size() && isSelected; ++table)
                isSelected = criteria_[table].Matches(tables_[table]->values[at]);
            if (isSelected)
                take(at);
        }
    }

private:
    std::vector<ArrayPointer> tables_;
    std::vector<Criterion> criteria_;
    std::size_t size_ = 0;
};

Value CountIf(Call& call)
{
    const Criterion criterion(call.Single(1), call.context.Rules());
    const Reference* reference = call.AsReference(0);
    if (reference == nullptr)
        return CellError::Value;
    const Area& area = reference->front();
    if (criterion.PlainValue())
        return static_cast<double>(call.context.CountOf(area, *criterion.PlainValue()));
    double count = 0;
    double filled = 0;
    call.context.ForEachCell(area, [&](std::size_t, book::CellAddress, const Value& value) {
        ++filled;
        count += criterion.Matches(value) ? 1 : 0;
        return true;
    });
    if (criterion.Matches(Value()))
        count += static_cast<double>(area.Rows()) * area.Columns() - filled;
    return count;
}

Value CountIfs(Call& call)
{
    double count = 0;
    if (call.Count() == 2)
        return CountIf(call);
    Selection(call, 0).ForEach([&](std::size_t) { ++count; });
    return count;
}

/// The numbers of the values that are selected.
std::vector<double> Selected(Call& call, const Selection& selection, const Array& values)
{
    std::vector<double> numbers;
    selection.ForEach([&](std::size_t at) {
        if (at >= values.values.size())
            return;
        const Value& value = values.values[at];
        if (const auto* number = std::get_if<double>(&value))
            numbers.push_back(*number);
        else if (IsError(value))
            call.Convert(value);
    });
    return numbers;
}

/// SUMIF: a range, a condition, and perhaps where the values are.
std::vector<double> SelectedByOne(Call& call)
{
    const Selection selection(call, 0);
    const Reference* values = call.AsReference(2);
    if (call.Has(2) && !call.Require(values != nullptr, CellError::Value))
        return {};
    const ArrayPointer table =
        values != nullptr ? SameShape(call, values->front(), selection.Shape()) : call.Table(0);
    return Selected(call, selection, *table);
}

std::vector<double> SelectedByAll(Call& call)
{
    const Selection selection(call, 1);
    const ArrayPointer table = call.Table(0);
    if (!call.Require(table->rows == selection.Shape().rows &&
                          table->columns == selection.Shape().columns,
                      CellError::Value))
        return {};
    return Selected(call, selection, *table);
}

Value SumOf(const std::vector<double>& numbers)
{
    double sum = 0;
    for (const double number : numbers)
        sum += number;
    return NumberOrError(sum);
}

Value AverageOf(const std::vector<double>& numbers)
{
    if (numbers.empty())
        return CellError::DivisionByZero;
    return NumberOrError(std::get<double>(SumOf(numbers)) / static_cast<double>(numbers.size()));
}

Value Highest(const std::vector<double>& numbers)
{
    return numbers.empty() ? 0.0 : *std::max_element(numbers.begin(), numbers.end());
}

Value Lowest(const std::vector<double>& numbers)
{
    return numbers.empty() ? 0.0 : *std::min_element(numbers.begin(), numbers.end());
}

} // namespace

const FunctionList& ConditionFunctions()
{
    static const FunctionList kFunctions = {
        {"COUNTIF", "rv", CountIf},
        {"COUNTIFS", "rv", CountIfs, 2},
        {"SUMIF", "rv|r", [](Call& call) { return SumOf(SelectedByOne(call)); }},
        {"AVERAGEIF", "rv|r", [](Call& call) { return AverageOf(SelectedByOne(call)); }},
        {"SUMIFS", "rrv", [](Call& call) { return SumOf(SelectedByAll(call)); }, 2},
        {"AVERAGEIFS", "rrv", [](Call& call) { return AverageOf(SelectedByAll(call)); }, 2},
        {"MAXIFS", "rrv", [](Call& call) { return Highest(SelectedByAll(call)); }, 2},
        {"MINIFS", "rrv", [](Call& call) { return Lowest(SelectedByAll(call)); }, 2},
    };
    return kFunctions;
}

} // namespace orrery::formula
