#include "look/evaluate/values/table_shape.h"

#include <algorithm>

namespace orrery::formula {
namespace {

/// The row or column that holds what stands at a place.
std::int32_t Stored(std::int32_t at, std::int32_t size, bool isCut)
{
    if (size == 1)
        return 0;
    return isCut ? std::min(at, size - 1) : at;
}

} // namespace

const Value& ElementOf(const Array& table, std::int32_t row, std::int32_t column)
{
    static const Value kMissing = CellError::NotAvailable;
    const std::int32_t tableRow = Stored(row, table.rows, table.hasMoreRows);
    const std::int32_t tableColumn = Stored(column, table.columns, table.hasMoreColumns);
    if (tableRow < 0 || tableColumn < 0 || tableRow >= table.rows || tableColumn >= table.columns)
        return kMissing;
    return table.At(tableRow, tableColumn);
}

bool AreOfOneSize(const Array& one, const Array& other)
{
    const auto rows = [](const Array& table) {
        return table.hasMoreRows ? kSheetRows : table.rows;
    };
    const auto columns = [](const Array& table) {
        return table.hasMoreColumns ? kSheetColumns : table.columns;
    };
    return rows(one) == rows(other) && columns(one) == columns(other);
}

void JoinedShape::Side::Add(std::int32_t size, bool isCut)
{
    std::int32_t& largest = isCut ? cut_ : whole_;
    largest = std::max(largest, size);
}

/// Behind the last row of a table that ends before the sheet does stands another value than in it.
std::int32_t JoinedShape::Side::Size() const
{
    if (cut_ == 0 || whole_ == 1)
        return std::max(whole_, cut_);
    return std::min(std::max(whole_ + 1, cut_), limit_);
}

std::int32_t JoinedShape::Side::PlacesOf(std::int32_t at) const
{
    return IsCut() && at == Size() - 1 ? limit_ - at : 1;
}

void JoinedShape::Add(const Array& table)
{
    rows_.Add(table.rows, table.hasMoreRows);
    columns_.Add(table.columns, table.hasMoreColumns);
}

double JoinedShape::PlacesOf(std::int32_t row, std::int32_t column) const
{
    return static_cast<double>(rows_.PlacesOf(row)) * columns_.PlacesOf(column);
}

Array JoinedShape::MakeArray() const
{
    Array array(Rows(), Columns());
    array.hasMoreRows = rows_.IsCut();
    array.hasMoreColumns = columns_.IsCut();
    return array;
}

} // namespace orrery::formula
