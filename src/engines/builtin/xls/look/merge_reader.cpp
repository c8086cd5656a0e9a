#include "engines/builtin/xls/look/merge_reader.h"

#include "engines/builtin/xls/look/records/left_out.h"
#include "engines/builtin/xls/look/records/ranges.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace orrery::xls {
namespace {

constexpr std::size_t kMostMerges = 1'000'000;
constexpr std::size_t kSheetColumns = 256;

/// The last row of the lowest merge in each column, from 1.
using Bottoms = std::array<std::int32_t, kSheetColumns + 1>;

bool IsFree(const Bottoms& bottoms, const book::CellRange& merge)
{
    for (auto column = merge.first.column; column <= merge.last.column; ++column) {
        if (bottoms[static_cast<std::size_t>(column)] >= merge.first.row)
            return false;
    }
    return true;
}

} // namespace

void MergeReader::Read(std::string_view data)
{
    ByteCursor cursor(data);
    for (std::size_t count = cursor.U16(); count > 0 && merges_.size() < kMostMerges; --count) {
        const auto range = ReadRange8(cursor);
        if (range && !range->IsOneCell())
            merges_.push_back(*range);
    }
}

void MergeReader::Finish()
{
    std::stable_sort(merges_.begin(), merges_.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    Bottoms bottoms{};
    for (const auto& merge : merges_) {
        if (!IsFree(bottoms, merge)) {
            LeaveOut(look_, "merged cells", book::FormatCellRange(merge), "they overlap others");
            continue;
        }
        for (auto column = merge.first.column; column <= merge.last.column; ++column)
            bottoms[static_cast<std::size_t>(column)] = merge.last.row;
        look_.merges.push_back(merge);
    }
}

} // namespace orrery::xls
