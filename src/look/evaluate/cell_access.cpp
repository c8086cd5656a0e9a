// What functions see of the workbook.

#include "look/evaluate/computation.h"
#include "look/evaluate/formula/parser.h"
#include "look/number_format/number_format.h"

#include <algorithm>

namespace orrery::formula {

bool Computation::Spend(std::size_t steps)
{
    steps_ += steps;
    if (steps_ > engine_.Limits().ofFormula || !engine_.Spend(steps))
        hasGivenUp_ = true;
    return !HasFailed();
}

bool Computation::SpendKept(const Value& value)
{
    constexpr std::size_t kBytesOfStep = 4;
    const auto* const text = std::get_if<std::string>(&value);
    return text == nullptr || Spend(text->size() / kBytesOfStep);
}

Value Computation::ValueAt(std::size_t sheet, book::CellAddress cell)
{
    Spend(engine_.Sheet(sheet).StepsOfArrays());
    auto value = HasFailed() ? std::nullopt : engine_.Read({sheet, cell});
    if (!value)
        hasGivenUp_ = true;
    return value ? std::move(*value) : Value();
}

void Computation::ForEachCell(
    const Area& area, const std::function<bool(std::size_t, book::CellAddress, const Value&)>& take)
{
    for (std::size_t sheet = area.firstSheet; sheet <= area.lastSheet && !HasFailed(); ++sheet) {
        const SheetCells& cells = engine_.Sheet(sheet);
        cells.ForEach(area.range, [&](std::uint32_t index) {
            if (!Spend(1 + cells.StepsOfArrays()))
                return false;
            const auto value = engine_.ReadFound(sheet, index);
            hasGivenUp_ = hasGivenUp_ || !value;
            const auto* const text = value ? std::get_if<std::string>(&*value) : nullptr;
            if (hasGivenUp_ || (text != nullptr && !Spend(StepsOfText(text->size()))))
                return false;
            return IsBlank(*value) || take(sheet, cells.Look().cells[index].address, *value);
        });
    }
}

/// Of whole columns the rows up to the one behind the sheet's last, of whole rows likewise.
ArrayPointer Computation::ValuesOf(const Area& given)
{
    Area area = given;
    const SheetCells& cells = engine_.Sheet(area.firstSheet);
    if (area.range.first.row == 1 && area.range.last.row == kSheetRows)
        area.range.last.row = std::min(std::max(cells.LastRow(), 1) + 1, kSheetRows);
    if (area.range.first.column == 1 && area.range.last.column == kSheetColumns)
        area.range.last.column = std::min(std::max(cells.LastColumn(), 1) + 1, kSheetColumns);
    if (auto kept = engine_.Cache().FindValues(given))
        return kept;
    const std::int64_t size = std::int64_t{area.Rows()} * area.Columns();
    if (area.firstSheet != area.lastSheet || size > kLargestArray ||
        !Spend(static_cast<std::size_t>(size))) {
        hasGivenUp_ = hasGivenUp_ || size > kLargestArray;
        auto error = std::make_shared<Array>(1, 1);
        error->values.front() = CellError::Value;
        return error;
    }
    auto table = std::make_shared<Array>(area.Rows(), area.Columns());
    table->hasMoreRows = area.range.last.row != given.range.last.row;
    table->hasMoreColumns = area.range.last.column != given.range.last.column;
    ForEachCell(area, [&](std::size_t, book::CellAddress cell, const Value& value) {
        table->At(cell.row - area.range.first.row, cell.column - area.range.first.column) = value;
        return true;
    });
    if (!HasFailed())
        engine_.Cache().KeepValues(given, table);
    return table;
}

const AreaSummary& Computation::Summarize(const Area& area)
{
    if (const AreaSummary* kept = engine_.Cache().FindSummary(area))
        return *kept;
    AreaSummary summary;
    ForEachCell(area, [&](std::size_t, book::CellAddress, const Value& value) {
        ++summary.values;
        if (const auto* error = std::get_if<CellError>(&value); error != nullptr && !summary.error)
            summary.error = *error;
        const auto* number = std::get_if<double>(&value);
        if (number == nullptr)
            return true;
        const bool isFirst = summary.numbers++ == 0;
        summary.sum += *number;
        summary.minimum = isFirst ? *number : std::min(summary.minimum, *number);
        summary.maximum = isFirst ? *number : std::max(summary.maximum, *number);
        return true;
    });
    if (!HasFailed())
        return engine_.Cache().KeepSummary(area, summary);
    summary_ = summary;
    return summary_;
}

std::size_t Computation::CountOf(const Area& area, const Value& value)
{
    const KeyMap<std::size_t>* counts = engine_.Cache().FindCounts(area);
    if (counts == nullptr) {
        KeyMap<std::size_t> fresh;
        ForEachCell(area, [&](std::size_t, book::CellAddress, const Value& found) {
            if (!IsError(found))
                ++fresh[found];
            return true;
        });
        if (HasFailed())
            return 0;
        counts = &engine_.Cache().KeepCounts(area, std::move(fresh));
    }
    const auto found = counts->find(value);
    return found == counts->end() ? 0 : found->second;
}

std::optional<std::int32_t> Computation::IndexOf(const ArrayPointer& array, bool isColumn,
                                                 std::int32_t at, const Value& value)
{
    constexpr std::int32_t kShort = 32;
    const std::int32_t size = isColumn ? array->rows : array->columns;
    if (size > kShort) {
        const auto& places = engine_.Cache().Places(array, isColumn, at);
        const auto found = places.find(value);
        return found == places.end() ? std::nullopt : std::optional(found->second);
    }
    const SameKey isSame;
    for (std::int32_t index = 0; index < size && Spend(1); ++index)
        if (isSame(isColumn ? array->At(index, at) : array->At(at, index), value))
            return index;
    return std::nullopt;
}

std::optional<Reference> Computation::ReadReference(std::string_view text, bool isA1)
{
    if (!isA1) {
        const auto area = engine_.Names().ReadRowColumn(text, place_);
        return area ? std::optional(Reference{*area}) : std::nullopt;
    }
    const auto formula = ParseFormula(text);
    if (!formula)
        return std::nullopt;
    const NodeKind kind = formula->nodes[formula->root].kind;
    if (kind != NodeKind::Area && kind != NodeKind::Name && kind != NodeKind::Table &&
        kind != NodeKind::Binary)
        return std::nullopt;
    // What the text says is meant as it stands.
    const Place before = std::exchange(place_, {place_.sheet, place_.cell, place_.cell});
    Operand operand = Evaluate(*formula, formula->nodes[formula->root], Mode::Table);
    place_ = before;
    auto* reference = std::get_if<Reference>(&operand);
    return reference != nullptr ? std::optional(std::move(*reference)) : std::nullopt;
}

std::string Computation::SheetName(std::size_t sheet)
{
    const auto& sheets = engine_.Workbook().sheets;
    return sheet < sheets.size() ? sheets[sheet].name : "";
}

std::optional<std::string> Computation::FormulaAt(std::size_t sheet, book::CellAddress cell)
{
    const std::string* text = engine_.FormulaText({sheet, cell});
    return text != nullptr ? std::optional(*text) : std::nullopt;
}

bool Computation::IsRowHidden(std::size_t sheet, std::int32_t row)
{
    const book::SheetLook& look = engine_.Sheet(sheet).Look();
    const book::RowLook* entry = look.FindRow(row);
    return entry != nullptr ? entry->isHidden : look.areRowsHidden;
}

Converted<std::string> Computation::Format(const Value& value, std::string_view code)
{
    const look::NumberFormat format(code);
    Value shown = value;
    if (const auto* text = std::get_if<std::string>(&value)) // the text of a number is one
        if (const auto number = NumberOfText(*text, Rules()))
            shown = *number;
    if (IsBlank(shown))
        shown = 0.0;
    auto formatted = format.Format(shown, Rules().system);
    if (formatted.isTooWide) // a date outside of the calendar
        return {"", CellError::Value};
    return {std::move(formatted.text), std::nullopt};
}

} // namespace orrery::formula
