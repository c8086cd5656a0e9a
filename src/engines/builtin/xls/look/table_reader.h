#pragma once

#include "book/look/sheet_look.h"
#include "engines/builtin/theme/theme.h"
#include "engines/builtin/xls/look/records/look_records.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>

namespace orrery::xls {

/// Reads the tables of a sheet. [MS-XLS] 2.4.114, 2.4.157, 2.5.266
class TableReader {
public:
    TableReader(book::SheetLook& look, const builtin::ThemeColors& theme)
        : look_(look), theme_(theme)
    {
    }

    /// Reads the record if it belongs to a table; else returns false. Throws
    /// Error(DamagedWorkbook).
    bool Read(const LookRecord& record);
    /// Gives the columns their names, which are the texts of their headers. The cells are in order.
    void Finish();

private:
    void ReadTable(std::string_view data);
    void ReadMore(std::string_view data);

    book::SheetLook& look_;
    const builtin::ThemeColors& theme_;
    std::map<std::uint32_t, std::size_t> places_; // in the look, by the table's id
};

} // namespace orrery::xls
