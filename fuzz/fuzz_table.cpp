// Any text is a table or a file of holidays for Outlook: its lines become events with names and
// days, or have a sentence. The rules of the events are read again, each line of them.

#include "require.h"

#include "exchange/event_name.h"
#include "exchange/holiday_file.h"
#include "exchange/rules_of.h"
#include "exchange/table/find_table.h"
#include "exchange/table/hol_reader.h"
#include "exchange/table/read_table.h"
#include "holidays/files/rule_reader.h"
#include "util/error.h"
#include "util/text.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

using namespace orrery;

void CheckFile(const exchange::Calendar& calendar)
{
    const exchange::ImportedRules rules = exchange::RulesOf(calendar);
    holidays::HolidayList list;
    holidays::RuleReader reader(list);
    std::size_t line = 0;
    for (const holidays::ListEntry& entry : rules.entries) {
        const std::string text = LineOf(entry);
        fuzz::Require(text.find_first_of("\r\n") == std::string::npos);
        fuzz::Require(reader.Read(++line, text));
    }
    fuzz::Require(reader.TakeProblems().empty());
    fuzz::Require(util::IsValidUtf8(HolidayFileText(rules, "Club", "Club.csv")));
}

void CheckCalendar(const exchange::Calendar& calendar)
{
    for (const exchange::Event& event : calendar.events) {
        fuzz::Require(!event.name.empty() && exchange::CleanName(event.name) == event.name);
        fuzz::Require(event.days.size() == 1 && event.days[0].first <= event.days[0].second);
    }
    for (const exchange::PassedOver& line : calendar.passedOver)
        fuzz::Require(line.line > 0 && line.reason.ends_with('.'));
    try {
        CheckFile(calendar);
    }
    catch (const util::Error&) { // more than a list holds
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        const exchange::TableText text(std::string(reinterpret_cast<const char*>(data), size), "a");
        static_cast<void>(exchange::IsHol(text));
        static_cast<void>(exchange::HolSections(text));
        CheckCalendar(exchange::ReadHol(text));
        exchange::TableLayout layout = exchange::FindTable(text, "a").layout;
        for (const exchange::DateOrder order : exchange::kDateOrders) {
            layout.dates.order = order;
            CheckCalendar(exchange::ReadTable(text, layout));
        }
    }
    catch (const util::Error&) { // no text, or no dates
    }
    return 0;
}
