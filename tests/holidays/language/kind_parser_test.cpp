#include "holidays/language/kind_parser.h"

#include "holidays/error.h"
#include "holidays/language/words.h"
#include "util/error_text.h"

#include <array>
#include <gtest/gtest.h>

namespace orrery::holidays {
namespace {

constexpr auto kNameOfCase = [](const auto& info) { return std::string(info.param.name); };

using namespace std::chrono;

struct KindCase {
    const char* name;
    const char* date;
    const char* kind;
    RuleDay expected;
};
class ParseRuleDayTest : public testing::TestWithParam<KindCase> {};
TEST_P(ParseRuleDayTest, Reads)
{
    const auto parsed = ParseRuleDay(GetParam().date, GetParam().kind);
    const auto* const error = std::get_if<util::Error>(&parsed);
    ASSERT_EQ(error, nullptr) << util::ErrorText(*error);
    EXPECT_EQ(std::get<RuleDay>(parsed), GetParam().expected);
}

using calendars::Calendar;
using calendars::MoonPhaseName;
using Country = Place::Country;
using Relation = NearWeekday::Relation;
INSTANTIATE_TEST_SUITE_P(
    Kinds, ParseRuleDayTest,
    testing::Values(
        KindCase{
            "OnOrAfter", "0620", "SAT ON OR AFTER", {NearWeekday{7, Relation::OnOrAfter, {6, 20}}}},
        KindCase{"Before", "1123", "wed before", {NearWeekday{4, Relation::Before, {11, 23}}}},
        KindCase{
            "WholeWord", "1123", "Wednesday After", {NearWeekday{4, Relation::After, {11, 23}}}},
        KindCase{"Nearest", "0229", "MON NEAREST", {NearWeekday{2, Relation::Nearest, {2, 29}}}},
        KindCase{"Later", "1104", "THU +1", {PlainDay{1104, 5}, 1}},
        KindCase{"Earlier", "0101", "DAY -1", {PlainDay{101, kFixedDay}, -1}},
        KindCase{"LaterThanNear",
                 "1123",
                 "WED BEFORE -7",
                 {NearWeekday{4, Relation::Before, {11, 23}}, -7}},
        KindCase{"Hidden", "1104", "THU +0", {PlainDay{1104, 5}}},
        KindCase{"Fixed", "0106", "FIXED", {PlainDay{106, kFixedDay}}},
        KindCase{"Western", "60", "WESTERN", {PlainDay{60, kEaster}}},
        KindCase{"Orthodox", "-2", "ORTHODOX", {OrthodoxEasterDay{-2}}},
        KindCase{"LeapDay", "0229", "LEAP DAY", {LeapDay{}}},
        KindCase{"Between", "", "BETWEEN HOLIDAYS", {BetweenHolidays{}}}),
    kNameOfCase);
INSTANTIATE_TEST_SUITE_P(
    Calendars, ParseRuleDayTest,
    testing::Values(
        KindCase{"Julian", "1225", "JULIAN", {CalendarDay{Calendar::Julian, {12, 25}}}},
        KindCase{"Islamic", "1001", "ISLAMIC", {CalendarDay{Calendar::UmmAlQura, {10, 1}}}},
        KindCase{
            "IslamicName", "1 Shawwal", "ISLAMIC", {CalendarDay{Calendar::UmmAlQura, {10, 1}}}},
        KindCase{"Civil",
                 "10 Dhu-al-Hijjah",
                 "ISLAMIC CIVIL",
                 {CalendarDay{Calendar::IslamicCivil, {12, 10}}}},
        KindCase{"Hebrew", "15 Nisan", "HEBREW", {CalendarDay{Calendar::Hebrew, {1, 15}}}},
        KindCase{"KoreanEve", "0101", "KOREAN -1", {CalendarDay{Calendar::Korean, {1, 1}}, -1}},
        KindCase{"Thirteenth", "1306", "COPTIC", {CalendarDay{Calendar::Coptic, {13, 6}}}}),
    kNameOfCase);
INSTANTIATE_TEST_SUITE_P(
    SunAndMoon, ParseRuleDayTest,
    testing::Values(
        KindCase{"Equinox", "MARCH", "SOLAR JAPAN", {SolarDay{0, {Country::Japan}}}},
        KindCase{"Solstice", "December", "solar gmt", {SolarDay{270, {}}}},
        KindCase{"Degrees", "15", "SOLAR CHINA", {SolarDay{15, {Country::China}}}},
        KindCase{"Zone", "15", "SOLAR +5", {SolarDay{15, {Country::None, 5}}}},
        KindCase{"ZoneAndShift", "15", "SOLAR +5.5 -1", {SolarDay{15, {Country::None, 5.5}}, -1}},
        KindCase{"WesternZone", "15", "SOLAR -3.5", {SolarDay{15, {Country::None, -3.5}}}},
        KindCase{"NewMoon", "", "NEW MOON", {MoonDay{MoonPhaseName::NewMoon, {}}}},
        KindCase{
            "FullMoon", "Japan", "FULL MOON", {MoonDay{MoonPhaseName::FullMoon, {Country::Japan}}}},
        KindCase{"LastQuarter",
                 "+1",
                 "LAST QUARTER",
                 {MoonDay{MoonPhaseName::LastQuarter, {Country::None, 1}}}}),
    kNameOfCase);
INSTANTIATE_TEST_SUITE_P(
    Dates, ParseRuleDayTest,
    testing::Values(
        KindCase{"Several",
                 "20241031  20251020",
                 "DATE",
                 {ListedDates{{{Date(year(2024) / 10 / 31), Date(year(2024) / 10 / 31)},
                               {Date(year(2025) / 10 / 20), Date(year(2025) / 10 / 20)}}}}},
        KindCase{"Range",
                 "20271230-20280102",
                 "DATE",
                 {ListedDates{{{Date(year(2027) / 12 / 30), Date(year(2028) / 1 / 2)}}}}}),
    kNameOfCase);

struct WrongKind {
    const char* name;
    const char* date;
    const char* kind;
    ErrorKind error;
    const char* hint; ///< the cause; nullptr: any
};
class WrongRuleDayTest : public testing::TestWithParam<WrongKind> {};
TEST_P(WrongRuleDayTest, IsAnError)
{
    const auto parsed = ParseRuleDay(GetParam().date, GetParam().kind);
    const auto* const error = std::get_if<util::Error>(&parsed);
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->Kind(), GetParam().error);
    if (GetParam().hint != nullptr) {
        EXPECT_EQ(error->Cause(), GetParam().hint);
    }
}
INSTANTIATE_TEST_SUITE_P(
    Kinds, WrongRuleDayTest,
    testing::Values(
        WrongKind{"Typo", "1101", "SAT ON AFTER", ErrorKind::UnknownRuleKind, "SAT ON OR AFTER"},
        WrongKind{"TypoInCalendar", "0101", "CHINEESE", ErrorKind::UnknownRuleKind, "CHINESE"},
        WrongKind{"Word", "0101", "HOLIDAY", ErrorKind::UnknownRuleKind, ""},
        WrongKind{"Easter", "0", "EASTER +1", ErrorKind::UnknownRuleKind, ""},
        WrongKind{"Nothing", "0101", "", ErrorKind::UnknownRuleKind, ""},
        WrongKind{"LargeShift", "0101", "DAY +1000", ErrorKind::UnknownRuleKind, ""},
        WrongKind{"DayOfMonth", "0631", "SAT AFTER", ErrorKind::WrongRuleDate, nullptr},
        WrongKind{"ShortDate", "620", "SAT AFTER", ErrorKind::WrongRuleDate, nullptr},
        WrongKind{"ThirteenthMonth", "1301", "HEBREW", ErrorKind::WrongRuleDate, nullptr},
        WrongKind{"LongMonth", "0131", "ISLAMIC", ErrorKind::WrongRuleDate, nullptr},
        WrongKind{"OtherName", "1 Nisan", "ISLAMIC", ErrorKind::WrongRuleDate, nullptr},
        WrongKind{"NoLeapDay", "0228", "LEAP DAY", ErrorKind::WrongRuleDate, nullptr},
        WrongKind{"Place", "MARCH", "SOLAR MARS", ErrorKind::WrongRuleDate, nullptr},
        WrongKind{"Degrees", "360", "SOLAR CHINA", ErrorKind::WrongRuleDate, nullptr},
        WrongKind{"NoDates", "", "DATE", ErrorKind::WrongRuleDate, nullptr},
        WrongKind{"NoSuchDate", "20270230", "DATE", ErrorKind::WrongRuleDate, nullptr},
        WrongKind{"Backwards", "20270203-20270201", "DATE", ErrorKind::WrongRuleDate, nullptr},
        WrongKind{"LongRange", "20270203-20280204", "DATE", ErrorKind::WrongRuleDate, nullptr},
        WrongKind{"Plain", "1301", "FIXED", ErrorKind::NoSuchRuleDate, nullptr}),
    kNameOfCase);

TEST(ClosestWord, NeedsLikeness)
{
    constexpr std::array<std::string_view, 2> words = {"YEARS", "DAYS"};
    EXPECT_EQ(ClosestWord("YEAR", words), "YEARS");
    EXPECT_EQ(ClosestWord("DAY", words), "DAYS");
    EXPECT_FALSE(ClosestWord("BORN", words));
    EXPECT_FALSE(ClosestWord(std::string(5000, 'Y'), words));
}

TEST(IntegerOf, ReadsDigits)
{
    EXPECT_EQ(IntegerOf("0229"), 229);
    EXPECT_EQ(IntegerOf("+1"), 1);
    EXPECT_EQ(IntegerOf("-12"), -12);
    for (const char* const text : {"", "+", "--1", "+-1", "1x", "1.5", "1234567890"})
        EXPECT_FALSE(IntegerOf(text)) << text;
}

} // namespace
} // namespace orrery::holidays
