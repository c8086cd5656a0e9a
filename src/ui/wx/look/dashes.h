#pragma once

#include "look/canvas/canvas.h"

#include <vector>

namespace orrery::ui::wx {

/// The dashes of a path as a path of lines. The toolkit's own dashes are whole multiples of the
/// pen's width, which is too coarse for borders. Only dashes that may be seen inside `visible` are
/// made. Lengths on and off in turn, as in SVG; unusable ones give a whole line.
look::Path DashedPath(const look::Path& path, const std::vector<double>& dashes,
                      const look::Box& visible);

} // namespace orrery::ui::wx
