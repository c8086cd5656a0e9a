#pragma once

#include "look/canvas/canvas.h"

#include <vector>

namespace orrery::look {

/// One of the parallel lines that a line style consists of.
struct Stroke {
    double shift = 0; ///< of its middle, across the line: down or right
    double begin = 0; ///< where it begins, along the line
    double width = 1;
    std::vector<double> dashes;
};

/// How wide a line is as a whole, in pixels: 0 for none.
double LineWidth(book::LineStyle style);

/// The strokes of a line.
std::vector<Stroke> StrokesOf(book::LineStyle style);

/// Which of two lines lies over the other where they cross: the higher one.
int LineRank(book::LineStyle style);

} // namespace orrery::look
