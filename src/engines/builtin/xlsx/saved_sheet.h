#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace orrery::xlsx {

/// A sheet of the workbook as it shall be saved.
struct SavedSheet {
    std::string Name;
    /// Position of the template's sheet that it is or was copied from, from 0.
    std::size_t Origin = 0;
    bool IsCopy = false;
    // of copies only
    std::uint32_t SheetId = 0;
    std::string RelationshipId;
};

/// Where the template's sheet stands now; the number of sheets when it is not there.
std::size_t PositionOfOriginal(const std::vector<SavedSheet>& sheets, std::size_t origin);
/// Where its copies stand, in order.
std::vector<std::size_t> PositionsOfCopies(const std::vector<SavedSheet>& sheets,
                                           std::size_t origin);

} // namespace orrery::xlsx
