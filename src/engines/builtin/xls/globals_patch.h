#pragma once

#include "engines/builtin/xls/formula/references.h"
#include "engines/builtin/xls/records/globals.h"
#include "engines/builtin/xls/records/shared_strings.h"
#include "engines/builtin/xls/sheet/sheet_places.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orrery::xls {

/// The values that the globals of a saved workbook depend on.
struct SavedGlobals {
    const std::vector<SavedSheet>& sheets;
    const References& references;
    const std::vector<std::uint16_t>& tabIds;
    const SheetNameLookup& nameOf; ///< the current names, as seen from the workbook
    bool selectsOneSheet = false;
    bool recalculate = false;
    const SharedStrings* strings = nullptr; ///< nullptr if there is no table
    std::uint32_t stringReferences = 0;     ///< of all cells of all sheets
    std::string drawingGroup{};             ///< the new records; empty if they do not change
    std::string headerPictures{};           ///< the same
};

/// The ids of the sheets as saved; copies get new ones. [MS-XLS] 2.4.241
std::vector<std::uint16_t> TabIds(const Globals& globals, const std::vector<SavedSheet>& sheets);

/// The globals of the saved workbook. The offsets of the sheets are filled in later.
std::string PatchGlobals(const Globals& globals, SavedGlobals saved);

/// Offsets in the saved globals of the sheets' offsets, four bytes each, in order.
std::vector<std::size_t> OffsetPlaces(std::string_view savedGlobals);

} // namespace orrery::xls
