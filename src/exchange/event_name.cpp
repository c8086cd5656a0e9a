#include "exchange/event_name.h"

#include "util/unicode.h"

namespace orrery::exchange {
namespace {

/// Controls of both sets, and the separators of lines and paragraphs.
bool IsControl(char32_t character)
{
    return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x2028 ||
           character == 0x2029;
}

/// What looks like nothing at the ends of a name: blanks of all kinds, and marks without a width.
bool IsBlank(char32_t character)
{
    return character == ' ' || character == 0xA0 || character == 0x1680 ||
           (character >= 0x2000 && character <= 0x200B) || character == 0x202F ||
           character == 0x205F || character == 0x3000 || character == 0xFEFF;
}

} // namespace

std::string CleanName(std::string_view text)
{
    std::string name;
    std::size_t end = 0; // behind its last character that is no blank
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size() && count < kMostNameCharacters;) {
        const char32_t next = util::NextCharacter(text, at);
        const char32_t character = IsControl(next) ? ' ' : next;
        const bool isBlank = IsBlank(character);
        if (isBlank && (name.empty() || (IsControl(next) && name.back() == ' ')))
            continue; // the end of a line is often two characters
        util::AppendUtf8(name, character);
        ++count;
        if (!isBlank)
            end = name.size();
    }
    name.resize(end);
    return name;
}

} // namespace orrery::exchange
