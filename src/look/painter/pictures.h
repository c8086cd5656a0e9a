#pragma once

#include "book/look/drawing.h"
#include "look/canvas/canvas.h"
#include "look/text/text_measure.h"

#include <string_view>

namespace orrery::look {

/// Paints a picture; false if it cannot be shown, and then nothing was painted.
bool PaintPicture(const book::Drawing& drawing, const Box& box, Canvas& canvas);

/// Paints a frame with a text, for what cannot be shown.
void PaintPlaceholder(std::string_view text, const Box& box, const TextMeasure& measure,
                      Canvas& canvas);

} // namespace orrery::look
