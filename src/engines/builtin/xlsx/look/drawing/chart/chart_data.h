#pragma once

#include "book/look/chart.h"
#include "engines/builtin/xml/tree.h"

#include <cstddef>

namespace orrery::xlsx::drawing {

/// How many cached values a chart may still keep.
struct PointBudget {
    static constexpr std::size_t kMaxPoints = 200000;
    std::size_t points = kMaxPoints;
};

/// The values below an element ("c:val", "c:cat", "c:tx" ...): a reference with what was last known
/// of its cells, or constants. Of several levels of categories the innermost one. ECMA-376 21.2.2
book::ChartData ReadChartData(const xml::Element& parent, PointBudget& budget);

/// Whether a child is there and true; `otherwise` if it is not there.
bool IsOn(const xml::Element& parent, std::string_view child, bool otherwise);
/// The "val" of a child; empty if it is not there.
std::string ValueOf(const xml::Element& parent, std::string_view child);

} // namespace orrery::xlsx::drawing
