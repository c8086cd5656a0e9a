#include "look/shape/shape_table.h"

#include <algorithm>
#include <array>

/// Shapes that look like bodies.
namespace orrery::look {

namespace {

constexpr double kLighter = 0.3;
constexpr double kDarker = -0.2;

void DrawCan(ShapeDraft& draft, double radius)
{
    const double w = draft.width;
    const double h = draft.height;
    draft.Part().Move(0, radius).Arc({w / 2, radius}, w / 2, radius, 180, -180);
    draft.Arc({w / 2, h - radius}, w / 2, radius, 0, 180).Close();
    draft.Part(true, true, kLighter).Ellipse({0, 0, w, 2 * radius});
    draft.Text(0, 2 * radius, w, h - radius);
}

void Can(ShapeDraft& draft)
{
    DrawCan(draft, std::min(draft.side * draft.Share(0, 0.25, 0, 1e6), draft.height / 2) / 2);
}

void MagneticDisk(ShapeDraft& draft)
{
    DrawCan(draft, draft.height / 6);
}

void Cube(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double c = draft.side * draft.Share(0, 0.25, 0, 1);
    draft.Polygon({{0, c}, {w - c, c}, {w - c, h}, {0, h}});
    draft.Part(true, true, kLighter).Move(0, c).Line(c, 0).Line(w, 0).Line(w - c, c).Close();
    draft.Part(true, true, kDarker).Move(w, 0).Line(w, h - c).Line(w - c, h).Line(w - c, c).Close();
    draft.Text(0, c, w - c, h);
}

void Bevel(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double c = draft.side * draft.Share(0, 0.125, 0, 0.5);
    draft.Polygon({{c, c}, {w - c, c}, {w - c, h - c}, {c, h - c}});
    draft.Part(true, true, kLighter).Move(0, 0).Line(w, 0).Line(w - c, c).Line(c, c).Close();
    draft.Part(true, true, kLighter / 2).Move(0, 0).Line(c, c).Line(c, h - c).Line(0, h).Close();
    draft.Part(true, true, kDarker).Move(0, h).Line(c, h - c).Line(w - c, h - c).Line(w, h).Close();
    draft.Part(true, true, 2 * kDarker);
    draft.Move(w, 0).Line(w, h).Line(w - c, h - c).Line(w - c, c).Close();
    draft.Text(c, c, w - c, h - c);
}

void FoldedCorner(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double c = draft.side * draft.Share(0, 0.16667, 0, 0.5);
    draft.Polygon({{0, 0}, {w, 0}, {w, h - c}, {w - c, h}, {0, h}});
    draft.Part(true, true, kDarker).Move(w - c, h).Line(w - c * 0.8, h - c * 0.8);
    draft.Line(w, h - c).Close();
    draft.Text(0, 0, w, h - c);
}

/// A band that hangs lower than its two ends.
void Ribbon(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double y = h * draft.Share(0, 0.16667, 0, 0.33333);
    const double half = w * draft.Share(1, 0.5, 0.25, 0.75) / 2;
    const double fold = w / 16;
    const double left = w / 2 - half;
    const double right = w / 2 + half;
    const double low = h - y;
    draft.Polygon({{0, 0}, {left + fold, 0}, {left, y}, {left, low}, {0, low}, {w / 8, low / 2}});
    draft.Polygon(
        {{w, 0}, {right - fold, 0}, {right, y}, {right, low}, {w, low}, {w * 7 / 8, low / 2}});
    draft.Part(true, true, kDarker).Move(left, y).Line(left + fold, 0).Line(left + fold, y).Close();
    draft.Part(true, true, kDarker).Move(right, y).Line(right - fold, 0);
    draft.Line(right - fold, y).Close();
    draft.Polygon({{left, y}, {right, y}, {right, h}, {left, h}});
    draft.Text(left, y, right, h);
}

constexpr std::array kBlockShapes{
    ShapeRule{"can", Can},
    ShapeRule{"flowChartMagneticDisk", MagneticDisk},
    ShapeRule{"flowChartMagneticDrum", MagneticDisk, ShapeTurn::TransposeMirrorX},
    ShapeRule{"cube", Cube},
    ShapeRule{"bevel", Bevel},
    ShapeRule{"foldedCorner", FoldedCorner},
    ShapeRule{"ribbon", Ribbon},
    ShapeRule{"ribbon2", Ribbon, ShapeTurn::MirrorY}};

} // namespace

std::span<const ShapeRule> BlockShapes()
{
    return kBlockShapes;
}

} // namespace orrery::look
