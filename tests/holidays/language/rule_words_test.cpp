#include "holidays/language/rule_words.h"

#include "rules_test.h"

namespace orrery::holidays {
namespace {

using testing_support::SetOf;

/// The words of the first rule of some lines.
std::string WordsOfFirst(const std::string& lines)
{
    const RuleSet set = SetOf(lines);
    return set.rules.empty() ? "no rule" : RuleInWords(set.rules.front(), set.regions);
}

struct RuleWordsCase {
    const char* name;
    const char* lines;
    const char* expected;
};
class RuleInWordsTest : public testing::TestWithParam<RuleWordsCase> {};
TEST_P(RuleInWordsTest, SaysTheRule)
{
    EXPECT_EQ(WordsOfFirst(GetParam().lines), GetParam().expected);
}

const auto kNameOfWordsCase = [](const auto& info) { return std::string(info.param.name); };

INSTANTIATE_TEST_SUITE_P(
    Plain, RuleInWordsTest,
    testing::Values(RuleWordsCase{"FixedDay", "0704,DAY,x", "4 July"},
                    RuleWordsCase{"Hidden", "0106,FIXED,x", "6 January"},
                    RuleWordsCase{"First", "0901,MON,x", "first Monday of September"},
                    RuleWordsCase{"Fourth", "1104,THU,x", "fourth Thursday of November"},
                    RuleWordsCase{"Last", "0505,MON,x", "last Monday of May"},
                    RuleWordsCase{"SecondToLast", "1006,SUN,x", "second-to-last Sunday of October"},
                    RuleWordsCase{"ThirdToLast", "1007,SUN,x", "third-to-last Sunday of October"},
                    RuleWordsCase{"EarlierStill", "1009,SUN,x",
                                  "Sunday 4 weeks before the last one of October"},
                    RuleWordsCase{"WeekBeforeTheFirst", "0900,MON,x",
                                  "last Monday before September"},
                    RuleWordsCase{"EasterItself", "0,EASTER,x", "Easter Sunday"},
                    RuleWordsCase{"AfterEaster", "1,EASTER,x", "Easter Sunday + 1"},
                    RuleWordsCase{"BeforeEaster", ",EASTER FRI,x", "Easter Sunday - 2"},
                    RuleWordsCase{"Western", "60,WESTERN,x", "Easter Sunday + 60"}),
    kNameOfWordsCase);

INSTANTIATE_TEST_SUITE_P(
    Kinds, RuleInWordsTest,
    testing::Values(
        RuleWordsCase{"OnOrAfter", "0620,SAT ON OR AFTER,x", "Saturday on or after 20 June"},
        RuleWordsCase{"After", "0620,SAT AFTER,x", "Saturday after 20 June"},
        RuleWordsCase{"OnOrBefore", "0620,FRI ON OR BEFORE,x", "Friday on or before 20 June"},
        RuleWordsCase{"Before", "1123,WED BEFORE,x", "Wednesday before 23 November"},
        RuleWordsCase{"Nearest", "0706,MON NEAREST,x", "Monday nearest to 6 July"},
        RuleWordsCase{"Shifted", "1104,THU +1,x", "fourth Thursday of November + 1"},
        RuleWordsCase{"ShiftedBack", "0101,KOREAN -1,x", "day 1 of month 1, Korean calendar - 1"},
        RuleWordsCase{"Orthodox", "-2,ORTHODOX,x", "Orthodox Easter Sunday - 2"},
        RuleWordsCase{"Julian", "1225,JULIAN,x", "25 December, Julian calendar"},
        RuleWordsCase{"OneDate", "20270503,DATE,x", "3 May 2027"},
        RuleWordsCase{"Span", "20270503-20270505,DATE,x", "3 May 2027 to 5 May 2027"},
        RuleWordsCase{"ManyDates", "20240101 20250101 20260101 20270101 20280101,DATE,x",
                      "1 January 2024, 1 January 2025, 1 January 2026 and 2 more"},
        RuleWordsCase{"LeapDay", "0229,LEAP DAY,x", "29 February of leap years"},
        RuleWordsCase{"UmmAlQura", "1 Shawwal,ISLAMIC,x", "1 Shawwal"},
        RuleWordsCase{"Tabular", "0110,ISLAMIC CIVIL,x", "10 Muharram, tabular Islamic calendar"},
        RuleWordsCase{"Hebrew", "0113,HEBREW,x", "13 Nisan"},
        RuleWordsCase{"Chinese", "0815,CHINESE,x", "day 15 of month 8, Chinese calendar"},
        RuleWordsCase{"Vietnamese", "0310,VIETNAMESE,x", "day 10 of month 3, Vietnamese calendar"},
        RuleWordsCase{"Persian", "0101,PERSIAN,x", "1 Farvardin"},
        RuleWordsCase{"Coptic", "1301,COPTIC,x", "1 Pi Kogi Enavot"},
        RuleWordsCase{"Ethiopic", "0101,ETHIOPIC,x", "1 Meskerem"},
        RuleWordsCase{"Indian", "1201,INDIAN,x", "1 Phalguna"},
        RuleWordsCase{"Equinox", "MARCH,SOLAR JAPAN,x", "March equinox in Japan"},
        RuleWordsCase{"Solstice", "DECEMBER,SOLAR GMT,x", "December solstice in GMT"},
        RuleWordsCase{"SolarTerm", "15,SOLAR CHINA,x", "sun at 15 degrees in China"},
        RuleWordsCase{"SolarZone", "JUNE,SOLAR +5.5,x", "June solstice in GMT+5:30"},
        RuleWordsCase{"Moon", "KOREA,FULL MOON,x", "every full moon in Korea"},
        RuleWordsCase{"MoonInGmt", ",NEW MOON,x", "every new moon in GMT"},
        RuleWordsCase{"WestOfGmt", "-3,LAST QUARTER,x", "every last quarter in GMT-3"},
        RuleWordsCase{"Between", ",BETWEEN HOLIDAYS,x", "a day between two holidays"}),
    kNameOfWordsCase);

INSTANTIATE_TEST_SUITE_P(
    Refinements, RuleInWordsTest,
    testing::Values(
        RuleWordsCase{"Exact", "1101,SAT,x\n> exact 1031 SAT ON OR AFTER",
                      "Saturday on or after 31 October"},
        RuleWordsCase{"From", "0619,DAY,x\n> years 2021-", "19 June; from 2021"},
        RuleWordsCase{"Until", "0619,DAY,x\n> years -2019", "19 June; until 2019"},
        RuleWordsCase{"SomeYears", "0619,DAY,x\n> years 1990-1999 2002 2004-",
                      "19 June; 1990 to 1999, in 2002 and from 2004"},
        RuleWordsCase{"ExceptAYear", "0619,DAY,x\n> years 2021-; not years 2023",
                      "19 June; from 2021; except in 2023"},
        RuleWordsCase{"EvenYears", "0619,DAY,x\n> years even", "19 June; even years"},
        RuleWordsCase{"OddYears", "0619,DAY,x\n> years odd", "19 June; odd years"},
        RuleWordsCase{"LeapYears", "0619,DAY,x\n> years leap", "19 June; leap years"},
        RuleWordsCase{"Every", "0619,DAY,x\n> years every 4 from 2008",
                      "19 June; every 4 years from 2008"},
        RuleWordsCase{"OtherDates", "0504,DAY,x\n> in 2020 on 0508; in 2018 on 1111 1112",
                      "4 May; in 2020 on 8 May; in 2018 on 11 November and 12 November"},
        RuleWordsCase{"NotOn", "0504,DAY,x\n> not on Sun", "4 May; not on Sunday"},
        RuleWordsCase{"OnlyOn", "0504,DAY,x\n> only on Mon Tue",
                      "4 May; only on Monday or Tuesday"},
        RuleWordsCase{"Never", "0504,DAY,x\n> only on Mon; not on Mon", "4 May; on no weekday"},
        RuleWordsCase{"Days", "1 Shawwal,ISLAMIC,x\n> days 3", "1 Shawwal; 3 days"},
        RuleWordsCase{"Born", "0830,DAY,Ben\n> born 1984", "30 August; born 1984"},
        RuleWordsCase{"OnlyIn", "# Regions: BW Baden; BY Bayern\n0106,FIXED,x\n> only in BW by ST",
                      "6 January; only in Baden, Bayern and ST"},
        RuleWordsCase{"ManyRegions", "0106,FIXED,x\n> only in A B C D E F",
                      "6 January; only in A, B, C, D and 2 more"},
        RuleWordsCase{"FiveRegions", "0106,FIXED,x\n> only in A B C D E",
                      "6 January; only in A, B, C, D and E"},
        RuleWordsCase{"NotIn", "0106,FIXED,x\n> not in SN TH", "6 January; not in SN or TH"},
        RuleWordsCase{"Name", "0501,DAY,May Day\n> name de Tag der Arbeit", "1 May"},
        RuleWordsCase{"Kind", "0501,DAY,x\n> kind bank", "1 May"}),
    kNameOfWordsCase);

INSTANTIATE_TEST_SUITE_P(
    Substitutes, RuleInWordsTest,
    testing::Values(
        RuleWordsCase{"NextWorkday", "0101,DAY,x\n> if Sat or Sun also next workday from 2014",
                      "1 January; if Saturday or Sunday also the next workday from 2014"},
        RuleWordsCase{"NextDay", "0101,DAY,x\n> if Sun also next day until 2006",
                      "1 January; if Sunday also the next day until 2006"},
        RuleWordsCase{"BeforeAndAfter",
                      "0101,DAY,x\n> if Sat also Fri before; if Sun also Mon after",
                      "1 January; if Saturday also the Friday before; if Sunday also the Monday "
                      "after"},
        RuleWordsCase{"DaysAfter", "0101,DAY,x\n> if Sat also +2",
                      "1 January; if Saturday also 2 days after"},
        RuleWordsCase{"DayBefore", "0101,DAY,x\n> if Sat also -1",
                      "1 January; if Saturday also 1 day before"},
        RuleWordsCase{"Moves", "0427,DAY,x\n> if Sun move to Sat before",
                      "27 April; if Sunday moves to the Saturday before"},
        RuleWordsCase{"AllButSunday",
                      "0101,DAY,x\n> if Mon or Tue or Wed or Thu or Fri or Sat also -1",
                      "1 January; if Monday, Tuesday, Wednesday, Thursday, Friday or Saturday also "
                      "1 day before"},
        RuleWordsCase{"OnAHoliday", "0408,DAY,x\n> if holiday also next workday",
                      "8 April; if a holiday also the next workday"},
        RuleWordsCase{"SundayOrHoliday",
                      "0408,DAY,x\n> if Sun or holiday also next workday from 2014 until 2020",
                      "8 April; if Sunday or a holiday also the next workday 2014 to 2020"},
        RuleWordsCase{"Called", "0101,DAY,x\n> if Sun also next day called Rest",
                      "1 January; if Sunday also the next day as \"Rest\""}),
    kNameOfWordsCase);

TEST(RuleInWords, LongListsAreWholeOnRequest)
{
    const auto wholeOf = [](const std::string& lines) {
        const RuleSet set = SetOf(lines);
        return RuleInWords(set.rules.front(), set.regions, Lists::Whole);
    };
    EXPECT_EQ(wholeOf("20240101 20250101 20260101 20270101,DATE,x"),
              "1 January 2024, 1 January 2025, 1 January 2026, 1 January 2027");
    EXPECT_EQ(wholeOf("0106,FIXED,x\n> only in A B C D E F"),
              "6 January; only in A, B, C, D, E and F");
    EXPECT_EQ(wholeOf("0106,FIXED,x\n> not in A B C D E F"),
              "6 January; not in A, B, C, D, E or F");
    EXPECT_EQ(wholeOf("0106,FIXED,x\n> years 2001 2003 2005 2007 2009 2011"),
              "6 January; in 2001, in 2003, in 2005, in 2007, in 2009 and in 2011");
    const std::string fiveYears = "0106,FIXED,x\n> in 2020 on 0101; in 2021 on 0102; "
                                  "in 2022 on 0103; in 2023 on 0104; in 2024 on 0105";
    EXPECT_EQ(WordsOfFirst(fiveYears), "6 January; other dates in 5 years");
    EXPECT_EQ(wholeOf(fiveYears), "6 January; in 2020 on 1 January; in 2021 on 2 January; in 2022 "
                                  "on 3 January; in 2023 on 4 January; in 2024 on 5 January");
    EXPECT_EQ(wholeOf("0106,FIXED,x\n> in 2020 on 0101 0102 0103 0104 0105 0106"),
              "6 January; in 2020 on 1 January, 2 January, 3 January, 4 January, 5 January and "
              "6 January");
}

TEST(RuleInWords, ADateCodeThatIsNoDateStaysANumber)
{
    EXPECT_EQ(DayInWords({PlainDay{-5, kFixedDay}}), "-0005");
    EXPECT_EQ(DayInWords({PlainDay{1301, kFixedDay}}), "1301");
    EXPECT_EQ(DayInWords({PlainDay{7, 3}}), "0007");
    EXPECT_EQ(DayInWords({PlainDay{49, 9}}), "49");
    EXPECT_EQ(DayInWords({PlainDay{101, -1}}), "0101");
}

TEST(DateInWords, HasAWeekdayOnRequest)
{
    const Date day = std::chrono::year(2027) / 11 / 25;
    EXPECT_EQ(DateInWords(day), "25 November 2027");
    EXPECT_EQ(DateInWords(day, true), "Thu 25 November 2027");
}

TEST(KindInWords, IsTheCategoryOrABirthday)
{
    const auto kindOf = [](const std::string& lines) {
        return KindInWords(SetOf(lines).rules.front());
    };
    EXPECT_EQ(kindOf("0101,DAY,x"), "Public");
    EXPECT_EQ(kindOf("0101,DAY,x\n> kind bank"), "Bank");
    EXPECT_EQ(kindOf("0101,DAY,x\n> kind school"), "School");
    EXPECT_EQ(kindOf("0101,DAY,x\n> kind optional"), "Optional");
    EXPECT_EQ(kindOf("0101,DAY,x\n> kind observance"), "Observance");
    EXPECT_EQ(kindOf("0101,DAY,x\n> kind half"), "Half");
    EXPECT_EQ(kindOf("0830,DAY,Ben\n> born 1984"), "Birthday");
    EXPECT_EQ(kindOf("0830,DAY,Ben\n> born 1984; kind observance"), "Observance");
}

} // namespace
} // namespace orrery::holidays
