#pragma once

#include <string_view>

namespace orrery::xlsx::drawing {

/// Whether the readers of drawings understand a namespace that alternate content requires: the
/// newer charts, slicers and timelines, and the styles of charts. Controls and embedded objects are
/// read from the older form, which every file has, and formulas from the fallback.
bool UnderstandsDrawing(std::string_view uri);

} // namespace orrery::xlsx::drawing
