#include "util/unicode.h"

namespace orrery::util {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char32_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLowSurrogate(char32_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

} // namespace

void AppendUtf8(std::string& text, char32_t character)
{
    const auto add = [&text](char32_t bits) { text += static_cast<char>(bits); };
    if (character < 0x80) {
        add(character);
    }
    else if (character < 0x800) {
        add(0xC0 | character >> 6);
        add(0x80 | (character & 0x3F));
    }
    else if (character < 0x10000) {
        add(0xE0 | character >> 12);
        add(0x80 | (character >> 6 & 0x3F));
        add(0x80 | (character & 0x3F));
    }
    else {
        add(0xF0 | character >> 18);
        add(0x80 | (character >> 12 & 0x3F));
        add(0x80 | (character >> 6 & 0x3F));
        add(0x80 | (character & 0x3F));
    }
}

char32_t NextCharacter(std::string_view utf8, std::size_t& at)
{
    const auto lead = static_cast<unsigned char>(utf8[at++]);
    const std::size_t more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
    if (more == 0 || utf8.size() - at < more)
        return lead;
    char32_t character = lead & (0x3FU >> more);
    for (std::size_t i = 0; i < more; ++i) {
        const auto next = static_cast<unsigned char>(utf8[at + i]);
        if ((next & 0xC0U) != 0x80)
            return lead;
        character = (character << 6) | (next & 0x3FU);
    }
    at += more;
    return character;
}

std::u16string ToUtf16(std::string_view utf8)
{
    std::u16string units;
    units.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const auto character = NextCharacter(utf8, at);
        if (character < 0x10000) {
            units += static_cast<char16_t>(character);
            continue;
        }
        units += static_cast<char16_t>(0xD7C0 + (character >> 10));
        units += static_cast<char16_t>(0xDC00 | (character & 0x3FF));
    }
    return units;
}

std::string FromUtf16(std::u16string_view units)
{
    std::string text;
    text.reserve(units.size());
    for (std::size_t at = 0; at < units.size(); ++at) {
        char32_t character = units[at];
        if (IsHighSurrogate(character) && at + 1 < units.size() && IsLowSurrogate(units[at + 1]))
            character = ((character - 0xD7C0) << 10) + (units[++at] & 0x3FFU);
        else if (IsHighSurrogate(character) || IsLowSurrogate(character))
            character = kReplacement;
        AppendUtf8(text, character);
    }
    return text;
}

} // namespace orrery::util
