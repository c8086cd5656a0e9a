#pragma once

#include "engines/builtin/xlsx/xml_scanner.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace orrery::xlsx {

/// A piece of a part's text.
struct TextRange {
    std::size_t begin = 0;
    std::size_t end = 0; ///< behind the last byte
};

/// Reads up to the StartTag of the root element.
void EnterRoot(XmlScanner& scanner);

/// Calls `visit` at the StartTag of every child of the scanner's current element and ends with the
/// element's own EndTag. `visit` reads the child to its end: by SkipElement, ElementText or
/// ForEachChild.
template <typename Visit> void ForEachChild(XmlScanner& scanner, Visit&& visit)
{
    while (true) {
        const XmlScanner::Token token = scanner.Next();
        if (token == XmlScanner::Token::EndTag || token == XmlScanner::Token::End)
            return;
        if (token == XmlScanner::Token::StartTag)
            visit();
    }
}

/// Whether an attribute is there and says yes ("1", "true").
bool IsTrue(const std::optional<XmlAttribute>& attribute);

/// A number of digits alone, below 4294967296.
std::optional<std::size_t> ReadDigits(std::string_view text);
/// The same of an attribute's value; nothing where the attribute is missing.
std::optional<std::size_t> ReadDigits(const std::optional<XmlAttribute>& attribute);

} // namespace orrery::xlsx
