#include "exchange/table/find_table.h"
#include "exchange/table/read_table.h"

#include "calendar_text.h"

#include <gmock/gmock.h>

namespace orrery::exchange {
namespace {

using sample::EventsOf;
using sample::PassedOverOf;
using testing::ElementsAre;
using testing::IsEmpty;

Calendar Read(std::string text)
{
    const TableText table(std::move(text), "a.csv");
    return ReadTable(table, FindTable(table, "a.csv").layout);
}

TEST(ReadTable, ReadsEvents)
{
    const auto calendar = Read("Date;Name\r\n01.05.2027;Tag der Arbeit\r\n03.10.2027;\"Fest; "
                               "\"\"das\"\" Fest\"\r\n");
    EXPECT_THAT(EventsOf(calendar),
                ElementsAre("2027-05-01 Tag der Arbeit", "2027-10-03 Fest; \"das\" Fest"));
    EXPECT_EQ(calendar.events[1].line, 3U);
    EXPECT_THAT(calendar.passedOver, IsEmpty());
}

TEST(ReadTable, ReadsTheSameInEveryEncoding)
{
    const std::string text = "Datum,Name\n1.5.2027,Müller\n";
    std::string wide = "\xFF\xFE";
    for (const char c : std::string("Datum,Name\n1.5.2027,M\xFCller\n"))
        (wide += c) += '\0';
    EXPECT_THAT(EventsOf(Read(text)), ElementsAre("2027-05-01 Müller"));
    EXPECT_THAT(EventsOf(Read("Datum,Name\n1.5.2027,M\xFCller\n")),
                ElementsAre("2027-05-01 Müller"));
    EXPECT_THAT(EventsOf(Read(wide)), ElementsAre("2027-05-01 Müller"));
}

TEST(ReadTable, ReadsLastDays)
{
    EXPECT_THAT(EventsOf(Read("From,To,What\n2027-05-14,2027-05-17,Fair\n2027-06-01,,Day\n")),
                ElementsAre("2027-05-14..2027-05-17 Fair", "2027-06-01 Day"));
}

TEST(ReadTable, ReadsLinesOfTheClipboard)
{
    EXPECT_THAT(EventsOf(Read("1 May 2027: Labour Day\nChristmas, 25 Dec 2027\n")),
                ElementsAre("2027-05-01 Labour Day", "2027-12-25 Christmas"));
    EXPECT_THAT(EventsOf(Read("5/1/2027\tMay Day\n5/14/2027\tFair\n")),
                ElementsAre("2027-05-01 May Day", "2027-05-14 Fair"));
}

TEST(ReadTable, TellsWhatIsPassedOver)
{
    const auto calendar = Read("Date,Until,Name\n"
                               "2027-05-01,,May Day\n"
                               "\n"
                               "soon,,Party\n"
                               "2027-02-30,,Party\n"
                               ",,Party\n"
                               "2027-05-02,,\n"
                               "2027-05-05,2027-05-04,Fair\n"
                               "2027-05-06,later,Fair\n"
                               "\"2027-05-07,,Open\n"
                               "2027-05-08,,Last\n");
    EXPECT_THAT(EventsOf(calendar), ElementsAre("2027-05-01 May Day", "2027-05-08 Last"));
    EXPECT_THAT(PassedOverOf(calendar),
                ElementsAre("4: \"soon\" is not a date.",
                            "5: \"2027-02-30\" is not a date in the order year, month, day.",
                            "6: The date is missing.", "7: The name is missing.",
                            "8: The last day is before the first one.",
                            "9: \"later\" is not a date.", "10: A quote is not closed."));
    EXPECT_THAT(PassedOverOf(Read("1.5.2027 May Day\nOther days\n")),
                ElementsAre("2: There is no date in \"Other days\"."));
}

TEST(ReadTable, TakesAChangedLayout)
{
    const TableText table("a,1/2/2027,3/4/2027\nb,5/6/2027,7/8/2027\n", "a.csv");
    TableLayout layout = FindTable(table, "a.csv").layout;
    EXPECT_THAT(EventsOf(ReadTable(table, layout)), ElementsAre("2027-02-01 a", "2027-06-05 b"));
    layout.dates.order = DateOrder::MonthDayYear;
    layout.dateColumn = 2;
    EXPECT_THAT(EventsOf(ReadTable(table, layout)), ElementsAre("2027-03-04 a", "2027-07-08 b"));
    layout.hasHeader = true;
    EXPECT_THAT(EventsOf(ReadTable(table, layout)), ElementsAre("2027-07-08 b"));
    layout.nameColumn = 40;
    EXPECT_THAT(EventsOf(ReadTable(table, layout)), IsEmpty());
}

} // namespace
} // namespace orrery::exchange
