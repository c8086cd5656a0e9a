#include "engines/builtin/xlsx/formula/escaped_text.h"

#include <algorithm>
#include <cstddef>

namespace orrery::xlsx {
namespace {

constexpr std::string_view kNotCharacter1 = "\xEF\xBF\xBE"; // U+FFFE
constexpr std::string_view kNotCharacter2 = "\xEF\xBF\xBF"; // U+FFFF

bool IsHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

/// The code of the character at the beginning if XML forbids it, and its length in bytes.
struct Unwritable {
    unsigned code = 0;
    std::size_t length = 0; ///< 0 if XML allows it
};

Unwritable UnwritableAt(std::string_view text)
{
    const auto first = static_cast<unsigned char>(text.empty() ? ' ' : text.front());
    if (first < 0x20 && first != '\t' && first != '\n')
        return {first, 1};
    if (text.starts_with(kNotCharacter1))
        return {0xFFFE, kNotCharacter1.size()};
    if (text.starts_with(kNotCharacter2))
        return {0xFFFF, kNotCharacter2.size()};
    return {};
}

std::string Escape(unsigned code)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text = "_x";
    for (int shift = 12; shift >= 0; shift -= 4)
        text += digits[(code >> static_cast<unsigned>(shift)) & 0xF];
    return text + '_';
}

/// Whether the text begins like an escape in a file. Its last underscore may also be the first one
/// of the next escape.
bool LooksLikeEscape(std::string_view text)
{
    constexpr std::size_t kDigitsEnd = 6;
    if (!text.starts_with("_x") || text.size() <= kDigitsEnd)
        return false;
    const std::string_view digits = text.substr(2, kDigitsEnd - 2);
    return std::all_of(digits.begin(), digits.end(), IsHexDigit) &&
           (text[kDigitsEnd] == '_' || UnwritableAt(text.substr(kDigitsEnd)).length != 0);
}

} // namespace

std::string EscapeText(std::string_view text)
{
    std::string escaped;
    escaped.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view rest = text.substr(at);
        if (const Unwritable unwritable = UnwritableAt(rest); unwritable.length != 0) {
            escaped += Escape(unwritable.code);
            at += unwritable.length;
            continue;
        }
        if (LooksLikeEscape(rest))
            escaped += Escape('_');
        else
            escaped += text[at];
        ++at;
    }
    return escaped;
}

} // namespace orrery::xlsx
