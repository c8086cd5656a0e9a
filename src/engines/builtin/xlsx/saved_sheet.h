#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace orrery::xlsx {

/// A sheet of the workbook as it is saved.
struct SavedSheet {
    std::string Name;
    /// Position, from 0, of the template's sheet that it is or was copied from.
    std::size_t Origin = 0;
    bool IsCopy = false;
    // of copies only
    std::uint32_t SheetId = 0;
    std::string RelationshipId;
    /// Relationships of the workbook part: the model's and its own, for parts of both.
    std::vector<std::pair<std::string, std::string>> OfWorkbook{};
};

/// The position of the template's sheet; the number of sheets if it is missing.
std::size_t PositionOfOriginal(const std::vector<SavedSheet>& sheets, std::size_t origin);
/// The positions of its copies, in order.
std::vector<std::size_t> PositionsOfCopies(const std::vector<SavedSheet>& sheets,
                                           std::size_t origin);

} // namespace orrery::xlsx
