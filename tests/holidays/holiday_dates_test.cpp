#include "holidays/holiday_dates.h"
#include "util/error.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <initializer_list>
#include <utility>
#include <vector>

namespace orrery::holidays {
namespace {

Date On(int year, unsigned month, unsigned day)
{
    return std::chrono::sys_days(std::chrono::year(year) / static_cast<int>(month) /
                                 static_cast<int>(day));
}

std::string Text(Date date)
{
    const std::chrono::year_month_day parts(date);
    return std::to_string(static_cast<int>(parts.year())) + '-' +
           std::to_string(static_cast<unsigned>(parts.month())) + '-' +
           std::to_string(static_cast<unsigned>(parts.day()));
}

/// The date of a single rule, computed into a list whose first slot contained `before`.
Date DateOf(std::int16_t year, std::int16_t code, std::int16_t kind, Date before = {})
{
    HolidayList rules;
    rules.Append({code, kind, "x"});
    HolidayDateList list;
    list.Dates[0] = before;
    ComputeHolidayDates(year, rules, EasterDate(year), list);
    return list.DateAt(0);
}

struct MonthCase {
    int year;
    int month;
    int days;
};
class DaysInMonthTest : public testing::TestWithParam<MonthCase> {};
TEST_P(DaysInMonthTest, FollowsTheGregorianRule)
{
    const MonthCase& row = GetParam();
    EXPECT_EQ(
        DaysInMonth(static_cast<std::int16_t>(row.year), static_cast<std::int16_t>(row.month)),
        row.days);
}
INSTANTIATE_TEST_SUITE_P(Months, DaysInMonthTest,
                         testing::Values(MonthCase{2000, 2, 29}, MonthCase{1900, 2, 28},
                                         MonthCase{2024, 2, 29}, MonthCase{2023, 2, 28},
                                         MonthCase{2100, 2, 28}, MonthCase{2400, 2, 29},
                                         MonthCase{2024, 1, 31}, MonthCase{2024, 4, 30},
                                         MonthCase{2024, 12, 31}));

TEST(DaysInMonth, KnowsTwelveMonthsOnly)
{
    for (const std::int16_t month : std::initializer_list<std::int16_t>{-1, 0, 13, 32767}) {
        EXPECT_THROW(DaysInMonth(2024, month), util::OutOfRangeError);
        EXPECT_THROW(TableDaysInMonth(month), util::OutOfRangeError);
    }
    EXPECT_EQ(TableDaysInMonth(2), 28);
}

TEST(DaysInMonth, AgreesWithTheDifferenceOfFirstDays)
{
    for (std::int16_t year = 1; year < 9999; ++year) {
        for (std::int16_t month = 1; month <= 12; ++month) {
            const auto next = static_cast<std::int16_t>(month + 1);
            ASSERT_EQ((MakeDate(year, next, 1) - MakeDate(year, month, 1)).count(),
                      DaysInMonth(year, month))
                << year << '-' << month;
        }
    }
}

struct DateCase {
    const char* name;
    int year;
    int month;
    int day;
    Date expected;
};
class MakeDateTest : public testing::TestWithParam<DateCase> {};
TEST_P(MakeDateTest, RollsOver)
{
    const DateCase& row = GetParam();
    const Date date =
        MakeDate(static_cast<std::int16_t>(row.year), static_cast<std::int16_t>(row.month),
                 static_cast<std::int16_t>(row.day));
    EXPECT_EQ(Text(date), Text(row.expected));
}
INSTANTIATE_TEST_SUITE_P(Dates, MakeDateTest,
                         testing::Values(DateCase{"Plain", 2024, 5, 27, On(2024, 5, 27)},
                                         DateCase{"DayZero", 2024, 3, 0, On(2024, 2, 29)},
                                         DateCase{"NegativeDay", 2024, 1, -1, On(2023, 12, 30)},
                                         DateCase{"DayBeyondMonth", 2024, 4, 31, On(2024, 5, 1)},
                                         DateCase{"LeapDayOfAnotherYear", 2023, 2, 29,
                                                  On(2023, 3, 1)},
                                         DateCase{"MonthZero", 2024, 0, 1, On(2023, 12, 1)},
                                         DateCase{"NegativeMonth", 2024, -1, 15, On(2023, 11, 15)},
                                         DateCase{"MonthThirteen", 2024, 13, 1, On(2025, 1, 1)},
                                         DateCase{"BothFarAway", 2024, 325, 99, On(2051, 4, 9)},
                                         DateCase{"FirstDate", 1, 1, 1, On(1, 1, 1)},
                                         DateCase{"LastDate", 9999, 12, 31, On(9999, 12, 31)},
                                         DateCase{"BackIntoRange", 10000, 1, 0, On(9999, 12, 31)},
                                         DateCase{"YearZeroForward", 0, 12, 32, On(1, 1, 1)}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(MakeDate, RefusesDatesOutsideItsYears)
{
    EXPECT_THROW(MakeDate(1, 1, 0), util::OutOfRangeError);
    EXPECT_THROW(MakeDate(1, 0, 1), util::OutOfRangeError);
    EXPECT_THROW(MakeDate(9999, 12, 32), util::OutOfRangeError);
    EXPECT_THROW(MakeDate(10000, 1, 1), util::OutOfRangeError);
    for (const std::int16_t year : std::initializer_list<std::int16_t>{-32768, 32767}) {
        for (const std::int16_t month : std::initializer_list<std::int16_t>{-32768, 32767}) {
            for (const std::int16_t day : std::initializer_list<std::int16_t>{-32768, 32767})
                EXPECT_THROW(MakeDate(year, month, day), util::OutOfRangeError)
                    << year << ' ' << month;
        }
    }
}

TEST(WeekdayOf, CountsFromSunday)
{
    EXPECT_EQ(WeekdayOf(On(2024, 3, 31)), 1);
    EXPECT_EQ(WeekdayOf(On(2021, 2, 1)), 2);
    EXPECT_EQ(WeekdayOf(On(2000, 1, 1)), 7);
}

TEST(EasterDate, MatchesKnownDates)
{
    EXPECT_EQ(EasterDate(2000), On(2000, 4, 23));
    EXPECT_EQ(EasterDate(2008), On(2008, 3, 23));
    EXPECT_EQ(EasterDate(2011), On(2011, 4, 24));
    EXPECT_EQ(EasterDate(2024), On(2024, 3, 31));
    EXPECT_EQ(EasterDate(2025), On(2025, 4, 20));
    EXPECT_EQ(EasterDate(1818), On(1818, 3, 22)); // the earliest date
    EXPECT_EQ(EasterDate(2038), On(2038, 4, 25)); // the latest
}

/// Easter Sunday by the algorithm that almanacs print, which corrects leap days and epact in one
/// pass.
Date AlmanacEaster(int year)
{
    const int a = year % 19;
    const int b = year / 100;
    const int c = year % 100;
    const int g = (8 * b + 13) / 25;
    const int h = (19 * a + b - b / 4 - g + 15) % 30;
    const int m = (a + 11 * h) / 319;
    const int l = (2 * (b % 4) + 2 * (c / 4) - c % 4 - h + m + 32) % 7;
    const int month = (h - m + l + 90) / 25;
    const int day = (h - m + l + month + 19) % 32;
    return On(year, static_cast<unsigned>(month), static_cast<unsigned>(day));
}

TEST(EasterDate, AgreesWithTheAlmanacInEveryYear)
{
    for (int year = 1; year <= 6553; ++year) {
        const Date easter = EasterDate(static_cast<std::int16_t>(year));
        ASSERT_EQ(Text(easter), Text(AlmanacEaster(year))) << year;
        ASSERT_EQ(WeekdayOf(easter), 1) << year;
    }
}

TEST(EasterDate, OverflowsFrom6554On)
{
    EXPECT_EQ(EasterDate(6553), AlmanacEaster(6553));
    for (int year = 6554; year <= 32767; ++year)
        ASSERT_THROW(EasterDate(static_cast<std::int16_t>(year)), util::OverflowError) << year;
}

struct RuleDateCase {
    const char* name;
    int year;
    int code;
    int kind;
    Date expected;
};
class RuleDateTest : public testing::TestWithParam<RuleDateCase> {};
TEST_P(RuleDateTest, GivesDate)
{
    const RuleDateCase& row = GetParam();
    const Date date =
        DateOf(static_cast<std::int16_t>(row.year), static_cast<std::int16_t>(row.code),
               static_cast<std::int16_t>(row.kind));
    EXPECT_EQ(Text(date), Text(row.expected));
}
INSTANTIATE_TEST_SUITE_P(
    Rules, RuleDateTest,
    testing::Values(RuleDateCase{"LastMondayOfMay", 2024, 505, 2, On(2024, 5, 27)},
                    RuleDateCase{"FourthThursdayOfNovember", 2024, 1104, 5, On(2024, 11, 28)},
                    RuleDateCase{"FirstMondayOfSeptember", 2024, 901, 2, On(2024, 9, 2)},
                    RuleDateCase{"FirstDayIsThatWeekday", 2024, 901, 1, On(2024, 9, 1)},
                    RuleDateCase{"LastDayIsThatWeekday", 2024, 605, 1, On(2024, 6, 30)},
                    RuleDateCase{"LastIsTheFifth", 2024, 905, 2, On(2024, 9, 30)},
                    RuleDateCase{"LastIsTheFourth", 2024, 205, 6, On(2024, 2, 23)},
                    RuleDateCase{"SaturdayAsTheLastDay", 2024, 805, 7, On(2024, 8, 31)},
                    RuleDateCase{"BeforeTheLast", 2024, 506, 2, On(2024, 5, 20)},
                    RuleDateCase{"SixBeforeTheLast", 2024, 511, 2, On(2024, 4, 15)},
                    RuleDateCase{"OrdinalZeroIsTheWeekBefore", 2024, 500, 2, On(2024, 4, 29)},
                    RuleDateCase{"MonthZeroIsDecember", 2024, 1, 1, On(2023, 12, 3)},
                    RuleDateCase{"OrdinalFifty", 2024, 1250, 2, On(2024, 2, 19)},
                    RuleDateCase{"FixedDay", 2024, 1225, 0, On(2024, 12, 25)},
                    RuleDateCase{"FixedMonthZero", 2024, 1, 0, On(2023, 12, 1)},
                    RuleDateCase{"FixedDayZero", 2024, 300, 0, On(2024, 2, 29)},
                    RuleDateCase{"NegativeCode", 2024, -1, 0, On(2023, 11, 29)},
                    RuleDateCase{"NegativeKindIsFixed", 2024, 704, -1, On(2024, 7, 4)},
                    RuleDateCase{"KindThirteenIsFixed", 2024, 704, 13, On(2024, 7, 4)},
                    RuleDateCase{"GoodFriday", 2024, -2, 8, On(2024, 3, 29)},
                    RuleDateCase{"EasterMonday", 2024, 1, 8, On(2024, 4, 1)},
                    RuleDateCase{"ShroveTuesday", 2024, -47, 8, On(2024, 2, 13)},
                    RuleDateCase{"KindNine", 2024, 0, 9, On(2024, 3, 31)},
                    RuleDateCase{"KindTwelve", 2024, 49, 12, On(2024, 5, 19)},
                    RuleDateCase{"OffsetIntoTheNextYearWrapsAround", 2024, 300, 8, On(2024, 1, 25)},
                    RuleDateCase{"OffsetIntoTheYearBeforeWrapsAround", 2024, -91, 8,
                                 On(2024, 12, 31)},
                    RuleDateCase{"LeapDayOfTheNextYear", 2023, 326, 8, On(2023, 3, 1)}),
    [](const auto& row) { return std::string(row.param.name); });

/// The n-th weekday of a month (from 5 on, the last but n - 5), found by walking over the days.
Date WalkToWeekday(std::int16_t year, std::int16_t month, int ordinal, std::int16_t weekday)
{
    const bool fromEnd = ordinal >= 5;
    const std::int16_t length = DaysInMonth(year, month);
    int left = fromEnd ? ordinal - 4 : ordinal;
    Date date = MakeDate(year, month, fromEnd ? length : std::int16_t{1});
    for (;; date += std::chrono::days(fromEnd ? -1 : 1)) {
        if (WeekdayOf(date) == weekday && --left == 0)
            return date;
    }
}

TEST(WeekdayRules, AgreeWithAWalkOverTheDays)
{
    HolidayList rules;
    for (int month = 1; month <= 12; ++month) {
        for (int ordinal = 1; ordinal <= 8; ++ordinal) {
            for (int kind = 1; kind <= 7; ++kind)
                rules.Append({static_cast<std::int16_t>(month * 100 + ordinal),
                              static_cast<std::int16_t>(kind), std::to_string(kind)});
        }
    }
    for (std::int16_t year = 1890; year <= 2110; ++year) {
        std::vector<std::pair<Date, std::string>> expected;
        for (const HolidayDef& rule : rules)
            expected.emplace_back(WalkToWeekday(year,
                                                static_cast<std::int16_t>(rule.DateCode / 100),
                                                rule.DateCode % 100, rule.Kind),
                                  rule.Name);
        std::stable_sort(expected.begin(), expected.end(), [](const auto& left, const auto& right) {
            return left.first < right.first;
        });
        HolidayDateList list;
        ComputeHolidayDates(year, rules, EasterDate(year), list);
        ASSERT_EQ(list.Count, rules.Count());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            ASSERT_EQ(Text(list.Dates[i]), Text(expected[i].first)) << year << ' ' << i;
            ASSERT_EQ(list.Names[i], expected[i].second) << year << ' ' << i;
        }
    }
}

TEST(ComputeHolidayDates, IsEmptyForNoRules)
{
    HolidayDateList list;
    list.Count = 5;
    list.Cursor = 3;
    ComputeHolidayDates(2024, {}, EasterDate(2024), list);
    EXPECT_EQ(list.Count, 0);
    EXPECT_EQ(list.Cursor, 0);
}

TEST(ComputeHolidayDates, SortsWithNamesAndKeepsTheOrderOfEqualDates)
{
    HolidayList rules;
    rules.Append({1225, 0, "Christmas"});
    rules.Append({101, 0, "New Year"});
    rules.Append({1, 0, "December before"});
    rules.Append({101, 0, "Second on that day"});
    HolidayDateList list;
    ComputeHolidayDates(2024, rules, EasterDate(2024), list);
    EXPECT_EQ(list.NameAt(0), "December before");
    EXPECT_EQ(list.NameAt(1), "New Year");
    EXPECT_EQ(list.NameAt(2), "Second on that day");
    EXPECT_EQ(list.NameAt(3), "Christmas");
    EXPECT_EQ(list.DateAt(0), On(2023, 12, 1));
}

TEST(ComputeHolidayDates, KeepsTheSlotOfAnInvalidDate)
{
    HolidayList rules;
    rules.Append({5, 2, "month 0 has no last Monday"});
    HolidayDateList list;
    list.Dates[0] = On(2020, 2, 2);
    list.Names[0] = "kept";
    ComputeHolidayDates(2024, rules, EasterDate(2024), list);
    EXPECT_EQ(list.Count, 1);
    EXPECT_EQ(list.DateAt(0), On(2020, 2, 2));
    EXPECT_EQ(list.NameAt(0), "kept");
    EXPECT_EQ(DateOf(1, 1, 0, On(7, 7, 7)), On(7, 7, 7)) << "the year 0 has no dates";
    EXPECT_EQ(DateOf(2024, 32705, 3, On(7, 7, 7)), On(7, 7, 7)) << "month 327 has no last Tuesday";
}

TEST(ComputeHolidayDates, AcceptsAFullList)
{
    HolidayList rules;
    for (std::int16_t i = 0; i < 1025; ++i)
        rules.Append({static_cast<std::int16_t>(i % 2 == 0 ? 1231 : 101), 0, std::to_string(i)});
    HolidayDateList list;
    ComputeHolidayDates(2024, rules, EasterDate(2024), list);
    EXPECT_EQ(list.Count, 1025);
    EXPECT_EQ(list.NameAt(0), "1");
    EXPECT_EQ(list.NameAt(511), "1023");
    EXPECT_EQ(list.NameAt(512), "0");
    EXPECT_EQ(list.NameAt(1024), "1024");
}

TEST(ComputeHolidayDates, SurvivesEveryCode)
{
    HolidayDateList list;
    for (std::int16_t kind = -1; kind <= 13; ++kind) {
        HolidayList rules;
        for (int code = -32768; code <= 32767; code += 65)
            rules.Append({static_cast<std::int16_t>(code), kind, "x"});
        ComputeHolidayDates(2024, rules, EasterDate(2024), list);
        EXPECT_TRUE(std::is_sorted(list.Dates.begin(), list.Dates.begin() + list.Count));
    }
}

TEST(HolidayDateList, ChecksItsLimits)
{
    const HolidayDateList list;
    EXPECT_NO_THROW(list.DateAt(1024));
    EXPECT_NO_THROW(list.NameAt(1024));
    for (const std::int16_t index : std::initializer_list<std::int16_t>{-1, 1025, 32767}) {
        EXPECT_THROW(list.DateAt(index), util::OutOfRangeError);
        EXPECT_THROW(list.NameAt(index), util::OutOfRangeError);
    }
}

} // namespace
} // namespace orrery::holidays
