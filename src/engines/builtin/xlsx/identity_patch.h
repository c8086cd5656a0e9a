#pragma once

#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xlsx/identities.h"
#include "engines/builtin/xlsx/sheet/sheet_text.h"

#include <string_view>

namespace orrery::xlsx {

using builtin::TextPatch;

/// The replacements that give a copied part its own identity.
TextPatch ApplyIdentity(std::string_view text, std::string_view partName, std::string_view type,
                        const CopyIdentity& identity);
/// The same for the copied sheet itself.
TextPatch ApplyIdentity(const SheetText& sheet, const CopyIdentity& identity);

} // namespace orrery::xlsx
