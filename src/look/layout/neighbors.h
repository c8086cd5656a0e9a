#pragma once

#include "look/layout/axis.h"
#include "look/layout/cell_items.h"
#include "look/layout/text_needs.h"

#include <cstdint>
#include <vector>

namespace orrery::look {

/// The columns into which the text of a cell may flow, from the first to the last; its own ones
/// where it may not.
struct FreeColumns {
    std::int32_t first = 1;
    std::int32_t last = 1;
};

/// For each item: up to the next cells with content, merged cells and the ends of the range.
std::vector<FreeColumns> FindFreeColumns(const book::SheetLook& sheet, const book::CellRange& range,
                                         const std::vector<CellItem>& items);

/// The last column that texts reach which flow beyond the range. Of the room, the measure and the
/// indent's width count.
std::int32_t LastReachedColumn(const book::SheetLook& sheet, const book::CellRange& range,
                               const std::vector<CellItem>& items, const Axis& columns,
                               const TextRoom& room);

/// The last of the empty cells to the right over which a text is centred, if it is aligned so.
std::int32_t LastCenteredColumn(const book::SheetLook& sheet, const CellItem& item,
                                const FreeColumns& free);

} // namespace orrery::look
