#include "holidays/language/own_day.h"

#include "rules_test.h"

#include <gmock/gmock.h>

namespace orrery::holidays {
namespace {

using OwnKind = OwnDay::Kind;
using testing::ElementsAre;
using testing_support::Text;

HolidayList ListWith(const OwnDay& day)
{
    HolidayList list;
    AppendEntries(EntriesOf(day), list);
    return list;
}

std::vector<std::string> DaysOfOwn(const OwnDay& day, int year)
{
    std::vector<std::string> days;
    for (const Holiday& holiday : HolidaysOf(RulesOf(ListWith(day)), year, {}))
        days.push_back(Text(holiday.date) + ' ' + holiday.name);
    return days;
}

OwnDay OwnDayNamed(OwnKind kind, MonthDay day, std::optional<int> year = std::nullopt)
{
    OwnDay own;
    own.kind = kind;
    own.name = "Ben, our cat";
    own.day = day;
    own.year = year;
    return own;
}

OwnDay Tournament()
{
    OwnDay day = OwnDayNamed(OwnKind::Range, {12, 30}, 2027);
    day.lastDay = {1, 2};
    day.lastYear = 2028;
    return day;
}

OwnDay LastMondayOfMay()
{
    OwnDay day = OwnDayNamed(OwnKind::Weekday, {5, 1});
    day.weekday = 2;
    day.ordinal = 5;
    return day;
}

TEST(OwnDay, FallsOnItsDates)
{
    EXPECT_THAT(DaysOfOwn(OwnDayNamed(OwnKind::EveryYear, {8, 30}), 2027),
                ElementsAre("2027-08-30 Ben, our cat"));
    EXPECT_THAT(DaysOfOwn(OwnDayNamed(OwnKind::Birthday, {8, 30}, 1984), 2027),
                ElementsAre("2027-08-30 Ben, our cat (43)"));
    EXPECT_THAT(DaysOfOwn(LastMondayOfMay(), 2027), ElementsAre("2027-05-31 Ben, our cat"));
    EXPECT_THAT(DaysOfOwn(OwnDayNamed(OwnKind::OneDate, {5, 14}, 2027), 2027),
                ElementsAre("2027-05-14 Ben, our cat"));
    EXPECT_TRUE(DaysOfOwn(OwnDayNamed(OwnKind::OneDate, {5, 14}, 2027), 2028).empty());
    EXPECT_THAT(DaysOfOwn(Tournament(), 2027),
                ElementsAre("2027-12-30 Ben, our cat", "2027-12-31 Ben, our cat"));
    EXPECT_THAT(DaysOfOwn(Tournament(), 2028),
                ElementsAre("2028-01-01 Ben, our cat", "2028-01-02 Ben, our cat"));
}

TEST(OwnDay, OfALeapDayIsOnTheFirstOfMarchInOtherYears)
{
    EXPECT_THAT(DaysOfOwn(OwnDayNamed(OwnKind::Birthday, {2, 29}, 2000), 2028),
                ElementsAre("2028-02-29 Ben, our cat (28)"));
    EXPECT_THAT(DaysOfOwn(OwnDayNamed(OwnKind::EveryYear, {2, 29}), 2027),
                ElementsAre("2027-03-01 Ben, our cat"));
}

TEST(OwnDay, IsAPlainRuleForOlderProgramsWhereItCanBe)
{
    EXPECT_EQ(ListWith(OwnDayNamed(OwnKind::Birthday, {8, 30}, 1984))[0],
              (HolidayDef{830, kFixedDay, "Ben, our cat"}));
    EXPECT_EQ(ListWith(LastMondayOfMay())[0], (HolidayDef{505, 2, "Ben, our cat"}));
    EXPECT_EQ(ListWith(Tournament()).Count(), 0);
}

TEST(OwnDay, ComesBackFromItsRule)
{
    for (const OwnDay& day :
         {OwnDayNamed(OwnKind::EveryYear, {8, 30}), OwnDayNamed(OwnKind::EveryYear, {2, 29}),
          OwnDayNamed(OwnKind::Birthday, {2, 29}, 1984),
          OwnDayNamed(OwnKind::Birthday, {12, 31}, 2020), LastMondayOfMay(),
          OwnDayNamed(OwnKind::OneDate, {2, 29}, 2028), Tournament()}) {
        ASSERT_EQ(ProblemOf(day), std::nullopt);
        const RuleSet rules = RulesOf(ListWith(day));
        ASSERT_EQ(rules.rules.size(), 1U);
        EXPECT_EQ(OwnDayOf(rules.rules[0]), day) << static_cast<int>(day.kind);
    }
}

TEST(OwnDay, IsNoRuleThatSaysMore)
{
    for (const char* const rule :
         {"0704,DAY,x\n> years 2021-\n", "0704,DAY,x\n> only in N\n", "1104,THU +1,x\n",
          "-2,EASTER,x\n", "1225,JULIAN,x\n", "20270101 20280101,DATE,x\n", "0001,MON,x\n",
          "0506,MON,x\n", "0500,MON,x\n", "20270101,DATE,x\n> born 1984\n",
          "0101,MON,x\n> born 1984\n", "0704,DAY,x\n> name de y\n", "0704,DAY,x\n> kind bank\n"})
        EXPECT_EQ(OwnDayOf(testing_support::SetOf(rule).rules.at(0)), std::nullopt) << rule;
}

TEST(OwnDay, SaysWhatIsWrong)
{
    OwnDay nameless = OwnDayNamed(OwnKind::EveryYear, {8, 30});
    nameless.name = "  ";
    EXPECT_EQ(ProblemOf(nameless), "Type the name of the day.");
    EXPECT_EQ(ProblemOf(OwnDayNamed(OwnKind::EveryYear, {2, 30})), "February has no day 30.");
    EXPECT_EQ(ProblemOf(OwnDayNamed(OwnKind::Birthday, {4, 0})), "April has no day 0.");
    EXPECT_EQ(ProblemOf(OwnDayNamed(OwnKind::Birthday, {2, 29}, 1985)),
              "February 1985 has no day 29.");
    EXPECT_EQ(ProblemOf(OwnDayNamed(OwnKind::Birthday, {8, 30}, 0)),
              "Type the year of birth, such as 1984, or leave it empty.");
    EXPECT_EQ(ProblemOf(OwnDayNamed(OwnKind::OneDate, {8, 30})), "Type the year, such as 2027.");
    EXPECT_EQ(ProblemOf(OwnDayNamed(OwnKind::OneDate, {2, 29}, 2027)),
              "February 2027 has no day 29.");
    EXPECT_EQ(ProblemOf(OwnDayNamed(OwnKind::OneDate, {8, 30}, 10000)),
              "Type the year, such as 2027.");
    OwnDay range = Tournament();
    range.lastYear = 2026;
    EXPECT_EQ(ProblemOf(range), "The last day is before the first one.");
    range.lastYear = 2029;
    EXPECT_EQ(ProblemOf(range), "These are more than 366 days.");
    range.lastYear = 0;
    EXPECT_EQ(ProblemOf(range), "Type the year of the last day, such as 2027.");
    range.lastDay = {2, 30};
    range.lastYear = 2028;
    EXPECT_EQ(ProblemOf(range), "February 2028 has no day 30.");
}

} // namespace
} // namespace orrery::holidays
