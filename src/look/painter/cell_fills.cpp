#include "look/painter/cell_fills.h"

#include "look/painter/pixels.h"

#include <algorithm>
#include <set>

namespace orrery::look {

namespace {

using FilledCells = std::set<book::CellAddress>;

bool IsShown(const CellBox& cell, const Box& visible)
{
    return Overlaps({cell.box.x - 1, cell.box.y - 1, cell.box.width + 2, cell.box.height + 2},
                    visible);
}

/// Whether columns run from right to left: their edges fall.
bool IsMirrored(const Layout& layout)
{
    return !layout.columns.empty() && layout.columns.front() > layout.columns.back();
}

void PaintColumnLines(const Layout& layout, const Box& visible, const Pen& pen, Canvas& canvas)
{
    const double bottom = std::min(layout.height, visible.Bottom());
    for (std::size_t i = 1; i < layout.columns.size(); ++i) {
        // The line of a column is at its right edge, which is the first one if edges fall.
        const double x = std::max(layout.columns[i - 1], layout.columns[i]);
        const bool isHidden = layout.columns[i - 1] == layout.columns[i];
        if (isHidden || x < visible.x || x > visible.Right() + 1)
            continue; // a hidden column has no line
        const double middle = LineMiddle(x, 1, layout.width);
        canvas.DrawLine({middle, std::max(0.0, visible.y)}, {middle, bottom}, pen);
    }
}

void PaintRowLines(const Layout& layout, const Box& visible, const Pen& pen, Canvas& canvas)
{
    const double right = std::min(layout.width, visible.Right());
    for (std::size_t i = 1; i < layout.rows.size(); ++i) {
        const double y = layout.rows[i];
        if (y <= layout.rows[i - 1] || y < visible.y || y > visible.Bottom() + 1)
            continue;
        const double middle = LineMiddle(y, 1, layout.height);
        canvas.DrawLine({std::max(0.0, visible.x), middle}, {right, middle}, pen);
    }
}

/// The part of the sheet that the lines of a text cover, unless it is turned.
Box TextExtent(const CellBox& cell)
{
    double left = cell.box.Right();
    double right = cell.box.x;
    for (const auto& line : cell.lines) {
        left = std::min(left, line.x);
        right = std::max(right, line.x + line.width);
    }
    return Common({left, cell.box.y, right - left, cell.box.height}, cell.clip);
}

/// Takes away the lines between columns that a text crosses.
void ClearBelowText(const Layout& layout, const CellBox& cell, Canvas& canvas)
{
    const Box extent = TextExtent(cell);
    if (cell.lines.empty() || (extent.x >= cell.box.x && extent.Right() <= cell.box.Right()))
        return;
    const Box row = OnPixels(cell.box);
    const auto clear = [&](auto first, auto last) { // edges that rise
        const auto begin = std::upper_bound(first, last, extent.x);
        const auto end = std::lower_bound(begin, last, extent.Right());
        for (auto edge = begin; edge != end; ++edge)
            canvas.FillBox({LineMiddle(*edge, 1, layout.width) - 0.5, row.y, 1, row.height - 1},
                           SolidBrush(book::kWhite));
    };
    if (IsMirrored(layout))
        clear(layout.columns.rbegin(), layout.columns.rend());
    else
        clear(layout.columns.begin(), layout.columns.end());
}

/// The boxes of a fill that cover the grid at its left and above it, where no filled cell is.
void CoverGrid(const CellBox& cell, const FilledCells& filled, bool isMirrored, Canvas& canvas)
{
    const Box box = OnPixels(cell.box);
    const auto& fill = cell.display.style->fill;
    const auto [row, column] = cell.range.first;
    const std::int32_t atLeft = isMirrored ? cell.range.last.column + 1 : column - 1;
    const Brush brush{fill, 1};
    if (!filled.contains({row, atLeft}))
        canvas.FillBox({box.x - 1, box.y, 1, box.height}, brush);
    if (!filled.contains({row - 1, column}))
        canvas.FillBox({box.x, box.y - 1, box.width, 1}, brush);
}

} // namespace

bool IsFilled(const book::Fill& fill)
{
    return fill.gradient ? !fill.gradient->stops.empty() : fill.pattern != book::FillPattern::None;
}

void PaintGridLines(const Layout& layout, const Box& visible, Canvas& canvas)
{
    Pen pen;
    pen.color = layout.gridColor;
    PaintColumnLines(layout, visible, pen, canvas);
    PaintRowLines(layout, visible, pen, canvas);
    for (const auto& cell : layout.cells) {
        if (!cell.range.IsOneCell() && IsShown(cell, visible)) {
            const Box box = OnPixels(cell.box);
            canvas.FillBox({box.x, box.y, box.width - 1, box.height - 1}, SolidBrush(book::kWhite));
        }
    }
    for (const auto& cell : layout.cells) {
        if (cell.rotation == 0 && Overlaps(cell.clip, visible))
            ClearBelowText(layout, cell, canvas);
    }
}

void PaintFills(const Layout& layout, const Box& visible, bool hasGrid, Canvas& canvas)
{
    FilledCells filled;
    if (hasGrid) {
        for (const auto& cell : layout.cells) {
            if (IsFilled(cell.display.style->fill) && cell.range.IsOneCell())
                filled.insert(filled.end(), cell.range.first);
        }
    }
    for (const auto& cell : layout.cells) {
        const auto& fill = cell.display.style->fill;
        if (!IsFilled(fill) || !IsShown(cell, visible))
            continue;
        if (hasGrid)
            CoverGrid(cell, filled, IsMirrored(layout), canvas);
        canvas.FillBox(OnPixels(cell.box), {fill, 1});
    }
}

} // namespace orrery::look
