#pragma once

#include "book/look/chart.h"
#include "book/look/drawing.h"
#include "engines/builtin/xlsx/look/drawing/values/colors.h"
#include "engines/builtin/xlsx/look/drawing/values/format_scheme.h"

#include <optional>
#include <string>

namespace orrery::xlsx::drawing {

/// The fill of a shape, as far as its properties or its style give one.
struct ShapeFill {
    enum class Kind { NotGiven, None, Filled, Picture, OfGroup } kind = Kind::NotGiven;
    book::Fill fill;
    double opacity = 1;
    std::string picture; ///< the id of a relationship
};

/// What lines and fills are read with.
struct StyleSource {
    const builtin::ThemeColors& theme;
    const FormatScheme& format;
};

/// The fill among an element's children. ECMA-376 20.1.8
ShapeFill ReadFill(const xml::Element& properties, const ColorSource& colors);
/// The fill element itself.
ShapeFill ReadFillElement(const xml::Element& fill, const ColorSource& colors);
/// The fill of a style's reference ("fillRef").
ShapeFill ReferredFill(const xml::Element& reference, const StyleSource& source);

/// A line (ECMA-376 20.1.2.2.24) over what its style's reference gives; either may be none. A line
/// whose fill is given nowhere is not visible.
struct ShapeLine {
    book::Outline outline;
    bool isFillGiven = false; ///< also: that it has none
    bool hasArrowAtStart = false;
    bool hasArrowAtEnd = false;
};
ShapeLine ReadLine(const xml::Element& line, const xml::Element& reference,
                   const StyleSource& source);
/// The properties of the line alone.
ShapeLine ReadPlainLine(const xml::Element& line, const ColorSource& colors);

/// The one colour that stands best for a fill: of a gradient that of its middle.
std::optional<book::Color> MainColor(const ShapeFill& fill);

} // namespace orrery::xlsx::drawing
