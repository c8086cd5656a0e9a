#pragma once

#include "book/look/table.h"
#include "look/canvas/canvas.h"

#include <optional>
#include <vector>

namespace orrery::look {

/// Paints a sparkline into its cell. Values are in order; those that are nothing are gaps. A bound
/// of the group that is absent is that of these values.
void PaintSparkline(const book::SparklineGroup& group, std::vector<std::optional<double>> values,
                    const Box& cell, Canvas& canvas);

} // namespace orrery::look
