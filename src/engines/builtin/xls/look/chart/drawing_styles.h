#pragma once

#include "book/look/cell_style.h"
#include "book/look/color.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace orrery::xls {

/// What drawings and charts take from the formats of the workbook.
struct DrawingStyles {
    /// A colour of the palette by its index; nothing for the colours of the system. [MS-XLS]
    /// 2.5.161
    std::function<std::optional<book::Color>(std::uint32_t index)> color;
    /// A font by the index that other records use, any number.
    std::function<book::Font(std::size_t index)> font;
    /// The code of a number format by its number.
    std::function<std::string(std::uint16_t number)> numberFormat;
};

} // namespace orrery::xls
