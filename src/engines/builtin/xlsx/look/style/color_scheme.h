#pragma once

#include "book/look/color.h"
#include "engines/builtin/common/default_palette.h"
#include "engines/builtin/theme/theme.h"
#include "engines/builtin/xml/scanner.h"

#include <optional>

namespace orrery::xlsx {

/// What the colours of styles refer to.
struct ColorScheme {
    builtin::ThemeColors theme;
    builtin::Palette palette = builtin::DefaultPalette();
};

/// The colour that the current element tells in its attributes: rgb, theme or indexed, with a tint.
/// Nothing if it is automatic or damaged. ECMA-376 18.8.19
std::optional<book::Color> ReadColor(const xml::Scanner& scanner, const ColorScheme& scheme);

} // namespace orrery::xlsx
