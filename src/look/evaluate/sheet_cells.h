#pragma once

#include "book/look/workbook_view.h"
#include "look/evaluate/values/value.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace orrery::formula {

/// The cells of a sheet, found by row, and which cells an array formula fills.
class SheetCells {
public:
    explicit SheetCells(const book::SheetLook& look);

    const book::SheetLook& Look() const { return *look_; }
    /// The index in `Look().cells`, or nothing.
    std::optional<std::uint32_t> Find(book::CellAddress cell) const;
    std::int32_t LastRow() const { return used_.last.row; }
    std::int32_t LastColumn() const { return used_.last.column; }
    /// The index of the cell with the array formula that fills another cell, or nothing.
    std::optional<std::uint32_t> ArrayOwner(book::CellAddress cell) const;
    /// What it counts to look through all arrays for a cell.
    std::size_t StepsOfArrays() const { return arrays_.size() / 64; }

    /// Calls with the index of each cell of a range, row by row, until the call returns false.
    template <class Take> void ForEach(const book::CellRange& range, const Take& take) const
    {
        for (std::size_t row = FirstRow(range.first.row);
             row < rows_.size() && rows_[row].first <= range.last.row; ++row) {
            const std::uint32_t end = EndOfRow(row);
            for (std::uint32_t at = FirstInRow(row, range.first.column);
                 at < end && look_->cells[at].address.column <= range.last.column; ++at) {
                if (!take(at))
                    return;
            }
        }
    }

private:
    std::size_t FirstRow(std::int32_t row) const;
    std::uint32_t EndOfRow(std::size_t row) const;
    std::uint32_t FirstInRow(std::size_t row, std::int32_t column) const;

    const book::SheetLook* look_;
    book::CellRange used_{{1, 1}, {0, 0}};
    std::vector<std::pair<std::int32_t, std::uint32_t>> rows_; ///< numbers and first cells
    /// Cells that an array formula fills.
    struct FilledRange {
        book::CellRange range;
        std::uint32_t owner = 0;
        std::int32_t lowestRow = 0; ///< of this one and those before it
    };
    std::vector<FilledRange> arrays_; ///< of more than one cell, by first row
};

} // namespace orrery::formula
