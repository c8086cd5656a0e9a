#include "look/evaluate/sheet_cells.h"

#include <algorithm>

namespace orrery::formula {
namespace {

/// More arrays than that are looked through too slowly; the rest keeps its stored results.
constexpr std::size_t kMostArrays = 4'096;

} // namespace

SheetCells::SheetCells(const book::SheetLook& look) : look_(&look)
{
    const auto& cells = look.cells;
    for (std::size_t at = 0; at < cells.size(); ++at) {
        const book::CellAddress address = cells[at].address;
        if (rows_.empty() || rows_.back().first != address.row)
            rows_.emplace_back(address.row, static_cast<std::uint32_t>(at));
        used_.last.row = std::max(used_.last.row, address.row);
        used_.last.column = std::max(used_.last.column, address.column);
        const std::int32_t formula = cells[at].formula;
        if (formula < 0 || static_cast<std::size_t>(formula) >= look.formulas.size())
            continue;
        const auto& array = look.formulas[static_cast<std::size_t>(formula)].array;
        if (array && !array->IsOneCell() && array->first == address && arrays_.size() < kMostArrays)
            arrays_.push_back(
                {*array, static_cast<std::uint32_t>(at),
                 std::max(arrays_.empty() ? 0 : arrays_.back().lowestRow, array->last.row)});
    }
}

std::optional<std::uint32_t> SheetCells::Find(book::CellAddress cell) const
{
    const book::Cell* found = look_->FindCell(cell);
    if (found == nullptr)
        return std::nullopt;
    return static_cast<std::uint32_t>(found - look_->cells.data());
}

std::optional<std::uint32_t> SheetCells::ArrayOwner(book::CellAddress cell) const
{
    auto at = std::upper_bound(
        arrays_.begin(), arrays_.end(), cell.row,
        [](std::int32_t row, const FilledRange& each) { return row < each.range.first.row; });
    while (at != arrays_.begin() && (--at)->lowestRow >= cell.row) {
        if (at->range.Contains(cell) && at->range.first != cell)
            return at->owner;
    }
    return std::nullopt;
}

std::size_t SheetCells::FirstRow(std::int32_t row) const
{
    const auto found = std::lower_bound(
        rows_.begin(), rows_.end(), row,
        [](const auto& entry, std::int32_t wanted) { return entry.first < wanted; });
    return static_cast<std::size_t>(found - rows_.begin());
}

std::uint32_t SheetCells::EndOfRow(std::size_t row) const
{
    return row + 1 < rows_.size() ? rows_[row + 1].second
                                  : static_cast<std::uint32_t>(look_->cells.size());
}

std::uint32_t SheetCells::FirstInRow(std::size_t row, std::int32_t column) const
{
    const auto begin = look_->cells.begin() + rows_[row].second;
    const auto end = look_->cells.begin() + EndOfRow(row);
    const auto found =
        std::lower_bound(begin, end, column, [](const book::Cell& cell, std::int32_t wanted) {
            return cell.address.column < wanted;
        });
    return static_cast<std::uint32_t>(found - look_->cells.begin());
}

} // namespace orrery::formula
