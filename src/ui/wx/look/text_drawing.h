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

/// A drawn text may be so much wider or narrower than it was measured, in pixels.
inline constexpr double kWidthTolerance = 0.2;
/// Larger fonts than a sheet can have are made smaller, lest the toolkit's numbers overflow.
inline constexpr double kLargestFont = 2000; ///< pixels
/// The longest line of text, in font sizes times bytes.
inline constexpr double kLongestText = 1e6;

} // namespace orrery::ui::wx
