#include "engines/builtin/xml/text.h"

#include "util/unicode.h"

#include <array>
#include <charconv>
#include <optional>

namespace orrery::xml {
namespace {

struct Entity {
    std::string_view name;
    char32_t character;
};
constexpr std::array<Entity, 5> kEntities = {
    {{"amp", U'&'}, {"lt", U'<'}, {"gt", U'>'}, {"quot", U'"'}, {"apos", U'\''}}};
constexpr std::size_t kMaxEntityLength = 5; // of an entity, its ";" included

bool IsXmlCharacter(char32_t c)
{
    if (c < 0x20)
        return c == '\t' || c == '\n' || c == '\r';
    return c <= 0xD7FF || (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

struct Reference {
    char32_t character;
    std::size_t length; // "&" and ";" included
};

/// "&#65;" or "&#x41;", with any number of zeros in front.
std::optional<Reference> ReadNumericReference(std::string_view text)
{
    const bool hexadecimal = text.substr(2).starts_with('x');
    const std::size_t digits = hexadecimal ? 3 : 2;
    std::uint32_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [behind, error] =
        std::from_chars(text.data() + digits, end, value, hexadecimal ? 16 : 10);
    if (error != std::errc() || behind == end || *behind != ';' || !IsXmlCharacter(value))
        return std::nullopt;
    return Reference{value, static_cast<std::size_t>(behind - text.data()) + 1};
}

std::optional<Reference> ReadReference(std::string_view text)
{
    if (text.substr(1).starts_with('#'))
        return text.size() > 3 ? ReadNumericReference(text) : std::nullopt;
    const std::size_t end = text.substr(0, kMaxEntityLength + 1).find(';');
    if (end == std::string_view::npos)
        return std::nullopt;
    const std::string_view name = text.substr(1, end - 1);
    for (const Entity& entity : kEntities) {
        if (entity.name == name)
            return Reference{entity.character, end + 1};
    }
    return std::nullopt;
}

std::string Decode(std::string_view raw, std::string_view special, char lineEnd)
{
    std::string text;
    text.reserve(raw.size());
    for (std::size_t at = 0; at < raw.size();) {
        const std::size_t next = std::min(raw.find_first_of(special, at), raw.size());
        text.append(raw, at, next - at);
        at = next;
        if (at == raw.size())
            break;
        if (raw[at] != '&') {
            at += raw.substr(at, 2) == "\r\n" ? 2U : 1U;
            text += lineEnd;
        }
        else if (const auto reference = ReadReference(raw.substr(at))) {
            util::AppendUtf8(text, reference->character);
            at += reference->length;
        }
        else {
            text += raw[at++];
        }
    }
    return text;
}

/// `escapes` holds the characters that are written as references.
std::string Encode(std::string_view text, std::string_view escapes)
{
    std::string encoded;
    encoded.reserve(text.size());
    for (const char c : text) {
        if (escapes.find(c) == std::string_view::npos) {
            if (IsXmlCharacter(static_cast<unsigned char>(c)))
                encoded += c;
            continue;
        }
        switch (c) {
        case '&':
            encoded += "&amp;";
            break;
        case '<':
            encoded += "&lt;";
            break;
        case '>':
            encoded += "&gt;";
            break;
        case '"':
            encoded += "&quot;";
            break;
        default:
            encoded += "&#" + std::to_string(static_cast<int>(c)) + ";";
            break;
        }
    }
    return encoded;
}

} // namespace

std::string DecodeText(std::string_view raw)
{
    return Decode(raw, "&\r", '\n');
}

std::string DecodeAttribute(std::string_view raw)
{
    return Decode(raw, "&\r\n\t", ' ');
}

std::string EncodeText(std::string_view text)
{
    return Encode(text, "&<>\r");
}

std::string EncodeAttribute(std::string_view text)
{
    return Encode(text, "&<>\"\t\n\r");
}

std::size_t ReferenceLength(std::string_view text)
{
    const auto reference = ReadReference(text);
    return reference ? reference->length : 0;
}

} // namespace orrery::xml
