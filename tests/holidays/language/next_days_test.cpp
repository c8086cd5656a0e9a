#include "holidays/language/next_days.h"

#include "rules_test.h"

namespace orrery::holidays {
namespace {

using State = NextDays::State;
using testing_support::SetOf;
using testing_support::Text;

NextDays FirstOf(const std::string& lines, int year, const HolidayChoice& choice = {})
{
    return NextDaysOf(SetOf(lines), year, choice).at(0);
}

TEST(NextDaysOf, GivesTheDayOfEachRuleInTheYear)
{
    const auto days = NextDaysOf(SetOf("1104,THU,Thanksgiving\n0704,DAY,July\n"), 2027, {});
    ASSERT_EQ(days.size(), 2U);
    EXPECT_EQ(days[0].state, State::Given);
    EXPECT_EQ(Text(days[0].first), "2027-11-25");
    EXPECT_EQ(Text(days[1].first), "2027-07-04");
    EXPECT_EQ(days[1].more, 0);
}

TEST(NextDaysOf, CountsFurtherDaysAndSubstitutes)
{
    const NextDays days = FirstOf("0704,DAY,July\n> days 2; if Sun also Mon after\n", 2027);
    EXPECT_EQ(Text(days.first), "2027-07-04");
    EXPECT_EQ(days.more, 2) << "the 5th as second day and as substitute of the 4th";
}

TEST(NextDaysOf, PrefersTheDayItselfToASubstituteBeforeIt)
{
    const NextDays days = FirstOf("1225,DAY,Christmas\n> if Sat also Fri before\n", 2027);
    EXPECT_EQ(Text(days.first), "2027-12-25");
    EXPECT_FALSE(days.isSubstitute);
    EXPECT_EQ(days.more, 1);
    const NextDays lone = FirstOf("0101,FIXED,x\n> years 2022-; if Sat also Fri before\n", 2021);
    EXPECT_EQ(Text(lone.first), "2021-12-31") << "the substitute of 1 January 2022";
    EXPECT_TRUE(lone.isSubstitute);
}

TEST(NextDaysOf, LooksForwardToTheYearThatHasADay)
{
    EXPECT_EQ(Text(FirstOf("0229,LEAP DAY,Leap\n", 2025).first), "2028-02-29");
    EXPECT_EQ(Text(FirstOf("0229,LEAP DAY,Leap\n", 2097).first), "2104-02-29");
    EXPECT_EQ(FirstOf("0101,FIXED,Old\n> years -2005\n", 2027).state, State::None);
    EXPECT_EQ(Text(FirstOf("0101,FIXED,Next\n> years 2030-\n", 2027).first), "2030-01-01");
    EXPECT_EQ(FirstOf("0101,FIXED,Late\n> years 2040-\n", 2027).state, State::None);
}

TEST(NextDaysOf, EndsWithTheLastYear)
{
    EXPECT_EQ(Text(FirstOf("0101,DAY,x\n", 9999).first), "9999-01-01");
    EXPECT_EQ(FirstOf("0229,LEAP DAY,x\n", 9999).state, State::None);
}

TEST(NextDaysOf, TellsWhatTheChoiceLeavesOut)
{
    const std::string bavarian = "0106,FIXED,x\n> only in BY\n";
    EXPECT_EQ(FirstOf(bavarian, 2027).state, State::OtherRegion);
    EXPECT_EQ(FirstOf(bavarian, 2027, {"BY", {Category::Public}, ""}).state, State::Given);
    const std::string bank = "0106,FIXED,x\n> kind bank\n";
    EXPECT_EQ(FirstOf(bank, 2027).state, State::OtherKind);
    EXPECT_EQ(FirstOf(bank, 2027, {"", {Category::Public, Category::Bank}, ""}).state,
              State::Given);
}

TEST(NextDaysOf, TellsWhatIsEstimated)
{
    EXPECT_TRUE(FirstOf("1 Shawwal,ISLAMIC,x\n", 2028).isEstimated);
    EXPECT_FALSE(FirstOf("1 Shawwal,ISLAMIC,x\n> in 2028 on 0226\n", 2028).isEstimated);
}

} // namespace
} // namespace orrery::holidays
