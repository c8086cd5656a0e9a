#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orrery::holidays {

/// Advances `pos` (1-based) past spaces, tabs, line feeds and carriage returns.
void SkipBlanks(std::string_view line, std::int32_t& pos);

/// Returns the next token of `line` from `pos` (1-based) and moves `pos` past it: a word with its
/// quoted parts, an operator of one or two of "=", "<", ">", "(", ")", ",", or "/*". Empty at the
/// end of the line. With `keepQuotes` the quotes stay in the token. "a<=b" gives "a", "<=", "b";
/// "x/y" is one word.
std::string GetToken(std::string_view line, std::int32_t& pos, bool keepQuotes);

} // namespace orrery::holidays
