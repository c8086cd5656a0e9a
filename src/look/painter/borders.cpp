#include "look/painter/borders.h"

#include "look/painter/border_lines.h"
#include "look/painter/pixels.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>
#include <vector>

namespace orrery::look {

namespace {

using book::BorderLine;
using book::LineStyle;

/// Lines that may become one: of one pen at one edge.
struct LineKey {
    int rank = 0;
    LineStyle style = LineStyle::None;
    std::uint32_t color = 0;
    bool isVertical = false;
    double edge = 0; ///< a whole pixel
    friend bool operator<(const LineKey& a, const LineKey& b)
    {
        return std::tie(a.rank, a.style, a.color, a.isVertical, a.edge) <
               std::tie(b.rank, b.style, b.color, b.isVertical, b.edge);
    }
};
struct Span {
    double begin = 0;
    double end = 0;
};

/// Where double lines meet: the directions in which they leave a corner.
struct Arms {
    bool before = false; ///< left or up, of the lines across
    bool after = false;  ///< right or down
};

constexpr double kWidestLine = 3; // pixels
constexpr std::size_t kMostSpans = 2'000'000;

book::Color ColorOf(std::uint32_t code)
{
    return {static_cast<std::uint8_t>(code >> 16), static_cast<std::uint8_t>(code >> 8),
            static_cast<std::uint8_t>(code)};
}

std::uint32_t CodeOf(const std::optional<book::Color>& color)
{
    const auto shown = color.value_or(book::kBlack);
    return static_cast<std::uint32_t>(shown.red << 16 | shown.green << 8 | shown.blue);
}

class BorderPainter {
public:
    BorderPainter(const Layout& layout, Canvas& canvas, LinesLie lie)
        : layout_(layout), canvas_(canvas), lie_(lie)
    {
    }

    void Add(const CellBox& cell)
    {
        const Box box = OnPixels(cell.box);
        AddLine(cell.border.top, false, box.y, {box.x, box.Right()});
        AddLine(cell.border.bottom, false, box.Bottom(), {box.x, box.Right()});
        AddLine(cell.border.left, true, box.x, {box.y, box.Bottom()});
        AddLine(cell.border.right, true, box.Right(), {box.y, box.Bottom()});
    }

    void Paint()
    {
        for (auto& [key, spans] : lines_) {
            std::sort(spans.begin(), spans.end(),
                      [](const Span& a, const Span& b) { return a.begin < b.begin; });
            Span whole = spans.front();
            for (const auto& span : spans) {
                if (span.begin > whole.end) {
                    PaintSpan(key, whole);
                    whole = span;
                }
                whole.end = std::max(whole.end, span.end);
            }
            PaintSpan(key, whole);
        }
    }

private:
    void AddLine(const BorderLine& line, bool isVertical, double edge, Span span)
    {
        if (line.style == LineStyle::None || span.end <= span.begin || count_ >= kMostSpans)
            return;
        ++count_;
        const LineKey key{LineRank(line.style), line.style, CodeOf(line.color), isVertical, edge};
        lines_[key].push_back(span);
        if (line.style == LineStyle::Double) {
            Meet(isVertical, edge, span.begin).after = true;
            Meet(isVertical, edge, span.end).before = true;
        }
    }

    Arms& Meet(bool isVertical, double edge, double at)
    {
        return arms_[isVertical ? std::tuple{true, edge, at} : std::tuple{false, at, edge}];
    }

    /// How far a stroke of a double line goes on behind its end at a corner: up to the stroke of
    /// the double line across that it meets.
    double DoubleReach(const LineKey& key, double at, double shift) const
    {
        const auto found = arms_.find(key.isVertical ? std::tuple{false, key.edge, at}
                                                     : std::tuple{true, at, key.edge});
        if (found == arms_.end())
            return 0.5;
        const bool isTowardsArm = shift < 0 ? found->second.before : found->second.after;
        return isTowardsArm ? -0.5 : 1.5;
    }

    double Middle(double edge, double width, double end) const
    {
        return lie_ == LinesLie::OnEdges ? edge : LineMiddle(edge, width, end);
    }

    void PaintSpan(const LineKey& key, Span span)
    {
        const double width = LineWidth(key.style);
        const double across = key.isVertical ? layout_.width : layout_.height;
        const double along = key.isVertical ? layout_.height : layout_.width;
        const double middle = Middle(key.edge, width, across);
        const double begin = Middle(span.begin, width, along);
        const double end = Middle(span.end, width, along);
        for (const auto& stroke : StrokesOf(key.style)) {
            double before = width / 2;
            double after = width / 2;
            if (key.style == LineStyle::Double) {
                before = DoubleReach(key, span.begin, stroke.shift);
                after = DoubleReach(key, span.end, stroke.shift);
            }
            const double from = begin - before + stroke.begin;
            const double to = end + after;
            const double at = middle + stroke.shift;
            const Pen pen{ColorOf(key.color), stroke.width, stroke.dashes, 1};
            if (key.isVertical)
                canvas_.DrawLine({at, from}, {at, to}, pen);
            else
                canvas_.DrawLine({from, at}, {to, at}, pen);
        }
    }

    const Layout& layout_;
    Canvas& canvas_;
    LinesLie lie_;
    std::map<LineKey, std::vector<Span>> lines_;
    std::map<std::tuple<bool, double, double>, Arms> arms_; ///< by direction, x and y
    std::size_t count_ = 0;
};

void PaintDiagonal(const BorderLine& line, Point from, Point to, Canvas& canvas)
{
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    if (!(length > 0))
        return;
    const Point across{-(to.y - from.y) / length, (to.x - from.x) / length};
    for (const auto& stroke : StrokesOf(line.style)) {
        const Point shift{across.x * stroke.shift, across.y * stroke.shift};
        canvas.DrawLine({from.x + shift.x, from.y + shift.y}, {to.x + shift.x, to.y + shift.y},
                        Pen{line.color.value_or(book::kBlack), stroke.width, stroke.dashes, 1});
    }
}

void PaintDiagonals(const CellBox& cell, Canvas& canvas)
{
    const auto& border = cell.border;
    if (border.diagonal.style == LineStyle::None || !(border.diagonalUp || border.diagonalDown))
        return;
    const Box box = OnPixels(cell.box);
    canvas.Clip(box);
    if (border.diagonalDown)
        PaintDiagonal(border.diagonal, {box.x, box.y}, {box.Right(), box.Bottom()}, canvas);
    if (border.diagonalUp)
        PaintDiagonal(border.diagonal, {box.x, box.Bottom()}, {box.Right(), box.y}, canvas);
    canvas.Restore();
}

} // namespace

void PaintBorders(const Layout& layout, const Box& visible, Canvas& canvas, LinesLie lie)
{
    BorderPainter painter(layout, canvas, lie);
    const double reach = lie == LinesLie::OnEdges ? 0 : kWidestLine;
    const Box reached{visible.x - reach, visible.y - reach, visible.width + 2 * reach,
                      visible.height + 2 * reach};
    for (const auto& cell : layout.cells) {
        if (!Overlaps(cell.box, reached))
            continue;
        painter.Add(cell);
        PaintDiagonals(cell, canvas);
    }
    painter.Paint();
}

} // namespace orrery::look
