#include "calendar_text.h"
#include "exchange/error.h"
#include "exchange/rules_of.h"
#include "exchange/table/event_collector.h"
#include "exchange/table/find_table.h"
#include "exchange/table/hol_reader.h"
#include "exchange/table/read_table.h"
#include "util/error.h"

#include <gmock/gmock.h>

namespace orrery::exchange {
namespace {

using sample::EventsOf;
using testing::ElementsAre;

constexpr std::size_t kMegabyte = 1'000'000;

std::string Repeated(std::string_view piece, std::size_t count)
{
    std::string text;
    text.reserve(piece.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        text += piece;
    return text;
}

Calendar ReadHostile(std::string text)
{
    const TableText table(std::move(text), "a.csv");
    return ReadTable(table, FindTable(table, "a.csv").layout);
}

void ExpectNoDates(std::string text)
{
    EXPECT_THROW(ReadHostile(std::move(text)), Error);
}

TEST(HostileTable, OneLongLineIsBounded)
{
    ExpectNoDates(std::string(kMegabyte, 'x'));
    ExpectNoDates(std::string(kMegabyte, ','));
    ExpectNoDates(std::string(kMegabyte, '"'));
    ExpectNoDates(std::string(kMegabyte, ' '));
    ExpectNoDates(std::string(kMegabyte, '1'));
    EXPECT_THAT(EventsOf(ReadHostile("2027-05-01,May Day\n" + std::string(kMegabyte, '['))),
                ElementsAre("2027-05-01 May Day"));
}

TEST(HostileTable, QuotesThatAreNotClosedAreBounded)
{
    ExpectNoDates(Repeated("\"\n", kMegabyte / 8));
    ExpectNoDates(Repeated("\"\"\"\n", kMegabyte / 8));
    ExpectNoDates(Repeated("x,\"\"\"y\n", kMegabyte / 8));
    EXPECT_THAT(
        EventsOf(ReadHostile("\"open,x\n2027-05-01,May Day\n" + std::string(kMegabyte / 8, '\n'))),
        ElementsAre("2027-05-01 May Day"));
}

TEST(HostileTable, KeepsAsManyEventsAsAUserNeeds)
{
    const auto calendar = ReadHostile(Repeated("2027-05-01,May Day\n", 120'000));
    EXPECT_EQ(calendar.events.size(), EventCollector::kMostEvents);
    ASSERT_EQ(calendar.passedOver.size(), 1U);
    EXPECT_EQ(calendar.passedOver[0].line, 100'001U);
    EXPECT_EQ(calendar.passedOver[0].reason,
              "20000 lines from here on are not read: 100,000 events are the most.");
    EXPECT_EQ(RulesOf(calendar).duplicates, 99'999U);
}

TEST(HostileTable, TellsOfTheFirstWrongLines)
{
    const auto calendar = ReadHostile("2027-05-01,May Day\n" + Repeated("x,y\n", 5000));
    ASSERT_EQ(calendar.passedOver.size(), EventCollector::kMostPassedOver + 1);
    EXPECT_EQ(calendar.passedOver.back().line, 1002U);
    EXPECT_EQ(calendar.passedOver.back().reason, "This line and 3999 further ones are no events.");
}

TEST(HostileTable, LongTimesAreOneError)
{
    std::string text = "Start,End,Name\n";
    for (int i = 0; i < 20'000; ++i)
        text += "0001-01-01,9999-12-31,Always " + std::to_string(i) + "\n";
    EXPECT_THROW(RulesOf(ReadHostile(text)), Error);
}

TEST(HostileHol, IsBounded)
{
    const auto read = [](std::string text) { return ReadHol(TableText(std::move(text), "a.hol")); };
    EXPECT_TRUE(read(std::string(kMegabyte, '[')).events.empty());
    EXPECT_TRUE(read(Repeated("[A] 1\n", kMegabyte / 10)).events.empty());
    EXPECT_EQ(read(Repeated("a,2027/1/1\n", 100'002)).passedOver.size(), 1U);
    EXPECT_EQ(HolSections(TableText(Repeated("[A] 1\n", kMegabyte / 10), "a.hol")).size(), 1000U);
}

} // namespace
} // namespace orrery::exchange
