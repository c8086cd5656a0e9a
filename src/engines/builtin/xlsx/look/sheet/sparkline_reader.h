#pragma once

#include "engines/builtin/xlsx/look/cells/sheet_context.h"

namespace orrery::xlsx {

/// Reads an <x14:sparklineGroups> to its end. [MS-XLSX] 2.6.87
void ReadSparklines(xml::Scanner& scanner, SheetContext& context);

} // namespace orrery::xlsx
