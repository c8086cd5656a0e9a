#pragma once

#include "book/look/sheet_look.h"
#include "engines/builtin/theme/theme.h"
#include "engines/builtin/xlsx/package/package.h"

#include <string>

namespace orrery::xlsx {

/// Adds what lies above the cells of a worksheet or a chart sheet to its look, in the order of
/// painting: pictures, shapes, charts, then controls and embedded objects; and the pictures of
/// headers and footers. Hidden drawings and notes are not listed. Never throws for what the parts
/// contain: what cannot be read is added to `look.leftOut`, once for each reason.
void ReadDrawings(const Package& package, const std::string& sheetPart,
                  const builtin::ThemeColors& theme, book::SheetLook& look);

} // namespace orrery::xlsx
