#pragma once

#include "engines/builtin/xlsx/look/cells/sheet_context.h"

namespace orrery::xlsx {

/// Reads <sheetViews> to its end: the first view counts. ECMA-376 18.3.1.87
void ReadSheetViews(xml::Scanner& scanner, SheetContext& context);

/// Reads the attributes of <sheetFormatPr>. ECMA-376 18.3.1.81
void ReadSheetFormat(const xml::Scanner& scanner, book::SheetLook& look);

/// Reads <cols> to its end. Of columns that are told twice the first entry counts. ECMA-376
/// 18.3.1.17
void ReadColumns(xml::Scanner& scanner, SheetContext& context);

} // namespace orrery::xlsx
