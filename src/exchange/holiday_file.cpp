#include "exchange/holiday_file.h"

#include "exchange/event_name.h"
#include "holidays/language/rule_set.h"

#include <algorithm>

namespace orrery::exchange {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

/// A text that the reader of holiday files takes for a comment whatever it says: with two commas it
/// could be a rule.
std::string CommentText(std::string_view text)
{
    std::string comment = CleanName(text);
    std::replace(comment.begin(), comment.end(), ',', ';');
    return comment;
}

/// "# Club: days from Club.csv", unless the name is a word that says something of the file.
std::string Head(std::string_view name, std::string_view source)
{
    const std::string rest = CommentText(name) + ": days from " + CommentText(source);
    const std::string line = "# " + rest;
    return holidays::IsExtraLine(line) ? "# The list " + rest : line;
}

} // namespace

std::string HolidayFileText(const ImportedRules& rules, std::string_view name,
                            std::string_view source)
{
    std::string text = Head(name, source);
    text += kLineEnd;
    for (const holidays::ListEntry& entry : rules.entries)
        (text += LineOf(entry)) += kLineEnd;
    return text;
}

} // namespace orrery::exchange
