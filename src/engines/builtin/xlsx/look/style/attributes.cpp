#include "engines/builtin/xlsx/look/style/attributes.h"

#include "engines/builtin/xml/reading.h"

#include <charconv>
#include <cmath>

namespace orrery::xlsx {

std::optional<double> ParseNumber(std::string_view text)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == '\n'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\n'))
        text.remove_suffix(1);
    if (text.starts_with('+'))
        text.remove_prefix(1);
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || behind != end || !std::isfinite(number))
        return std::nullopt;
    return number;
}

std::optional<double> NumberAttribute(const xml::Scanner& scanner, std::string_view name)
{
    const auto attribute = scanner.Attribute(name);
    return attribute ? ParseNumber(attribute->raw) : std::nullopt;
}

std::optional<std::int32_t> IntegerAttribute(const xml::Scanner& scanner, std::string_view name,
                                             std::int32_t lowest, std::int32_t highest)
{
    const auto number = NumberAttribute(scanner, name);
    if (!number || *number < lowest || *number > highest)
        return std::nullopt;
    return static_cast<std::int32_t>(*number);
}

std::optional<std::size_t> IndexAttribute(const xml::Scanner& scanner, std::string_view name)
{
    return xml::ReadDigits(scanner.Attribute(name));
}

bool FlagAttribute(const xml::Scanner& scanner, std::string_view name, bool absent)
{
    const auto attribute = scanner.Attribute(name);
    if (!attribute)
        return absent;
    const std::string_view value = attribute->raw;
    if (value == "1" || value == "true" || value == "on")
        return true;
    return value == "0" || value == "false" || value == "off" ? false : absent;
}

} // namespace orrery::xlsx
