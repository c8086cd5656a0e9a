#pragma once

#include "book/look/drawing.h"
#include "look/canvas/canvas.h"
#include "look/text/text_measure.h"

namespace orrery::look {

/// Paints the text of a shape into a box, wrapped and placed as it says. What is higher than the
/// box is cut.
void PaintTextBody(const book::TextBody& body, const Box& box, const TextMeasure& measure,
                   Canvas& canvas);

} // namespace orrery::look
