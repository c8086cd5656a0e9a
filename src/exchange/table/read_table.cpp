#include "exchange/table/read_table.h"

#include "exchange/event_name.h"
#include "exchange/table/event_collector.h"
#include "exchange/table/table_entries.h"
#include "util/sentence.h"

namespace orrery::exchange {
namespace {

/// The date of a text, or the sentence that says why it is none.
std::optional<holidays::Date> DateIn(const std::string& text, const DateReading& reading,
                                     std::string& reason)
{
    const auto parts = SplitDate(text);
    const auto date = parts ? DateOf(*parts, reading) : std::nullopt;
    if (date)
        return date;
    reason = text.empty() ? "The date is missing." : util::QuotedBeginning(text) + " is not a date";
    if (parts && parts->month.empty())
        reason += " in the order " + std::string(InWords(reading.order));
    if (!text.empty())
        reason += '.';
    return std::nullopt;
}

/// The event of a row; without days if it is none, with the reason.
Event EventOf(const TableEntry& entry, const TableLayout& layout, std::string& reason)
{
    Event event;
    event.line = entry.line;
    event.name = CleanName(entry.name);
    if (entry.isBroken) {
        reason = "A quote is not closed.";
        return event;
    }
    if (layout.separator == kNoSeparator && entry.date.empty()) {
        reason = "There is no date in " + util::QuotedBeginning(event.name) + '.';
        return event;
    }
    const auto first = DateIn(entry.date, layout.dates, reason);
    const auto last = !first || entry.end.empty() ? first : DateIn(entry.end, layout.dates, reason);
    if (!first || !last)
        return event;
    if (event.name.empty())
        reason = "The name is missing.";
    else if (*last < *first)
        reason = "The last day is before the first one.";
    else
        event.days = {{*first, *last}};
    return event;
}

} // namespace

Calendar ReadTable(const TableText& text, const TableLayout& layout)
{
    EventCollector collector;
    EntryReader reader(text, layout);
    TableEntry entry;
    while (!collector.IsFull() && reader.Next(entry)) {
        std::string reason;
        Event event = EventOf(entry, layout, reason);
        if (event.days.empty())
            collector.PassOver(entry.line, std::move(reason));
        else
            collector.Add(std::move(event));
    }
    for (std::size_t line = 0; collector.IsFull() && reader.Skip(line);)
        collector.CountFurther(line);
    return collector.Take();
}

} // namespace orrery::exchange
