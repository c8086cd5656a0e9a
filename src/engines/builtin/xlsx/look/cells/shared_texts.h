#pragma once

#include "engines/builtin/xlsx/look/cells/rich_text.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace orrery::xlsx {

/// The shared texts of a workbook, decoded where they are used.
class SharedTexts {
public:
    SharedTexts() = default;
    /// `xml` is the part, of less than 4 GiB. Throws Error(DamagedWorkbook).
    explicit SharedTexts(std::string xml);

    std::size_t Count() const { return items_.size(); }
    /// The text at an index below `Count()`. See ReadRichText for `font`.
    RichText At(std::size_t index, const ColorScheme& colors, const book::Font* font) const;
    /// Whether it may have runs.
    bool IsRich(std::size_t index) const { return items_[index].isRich; }

private:
    struct Item {
        std::uint32_t begin = 0; ///< offset of its start tag
        std::uint32_t size : 31 = 0;
        std::uint32_t isRich : 1 = 0;
    };

    std::string xml_;
    std::vector<Item> items_;
};

} // namespace orrery::xlsx
