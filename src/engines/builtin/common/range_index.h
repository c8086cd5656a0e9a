#pragma once

#include "engines/common/cell_address.h"

#include <cstdint>
#include <vector>

namespace orrery::builtin {

using engines::CellAddress;
using engines::CellRange;

/// Ranges of a sheet, found by a cell that they hold.
class RangeIndex {
public:
    RangeIndex() = default;
    explicit RangeIndex(std::vector<CellRange> ranges);

    /// A range that holds the cell, or nullptr. Where ranges overlap, any of them.
    const CellRange* Find(CellAddress cell) const;

private:
    std::vector<CellRange> ranges_;    // by their first cells
    std::vector<std::int32_t> lowest_; // for each range the last row of it and those before
};

} // namespace orrery::builtin
