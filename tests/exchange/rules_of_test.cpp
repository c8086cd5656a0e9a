#include "exchange/rules_of.h"

#include "events.h"
#include "exchange/error.h"
#include "exchange/holiday_file.h"
#include "holidays/files/holiday_readers.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/scratch_folder.h"

#include <gmock/gmock.h>

namespace orrery::exchange {
namespace {

using sample::Dated;
using sample::Day;
using sample::EveryYear;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::string> LinesOf(const ImportedRules& rules)
{
    std::vector<std::string> lines;
    for (const holidays::ListEntry& entry : rules.entries)
        lines.push_back(LineOf(entry));
    return lines;
}

std::vector<std::string> LinesOf(std::vector<Event> events, std::optional<Years> years = {})
{
    return LinesOf(RulesOf({std::move(events), {}}, years));
}

TEST(RulesOf, WritesPlainRulesForEveryYear)
{
    EXPECT_THAT(LinesOf({EveryYear("Christmas Day, all of it", 1225),
                         EveryYear("Labor Day", 901, 2), EveryYear("Memorial Day", 505, 2)}),
                ElementsAre("1225,DAY,Christmas Day, all of it", "0901,MONDAY,Labor Day",
                            "0505,MONDAY,Memorial Day"));
    EXPECT_THAT(LinesOf({EveryYear("Lights", 1006, 1)}), ElementsAre("1006,SUNDAY,Lights"));
}

TEST(RulesOf, SaysInWhichYears)
{
    constexpr int first = std::numeric_limits<int>::min();
    constexpr int last = std::numeric_limits<int>::max();
    EXPECT_THAT(LinesOf({EveryYear("Party", 501, 0, {2019, last})}),
                ElementsAre("0501,DAY,Party", "> years 2019-"));
    EXPECT_THAT(LinesOf({EveryYear("Party", 501, 0, {first, 2019})}),
                ElementsAre("0501,DAY,Party", "> years -2019"));
    EXPECT_THAT(LinesOf({EveryYear("Party", 501, 0, {2019, 2021})}),
                ElementsAre("0501,DAY,Party", "> years 2019-2021"));
    EXPECT_THAT(LinesOf({EveryYear("Party", 501, 0, {2019, 2019})}),
                ElementsAre("0501,DAY,Party", "> years 2019"));
}

TEST(RulesOf, KnowsLeapDays)
{
    Event leap = EveryYear("Leap day", 229);
    EXPECT_THAT(LinesOf({leap}), ElementsAre("0229,LEAP DAY,Leap day"));
    leap.yearly->day.kind = holidays::LeapDay{};
    EXPECT_THAT(LinesOf({leap}), ElementsAre("0229,LEAP DAY,Leap day"));
    leap.yearly->day = {holidays::PlainDay{228, holidays::kFixedDay}, 1};
    EXPECT_THAT(LinesOf({leap}), ElementsAre("0228,DAY +1,Leap day"));
}

TEST(RulesOf, KeepsTheYearOfABirth)
{
    Event ben = EveryYear("Ben", 830, 0, {1984, 9999});
    ben.born = 1984;
    EXPECT_THAT(LinesOf({ben}), ElementsAre("0830,DAY,Ben", "> born 1984"));
    ben.yearly->years.first = 1990;
    EXPECT_THAT(LinesOf({ben}), ElementsAre("0830,DAY,Ben", "> born 1984", "> years 1990-"));
    ben.born = 0;
    EXPECT_THAT(LinesOf({ben}), ElementsAre("0830,DAY,Ben", "> years 1990-"));
}

TEST(RulesOf, ListsTheDatesOfAName)
{
    EXPECT_THAT(
        LinesOf({Dated("Diwali", Day(2025, 10, 20)), Dated("Fair", Day(2024, 5, 1)),
                 Dated("Diwali", Day(2024, 10, 31)),
                 Dated("Diwali", Day(2026, 11, 8), Day(2026, 11, 9))}),
        ElementsAre("20240501,DATE,Fair", "20241031 20251020 20261108-20261109,DATE,Diwali"));
}

TEST(RulesOf, TakesTheDaysWhereNoRuleCanSayIt)
{
    Event event = Dated("New moon", Day(2027, 2, 6));
    event.yearly = Yearly{{holidays::MoonDay{}}, {}};
    EXPECT_THAT(LinesOf({event}), ElementsAre("20270206,DATE,New moon"));
    event.yearly = Yearly{{holidays::PlainDay{231, 0}}, {}}; // 31 February
    EXPECT_THAT(LinesOf({event}), ElementsAre("20270206,DATE,New moon"));
}

TEST(RulesOf, MergesWhatSaysTheSame)
{
    const auto rules = RulesOf(
        {{EveryYear("Christmas", 1225), EveryYear("Christmas", 1225), EveryYear("Noel", 1225),
          Dated("Fair", Day(2027, 5, 1)), Dated("Fair", Day(2027, 5, 1)),
          Dated("Christmas", Day(2027, 12, 25)), Dated("Christmas", Day(2027, 12, 26))},
         {}});
    EXPECT_THAT(LinesOf(rules), ElementsAre("1225,DAY,Christmas", "1225,DAY,Noel",
                                            "20270501,DATE,Fair", "20271226,DATE,Christmas"));
    EXPECT_EQ(rules.duplicates, 3U);
    EXPECT_EQ(rules.rules, 2U);
    EXPECT_EQ(rules.datedDays, 2U);
}

TEST(RulesOf, JoinsDaysThatOverlap)
{
    EXPECT_THAT(LinesOf({Dated("Trip", Day(2027, 5, 1), Day(2027, 5, 4)),
                         Dated("Trip", Day(2027, 5, 3), Day(2027, 5, 6)),
                         Dated("Trip", Day(2027, 5, 7), Day(2027, 5, 8))}),
                ElementsAre("20270501-20270506 20270507-20270508,DATE,Trip"));
}

TEST(RulesOf, SplitsWhatALineCannotHold)
{
    EXPECT_THAT(LinesOf({Dated("Leave", Day(2027, 1, 1), Day(2028, 12, 31))}),
                ElementsAre("20270101-20280101 20280102-20281231,DATE,Leave"));
    std::vector<Event> events;
    for (int day = 0; day < 1001; ++day)
        events.push_back(Dated("Water", Day(2027, 1, 1) + std::chrono::days(2 * day)));
    const auto lines = LinesOf(events);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1], "20320623,DATE,Water");
}

TEST(RulesOf, LeavesOutWhatIsOutsideOfTheYears)
{
    const Calendar calendar = {{EveryYear("Old", 501, 0, {1990, 2026}), EveryYear("Now", 502),
                                Dated("Past", Day(2026, 12, 31)), Dated("Next", Day(2029, 1, 1)),
                                Dated("Turn", Day(2026, 12, 30), Day(2027, 1, 2)),
                                Dated("Last", Day(2028, 12, 31)), Event{"Nothing", {}, {}, {}, 7}},
                               {}};
    const auto rules = RulesOf(calendar, Years{2027, 2028});
    EXPECT_THAT(LinesOf(rules),
                ElementsAre("0502,DAY,Now", "20261230-20270102,DATE,Turn", "20281231,DATE,Last"));
    EXPECT_EQ(rules.outside, 4U);
    EXPECT_EQ(rules.datedDays, 5U);
    EXPECT_EQ(RulesOf(calendar).outside, 1U);
}

TEST(RulesOf, PassesOverEventsWithoutAName)
{
    Event empty = Dated(" \r\n", Day(2027, 5, 1));
    empty.line = 3;
    const auto rules = RulesOf({{empty}, {{1, "First."}, {9, "Last."}}});
    EXPECT_THAT(rules.entries, IsEmpty());
    ASSERT_EQ(rules.passedOver.size(), 3U);
    EXPECT_EQ(rules.passedOver[1].line, 3U);
    EXPECT_EQ(rules.passedOver[1].reason, "The event has no name.");
}

TEST(RulesOf, RefusesMoreThanAListHolds)
{
    std::vector<Event> events;
    for (int i = 0; i < 1025; ++i)
        events.push_back(Dated("Day " + std::to_string(i), Day(2027, 5, 1)));
    EXPECT_EQ(LinesOf(events).size(), 1025U);
    events.push_back(EveryYear("One more", 501));
    try {
        RulesOf({events, {}});
        FAIL();
    }
    catch (const Error& error) {
        EXPECT_EQ(util::ErrorText(error),
                  "The events would become 1026 rules, and a list holds 1,025. Take fewer years, "
                  "such as 2027-2028 (--years 2027-2028 on the command line).");
    }
}

TEST(HolidayFileText, BeginsWithComments)
{
    const auto rules = RulesOf({{EveryYear("May Day", 501)}, {}});
    EXPECT_EQ(HolidayFileText(rules, "Club", "Club.csv"),
              "# Club: days from Club.csv\r\n0501,DAY,May Day\r\n");
}

TEST(HolidayFileText, IsNotChangedByItsNames)
{
    const auto rules = RulesOf({{EveryYear("May Day", 501)}, {}});
    for (const char* const name : {"Weekend", "Further file: x", "a, DAY, b", "> born 1984",
                                   "0501,DAY,x\r\n0502,DAY,y", "", "\xEF\xBB\xBF"}) {
        const testing_support::ScratchFolder scratch;
        const auto file =
            scratch.Write("own.txt", HolidayFileText(rules, name, std::string(name) + ".csv"));
        const auto read = holidays::LoadHolidayFile(file);
        EXPECT_THAT(read.problems, IsEmpty()) << name;
        EXPECT_EQ(read.list.Count(), 1) << name;
        EXPECT_THAT(read.list.Extras(), IsEmpty()) << name;
    }
}

} // namespace
} // namespace orrery::exchange
