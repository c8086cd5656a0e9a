#include "look/evaluate/functions/statistics/criterion.h"
#include "look/evaluate/functions/statistics/statistics.h"
#include "look/evaluate/values/table_shape.h"

#include <algorithm>

namespace orrery::formula {
namespace {

/// An area of cells of the same shape as a table, from the area's first cell on: as many rows and
/// columns, or all that the sheet has.
ArrayPointer SameShape(Call& call, const Area& area, const Array& shape)
{
    const book::CellAddress first = area.range.first;
    const bool isWholeColumn = shape.hasMoreRows && first.row == 1;
    const bool isWholeRow = shape.hasMoreColumns && first.column == 1;
    Area wanted = area;
    wanted.range.last = {
        isWholeColumn ? kSheetRows : std::min(first.row + shape.rows - 1, kSheetRows),
        isWholeRow ? kSheetColumns : std::min(first.column + shape.columns - 1, kSheetColumns)};
    return call.context.ValuesOf(wanted);
}

/// The places where all criteria hold. Criteria are pairs of a range and a condition, from one
/// argument on; all ranges are of one size.
class Selection {
public:
    Selection(Call& call, std::size_t from) : call_(call)
    {
        for (std::size_t at = from; at + 1 < call.Count(); at += 2) {
            tables_.push_back(call.Table(at));
            criteria_.emplace_back(call.Single(at + 1), call.context.Rules());
            if (!call.Require(AreOfOneSize(*tables_.back(), *tables_.front()), CellError::Value))
                return;
            shape_.Add(*tables_.back());
        }
        isUsable_ = !tables_.empty();
    }
    const Array& First() const { return *tables_.front(); }
    /// Calls for each place, counted from 0. `values`, of the same size, is looked at, too.
    template <class Take> void ForEach(const Array* values, const Take& take) const
    {
        JoinedShape shape = shape_;
        if (values != nullptr)
            shape.Add(*values);
        if (shape.Size() > kLargestArray)
            call_.context.GiveUp();
        else if (isUsable_ &&
                 call_.context.Spend(static_cast<std::size_t>(shape.Size()) * tables_.size()))
            ForEachOf(shape, take);
    }

private:
    template <class Take> void ForEachOf(const JoinedShape& shape, const Take& take) const
    {
        for (std::int32_t row = 0; row < shape.Rows(); ++row) {
            for (std::int32_t column = 0; column < shape.Columns(); ++column) {
                if (IsSelected(row, column))
                    take(row, column, shape.PlacesOf(row, column));
            }
        }
    }

    bool IsSelected(std::int32_t row, std::int32_t column) const
    {
        for (std::size_t table = 0; table < tables_.size(); ++table) {
            if (!criteria_[table].Matches(ElementOf(*tables_[table], row, column)))
                return false;
        }
        return true;
    }

    Call& call_;
    std::vector<ArrayPointer> tables_;
    std::vector<Criterion> criteria_;
    JoinedShape shape_;
    bool isUsable_ = false;
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
    Selection(call, 0).ForEach(nullptr,
                               [&](std::int32_t, std::int32_t, double places) { count += places; });
    return count;
}

/// The numbers of the values that are selected.
std::vector<double> Selected(Call& call, const Selection& selection, const Array& values)
{
    std::vector<double> numbers;
    selection.ForEach(&values, [&](std::int32_t row, std::int32_t column, double) {
        if ((row >= values.rows && !values.hasMoreRows) ||
            (column >= values.columns && !values.hasMoreColumns))
            return; // beyond the end of the sheet
        const Value& value = ElementOf(values, row, column);
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
        values != nullptr ? SameShape(call, values->front(), selection.First()) : call.Table(0);
    return Selected(call, selection, *table);
}

std::vector<double> SelectedByAll(Call& call)
{
    const Selection selection(call, 1);
    const ArrayPointer table = call.Table(0);
    if (!call.Require(AreOfOneSize(*table, selection.First()), CellError::Value))
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
