#include "look/layout/layout.h"

#include <algorithm>
#include <cstddef>

namespace orrery::look {
namespace {

/// Between which two edges a place is; edges may fall. Columns without width are never found.
std::optional<std::int32_t> IndexAt(const std::vector<double>& edges, double place)
{
    if (edges.size() < 2)
        return std::nullopt;
    const bool falls = edges.front() > edges.back();
    const auto after = falls ? std::partition_point(edges.begin(), edges.end(),
                                                    [place](double edge) { return edge > place; })
                             : std::partition_point(edges.begin(), edges.end(),
                                                    [place](double edge) { return edge <= place; });
    if (after == edges.begin() || after == edges.end())
        return std::nullopt;
    return static_cast<std::int32_t>(after - edges.begin()) - 1;
}

/// The edge at the beginning of the column or row with that place in the range.
double EdgeAt(const std::vector<double>& edges, std::int64_t index)
{
    if (edges.empty())
        return 0;
    const auto last = static_cast<std::int64_t>(edges.size()) - 1;
    return edges[static_cast<std::size_t>(std::clamp<std::int64_t>(index, 0, last))];
}

} // namespace

std::optional<book::CellAddress> Layout::CellAt(Point point) const
{
    const auto row = IndexAt(rows, point.y);
    const auto column = IndexAt(columns, point.x);
    if (!row || !column)
        return std::nullopt;
    return book::CellAddress{range.first.row + *row, range.first.column + *column};
}

Box Layout::BoxOf(book::CellRange wanted) const
{
    const auto column = [this](std::int64_t index) {
        return EdgeAt(columns, index - range.first.column);
    };
    const auto row = [this](std::int64_t index) { return EdgeAt(rows, index - range.first.row); };
    const double x = column(wanted.first.column);
    const double right = column(std::int64_t{wanted.last.column} + 1);
    const double y = row(wanted.first.row);
    const double bottom = row(std::int64_t{wanted.last.row} + 1);
    return {std::min(x, right), y, std::max(x, right) - std::min(x, right), bottom - y};
}

} // namespace orrery::look
