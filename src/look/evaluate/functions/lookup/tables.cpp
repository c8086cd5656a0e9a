#include "look/evaluate/functions/lookup/lookup.h"

#include "look/evaluate/values/compare.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace orrery::formula {
namespace {

using Indexes = std::vector<std::int32_t>;

Operand Transpose(Call& call)
{
    const ArrayPointer table = call.WholeTable(0);
    Array turned(table->columns, table->rows);
    for (std::int32_t row = 0; row < table->rows; ++row)
        for (std::int32_t column = 0; column < table->columns; ++column)
            turned.At(column, row) = table->At(row, column);
    return MakeTable(std::move(turned));
}

/// The table of some rows, or of some columns.
Operand Pick(const Array& table, const Indexes& chosen, bool areRows)
{
    const auto count = static_cast<std::int32_t>(chosen.size());
    if (count == 0)
        return Value(CellError::Calculation);
    Array part(areRows ? count : table.rows, areRows ? table.columns : count);
    for (std::int32_t row = 0; row < part.rows; ++row) {
        for (std::int32_t column = 0; column < part.columns; ++column) {
            const auto at = static_cast<std::size_t>(areRows ? row : column);
            part.At(row, column) =
                areRows ? table.At(chosen[at], column) : table.At(row, chosen[at]);
        }
    }
    return MakeTable(std::move(part));
}

Operand Filter(Call& call)
{
    const ArrayPointer table = call.WholeTable(0);
    const ArrayPointer include = call.WholeTable(1);
    const bool areRows = include->rows == table->rows && include->columns == 1;
    if (!call.Require(areRows || (include->columns == table->columns && include->rows == 1),
                      CellError::Value))
        return Value();
    Indexes chosen;
    for (std::size_t at = 0; at < include->values.size(); ++at) {
        const auto isIncluded = ToLogical(include->values[at]);
        if (isIncluded.error)
            return Value(*isIncluded.error);
        if (isIncluded.value)
            chosen.push_back(static_cast<std::int32_t>(at));
    }
    if (chosen.empty() && call.Has(2))
        return call.arguments[2];
    return Pick(*table, chosen, areRows);
}

Operand Sort(Call& call)
{
    const ArrayPointer table = call.WholeTable(0);
    const bool areRows = !call.Logical(3);
    const double key = call.Whole(1, 1);
    const bool isFalling = call.Number(2, 1) < 0;
    const std::int32_t count = areRows ? table->rows : table->columns;
    if (!call.Require(key >= 1 && key <= (areRows ? table->columns : table->rows),
                      CellError::Value) ||
        !call.context.Spend(static_cast<std::size_t>(count)))
        return Value();
    const auto keyIndex = static_cast<std::int32_t>(key) - 1;
    const auto keyOf = [&](std::int32_t at) -> const Value& {
        return areRows ? table->At(at, keyIndex) : table->At(keyIndex, at);
    };
    Indexes order(static_cast<std::size_t>(count));
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](std::int32_t left, std::int32_t right) {
        if (IsBlank(keyOf(left)) || IsBlank(keyOf(right))) // empty ones come last
            return !IsBlank(keyOf(left)) && IsBlank(keyOf(right));
        const int compared = CompareValues(keyOf(left), keyOf(right));
        return isFalling ? compared > 0 : compared < 0;
    });
    return Pick(*table, order, areRows);
}

/// Rows that stand once, or the first of equal ones.
Operand Unique(Call& call)
{
    const ArrayPointer table = call.WholeTable(0);
    const bool areRows = !call.Logical(1);
    const bool wantsOnce = call.Logical(2);
    const std::int32_t count = areRows ? table->rows : table->columns;
    const std::int32_t width = areRows ? table->columns : table->rows;
    const auto keyOf = [&](std::int32_t at) {
        std::string key;
        for (std::int32_t other = 0; other < width; ++other) {
            const Value& value = areRows ? table->At(at, other) : table->At(other, at);
            key += std::to_string(value.index()) + ToText(value).value + '\0';
        }
        return key;
    };
    KeyMap<std::pair<std::int32_t, std::int32_t>> seen; // the first place, the count
    for (std::int32_t at = 0; at < count && call.context.Spend(1); ++at)
        ++seen.try_emplace(Value(keyOf(at)), at, 0).first->second.second;
    Indexes chosen;
    for (const auto& [key, place] : seen)
        if (!wantsOnce || place.second == 1)
            chosen.push_back(place.first);
    std::sort(chosen.begin(), chosen.end());
    return Pick(*table, chosen, areRows);
}

Operand Sequence(Call& call)
{
    const double rows = call.Whole(0, 1);
    const double columns = call.Whole(1, 1);
    const double first = call.Number(2, 1);
    const double step = call.Number(3, 1);
    if (!call.Require(rows >= 1 && columns >= 1 && rows * columns <= kLargestArray,
                      CellError::Value) ||
        !call.context.Spend(static_cast<std::size_t>(rows * columns)))
        return Value();
    Array table(static_cast<std::int32_t>(rows), static_cast<std::int32_t>(columns));
    for (std::size_t at = 0; at < table.values.size(); ++at)
        table.values[at] = first + step * static_cast<double>(at);
    return MakeTable(std::move(table));
}

} // namespace

const FunctionList& TableFunctions()
{
    static const FunctionList kFunctions = {
        {"TRANSPOSE", "a", Transpose}, {"FILTER", "aa|r", Filter},      {"SORT", "a|vvv", Sort},
        {"UNIQUE", "a|vv", Unique},    {"SEQUENCE", "v|vvv", Sequence},
    };
    return kFunctions;
}

} // namespace orrery::formula
