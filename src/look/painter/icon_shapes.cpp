#include "look/painter/icon_shapes.h"

#include "look/shape/shape.h"

#include <array>
#include <initializer_list>

namespace orrery::look {

namespace {

constexpr book::Color kUnlit{0xD0, 0xD0, 0xD0};
constexpr book::Color kDark{0x50, 0x50, 0x50};

/// A part of the icon's box, in shares.
Box PartOf(const IconSheet& icon, double left, double top, double right, double bottom)
{
    const Box& box = icon.box;
    return {box.x + left * box.width, box.y + top * box.height, (right - left) * box.width,
            (bottom - top) * box.height};
}

void FillShape(const IconSheet& icon, const char* name, const Box& box, book::Color color,
               const std::vector<double>& adjustments = {})
{
    for (const auto& part : MakeShape(name, box, adjustments).parts)
        icon.canvas.DrawPath(part.path, SolidBrush(color), {});
}

/// A closed line through points, in shares of the box.
Path Through(const IconSheet& icon, std::initializer_list<Point> points, bool isClosed)
{
    Path path;
    for (const auto& point : points) {
        const bool isFirst = &point == points.begin();
        path.push_back(
            {isFirst ? PathStep::Kind::Move : PathStep::Kind::Line,
             {icon.box.x + point.x * icon.box.width, icon.box.y + point.y * icon.box.height},
             {},
             {}});
    }
    if (isClosed)
        path.push_back({PathStep::Kind::Close, {}, {}, {}});
    return path;
}

void DrawStrokes(const IconSheet& icon, book::Color color, double width,
                 std::initializer_list<Point> points)
{
    icon.canvas.DrawPath(Through(icon, points, false), {},
                         Pen{color, width * icon.box.width, {}, 1});
}

void Cross(const IconSheet& icon, book::Color color, double reach)
{
    const double low = 0.5 - reach;
    const double high = 0.5 + reach;
    DrawStrokes(icon, color, 0.16, {{low, low}, {high, high}});
    DrawStrokes(icon, color, 0.16, {{high, low}, {low, high}});
}

void Check(const IconSheet& icon, book::Color color, double reach)
{
    DrawStrokes(icon, color, 0.16,
                {{0.5 - reach, 0.5 + reach * 0.1},
                 {0.5 - reach * 0.25, 0.5 + reach * 0.8},
                 {0.5 + reach, 0.5 - reach * 0.8}});
}

void ExclamationMark(const IconSheet& icon, book::Color color, double reach)
{
    DrawStrokes(icon, color, 0.16, {{0.5, 0.5 - reach}, {0.5, 0.5 + reach * 0.3}});
    DrawStrokes(icon, color, 0.16, {{0.5, 0.5 + reach * 0.6}, {0.5, 0.5 + reach}});
}

} // namespace

void DrawArrowIcon(const IconSheet& icon)
{
    icon.canvas.Rotate(icon.box.Middle(), icon.value);
    FillShape(icon, "upArrow", PartOf(icon, 0.1, 0.08, 0.9, 0.92), icon.color, {40'000, 55'000});
    icon.canvas.Restore();
}

void DrawTriangleIcon(const IconSheet& icon)
{
    icon.canvas.Rotate(icon.box.Middle(), icon.value);
    FillShape(icon, "triangle", PartOf(icon, 0.1, 0.25, 0.9, 0.75), icon.color);
    icon.canvas.Restore();
}

void DrawDashIcon(const IconSheet& icon)
{
    FillShape(icon, "rect", PartOf(icon, 0.1, 0.4, 0.9, 0.6), icon.color);
}

void DrawFlagIcon(const IconSheet& icon)
{
    FillShape(icon, "rect", PartOf(icon, 0.16, 0.06, 0.26, 0.94), kDark);
    FillShape(icon, "wave", PartOf(icon, 0.26, 0.06, 0.9, 0.6), icon.color);
}

void DrawDiscIcon(const IconSheet& icon)
{
    FillShape(icon, "ellipse", PartOf(icon, 0.08, 0.08, 0.92, 0.92), icon.color);
}

void DrawRimmedLightIcon(const IconSheet& icon)
{
    FillShape(icon, "roundRect", PartOf(icon, 0.02, 0.02, 0.98, 0.98), kDark);
    FillShape(icon, "ellipse", PartOf(icon, 0.14, 0.14, 0.86, 0.86), icon.color);
}

void DrawDiamondIcon(const IconSheet& icon)
{
    FillShape(icon, "diamond", PartOf(icon, 0.03, 0.03, 0.97, 0.97), icon.color);
}

void DrawTriangleSignIcon(const IconSheet& icon)
{
    FillShape(icon, "triangle", PartOf(icon, 0.04, 0.08, 0.96, 0.92), icon.color);
}

void DrawCrossIcon(const IconSheet& icon)
{
    Cross(icon, icon.color, 0.32);
}

void DrawMarkIcon(const IconSheet& icon)
{
    ExclamationMark(icon, icon.color, 0.4);
}

void DrawCheckIcon(const IconSheet& icon)
{
    Check(icon, icon.color, 0.38);
}

void DrawCrossInDiscIcon(const IconSheet& icon)
{
    DrawDiscIcon(icon);
    Cross(icon, book::kWhite, 0.2);
}

void DrawMarkInDiscIcon(const IconSheet& icon)
{
    DrawDiscIcon(icon);
    ExclamationMark(icon, book::kWhite, 0.27);
}

void DrawCheckInDiscIcon(const IconSheet& icon)
{
    DrawDiscIcon(icon);
    Check(icon, book::kWhite, 0.25);
}

void DrawBarsIcon(const IconSheet& icon)
{
    for (int i = 0; i < 4; ++i) {
        const double left = 0.06 + i * 0.23;
        FillShape(icon, "rect", PartOf(icon, left, 0.7 - i * 0.2, left + 0.17, 0.94),
                  i < icon.value ? icon.color : kUnlit);
    }
}

void DrawQuartersIcon(const IconSheet& icon)
{
    const Box disc = PartOf(icon, 0.08, 0.08, 0.92, 0.92);
    const auto outline = MakeShape("ellipse", disc, {}).parts[0].path;
    icon.canvas.DrawPath(outline, SolidBrush(book::kWhite), {});
    if (icon.value >= 4) {
        FillShape(icon, "ellipse", disc, icon.color);
    }
    else if (icon.value > 0) { // clockwise from the top
        const double end = icon.value * 90 - 90;
        FillShape(icon, "pie", disc, icon.color,
                  {270.0 * 60'000, (end < 0 ? end + 360 : end) * 60'000});
    }
    icon.canvas.DrawPath(outline, {}, Pen{icon.color, 1, {}, 1});
}

void DrawBoxesIcon(const IconSheet& icon)
{
    // Lower left, lower right, upper right, upper left.
    constexpr std::array places{Point{0.08, 0.53}, Point{0.53, 0.53}, Point{0.53, 0.08},
                                Point{0.08, 0.08}};
    for (std::size_t i = 0; i < places.size(); ++i)
        FillShape(icon, "rect",
                  PartOf(icon, places[i].x, places[i].y, places[i].x + 0.39, places[i].y + 0.39),
                  static_cast<double>(i) < icon.value ? icon.color : kUnlit);
}

void DrawStarIcon(const IconSheet& icon)
{
    const Box box = PartOf(icon, 0.04, 0.04, 0.96, 0.96);
    const auto outline = MakeShape("star5", box, {}).parts[0].path;
    icon.canvas.DrawPath(outline, SolidBrush(icon.value >= 2 ? icon.color : book::kWhite), {});
    if (icon.value == 1) {
        icon.canvas.Clip({box.x, box.y, box.width / 2, box.height});
        icon.canvas.DrawPath(outline, SolidBrush(icon.color), {});
        icon.canvas.Restore();
    }
    icon.canvas.DrawPath(outline, {}, Pen{icon.color, 1, {}, 1});
}

} // namespace orrery::look
