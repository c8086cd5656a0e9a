#include "book/look/sheet_look.h"

#include <algorithm>

namespace orrery::book {

const Cell* SheetLook::FindCell(CellAddress address) const
{
    const auto found = std::lower_bound(
        cells.begin(), cells.end(), address,
        [](const Cell& cell, const CellAddress& wanted) { return cell.address < wanted; });
    return found != cells.end() && found->address == address ? &*found : nullptr;
}

const RowLook* SheetLook::FindRow(std::int32_t row) const
{
    const auto found = std::lower_bound(
        rows.begin(), rows.end(), row,
        [](const RowLook& look, std::int32_t wanted) { return look.row < wanted; });
    return found != rows.end() && found->row == row ? &*found : nullptr;
}

const ColumnLook* SheetLook::FindColumn(std::int32_t column) const
{
    const auto found = std::lower_bound(
        columns.begin(), columns.end(), column,
        [](const ColumnLook& look, std::int32_t wanted) { return look.last < wanted; });
    return found != columns.end() && found->first <= column ? &*found : nullptr;
}

std::uint32_t SheetLook::StyleAt(CellAddress address) const
{
    if (const Cell* cell = FindCell(address))
        return cell->style;
    const RowLook* row = FindRow(address.row);
    if (row != nullptr && row->style)
        return *row->style;
    const ColumnLook* column = FindColumn(address.column);
    return column != nullptr ? column->style : 0;
}

} // namespace orrery::book
