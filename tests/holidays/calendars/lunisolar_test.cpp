#include "dates.h"

#include <gtest/gtest.h>

namespace orrery::holidays::calendars {
namespace {

struct DayOfYear {
    int year;
    const char* date;
};

void ExpectDays(Calendar calendar, int month, int day, std::initializer_list<DayOfYear> cases)
{
    for (const DayOfYear& one : cases)
        EXPECT_EQ(InYear(calendar, one.year, month, day), one.date);
}

std::string LeapMonth(Calendar calendar, int year)
{
    Date first = YearOf(calendar, year).FirstDay();
    for (const CalendarMonth& month : YearOf(calendar, year)) {
        if (month.leap)
            return std::to_string(month.number) + " from " + Text(first);
        first += std::chrono::days(month.days);
    }
    return "none";
}

TEST(ChineseYear, BeginsAsPublished)
{
    ExpectDays(Calendar::Chinese, 1, 1,
               {{1900, "1900-1-31"},
                {1901, "1901-2-19"},
                {1911, "1911-1-30"},
                {1912, "1912-2-18"},
                {1949, "1949-1-29"},
                {1966, "1966-1-21"},
                {1976, "1976-1-31"},
                {1985, "1985-2-20"},
                {2000, "2000-2-5"},
                {2017, "2017-1-28"},
                {2020, "2020-1-25"},
                {2024, "2024-2-10"},
                {2025, "2025-1-29"},
                {2026, "2026-2-17"},
                {2028, "2028-1-26"},
                {2033, "2033-1-31"},
                {2034, "2034-2-19"},
                {2050, "2050-1-23"},
                {2100, "2100-2-9"}});
}

TEST(ChineseYear, BeginsRightWithNewMoonsMinutesFromMidnight)
{
    ExpectDays(Calendar::Chinese, 1, 1,
               {{1916, "1916-2-3"}, {1954, "1954-2-3"}, {2027, "2027-2-6"}, {2030, "2030-2-3"}});
    ExpectDays(Calendar::Chinese, 9, 1, {{2057, "2057-9-28"}}); // seconds from midnight
    ExpectDays(Calendar::Chinese, 8, 1, {{2089, "2089-9-4"}});
    ExpectDays(Calendar::Chinese, 7, 1, {{2097, "2097-8-7"}});
}

TEST(ChineseYear, HasFestivalsAsPublished)
{
    ExpectDays(Calendar::Chinese, 8, 15,
               {{1978, "1978-9-17"},
                {2020, "2020-10-1"},
                {2023, "2023-9-29"},
                {2024, "2024-9-17"},
                {2025, "2025-10-6"},
                {2026, "2026-9-25"},
                {2033, "2033-9-8"}});
    ExpectDays(Calendar::Chinese, 5, 5, {{2013, "2013-6-12"}, {2025, "2025-5-31"}});
}

TEST(ChineseYear, HasLeapMonthsAsPublished)
{
    EXPECT_EQ(LeapMonth(Calendar::Chinese, 1917), "2 from 1917-3-23");
    EXPECT_EQ(LeapMonth(Calendar::Chinese, 1984), "10 from 1984-11-23");
    EXPECT_EQ(LeapMonth(Calendar::Chinese, 1987), "6 from 1987-7-26");
    EXPECT_EQ(LeapMonth(Calendar::Chinese, 2020), "4 from 2020-5-23");
    EXPECT_EQ(LeapMonth(Calendar::Chinese, 2023), "2 from 2023-3-22");
    EXPECT_EQ(LeapMonth(Calendar::Chinese, 2025), "6 from 2025-7-25");
    EXPECT_EQ(LeapMonth(Calendar::Chinese, 2026), "none");
    EXPECT_EQ(LeapMonth(Calendar::Chinese, 2033), "11 from 2033-12-22");
}

TEST(ChineseYear, FindsDaysOfTheLeapMonthOnlyOnRequest)
{
    EXPECT_EQ(InYear(Calendar::Chinese, 2025, 6, 1), "2025-6-25");
    EXPECT_EQ(ToDate(Calendar::Chinese, {2025, 6, 1, true}), On(2025, 7, 25));
    EXPECT_EQ(ToDate(Calendar::Chinese, {2026, 6, 1, true}), std::nullopt);
    EXPECT_EQ(FromDate(Calendar::Chinese, On(2034, 1, 1)), (CalendarDate{2033, 11, 11, true}));
}

TEST(ChineseYear, HasNoDayBeyondAShortMonth)
{
    EXPECT_EQ(InYear(Calendar::Chinese, 2025, 12, 30), "");         // of 2024, with 29 days
    EXPECT_EQ(InYear(Calendar::Chinese, 2024, 12, 30), "2024-2-9"); // of 2023
}

TEST(KoreanYear, BeginsAsPublished)
{
    ExpectDays(Calendar::Korean, 1, 1,
               {{1954, "1954-2-4"},
                {1955, "1955-1-24"},
                {1956, "1956-2-12"},
                {1957, "1957-1-31"},
                {1958, "1958-2-19"},
                {1959, "1959-2-8"},
                {1960, "1960-1-28"},
                {1961, "1961-2-15"},
                {1962, "1962-2-5"},
                {1997, "1997-2-8"}, // China: 7 February
                {2017, "2017-1-28"},
                {2027, "2027-2-7"},    // China: 6 February
                {2028, "2028-1-27"}}); // China: 26 January
}

TEST(KoreanYear, HasChuseokAsPublished)
{
    ExpectDays(Calendar::Korean, 8, 15,
               {{1954, "1954-9-11"},
                {1955, "1955-9-30"},
                {1956, "1956-9-19"},
                {1957, "1957-9-8"},
                {1958, "1958-9-27"},
                {1959, "1959-9-17"},
                {1960, "1960-10-5"},
                {1961, "1961-9-24"},
                {1962, "1962-9-13"},
                {2024, "2024-9-17"},
                {2025, "2025-10-6"}});
}

TEST(VietnameseYear, BeginsAsPublished)
{
    ExpectDays(Calendar::Vietnamese, 1, 1,
               {{1967, "1967-2-9"},
                {1968, "1968-1-29"}, // China: 30 January
                {1969, "1969-2-16"}, // China: 17 February
                {1985, "1985-1-21"}, // China: a month later
                {2007, "2007-2-17"}, // China: 18 February
                {2025, "2025-1-29"},
                {2026, "2026-2-17"},
                {2030, "2030-2-2"}}); // China: 3 February
}

TEST(VietnameseYear, HasLeapMonthsOfItsOwn)
{
    EXPECT_EQ(LeapMonth(Calendar::Vietnamese, 1984), "none"); // China: month 10
    EXPECT_EQ(LeapMonth(Calendar::Vietnamese, 1985), "2 from 1985-3-21");
    EXPECT_EQ(LeapMonth(Calendar::Chinese, 1985), "none");
}

TEST(VietnameseYear, FollowsChinaUntilTheEndOf1967)
{
    // The new moon of July 1967 is seconds behind midnight of UTC+7.
    EXPECT_EQ(ToDate(Calendar::Vietnamese, {1967, 6, 1}), On(1967, 7, 8));
    EXPECT_EQ(ToDate(Calendar::Chinese, {1967, 6, 1}), On(1967, 7, 8));
    EXPECT_EQ(ToDate(Calendar::Vietnamese, {1968, 6, 1}), On(1968, 6, 26));
}

} // namespace
} // namespace orrery::holidays::calendars
