#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orrery::holidays {

/// Advances `pos` (1-based) past spaces, tabs, line feeds and carriage returns.
void SkipBlanks(std::string_view line, std::int32_t& pos);

/// The next token of `line` from `pos` (1-based), which ends up behind it: a word with its quoted
/// runs, an operator of "=", "<", ">" (one or two of them), "(", ")", ",", or "/*". At the end of
/// the line the empty text. With `keepQuotes` the quotes around a run stay in the token.
/// "a<=b" gives "a", "<=", "b"; "x/y" is one word.
std::string GetToken(std::string_view line, std::int32_t& pos, bool keepQuotes);

} // namespace orrery::holidays
