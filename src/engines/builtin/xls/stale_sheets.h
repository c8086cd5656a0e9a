#pragma once

#include "engines/builtin/xls/formula/references.h"
#include "engines/builtin/xls/records/globals.h"
#include "engines/builtin/xls/sheet/template_sheet.h"

#include <vector>

namespace orrery::xls {

/// Which sheets have formulas whose stored results may be stale, by position. `written` tells the
/// sheets that were written. Whole sheets are looked at, not single cells: a sheet is stale when it
/// was written or when its formulas may read a stale one. Takes time in proportion to the sheets
/// and what their formulas name.
std::vector<bool> FindStaleSheets(const Globals& globals, std::vector<TemplateSheet>& originals,
                                  const std::vector<SavedSheet>& sheets, std::vector<bool> written);

} // namespace orrery::xls
