#pragma once

#include "engines/builtin/xlsx/package/package.h"
#include "engines/builtin/xlsx/saved_sheet.h"

#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

/// The part that lists the titles, docProps/app.xml; empty if nothing leads to one.
std::string TitlesPart(const Package& package);

/// That part with the titles and counts of the sheets as they are now: each of `oldSheets`
/// is renamed and followed by its copies; the titles of a sheet's own names ("Sheet1!Print_Area")
/// likewise. A part that does not list the workbook's sheets, or whose counts are wrong, comes back
/// unchanged. Throws Error(DamagedWorkbook).
std::string UpdateTitles(std::string_view xml, std::string_view partName,
                         const std::vector<std::string>& oldSheets,
                         const std::vector<SavedSheet>& newSheets);

} // namespace orrery::xlsx
