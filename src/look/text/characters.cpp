#include "look/text/characters.h"

#include "util/unicode.h"

#include <utf8proc.h>

namespace orrery::look {
namespace {

/// Invalid bytes are characters below U+0100, which is as good as any.
utf8proc_int32_t Code(char32_t character)
{
    return static_cast<utf8proc_int32_t>(character);
}

bool IsPlain(char32_t character)
{
    return character >= 0x20 && character < 0x300;
}

} // namespace

std::size_t ClusterEnd(std::string_view text, std::size_t at)
{
    char32_t before = util::NextCharacter(text, at);
    utf8proc_int32_t state = 0;
    while (at < text.size()) {
        std::size_t next = at;
        const char32_t character = util::NextCharacter(text, next);
        if ((IsPlain(before) && IsPlain(character)) ||
            utf8proc_grapheme_break_stateful(Code(before), Code(character), &state))
            break;
        at = next;
        before = character;
    }
    return at;
}

bool IsWide(char32_t character)
{
    return character >= 0x1100 && utf8proc_charwidth(Code(character)) == 2;
}

bool IsZeroWidth(char32_t character)
{
    if (IsPlain(character))
        return (character >= 0x7F && character < 0xA0) || character == 0xAD;
    switch (utf8proc_category(Code(character))) {
    case UTF8PROC_CATEGORY_MN:
    case UTF8PROC_CATEGORY_ME:
    case UTF8PROC_CATEGORY_CC:
    case UTF8PROC_CATEGORY_CF:
    case UTF8PROC_CATEGORY_ZL:
    case UTF8PROC_CATEGORY_ZP:
        return true;
    default:
        return false;
    }
}

Direction DirectionOf(char32_t character)
{
    if (character >= 'A' && character < 0x300)
        return character <= 'Z' || (character >= 'a' && character <= 'z') || character >= 0xC0
                   ? Direction::LeftToRight
                   : Direction::Neutral;
    switch (utf8proc_get_property(Code(character))->bidi_class) {
    case UTF8PROC_BIDI_CLASS_L:
        return Direction::LeftToRight;
    case UTF8PROC_BIDI_CLASS_R:
    case UTF8PROC_BIDI_CLASS_AL:
        return Direction::RightToLeft;
    case UTF8PROC_BIDI_CLASS_EN:
    case UTF8PROC_BIDI_CLASS_AN:
        return Direction::Digit;
    default:
        return Direction::Neutral;
    }
}

bool BeginsRightToLeft(std::string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        const Direction direction = DirectionOf(util::NextCharacter(text, at));
        if (direction == Direction::LeftToRight || direction == Direction::RightToLeft)
            return direction == Direction::RightToLeft;
    }
    return false;
}

bool HasRightToLeft(std::string_view text)
{
    // No such character is below U+0590, whose first byte is 0xD6.
    bool mayHave = false;
    for (const char c : text)
        mayHave = mayHave || static_cast<unsigned char>(c) >= 0xD6;
    for (std::size_t at = 0; mayHave && at < text.size();) {
        if (DirectionOf(util::NextCharacter(text, at)) == Direction::RightToLeft)
            return true;
    }
    return false;
}

} // namespace orrery::look
