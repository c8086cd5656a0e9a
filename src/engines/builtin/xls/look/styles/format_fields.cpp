#include "engines/builtin/xls/look/styles/format_fields.h"

namespace orrery::xls {
namespace {

constexpr std::size_t kAlignmentAt = 6;
constexpr std::size_t kLinesAt = 10;
constexpr std::size_t kMoreLinesAt = 14;
constexpr std::size_t kFillAt = 18;

/// Bits [low:low + count) of a field.
constexpr std::uint32_t Bits(std::uint32_t field, unsigned low, unsigned count)
{
    return field >> low & ((1U << count) - 1U);
}

std::int16_t RotationOf(std::uint32_t value)
{
    if (value <= 90)
        return static_cast<std::int16_t>(value);
    if (value <= 180)
        return static_cast<std::int16_t>(90 - static_cast<int>(value));
    return value == 255 ? book::Alignment::kStacked : std::int16_t{0};
}

book::Alignment ReadAlignment(std::uint32_t field)
{
    book::Alignment alignment;
    alignment.horizontal = static_cast<book::HorizontalAlignment>(Bits(field, 0, 3));
    alignment.wrap = Bits(field, 3, 1) != 0;
    const std::uint32_t vertical = Bits(field, 4, 3);
    if (vertical <= static_cast<std::uint32_t>(book::VerticalAlignment::Distributed))
        alignment.vertical = static_cast<book::VerticalAlignment>(vertical);
    alignment.rotation = RotationOf(Bits(field, 8, 8));
    alignment.indent = static_cast<std::int16_t>(Bits(field, 16, 4));
    alignment.shrink = Bits(field, 20, 1) != 0;
    const std::uint32_t order = Bits(field, 22, 2);
    if (order <= static_cast<std::uint32_t>(book::ReadingOrder::RightToLeft))
        alignment.readingOrder = static_cast<book::ReadingOrder>(order);
    return alignment;
}

book::Border ReadBorder(std::uint32_t lines, std::uint32_t more, const LookColors& colors)
{
    book::Border border;
    border.left = LineOf(Bits(lines, 0, 4), Bits(lines, 16, 7), colors);
    border.right = LineOf(Bits(lines, 4, 4), Bits(lines, 23, 7), colors);
    border.top = LineOf(Bits(lines, 8, 4), Bits(more, 0, 7), colors);
    border.bottom = LineOf(Bits(lines, 12, 4), Bits(more, 7, 7), colors);
    border.diagonalDown = Bits(lines, 30, 1) != 0;
    border.diagonalUp = Bits(lines, 31, 1) != 0;
    if (border.diagonalDown || border.diagonalUp)
        border.diagonal = LineOf(Bits(more, 21, 4), Bits(more, 14, 7), colors);
    return border;
}

book::Fill ReadFill(std::uint32_t pattern, std::uint32_t fields, const LookColors& colors)
{
    book::Fill fill;
    fill.pattern = PatternOf(pattern);
    const std::uint32_t foreground = Bits(fields, 0, 7);
    if (fill.pattern == book::FillPattern::Solid) {
        fill.foreground = colors.Indexed(foreground, ColorUse::Background);
        // The colour of the window is not the automatic one of a fill: it hides the grid lines.
        if (!fill.foreground)
            fill.foreground = book::kWhite;
    }
    else if (fill.pattern != book::FillPattern::None) {
        fill.foreground = colors.Indexed(foreground, ColorUse::Line);
        fill.background = colors.Indexed(Bits(fields, 7, 7), ColorUse::Background);
    }
    return fill;
}

} // namespace

book::LineStyle LineStyleOf(std::uint32_t value)
{
    constexpr auto kLast = static_cast<std::uint32_t>(book::LineStyle::SlantDashDot);
    return value <= kLast ? static_cast<book::LineStyle>(value) : book::LineStyle::Thin;
}

book::BorderLine LineOf(std::uint32_t style, std::uint32_t color, const LookColors& colors)
{
    book::BorderLine line;
    line.style = LineStyleOf(style);
    if (line.style != book::LineStyle::None)
        line.color = colors.Indexed(color, ColorUse::Line);
    return line;
}

book::FillPattern PatternOf(std::uint32_t value)
{
    constexpr auto kLast = static_cast<std::uint32_t>(book::FillPattern::Gray0625);
    return value <= kLast ? static_cast<book::FillPattern>(value) : book::FillPattern::None;
}

void ReadFormatFields(std::string_view data, const LookColors& colors, book::CellStyle& style)
{
    style.alignment = ReadAlignment(ReadU32(data, kAlignmentAt));
    const std::uint32_t more = ReadU32(data, kMoreLinesAt);
    style.border = ReadBorder(ReadU32(data, kLinesAt), more, colors);
    style.fill = ReadFill(Bits(more, 26, 6), ReadU16(data, kFillAt), colors);
}

} // namespace orrery::xls
