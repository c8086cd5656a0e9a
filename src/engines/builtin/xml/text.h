#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orrery::xml {

/// A range of a part's text.
struct TextRange {
    std::size_t begin = 0;
    std::size_t end = 0; ///< after the last byte
};

/// Decodes character references and XML's five entities, and turns line ends into "\n", as every
/// XML reader does. Anything that is not a reference stays as it is.
std::string DecodeText(std::string_view raw);
/// The same for an attribute value, in which tabs and line ends become blanks.
std::string DecodeAttribute(std::string_view raw);
/// Escapes a text for element content; carriage returns become references. Control characters that
/// XML forbids are left out.
std::string EncodeText(std::string_view text);
/// Escapes a text for an attribute value in double quotes; tabs and line ends become references.
/// Control characters that XML forbids are left out.
std::string EncodeAttribute(std::string_view text);

/// The length of the reference at the start of the text ("&amp;", "&#x20;"), its ";" included; 0 if
/// XML does not know it or forbids its character.
std::size_t ReferenceLength(std::string_view text);

} // namespace orrery::xml
