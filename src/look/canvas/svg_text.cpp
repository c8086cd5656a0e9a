#include "look/canvas/svg_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace orrery::look {

namespace {

constexpr double kLargest = 1e7;
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

/// The length of the well-formed character at the beginning of a text, or 0.
std::size_t CharacterLength(std::string_view text)
{
    const auto at = [text](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned char lead = at(0);
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length == 0 || length > text.size())
        return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((at(i) & 0xC0) != 0x80)
            return 0;
    }
    if (length == 3 && ((lead == 0xE0 && at(1) < 0xA0) || (lead == 0xED && at(1) > 0x9F)))
        return 0; // too long, or half of a surrogate pair
    if (length == 4 && ((lead == 0xF0 && at(1) < 0x90) || (lead == 0xF4 && at(1) > 0x8F)))
        return 0;
    return length;
}

bool IsNonCharacter(std::string_view character)
{
    return character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF";
}

void AppendAscii(std::string& out, char character)
{
    switch (character) {
    case '&':
        out += "&amp;";
        break;
    case '<':
        out += "&lt;";
        break;
    case '>':
        out += "&gt;";
        break;
    case '"':
        out += "&quot;";
        break;
    case '\t':
    case '\r':
    case '\n':
        out += ' ';
        break;
    default:
        if (character < ' ')
            out += kReplacement;
        else
            out += character;
    }
}

} // namespace

void AppendNumber(std::string& out, double value)
{
    if (!std::isfinite(value))
        value = 0;
    value = std::clamp(value, -kLargest, kLargest);
    auto hundredths = static_cast<std::int64_t>(std::llround(value * 100));
    if (hundredths < 0) {
        out += '-';
        hundredths = -hundredths;
    }
    std::array<char, 24> digits{};
    char* const begin = digits.data();
    const auto end = std::to_chars(begin, begin + digits.size(), hundredths / 100).ptr;
    out.append(begin, end);
    if (const auto rest = hundredths % 100; rest != 0) {
        out += '.';
        out += static_cast<char>('0' + rest / 10);
        if (rest % 10 != 0)
            out += static_cast<char>('0' + rest % 10);
    }
}

std::string SvgNumber(double value)
{
    std::string out;
    AppendNumber(out, value);
    return out;
}

void AppendEscaped(std::string& out, std::string_view text)
{
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        if (length == 1)
            AppendAscii(out, text[0]);
        else if (length == 0 || IsNonCharacter(text.substr(0, length)))
            out += kReplacement;
        else
            out += text.substr(0, length);
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
}

std::string SvgName(std::string_view text)
{
    std::string name;
    for (const char c : text) {
        const bool isLetter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
        const bool isDigit = (c >= '0' && c <= '9') || c == '-' || c == '.';
        if (name.empty() && isDigit)
            name += '_';
        name += isLetter || isDigit ? c : '_';
    }
    return name.empty() ? "_" : name;
}

void AppendBase64(std::string& out, std::string_view bytes)
{
    static constexpr std::string_view kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    out.reserve(out.size() + (bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k)
            group = group << 8 | (k < count ? static_cast<unsigned char>(bytes[i + k]) : 0u);
        for (std::size_t k = 0; k < 4; ++k)
            out += k <= count ? kDigits[group >> (18 - 6 * k) & 63] : '=';
    }
}

std::string SvgColor(const book::Color& color)
{
    static constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text = "#";
    bool isShort = true;
    for (const std::uint8_t part : {color.red, color.green, color.blue}) {
        text += kDigits[part >> 4U];
        text += kDigits[part & 15U];
        isShort = isShort && (part >> 4) == (part & 15);
    }
    return isShort ? std::string{'#', text[1], text[3], text[5]} : text;
}

} // namespace orrery::look
