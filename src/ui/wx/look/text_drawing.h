#pragma once

#include "look/canvas/canvas.h"

#include <wx/graphics.h>

#include <memory>
#include <string_view>

namespace orrery::ui::wx {

/// Draws lines of text with fractions of pixels, as the toolkit alone does not: it rounds sizes,
/// widths and baselines.
class TextDrawing {
public:
    virtual ~TextDrawing() = default;
    /// As `look::Canvas::DrawText`; nothing of it is empty. A text whose width is not the measured
    /// one is stretched.
    virtual void Draw(look::Point at, std::string_view text, const look::TextStyle& style,
                      double width) = 0;
};

/// The context outlives the object.
std::unique_ptr<TextDrawing> MakeTextDrawing(wxGraphicsContext& context);

} // namespace orrery::ui::wx
