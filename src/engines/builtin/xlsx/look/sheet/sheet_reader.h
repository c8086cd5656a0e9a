#pragma once

#include "engines/builtin/xlsx/look/cells/sheet_context.h"

#include <string_view>

namespace orrery::xlsx {

/// Reads a worksheet part into the context's look, but for what stands in other parts. Throws
/// Error (DamagedWorkbook, TooDeeplyNested).
void ReadSheetPart(std::string_view xml, std::string_view partName, SheetContext& context);

} // namespace orrery::xlsx
