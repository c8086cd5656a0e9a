#pragma once

#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xlsx/declarations.h"
#include "engines/builtin/xlsx/identities.h"
#include "engines/builtin/xlsx/package/package.h"

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

using builtin::TextPatch;

/// What the slicers or the timeline that show it filter. It belongs to the workbook, which lists
/// it.
struct SlicerCache {
    std::string name;
    std::string part;
    std::string relationshipId;     ///< of the workbook part
    std::set<std::uint32_t> tables; ///< by id
    std::set<std::uint32_t> sheets; ///< those with its pivot tables, by sheetId
};

/// The caches of the workbook. Those that cannot be read are left out.
std::vector<SlicerCache> ReadSlicerCaches(const Package& package);

/// Those among them that a copy of a sheet needs for itself, each once: slicers of the sheet show
/// them, and they filter a table of the sheet or a pivot table on it. Slicers that filter only
/// another sheet share its cache. `declared` is what the sheet's parts declare.
std::vector<SlicerCache> CachesOfCopy(const std::vector<SlicerCache>& caches,
                                      const std::vector<Declaration>& declared,
                                      std::uint32_t sheetId);

/// The replacements in such a cache for the copy: its name, and the copy's tables and pivot tables
/// in place of the model's. It filters nothing on other sheets.
TextPatch PatchSlicerCache(std::string_view xml, std::string_view partName,
                           const CopyIdentity& identity);

} // namespace orrery::xlsx
