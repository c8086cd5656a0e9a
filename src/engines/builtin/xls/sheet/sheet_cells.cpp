#include "engines/builtin/xls/sheet/sheet_cells.h"

#include "book/error.h"
#include "engines/builtin/common/cell_checks.h"
#include "engines/common/cell_address.h"
#include "util/error.h"

#include <algorithm>
#include <cassert>
#include <string>
#include <tuple>

namespace orrery::xls {

namespace {

bool IsInsideSheet(std::int32_t row, std::int32_t column)
{
    return row >= 1 && row <= kSheetRows && column >= 1 && column <= kSheetColumns;
}

bool IsBefore(const SheetCells::Written& left, const SheetCells::Written& right)
{
    return std::tie(left.row, left.column) < std::tie(right.row, right.column);
}

/// Calls `use` with the records of the text that contain the cells.
template <class Use>
void ForEachReplaced(const SheetIndex& index, const std::vector<SheetCells::Written>& cells,
                     Use use)
{
    const RowPlace* row = nullptr;
    for (const SheetCells::Written& cell : cells) {
        if (row == nullptr || row->number != cell.row)
            row = index.FindRow(cell.row);
        if (row == nullptr)
            continue;
        for (const CellPlace& place : index.CellsAround(*row, cell.column))
            if (place.Contains(cell.column))
                use(place);
    }
}

} // namespace

void SheetCells::CheckWritable(std::int32_t row, std::int32_t column, const Styles& formats) const
{
    if (!IsInsideSheet(row, column))
        engines::ThrowOutsideSheet(row, column);
    if (!text_->HasCells())
        throw util::Error(book::ErrorKind::DamagedWorkbook, {}, "a sheet has no place for cells");
    builtin::CheckChangeable(*text_, CellAddress{row, column}, formats);
}

bool SheetCells::TakesValue(std::int32_t row, std::int32_t column) const
{
    return !text_->IsHiddenByMerge({row, column});
}

void SheetCells::Set(std::int32_t row, std::int32_t column, Value value)
{
    assert(IsInsideSheet(row, column));
    if (TakesValue(row, column))
        written_.push_back(
            {static_cast<std::uint16_t>(row - 1), static_cast<std::uint16_t>(column - 1), value});
}

std::size_t SheetCells::StringReferences() const
{
    const auto cells = InOrder();
    std::size_t count = text_->Index().stringReferences;
    for (const Written& cell : cells)
        if (std::holds_alternative<SharedStringIndex>(cell.value))
            ++count;
    ForEachReplaced(text_->Index(), cells, [&](const CellPlace& place) {
        if (place.Has(CellPlace::SharedString))
            --count;
    });
    return count;
}

std::vector<SheetCells::Written> SheetCells::InOrder() const
{
    std::vector<Written> cells = written_;
    if (!std::is_sorted(cells.begin(), cells.end(), IsBefore))
        std::stable_sort(cells.begin(), cells.end(), IsBefore);
    // Of several values for a cell, keep the last.
    auto end = cells.begin();
    for (auto cell = cells.begin(); cell != cells.end(); ++cell)
        if (std::next(cell) == cells.end() || IsBefore(*cell, *std::next(cell)))
            *end++ = *cell;
    cells.erase(end, cells.end());
    return cells;
}

} // namespace orrery::xls
