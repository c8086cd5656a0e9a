#pragma once

#include "book/look/cell_style.h"

#include <string_view>

namespace orrery::look {

/// Of a line of text, in pixels.
struct LineMetrics {
    double ascent = 0;  ///< above the baseline
    double descent = 0; ///< below it
    double height = 0;  ///< from line to line
    /// Of a row with one such line as it is made to fit, in whole pixels; 0 if it is not known.
    double rowHeight = 0;
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
