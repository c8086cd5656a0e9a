#pragma once

#include "engines/builtin/xml/scanner.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

/// Reads attributes of the current element. One that is damaged is as good as missing.
namespace orrery::xlsx {

/// A finite number: "12", "-0.5", "1E3"; nothing for other texts.
std::optional<double> ParseNumber(std::string_view text);
std::optional<double> NumberAttribute(const xml::Scanner& scanner, std::string_view name);

/// Nothing if it is not in [lowest:highest].
std::optional<std::int32_t> IntegerAttribute(const xml::Scanner& scanner, std::string_view name,
                                             std::int32_t lowest, std::int32_t highest);
/// From 0 on.
std::optional<std::size_t> IndexAttribute(const xml::Scanner& scanner, std::string_view name);

/// "1", "true", "on" and "0", "false", "off"; anything else gives `absent`.
bool FlagAttribute(const xml::Scanner& scanner, std::string_view name, bool absent);

/// What files call the values of an enumeration.
template <typename Value, std::size_t N>
using Words = std::array<std::pair<std::string_view, Value>, N>;

template <typename Value, std::size_t N>
std::optional<Value> WordAttribute(const xml::Scanner& scanner, std::string_view name,
                                   const Words<Value, N>& words)
{
    const auto attribute = scanner.Attribute(name);
    if (!attribute)
        return std::nullopt;
    for (const auto& [word, value] : words) {
        if (attribute->raw == word)
            return value;
    }
    return std::nullopt;
}

} // namespace orrery::xlsx
