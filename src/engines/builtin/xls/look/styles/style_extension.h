#pragma once

#include "book/look/cell_style.h"
#include "engines/builtin/xls/look/records/byte_cursor.h"
#include "engines/builtin/xls/look/styles/look_colors.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace orrery::xls {

/// The properties that newer versions add to a cell format or a conditional one. [MS-XLS] 2.5.108
struct StyleExtension {
    std::optional<FullColor> foreground; ///< of the fill
    std::optional<FullColor> background;
    std::optional<FullColor> top;
    std::optional<FullColor> bottom;
    std::optional<FullColor> left;
    std::optional<FullColor> right;
    std::optional<FullColor> diagonal;
    std::optional<FullColor> text;
    std::optional<book::Gradient> gradient;
    std::optional<std::int16_t> indent;
};

/// Reads a list of properties behind its count. What cannot be read ends the list.
StyleExtension ReadStyleExtension(ByteCursor& cursor, std::size_t count, const LookColors& colors);

/// Changes a complete style.
void Extend(book::CellStyle& style, const StyleExtension& extension, const LookColors& colors);
/// Changes what the partial style sets.
void Extend(book::PartialStyle& style, const StyleExtension& extension, const LookColors& colors);

} // namespace orrery::xls
