#include "exchange/ics/calendar_builder.h"
#include "exchange/ics/error.h"
#include "util/expect_sentences.h"

#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

namespace orrery::exchange {
namespace {

constexpr std::int32_t kDay = 20819; // 1 January 2027

TEST(CalendarBuilder, CleansNames)
{
    CalendarBuilder builder({2027, 2027});
    const DayRange day{kDay, kDay};
    const std::string tooLong = std::string(254, 'a') + "\xC3\xB6" + "bc";
    for (const std::string& name : {std::string(" a\r\n\tb\x01 "), tooLong, std::string("\n")}) {
        ParsedEvent event;
        event.name = name;
        event.days = &day;
        event.dayCount = 1;
        builder.Add(event, 7);
    }
    const Calendar calendar = builder.Finish();
    ASSERT_EQ(calendar.events.size(), 2U);
    EXPECT_EQ(calendar.events[0].name, "a b");
    EXPECT_EQ(calendar.events[1].name, tooLong.substr(0, 256));
    ASSERT_EQ(calendar.passedOver.size(), 1U);
    EXPECT_EQ(calendar.passedOver[0].line, 7U);
    EXPECT_EQ(calendar.passedOver[0].reason, "The event has no name.");
}

ParsedEvent EventOf(const std::vector<DayRange>& days)
{
    ParsedEvent event;
    event.name = "Event";
    event.uid = "a";
    event.days = days.data();
    event.dayCount = days.size();
    return event;
}

TEST(CalendarBuilder, ReplacesDaysOfAnEventByThoseOfAnother)
{
    CalendarBuilder builder({2027, 2027});
    const std::vector<DayRange> moved = {{kDay + 40, kDay + 40}};
    ParsedEvent change = EventOf(moved);
    change.isOverride = true;
    change.replacedDay = kDay + 1;
    builder.Add(change, 1); // the file may have it first
    ParsedEvent cancelled = change;
    cancelled.problem = "The event is cancelled.";
    cancelled.replacedDay = kDay + 2;
    builder.Add(cancelled, 2);
    const std::vector<DayRange> days = {{kDay, kDay}, {kDay + 1, kDay + 1}, {kDay + 2, kDay + 3}};
    ParsedEvent repeated = EventOf(days);
    repeated.isRepeated = true;
    repeated.yearly = {YearlyDay::Kind::Date, 1, 1, 0, 0, 2027, 9999};
    builder.Add(repeated, 3);
    repeated.uid = "b";
    builder.Add(repeated, 4);
    const Calendar calendar = builder.Finish();
    ASSERT_EQ(calendar.events.size(), 3U);
    EXPECT_EQ(calendar.events[1].days.size(), 1U);
    EXPECT_FALSE(calendar.events[1].yearly);
    EXPECT_EQ(calendar.events[2].days.size(), 3U) << "of another UID";
    EXPECT_TRUE(calendar.events[2].yearly);
}

TEST(CalendarBuilder, GivesYearlyDaysAsRulesHaveThem)
{
    CalendarBuilder builder({2027, 2027});
    ParsedEvent event = EventOf({});
    event.yearly = {YearlyDay::Kind::Date, 5, 10, 0, 0, 2020, 9999};
    builder.Add(event, 1);
    event.yearly = {YearlyDay::Kind::Weekday, 5, 0, 2, 5, 2020, 2030};
    builder.Add(event, 2);
    event.yearly = {YearlyDay::Kind::LeapDay, 2, 29, 0, 0, 2020, 9999};
    builder.Add(event, 3);
    const Calendar calendar = builder.Finish();
    ASSERT_EQ(calendar.events.size(), 3U);
    const Yearly date{{holidays::PlainDay{510, 0}}, {2020, holidays::YearRange().last}};
    EXPECT_EQ(calendar.events[0].yearly, date);
    const Yearly weekday{{holidays::PlainDay{505, 2}}, {2020, 2030}};
    EXPECT_EQ(calendar.events[1].yearly, weekday);
    EXPECT_TRUE(std::holds_alternative<holidays::LeapDay>(calendar.events[2].yearly->day.kind));
}

TEST(CalendarBuilder, TellsWhatHasNoDay)
{
    CalendarBuilder builder({2027, 2030});
    builder.Add(EventOf({}), 9);
    const Calendar calendar = builder.Finish();
    EXPECT_TRUE(calendar.events.empty());
    ASSERT_EQ(calendar.passedOver.size(), 1U);
    EXPECT_EQ(calendar.passedOver[0].reason, "It has no day in the years 2027 to 2030.");
}

TEST(IcsErrors, HaveOneMessageEach)
{
    test::ExpectSentences(IcsErrorKind::IcsLibraryFailure, {});
}

} // namespace
} // namespace orrery::exchange
