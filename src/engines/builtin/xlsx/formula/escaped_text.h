#pragma once

#include <string>
#include <string_view>

namespace orrery::xlsx {

/// Escapes a text as files do: characters that XML forbids become "_x0001_", and an underscore that
/// would read as the beginning of such an escape becomes "_x005F_". Line feeds and tabs stay.
/// [ISO/IEC 29500-1] 22.4.2.4
std::string EscapeText(std::string_view text);
/// The text that an escaped one stands for. Halves of characters stay escaped.
std::string UnescapeText(std::string_view escaped);

} // namespace orrery::xlsx
