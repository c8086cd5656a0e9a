#pragma once

#include "book/look/sheet_look.h"
#include "engines/builtin/xlsx/look/style/style_sheet.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orrery::xlsx {

/// The styles that a sheet uses, each once.
class StyleTable {
public:
    /// Puts format 0 first.
    StyleTable(const StyleSheet& sheet, std::vector<book::CellStyle>& styles);

    /// The index in the sheet's styles of a format of the workbook; one that is missing is as
    /// format 0.
    std::uint32_t IndexOf(std::size_t format);

private:
    static constexpr std::uint32_t kUnused = 0xFFFFFFFF;

    const StyleSheet& sheet_;
    std::vector<book::CellStyle>& styles_;
    std::vector<std::uint32_t> indexes_; // by format
};

} // namespace orrery::xlsx
