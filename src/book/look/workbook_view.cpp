#include "book/look/workbook_view.h"

#include "book/names.h"

#include <algorithm>

namespace orrery::book {

std::optional<std::size_t> WorkbookView::FindSheet(std::string_view name) const
{
    const auto& sheets = Workbook().sheets;
    const auto found =
        std::find_if(sheets.begin(), sheets.end(),
                     [name](const SheetSummary& sheet) { return SameName(sheet.name, name); });
    if (found == sheets.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - sheets.begin());
}

} // namespace orrery::book
