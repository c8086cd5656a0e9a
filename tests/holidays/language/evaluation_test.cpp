#include "holidays/language/evaluation.h"

#include "rules_test.h"

#include <gmock/gmock.h>

namespace orrery::holidays {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::DaysOf;
using testing_support::SetOf;

// 5 U.S.C. 6103 and Executive Order 11582.
constexpr const char* kUnitedStates = ">> if Sat also Fri before; if Sun also Mon after\n"
                                      "0101,DAY,New Year's Day\n"
                                      "0619,DAY,Juneteenth\n"
                                      "> years 2021-\n"
                                      "0704,DAY,Independence Day\n"
                                      "1225,DAY,Christmas Day\n";

TEST(HolidaysOf, SubstitutesOnTheWeekdayBeforeAndAfter)
{
    EXPECT_THAT(DaysOf(kUnitedStates, 2021),
                ElementsAre("2021-01-01 New Year's Day", "2021-06-18 Juneteenth (observed)",
                            "2021-06-19 Juneteenth", "2021-07-04 Independence Day",
                            "2021-07-05 Independence Day (observed)",
                            "2021-12-24 Christmas Day (observed)", "2021-12-25 Christmas Day",
                            "2021-12-31 New Year's Day (observed)"))
        << "31 December is the substitute of the next year's 1 January";
    EXPECT_THAT(DaysOf(kUnitedStates, 2020),
                ElementsAre("2020-01-01 New Year's Day", "2020-07-03 Independence Day (observed)",
                            "2020-07-04 Independence Day", "2020-12-25 Christmas Day"));
}

// Banking and Financial Dealings Act 1971, schedule 1, and the proclamations under it.
constexpr const char* kBritain = "# Observed: {name} (substitute day)\n"
                                 ">> if Sat or Sun also next workday\n"
                                 "0101,DAY,New Year's Day\n"
                                 "1225,DAY,Christmas Day\n"
                                 "1226,DAY,Boxing Day\n";

TEST(HolidaysOf, LaterSubstitutesSeeTheEarlierOnes)
{
    EXPECT_THAT(DaysOf(kBritain, 2021),
                ElementsAre("2021-01-01 New Year's Day", "2021-12-25 Christmas Day",
                            "2021-12-26 Boxing Day", "2021-12-27 Christmas Day (substitute day)",
                            "2021-12-28 Boxing Day (substitute day)"));
    EXPECT_THAT(DaysOf(kBritain, 2022),
                ElementsAre("2022-01-01 New Year's Day",
                            "2022-01-03 New Year's Day (substitute day)",
                            "2022-12-25 Christmas Day", "2022-12-26 Boxing Day",
                            "2022-12-27 Christmas Day (substitute day)"));
}

TEST(HolidaysOf, MovesADay)
{
    constexpr const char* netherlands = "0427,DAY,Koningsdag\n"
                                        "> years 2014-; if Sun move to Sat before\n";
    EXPECT_THAT(DaysOf(netherlands, 2013), IsEmpty());
    EXPECT_THAT(DaysOf(netherlands, 2014), ElementsAre("2014-04-26 Koningsdag"));
    EXPECT_THAT(DaysOf(netherlands, 2024), ElementsAre("2024-04-27 Koningsdag"));
    EXPECT_THAT(DaysOf(netherlands, 2025), ElementsAre("2025-04-26 Koningsdag"));
    EXPECT_THAT(DaysOf(netherlands, 2031), ElementsAre("2031-04-26 Koningsdag"));
}

TEST(HolidaysOf, MovesToTheMondayBeforeOrAfter)
{
    // Ley 27.399, artículo 6.
    constexpr const char* argentina =
        ">> if Tue or Wed move to Mon before; if Thu or Fri move to Mon after\n"
        "0617,DAY,Güemes\n"
        "1012,DAY,Diversidad\n";
    EXPECT_THAT(DaysOf(argentina, 2023), ElementsAre("2023-06-17 Güemes", "2023-10-16 Diversidad"));
    EXPECT_THAT(DaysOf(argentina, 2025), ElementsAre("2025-06-16 Güemes", "2025-10-12 Diversidad"));
}

TEST(HolidaysOf, TheExactRuleReplacesTheApproximation)
{
    constexpr const char* finland = "1101,SAT,Pyhäinpäivä\n"
                                    "> exact 1031 SAT ON OR AFTER\n";
    EXPECT_THAT(DaysOf(finland, 2020), ElementsAre("2020-10-31 Pyhäinpäivä"));
    EXPECT_THAT(DaysOf(finland, 2025), ElementsAre("2025-11-01 Pyhäinpäivä"));
    EXPECT_THAT(DaysOf(finland, 2023), ElementsAre("2023-11-04 Pyhäinpäivä"));
}

// Act on National Holidays of Japan, article 3.
constexpr const char* kJapan = ">> if Sun also next day called 振替休日\n"
                               "0503,DAY,憲法記念日\n"
                               "0504,DAY,みどりの日\n"
                               "0505,DAY,こどもの日\n"
                               "0903,MON,敬老の日\n"
                               "0923,DAY,秋分の日\n"
                               "> in 2009 on 0923; in 2012 on 0922\n"
                               ",BETWEEN HOLIDAYS,国民の休日\n";

TEST(HolidaysOf, TheNextDayMayBeOnTheWeekend)
{
    EXPECT_THAT(DaysOf(kJapan, 2020),
                ElementsAre("2020-05-03 憲法記念日", "2020-05-04 みどりの日",
                            "2020-05-05 こどもの日", "2020-05-06 振替休日", "2020-09-21 敬老の日",
                            "2020-09-22 国民の休日", "2020-09-23 秋分の日"));
}

TEST(HolidaysOf, ADayBetweenTwoHolidaysIsOne)
{
    EXPECT_THAT(DaysOf(kJapan, 2026), testing::Contains("2026-09-22 国民の休日"));
    EXPECT_THAT(DaysOf(kJapan, 2012),
                ElementsAre("2012-05-03 憲法記念日", "2012-05-04 みどりの日",
                            "2012-05-05 こどもの日", "2012-09-17 敬老の日", "2012-09-22 秋分の日"));
}

TEST(HolidaysOf, ASubstituteForTwoHolidaysOnADay)
{
    // The Buddha's birthday fell on Children's Day in 2025.
    constexpr const char* korea =
        "0505,DAY,어린이날\n"
        "> if Sat or Sun or holiday also next workday called 대체공휴일\n"
        "20250505 20260524,DATE,부처님오신날\n"
        "> if Sat or Sun or holiday also next workday called 대체공휴일\n";
    EXPECT_THAT(DaysOf(korea, 2025), ElementsAre("2025-05-05 어린이날", "2025-05-05 부처님오신날",
                                                 "2025-05-06 대체공휴일"));
    EXPECT_THAT(DaysOf(korea, 2026), ElementsAre("2026-05-05 어린이날", "2026-05-24 부처님오신날",
                                                 "2026-05-25 대체공휴일"));
}

TEST(HolidaysOf, StatementsHaveYearsOfTheirOwn)
{
    constexpr const char* rules = "0101,DAY,New Year\n"
                                  "> if Sat or Sun also Mon after from 2011 until 2016\n";
    EXPECT_EQ(DaysOf(rules, 2010).size(), 1U);
    EXPECT_THAT(DaysOf(rules, 2011),
                ElementsAre("2011-01-01 New Year", "2011-01-03 New Year (observed)"));
    EXPECT_THAT(DaysOf(rules, 2017), ElementsAre("2017-01-01 New Year")) << "a Sunday";
}

TEST(HolidaysOf, NextWorkdaysSkipTheWeekendOfTheFile)
{
    constexpr const char* rules = "# Weekend: Fri Sat\n"
                                  "0101,DAY,New Year\n"
                                  "> if Fri or Sat also next workday\n";
    EXPECT_THAT(DaysOf(rules, 2027),
                ElementsAre("2027-01-01 New Year", "2027-01-03 New Year (observed)"));
}

TEST(HolidaysOf, DatesOfSingleYearsReplaceTheRule)
{
    // The early May bank holidays of 1995 and 2020 were on VE Day; in 2018 two days were given.
    constexpr const char* rules = "0501,MON,Early May\n> in 2020 on 0508; in 2018 on 1111 1112\n";
    EXPECT_THAT(DaysOf(rules, 2020), ElementsAre("2020-05-08 Early May"));
    EXPECT_THAT(DaysOf(rules, 2018), ElementsAre("2018-11-11 Early May", "2018-11-12 Early May"));
    EXPECT_THAT(DaysOf(rules, 2027), ElementsAre("2027-05-03 Early May"));
}

TEST(HolidaysOf, YearsLimitARule)
{
    const auto counts = [](const std::string& years, int year) {
        return DaysOf("0101,DAY,x\n> " + years, year).size();
    };
    EXPECT_EQ(counts("years 2006-", 2005), 0U);
    EXPECT_EQ(counts("years 2006-", 2006), 1U);
    EXPECT_EQ(counts("years -2019", 2019), 1U);
    EXPECT_EQ(counts("years -2019", 2020), 0U);
    EXPECT_EQ(counts("years 1990-1999 2004-", 1999), 1U);
    EXPECT_EQ(counts("years 1990-1999 2004-", 2003), 0U);
    EXPECT_EQ(counts("years 1990-1999 2004-", 2004), 1U);
    EXPECT_EQ(counts("years 2012", 2012), 1U);
    EXPECT_EQ(counts("years 2012", 2013), 0U);
    EXPECT_EQ(counts("years even", 2027), 0U);
    EXPECT_EQ(counts("years odd", 2027), 1U);
    EXPECT_EQ(counts("years leap", 2028), 1U);
    EXPECT_EQ(counts("years leap", 2027), 0U);
    EXPECT_EQ(counts("years every 4 from 2009", 2008), 0U);
    EXPECT_EQ(counts("years every 4 from 2009", 2013), 1U);
    EXPECT_EQ(counts("years every 4 from 2009", 2014), 0U);
    EXPECT_EQ(counts("not years 2020", 2020), 0U);
    EXPECT_EQ(counts("not years 2020", 2021), 1U);
    EXPECT_EQ(counts("years 2000-; not years 2020", 1999), 0U) << "both hold";
}

TEST(HolidaysOf, WeekdaysLimitARule)
{
    // 3 May 2027 is a Monday.
    EXPECT_EQ(DaysOf("0503,DAY,x\n> not on Sun Mon", 2027).size(), 0U);
    EXPECT_EQ(DaysOf("0503,DAY,x\n> not on Sun", 2027).size(), 1U);
    EXPECT_EQ(DaysOf("0503,DAY,x\n> only on Mon Tue", 2027).size(), 1U);
    EXPECT_EQ(DaysOf("0503,DAY,x\n> only on Tue", 2027).size(), 0U);
}

TEST(HolidaysOf, AHolidayHasDays)
{
    EXPECT_THAT(DaysOf("1231,DAY,Turn\n> days 3", 2027),
                ElementsAre("2027-01-01 Turn", "2027-01-02 Turn", "2027-12-31 Turn"))
        << "those of the year before reach into the year";
}

TEST(HolidaysOf, RegionsShowTheirOwnDays)
{
    constexpr const char* rules = "# Regions: BW Baden-Württemberg; BY Bayern; SN Sachsen\n"
                                  "0106,FIXED,Heilige Drei Könige\n> only in BW BY\n"
                                  "60,WESTERN,Fronleichnam\n> only in by\n"
                                  "1003,DAY,Tag der Deutschen Einheit\n"
                                  "1031,FIXED,Reformationstag\n> not in BY\n";
    HolidayChoice choice;
    EXPECT_THAT(DaysOf(rules, 2027, choice),
                ElementsAre("2027-10-03 Tag der Deutschen Einheit", "2027-10-31 Reformationstag"));
    choice.region = "BY";
    EXPECT_THAT(DaysOf(rules, 2027, choice),
                ElementsAre("2027-01-06 Heilige Drei Könige", "2027-05-27 Fronleichnam",
                            "2027-10-03 Tag der Deutschen Einheit"));
    EXPECT_EQ(
        SetOf(rules).regions,
        (std::vector<Region>{{"BW", "Baden-Württemberg"}, {"BY", "Bayern"}, {"SN", "Sachsen"}}));
}

TEST(HolidaysOf, CategoriesAreChosen)
{
    constexpr const char* rules = "0101,DAY,Public\n"
                                  "0102,FIXED,Bank\n> kind bank\n"
                                  "0103,FIXED,Half\n> kind half\n";
    HolidayChoice choice;
    EXPECT_THAT(DaysOf(rules, 2027, choice), ElementsAre("2027-01-01 Public"));
    choice.categories = {Category::Bank, Category::Half};
    EXPECT_THAT(DaysOf(rules, 2027, choice), ElementsAre("2027-01-02 Bank", "2027-01-03 Half"));
}

TEST(HolidaysOf, OnlyPublicDaysAreSkipped)
{
    constexpr const char* rules = "0102,DAY,Feast\n> if Sat also next workday\n"
                                  "0104,FIXED,Stocktaking\n> kind observance\n";
    EXPECT_THAT(DaysOf(rules, 2027), // 2 January is a Saturday
                ElementsAre("2027-01-02 Feast", "2027-01-04 Feast (observed)"));
}

TEST(HolidaysOf, NamesInAnotherLanguageAndAges)
{
    constexpr const char* rules = "0501,DAY,Fête du travail\n> name de Tag der Arbeit\n"
                                  "0830,DAY,Ben\n> born 1984\n";
    HolidayChoice choice;
    EXPECT_THAT(DaysOf(rules, 2027, choice),
                ElementsAre("2027-05-01 Fête du travail", "2027-08-30 Ben (43)"));
    choice.language = "de";
    EXPECT_THAT(DaysOf(rules, 2027, choice),
                ElementsAre("2027-05-01 Tag der Arbeit", "2027-08-30 Ben (43)"));
    EXPECT_THAT(DaysOf(rules, 1984), ElementsAre("1984-05-01 Fête du travail", "1984-08-30 Ben"));
    EXPECT_EQ(DaysOf(rules, 1983).size(), 1U);
}

TEST(HolidaysOf, DaysLaterAndEarlierThanARule)
{
    EXPECT_THAT(DaysOf("1104,THU +1,Day after Thanksgiving", 2027),
                ElementsAre("2027-11-26 Day after Thanksgiving"));
    EXPECT_THAT(DaysOf("0101,DAY -1,Eve", 2027), ElementsAre("2027-12-31 Eve"))
        << "of the next year's day";
}

TEST(HolidaysOf, WeekdaysCloseToADate)
{
    EXPECT_THAT(DaysOf("1123,WED BEFORE,Buß- und Bettag", 2022),
                ElementsAre("2022-11-16 Buß- und Bettag")); // the 23rd is a Wednesday
    EXPECT_THAT(DaysOf("1123,WED ON OR BEFORE,x", 2022), ElementsAre("2022-11-23 x"));
    EXPECT_THAT(DaysOf("1123,WED AFTER,x", 2022), ElementsAre("2022-11-30 x"));
    EXPECT_THAT(DaysOf("1123,WED ON OR AFTER,x", 2022), ElementsAre("2022-11-23 x"));
    EXPECT_THAT(DaysOf("0620,SAT ON OR AFTER,Midsommardagen", 2025),
                ElementsAre("2025-06-21 Midsommardagen"));
    EXPECT_THAT(DaysOf("0503,THU NEAREST,x", 2027), ElementsAre("2027-05-06 x")); // a Monday
    EXPECT_THAT(DaysOf("0503,FRI NEAREST,x", 2027), ElementsAre("2027-04-30 x"));
}

TEST(HolidaysOf, ListedDatesAndLeapDays)
{
    constexpr const char* rules = "20241031 20251020,DATE,Diwali\n"
                                  "20271230-20280102,DATE,Camp\n"
                                  "0229,LEAP DAY,Leap day\n";
    EXPECT_THAT(DaysOf(rules, 2025), ElementsAre("2025-10-20 Diwali"));
    EXPECT_THAT(DaysOf(rules, 2027), ElementsAre("2027-12-30 Camp", "2027-12-31 Camp"));
    EXPECT_THAT(DaysOf(rules, 2028),
                ElementsAre("2028-01-01 Camp", "2028-01-02 Camp", "2028-02-29 Leap day"));
}

TEST(HolidaysOf, OtherCalendarsHaveTheirDays)
{
    const auto first = [](const char* rule, int year) {
        const auto days = DaysOf(std::string(rule) + ",x", year);
        return days.empty() ? std::string() : days.front();
    };
    EXPECT_EQ(first("1225,JULIAN", 2027), "2027-01-07 x");
    EXPECT_EQ(first("-2,ORTHODOX", 2025), "2025-04-18 x");
    EXPECT_EQ(first("1 Shawwal,ISLAMIC", 2025), "2025-03-30 x");
    EXPECT_EQ(DaysOf("1 Shawwal,ISLAMIC,x", 2033).size(), 2U) << "in January and in December";
    EXPECT_EQ(first("15 Nisan,HEBREW", 2027), "2027-04-22 x");
    EXPECT_EQ(first("0101,CHINESE", 2027), "2027-02-06 x");
    EXPECT_EQ(first("0101,KOREAN", 2027), "2027-02-07 x") << "an hour later it is midnight there";
    EXPECT_EQ(first("0101,KOREAN -1", 2027), "2027-02-06 x");
    EXPECT_EQ(first("0101,VIETNAMESE", 2027), "2027-02-06 x");
    EXPECT_EQ(first("0101,PERSIAN", 2027), "2027-03-21 x");
    EXPECT_EQ(first("0101,COPTIC", 2027), "2027-09-12 x");
    EXPECT_EQ(first("0101,INDIAN", 2027), "2027-03-22 x");
    EXPECT_EQ(first("MARCH,SOLAR JAPAN", 2026), "2026-03-20 x");
    EXPECT_EQ(first("15,SOLAR CHINA", 2026), "2026-04-05 x");
    EXPECT_EQ(DaysOf(",FULL MOON,x", 2026).size(), 13U);
}

TEST(HolidaysOf, ComputedDaysOfAnnouncedCalendarsAreMarked)
{
    constexpr const char* rules = "# Estimated: {name} (estimated)\n"
                                  "1 Shawwal,ISLAMIC,Bayram\n"
                                  "> in 2026 on 0320\n";
    EXPECT_THAT(DaysOf(rules, 2026), ElementsAre("2026-03-20 Bayram"));
    EXPECT_THAT(DaysOf(rules, 2025), ElementsAre("2025-03-30 Bayram (estimated)"));
    EXPECT_TRUE(HolidaysOf(SetOf(rules), 2025, {}).front().isEstimated);
    EXPECT_FALSE(HolidaysOf(SetOf(rules), 2026, {}).front().isEstimated);
}

TEST(HolidaysOf, EveryYearHasAnswers)
{
    for (const int year : {1, 2, 1583, 6553, 6554, 9998, 9999})
        EXPECT_GE(DaysOf(kUnitedStates, year).size(), 3U) << year;
    EXPECT_EQ(DaysOf("-2,WESTERN,x", 7000).size(), 0U) << "Easter is not computed";
}

TEST(HolidaysOf, MemoryAndTimeAreBounded)
{
    std::string rules = ">> if Sun also next workday\n";
    for (int rule = 0; rule < 4000; ++rule)
        rules += "0101,FIXED,x\n> days 366\n";
    EXPECT_LE(DaysOf(rules, 2027).size(), 20'000U);
    std::string dates;
    for (int i = 0; i < 1000; ++i)
        dates += "20270101-20271231 ";
    EXPECT_LE(DaysOf(dates + ",DATE,x\n> days 366", 2027).size(), 20'000U);
}

HolidayList ListOf(std::string_view text)
{
    HolidayList list;
    for (const std::string_view line : util::SplitLines(text)) {
        auto plain = ParseHolidayLine(line);
        if (auto* const rule = std::get_if<HolidayDef>(&plain))
            list.Append(std::move(*rule));
        else
            list.AppendExtra(std::string(line));
    }
    return list;
}

TEST(FillHolidayDates, IsThePlainListWithoutExtraLines)
{
    const HolidayList list = ListOf("1225,DAY, Christmas Day\n0101,DAY,New Year\n0005,MON,x");
    HolidayDateList plain;
    HolidayDateList filled;
    ComputeHolidayDates(2027, list, EasterDate(2027), plain);
    FillHolidayDates(2027, list, {}, EasterDate(2027), filled);
    EXPECT_EQ(filled.Count, plain.Count);
    EXPECT_EQ(filled.Dates, plain.Dates);
    EXPECT_EQ(filled.Names, plain.Names);
}

TEST(FillHolidayDates, TakesWhatThereIsRoomFor)
{
    HolidayDateList dates;
    FillHolidayDates(2027,
                     ListOf("0101,DAY,x\n> days 366\n0101,DAY,y\n> days 366\n"
                            "0101,DAY,z\n> days 366\n"),
                     {}, EasterDate(2027), dates);
    EXPECT_EQ(dates.Count, 1025);
    EXPECT_EQ(testing_support::Text(dates.Dates[0]), "2027-01-01");
    FillHolidayDates(2027, ListOf(kJapan), {}, EasterDate(2027), dates);
    EXPECT_EQ(dates.Count, 5);
    EXPECT_EQ(dates.Cursor, 0);
}

} // namespace
} // namespace orrery::holidays
