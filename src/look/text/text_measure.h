#pragma once

#include "book/look/cell_style.h"

#include <string_view>

namespace orrery::look {

/// Of a line of text, in pixels.
struct LineMetrics {
    double ascent = 0;  ///< above the baseline
    double descent = 0; ///< below it
    double height = 0;  ///< from line to line
};

/// Measures text in the fonts that draw it.
class TextMeasure {
public:
    virtual ~TextMeasure() = default;
    /// The advance of a line of text in pixels, unrounded.
    virtual double Width(std::string_view text, const book::Font& font) const = 0;
    virtual LineMetrics Metrics(const book::Font& font) const = 0;
};

} // namespace orrery::look
