#include "dates.h"

#include <gtest/gtest.h>

namespace orrery::holidays::calendars {
namespace {

TEST(HebrewYear, HasHolidaysAsPublished)
{
    struct Case {
        const char* name;
        int year, month, day;
        const char* date;
    };
    for (const Case& one : {
             Case{"Rosh Hashanah", 2023, 7, 1, "2023-9-16"},
             Case{"Rosh Hashanah", 2024, 7, 1, "2024-10-3"},
             Case{"Rosh Hashanah", 2025, 7, 1, "2025-9-23"},
             Case{"Yom Kippur", 1973, 7, 10, "1973-10-6"},
             Case{"Hanukkah", 2024, 9, 25, "2024-12-26"},
             Case{"Purim of a leap year", 2024, 12, 14, "2024-3-24"},
             Case{"Purim", 2025, 12, 14, "2025-3-14"},
             Case{"Pesach", 2024, 1, 15, "2024-4-23"},
             Case{"Pesach", 2025, 1, 15, "2025-4-13"},
             Case{"Pesach", 2026, 1, 15, "2026-4-2"},
             Case{"Pesach", 2027, 1, 15, "2027-4-22"},
             Case{"Pesach", 2046, 1, 15, "2046-4-21"},
             Case{"5 Iyar", 1948, 2, 5, "1948-5-14"},
             Case{"Shavuot", 2025, 3, 6, "2025-6-2"},
         })
        EXPECT_EQ(InYear(Calendar::Hebrew, one.year, one.month, one.day), one.date) << one.name;
}

TEST(HebrewYear, TakesAdarForTheSecondOneInLeapYears)
{
    EXPECT_EQ(ToDate(Calendar::Hebrew, {5784, 12, 1}), On(2024, 3, 11));
    EXPECT_EQ(ToDate(Calendar::Hebrew, {5784, 12, 1, true}), On(2024, 2, 10));
    EXPECT_EQ(ToDate(Calendar::Hebrew, {5785, 12, 1, true}), std::nullopt);
    EXPECT_EQ(FromDate(Calendar::Hebrew, On(2024, 2, 10)), (CalendarDate{5784, 12, 1, true}));
    EXPECT_EQ(FromDate(Calendar::Hebrew, On(2025, 3, 1)), (CalendarDate{5785, 12, 1, false}));
}

TEST(HebrewYear, HasTheLengthsOfTheRule)
{
    for (int year = 5600; year <= 5900; ++year) {
        const CalendarYear hebrew = YearOf(Calendar::Hebrew, year);
        const auto days = (hebrew.End() - hebrew.FirstDay()).count();
        EXPECT_TRUE((days >= 353 && days <= 355) || (days >= 383 && days <= 385)) << year;
        const unsigned weekday = std::chrono::weekday(hebrew.FirstDay()).c_encoding();
        EXPECT_TRUE(weekday != 0 && weekday != 3 && weekday != 5) << year;
    }
}

} // namespace
} // namespace orrery::holidays::calendars
