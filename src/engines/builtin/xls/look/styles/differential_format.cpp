#include "engines/builtin/xls/look/styles/differential_format.h"

#include "engines/builtin/xls/look/styles/format_fields.h"
#include "engines/builtin/xls/look/styles/style_extension.h"
#include "engines/builtin/xls/records/unicode_string.h"

#include <string>

namespace orrery::xls {
namespace {

/// Which blocks follow, and which of their properties are left as they are. [MS-XLS] 2.5.92
struct Flags {
    std::uint32_t bits = 0;
    std::uint16_t more = 0;

    bool HasBlock(unsigned bit) const { return (bits >> bit & 1U) != 0; }
    bool IsSet(unsigned notBit) const { return (bits >> notBit & 1U) == 0; }
    bool HasOwnNumberFormat() const { return (more & 1U) != 0; }
};
// Bits of the properties that are not set.
constexpr unsigned kNotLeft = 10;
constexpr unsigned kNotRight = 11;
constexpr unsigned kNotTop = 12;
constexpr unsigned kNotBottom = 13;
constexpr unsigned kNotPattern = 16;
constexpr unsigned kNotForeground = 17;
constexpr unsigned kNotBackground = 18;
constexpr unsigned kNotNumberFormat = 19;
// Bits of the blocks.
constexpr unsigned kNumberFormat = 25;
constexpr unsigned kFont = 26;
constexpr unsigned kAlignment = 27;
constexpr unsigned kBorder = 28;
constexpr unsigned kFill = 29;
constexpr unsigned kProtection = 30;

void ReadNumberFormat(ByteCursor& cursor, const Flags& flags, const CellFormats& formats,
                      book::PartialStyle& style)
{
    constexpr std::size_t kSizeField = 2;
    std::string code;
    if (flags.HasOwnNumberFormat()) {
        const std::size_t size = cursor.U16();
        if (size < kSizeField)
            ThrowDamaged("the number format of a conditional format is too short");
        code = ReadUnicodeString(cursor.Take(size - kSizeField), 0).text;
    }
    else {
        cursor.Skip(1);
        code = formats.NumberFormat(cursor.U8());
    }
    if (flags.IsSet(kNotNumberFormat) && !code.empty())
        style.numberFormat = std::move(code);
}

/// [MS-XLS] 2.5.94 (DXFFntD)
void ReadFont(ByteCursor& cursor, const CellFormats& formats, book::PartialStyle& style)
{
    constexpr std::size_t kName = 64;
    constexpr std::uint32_t kItalic = 0x02;
    constexpr std::uint32_t kStrike = 0x80;
    constexpr std::uint32_t kNoColor = 0xFFFFFFFF;
    constexpr std::uint16_t kNoWeight = 0xFFFF;
    cursor.Skip(kName + 4); // name and height, which Excel does not let them set
    const auto looks = cursor.U32();
    const auto weight = cursor.U16();
    cursor.Skip(2);
    const auto underline = cursor.U8();
    cursor.Skip(3);
    const auto color = cursor.U32();
    cursor.Skip(4);
    const auto notLooks = cursor.U32();
    cursor.Skip(4);
    const bool notUnderline = cursor.U32() != 0;
    const bool notWeight = cursor.U32() != 0;
    cursor.Skip(14);
    const bool hasSlant = (notLooks & kItalic) == 0;
    // Some writers mark weight and slant together: a normal weight counts with the slant only.
    if (!notWeight && weight != kNoWeight && (hasSlant || IsBold(weight)))
        style.bold = IsBold(weight);
    if (hasSlant)
        style.italic = (looks & kItalic) != 0;
    if ((notLooks & kStrike) == 0)
        style.strike = (looks & kStrike) != 0;
    if (!notUnderline)
        style.underline = UnderlineOf(underline);
    if (color != kNoColor)
        style.fontColor = formats.Colors().Indexed(color, ColorUse::Line);
}

/// [MS-XLS] 2.5.95 (DXFBdr)
void ReadBorder(ByteCursor& cursor, const Flags& flags, const LookColors& colors,
                book::PartialStyle& style)
{
    const auto lines = cursor.U32();
    const auto more = cursor.U32();
    const auto line = [&](unsigned notBit, unsigned styleAt, std::uint32_t color) {
        return flags.IsSet(notBit)
                   ? std::optional(LineOf(lines >> styleAt & 0xFU, color & 0x7FU, colors))
                   : std::nullopt;
    };
    style.left = line(kNotLeft, 0, lines >> 16U);
    style.right = line(kNotRight, 4, lines >> 23U);
    style.top = line(kNotTop, 8, more);
    style.bottom = line(kNotBottom, 12, more >> 7U);
}

/// A fill that is solid, or whose pattern is not set, has the colour of its background. [MS-XLS]
/// 2.5.96 (DXFPat)
void ReadFill(ByteCursor& cursor, const Flags& flags, const LookColors& colors,
              book::PartialStyle& style)
{
    const std::uint32_t pattern = cursor.U16() >> 10U;
    const auto both = cursor.U16();
    const bool hasPattern = flags.IsSet(kNotPattern);
    const bool hasForeground = flags.IsSet(kNotForeground);
    const bool hasBackground = flags.IsSet(kNotBackground);
    if (!hasPattern && !hasForeground && !hasBackground)
        return;
    book::Fill fill;
    fill.pattern = hasPattern ? PatternOf(pattern) : book::FillPattern::Solid;
    if (hasForeground)
        fill.foreground = colors.Indexed(both & 0x7FU, ColorUse::Line);
    if (hasBackground)
        fill.background = colors.Indexed(both >> 7U & 0x7FU, ColorUse::Background);
    if (fill.pattern == book::FillPattern::Solid) {
        if (hasBackground)
            fill.foreground = fill.background;
        fill.background.reset();
    }
    style.fill = fill;
}

book::PartialStyle ReadBlocks(ByteCursor& cursor, const CellFormats& formats)
{
    const Flags flags{cursor.U32(), cursor.U16()};
    book::PartialStyle style;
    if (flags.HasBlock(kNumberFormat))
        ReadNumberFormat(cursor, flags, formats, style);
    if (flags.HasBlock(kFont))
        ReadFont(cursor, formats, style);
    if (flags.HasBlock(kAlignment))
        cursor.Skip(8);
    if (flags.HasBlock(kBorder))
        ReadBorder(cursor, flags, formats.Colors(), style);
    if (flags.HasBlock(kFill))
        ReadFill(cursor, flags, formats.Colors(), style);
    if (flags.HasBlock(kProtection))
        cursor.Skip(2);
    return style;
}

} // namespace

book::PartialStyle ReadDifferentialFormat(ByteCursor& cursor, const CellFormats& formats)
{
    return ReadBlocks(cursor, formats);
}

book::PartialStyle ReadDifferentialFormat12(ByteCursor& cursor, const CellFormats& formats)
{
    constexpr std::size_t kExtensionHead = 6; // before the count of its properties
    const std::size_t size = cursor.U32();
    if (size == 0) {
        cursor.Skip(2);
        return {};
    }
    ByteCursor block(cursor.Take(size));
    auto style = ReadBlocks(block, formats);
    if (block.Left() >= kExtensionHead + 2) {
        block.Skip(kExtensionHead);
        const std::size_t count = block.U16();
        Extend(style, ReadStyleExtension(block, count, formats.Colors()), formats.Colors());
    }
    return style;
}

} // namespace orrery::xls
