#include "engines/builtin/xls/look/styles/look_colors.h"

#include "engines/builtin/common/tint.h"
#include "engines/builtin/xls/look/styles/theme_record.h"

#include <algorithm>

namespace orrery::xls {
namespace {

constexpr std::uint32_t kWindowText = 64;
constexpr std::uint32_t kWindowBackground = 65;
constexpr std::size_t kFixedColors = 8; // no palette changes them

book::Color FromBytes(std::uint32_t redFirst)
{
    return {static_cast<std::uint8_t>(redFirst & 0xFFU),
            static_cast<std::uint8_t>(redFirst >> 8U & 0xFFU),
            static_cast<std::uint8_t>(redFirst >> 16U & 0xFFU)};
}

} // namespace

void LookColors::SetPalette(std::string_view data)
{
    ByteCursor cursor(data);
    const std::size_t count = cursor.U16();
    const std::size_t end = std::min(kFixedColors + count, palette_.size());
    for (std::size_t i = kFixedColors; i < end && cursor.Left() >= 4; ++i)
        palette_[i] = FromBytes(cursor.U32());
}

void LookColors::SetTheme(std::string_view data)
{
    theme_ = ReadThemeRecord(data);
}

std::optional<book::Color> LookColors::Indexed(std::uint32_t icv, ColorUse use) const
{
    if (icv == kWindowText && use == ColorUse::Background)
        return book::kBlack;
    if (icv == kWindowBackground && use == ColorUse::Line)
        return book::kWhite;
    return builtin::PaletteColor(palette_, icv);
}

std::optional<book::Color> LookColors::Full(const FullColor& color, ColorUse use) const
{
    std::optional<book::Color> plain;
    if (color.kind == FullColor::Indexed)
        plain = Indexed(color.value, use);
    else if (color.kind == FullColor::Rgb)
        plain = FromBytes(color.value);
    else if (color.kind == FullColor::Theme)
        plain = theme_.ByIndex(color.value);
    return plain ? std::optional(builtin::ApplyTint(*plain, color.tint)) : std::nullopt;
}

} // namespace orrery::xls
