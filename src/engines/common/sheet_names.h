#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::engines {

/// Excel's rules for the name of a sheet, but for its being unique: 1 to 31 UTF-16 units, none of
/// : \ / ? * [ ], no apostrophe at either end, not "History", no control characters, UTF-8.
bool IsValidSheetName(std::string_view name);
/// Whether two names of sheets (or defined names) are the same to Excel: without regard to case,
/// beyond ASCII too. It does not depend on the locale.
bool SameSheetName(std::string_view left, std::string_view right);
/// The form that all names share which are the same to Excel.
std::string FoldCase(std::string_view name);
/// The beginning of a text that holds at most that many UTF-16 units, in whole characters.
std::string_view CutToUnits(std::string_view text, std::size_t units);
/// Whether a sheet may get the name beside the other sheets of the workbook.
/// Throws Error (InvalidSheetName, SheetNameTaken).
void CheckSheetName(std::string_view name, const std::vector<std::string>& others);
/// The name that Excel gives a copy, the first that is free: "Desk (2)", of "Desk (2)" "Desk (3)".
/// The name is cut where the whole would pass 31 units.
std::string CopyName(std::string_view name, const std::vector<std::string>& taken);

} // namespace orrery::engines
