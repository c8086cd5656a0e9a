#include "exchange/table/hol_reader.h"

#include "exchange/error.h"
#include "exchange/event_name.h"
#include "exchange/table/date_text.h"
#include "exchange/table/date_words.h"
#include "exchange/table/event_collector.h"
#include "exchange/table/row_reader.h"
#include "util/error.h"
#include "util/sentence.h"
#include "util/text.h"

#include <algorithm>
#include <optional>

namespace orrery::exchange {
namespace {

constexpr std::size_t kMostSections = 1000;

/// The name of a section that begins with the line.
std::optional<std::string> SectionOf(std::string_view line)
{
    const std::size_t end = line.rfind(']');
    if (!line.starts_with('[') || end == std::string_view::npos)
        return std::nullopt;
    const std::string_view count = util::Trim(line.substr(end + 1));
    if (count.find_first_not_of("0123456789") != std::string_view::npos)
        return std::nullopt;
    return CleanName(line.substr(1, end - 1));
}

/// Goes through the lines that are not empty; a very long one is cut.
template <typename Visit> void ForEachLine(const TableText& text, Visit visit)
{
    RowReader reader(text.Bytes(), kNoSeparator);
    RawRow row;
    while (reader.Next(row)) {
        const std::string line = text.Decode(BeginningOf(row.fields.front()));
        if (!line.empty() && !visit(row.line, std::string_view(line)))
            return;
    }
}

std::string NameOf(std::string_view text)
{
    text = util::Trim(text);
    std::string name(text);
    if (text.size() > 1 && text.starts_with('"') && text.ends_with('"'))
        name = WithSingleQuotes(std::string(text.substr(1, text.size() - 2)));
    for (std::size_t at = 0; (at = name.find("\\,", at)) != std::string::npos; ++at)
        name.erase(at, 1);
    return CleanName(name);
}

bool IsNumber(std::string_view text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// The event of a line; without days if it is none, with the reason.
Event EventOfLine(std::string_view line, std::string& reason)
{
    Event event;
    std::size_t comma = line.rfind(',');
    std::string_view date = util::Trim(line.substr(comma == line.npos ? line.size() : comma + 1));
    // Old files tell the calendar of the date behind it; 1 is ours.
    if (comma != line.npos && comma > 0 && IsNumber(date) && !SplitDate(date)) {
        const bool isOurs = date == "1";
        const std::size_t before = line.rfind(',', comma - 1);
        const std::string_view own = line.substr(before == line.npos ? comma : before + 1);
        date = util::Trim(own.substr(0, own.find(',')));
        comma = before;
        if (!isOurs && SplitDate(date)) {
            reason = "The date is one of another calendar.";
            return event;
        }
    }
    const auto parts = SplitDate(date);
    const auto day = parts ? DateOf(*parts, {DateOrder::YearMonthDay}) : std::nullopt;
    event.name = comma == line.npos ? "" : NameOf(line.substr(0, comma));
    if (!day)
        reason =
            "There is no date such as 2027/5/1 at the end of " + util::QuotedBeginning(line) + '.';
    else if (event.name.empty())
        reason = "The name is missing.";
    else
        event.days = {{*day, *day}};
    return event;
}

} // namespace

bool IsHol(const TableText& text)
{
    bool isHol = false;
    ForEachLine(text, [&isHol](std::size_t /*line*/, std::string_view content) {
        isHol = SectionOf(content).has_value();
        return false;
    });
    return isHol;
}

std::vector<std::string> HolSections(const TableText& text)
{
    std::vector<std::string> sections;
    ForEachLine(text, [&sections](std::size_t /*line*/, std::string_view content) {
        if (auto section = SectionOf(content))
            sections.push_back(*std::move(section));
        return sections.size() < kMostSections;
    });
    return sections;
}

Calendar ReadHol(const TableText& text, std::string_view section)
{
    const std::string wanted = FoldWord(section);
    bool isWanted = wanted.empty();
    bool wasThere = isWanted;
    EventCollector collector;
    ForEachLine(text, [&](std::size_t line, std::string_view content) {
        if (const auto name = SectionOf(content)) {
            isWanted = wanted.empty() || FoldWord(*name) == wanted;
            wasThere = wasThere || isWanted;
        }
        else if (isWanted && collector.IsFull())
            collector.CountFurther(line);
        else if (isWanted) {
            std::string reason;
            Event event = EventOfLine(content, reason);
            event.line = line;
            if (event.days.empty())
                collector.PassOver(line, std::move(reason));
            else
                collector.Add(std::move(event));
        }
        return true;
    });
    if (!wasThere)
        throw Error(ErrorKind::NoSuchSection, std::string(section),
                    "It has " + util::Join(HolSections(text), ", "));
    return collector.Take();
}

} // namespace orrery::exchange
