#include "engines/builtin/common/sheet_quotes.h"

#include "util/text.h"

#include <algorithm>
#include <cstddef>

namespace orrery::builtin {
namespace {

bool IsLetter(char c)
{
    return c >= 'A' && c <= 'Z';
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Upper-case letters that name a column, then a digit.
bool BeginsLikeCell(std::string_view upper)
{
    constexpr unsigned kColumns = 16384;
    std::size_t at = 0;
    unsigned column = 0;
    for (; at < upper.size() && IsLetter(upper[at]) && column <= kColumns; ++at)
        column = column * 26 + static_cast<unsigned>(upper[at] - 'A') + 1;
    return column > 0 && column <= kColumns && at < upper.size() && IsDigit(upper[at]);
}

} // namespace

bool NeedsApostrophes(std::string_view sheet)
{
    const std::string upper = util::ToUpperAscii(sheet);
    const bool isPlain = std::all_of(upper.begin(), upper.end(), [](char c) {
        return IsLetter(c) || IsDigit(c) || c == '_' || c == '.';
    });
    if (upper.empty() || !isPlain || !(IsLetter(upper[0]) || upper[0] == '_'))
        return true;
    return BeginsLikeCell(upper) || upper == "TRUE" || upper == "FALSE" || upper == "R" ||
           upper == "C" || upper == "RC";
}

std::string InApostrophes(std::string_view text)
{
    std::string quoted = "'";
    for (const char c : text)
        quoted.append(c == '\'' ? 2 : 1, c);
    return quoted + '\'';
}

} // namespace orrery::builtin
