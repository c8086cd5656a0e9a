#pragma once

#include "book/look/workbook_view.h"
#include "look/layout/layout.h"
#include "look/text/text_measure.h"

#include <cstddef>
#include <optional>

namespace orrery::look {

struct LayoutOptions {
    /// The cells to lay out; absent: from A1 to the last one that shows something, with drawings,
    /// print areas and the columns that texts flow into.
    std::optional<book::CellRange> range;
    std::size_t mostCells = 100'000; ///< that show something; the rest is left out
    std::size_t mostDrawings = 10'000;
};

/// The sheet must outlive the layout, whose drawings are the sheet's. What the source shows is
/// asked once for each cell that has content, a visible style, or a condition. `pages` stays empty.
Layout LayOut(const book::SheetLook& sheet, const book::WorkbookLook& workbook, CellSource& source,
              const TextMeasure& measure, const LayoutOptions& options = {});

/// The cells that `LayOut` lays out by default, without the columns that texts flow into.
book::CellRange UsedRange(const book::SheetLook& sheet);

} // namespace orrery::look
