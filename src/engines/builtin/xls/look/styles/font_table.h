#pragma once

#include "book/look/cell_style.h"
#include "engines/builtin/xls/look/styles/look_colors.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// The fonts of a workbook, in the order of their records.
class FontTable {
public:
    /// Takes the data of the next FONT record. A damaged one is a font with the defaults, so that
    /// those behind it keep their places. [MS-XLS] 2.4.122
    void Add(std::string_view data);
    bool Empty() const { return fonts_.empty(); }
    /// By the index that other records use, in which 4 is left out; the first font for an index
    /// that does not exist.
    book::Font Find(std::size_t index, const LookColors& colors) const;

private:
    struct Entry {
        book::Font font; // without its colour
        std::uint16_t color = 0x7FFF;
    };
    std::vector<Entry> fonts_;
};

/// The value of a font's field for underlines. [MS-XLS] 2.4.122 (uls)
book::Underline UnderlineOf(std::uint8_t value);
/// Whether a font of this weight is bold: 400 is normal, 700 is bold.
bool IsBold(std::uint16_t weight);

} // namespace orrery::xls
