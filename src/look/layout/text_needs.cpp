#include "look/layout/text_needs.h"

#include "look/layout/metrics.h"
#include "look/layout/styled_text.h"
#include "look/text/characters.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace orrery::look {

using book::HorizontalAlignment;
using book::VerticalAlignment;

bool IsRightToLeftText(const CellDisplay& display)
{
    switch (display.style->alignment.readingOrder) {
    case book::ReadingOrder::LeftToRight:
        return false;
    case book::ReadingOrder::RightToLeft:
        return true;
    case book::ReadingOrder::Context:
        break;
    }
    return BeginsRightToLeft(display.text);
}

bool IsSpread(HorizontalAlignment alignment)
{
    return alignment == HorizontalAlignment::Justify ||
           alignment == HorizontalAlignment::Distributed;
}

bool IsWrapped(const CellDisplay& display)
{
    const book::Alignment& alignment = display.style->alignment;
    return !display.isNumber && (alignment.wrap || IsSpread(display.horizontal) ||
                                 alignment.vertical == VerticalAlignment::Justify ||
                                 alignment.vertical == VerticalAlignment::Distributed);
}

bool MayOverflow(const CellDisplay& display)
{
    const book::Alignment& alignment = display.style->alignment;
    return !display.isNumber && !IsWrapped(display) && !alignment.shrink &&
           alignment.rotation == 0 && display.horizontal != HorizontalAlignment::Fill &&
           !display.fillAt;
}

HorizontalAlignment DrawnAlignment(const CellDisplay& display)
{
    if (display.horizontal != HorizontalAlignment::General)
        return display.horizontal;
    return IsRightToLeftText(display) ? HorizontalAlignment::Right : HorizontalAlignment::Left;
}

double OneLineWidth(const CellDisplay& display, const TextRoom& room)
{
    constexpr std::size_t kMostBytes = 4096; // wider than any column
    if (display.text.empty())
        return 0;
    const StyledText text(display.text.substr(0, kMostBytes), display.style->font, display.runs,
                          *room.measure);
    const double indent = room.indentWidth * std::max<double>(display.style->alignment.indent, 0);
    return text.Width(text.All()) + indent + 2 * kCellMargin;
}

double FittingHeight(const CellDisplay& display, double width, const TextRoom& room)
{
    const StyledText text(display.text, display.style->font, display.runs, *room.measure);
    const std::int16_t rotation = display.style->alignment.rotation;
    const double line = std::max(text.Metrics(text.All()).rowHeight,
                                 FittingRowHeight(display.style->font, *room.measure));
    if (rotation == book::Alignment::kStacked || rotation == 0) {
        if (!IsWrapped(display) || rotation != 0)
            return line;
        const double indent =
            room.indentWidth * std::max<double>(display.style->alignment.indent, 0);
        const double lineRoom = std::max(width - 2 * kCellMargin - indent, 0.0);
        return line * static_cast<double>(text.Break(lineRoom).size());
    }
    const double angle = std::clamp<double>(rotation, -90, 90) * std::numbers::pi / 180;
    return text.Width(text.All()) * std::abs(std::sin(angle)) + line * std::cos(angle) +
           2 * kCellMargin;
}

} // namespace orrery::look
