#pragma once

#include "look/layout/layout.h"
#include "look/text/text_measure.h"

namespace orrery::look {

/// The margin between a cell's edges and its text, in pixels: 20 twips.
inline constexpr double kCellMargin = 20.0 / 15;

/// How far a text may leave its cell, and what it is measured with.
struct TextRoom {
    double left = 0;        ///< of the sheet: where the empty neighbours begin
    double right = 0;       ///< and where they end
    double indentWidth = 0; ///< of one step
    const TextMeasure* measure = nullptr;
};

/// Whether the text is read from right to left: as its style says, else as it begins.
bool IsRightToLeftText(const CellDisplay& display);
/// Whether the words of a line are spread over its room.
bool IsSpread(book::HorizontalAlignment alignment);
/// Whether the text is broken into lines.
bool IsWrapped(const CellDisplay& display);
/// Whether the text may be drawn over empty neighbours.
bool MayOverflow(const CellDisplay& display);
/// The alignment at which the text is drawn: a text that begins with letters from right to left is
/// at the right, unless its style says otherwise.
book::HorizontalAlignment DrawnAlignment(const CellDisplay& display);
/// How wide a cell must be to hold its text in one line. Of long texts the beginning counts.
double OneLineWidth(const CellDisplay& display, const TextRoom& room);
/// The height that the text needs in a row that is made to fit, in a cell of that width.
double FittingHeight(const CellDisplay& display, double width, const TextRoom& room);

} // namespace orrery::look
