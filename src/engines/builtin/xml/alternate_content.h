#pragma once

#include "engines/builtin/xml/scanner.h"

#include <functional>
#include <string_view>

namespace orrery::xml {

/// Tells which namespaces a reader understands, for the choices of alternate content.
using Understands = std::function<bool(std::string_view uri)>;

/// Whether the scanner's current element is alternate content (ECMA-376-3 7.5).
bool IsAlternateContent(const Scanner& scanner);

/// Reads alternate content to its end. Calls `visit` at the StartTag of the first choice that is
/// understood, else at that of the fallback, if there is one; `visit` reads it to its end.
void ReadAlternateContent(Scanner& scanner, const Understands& understands,
                          const std::function<void()>& visit);

/// Calls `visit` at the StartTag of every child of the scanner's current element, as ForEachChild
/// does, and in the place of alternate content at those of what is chosen from it.
void ForEachUnderstoodChild(Scanner& scanner, const Understands& understands,
                            const std::function<void()>& visit);

} // namespace orrery::xml
