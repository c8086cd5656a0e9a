#include "engines/builtin/xlsx/look/style/border_reader.h"

#include "engines/builtin/xlsx/look/style/attributes.h"
#include "engines/builtin/xml/reading.h"

#include <optional>

namespace orrery::xlsx {
namespace {

using book::BorderLine;
using book::LineStyle;

/// ECMA-376 18.18.3
constexpr Words<LineStyle, 13> kLines = {{
    {"thin", LineStyle::Thin},
    {"medium", LineStyle::Medium},
    {"dashed", LineStyle::Dashed},
    {"dotted", LineStyle::Dotted},
    {"thick", LineStyle::Thick},
    {"double", LineStyle::Double},
    {"hair", LineStyle::Hair},
    {"mediumDashed", LineStyle::MediumDashed},
    {"dashDot", LineStyle::DashDot},
    {"mediumDashDot", LineStyle::MediumDashDot},
    {"dashDotDot", LineStyle::DashDotDot},
    {"mediumDashDotDot", LineStyle::MediumDashDotDot},
    {"slantDashDot", LineStyle::SlantDashDot},
}};

BorderLine ReadLine(xml::Scanner& scanner, const ColorScheme& scheme)
{
    BorderLine line;
    line.style = WordAttribute(scanner, "style", kLines).value_or(LineStyle::None);
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "color" && line.style != LineStyle::None)
            line.color = ReadColor(scanner, scheme);
        scanner.SkipElement();
    });
    return line;
}

/// The side that an element describes; nullptr for others. The strict form calls left "start".
BorderLine* SideOf(book::Border& border, std::string_view name)
{
    if (name == "left" || name == "start")
        return &border.left;
    if (name == "right" || name == "end")
        return &border.right;
    if (name == "top")
        return &border.top;
    if (name == "bottom")
        return &border.bottom;
    return name == "diagonal" ? &border.diagonal : nullptr;
}

std::optional<BorderLine>* SideOf(book::PartialStyle& style, std::string_view name)
{
    if (name == "left" || name == "start")
        return &style.left;
    if (name == "right" || name == "end")
        return &style.right;
    if (name == "top")
        return &style.top;
    if (name == "bottom")
        return &style.bottom;
    if (name == "horizontal")
        return &style.innerHorizontal;
    return name == "vertical" ? &style.innerVertical : nullptr;
}

template <typename Style>
void ReadSides(xml::Scanner& scanner, const ColorScheme& scheme, Style& style)
{
    xml::ForEachChild(scanner, [&] {
        if (auto* side = SideOf(style, scanner.LocalName()))
            *side = ReadLine(scanner, scheme);
        else
            scanner.SkipElement();
    });
}

} // namespace

book::Border ReadBorder(xml::Scanner& scanner, const ColorScheme& scheme)
{
    book::Border border;
    border.diagonalUp = FlagAttribute(scanner, "diagonalUp", false);
    border.diagonalDown = FlagAttribute(scanner, "diagonalDown", false);
    ReadSides(scanner, scheme, border);
    return border;
}

void ReadPartialBorder(xml::Scanner& scanner, const ColorScheme& scheme, book::PartialStyle& style)
{
    ReadSides(scanner, scheme, style);
}

} // namespace orrery::xlsx
