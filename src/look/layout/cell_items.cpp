#include "look/layout/cell_items.h"

#include "look/layout/merged_cells.h"

#include <algorithm>
#include <set>
#include <utility>

namespace orrery::look {
namespace {

using book::CellAddress;
using book::CellRange;

bool HasContent(const book::Cell& cell)
{
    return cell.formula >= 0 || !std::holds_alternative<std::monostate>(cell.content);
}

/// The addresses of cells that are not in the file, or empty there, and might show something: at
/// most so many.
class Blanks {
public:
    Blanks(const book::SheetLook& sheet, const CellRange& range, std::size_t most)
        : sheet_(sheet), range_(range), most_(most)
    {
        for (const auto& column : sheet.columns) {
            if (IsVisibleStyle(column.style))
                Add({{range.first.row, column.first}, {range.last.row, column.last}});
        }
        for (const auto& row : sheet.rows) {
            if (row.style && IsVisibleStyle(*row.style))
                Add({{row.row, range.first.column}, {row.row, range.last.column}});
        }
        for (const auto& condition : sheet.conditions) {
            for (const CellRange& each : condition.ranges)
                Add(each);
        }
        for (const auto& table : sheet.tables)
            Add(table.range);
        if (sheet.view.showsGridLines)
            AddMerges();
        Shrink();
        isCut_ = isCut_ || addresses_.size() > most_;
        addresses_.resize(std::min(addresses_.size(), most_));
    }

    const std::vector<CellAddress>& Addresses() const { return addresses_; }
    bool IsCut() const { return isCut_; }

private:
    bool IsVisibleStyle(std::uint32_t style) const
    {
        return style < sheet_.styles.size() && IsVisible(sheet_.styles[style]);
    }

    /// Merged cells hide the grid, also where they show nothing.
    void AddMerges()
    {
        for (const CellRange& merge : sheet_.merges) {
            if (!merge.IsOneCell() && range_.Contains(merge.first))
                Add({merge.first, merge.first});
        }
    }

    void Add(const CellRange& area)
    {
        const CellAddress first{std::max(area.first.row, range_.first.row),
                                std::max(area.first.column, range_.first.column)};
        const CellAddress last{std::min(area.last.row, range_.last.row),
                               std::min(area.last.column, range_.last.column)};
        if (!areas_.emplace(first, last).second)
            return; // many conditions are of the same cells
        for (std::int32_t row = first.row; row <= last.row; ++row) {
            for (std::int32_t column = first.column; column <= last.column; ++column) {
                if (!HasRoom())
                    return;
                addresses_.push_back({row, column});
            }
        }
    }

    /// Whether another address has room, when those that are there twice are gone.
    bool HasRoom()
    {
        constexpr std::size_t kMostTurns = 40;
        if (addresses_.size() >= 2 * most_ && !isCut_) {
            Shrink();
            isCut_ = addresses_.size() >= most_ || ++turns_ > kMostTurns;
        }
        return !isCut_;
    }

    void Shrink()
    {
        std::sort(addresses_.begin(), addresses_.end());
        addresses_.erase(std::unique(addresses_.begin(), addresses_.end()), addresses_.end());
    }

    const book::SheetLook& sheet_;
    const CellRange& range_;
    std::size_t most_;
    std::vector<CellAddress> addresses_;
    std::set<std::pair<CellAddress, CellAddress>> areas_; ///< that were added
    std::size_t turns_ = 0;                               ///< how often `addresses_` was full
    bool isCut_ = false;
};

bool Intersects(const CellRange& left, const CellRange& right)
{
    return left.first.row <= right.last.row && right.first.row <= left.last.row &&
           left.first.column <= right.last.column && right.first.column <= left.last.column;
}

class Collector {
public:
    Collector(const book::SheetLook& sheet, const CellRange& range, std::size_t most,
              CellSource& source)
        : sheet_(sheet), range_(range), most_(most), source_(source), merged_(sheet.merges)
    {
    }

    CellItems Collect()
    {
        const bool hasOutside = AddMergesFromOutside();
        const Blanks blanks(sheet_, range_, most_ / 2); // cells with content come first
        found_.isCut = blanks.IsCut();
        auto blank = blanks.Addresses().begin();
        const auto lastBlank = blanks.Addresses().end();
        found_.items.reserve(
            std::min(most_, sheet_.cells.size() + blanks.Addresses().size() + found_.items.size()));
        auto cell = std::lower_bound(
            sheet_.cells.begin(), sheet_.cells.end(), range_.first.row,
            [](const book::Cell& each, std::int32_t row) { return each.address.row < row; });
        for (; cell != sheet_.cells.end() && cell->address.row <= range_.last.row; ++cell) {
            for (; blank != lastBlank && *blank < cell->address; ++blank)
                Add(*blank, true);
            if (blank != lastBlank && *blank == cell->address)
                ++blank;
            if (range_.Contains(cell->address))
                Add(cell->address, !HasContent(*cell));
        }
        for (; blank != lastBlank; ++blank)
            Add(*blank, true);
        if (hasOutside) {
            std::stable_sort(found_.items.begin(), found_.items.end(),
                             [](const CellItem& left, const CellItem& right) {
                                 return left.range.first < right.range.first;
                             });
        }
        return std::move(found_);
    }

private:
    /// Ranges of which the first cell is not in the range that is laid out.
    bool AddMergesFromOutside()
    {
        for (const CellRange& merge : sheet_.merges) {
            if (Intersects(merge, range_) && !range_.Contains(merge.first) && HasRoom())
                found_.items.push_back({merge, source_.Display(merge.first), false});
        }
        return !found_.items.empty();
    }

    bool HasRoom()
    {
        found_.isCut = found_.isCut || found_.items.size() >= most_;
        return found_.items.size() < most_;
    }

    void Add(CellAddress address, bool isEmpty)
    {
        merged_.GoTo(address.row);
        const CellRange* merge = merged_.Find(address.column);
        if (merge != nullptr && merge->first != address)
            return; // only the first of merged cells is seen
        if (!HasRoom())
            return;
        CellItem item{merge != nullptr ? *merge : CellRange{address, address}, {}, isEmpty};
        item.display = source_.Display(address);
        item.isEmpty = isEmpty && item.display.text.empty() && item.display.isComputed;
        found_.items.push_back(std::move(item));
    }

    const book::SheetLook& sheet_;
    const CellRange& range_;
    std::size_t most_;
    CellSource& source_;
    MergedCells merged_;
    CellItems found_;
};

} // namespace

bool IsVisible(const book::CellStyle& style)
{
    const auto isDrawn = [](const book::BorderLine& line) {
        return line.style != book::LineStyle::None;
    };
    const book::Border& border = style.border;
    return style.fill.gradient || style.fill.pattern != book::FillPattern::None ||
           isDrawn(border.left) || isDrawn(border.right) || isDrawn(border.top) ||
           isDrawn(border.bottom) ||
           (isDrawn(border.diagonal) && (border.diagonalUp || border.diagonalDown));
}

CellItems CollectItems(const book::SheetLook& sheet, const book::CellRange& range, std::size_t most,
                       CellSource& source)
{
    return Collector(sheet, range, most, source).Collect();
}

} // namespace orrery::look
