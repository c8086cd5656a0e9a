#pragma once

#include "engines/builtin/xls/look/chart/drawing_styles.h"

#include <cstdint>
#include <string>

namespace orrery::xls::test {

/// Colours that tell their index, fonts that tell it by their size, number formats by their text.
inline DrawingStyles StylesForTests()
{
    DrawingStyles styles;
    styles.color = [](std::uint32_t index) -> std::optional<book::Color> {
        if (index >= 64)
            return std::nullopt;
        return book::Color{static_cast<std::uint8_t>(index), 1, 2};
    };
    styles.font = [](std::size_t index) {
        book::Font font;
        font.size = static_cast<double>(index);
        return font;
    };
    styles.numberFormat = [](std::uint16_t number) { return "format " + std::to_string(number); };
    return styles;
}

} // namespace orrery::xls::test
