#include "engines/builtin/xls/look/drawing/art_colors.h"

#include <array>

namespace orrery::xls {
namespace {

// [MS-ODRAW] 2.2.2
constexpr std::uint32_t kIsInPalette = 0x01000000;
constexpr std::uint32_t kIsInScheme = 0x08000000;
constexpr std::uint32_t kIsOfSystem = 0x10000000;
constexpr std::uint32_t kFirstOfShape = 0xF0;

/// The usual colours of the system by [MS-ODRAW] 2.4.31 (MSOSYSCOLORINDEX).
constexpr std::array<book::Color, 20> kSystemColors = {
    {{0xF0, 0xF0, 0xF0}, book::kBlack,       {0xF0, 0xF0, 0xF0}, {0x00, 0x78, 0xD7},
     book::kWhite,       book::kBlack,       {0x99, 0xB4, 0xD1}, book::kWhite,
     {0xA0, 0xA0, 0xA0}, book::kBlack,       {0x6D, 0x6D, 0x6D}, {0xBF, 0xCD, 0xDB},
     book::kBlack,       {0xFF, 0xFF, 0xE1}, book::kBlack,       book::kBlack,
     {0xC8, 0xC8, 0xC8}, book::kWhite,       {0x64, 0x64, 0x64}, {0xE3, 0xE3, 0xE3}}};

/// Makes a colour darker (towards black) or lighter (towards white); 255 leaves it as it is.
book::Color Shade(book::Color color, unsigned function, unsigned amount)
{
    constexpr unsigned kDarken = 1;
    constexpr unsigned kLighten = 2;
    const auto change = [&](std::uint8_t part) {
        if (function == kDarken)
            return static_cast<std::uint8_t>(part * amount / 255U);
        if (function == kLighten)
            return static_cast<std::uint8_t>(255U - (255U - part) * amount / 255U);
        return part;
    };
    return {change(color.red), change(color.green), change(color.blue)};
}

} // namespace

book::Color ArtColors::Find(ShapeProperty property, book::Color fallback) const
{
    const auto value = properties_.Find(property);
    return value ? Resolve(*value) : fallback;
}

book::Color ArtColors::Resolve(std::uint32_t value, int depth) const
{
    if ((value & kIsOfSystem) != 0) {
        const std::uint32_t index = value & 0xFF;
        const book::Color color = index >= kFirstOfShape         ? OfShape(index, depth)
                                  : index < kSystemColors.size() ? kSystemColors[index]
                                                                 : book::kBlack;
        return Shade(color, value >> 8 & 0x0F, value >> 16 & 0xFF);
    }
    if ((value & (kIsInScheme | kIsInPalette)) != 0)
        return Indexed(value & 0xFFFF);
    return {static_cast<std::uint8_t>(value & 0xFF), static_cast<std::uint8_t>(value >> 8 & 0xFF),
            static_cast<std::uint8_t>(value >> 16 & 0xFF)};
}

book::Color ArtColors::Indexed(std::uint32_t index) const
{
    if (const auto color = styles_.color(index))
        return *color;
    switch (index) { // [MS-XLS] 2.5.161
    case 0x41:       // background of windows
    case 0x4E:       // of charts
        return book::kWhite;
    case 0x43: // of dialogs
        return {0xF0, 0xF0, 0xF0};
    case 0x50: // of tool tips
        return {0xFF, 0xFF, 0xE1};
    default:
        return book::kBlack;
    }
}

/// A colour that is another one of the shape.
book::Color ArtColors::OfShape(std::uint32_t index, int depth) const
{
    constexpr int kMostSteps = 4;
    const auto find = [&](ShapeProperty property, std::uint32_t fallback) {
        const std::uint32_t value = properties_.Value(property, fallback);
        return depth < kMostSteps ? Resolve(value, depth + 1) : book::kBlack;
    };
    constexpr std::uint32_t kWhiteValue = 0xFFFFFF;
    switch (index) {
    case 0xF2: // the line
    case 0xF1: // the line, if there is one
        return find(ShapeProperty::LineColor, 0);
    case 0xF5: // the background of the fill
        return find(ShapeProperty::FillBackColor, kWhiteValue);
    case 0xF6: // the background of the line
        return find(ShapeProperty::LineBackColor, kWhiteValue);
    default:
        return find(ShapeProperty::FillColor, kWhiteValue);
    }
}

} // namespace orrery::xls
