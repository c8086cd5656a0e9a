#pragma once

#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xls/sheet/sheet_cells.h"
#include "engines/builtin/xls/sheet/sheet_text.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace orrery::xls {

using builtin::TextPatch;

/// The substream of a sheet as it is saved. `base` is the text's bytes, perhaps with changes that
/// move nothing; `others` are replacements outside the cell table; `offset` is where the sheet will
/// be in the workbook stream. The cell table is rebuilt only if `cells` (may be nullptr) contains
/// any, or if `recalculate` removes the stored results of formulas. If nothing changes and the
/// sheet does not move, its bytes are the same.
std::string MakeSheet(const SheetText& text, std::string_view base, const SheetCells* cells,
                      bool recalculate, TextPatch others, std::size_t offset);

} // namespace orrery::xls
