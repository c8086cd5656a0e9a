#include "holidays/calendars/sky_dates.h"

#include "dates.h"
#include "holidays/calendars/delta_t.h"
#include "holidays/calendars/moon.h"
#include "holidays/calendars/sun.h"

#include <gtest/gtest.h>

namespace orrery::holidays::calendars {
namespace {

constexpr double kSecond = 1.0 / 86400;

std::string SunDay(int year, double degrees, const Zone& zone)
{
    return Text(SunDate(year, degrees, zone));
}

TEST(SunDate, GivesEquinoxDaysOfJapanAsPublished)
{
    for (const auto& [year, day] : {std::pair{2024, "2024-3-20"}, std::pair{2025, "2025-3-20"},
                                    std::pair{2026, "2026-3-20"}, std::pair{2027, "2027-3-21"}})
        EXPECT_EQ(SunDay(year, 0, Japan()), day);
    for (const auto& [year, day] : {std::pair{1979, "1979-9-24"}, std::pair{2012, "2012-9-22"},
                                    std::pair{2023, "2023-9-23"}, std::pair{2024, "2024-9-22"}})
        EXPECT_EQ(SunDay(year, 180, Japan()), day);
}

TEST(SunDate, GivesSolarTermsOfChinaAsPublished)
{
    for (const auto& [year, day] : {std::pair{2023, "2023-4-5"}, std::pair{2024, "2024-4-4"},
                                    std::pair{2025, "2025-4-4"}, std::pair{2026, "2026-4-5"}})
        EXPECT_EQ(SunDay(year, 15, China()), day);
    EXPECT_EQ(SunDay(2021, 315, China()), "2021-2-3");
    EXPECT_EQ(SunDay(2021, 270, China()), "2021-12-21"); // at 23:59:09
    EXPECT_EQ(SunDay(2026, 285, China()), "2026-1-5");
}

TEST(SunDate, DependsOnTheZone)
{
    // The June solstice of 2024 was on 20 June at 20:51 in Greenwich.
    EXPECT_EQ(SunDay(2024, 90, Greenwich()), "2024-6-20");
    EXPECT_EQ(SunDay(2024, 90, ZoneOfHours(3)), "2024-6-20");
    EXPECT_EQ(SunDay(2024, 90, ZoneOfHours(3.5)), "2024-6-21");
    EXPECT_EQ(SunDay(2024, 90, ZoneOfHours(-4)), "2024-6-20");
}

TEST(SunLongitude, IsThatOfAPublishedExample)
{
    // J. Meeus, Astronomical Algorithms, example 25.b: 199° 54' 21.8" with all terms.
    EXPECT_NEAR(SunLongitude(2448908.5), 199 + 54 / 60.0 + 21.8 / 3600, 0.5 / 3600);
}

TEST(MoonPhase, IsThatOfPublishedExamples)
{
    // Meeus, examples 49.a and 49.b, in dynamical time.
    const JulianDay newMoon = MoonPhase(4 * -283);
    EXPECT_NEAR(newMoon + DeltaT(newMoon), 2443192.65118, kSecond);
    const JulianDay lastQuarter = MoonPhase(4 * 544 + 3);
    EXPECT_NEAR(lastQuarter + DeltaT(lastQuarter), 2467636.49186, kSecond);
}

TEST(RoughNewMoon, IsAsNearAsItSays)
{
    for (int month = -1240; month <= 1250; ++month)
        ASSERT_NEAR(RoughNewMoon(4 * month), MoonPhase(4 * month), kNewMoonRoughness) << month;
}

TEST(RoughSunMoment, IsAsNearAsItSays)
{
    for (int year = 1900; year <= 2100; ++year)
        for (int degrees = 0; degrees < 360; degrees += 15)
            ASSERT_NEAR(RoughSunMoment(year, degrees), SunMoment(year, degrees), kSunRoughness)
                << degrees << " degrees in " << year;
}

TEST(MoonDates, AreAsPublished)
{
    EXPECT_EQ(Text(MoonDates(2024, MoonPhaseName::NewMoon, Greenwich())),
              "2024-1-11 2024-2-9 2024-3-10 2024-4-8 2024-5-8 2024-6-6 2024-7-5 2024-8-4 2024-9-3 "
              "2024-10-2 2024-11-1 2024-12-1 2024-12-30");
    EXPECT_EQ(Text(MoonDates(2023, MoonPhaseName::FullMoon, Greenwich())),
              "2023-1-6 2023-2-5 2023-3-7 2023-4-6 2023-5-5 2023-6-4 2023-7-3 2023-8-1 2023-8-31 "
              "2023-9-29 2023-10-28 2023-11-27 2023-12-27");
    EXPECT_EQ(Text(MoonDates(2023, MoonPhaseName::FullMoon, Japan())[0]), "2023-1-7");
    EXPECT_EQ(Text(MoonDates(2025, MoonPhaseName::FirstQuarter, Greenwich())[0]), "2025-1-6");
    EXPECT_EQ(Text(MoonDates(2025, MoonPhaseName::LastQuarter, Greenwich())[0]), "2025-1-21");
}

TEST(DeltaT, IsAsMeasured)
{
    EXPECT_NEAR(DeltaT(Greenwich().StartOf(On(1950, 1, 1))), 29.15 * kSecond, 0.01 * kSecond);
    EXPECT_NEAR(DeltaT(Greenwich().StartOf(On(2000, 1, 1))), 63.83 * kSecond, 0.01 * kSecond);
}

TEST(Zone, ChangesInHistory)
{
    const auto hours = [](const Zone& zone, Date date) {
        return (Greenwich().StartOf(date) - zone.StartOf(date)) * 24;
    };
    EXPECT_NEAR(hours(China(), On(1920, 1, 1)), 7.7611, 0.0001);
    EXPECT_NEAR(hours(China(), On(1929, 1, 1)), 8, 0.0001);
    EXPECT_NEAR(hours(Korea(), On(1954, 3, 20)), 9, 0.0001);
    EXPECT_NEAR(hours(Korea(), On(1954, 3, 21)), 8.5, 0.0001);
    EXPECT_NEAR(hours(Korea(), On(1961, 8, 10)), 9, 0.0001);
    EXPECT_NEAR(hours(Vietnam(), On(1967, 12, 31)), 8, 0.0001);
    EXPECT_NEAR(hours(Vietnam(), On(1968, 1, 1)), 7, 0.0001);
}

} // namespace
} // namespace orrery::holidays::calendars
