#include "engines/builtin/xlsx/look/sheet/merge_reader.h"

#include "engines/builtin/xlsx/formula/cell_address.h"
#include "engines/builtin/xlsx/look/cells/limits.h"
#include "engines/builtin/xml/reading.h"

#include <algorithm>
#include <map>

namespace orrery::xlsx {
namespace {

/// The ranges that the rows from the current one on may meet, by their first column. Their columns
/// do not overlap.
class OpenRanges {
public:
    /// Adds a range that begins at the current row, unless it overlaps an open one.
    bool Add(const book::CellRange& range)
    {
        auto open = open_.upper_bound(range.first.column);
        if (open != open_.begin())
            --open;
        while (open != open_.end() && open->first <= range.last.column) {
            if (open->second.column < range.first.column) {
                ++open;
                continue;
            }
            if (open->second.row >= range.first.row)
                return false;
            open = open_.erase(open); // it ends above
        }
        open_.insert_or_assign(range.first.column, range.last);
        return true;
    }

private:
    std::map<std::int32_t, book::CellAddress> open_; // last cells
};

} // namespace

std::vector<book::CellRange> RemoveOverlaps(std::vector<book::CellRange>& ranges)
{
    std::stable_sort(ranges.begin(), ranges.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<book::CellRange> kept;
    std::vector<book::CellRange> removed;
    kept.reserve(ranges.size());
    OpenRanges open;
    for (const book::CellRange& range : ranges)
        (open.Add(range) ? kept : removed).push_back(range);
    ranges = std::move(kept);
    return removed;
}

void ReadMerges(xml::Scanner& scanner, SheetContext& context)
{
    std::vector<book::CellRange>& merges = context.look.merges;
    xml::ForEachChild(scanner, [&] {
        const std::string text = scanner.AttributeText("ref").value_or("");
        const auto range = ParseCellRange(text);
        if (!range || merges.size() >= kMaxMerges)
            context.leftOut.Add("merged cells", text,
                                range ? "there are too many" : "they lie outside the sheet");
        else if (!range->IsOneCell())
            merges.push_back(*range);
        scanner.SkipElement();
    });
    for (const book::CellRange& range : RemoveOverlaps(merges))
        context.leftOut.Add("merged cells", FormatCellRange(range), "they overlap others");
}

} // namespace orrery::xlsx
