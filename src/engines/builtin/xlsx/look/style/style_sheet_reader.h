#pragma once

#include "engines/builtin/xlsx/look/style/style_lists.h"
#include "engines/builtin/xml/scanner.h"

#include <string_view>
#include <vector>

namespace orrery::xlsx {

/// Fills the lists of a style sheet from a styles part.
class StyleSheetReader {
public:
    StyleSheetReader(StyleLists& lists, std::string_view xml) : lists_(lists), xml_(xml) {}
    /// Throws Error(DamagedWorkbook) if the text is not well-formed.
    void Read();

private:
    void ReadOwnPalette();
    void ReadList(xml::Scanner& scanner);
    void ReadNumberFormats(xml::Scanner& scanner);
    void ReadFormats(xml::Scanner& scanner, std::vector<CellFormat>& formats);
    static CellFormat ReadFormat(xml::Scanner& scanner);
    void ReadNamedStyles(xml::Scanner& scanner);
    void ReadTableStyles(xml::Scanner& scanner);
    void ReadTableStyle(xml::Scanner& scanner);

    StyleLists& lists_;
    std::string_view xml_;
};

} // namespace orrery::xlsx
