#include "look/layout/neighbors.h"

#include "look/layout/merged_cells.h"

#include <algorithm>

namespace orrery::look {
namespace {

constexpr std::int32_t kSheetColumns = 16'384;
/// No text that people read is wider.
constexpr std::int32_t kMostReached = 100; // columns

/// The items of one row, [begin:end).
struct RowItems {
    std::size_t begin = 0;
    std::size_t end = 0;
};

void FindInRow(const std::vector<CellItem>& items, RowItems row, const book::CellRange& range,
               const MergedCells& merged, std::vector<FreeColumns>& free)
{
    std::int32_t first = range.first.column; // behind the last cell with content
    for (std::size_t i = row.begin; i < row.end; ++i) {
        const book::CellRange& own = items[i].range;
        const book::CellRange* left = merged.FindLeft(own.first.column);
        free[i].first = std::max(first, left != nullptr ? left->last.column + 1 : first);
        if (!items[i].isEmpty || !own.IsOneCell())
            first = std::max(first, own.last.column + 1);
    }
    std::int32_t last = range.last.column;
    for (std::size_t i = row.end; i-- > row.begin;) {
        const book::CellRange& own = items[i].range;
        const book::CellRange* right = merged.FindRight(own.first.column);
        free[i].last = std::min(last, right != nullptr ? right->first.column - 1 : last);
        if (!items[i].isEmpty || !own.IsOneCell())
            last = std::min(last, own.first.column - 1);
    }
}

bool IsHidden(const book::SheetLook& sheet, std::int32_t row)
{
    const book::RowLook* const look = sheet.FindRow(row);
    return look != nullptr ? look->isHidden : sheet.areRowsHidden;
}

/// The share of what is too wide that lies at the side of the next columns.
double ShareAtEnd(const CellDisplay& display, bool isMirrored)
{
    switch (DrawnAlignment(display)) {
    case book::HorizontalAlignment::Center:
        return 0.5;
    case book::HorizontalAlignment::CenterContinuous:
        return 0;
    case book::HorizontalAlignment::Right:
        return isMirrored ? 1 : 0;
    default:
        return isMirrored ? 0 : 1;
    }
}

} // namespace

std::vector<FreeColumns> FindFreeColumns(const book::SheetLook& sheet, const book::CellRange& range,
                                         const std::vector<CellItem>& items)
{
    std::vector<FreeColumns> free(items.size());
    MergedCells merged(sheet.merges);
    for (std::size_t begin = 0; begin < items.size();) {
        const std::int32_t row = items[begin].range.first.row;
        std::size_t end = begin;
        while (end < items.size() && items[end].range.first.row == row)
            ++end;
        merged.GoTo(row);
        FindInRow(items, {begin, end}, range, merged, free);
        begin = end;
    }
    for (std::size_t i = 0; i < items.size(); ++i) {
        const book::CellRange& own = items[i].range;
        const bool stays = !own.IsOneCell() || !MayOverflow(items[i].display);
        free[i].first = stays ? own.first.column : std::min(free[i].first, own.first.column);
        free[i].last = stays ? own.last.column : std::max(free[i].last, own.last.column);
    }
    return free;
}

std::int32_t LastReachedColumn(const book::SheetLook& sheet, const book::CellRange& range,
                               const std::vector<CellItem>& items, const Axis& columns,
                               const TextRoom& room)
{
    const auto free = FindFreeColumns(sheet, range, items);
    double reach = columns.Position(range.last.column + 1);
    for (std::size_t i = 0; i < items.size(); ++i) {
        const CellItem& item = items[i];
        const std::int32_t column = item.range.last.column;
        const double own = columns.Size(column);
        if (free[i].last != range.last.column || !item.range.IsOneCell() || own <= 0 ||
            !item.display.showsValue || !MayOverflow(item.display) ||
            IsHidden(sheet, item.range.first.row))
            continue;
        const double share = ShareAtEnd(item.display, sheet.view.isRightToLeft);
        const double tooWide = share > 0 ? OneLineWidth(item.display, room) - own : 0;
        reach = std::max(reach, columns.Position(column + 1) + tooWide * share);
    }
    std::int32_t last = range.last.column;
    const std::int32_t end = std::min(last + kMostReached, kSheetColumns);
    for (std::int32_t column = last + 1; column <= end && columns.Position(column) < reach;
         ++column)
        last = columns.Size(column) > 0 ? column : last;
    return last;
}

std::int32_t LastCenteredColumn(const book::SheetLook& sheet, const CellItem& item,
                                const FreeColumns& free)
{
    constexpr std::int32_t kMost = 256;
    constexpr auto kCentered = book::HorizontalAlignment::CenterContinuous;
    std::int32_t last = item.range.last.column;
    if (item.display.horizontal != kCentered)
        return last;
    const std::int32_t end = std::min(free.last, last + kMost);
    while (last < end &&
           sheet.Style({item.range.first.row, last + 1}).alignment.horizontal == kCentered)
        ++last;
    return last;
}

} // namespace orrery::look
