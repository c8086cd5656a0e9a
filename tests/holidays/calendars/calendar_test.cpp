#include "dates.h"

#include <gtest/gtest.h>

namespace orrery::holidays::calendars {
namespace {

constexpr std::array kAll = {
    Calendar::Julian,  Calendar::UmmAlQura, Calendar::IslamicCivil, Calendar::Hebrew,
    Calendar::Chinese, Calendar::Korean,    Calendar::Vietnamese,   Calendar::Persian,
    Calendar::Coptic,  Calendar::Ethiopic,  Calendar::Indian,
};

bool IsLunar(Calendar calendar)
{
    return calendar == Calendar::UmmAlQura || calendar == Calendar::IslamicCivil;
}

Dates JoinedDates(Calendar calendar, int firstYear, int lastYear, int month, int day)
{
    Dates joined;
    for (int year = firstYear; year <= lastYear; ++year)
        for (const Date date : DatesInYear(calendar, year, month, day))
            joined.Add(date);
    return joined;
}

TEST(EveryCalendar, GivesEveryDayBack)
{
    for (const Calendar calendar : kAll) {
        const CalendarYear first = YearAt(calendar, On(1900, 1, 1));
        const int last = YearAt(calendar, On(2100, 12, 31)).Year();
        for (int number = first.Year(); number <= last; ++number) {
            const CalendarYear year = YearOf(calendar, number);
            for (Date date = year.FirstDay(); date < year.End(); date += std::chrono::days(1)) {
                const CalendarDate day = year.At(date);
                ASSERT_EQ(day.year, number);
                ASSERT_EQ(year.Find(day.month, day.day, day.leap), date);
            }
            ASSERT_EQ(YearOf(calendar, number + 1).FirstDay(), year.End());
        }
    }
}

TEST(EveryCalendar, FindsTheYearOfADate)
{
    for (const Calendar calendar : kAll)
        for (int year = 1900; year <= 2100; year += 4)
            for (const Date date : {On(year, 1, 1), On(year, 3, 21), On(year, 9, 10)})
                ASSERT_EQ(ToDate(calendar, FromDate(calendar, date)), date);
}

TEST(EveryCalendar, HasItsNewYearInEveryGregorianYear)
{
    for (const Calendar calendar : kAll)
        for (int year = 1900; year <= 2100; ++year) {
            const Dates dates = DatesInYear(calendar, year, 1, 1);
            ASSERT_GE(dates.size(), 1U) << year;
            ASSERT_LE(dates.size(), IsLunar(calendar) ? 2U : 1U) << year;
            for (const Date date : dates)
                ASSERT_EQ(GregorianYear(date), year);
        }
}

TEST(EveryCalendar, GoesOnOutsideItsPromise)
{
    for (const Calendar calendar : kAll)
        for (int year = 1; year <= 9999; year += 7) {
            const CalendarYear found = YearAt(calendar, On(year, 6, 1));
            ASSERT_EQ(YearOf(calendar, found.Year() + 1).FirstDay(), found.End());
            for (const CalendarMonth& month : found)
                ASSERT_TRUE(month.days >= 1 && month.days <= 33) << year;
        }
}

TEST(EveryCalendar, GivesThreeYearsAsOneByOne)
{
    for (const Calendar calendar : kAll)
        for (int year = 1901; year < 2100; year += 3) {
            const CalendarSpan span(calendar, year - 1, year + 1);
            for (const auto& [month, day] : {std::pair{1, 1}, std::pair{8, 15}, std::pair{12, 29}})
                ASSERT_EQ(Text(span.Find(month, day)),
                          Text(JoinedDates(calendar, year - 1, year + 1, month, day)));
        }
}

TEST(EveryCalendar, LeavesOutYearsAfterTheThird)
{
    for (const Calendar calendar : kAll)
        EXPECT_EQ(Text(CalendarSpan(calendar, 2026, 2030).Find(1, 1)),
                  Text(CalendarSpan(calendar, 2026, 2028).Find(1, 1)));
}

TEST(EveryCalendar, HasNoImpossibleDays)
{
    for (const Calendar calendar : kAll)
        for (const auto& [month, day] : {std::pair{0, 1}, std::pair{14, 1}, std::pair{-1, 1},
                                         std::pair{1, 0}, std::pair{1, -1}, std::pair{1, 32}})
            EXPECT_TRUE(DatesInYear(calendar, 2026, month, day).empty());
}

} // namespace
} // namespace orrery::holidays::calendars
