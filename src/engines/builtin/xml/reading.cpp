#include "engines/builtin/xml/reading.h"

#include <charconv>
#include <cstdint>
#include <string>

namespace orrery::xml {

void EnterRoot(Scanner& scanner)
{
    // The scanner itself throws if there is no root element.
    while (scanner.Next() != Scanner::Token::StartTag) {
    }
}

bool IsTrue(const std::optional<ScannedAttribute>& attribute)
{
    return attribute && (attribute->Is("1") || attribute->Is("true"));
}

std::optional<std::size_t> ReadDigits(std::string_view text)
{
    std::uint32_t number = 0;
    const char* end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || behind != end)
        return std::nullopt;
    return number;
}

std::optional<std::size_t> ReadDigits(const std::optional<ScannedAttribute>& attribute)
{
    std::string decoded;
    return attribute ? ReadDigits(attribute->Value(decoded)) : std::nullopt;
}

} // namespace orrery::xml
