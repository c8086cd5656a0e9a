#include "look/shape/shape_table.h"

#include <array>
#include <cmath>
#include <numbers>

namespace orrery::look {

namespace {

/// A point upwards first; the inner corners lie at a share of the outer ones' distance.
void DrawStar(ShapeDraft& draft, int points, double inner)
{
    const double x = draft.width / 2;
    const double y = draft.height / 2;
    draft.Part();
    for (int i = 0; i < 2 * points; ++i) {
        const double turn = i * std::numbers::pi / points;
        const double reach = i % 2 == 0 ? 1 : inner;
        const Point at{x + x * reach * std::sin(turn), y - y * reach * std::cos(turn)};
        if (i == 0)
            draft.Move(at.x, at.y);
        else
            draft.Line(at.x, at.y);
    }
    draft.Close();
    const double inset = inner * std::numbers::sqrt2 / 2;
    draft.Text(x * (1 - inset), y * (1 - inset), x * (1 + inset), y * (1 + inset));
}

/// The adjustment is a share of the whole width; by default in percent of it.
template <int kPoints, int kHundredthPercent> void Star(ShapeDraft& draft)
{
    DrawStar(draft, kPoints, 2 * draft.Share(0, kHundredthPercent / 1e4, 0, 0.5));
}

void FiveStar(ShapeDraft& draft)
{
    // Its outer corners touch the box at all sides.
    DrawStar(draft, 5, 2 * draft.Share(0, 0.19098, 0, 0.5));
    const double stretchX = 1 / std::sin(72 * std::numbers::pi / 180);
    const double stretchY = 2 / (1 + std::cos(36 * std::numbers::pi / 180));
    for (auto& step : draft.shape.parts.back().path) {
        step.point.x = draft.width / 2 + (step.point.x - draft.width / 2) * stretchX;
        step.point.y *= stretchY;
    }
}

template <int kPoints> void Burst(ShapeDraft& draft)
{
    DrawStar(draft, kPoints, 0.68);
}

void Sun(ShapeDraft& draft)
{
    const double size = draft.Share(0, 0.25, 0.125, 0.46875);
    const double x = draft.width / 2;
    const double y = draft.height / 2;
    const double radius = 1 - 2 * size; // of the disc, in half boxes
    constexpr double kHalfRay = 13 * std::numbers::pi / 180;
    for (int i = 0; i < 8; ++i) {
        const double turn = i * std::numbers::pi / 4;
        const auto at = [&](double angle, double reach) {
            return Point{x + x * reach * std::cos(angle), y + y * reach * std::sin(angle)};
        };
        const double base = radius + (1 - radius) * 0.25;
        draft.Polygon({at(turn, 1), at(turn + kHalfRay, base), at(turn - kHalfRay, base)});
    }
    draft.Part().Ellipse({x * (1 - radius), y * (1 - radius), 2 * x * radius, 2 * y * radius});
    const double inset = radius * std::numbers::sqrt2 / 2;
    draft.Text(x * (1 - inset), y * (1 - inset), x * (1 + inset), y * (1 + inset));
}

constexpr std::array kStarShapes{ShapeRule{"star4", Star<4, 1250>},
                                 ShapeRule{"star5", FiveStar},
                                 ShapeRule{"star6", Star<6, 2887>},
                                 ShapeRule{"star7", Star<7, 3460>},
                                 ShapeRule{"star8", Star<8, 3750>},
                                 ShapeRule{"star10", Star<10, 4253>},
                                 ShapeRule{"star12", Star<12, 3750>},
                                 ShapeRule{"star16", Star<16, 3750>},
                                 ShapeRule{"star24", Star<24, 3750>},
                                 ShapeRule{"star32", Star<32, 3750>},
                                 ShapeRule{"irregularSeal1", Burst<11>},
                                 ShapeRule{"irregularSeal2", Burst<14>},
                                 ShapeRule{"sun", Sun}};

} // namespace

std::span<const ShapeRule> StarShapes()
{
    return kStarShapes;
}

} // namespace orrery::look
