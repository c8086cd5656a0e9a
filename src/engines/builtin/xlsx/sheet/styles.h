#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

/// What the cell formats of the workbook say about protection.
class Styles {
public:
    /// `xml` is the styles part; empty where there is none. Throws Error(DamagedWorkbook).
    Styles(std::string_view xml, std::string_view partName);
    /// Whether cells of this format are locked once their sheet is protected; true where nothing is
    /// said, and for a format that does not exist.
    bool IsLocked(std::size_t format) const;

private:
    std::vector<bool> locked_;
};

} // namespace orrery::xlsx
