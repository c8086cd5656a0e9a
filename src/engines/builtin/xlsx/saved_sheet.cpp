#include "engines/builtin/xlsx/saved_sheet.h"

#include <algorithm>

namespace orrery::xlsx {

std::size_t PositionOfOriginal(const std::vector<SavedSheet>& sheets, std::size_t origin)
{
    const auto found = std::find_if(sheets.begin(), sheets.end(), [&](const SavedSheet& sheet) {
        return !sheet.IsCopy && sheet.Origin == origin;
    });
    return static_cast<std::size_t>(found - sheets.begin());
}

std::vector<std::size_t> PositionsOfCopies(const std::vector<SavedSheet>& sheets,
                                           std::size_t origin)
{
    std::vector<std::size_t> positions;
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        if (sheets[i].IsCopy && sheets[i].Origin == origin)
            positions.push_back(i);
    }
    return positions;
}

} // namespace orrery::xlsx
