#pragma once

#include "book/look/workbook_view.h"

#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

/// What the workbook part tells of the looks of its sheets.
struct WorkbookEntries {
    book::WorkbookLook look;                  ///< without the Normal font and the kinds of sheets
    std::vector<std::string> relationshipIds; ///< of the sheets
};

/// Throws Error(DamagedWorkbook).
WorkbookEntries ReadWorkbookPart(std::string_view xml, std::string_view partName);

} // namespace orrery::xlsx
