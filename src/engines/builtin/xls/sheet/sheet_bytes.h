#pragma once

#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xls/sheet/sheet_cells.h"
#include "engines/builtin/xls/sheet/sheet_text.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace orrery::xls {

using builtin::TextPatch;

/// The substream of a sheet as it is saved. `base` holds the bytes of the text, perhaps with
/// changes that move nothing; `others` are replacements outside the cell table; `offset` is where
/// the sheet will stand in the workbook stream. The cell table is made anew only when `cells` (may
/// be nullptr) holds any, or `recalculate` takes the stored results from formulas. Where nothing
/// changes and the sheet stands where it stood, its bytes are the same.
std::string MakeSheet(const SheetText& text, std::string_view base, const SheetCells* cells,
                      bool recalculate, TextPatch others, std::size_t offset);

} // namespace orrery::xls
