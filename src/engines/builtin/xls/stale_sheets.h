#pragma once

#include "engines/builtin/xls/formula/references.h"
#include "engines/builtin/xls/records/globals.h"
#include "engines/builtin/xls/sheet/template_sheet.h"

#include <vector>

namespace orrery::xls {

/// Which sheets have formulas whose stored results may be stale, by position. `written` says which
/// sheets were written. Decided for whole sheets, not for single cells: a sheet is stale if it was
/// written or if its formulas may read a stale one. The time grows with the number of sheets and of
/// references in their formulas.
std::vector<bool> FindStaleSheets(const Globals& globals, std::vector<TemplateSheet>& originals,
                                  const std::vector<SavedSheet>& sheets, std::vector<bool> written);

} // namespace orrery::xls
