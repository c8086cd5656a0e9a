#pragma once

#include "engines/common/cell_address.h"

#include <cstdint>
#include <vector>

namespace orrery::builtin {

using engines::CellAddress;
using engines::CellRange;

/// Finds the range of a sheet that contains a cell.
class RangeIndex {
public:
    RangeIndex() = default;
    explicit RangeIndex(std::vector<CellRange> ranges);

    /// A range that contains the cell, or nullptr. If several do, any of them.
    const CellRange* Find(CellAddress cell) const;

private:
    std::vector<CellRange> ranges_;    // by first cell
    std::vector<std::int32_t> lowest_; // for each range, the last row of it and of all before it
};

} // namespace orrery::builtin
