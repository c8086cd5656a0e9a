#pragma once

#include "book/look/color.h"
#include "engines/builtin/xls/look/chart/drawing_styles.h"
#include "engines/builtin/xls/look/drawing/shape_properties.h"

#include <cstdint>

namespace orrery::xls {

/// The colours of a shape.
class ArtColors {
public:
    /// Both must outlive this object.
    ArtColors(const ShapeProperties& properties, const DrawingStyles& styles)
        : properties_(properties), styles_(styles)
    {
    }
    /// The colour that a property holds, else `fallback`.
    book::Color Find(ShapeProperty property, book::Color fallback) const;
    /// A value of properties: red, green, blue and flags, an index of the palette, or a colour of
    /// the system or of the shape itself, perhaps darkened. [MS-ODRAW] 2.2.2
    book::Color Resolve(std::uint32_t value) const { return Resolve(value, 0); }

private:
    book::Color Resolve(std::uint32_t value, int depth) const;
    book::Color Indexed(std::uint32_t index) const;
    book::Color OfShape(std::uint32_t index, int depth) const;

    const ShapeProperties& properties_;
    const DrawingStyles& styles_;
};

} // namespace orrery::xls
