#pragma once

#include "book/look/sheet_look.h"
#include "engines/builtin/xls/records/globals.h"

#include <cstddef>
#include <string_view>

namespace orrery::xls {

/// The formula of a name, in the stream; empty if its record is damaged. [MS-XLS] 2.4.150
struct NameFormula {
    std::string_view tokens;
    std::string_view extra; ///< what is behind the tokens
};
NameFormula FormulaOf(const NameEntry& entry, std::string_view stream);

/// Reads the areas and titles that are printed from the built-in names of a sheet, which is at a
/// position from 0.
void ReadPrintNames(const Globals& globals, std::size_t sheet, book::SheetLook& look);

} // namespace orrery::xls
