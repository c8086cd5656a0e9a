#pragma once

#include "look/chart/plotted_chart.h"
#include "look/values/geometry.h"

#include <cstddef>
#include <optional>

namespace orrery::look {

/// Where values lie: the box between the axes and the scales along its edges.
struct Plot {
    Box box;
    AxisScale values;
    std::optional<AxisScale> secondary;
    std::optional<AxisScale> x; ///< of scatter charts, in the place of categories
    std::size_t categories = 0;
    bool isSideways = false;      ///< bars: categories upwards
    bool isReversed = false;      ///< the categories
    bool reachesTheEdges = false; ///< areas: the first category at the edge itself

    const AxisScale& ScaleOf(bool isSecondary) const
    {
        return isSecondary && secondary ? *secondary : values;
    }
    /// Where a category begins (0), has its middle (0.5) or ends (1), as a share of the axis.
    double CategoryShare(std::size_t category, double within) const;
    /// The share of the axis that belongs to one category.
    double SlotShare() const;
    /// The point at these shares of the axes of categories and of values.
    Point At(double category, double value) const;
    /// The box between two points.
    Box Between(Point from, Point to) const;
    /// The length of the axis of values in pixels.
    double ValueLength() const { return isSideways ? box.width : box.height; }
    double CategoryLength() const { return isSideways ? box.height : box.width; }
};

} // namespace orrery::look
