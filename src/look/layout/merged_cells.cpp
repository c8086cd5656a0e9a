#include "look/layout/merged_cells.h"

#include <algorithm>

namespace orrery::look {

MergedCells::MergedCells(const std::vector<book::CellRange>& merges)
{
    for (const book::CellRange& merge : merges) {
        const bool isRange = merge.first.row >= 1 && merge.first.column >= 1 &&
                             merge.last.row >= merge.first.row &&
                             merge.last.column >= merge.first.column;
        if (isRange && !merge.IsOneCell())
            merges_.push_back(&merge);
    }
    std::stable_sort(merges_.begin(), merges_.end(), [](const auto* left, const auto* right) {
        return left->first < right->first;
    });
}

void MergedCells::GoTo(std::int32_t row)
{
    for (; next_ < merges_.size() && merges_[next_]->first.row <= row; ++next_) {
        const book::CellRange* merge = merges_[next_];
        if (merge->last.row < row)
            continue;
        open_[merge->first.column] = merge;
        ends_.emplace(merge->last.row, merge);
    }
    while (!ends_.empty() && ends_.begin()->first < row) {
        const auto found = open_.find(ends_.begin()->second->first.column);
        if (found != open_.end() && found->second->last.row < row)
            open_.erase(found);
        ends_.erase(ends_.begin());
    }
}

const book::CellRange* MergedCells::Find(std::int32_t column) const
{
    const auto after = open_.upper_bound(column);
    if (after == open_.begin())
        return nullptr;
    const book::CellRange* merge = std::prev(after)->second;
    return merge->last.column >= column ? merge : nullptr;
}

const book::CellRange* MergedCells::FindRight(std::int32_t column) const
{
    const auto after = open_.upper_bound(column);
    return after == open_.end() ? nullptr : after->second;
}

const book::CellRange* MergedCells::FindLeft(std::int32_t column) const
{
    const auto at = open_.lower_bound(column);
    return at == open_.begin() ? nullptr : std::prev(at)->second;
}

} // namespace orrery::look
