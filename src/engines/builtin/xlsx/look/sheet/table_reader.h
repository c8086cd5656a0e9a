#pragma once

#include "book/look/table.h"
#include "engines/builtin/xlsx/look/cells/sheet_context.h"
#include "engines/builtin/xlsx/package/package.h"

#include <optional>
#include <string>
#include <string_view>

namespace orrery::xlsx {

/// Adds the tables and pivot tables that belong to a sheet. A damaged one is left out.
void ReadTables(const Package& package, const std::string& sheetPart, SheetContext& context);

/// Reads a table part; nothing if it has no range. ECMA-376 18.5.1.2
std::optional<book::Table> ParseTable(std::string_view xml, const StyleSheet& styles);
/// The same of a pivot table's part. ECMA-376 18.10.1.73
std::optional<book::Table> ParsePivotTable(std::string_view xml, const StyleSheet& styles);

} // namespace orrery::xlsx
