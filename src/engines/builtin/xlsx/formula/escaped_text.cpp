#include "engines/builtin/xlsx/formula/escaped_text.h"

#include "util/unicode.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>

namespace orrery::xlsx {
namespace {

constexpr std::size_t kEscapeLength = 7;                    // "_x000a_"
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

/// The UTF-16 unit that an escape at the beginning of the text stands for; nothing if there is no
/// escape, or only half a character.
std::optional<char32_t> EscapeAt(std::string_view text)
{
    if (text.size() < kEscapeLength || !text.starts_with("_x") || text[kEscapeLength - 1] != '_')
        return std::nullopt;
    unsigned code = 0;
    const char* const end = text.data() + kEscapeLength - 1;
    const auto [rest, error] = std::from_chars(text.data() + 2, end, code, 16);
    const bool half = code >= 0xD800 && code <= 0xDFFF;
    return error == std::errc() && rest == end && !half ? std::optional<char32_t>(code)
                                                        : std::nullopt;
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

std::string UnescapeText(std::string_view escaped)
{
    std::string text;
    text.reserve(escaped.size());
    for (std::size_t at = 0; at < escaped.size();) {
        if (const auto character = EscapeAt(escaped.substr(at))) {
            util::AppendUtf8(text, *character);
            at += kEscapeLength;
        }
        else {
            text += escaped[at++];
        }
    }
    return text;
}

} // namespace orrery::xlsx
