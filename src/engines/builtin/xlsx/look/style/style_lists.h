#pragma once

#include "book/look/cell_style.h"
#include "engines/builtin/xlsx/look/style/color_scheme.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orrery::xlsx {

/// An <xf>: indexes into the lists, absent ones are as in the style that it is based on.
struct CellFormat {
    std::optional<std::size_t> font;
    std::optional<std::size_t> fill;
    std::optional<std::size_t> border;
    std::optional<std::size_t> numberFormat;
    std::size_t base = 0; ///< index of the named style's format
    book::Alignment alignment;
};

/// Of a part of a table style.
struct TableElement {
    std::string type;
    std::size_t differential = 0;
    std::int32_t size = 1;
};

/// The lists of a styles part.
struct StyleLists {
    ColorScheme colors;
    std::vector<book::Font> fonts;
    std::vector<book::Fill> fills;
    std::vector<book::Border> borders;
    std::map<std::size_t, std::string> numberFormats;
    std::vector<CellFormat> bases;
    std::vector<CellFormat> formats;
    std::vector<book::PartialStyle> differentials;
    std::map<std::string, std::vector<TableElement>, std::less<>> tableStyles;
    std::size_t normalBase = 0; ///< index of the style "Normal" among the bases
};

} // namespace orrery::xlsx
