#pragma once

#include "look/canvas/canvas.h"

#include <cairo.h>
#include <memory>
#include <string_view>

namespace orrery::look {

enum class TextsAs {
    Characters, ///< that can be selected in a document
    Outlines    ///< for pixels, where characters would be moved to whole ones
};

/// Draws lines of text with the fonts of the system, at fractions of pixels.
class TextDrawing {
public:
    virtual ~TextDrawing() = default;
    /// As `Canvas::DrawText`; nothing of it is empty. A text whose width is not the measured one is
    /// stretched.
    virtual void Draw(Point at, std::string_view text, const TextStyle& style, double width) = 0;
};

/// The context outlives the object. Windows knows characters alone.
std::unique_ptr<TextDrawing> MakeTextDrawing(cairo_t* cairo, TextsAs textsAs);

} // namespace orrery::look
