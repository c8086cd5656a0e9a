#include "exchange/table/table_entries.h"

#include "util/text.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace orrery::exchange {
namespace {

/// The most words of a date in a line: "Saturday, the 1st of May 2027 10:00".
constexpr std::size_t kMostDateWords = 8;
constexpr std::string_view kBesideDates = " \t:;,|-";

std::string_view Stripped(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(kBesideDates);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBesideDates) - first + 1);
}

/// The places between the words of a line, its end included.
std::vector<std::size_t> EndsOfWords(std::string_view line)
{
    std::vector<std::size_t> ends;
    for (std::size_t at = 1; at < line.size(); ++at) {
        const bool isBlank = line[at] == ' ' || line[at] == '\t';
        const bool wasBlank = line[at - 1] == ' ' || line[at - 1] == '\t';
        if (isBlank && !wasBlank)
            ends.push_back(at);
    }
    return ends;
}

} // namespace

TableEntry SplitLine(std::string_view line)
{
    line = util::Trim(line);
    const std::vector<std::size_t> ends = EndsOfWords(line);
    const std::size_t most = std::min(ends.size(), kMostDateWords);
    TableEntry entry;
    entry.name = line;
    const auto take = [&entry](std::string_view date, std::string_view name) {
        date = Stripped(date);
        name = Stripped(name);
        if (name.empty() || !IsDate(date))
            return false;
        entry.date = date;
        entry.name = name;
        return true;
    };
    for (std::size_t words = most; words > 0; --words) {
        const std::size_t end = ends[words - 1];
        if (take(line.substr(0, end), line.substr(end)))
            return entry;
    }
    for (std::size_t words = most; words > 0; --words) {
        const std::size_t end = ends[ends.size() - words];
        if (take(line.substr(end), line.substr(0, end)))
            return entry;
    }
    return entry;
}

std::string TextOf(const TableText& text, const RawField& field)
{
    std::string part = text.Decode(BeginningOf(field));
    return field.isQuoted ? WithSingleQuotes(std::move(part)) : part;
}

EntryReader::EntryReader(const TableText& text, const TableLayout& layout)
    : text_(text), layout_(layout), rows_(text.Bytes(), layout.separator)
{
}

std::string EntryReader::TextOf(std::size_t column) const
{
    return column < row_.fields.size() ? exchange::TextOf(text_, row_.fields[column])
                                       : std::string();
}

bool EntryReader::NextRow()
{
    do {
        if (!rows_.Next(row_))
            return false;
        if (!row_.IsEmpty() && std::exchange(isFirst_, false) && layout_.hasHeader)
            row_.fields.clear();
    } while (row_.IsEmpty());
    return true;
}

bool EntryReader::Skip(std::size_t& line)
{
    const bool isThere = NextRow();
    line = row_.line;
    return isThere;
}

bool EntryReader::Next(TableEntry& entry)
{
    if (!NextRow())
        return false;
    if (layout_.separator == kNoSeparator)
        entry = SplitLine(TextOf(0));
    else
        entry = {0, TextOf(layout_.dateColumn), layout_.endColumn ? TextOf(*layout_.endColumn) : "",
                 TextOf(layout_.nameColumn), row_.isBroken};
    entry.line = row_.line;
    return true;
}

} // namespace orrery::exchange
