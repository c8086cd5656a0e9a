#include "exchange/ics/ics_reader.h"

#include "exchange/ics/calendar_builder.h"
#include "exchange/ics/component_reader.h"
#include "exchange/ics/error.h"
#include "exchange/ics/ics_library.h"
#include "util/paths.h"

#include <array>
#include <cstdint>
#include <string>

namespace orrery::exchange {
namespace {

constexpr std::uint64_t kLargestFile = std::uint64_t{100} << 20U;
constexpr std::size_t kMostEvents = 100'000;

/// A number of things that are not read, with the line of the first.
struct Counted {
    std::size_t count = 0;
    std::size_t line = 0;
    void Add(std::size_t where)
    {
        if (count++ == 0)
            line = where;
    }
};

/// "2 tasks", "1 task".
std::string CountOf(std::size_t count, const char* one)
{
    return std::to_string(count) + ' ' + one + (count == 1 ? "" : "s");
}

/// What is passed over without being parsed.
struct Unread {
    Counted zones;
    Counted events;
    Counted tasks;
    Counted notes;
};

/// Time zones first: the events that use them may stand above them.
void ReadZones(util::InputFile& file, IcsParser& parser, Unread& unread)
{
    ComponentReader reader(file);
    Component component;
    while (reader.Next(component)) {
        if (component.kind != Component::Kind::Zone)
            continue;
        if (!component.problem.empty() || !parser.AddZone(component.text))
            unread.zones.Add(component.line);
    }
}

void ReadEvents(ComponentReader& reader, IcsParser& parser, CalendarBuilder& builder,
                Unread& unread)
{
    Component component;
    std::size_t events = 0;
    while (reader.Next(component)) {
        if (component.kind == Component::Kind::Todo)
            unread.tasks.Add(component.line);
        else if (component.kind == Component::Kind::Journal)
            unread.notes.Add(component.line);
        else if (component.kind == Component::Kind::Event && events == kMostEvents)
            unread.events.Add(component.line);
        if (component.kind != Component::Kind::Event || events == kMostEvents)
            continue;
        ++events;
        if (component.problem.empty())
            builder.Add(parser.Parse(component.text), component.line);
        else
            builder.PassOver(component.line, component.problem);
    }
}

void PassOverUnread(const Unread& unread, CalendarBuilder& builder)
{
    const auto passOver = [&](const Counted& counted, const std::string& reason) {
        if (counted.count > 0)
            builder.PassOver(counted.line, reason);
    };
    passOver(unread.zones, CountOf(unread.zones.count, "time zone") +
                               " cannot be used (VTIMEZONE). Times count as they are written.");
    passOver(unread.events,
             "Only the first 100,000 events of a file are read. Not read from here on: " +
                 CountOf(unread.events.count, "event") + '.');
    passOver(unread.tasks, CountOf(unread.tasks.count, "task") + " (VTODO) cannot be holidays.");
    passOver(unread.notes, CountOf(unread.notes.count, "note") + " (VJOURNAL) cannot be holidays.");
}

} // namespace

Calendar ReadIcs(const std::filesystem::path& path, Years years)
{
    util::InputFile file(path);
    if (file.Size() > kLargestFile)
        throw Error(IcsErrorKind::IcsTooLarge, util::FromPath(path));
    const auto parser = MakeIcsParser(years);
    CalendarBuilder builder(years);
    Unread unread;
    ReadZones(file, *parser, unread);
    file.Seek(0);
    ComponentReader reader(file);
    ReadEvents(reader, *parser, builder, unread);
    if (!reader.IsCalendar())
        throw Error(IcsErrorKind::NotIcs, util::FromPath(path));
    PassOverUnread(unread, builder);
    file.CheckUnchanged();
    return builder.Finish();
}

} // namespace orrery::exchange
