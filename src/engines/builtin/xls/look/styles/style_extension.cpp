#include "engines/builtin/xls/look/styles/style_extension.h"

#include "util/error.h"

#include <algorithm>

namespace orrery::xls {
namespace {

using book::LineStyle;

constexpr std::size_t kPropertyHead = 4; // type and size
constexpr std::int16_t kMostIndent = 250;
constexpr std::size_t kMostStops = 256;

/// [MS-XLS] 2.5.108
enum Property : std::uint16_t {
    Foreground = 4,
    Background = 5,
    GradientFill = 6,
    Top = 7,
    Bottom = 8,
    Left = 9,
    Right = 10,
    Diagonal = 11,
    Text = 13,
    Indent = 15
};

FullColor ReadFullColor(ByteCursor cursor)
{
    constexpr double kWholeTint = 32767;
    FullColor color;
    color.kind = cursor.U16();
    color.tint = cursor.I16() / kWholeTint;
    color.value = cursor.U32();
    return color;
}

double Share(double value)
{
    return value >= 0 && value <= 1 ? value : 0; // and no NaN
}

/// [MS-XLS] 2.5.352 (XFExtGradient)
book::Gradient ReadGradient(ByteCursor cursor, const LookColors& colors)
{
    book::Gradient gradient;
    gradient.isPath = cursor.U32() == 1;
    const double degree = cursor.Double();
    gradient.degree = degree >= -360 && degree <= 360 ? degree : 0;
    gradient.left = Share(cursor.Double());
    gradient.right = Share(cursor.Double());
    gradient.top = Share(cursor.Double());
    gradient.bottom = Share(cursor.Double());
    const std::size_t stops = std::min<std::size_t>(cursor.U32(), kMostStops);
    for (std::size_t i = 0; i < stops; ++i) {
        FullColor color;
        color.kind = cursor.U16();
        color.value = cursor.U32();
        const double position = Share(cursor.Double());
        color.tint = cursor.Double();
        gradient.stops.push_back(
            {position, colors.Full(color, ColorUse::Background).value_or(book::kWhite)});
    }
    std::stable_sort(gradient.stops.begin(), gradient.stops.end(),
                     [](const auto& a, const auto& b) { return a.position < b.position; });
    return gradient;
}

std::optional<FullColor>* ColorOf(StyleExtension& extension, std::uint16_t type)
{
    switch (type) {
    case Foreground:
        return &extension.foreground;
    case Background:
        return &extension.background;
    case Top:
        return &extension.top;
    case Bottom:
        return &extension.bottom;
    case Left:
        return &extension.left;
    case Right:
        return &extension.right;
    case Diagonal:
        return &extension.diagonal;
    case Text:
        return &extension.text;
    default:
        return nullptr;
    }
}

void ReadProperty(StyleExtension& extension, std::uint16_t type, std::string_view data,
                  const LookColors& colors)
{
    if (auto* place = ColorOf(extension, type)) {
        if (const auto color = ReadFullColor(ByteCursor(data)); color.kind < FullColor::NotSet)
            *place = color;
    }
    else if (type == GradientFill) {
        extension.gradient = ReadGradient(ByteCursor(data), colors);
    }
    else if (type == Indent) {
        const auto indent = ByteCursor(data).U16();
        extension.indent = static_cast<std::int16_t>(std::min<int>(indent, kMostIndent));
    }
}

void SetColor(book::BorderLine& line, const std::optional<FullColor>& color,
              const LookColors& colors)
{
    if (color && line.style != LineStyle::None)
        line.color = colors.Full(*color, ColorUse::Line);
}

void SetColor(std::optional<book::BorderLine>& line, const std::optional<FullColor>& color,
              const LookColors& colors)
{
    if (line)
        SetColor(*line, color, colors);
}

template <typename Lines>
void ExtendLines(Lines& lines, const StyleExtension& extension, const LookColors& colors)
{
    SetColor(lines.top, extension.top, colors);
    SetColor(lines.bottom, extension.bottom, colors);
    SetColor(lines.left, extension.left, colors);
    SetColor(lines.right, extension.right, colors);
}

void ExtendFill(book::Fill& fill, const StyleExtension& extension, const LookColors& colors)
{
    const bool isSolid = fill.pattern == book::FillPattern::Solid;
    if (extension.gradient && !extension.gradient->stops.empty())
        fill.gradient = extension.gradient;
    if (fill.pattern == book::FillPattern::None)
        return;
    if (extension.foreground) {
        fill.foreground =
            colors.Full(*extension.foreground, isSolid ? ColorUse::Background : ColorUse::Line);
    }
    if (extension.background && !isSolid)
        fill.background = colors.Full(*extension.background, ColorUse::Background);
}

} // namespace

StyleExtension ReadStyleExtension(ByteCursor& cursor, std::size_t count, const LookColors& colors)
{
    StyleExtension extension;
    try {
        for (std::size_t i = 0; i < count; ++i) {
            const auto type = cursor.U16();
            const std::size_t size = cursor.U16();
            if (size < kPropertyHead)
                break;
            ReadProperty(extension, type, cursor.Take(size - kPropertyHead), colors);
        }
    }
    catch (const util::Error&) {
        // the properties before it count
    }
    return extension;
}

void Extend(book::CellStyle& style, const StyleExtension& extension, const LookColors& colors)
{
    ExtendLines(style.border, extension, colors);
    SetColor(style.border.diagonal, extension.diagonal, colors);
    ExtendFill(style.fill, extension, colors);
    if (extension.text)
        style.font.color = colors.Full(*extension.text, ColorUse::Line);
    if (extension.indent)
        style.alignment.indent = *extension.indent;
}

void Extend(book::PartialStyle& style, const StyleExtension& extension, const LookColors& colors)
{
    ExtendLines(style, extension, colors);
    if (style.fill || extension.gradient) {
        // The colour of a solid fill is its background in conditional formats.
        StyleExtension swapped = extension;
        if (!style.fill)
            style.fill.emplace();
        if (style.fill->pattern == book::FillPattern::Solid && extension.background)
            swapped.foreground = extension.background;
        ExtendFill(*style.fill, swapped, colors);
    }
    if (extension.text)
        style.fontColor = colors.Full(*extension.text, ColorUse::Line);
}

} // namespace orrery::xls
