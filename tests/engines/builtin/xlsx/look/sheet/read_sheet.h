#pragma once

#include "engines/builtin/xlsx/look/cells/sheet_context.h"
#include "engines/builtin/xlsx/look/sheet/sheet_reader.h"

#include <string>

namespace orrery::xlsx {

/// The look of a worksheet part with these elements, and styles with these lists.
inline book::SheetLook ReadSheet(const std::string& elements, const std::string& styles = {})
{
    const StyleSheet sheet(builtin::ThemeColors(), "<styleSheet>" + styles + "</styleSheet>");
    const SharedTexts texts;
    book::SheetLook look;
    SheetContext context(sheet, texts, book::DateSystem::From1900, look);
    ReadSheetPart("<worksheet xmlns:x14=\"urn:x14\" xmlns:xm=\"urn:xm\">" + elements +
                      "</worksheet>",
                  "/xl/sheet1.xml", context);
    return look;
}

} // namespace orrery::xlsx
