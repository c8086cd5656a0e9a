#pragma once

#include "engines/builtin/common/words.h"
#include "engines/builtin/xml/scanner.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

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

using builtin::Words;

/// The value that the attribute names, or nothing.
template <typename Value, std::size_t N>
std::optional<Value> WordAttribute(const xml::Scanner& scanner, std::string_view name,
                                   const Words<Value, N>& words)
{
    const auto attribute = scanner.Attribute(name);
    return attribute ? builtin::ValueOfWord(words, attribute->raw) : std::nullopt;
}

} // namespace orrery::xlsx
