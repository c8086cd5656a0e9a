#include "look/evaluate/functions/lookup/lookup.h"

#include "util/text.h"

#include <cmath>
#include <optional>
#include <utility>

namespace orrery::formula {
namespace {

struct Slice {
    std::int32_t firstRow = 0; ///< from 0
    std::int32_t rows = 1;
    std::int32_t firstColumn = 0;
    std::int32_t columns = 1;
};

/// The part of a table that INDEX wants: 0 is all rows or columns.
std::optional<Slice> SliceOf(Call& call, std::int32_t rows, std::int32_t columns)
{
    double row = std::trunc(call.Number(1));
    double column = std::trunc(call.Number(2));
    if (call.Count() < 3 && rows == 1) // of a line it is the place in the line
        std::swap(row, column);
    if (call.Count() < 3 && rows == 1 && columns > 0)
        row = row == 0 ? 1 : row;
    if (!call.Require(row >= 0 && column >= 0, CellError::Value) ||
        !call.Require(row <= rows && column <= columns, CellError::Reference))
        return std::nullopt;
    Slice slice;
    slice.firstRow = row == 0 ? 0 : static_cast<std::int32_t>(row) - 1;
    slice.rows = row == 0 ? rows : 1;
    slice.firstColumn = column == 0 ? 0 : static_cast<std::int32_t>(column) - 1;
    slice.columns = column == 0 ? columns : 1;
    return slice;
}

Operand IndexOfReference(Call& call, const Reference& reference)
{
    const double number = call.Whole(3, 1);
    if (!call.Require(number >= 1 && number <= static_cast<double>(reference.size()),
                      CellError::Reference))
        return Value();
    Area area = reference[static_cast<std::size_t>(number) - 1];
    const auto slice = SliceOf(call, area.Rows(), area.Columns());
    if (!slice)
        return Value();
    area.range.first.row += slice->firstRow;
    area.range.last.row = area.range.first.row + slice->rows - 1;
    area.range.first.column += slice->firstColumn;
    area.range.last.column = area.range.first.column + slice->columns - 1;
    return Reference{area};
}

Operand Index(Call& call)
{
    if (const Reference* reference = call.AsReference(0))
        return IndexOfReference(call, *reference);
    const ArrayPointer table = call.Table(0);
    const auto slice = SliceOf(call, table->rows, table->columns);
    if (!slice)
        return Value();
    if (slice->rows == 1 && slice->columns == 1)
        return table->At(slice->firstRow, slice->firstColumn);
    Array part(slice->rows, slice->columns);
    if (!call.context.Spend(part.values.size()))
        return Value();
    for (std::int32_t row = 0; row < part.rows; ++row)
        for (std::int32_t column = 0; column < part.columns; ++column)
            part.At(row, column) = table->At(slice->firstRow + row, slice->firstColumn + column);
    return MakeTable(std::move(part));
}

/// Moves and sizes one side of an area; a negative size reaches back.
bool MoveSide(Call& call, std::int32_t& first, std::int32_t& last, double distance, double size,
              std::int32_t limit)
{
    const double begin = first + distance + (size < 0 ? size + 1 : 0);
    const double end = begin + std::fabs(size) - 1;
    if (!call.Require(size != 0 && begin >= 1 && end <= limit, CellError::Reference))
        return false;
    first = static_cast<std::int32_t>(begin);
    last = static_cast<std::int32_t>(end);
    return true;
}

Operand Offset(Call& call)
{
    const Reference* reference = call.AsReference(0);
    if (!call.Require(reference != nullptr && reference->size() == 1, CellError::Value))
        return Value();
    Area area = reference->front();
    const double rows = std::trunc(call.Number(1));
    const double columns = std::trunc(call.Number(2));
    const double height = std::trunc(call.Number(3, area.Rows()));
    const double width = std::trunc(call.Number(4, area.Columns()));
    book::CellRange& range = area.range;
    if (call.failure ||
        !MoveSide(call, range.first.row, range.last.row, rows, height, kSheetRows) ||
        !MoveSide(call, range.first.column, range.last.column, columns, width, kSheetColumns))
        return Value();
    return Reference{area};
}

Operand Indirect(Call& call)
{
    const std::string text = call.Text(0);
    const bool isA1 = call.Logical(1, true);
    if (call.failure)
        return Value();
    auto reference = call.context.ReadReference(text, isA1);
    if (!reference)
        return Value(CellError::Reference);
    return std::move(*reference);
}

std::string ColumnLetters(std::int32_t column)
{
    const std::string cell = book::FormatCellAddress({1, column});
    return cell.substr(0, cell.size() - 1);
}

/// 1 both absolute, 2 the row, 3 the column, 4 none; in A1 or in R1C1 notation.
Value Address(Call& call)
{
    const double row = call.Whole(0);
    const double column = call.Whole(1);
    const double kind = call.Whole(2, 1);
    if (kind < 1 || kind > 4)
        return CellError::Value;
    const bool hasFixedRow = kind == 1 || kind == 2;
    const bool hasFixedColumn = kind == 1 || kind == 3;
    std::string sheet = call.Text(4);
    if (call.Has(4)) {
        const bool isPlain =
            sheet.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_."
                                    "0123456789[]") == std::string::npos &&
            (sheet.empty() || sheet.front() < '0' || sheet.front() > '9');
        sheet = isPlain ? sheet + "!" : "'" + sheet + "'!";
    }
    if (call.Logical(3, true)) {
        if (row < 1 || row > kSheetRows || column < 1 || column > kSheetColumns)
            return CellError::Value;
        return sheet + (hasFixedColumn ? "$" : "") +
               ColumnLetters(static_cast<std::int32_t>(column)) + (hasFixedRow ? "$" : "") +
               std::to_string(static_cast<std::int32_t>(row));
    }
    if (std::fabs(row) > kSheetRows || std::fabs(column) > kSheetColumns)
        return CellError::Value;
    const auto part = [](char letter, double number, bool isFixed) {
        const std::string digits = std::to_string(static_cast<std::int32_t>(number));
        return letter + (isFixed ? digits : number == 0 ? "" : "[" + digits + "]");
    };
    return sheet + part('R', row, hasFixedRow) + part('C', column, hasFixedColumn);
}

/// ROW, COLUMN: a number, or a table of those of all rows or columns.
template <bool IsRow> Operand PlaceOf(Call& call)
{
    const book::CellAddress own = call.context.OwnCell();
    if (!call.Has(0))
        return Value(static_cast<double>(IsRow ? own.row : own.column));
    const Reference* reference = call.AsReference(0);
    if (reference == nullptr)
        return Value(CellError::Value);
    const Area& area = reference->front();
    const std::int32_t first = IsRow ? area.range.first.row : area.range.first.column;
    const std::int32_t count = IsRow ? area.Rows() : area.Columns();
    if (count == 1)
        return Value(static_cast<double>(first));
    if (count > kLargestArray || !call.context.Spend(static_cast<std::size_t>(count)))
        return Value();
    Array table(IsRow ? count : 1, IsRow ? 1 : count);
    for (std::int32_t at = 0; at < count; ++at)
        table.values[static_cast<std::size_t>(at)] = static_cast<double>(first + at);
    return MakeTable(std::move(table));
}

template <bool IsRow> Value SizeOf(Call& call)
{
    if (const Reference* reference = call.AsReference(0))
        return static_cast<double>(IsRow ? reference->front().Rows()
                                         : reference->front().Columns());
    const ArrayPointer table = call.Table(0);
    if (table->values.size() == 1 && IsError(table->values.front()))
        return table->values.front();
    return static_cast<double>(IsRow ? table->rows : table->columns);
}

Value Areas(Call& call)
{
    const Reference* reference = call.AsReference(0);
    return reference == nullptr ? Value(CellError::Value)
                                : Value(static_cast<double>(reference->size()));
}

} // namespace

const FunctionList& ReferenceFunctions()
{
    static const FunctionList kFunctions = {
        {"INDEX", "av|vv", Index},     {"OFFSET", "rvv|vv", Offset},
        {"INDIRECT", "v|v", Indirect}, {"ADDRESS", "vv|vvv", Address},
        {"ROW", "|r", PlaceOf<true>},  {"COLUMN", "|r", PlaceOf<false>},
        {"ROWS", "r", SizeOf<true>},   {"COLUMNS", "r", SizeOf<false>},
        {"AREAS", "r", Areas},
    };
    return kFunctions;
}

} // namespace orrery::formula
