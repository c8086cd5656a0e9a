#pragma once

#include "book/look/sheet_look.h"
#include "engines/builtin/xls/look/records/look_records.h"
#include "engines/builtin/xls/look/sheet_styles.h"
#include "engines/builtin/xls/look/styles/look_colors.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace orrery::xls {

/// Reads columns, rows, their default sizes and the view of a sheet.
class GridReader {
public:
    GridReader(book::SheetLook& look, SheetStyles& styles, const LookColors& colors)
        : look_(look), styles_(styles), colors_(colors)
    {
    }

    /// Reads the record if it is one of these; else returns false. Throws Error(DamagedWorkbook).
    bool Read(const LookRecord& record);
    void Finish();

private:
    struct Column {
        std::uint16_t width = 0; // 1/256 of a digit
        std::uint32_t style = 0;
        bool isHidden = false;
        friend bool operator==(const Column&, const Column&) = default;
    };

    void ReadColumns(std::string_view data);
    void ReadRow(std::string_view data);
    void ReadDefaultHeight(std::string_view data);
    void ReadWindow(std::string_view data);
    void ReadPane(std::string_view data);

    book::SheetLook& look_;
    SheetStyles& styles_;
    const LookColors& colors_;
    std::array<std::optional<Column>, 256> columns_;
    std::vector<std::uint32_t> rows_; // by row from 0: the place in the look and 1
    bool hasWindow_ = false;
    bool isFrozen_ = false;
};

} // namespace orrery::xls
