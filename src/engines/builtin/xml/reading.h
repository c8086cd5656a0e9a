#pragma once

#include "engines/builtin/xml/scanner.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace orrery::xml {

/// Reads up to the StartTag of the root element.
void EnterRoot(Scanner& scanner);

/// Calls `visit` at the StartTag of every child of the scanner's current element and ends with the
/// element's own EndTag. `visit` reads the child to its end: by SkipElement, ElementText or
/// ForEachChild.
template <typename Visit> void ForEachChild(Scanner& scanner, Visit&& visit)
{
    while (true) {
        const Scanner::Token token = scanner.Next();
        if (token == Scanner::Token::EndTag || token == Scanner::Token::End)
            return;
        if (token == Scanner::Token::StartTag)
            visit();
    }
}

/// Whether an attribute is present and true ("1", "true").
bool IsTrue(const std::optional<ScannedAttribute>& attribute);

/// A number of digits only, below 4294967296.
std::optional<std::size_t> ReadDigits(std::string_view text);
/// The same for an attribute's value; nothing if the attribute is missing.
std::optional<std::size_t> ReadDigits(const std::optional<ScannedAttribute>& attribute);

} // namespace orrery::xml
