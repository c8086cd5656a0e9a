#pragma once

#include "book/look/cell.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <variant>
#include <vector>

namespace orrery::formula {

/// What a cell or an expression has: nothing, a number, a text, a logical value, an error.
using Value = book::CellContent;
using book::CellError;

inline bool IsBlank(const Value& value)
{
    return std::holds_alternative<std::monostate>(value);
}
inline bool IsError(const Value& value)
{
    return std::holds_alternative<CellError>(value);
}

/// A table of values, row by row. Rows and columns are counted from 0. Of whole columns it has the
/// used rows and one that stands for all others of the sheet, of whole rows likewise.
struct Array {
    std::int32_t rows = 1;
    std::int32_t columns = 1;
    bool hasMoreRows = false; ///< the last row goes on to the end of the sheet
    bool hasMoreColumns = false;
    std::vector<Value> values;

    Array() = default;
    Array(std::int32_t rowCount, std::int32_t columnCount)
        : rows(rowCount), columns(columnCount),
          values(static_cast<std::size_t>(rowCount) * static_cast<std::size_t>(columnCount))
    {
    }
    Value& At(std::int32_t row, std::int32_t column) { return values[Index(row, column)]; }
    const Value& At(std::int32_t row, std::int32_t column) const
    {
        return values[Index(row, column)];
    }
    friend bool operator==(const Array&, const Array&) = default;

private:
    std::size_t Index(std::int32_t row, std::int32_t column) const
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
               static_cast<std::size_t>(column);
    }
};
using ArrayPointer = std::shared_ptr<const Array>;

/// Cells of one sheet, or the same cells of neighbouring ones.
struct Area {
    std::size_t firstSheet = 0;
    std::size_t lastSheet = 0;
    book::CellRange range;

    std::int32_t Rows() const { return range.last.row - range.first.row + 1; }
    std::int32_t Columns() const { return range.last.column - range.first.column + 1; }
    bool IsOneCell() const { return firstSheet == lastSheet && range.IsOneCell(); }
    friend bool operator==(const Area&, const Area&) = default;
};
/// A union of areas; never empty.
using Reference = std::vector<Area>;

/// An argument that is left out: "IF(A1,,2)".
struct Missing {
    friend bool operator==(const Missing&, const Missing&) = default;
};
/// What an expression gives.
using Operand = std::variant<Missing, Value, ArrayPointer, Reference>;

/// The largest sheet of the two formats.
inline constexpr std::int32_t kSheetRows = 1'048'576;
inline constexpr std::int32_t kSheetColumns = 16'384;

} // namespace orrery::formula
