#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

/// The protection of the workbook's cell formats.
class Styles {
public:
    /// `xml` is the styles part, or empty if there is none. Throws Error(DamagedWorkbook).
    Styles(std::string_view xml, std::string_view partName);
    /// Whether cells of this format are locked when their sheet is protected; true by default, and
    /// for a format that does not exist.
    bool IsLocked(std::size_t format) const;

private:
    std::vector<bool> locked_;
};

} // namespace orrery::xlsx
