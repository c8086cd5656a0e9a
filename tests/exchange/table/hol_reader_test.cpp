#include "exchange/table/hol_reader.h"

#include "calendar_text.h"
#include "exchange/error.h"
#include "util/error.h"
#include "util/error_text.h"

#include <gmock/gmock.h>

namespace orrery::exchange {
namespace {

using sample::EventsOf;
using sample::PassedOverOf;
using testing::ElementsAre;
using testing::IsEmpty;

TableText HolText(std::string bytes)
{
    return {std::move(bytes), "outlook.hol"};
}

const char* const kTwoCountries = "[Germany] 2\r\n"
                                  "Neujahr,2027/1/1\r\n"
                                  "Tag der Arbeit,2027/5/1\r\n"
                                  "\r\n"
                                  "[Club of friends] 1\r\n"
                                  "Summer party,2027/7/3\r\n";

TEST(ReadHol, ReadsAllSectionsOrOne)
{
    EXPECT_THAT(
        EventsOf(ReadHol(HolText(kTwoCountries))),
        ElementsAre("2027-01-01 Neujahr", "2027-05-01 Tag der Arbeit", "2027-07-03 Summer party"));
    EXPECT_THAT(EventsOf(ReadHol(HolText(kTwoCountries), "CLUB of Friends")),
                ElementsAre("2027-07-03 Summer party"));
    EXPECT_THAT(HolSections(HolText(kTwoCountries)), ElementsAre("Germany", "Club of friends"));
    try {
        ReadHol(HolText(kTwoCountries), "France");
        FAIL();
    }
    catch (const Error& error) {
        EXPECT_EQ(util::ErrorText(error),
                  "The file has no section \"France\": It has Germany, Club of friends. Name "
                  "another one, or none for all.");
    }
}

TEST(ReadHol, KnowsCommasInNames)
{
    EXPECT_THAT(
        EventsOf(ReadHol(HolText("[A] 3\nKing\\, Jr.,2027/1/18\n\"Day, long\",2027/1/19\n"
                                 "Plain, too,2027/1/20\n"))),
        ElementsAre("2027-01-18 King, Jr.", "2027-01-19 Day, long", "2027-01-20 Plain, too"));
}

TEST(ReadHol, KnowsTheCalendarBehindADate)
{
    const auto calendar =
        ReadHol(HolText("[A] 3\nNew Year,2027/1/1,1\nRamadan,1448/9/1,6\nRun 10,2027/3/1\n"));
    EXPECT_THAT(EventsOf(calendar), ElementsAre("2027-01-01 New Year", "2027-03-01 Run 10"));
    EXPECT_THAT(PassedOverOf(calendar), ElementsAre("3: The date is one of another calendar."));
}

TEST(ReadHol, TellsWhatIsPassedOver)
{
    const auto calendar = ReadHol(HolText("[A] 5\nNo date\n,2027/1/1\nWrong,2027/13/1\n"
                                          "Good,2027/1/2\n12\n"));
    EXPECT_THAT(EventsOf(calendar), ElementsAre("2027-01-02 Good"));
    EXPECT_THAT(
        PassedOverOf(calendar),
        ElementsAre("2: There is no date such as 2027/5/1 at the end of \"No date\".",
                    "3: The name is missing.",
                    "4: There is no date such as 2027/5/1 at the end of \"Wrong,2027/13/1\".",
                    "6: There is no date such as 2027/5/1 at the end of \"12\"."));
}

TEST(ReadHol, ReadsUtf16)
{
    std::string wide = "\xFF\xFE";
    for (const char c : std::string("[\xD6sterreich] 1\r\nNeujahr,2027/1/1\r\n"))
        (wide += c) += '\0';
    EXPECT_THAT(HolSections(HolText(wide)), ElementsAre("Österreich"));
    EXPECT_THAT(EventsOf(ReadHol(HolText(wide), "österreich")), ElementsAre("2027-01-01 Neujahr"));
}

TEST(IsHol, LooksAtTheFirstLine)
{
    EXPECT_TRUE(IsHol(HolText(kTwoCountries)));
    EXPECT_TRUE(IsHol(HolText("\n\n[A]\n")));
    EXPECT_FALSE(IsHol(HolText("Date,Name\n[A] 1\n")));
    EXPECT_FALSE(IsHol(HolText("[A] x\n")));
    EXPECT_FALSE(IsHol(HolText("")));
}

} // namespace
} // namespace orrery::exchange
