#include "engines/builtin/xls/look/styles/font_table.h"

#include "engines/builtin/xls/records/unicode_string.h"
#include "util/error.h"

namespace orrery::xls {
namespace {

constexpr std::size_t kMissingIndex = 4; // no font has it. [MS-XLS] 2.5.128 (FontIndex)
constexpr std::uint16_t kFontItalic = 0x02;
constexpr std::uint16_t kFontStrike = 0x08;
constexpr double kTwipsPerPoint = 20;

book::TextPosition PositionOf(std::uint16_t value)
{
    using enum book::TextPosition;
    return value == 1 ? Superscript : value == 2 ? Subscript : Baseline;
}

} // namespace

book::Underline UnderlineOf(std::uint8_t value)
{
    using enum book::Underline;
    switch (value) {
    case 0x01:
        return Single;
    case 0x02:
        return Double;
    case 0x21:
        return SingleAccounting;
    case 0x22:
        return DoubleAccounting;
    default:
        return None;
    }
}

bool IsBold(std::uint16_t weight)
{
    constexpr std::uint16_t kHeaviestNormal = 550; // Windows draws heavier ones bold
    return weight > kHeaviestNormal;
}

void FontTable::Add(std::string_view data)
{
    Entry& entry = fonts_.emplace_back();
    try {
        ByteCursor cursor(data);
        if (const auto height = cursor.U16(); height > 0)
            entry.font.size = height / kTwipsPerPoint;
        const auto flags = cursor.U16();
        entry.font.italic = (flags & kFontItalic) != 0;
        entry.font.strike = (flags & kFontStrike) != 0;
        entry.color = cursor.U16();
        entry.font.bold = IsBold(cursor.U16());
        entry.font.position = PositionOf(cursor.U16());
        entry.font.underline = UnderlineOf(cursor.U8());
        cursor.Skip(3); // family, character set
        auto name = ReadShortUnicodeString(data, cursor.Position()).text;
        if (!name.empty())
            entry.font.name = std::move(name);
    }
    catch (const util::Error&) {
        // what could be read of it stays
    }
}

book::Font FontTable::Find(std::size_t index, const LookColors& colors) const
{
    if (fonts_.empty()) {
        book::Font font; // the one that Excel 97 began with
        font.name = "Arial";
        font.size = 10;
        return font;
    }
    if (index > kMissingIndex)
        --index;
    const Entry& entry = fonts_[index < fonts_.size() ? index : 0];
    book::Font font = entry.font;
    font.color = colors.Indexed(entry.color, ColorUse::Line);
    return font;
}

} // namespace orrery::xls
