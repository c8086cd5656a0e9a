#include "dates.h"
#include "holidays/calendars/julian.h"

#include <gtest/gtest.h>

namespace orrery::holidays::calendars {
namespace {

TEST(OrthodoxEaster, IsAsPublished)
{
    for (const auto& [year, date] :
         {std::pair{1900, "1900-4-22"}, std::pair{1983, "1983-5-8"}, std::pair{2010, "2010-4-4"},
          std::pair{2016, "2016-5-1"}, std::pair{2021, "2021-5-2"}, std::pair{2024, "2024-5-5"},
          std::pair{2025, "2025-4-20"}, std::pair{2026, "2026-4-12"}, std::pair{2027, "2027-5-2"}})
        EXPECT_EQ(Text(OrthodoxEaster(year)), date);
}

TEST(JulianYear, IsThirteenDaysLateTillTheLastLeapDayOfTheCenturies)
{
    EXPECT_EQ(InYear(Calendar::Julian, 1900, 12, 25), "1900-1-6");
    EXPECT_EQ(InYear(Calendar::Julian, 2026, 12, 25), "2026-1-7");
    EXPECT_EQ(InYear(Calendar::Julian, 2100, 12, 25), "2100-1-7");
    EXPECT_EQ(InYear(Calendar::Julian, 2101, 12, 25), "2101-1-8");
    EXPECT_EQ(InYear(Calendar::Julian, 2025, 1, 1), "2025-1-14");
    EXPECT_EQ(InYear(Calendar::Julian, 1900, 2, 29), "1900-3-13");
    EXPECT_EQ(InYear(Calendar::Julian, 2025, 2, 29), "");
    EXPECT_EQ(FromDate(Calendar::Julian, On(1917, 11, 7)), (CalendarDate{1917, 10, 25}));
}

TEST(CopticYear, BeginsInSeptember)
{
    EXPECT_EQ(ToDate(Calendar::Coptic, {1, 1, 1}), YearOf(Calendar::Julian, 284).Find(8, 29));
    EXPECT_EQ(InYear(Calendar::Coptic, 2023, 1, 1), "2023-9-12");
    EXPECT_EQ(InYear(Calendar::Coptic, 2024, 1, 1), "2024-9-11");
    EXPECT_EQ(InYear(Calendar::Coptic, 2025, 4, 29), "2025-1-7");
    EXPECT_EQ(ToDate(Calendar::Coptic, {1739, 13, 6}), On(2023, 9, 11));
    EXPECT_EQ(ToDate(Calendar::Coptic, {1740, 13, 6}), std::nullopt);
}

TEST(EthiopicYear, BeganTheThirdMillenniumIn2007)
{
    EXPECT_EQ(ToDate(Calendar::Ethiopic, {2000, 1, 1}), On(2007, 9, 12));
    EXPECT_EQ(ToDate(Calendar::Ethiopic, {2016, 1, 1}), On(2023, 9, 12));
    EXPECT_EQ(InYear(Calendar::Ethiopic, 2025, 5, 11), "2025-1-19"); // Timkat
    EXPECT_EQ(InYear(Calendar::Ethiopic, 2024, 5, 11), "2024-1-20");
}

TEST(IndianYear, BeginsADayEarlierInLeapYears)
{
    EXPECT_EQ(ToDate(Calendar::Indian, {1879, 1, 1}), On(1957, 3, 22)); // the first one
    EXPECT_EQ(ToDate(Calendar::Indian, {1946, 1, 1}), On(2024, 3, 21));
    EXPECT_EQ(ToDate(Calendar::Indian, {1946, 1, 31}), On(2024, 4, 20));
    EXPECT_EQ(ToDate(Calendar::Indian, {1947, 1, 31}), std::nullopt);
    EXPECT_EQ(FromDate(Calendar::Indian, On(2025, 1, 26)), (CalendarDate{1946, 11, 6}));
}

TEST(PersianYear, BeginsWithTheEquinox)
{
    for (const auto& [year, date] :
         {std::pair{1996, "1996-3-20"}, std::pair{2017, "2017-3-21"}, std::pair{2020, "2020-3-20"},
          std::pair{2021, "2021-3-21"}, std::pair{2024, "2024-3-20"},
          std::pair{2025, "2025-3-21"}, // the equinox is at 12:31
          std::pair{2029, "2029-3-20"}})
        EXPECT_EQ(InYear(Calendar::Persian, year, 1, 1), date);
    EXPECT_EQ(FromDate(Calendar::Persian, On(1979, 2, 11)), (CalendarDate{1357, 11, 22}));
}

TEST(PersianYear, HasLeapDaysAsPublished)
{
    std::string leapYears;
    for (int year = 1370; year <= 1410; ++year)
        if (ToDate(Calendar::Persian, {year, 12, 30}))
            leapYears += std::to_string(year) + ' ';
    EXPECT_EQ(leapYears, "1370 1375 1379 1383 1387 1391 1395 1399 1403 1408 ");
}

} // namespace
} // namespace orrery::holidays::calendars
