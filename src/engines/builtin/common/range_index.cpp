#include "engines/builtin/common/range_index.h"

#include <algorithm>

namespace orrery::builtin {

RangeIndex::RangeIndex(std::vector<CellRange> ranges) : ranges_(std::move(ranges))
{
    std::sort(ranges_.begin(), ranges_.end(), [](const CellRange& left, const CellRange& right) {
        return left.first < right.first;
    });
    lowest_.reserve(ranges_.size());
    for (const CellRange& range : ranges_)
        lowest_.push_back(lowest_.empty() ? range.last.row
                                          : std::max(lowest_.back(), range.last.row));
}

const CellRange* RangeIndex::Find(CellAddress cell) const
{
    const auto behind = std::upper_bound(
        ranges_.begin(), ranges_.end(), cell,
        [](CellAddress wanted, const CellRange& range) { return wanted < range.first; });
    for (auto at = static_cast<std::size_t>(behind - ranges_.begin()); at-- > 0;) {
        if (lowest_[at] < cell.row)
            return nullptr;
        if (ranges_[at].Contains(cell))
            return &ranges_[at];
    }
    return nullptr;
}

} // namespace orrery::builtin
