#pragma once

#include "book/date_system.h"
#include "book/look/sheet_look.h"
#include "engines/builtin/xlsx/look/cells/left_out_list.h"
#include "engines/builtin/xlsx/look/cells/limits.h"
#include "engines/builtin/xlsx/look/cells/shared_texts.h"
#include "engines/builtin/xlsx/look/cells/style_table.h"
#include "engines/builtin/xlsx/look/style/style_sheet.h"

namespace orrery::xlsx {

/// What the readers of a sheet's parts share.
struct SheetContext {
    const StyleSheet& styleSheet;
    const SharedTexts& texts;
    book::DateSystem dateSystem;
    book::SheetLook& look;
    StyleTable styles;
    LeftOutList leftOut;
    CellLimits limits;

    SheetContext(const StyleSheet& sheet, const SharedTexts& sharedTexts, book::DateSystem dates,
                 book::SheetLook& sheetLook)
        : styleSheet(sheet), texts(sharedTexts), dateSystem(dates), look(sheetLook),
          styles(sheet, sheetLook.styles), leftOut(sheetLook.leftOut)
    {
    }
    const ColorScheme& Colors() const { return styleSheet.Colors(); }
};

} // namespace orrery::xlsx
