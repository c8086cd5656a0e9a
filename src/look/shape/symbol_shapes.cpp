#include "look/shape/cloud.h"
#include "look/shape/shape_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace orrery::look {

void DrawCloud(ShapeDraft& draft)
{
    // Bumps between points of an ellipse; the angles are uneven, as clouds are.
    static constexpr std::array kAngles{8.0,   48.0,  82.0,  125.0, 168.0,
                                        200.0, 238.0, 268.0, 300.0, 333.0};
    const double x = draft.width / 2;
    const double y = draft.height / 2;
    const auto at = [&](double degrees, double reach) {
        const double angle = degrees * std::numbers::pi / 180;
        return Point{x + x * reach * std::cos(angle), y + y * reach * std::sin(angle)};
    };
    constexpr double kBase = 0.82;
    constexpr double kBump = 1.12;
    draft.Part();
    const Point begin = at(kAngles[0], kBase);
    draft.Move(begin.x, begin.y);
    for (std::size_t i = 0; i < kAngles.size(); ++i) {
        const double from = kAngles[i];
        const double to = i + 1 < kAngles.size() ? kAngles[i + 1] : kAngles[0] + 360;
        draft.Curve(at(from + (to - from) * 0.1, kBump), at(to - (to - from) * 0.1, kBump),
                    at(to, kBase));
    }
    draft.Close();
    draft.Text(x * 0.35, y * 0.4, x * 1.65, y * 1.6);
}

namespace {

void Heart(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    draft.Part().Move(w / 2, h / 4);
    draft.Curve({w * 0.71, -h / 3}, {w * 1.52, h / 4}, {w / 2, h});
    draft.Curve({-w * 0.52, h / 4}, {w * 0.29, -h / 3}, {w / 2, h / 4}).Close();
    draft.Text(w / 6, h / 4, w * 5 / 6, h * 2 / 3);
}

void LightningBolt(ShapeDraft& draft)
{
    static constexpr std::array<Point, 11> kCorners{{{39, 0},
                                                     {60, 28},
                                                     {51, 31},
                                                     {77, 56},
                                                     {68, 60},
                                                     {100, 100},
                                                     {46, 69},
                                                     {57, 65},
                                                     {23, 45},
                                                     {35, 39},
                                                     {0, 18}}};
    draft.Part();
    for (const auto& corner : kCorners) {
        const Point at{corner.x * draft.width / 100, corner.y * draft.height / 100};
        if (&corner == kCorners.data())
            draft.Move(at.x, at.y);
        else
            draft.Line(at.x, at.y);
    }
    draft.Close();
}

void Moon(ShapeDraft& draft)
{
    const double w = draft.width;
    const double y = draft.height / 2;
    const double inner = w * (1 - draft.Share(0, 0.5, 0, 0.875));
    draft.Part().Move(w, 0).Arc({w, y}, w, y, 270, -180);
    draft.Arc({w, y}, inner, y, 90, 180).Close();
}

void Cloud(ShapeDraft& draft)
{
    DrawCloud(draft);
}

/// Open at the right.
void Bracket(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double r = std::min(draft.side * draft.Share(0, 0.08333, 0, 1e6), h / 2);
    for (const bool isFill : {true, false}) {
        draft.Part(isFill, !isFill).Move(w, h).Arc({w, h - r}, w, r, 90, 90);
        draft.Arc({w, r}, w, r, 180, 90);
    }
}

void AddBrace(ShapeDraft& draft, double left, double right, double r, double y)
{
    const double h = draft.height;
    const double rx = std::abs(right - left) / 2;
    const bool opensRight = right > left;
    const double back = opensRight ? 180 : 0;
    const double turn = opensRight ? 90 : -90;
    draft.Move(right, h).Arc({right, h - r}, rx, r, 90, turn);
    draft.Arc({left, y + r}, rx, r, 180 - back, -turn);
    draft.Arc({left, y - r}, rx, r, 90, -turn);
    draft.Arc({right, r}, rx, r, back, turn);
}

void Brace(ShapeDraft& draft)
{
    const double h = draft.height;
    const double place = h * draft.Share(1, 0.5, 0, 1);
    const double most = std::min(place, h - place) / 2;
    const double r = std::min(draft.side * draft.Share(0, 0.08333, 0, 1e6), most);
    for (const bool isFill : {true, false}) {
        draft.Part(isFill, !isFill);
        AddBrace(draft, 0, draft.width, r, place);
    }
}

void BracketPair(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double r = draft.side * draft.Share(0, 0.16667, 0, 0.5);
    draft.Part(true, false).Move(r, 0).Arc({w - r, r}, r, r, 270, 90);
    draft.Arc({w - r, h - r}, r, r, 0, 90).Arc({r, h - r}, r, r, 90, 90);
    draft.Arc({r, r}, r, r, 180, 90).Close();
    draft.Part(false, true).Move(r, h).Arc({r, h - r}, r, r, 90, 90).Arc({r, r}, r, r, 180, 90);
    draft.Move(w - r, 0).Arc({w - r, r}, r, r, 270, 90).Arc({w - r, h - r}, r, r, 0, 90);
}

void BracePair(ShapeDraft& draft)
{
    const double w = draft.width;
    const double r = draft.side * draft.Share(0, 0.08333, 0, 0.25);
    draft.Part(false, true);
    AddBrace(draft, 0, 2 * r, r, draft.height / 2);
    AddBrace(draft, w, w - 2 * r, r, draft.height / 2);
    draft.Text(2 * r, r, w - 2 * r, draft.height - r);
}

constexpr std::array kSymbolShapes{ShapeRule{"heart", Heart},
                                   ShapeRule{"lightningBolt", LightningBolt},
                                   ShapeRule{"moon", Moon},
                                   ShapeRule{"cloud", Cloud},
                                   ShapeRule{"leftBracket", Bracket},
                                   ShapeRule{"rightBracket", Bracket, ShapeTurn::MirrorX},
                                   ShapeRule{"leftBrace", Brace},
                                   ShapeRule{"rightBrace", Brace, ShapeTurn::MirrorX},
                                   ShapeRule{"bracketPair", BracketPair},
                                   ShapeRule{"bracePair", BracePair}};

} // namespace

std::span<const ShapeRule> SymbolShapes()
{
    return kSymbolShapes;
}

} // namespace orrery::look
