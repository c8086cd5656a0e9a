#pragma once

#include "book/cell_address.h"

#include <cstdint>
#include <map>
#include <vector>

namespace orrery::look {

/// The merged ranges of a sheet, asked row by row downwards. Costs as much as there are ranges,
/// however large they are.
class MergedCells {
public:
    /// `merges` must outlive this. Those that are one cell, or none, do not count.
    explicit MergedCells(const std::vector<book::CellRange>& merges);

    /// Goes to a row, which is not above the last one.
    void GoTo(std::int32_t row);
    /// The range that a cell of this row belongs to, or nullptr.
    const book::CellRange* Find(std::int32_t column) const;
    /// The first range in this row right of a column, the last one left of it, or nullptr.
    const book::CellRange* FindRight(std::int32_t column) const;
    const book::CellRange* FindLeft(std::int32_t column) const;

private:
    std::vector<const book::CellRange*> merges_; ///< by first row
    std::size_t next_ = 0;
    std::map<std::int32_t, const book::CellRange*> open_;      ///< by first column
    std::multimap<std::int32_t, const book::CellRange*> ends_; ///< by last row
};

} // namespace orrery::look
