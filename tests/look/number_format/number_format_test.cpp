#include "look/number_format/number_format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace orrery::look {
namespace {

using book::CellContent;
using book::DateSystem;

std::string Show(std::string_view code, const CellContent& content,
                 DateSystem dates = DateSystem::From1900)
{
    return NumberFormat(code).Format(content, dates).text;
}

struct FormatCase {
    const char* name;
    std::string_view code;
    CellContent content;
    std::string_view expected;
};

class FormatTest : public testing::TestWithParam<FormatCase> {};

TEST_P(FormatTest, ShowsText)
{
    EXPECT_EQ(Show(GetParam().code, GetParam().content), GetParam().expected);
}

const auto kNameOf = [](const auto& info) { return std::string(info.param.name); };

INSTANTIATE_TEST_SUITE_P(
    Numbers, FormatTest,
    testing::Values(FormatCase{"HalfAwayFromZero", "0.0", 0.25, "0.3"},
                    FormatCase{"HalfOfDecimalDigits", "0.00", 1.005, "1.01"},
                    FormatCase{"FifteenDigits", "0", 123456789012345678.0, "123456789012346000"},
                    FormatCase{"NegativeZero", "0.00", -0.0, "0.00"},
                    FormatCase{"RoundsToZero", "0.00", -0.001, "0.00"},
                    FormatCase{"Thousands", "#,##0.00", -1234567.891, "-1,234,567.89"},
                    FormatCase{"ScaledByThousands", "#,##0.0,,\"M\"", 1234567891.0, "1,234.6M"},
                    FormatCase{"ScaledBeforePoint", "0,.0", 12345.0, "12.3"},
                    FormatCase{"Percent", "0.0%", 0.285, "28.5%"},
                    FormatCase{"Places", "??0.0??", 1.5, "  1.5  "},
                    FormatCase{"NoDigits", "#.##", 0.0, "."},
                    FormatCase{"PhoneNumber", "(000) 000-0000", 5551234567.0, "(555) 123-4567"},
                    FormatCase{"BlankOfWidth", "0_)", 5.0, "5 "},
                    FormatCase{"SignBeforeAll", "\"$\"0", -5.0, "-$5"},
                    FormatCase{"Currency", "[$€-407] 0", 5.0, "€ 5"},
                    FormatCase{"Exponent", "0.00E+00", 12345.0, "1.23E+04"},
                    FormatCase{"RoundedExponent", "0.0E+0", 9.99, "1.0E+1"},
                    FormatCase{"Engineering", "##0.0E+0", 12345.0, "12.3E+3"},
                    FormatCase{"EngineeringRounded", "##0.0E+0", 999.96, "1.0E+3"},
                    FormatCase{"SmallExponent", "0.0E-0", 0.00012, "1.2E-4"},
                    FormatCase{"ThaiDigits", "[$-D00041E]0.0", 12.5, "๑๒.๕"},
                    FormatCase{"NotFinite", "0", std::numeric_limits<double>::infinity(), "#NUM!"}),
    kNameOf);

INSTANTIATE_TEST_SUITE_P(
    Sections, FormatTest,
    testing::Values(FormatCase{"Positive", "0;(0);\"zero\";\"<\"@\">\"", 5.0, "5"},
                    FormatCase{"Negative", "0;(0);\"zero\";\"<\"@\">\"", -5.0, "(5)"},
                    FormatCase{"Zero", "0;(0);\"zero\";\"<\"@\">\"", 0.0, "zero"},
                    FormatCase{"Text", "0;(0);\"zero\";\"<\"@\">\"", std::string("a"), "<a>"},
                    FormatCase{"Hidden", ";;;", 5.0, ""},
                    FormatCase{"HiddenText", ";;;", std::string("a"), ""},
                    FormatCase{"TextUnchanged", "0.00", std::string("a"), "a"},
                    FormatCase{"TextSectionOfTwo", "0;@\"!\"", std::string("a"), "a!"},
                    FormatCase{"NumberAsText", "@", -5.5, "-5.5"},
                    FormatCase{"Condition", "[>=100]\"big\";\"small\"", 100.0, "big"},
                    FormatCase{"NoCondition", "[>=100]\"big\";\"small\"", 99.0, "small"},
                    FormatCase{"SecondCondition", "[>100]\"a\";[<5]\"b\";\"c\"", 4.0, "b"},
                    FormatCase{"NeitherCondition", "[>100]\"a\";[<5]\"b\";\"c\"", 5.0, "c"},
                    FormatCase{"NoneHolds", "[>100]0;[<5]0", 50.0, "########"},
                    FormatCase{"ConditionOnly", "[>100]0.0", 5.0, "5"},
                    FormatCase{"SemicolonInQuotes", "\"a;b\"0", 5.0, "a;b5"},
                    FormatCase{"True", "0.00", true, "TRUE"},
                    FormatCase{"Error", "0.00", book::CellError::DivisionByZero, "#DIV/0!"},
                    FormatCase{"Nothing", "\"x\"0", CellContent{}, ""}),
    kNameOf);

INSTANTIATE_TEST_SUITE_P(
    General, FormatTest,
    testing::Values(FormatCase{"ElevenDigits", "General", 12345678901.0, "12345678901"},
                    FormatCase{"TwelveDigits", "General", 123456789012.0, "1.23457E+11"},
                    FormatCase{"Fraction", "General", 123456.7890123, "123456.789"},
                    FormatCase{"Third", "General", 1.0 / 3, "0.333333333"},
                    FormatCase{"SmallExact", "General", 0.00001, "0.00001"},
                    FormatCase{"SmallLong", "General", 0.0000123456789, "1.23457E-05"},
                    FormatCase{"LongExponent", "General", 9.33262154439441e157, "9.33262E+157"},
                    FormatCase{"Words", "General\\ \\d\\a\\y\\s", -1.5, "-1.5 days"},
                    FormatCase{"AnyCase", "GENERAL", 1.5, "1.5"},
                    FormatCase{"Empty", "", 1.5, "1.5"},
                    FormatCase{"UnclosedQuote", "0\"a", 1.5, "1.5"},
                    FormatCase{"FiveSections", "0;0;0;@;0", 1.5, "1.5"}),
    kNameOf);

INSTANTIATE_TEST_SUITE_P(
    Fractions, FormatTest,
    testing::Values(FormatCase{"OneDigit", "# ?/?", 0.5, " 1/2"},
                    FormatCase{"TwoDigits", "# ?\?/??", 3.14159265358979, "3  1/7 "},
                    FormatCase{"Whole", "# ?/?", 5.0, "5    "},
                    FormatCase{"Eighths", "# ?/8", 1.5, "1 4/8"},
                    FormatCase{"CarriesToWhole", "# ?/4", 0.99, "1    "},
                    FormatCase{"Improper", "?/?", 2.5, "5/2"},
                    FormatCase{"LongNumerator", "?/?", 1e15, "1000000000000000/1"},
                    FormatCase{"Negative", "# ?/?", -1.25, "-1 1/4"}),
    kNameOf);

// 2020-06-18 is a Thursday.
INSTANTIATE_TEST_SUITE_P(
    Dates, FormatTest,
    testing::Values(FormatCase{"Iso", "yyyy-mm-dd", 44000.0, "2020-06-18"},
                    FormatCase{"Names", "dddd, mmmm d, yy", 44000.0, "Thursday, June 18, 20"},
                    FormatCase{"ShortNames", "ddd mmm mmmmm", 44000.0, "Thu Jun J"},
                    FormatCase{"DayZero", "yyyy-mm-dd", 0.0, "1900-01-00"},
                    FormatCase{"FirstDay", "dddd yyyy-mm-dd", 1.0, "Sunday 1900-01-01"},
                    FormatCase{"LeapDay", "yyyy-mm-dd", 60.0, "1900-02-29"},
                    FormatCase{"March1900", "dddd yyyy-mm-dd", 61.0, "Thursday 1900-03-01"},
                    FormatCase{"LastDay", "yyyy-mm-dd", 2958465.0, "9999-12-31"},
                    FormatCase{"BehindLastDay", "yyyy-mm-dd", 2958466.0, "########"},
                    FormatCase{"BeforeFirstDay", "yyyy-mm-dd", -1.0, "########"},
                    FormatCase{"MinutesByContext", "m h:m m:s", 44000.5208333333, "6 12:30 30:0"},
                    FormatCase{"HalvesOfDay", "h:mm AM/PM", 0.520833333333333, "12:30 PM"},
                    FormatCase{"Midnight", "h A/P", 0.0, "12 A"},
                    FormatCase{"ElapsedHours", "[h]:mm:ss", 1.5, "36:00:00"},
                    FormatCase{"ElapsedSeconds", "[ss]", 0.5, "43200"},
                    FormatCase{"Milliseconds", "mm:ss.000", 0.1234567, "57:46.659"},
                    FormatCase{"RoundsUpToNextDay", "d h:mm:ss", 5.999999, "6 0:00:00"},
                    FormatCase{"DoesNotRoundDate", "d", 5.999999, "5"},
                    FormatCase{"Buddhist", "bbbb", 44000.0, "2563"},
                    FormatCase{"BuddhistCalendar", "[$-107041E]yyyy", 44000.0, "2563"},
                    FormatCase{"Reiwa", "[$-411]ggge\"年\"", 44000.0, "令和2年"},
                    FormatCase{"LastOfHeisei", "[$-411]ge.m.d", 43585.0, "H31.4.30"},
                    FormatCase{"Minguo", "[$-404]e\"年\"m\"月\"", 44000.0, "109年6月"},
                    FormatCase{"German", "[$-407]dddd, d. mmmm", 44000.0, "Donnerstag, 18. Juni"},
                    FormatCase{"CountryOfLanguage", "[$-100C]mmmm", 44000.0, "juin"},
                    FormatCase{"LanguageTag", "[$-de-DE]mmmm", 43891.0, "März"},
                    FormatCase{"UnknownTag", "[$-zz]mmmm", 44000.0, "June"},
                    FormatCase{"Nominative", "[$-415]mmmm yyyy", 44000.0, "czerwiec 2020"},
                    FormatCase{"Genitive", "[$-415]d mmmm yyyy", 44000.0, "18 czerwca 2020"},
                    FormatCase{"Inflected", "[$-FC19]mmmm", 44000.0, "июня"},
                    FormatCase{"SystemDate", "[$-F800]dddd, mmmm dd, yyyy", 43988.0,
                               "Saturday, June 6, 2020"},
                    FormatCase{"SystemTime", "[$-F400]h:mm:ss AM/PM", 0.75, "6:00:00 PM"}),
    kNameOf);

INSTANTIATE_TEST_SUITE_P(
    Ideographs, FormatTest,
    testing::Values(FormatCase{"Date", "[DBNum1][$-804]yyyy\"年\"m\"月\"d\"日\"", 44193.0,
                               "二〇二〇年十二月二十八日"},
                    FormatCase{"FormalDate", "[DBNum2][$-804]m\"月\"d\"日\"", 44193.0,
                               "拾贰月贰拾捌日"},
                    FormatCase{"FullWidthDate", "[DBNum3][$-411]m\"月\"", 44193.0, "１２月"},
                    FormatCase{"YearOfRepublic", "[DBNum1][$-404]e\"年\"", 44193.0, "一〇九年"},
                    FormatCase{"Number", "[DBNum1][$-804]General", 10020030.0, "一千〇二万〇三十"},
                    FormatCase{"JapaneseNumber", "[DBNum1][$-411]General", 123.0, "百二十三"},
                    FormatCase{"Digits", "[DBNum1][$-804]0", 105.0, "一〇五"},
                    FormatCase{"Zero", "[DBNum1][$-804]General", 0.0, "〇"},
                    FormatCase{"OtherLanguage", "[DBNum1][$-407]d", 44193.0, "28"}),
    kNameOf);

TEST(NumberFormatTest, CountsFrom1904)
{
    EXPECT_EQ(Show("yyyy-mm-dd ddd", 0.0, DateSystem::From1904), "1904-01-01 Fri");
    EXPECT_EQ(Show("m/d/yyyy", -1.0, DateSystem::From1904), "-1/2/1904");
    EXPECT_EQ(Show("yyyy-mm-dd", 2957003.0, DateSystem::From1904), "9999-12-31");
    EXPECT_EQ(Show("yyyy-mm-dd", 2957004.0, DateSystem::From1904), "########");
}

/// Later days have later dates: every day for two centuries, then one in 13.
TEST(NumberFormatTest, CountsEveryDay)
{
    const NumberFormat format("yyyymmdd");
    std::string before;
    for (double day = 0; day <= 2958465; day += day < 80'000 ? 1 : 13) {
        const auto value = format.Format(day, DateSystem::From1900);
        ASSERT_LT(before, value.text) << day;
        ASSERT_EQ(value.text.size(), 8U) << day;
        before = value.text;
    }
}

TEST(NumberFormatTest, GivesColors)
{
    const auto color = [](std::string_view code, double number) {
        return NumberFormat(code).Format(number, DateSystem::From1900).color;
    };
    EXPECT_EQ(color("[Red]0;[Color 10]0;[blue]0", 1), (book::Color{255, 0, 0}));
    EXPECT_EQ(color("[Red]0;[Color 10]0;[blue]0", -1), (book::Color{0, 128, 0}));
    EXPECT_EQ(color("[Red]0;[Color 10]0;[blue]0", 0), (book::Color{0, 0, 255}));
    EXPECT_EQ(color("[Color57]0", 1), std::nullopt);
    EXPECT_EQ(color("0;[Red]0", 1), std::nullopt);
    EXPECT_EQ(NumberFormat("0;0;0;[Cyan]@").Format(std::string("a"), {}).color,
              (book::Color{0, 255, 255}));
}

TEST(NumberFormatTest, TellsWhereToFill)
{
    const auto value = NumberFormat("\"$\"* 0.00").Format(-5.0, DateSystem::From1900);
    EXPECT_EQ(value.text, "-$5.00");
    EXPECT_EQ(value.fillAt, 2U);
    EXPECT_EQ(value.fillCharacter, " ");
    EXPECT_EQ(NumberFormat("0*€").Format(5.0, DateSystem::From1900).fillCharacter, "€");
    EXPECT_EQ(NumberFormat("0").Format(5.0, DateSystem::From1900).fillAt, std::nullopt);
}

TEST(NumberFormatTest, TellsWhatItShows)
{
    EXPECT_TRUE(NumberFormat("d;@").IsDate());
    EXPECT_FALSE(NumberFormat("0\"d\"").IsDate());
    EXPECT_TRUE(NumberFormat("[Red]General").IsGeneral());
    EXPECT_TRUE(NumberFormat("\"unclosed").IsGeneral());
    EXPECT_FALSE(NumberFormat("General\" x\"").IsGeneral());
    EXPECT_TRUE(NumberFormat("@").IsText());
    EXPECT_FALSE(NumberFormat("0;@").IsText());
    EXPECT_TRUE(NumberFormat("General").Format(5.0, {}).isGeneral);
    EXPECT_FALSE(NumberFormat("0").Format(5.0, {}).isGeneral);
    EXPECT_TRUE(NumberFormat("d").Format(-5.0, {}).isTooWide);
}

TEST(NumberFormatTest, SpeaksTheLanguageOfTheDisplay)
{
    const NumberFormat german("dddd", 0x0407);
    EXPECT_EQ(german.Format(44000.0, {}).text, "Donnerstag");
    const NumberFormat system("[$-F800]dddd", 0x0407);
    EXPECT_EQ(system.Format(44000.0, {}).text, "Donnerstag, 18. Juni 2020");
}

TEST(NumberFormatTest, BoundsLargeNumbers)
{
    EXPECT_EQ(Show("0/3", 1.7e308).size(), 311U); // 309 digits
    EXPECT_EQ(Show("0.00", -1.7e308).size(), 313U);
}

TEST(NumberFormatTest, BoundsLongCodes)
{
    EXPECT_TRUE(NumberFormat(std::string(65'537, '0')).IsGeneral());
    EXPECT_EQ(Show(std::string(65'536, '0'), 5.0).size(), 65'536U);
    EXPECT_LT(Show(std::string(65'536, '@'), std::string(32'767, 'x')).size(), 2'000'000U);
    std::string exponents;
    for (int i = 0; i < 16'000; ++i) {
        exponents += "_ae+";
    }
    EXPECT_FALSE(Show(exponents, 5.0).empty());
}

TEST(FormatGeneralTest, FitsIntoCharacters)
{
    EXPECT_EQ(FormatGeneral(1234.5678, 11), "1234.5678");
    EXPECT_EQ(FormatGeneral(1234.5678, 8), "1234.568");
    EXPECT_EQ(FormatGeneral(1234.5678, 5), "1235");
    EXPECT_EQ(FormatGeneral(1234567, 6), "1E+06");
    EXPECT_EQ(FormatGeneral(-1234567, 7), "-1234567");
    EXPECT_EQ(FormatGeneral(0.001234, 5), "0.001");
    EXPECT_EQ(FormatGeneral(99999, 5), "99999");
    EXPECT_EQ(FormatGeneral(99999.6, 5), "1E+05");
    EXPECT_EQ(FormatGeneral(-0.4, 1), "0");
    EXPECT_EQ(FormatGeneral(5, 0), "5");
}

} // namespace
} // namespace orrery::look
