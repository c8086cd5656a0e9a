#pragma once

#include "book/look/color.h"
#include "engines/builtin/theme/theme.h"
#include "engines/builtin/xml/tree.h"

#include <optional>
#include <string_view>

namespace orrery::xlsx::drawing {

struct ShapeColor {
    book::Color color;
    double opacity = 1; ///< [0:1]
};

/// What colours are relative to.
struct ColorSource {
    const builtin::ThemeColors& theme;
    std::optional<ShapeColor> placeholder; ///< what "phClr" stands for
};

/// The colour among an element's children, in whichever form (ECMA-376 20.1.2.3), changed by its
/// transformations. Nothing if there is none, or one that is not known.
std::optional<ShapeColor> ReadColor(const xml::Element& parent, const ColorSource& source);

/// "darkSlateBlue" of ECMA-376 20.1.10.47 (ST_PresetColorVal).
std::optional<book::Color> PresetColor(std::string_view name);

/// Darker (below 0) or brighter: the luminance as a change of [-1:1] of what is left of it.
book::Color ChangeLuminance(book::Color color, double change);

} // namespace orrery::xlsx::drawing
