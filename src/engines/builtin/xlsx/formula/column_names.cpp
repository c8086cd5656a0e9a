#include "engines/builtin/xlsx/formula/column_names.h"

#include "engines/builtin/xlsx/formula/escaped_text.h"
#include "engines/builtin/xml/text.h"
#include "util/text.h"

namespace orrery::xlsx {
namespace {

constexpr std::string_view kMarked = "'[]#@"; // need an apostrophe before them

/// The end of the name that begins at `at`: the first "[" or "]" without an apostrophe before it.
std::size_t NameEnd(std::string_view text, std::size_t at)
{
    while (at < text.size() && text[at] != '[' && text[at] != ']')
        at += text[at] == '\'' ? 2U : 1U;
    return std::min(at, text.size());
}

std::string Unmark(std::string_view text)
{
    std::string name;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\'' && i + 1 < text.size())
            ++i;
        name += text[i];
    }
    return name;
}

std::string Mark(std::string_view name)
{
    std::string text;
    for (const char c : name) {
        if (kMarked.find(c) != kMarked.npos)
            text += '\'';
        text += c;
    }
    return text;
}

/// Whether a name needs no second pair of brackets; after "@" a name with a blank does.
bool StandsAlone(std::string_view name, bool afterAt)
{
    constexpr std::string_view kSeparators = "\t\n\r,:;.\"{}$^&*+=-><()!|~`";
    return name.find_first_of(kSeparators) == name.npos &&
           name.find_first_of(kMarked) == name.npos && util::Trim(name) == name &&
           !(afterAt && name.find(' ') != name.npos);
}

/// The current name of a column as a formula writes it; blanks around `text` are ignored if need
/// be.
const std::string* FindColumn(std::string_view text, const ColumnLookup& columns)
{
    if (text.empty() || text.front() == '#') // a keyword
        return nullptr;
    const std::string name = Unmark(text);
    const std::string* found = columns(name);
    return found != nullptr ? found : columns(util::Trim(name));
}

/// The list of bracketed names and keywords, with the names replaced.
std::string RenameInList(std::string_view list, const ColumnLookup& columns)
{
    std::string result;
    for (std::size_t at = 0; at < list.size();) {
        const bool opens = list[at] == '[';
        result += list[at++];
        if (!opens)
            continue;
        const std::size_t end = NameEnd(list, at);
        const std::string_view text = list.substr(at, end - at);
        const std::string* name = FindColumn(text, columns);
        result += name != nullptr ? Mark(*name) : text;
        at = end;
    }
    return result;
}

} // namespace

std::string EncodeColumnName(std::string_view name)
{
    std::string encoded;
    while (true) {
        const std::size_t end = name.find_first_of("\n\t");
        if (end == name.npos)
            return encoded += EscapeText(name);
        // Together with the underscore that follows, a text may look like an escape.
        encoded += EscapeText(std::string(name.substr(0, end)) + '_');
        encoded += name[end] == '\n' ? "x000a_" : "x0009_";
        name.remove_prefix(end + 1);
    }
}

std::string DecodeColumnName(std::string_view value)
{
    return UnescapeText(value);
}

std::optional<std::string> RenameInBrackets(std::string_view brackets, const ColumnLookup& columns)
{
    if (brackets.size() < 2 || brackets.back() != ']')
        return std::nullopt; // not closed
    std::size_t at = 1;
    const bool afterAt = brackets[at] == '@';
    at += afterAt ? 1 : 0;
    const std::string_view inside = brackets.substr(at, brackets.size() - 1 - at);
    std::string renamed(brackets.substr(0, at));
    if (util::Trim(inside).starts_with('[')) {
        renamed += RenameInList(inside, columns);
    }
    else if (const std::string* name = FindColumn(inside, columns)) {
        const std::string text = Mark(*name);
        renamed += StandsAlone(*name, afterAt) ? text : '[' + text + ']';
    }
    else {
        return std::nullopt;
    }
    renamed += ']';
    return renamed != brackets ? std::optional(std::move(renamed)) : std::nullopt;
}

} // namespace orrery::xlsx
