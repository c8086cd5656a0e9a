#pragma once

#include "book/look/sheet_look.h"
#include "look/values/cell_display.h"

#include <cstddef>
#include <vector>

namespace orrery::look {

/// A cell, or merged cells, with what is shown.
struct CellItem {
    book::CellRange range;
    CellDisplay display;
    bool isEmpty = false; ///< texts of neighbours may be drawn over it
};

struct CellItems {
    std::vector<CellItem> items; ///< row by row
    bool isCut = false;          ///< some were left out
};

/// Whether a style alone is seen.
bool IsVisible(const book::CellStyle& style);

/// The cells of a range that may show something: those with content or a visible style, of their
/// own or of their row or column, those with conditions, in tables, and merged ranges once; where
/// there is a grid, also merged ranges that only hide it.
CellItems CollectItems(const book::SheetLook& sheet, const book::CellRange& range, std::size_t most,
                       CellSource& source);

} // namespace orrery::look
