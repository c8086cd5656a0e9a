#pragma once

#include "look/text/text_measure.h"

namespace orrery::look {

/// How large superscripts and subscripts are, in shares of the font's size.
inline constexpr double kScriptSize = 2.0 / 3;

/// Measures by tables of the open fonts that are as wide as the common ones, so that a page looks
/// alike on every machine. Without kerning. Superscripts and subscripts count in their own size.
class FontTables final : public TextMeasure {
public:
    double Width(std::string_view text, const book::Font& font) const override;
    LineMetrics Metrics(const book::Font& font) const override;
};

} // namespace orrery::look
