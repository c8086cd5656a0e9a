#include "look/layout/drawing_boxes.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace orrery::look {
namespace {

/// The formats' last row; a damaged file may say anything.
constexpr std::int32_t kLastIndex = 1'048'576;

double Pixels(std::int64_t emu)
{
    constexpr double kMost = 1e8;
    return std::clamp(static_cast<double>(emu) / book::kEmuPerPixel, -kMost, kMost);
}

double Place(const Axis& axis, std::int32_t index, double share, std::int64_t emu)
{
    const std::int32_t within = std::clamp(index, 1, kLastIndex);
    const double size = axis.Size(within);
    const double part = std::isfinite(share) ? std::clamp(share, 0.0, 1.0) * size : 0;
    return axis.Position(within) + std::clamp(part + Pixels(emu), 0.0, size);
}

Point Place(const book::AnchorPoint& at, const Axis& columns, const Axis& rows)
{
    return {Place(columns, at.cell.column, at.shareX, at.emuX),
            Place(rows, at.cell.row, at.shareY, at.emuY)};
}

} // namespace

Box AnchorBox(const book::Anchor& anchor, const Axis& columns, const Axis& rows)
{
    Point from = Place(anchor.from, columns, rows);
    if (anchor.to) {
        const Point to = Place(*anchor.to, columns, rows);
        return {std::min(from.x, to.x), std::min(from.y, to.y), std::abs(to.x - from.x),
                std::abs(to.y - from.y)};
    }
    if (anchor.from.cell == book::CellAddress{1, 1}) // a place on the sheet, beyond its first cell
        from = {std::max(Pixels(anchor.from.emuX), from.x),
                std::max(Pixels(anchor.from.emuY), from.y)};
    return {from.x, from.y, std::max(Pixels(anchor.width), 0.0),
            std::max(Pixels(anchor.height), 0.0)};
}

Box UnturnedBox(const book::Drawing& drawing, const Axis& columns, const Axis& rows)
{
    const Box box = AnchorBox(drawing.anchor, columns, rows);
    if (!drawing.isAnchorTurned)
        return box;
    const Point middle = box.Middle();
    return {middle.x - box.height / 2, middle.y - box.width / 2, box.height, box.width};
}

} // namespace orrery::look
