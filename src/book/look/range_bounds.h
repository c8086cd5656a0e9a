#pragma once

#include "book/cell_address.h"

#include <vector>

namespace orrery::book {

/// The rectangle around all ranges, of which there is at least one.
inline CellRange BoundsOf(const std::vector<CellRange>& ranges)
{
    CellRange bounds = ranges.front();
    for (const CellRange& range : ranges) {
        bounds.Widen(range.first);
        bounds.Widen(range.last);
    }
    return bounds;
}

} // namespace orrery::book
