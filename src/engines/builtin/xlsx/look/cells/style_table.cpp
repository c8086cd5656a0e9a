#include "engines/builtin/xlsx/look/cells/style_table.h"

namespace orrery::xlsx {

StyleTable::StyleTable(const StyleSheet& sheet, std::vector<book::CellStyle>& styles)
    : sheet_(sheet), styles_(styles), indexes_(sheet.CountFormats(), kUnused)
{
    IndexOf(0);
}

std::uint32_t StyleTable::IndexOf(std::size_t format)
{
    if (format >= indexes_.size())
        format = 0;
    std::uint32_t& index = indexes_[format];
    if (index == kUnused) {
        index = static_cast<std::uint32_t>(styles_.size());
        styles_.push_back(sheet_.Format(format));
    }
    return index;
}

} // namespace orrery::xlsx
