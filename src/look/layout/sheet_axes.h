#pragma once

#include "book/look/sheet_look.h"
#include "look/layout/axis.h"
#include "look/layout/cell_items.h"
#include "look/text/text_measure.h"

#include <vector>

namespace orrery::look {

Axis ColumnAxis(const book::SheetLook& sheet, const book::Font& normal, const TextMeasure& measure);

/// Rows have the height that the file holds, else the sheet's default, which grows for texts that
/// are clearly higher: lines of wrapped texts, larger fonts, turned texts. Merged cells do not
/// count.
Axis RowAxis(const book::SheetLook& sheet, const book::Font& normal, const TextMeasure& measure,
             const Axis& columns, const std::vector<CellItem>& items);

} // namespace orrery::look
