#include "dates.h"

#include <gtest/gtest.h>

namespace orrery::holidays::calendars {
namespace {

TEST(UmmAlQura, HasMonthsAsPublished)
{
    EXPECT_EQ(ToDate(Calendar::UmmAlQura, {1318, 1, 1}), On(1900, 4, 30));
    EXPECT_EQ(ToDate(Calendar::UmmAlQura, {1420, 10, 1}), On(2000, 1, 8));
    EXPECT_EQ(ToDate(Calendar::UmmAlQura, {1443, 9, 1}), On(2022, 4, 2));
    EXPECT_EQ(ToDate(Calendar::UmmAlQura, {1444, 10, 1}), On(2023, 4, 21));
    EXPECT_EQ(ToDate(Calendar::UmmAlQura, {1445, 10, 1}), On(2024, 4, 10));
    EXPECT_EQ(ToDate(Calendar::UmmAlQura, {1445, 12, 10}), On(2024, 6, 16));
    EXPECT_EQ(ToDate(Calendar::UmmAlQura, {1446, 1, 1}), On(2024, 7, 7));
    EXPECT_EQ(ToDate(Calendar::UmmAlQura, {1446, 9, 1}), On(2025, 3, 1));
    EXPECT_EQ(ToDate(Calendar::UmmAlQura, {1446, 10, 1}), On(2025, 3, 30));
    EXPECT_EQ(ToDate(Calendar::UmmAlQura, {1446, 12, 10}), On(2025, 6, 6));
    EXPECT_EQ(ToDate(Calendar::UmmAlQura, {1447, 1, 1}), On(2025, 6, 26));
    EXPECT_EQ(ToDate(Calendar::UmmAlQura, {1447, 10, 1}), On(2026, 3, 20));
    EXPECT_EQ(ToDate(Calendar::UmmAlQura, {1447, 12, 10}), On(2026, 5, 27));
    EXPECT_EQ(ToDate(Calendar::UmmAlQura, {1500, 12, 30}), On(2077, 11, 16));
}

TEST(UmmAlQura, HasADayOnceOrTwiceInAGregorianYear)
{
    EXPECT_EQ(InYear(Calendar::UmmAlQura, 2000, 10, 1), "2000-1-8 2000-12-27");
    EXPECT_EQ(InYear(Calendar::UmmAlQura, 2026, 10, 1), "2026-3-20");
    EXPECT_EQ(InYear(Calendar::UmmAlQura, 2008, 1, 1), "2008-1-10 2008-12-29");
}

TEST(UmmAlQura, MayLackTheThirtiethDayOfAMonth)
{
    EXPECT_EQ(ToDate(Calendar::UmmAlQura, {1446, 9, 29}), On(2025, 3, 29));
    EXPECT_EQ(InYear(Calendar::UmmAlQura, 2025, 9, 30), "");
    EXPECT_EQ(InYear(Calendar::UmmAlQura, 2024, 9, 30), "2024-4-9");
}

TEST(UmmAlQura, GoesOnOutsideTheTable)
{
    for (const int year : {1318, 1526})
        EXPECT_EQ(YearOf(Calendar::UmmAlQura, year - 1).End(),
                  YearOf(Calendar::UmmAlQura, year).FirstDay());
}

TEST(IslamicCivil, CountsFromTheHijra)
{
    EXPECT_EQ(ToDate(Calendar::IslamicCivil, {1, 1, 1}), On(622, 7, 19));
    EXPECT_EQ(ToDate(Calendar::IslamicCivil, {1400, 1, 1}), On(1979, 11, 21));
    EXPECT_EQ(ToDate(Calendar::IslamicCivil, {1445, 10, 1}), On(2024, 4, 10));
    EXPECT_EQ(FromDate(Calendar::IslamicCivil, On(1945, 11, 12)), (CalendarDate{1364, 12, 6}));
}

TEST(IslamicCivil, HasElevenLeapYearsInThirty)
{
    std::string leapYears;
    for (int year = 1; year <= 30; ++year)
        if (ToDate(Calendar::IslamicCivil, {year, 12, 30}))
            leapYears += std::to_string(year) + ' ';
    EXPECT_EQ(leapYears, "2 5 7 10 13 16 18 21 24 26 29 ");
}

} // namespace
} // namespace orrery::holidays::calendars
