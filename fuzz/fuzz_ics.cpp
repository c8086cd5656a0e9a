// Any bytes are an iCalendar file: its components are read, or have a sentence. What is read has
// names and days in order.

#include "require.h"

#include "exchange/ics/calendar_builder.h"
#include "exchange/ics/component_reader.h"
#include "exchange/ics/plugin/event_parser.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace {

using namespace orrery;

constexpr int kFirstYear = 2026;
constexpr int kLastYear = 2028;

/// A file in memory.
class MemoryFile {
public:
    MemoryFile(const std::uint8_t* data, std::size_t size) : descriptor_(::memfd_create("ics", 0))
    {
        fuzz::Require(::write(descriptor_, data, size) == static_cast<::ssize_t>(size));
    }
    ~MemoryFile() { ::close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    std::string Path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

private:
    int descriptor_;
};

void CheckEvent(const exchange::ParsedEvent& event)
{
    const auto* const end = event.days + event.dayCount;
    fuzz::Require(std::is_sorted(event.days, end));
    for (const auto* day = event.days; day != end; ++day)
        fuzz::Require(day->first <= day->last);
    fuzz::Require(event.yearly.kind == exchange::YearlyDay::Kind::None ||
                  event.yearly.firstYear <= event.yearly.lastYear);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const MemoryFile memory(data, size);
    util::InputFile file(memory.Path());
    exchange::ComponentReader reader(file);
    exchange::EventParser parser(kFirstYear, kLastYear);
    exchange::CalendarBuilder builder({kFirstYear, kLastYear});
    exchange::Component component;
    while (reader.Next(component)) {
        if (!component.problem.empty())
            continue;
        if (component.kind == exchange::Component::Kind::Zone)
            parser.AddZone(component.text);
        if (component.kind != exchange::Component::Kind::Event)
            continue;
        const exchange::ParsedEvent& event = parser.Parse(component.text);
        CheckEvent(event);
        builder.Add(event, component.line);
    }
    const exchange::Calendar calendar = builder.Finish();
    for (const exchange::Event& event : calendar.events)
        fuzz::Require(!event.name.empty() && (!event.days.empty() || event.yearly));
    for (const exchange::PassedOver& passed : calendar.passedOver)
        fuzz::Require(passed.line > 0 && passed.reason.ends_with('.'));
    return 0;
}
