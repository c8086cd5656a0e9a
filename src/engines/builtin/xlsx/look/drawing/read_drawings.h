#pragma once

#include "book/look/drawing.h"
#include "book/look/sheet_look.h"
#include "engines/builtin/theme/theme.h"
#include "engines/builtin/xlsx/package/package.h"

#include <string>
#include <vector>

namespace orrery::xlsx {

/// What lies above the cells of a worksheet or a chart sheet, in the order of painting: pictures,
/// shapes, charts, then controls and embedded objects. Hidden drawings and notes are not listed.
/// Never throws for what the parts contain: what cannot be read is added to `leftOut`, once for
/// each reason.
std::vector<book::Drawing> ReadDrawings(const Package& package, const std::string& sheetPart,
                                        const builtin::ThemeColors& theme,
                                        std::vector<book::LeftOut>& leftOut);

} // namespace orrery::xlsx
