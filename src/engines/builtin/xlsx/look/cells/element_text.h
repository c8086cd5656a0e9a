#pragma once

#include "engines/builtin/xml/scanner.h"

#include <string>
#include <string_view>

namespace orrery::xlsx {

/// Reads from a StartTag to its EndTag. The element's decoded text: a part of the scanner's text
/// where it can be, else kept in `buffer`.
std::string_view ReadElementText(xml::Scanner& scanner, std::string& buffer);

/// The same of a formula, without "=" and blanks before it; empty if it is too long.
std::string ReadFormulaText(xml::Scanner& scanner, bool* isTooLong = nullptr);

} // namespace orrery::xlsx
