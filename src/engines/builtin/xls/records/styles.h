#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// The protection of the workbook's cell formats.
class Styles {
public:
    /// Adds the format of the next XF record. Throws Error(DamagedWorkbook) if its data is too
    /// short.
    void Add(std::string_view data);
    bool Has(std::uint16_t format) const { return format < locked_.size(); }
    /// Whether cells of this format are locked when their sheet is protected; true for a format
    /// that does not exist.
    bool IsLocked(std::uint16_t format) const;

private:
    std::vector<bool> locked_;
};

} // namespace orrery::xls
