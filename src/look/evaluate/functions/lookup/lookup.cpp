#include "look/evaluate/functions/lookup/lookup.h"

#include "look/evaluate/functions/lookup/search.h"
#include "look/evaluate/values/compare.h"

#include <cmath>
#include <utility>

namespace orrery::formula {
namespace {

/// What is looked up: nothing counts as 0.
Value Wanted(Call& call)
{
    Value wanted = call.Single(0);
    if (IsError(wanted))
        call.Convert(wanted);
    return IsBlank(wanted) ? Value(0.0) : wanted;
}

/// VLOOKUP looks in the first column, HLOOKUP in the first row.
template <bool IsVertical> Value LookUpInTable(Call& call)
{
    const Value wanted = Wanted(call);
    const double index = call.Whole(2);
    // "VLOOKUP(A1,B:C,2,)": left out between commas it is FALSE.
    const bool isExact = !call.Logical(3, call.Count() < 4);
    const ArrayPointer table = call.Table(1);
    if (call.failure)
        return {};
    if (index < 1)
        return CellError::Value;
    if (index > (IsVertical ? table->columns : table->rows))
        return CellError::Reference;
    const Line line{table, IsVertical, 0};
    const auto found =
        isExact ? FindEqual(call.context, line, wanted) : FindNotAbove(call.context, line, wanted);
    if (!found)
        return CellError::NotAvailable;
    const auto other = static_cast<std::int32_t>(index) - 1;
    return IsVertical ? table->At(*found, other) : table->At(other, *found);
}

/// LOOKUP: in a line of its own, or in the first line of the longer side of a table.
Value LookUp(Call& call)
{
    const Value wanted = Wanted(call);
    const ArrayPointer table = call.Table(1);
    const bool isColumn = table->rows >= table->columns;
    const auto found = FindNotAbove(call.context, {table, isColumn, 0}, wanted);
    if (!found)
        return CellError::NotAvailable;
    if (!call.Has(2)) {
        const Line last{table, isColumn, (isColumn ? table->columns : table->rows) - 1};
        return last.At(*found);
    }
    const ArrayPointer results = call.Table(2);
    const bool isResultColumn = results->rows >= results->columns;
    const Line line{results, isResultColumn, 0};
    return *found < line.Size() ? line.At(*found) : Value();
}

std::optional<Line> OnlyLine(const ArrayPointer& table)
{
    if (table->rows != 1 && table->columns != 1)
        return std::nullopt;
    return Line{table, table->columns == 1, 0};
}

Value Match(Call& call)
{
    const Value wanted = Wanted(call);
    const double type = call.Number(2, call.Count() > 2 ? 0 : 1);
    const auto line = OnlyLine(call.Table(1));
    if (!line)
        return CellError::NotAvailable;
    const auto found = type == 0  ? FindEqual(call.context, *line, wanted)
                       : type > 0 ? FindNotAbove(call.context, *line, wanted)
                                  : FindNotBelow(call.context, *line, wanted);
    return found ? Value(*found + 1.0) : Value(CellError::NotAvailable);
}

/// The nearest value on one side, in any order.
std::optional<std::int32_t> FindNearest(Call& call, const Line& line, const Value& wanted,
                                        bool isBelow)
{
    std::optional<std::int32_t> best;
    for (std::int32_t at = 0; at < line.Size() && call.context.Spend(1); ++at) {
        const Value& value = line.At(at);
        if (value.index() != wanted.index())
            continue;
        const int order = CompareValues(value, wanted);
        if (order == 0)
            return at;
        if ((order < 0) != isBelow)
            continue;
        const int better = best ? CompareValues(value, line.At(*best)) : 0;
        if (!best || (isBelow ? better > 0 : better < 0))
            best = at;
    }
    return best;
}

/// XMATCH, XLOOKUP: 0 exact, -1 or the next smaller one, 1 or the next larger one, 2 with
/// wildcards.
std::optional<std::int32_t> FindByMode(Call& call, const Line& line, const Value& wanted,
                                       double mode, double search)
{
    const auto isMatch = [&](std::int32_t at) {
        const auto* text = std::get_if<std::string>(&wanted);
        const auto* other = std::get_if<std::string>(&line.At(at));
        if (mode == 2 && text != nullptr)
            return other != nullptr && TextPattern(*text).Matches(*other);
        return line.At(at).index() == wanted.index() && CompareValues(line.At(at), wanted) == 0;
    };
    if (search == -1) {
        for (std::int32_t at = line.Size(); at-- > 0 && call.context.Spend(1);)
            if (isMatch(at))
                return at;
    }
    else if (const auto found = FindEqual(call.context, line, wanted, mode == 2)) {
        return found;
    }
    if (mode == -1 || mode == 1)
        return FindNearest(call, line, wanted, mode == -1);
    return std::nullopt;
}

Value XMatch(Call& call)
{
    const Value wanted = Wanted(call);
    const auto line = OnlyLine(call.Table(1));
    if (!line)
        return CellError::Value;
    const auto found = FindByMode(call, *line, wanted, call.Number(2), call.Number(3, 1));
    return found ? Value(*found + 1.0) : Value(CellError::NotAvailable);
}

Operand XLookUp(Call& call)
{
    const Value wanted = Wanted(call);
    const ArrayPointer results = call.Table(2);
    const auto line = OnlyLine(call.Table(1));
    if (!line || (line->isColumn ? results->rows : results->columns) != line->Size())
        return Value(CellError::Value);
    const auto found = FindByMode(call, *line, wanted, call.Number(4), call.Number(5, 1));
    if (!found)
        return call.Has(3) ? Operand(call.arguments[3]) : Operand(Value(CellError::NotAvailable));
    Array row(line->isColumn ? 1 : results->rows, line->isColumn ? results->columns : 1);
    if (!call.context.Spend(row.values.size()))
        return Value();
    for (std::int32_t r = 0; r < row.rows; ++r)
        for (std::int32_t c = 0; c < row.columns; ++c)
            row.At(r, c) = line->isColumn ? results->At(*found, c) : results->At(r, *found);
    if (row.values.size() == 1)
        return row.values.front();
    return MakeTable(std::move(row));
}

} // namespace

const FunctionList& LookupFunctions()
{
    static const FunctionList kFunctions = {
        {"VLOOKUP", "vrv|v", LookUpInTable<true>},
        {"HLOOKUP", "vrv|v", LookUpInTable<false>},
        {"LOOKUP", "va|a", LookUp},
        {"MATCH", "va|v", Match},
        {"XMATCH", "va|vv", XMatch},
        {"XLOOKUP", "vaa|rvv", XLookUp},
    };
    return kFunctions;
}

} // namespace orrery::formula
