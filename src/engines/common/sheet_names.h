#pragma once

#include "book/names.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::engines {

using book::FoldCase;
using book::SameName;

/// Excel's rules for a sheet's name, except uniqueness: 1 to 31 UTF-16 units, none of : \ / ? * [
/// ], no apostrophe at either end, not "History", no control characters, valid UTF-8.
bool IsValidSheetName(std::string_view name);
/// The longest beginning of the text with at most `units` UTF-16 units that splits no character.
std::string_view CutToUnits(std::string_view text, std::size_t units);
/// Checks that a sheet may have the name among `others`, the workbook's other sheets. Throws Error
/// (InvalidSheetName, SheetNameTaken).
void CheckSheetName(std::string_view name, const std::vector<std::string>& others);
/// The name that Excel gives a copy, the first that is free: "Desk (2)" for "Desk", "Desk (3)" for
/// "Desk (2)". A long name is shortened to fit 31 UTF-16 units.
std::string CopyName(std::string_view name, const std::vector<std::string>& taken);

} // namespace orrery::engines
