#include "look/painter/page.h"

namespace orrery::look {

namespace {

bool IsEmpty(const Box& box)
{
    return !(box.width > 0 && box.height > 0);
}

} // namespace

std::vector<PagePart> PartsOf(const PageBox& page)
{
    const Box& area = page.area;
    const Box& rows = page.titleRows;
    const Box& columns = page.titleColumns;
    const double left = page.place.x - columns.width * page.scale;
    const double top = page.place.y - rows.height * page.scale;
    std::vector<PagePart> parts;
    if (!IsEmpty(rows) && !IsEmpty(columns))
        parts.push_back({{columns.x, rows.y, columns.width, rows.height}, {left, top}});
    if (!IsEmpty(rows))
        parts.push_back({{area.x, rows.y, area.width, rows.height}, {page.place.x, top}});
    if (!IsEmpty(columns))
        parts.push_back({{columns.x, area.y, columns.width, area.height}, {left, page.place.y}});
    if (!IsEmpty(area))
        parts.push_back({area, page.place});
    return parts;
}

} // namespace orrery::look
