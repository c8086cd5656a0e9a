#pragma once

#include "look/canvas/canvas.h"

namespace orrery::look {

/// What a drawing of an icon gets.
struct IconSheet {
    const Box& box;
    book::Color color;
    double value; ///< an angle, or a count
    Canvas& canvas;
};
using IconDrawing = void (*)(const IconSheet&);

void DrawArrowIcon(const IconSheet& icon);
void DrawTriangleIcon(const IconSheet& icon);
void DrawDashIcon(const IconSheet& icon);
void DrawFlagIcon(const IconSheet& icon);
void DrawDiscIcon(const IconSheet& icon);
void DrawRimmedLightIcon(const IconSheet& icon);
void DrawDiamondIcon(const IconSheet& icon);
void DrawTriangleSignIcon(const IconSheet& icon);
void DrawCrossIcon(const IconSheet& icon);
void DrawMarkIcon(const IconSheet& icon);
void DrawCheckIcon(const IconSheet& icon);
void DrawCrossInDiscIcon(const IconSheet& icon);
void DrawMarkInDiscIcon(const IconSheet& icon);
void DrawCheckInDiscIcon(const IconSheet& icon);
void DrawBarsIcon(const IconSheet& icon);
void DrawQuartersIcon(const IconSheet& icon);
void DrawBoxesIcon(const IconSheet& icon);
void DrawStarIcon(const IconSheet& icon);

} // namespace orrery::look
