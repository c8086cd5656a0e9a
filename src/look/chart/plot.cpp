#include "look/chart/plot.h"

#include <algorithm>
#include <cmath>

namespace orrery::look {

double Plot::SlotShare() const
{
    const std::size_t count = reachesTheEdges && categories > 1 ? categories - 1 : categories;
    return 1 / static_cast<double>(std::max<std::size_t>(count, 1));
}

double Plot::CategoryShare(std::size_t category, double within) const
{
    const bool isEdge = reachesTheEdges && categories > 1;
    const double at = static_cast<double>(category) + within - (isEdge ? 0.5 : 0);
    const double share = at * SlotShare();
    return isReversed ? 1 - share : share;
}

Point Plot::At(double category, double value) const
{
    if (isSideways)
        return {box.x + value * box.width, box.Bottom() - category * box.height};
    return {box.x + category * box.width, box.Bottom() - value * box.height};
}

Box Plot::Between(Point from, Point to) const
{
    return {std::min(from.x, to.x), std::min(from.y, to.y), std::abs(to.x - from.x),
            std::abs(to.y - from.y)};
}

} // namespace orrery::look
