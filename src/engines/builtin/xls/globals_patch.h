#pragma once

#include "engines/builtin/xls/formula/references.h"
#include "engines/builtin/xls/records/globals.h"
#include "engines/builtin/xls/records/shared_strings.h"
#include "engines/builtin/xls/sheet/sheet_places.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orrery::xls {

/// What the globals say of a workbook as it shall be saved.
struct SavedGlobals {
    const std::vector<SavedSheet>& sheets;
    const References& references;
    const std::vector<std::uint16_t>& tabIds;
    const SheetNameLookup& nameOf; ///< of now, as seen from the workbook
    bool selectsOneSheet = false;
    bool recalculate = false;
    const SharedStrings* strings = nullptr; ///< where there is a table
    std::uint32_t textReferences = 0;       ///< of all cells of all sheets
    std::string drawingGroup{};             ///< the records where they change, else empty
    std::string headerPictures{};           ///< the same
};

/// The ids of the sheets as saved; those of copies are new. [MS-XLS] 2.4.241
std::vector<std::uint16_t> TabIds(const Globals& globals, const std::vector<SavedSheet>& sheets);

/// The globals of the saved workbook. The offsets of the sheets are not yet known.
std::string PatchGlobals(const Globals& globals, const SavedGlobals& saved);

/// Where the saved globals hold the offsets of the sheets, four bytes each, in order.
std::vector<std::size_t> OffsetPlaces(std::string_view savedGlobals);

} // namespace orrery::xls
