#pragma once

#include "book/look/sheet_look.h"
#include "look/layout/layout.h"
#include "look/layout/pages/header_footer.h"
#include "look/text/text_measure.h"

#include <cstddef>
#include <vector>

namespace orrery::look {

struct PageOptions {
    /// What headers and footers tell. The page is the first one's number, unless the set-up says
    /// another; no pages stand for those of the sheet, an empty name for the sheet's own.
    PageFields fields;
    book::Font font; ///< of headers and footers: the workbook's Normal font
    std::size_t mostPages = 1000;
};

/// The printed pages of a sheet: its print areas, or all that is laid out, divided as the page
/// set-up says. `layout` is that of the sheet from A1 on; what it does not have is not printed. Row
/// and column headings are not printed.
std::vector<PageBox> LayOutPages(const book::SheetLook& sheet, const Layout& layout,
                                 const TextMeasure& measure, const PageOptions& options);

} // namespace orrery::look
