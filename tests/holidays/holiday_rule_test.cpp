#include "holidays/error.h"
#include "holidays/holiday_rule.h"
#include "util/error_text.h"
#include "util/expect_sentences.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace orrery::holidays {
namespace {

struct RuleCase {
    const char* name;
    std::string_view line;
    std::optional<HolidayDef> expected;
};
std::string CaseName(const testing::TestParamInfo<RuleCase>& row)
{
    return row.param.name;
}

class ParseHolidayLineTest : public testing::TestWithParam<RuleCase> {};
TEST_P(ParseHolidayLineTest, ReadsRule)
{
    const auto rule = ParseHolidayLine(GetParam().line);
    ASSERT_EQ(std::holds_alternative<HolidayDef>(rule), GetParam().expected.has_value());
    if (GetParam().expected) {
        EXPECT_EQ(std::get<HolidayDef>(rule), *GetParam().expected);
    }
}

INSTANTIATE_TEST_SUITE_P(
    FixedDays, ParseHolidayLineTest,
    testing::Values(
        RuleCase{"Day", "0704, DAY, Independence Day", HolidayDef{704, 0, " Independence Day"}},
        RuleCase{"EmptyKind", "1225,,Christmas", HolidayDef{1225, 0, "Christmas"}},
        RuleCase{"BlankKind", "1225,  ,Christmas", HolidayDef{1225, 0, "Christmas"}},
        RuleCase{"LowerCase", "1225,day,Christmas", HolidayDef{1225, 0, "Christmas"}},
        RuleCase{"BlankOfNameKept", "1225, DAY, Christmas", HolidayDef{1225, 0, " Christmas"}},
        RuleCase{"LaterCommasInName", "0101, DAY, a, b,", HolidayDef{101, 0, " a, b,"}},
        RuleCase{"EmptyName", "0101,DAY,", HolidayDef{101, 0, ""}},
        RuleCase{"BlanksAroundDate", " \t0101 ,DAY,x", HolidayDef{101, 0, "x"}},
        RuleCase{"DayZero", "0100, DAY, x", HolidayDef{100, 0, " x"}},
        RuleCase{"LastDay", "0131,DAY,x", HolidayDef{131, 0, "x"}},
        RuleCase{"DayBeyondMonth", "0132,DAY,x", std::nullopt},
        RuleCase{"DayBeyondDecember", "1232, DAY, x", std::nullopt},
        RuleCase{"LeapDay", "0229, DAY, x", std::nullopt},
        RuleCase{"ThirtyOneInApril", "0431, DAY, x", std::nullopt},
        RuleCase{"MonthRoundsUpToItsSuccessor", "0151,DAY,x", std::nullopt},
        RuleCase{"MonthThirteen", "1300,DAY,x", std::nullopt},
        RuleCase{"NegativeMonth", "-100,DAY,x", std::nullopt},
        RuleCase{"BeyondSixteenBits", "40000,DAY,x", std::nullopt},
        RuleCase{"Fraction", "101.4,DAY,x", HolidayDef{101, 0, "x"}},
        RuleCase{"HalfToEven", "1224.5,DAY,x", HolidayDef{1224, 0, "x"}},
        RuleCase{"Exponent", "1.225e3,DAY,x", HolidayDef{1225, 0, "x"}},
        RuleCase{"NotNumeric", "first,DAY,x", std::nullopt},
        RuleCase{"EmptyDate", ",DAY,x", std::nullopt}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Weekdays, ParseHolidayLineTest,
    testing::Values(RuleCase{"LastMonday", "0505, MON, Memorial Day",
                             HolidayDef{505, 2, " Memorial Day"}},
                    RuleCase{"FourthThursday", "1104, THU, Thanksgiving Day",
                             HolidayDef{1104, 5, " Thanksgiving Day"}},
                    RuleCase{"Sun", "0101,sun,x", HolidayDef{101, 1, "x"}},
                    RuleCase{"Sunday", "0101,Sunday,x", HolidayDef{101, 1, "x"}},
                    RuleCase{"Mon", "0101,mon,x", HolidayDef{101, 2, "x"}},
                    RuleCase{"Monday", "0101,MONDAY,x", HolidayDef{101, 2, "x"}},
                    RuleCase{"Tue", "0101,tue,x", HolidayDef{101, 3, "x"}},
                    RuleCase{"Tuesday", "0101,TUESDAY,x", HolidayDef{101, 3, "x"}},
                    RuleCase{"Wed", "0101,wed,x", HolidayDef{101, 4, "x"}},
                    RuleCase{"Wednesday", "0101,WEDNESDAY,x", HolidayDef{101, 4, "x"}},
                    RuleCase{"Thu", "0101,thu,x", HolidayDef{101, 5, "x"}},
                    RuleCase{"Thursday", "0101,THURSDAY,x", HolidayDef{101, 5, "x"}},
                    RuleCase{"Fri", "0101,fri,x", HolidayDef{101, 6, "x"}},
                    RuleCase{"Friday", "0101,FRIDAY,x", HolidayDef{101, 6, "x"}},
                    RuleCase{"Sat", "0101,sat,x", HolidayDef{101, 7, "x"}},
                    RuleCase{"Saturday", "0101,SATURDAY,x", HolidayDef{101, 7, "x"}},
                    RuleCase{"OtherAbbreviation", "0101,THUR,x", std::nullopt},
                    RuleCase{"MonthThirteen", "1300, MON, x", std::nullopt},
                    RuleCase{"HalfRoundsToTwelve", "1250, MON, x", HolidayDef{1250, 2, " x"}},
                    RuleCase{"MoreThanHalfRoundsToThirteen", "1251, MON, x", std::nullopt},
                    RuleCase{"MonthRoundsUp", "0451, MON, x", HolidayDef{451, 2, " x"}},
                    RuleCase{"OrdinalZero", "0500,MON,x", HolidayDef{500, 2, "x"}},
                    RuleCase{"MonthZero", "0005,MON,x", HolidayDef{5, 2, "x"}},
                    RuleCase{"NegativeDay", "-5,MON,x", std::nullopt},
                    RuleCase{"NotNumeric", "x,MON,x", std::nullopt}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Easter, ParseHolidayLineTest,
    testing::Values(
        RuleCase{"Offset", "-47, EASTER, Shrove Tuesday", HolidayDef{-47, 8, " Shrove Tuesday"}},
        RuleCase{"EmptyDate", ", EASTER MON, Easter Monday", HolidayDef{1, 8, " Easter Monday"}},
        RuleCase{"PositiveOffset", "5, EASTER, x", HolidayDef{5, 8, " x"}},
        RuleCase{"WeekdayWins", "5, EASTER SAT, x", HolidayDef{-1, 8, " x"}},
        RuleCase{"Fri", ",easter fri,x", HolidayDef{-2, 8, "x"}},
        RuleCase{"Friday", ",EASTER FRIDAY,x", HolidayDef{-2, 8, "x"}},
        RuleCase{"Saturday", ",EASTER SATURDAY,x", HolidayDef{-1, 8, "x"}},
        RuleCase{"Sun", "9,EASTER SUN,x", HolidayDef{0, 8, "x"}},
        RuleCase{"Sunday", "9,EASTER SUNDAY,x", HolidayDef{0, 8, "x"}},
        RuleCase{"Monday", "9,EASTER MONDAY,x", HolidayDef{1, 8, "x"}},
        RuleCase{"Tue", "9,EASTER TUE,x", HolidayDef{2, 8, "x"}},
        RuleCase{"Tuesday", "9,EASTER TUESDAY,x", HolidayDef{2, 8, "x"}},
        RuleCase{"NoBlankBetween", ",EASTERMON,x", HolidayDef{1, 8, "x"}},
        RuleCase{"ManyBlanksBetween", ",EASTER   MON ,x", HolidayDef{1, 8, "x"}},
        RuleCase{"OtherWeekday", "3,EASTER WED,x", HolidayDef{3, 8, "x"}},
        RuleCase{"OtherRest", "3,EASTERLY WIND,x", HolidayDef{3, 8, "x"}},
        RuleCase{"NotNumeric", "abc, EASTER, x", HolidayDef{0, 8, " x"}},
        RuleCase{"NoMonthCheck", "1399,EASTER,x", HolidayDef{1399, 8, "x"}},
        RuleCase{"OverflowUnread", "40000,EASTER SUN,x", HolidayDef{0, 8, "x"}},
        RuleCase{"HalfToEven", "-2.5,EASTER,x", HolidayDef{-2, 8, "x"}}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(NoRules, ParseHolidayLineTest,
                         testing::Values(RuleCase{"Blank", "", std::nullopt},
                                         RuleCase{"NoComma", "0101 DAY x", std::nullopt},
                                         RuleCase{"OneComma", "0101, DAY", std::nullopt},
                                         RuleCase{"Comment", "/* comment */", std::nullopt},
                                         RuleCase{"UnknownKind", "2, HOLIDAY, x", std::nullopt},
                                         RuleCase{"EasterNotFirst", "2, AT EASTER, x",
                                                  std::nullopt},
                                         RuleCase{"TruncatedEaster", "2, EASTE, x", std::nullopt}),
                         CaseName);

struct FaultCase {
    const char* name;
    std::string_view line;
    ErrorKind kind;
    const char* subject;
};

class RuleFaultTest : public testing::TestWithParam<FaultCase> {};
TEST_P(RuleFaultTest, NamesWhatIsWrong)
{
    const auto rule = ParseHolidayLine(GetParam().line);
    const auto* const error = std::get_if<util::Error>(&rule);
    ASSERT_NE(error, nullptr);
    EXPECT_TRUE(error->Kind() == GetParam().kind) << util::ErrorText(*error);
    EXPECT_EQ(error->Subject(), GetParam().subject);
    const bool ends = GetParam().kind == ErrorKind::RuleNumberTooLarge ||
                      GetParam().kind == ErrorKind::RuleWithoutMonth;
    EXPECT_EQ(EndsReading(*error), ends);
}
INSTANTIATE_TEST_SUITE_P(
    Lines, RuleFaultTest,
    testing::Values(
        FaultCase{"Text", "/* comment */", ErrorKind::RuleWithoutFields, "/* comment */"},
        FaultCase{"OneComma", "0101, DAY", ErrorKind::RuleWithoutFields, "0101, DAY"},
        FaultCase{"Kind", "2, Holiday, x", ErrorKind::UnknownRuleKind, "HOLIDAY"},
        FaultCase{"NoDate", ", DAY, x", ErrorKind::RuleDateNotNumeric, ""},
        FaultCase{"Words", "1 May, DAY, x", ErrorKind::RuleDateNotNumeric, "1 May"},
        FaultCase{"NoSuchDay", "1232,DAY,x", ErrorKind::NoSuchRuleDate, "1232"},
        FaultCase{"NoSuchMonth", "1300,MON,x", ErrorKind::NoSuchRuleDate, "1300"},
        FaultCase{"NegativeOrdinal", "-102,MON,x", ErrorKind::NoSuchRuleDate, "-102"},
        FaultCase{"MonthZero", "0,DAY,x", ErrorKind::RuleWithoutMonth, "0"},
        FaultCase{"MonthZeroAndADay", "0001,DAY,x", ErrorKind::RuleWithoutMonth, "0001"},
        FaultCase{"RoundedToMonthZero", "0050,DAY,x", ErrorKind::RuleWithoutMonth, "0050"},
        FaultCase{"MinusOne", "-1,DAY,x", ErrorKind::RuleWithoutMonth, "-1"},
        FaultCase{"EmptyKind", "12,,x", ErrorKind::RuleWithoutMonth, "12"},
        FaultCase{"Offset", "40000,EASTER,x", ErrorKind::RuleNumberTooLarge, "40000"},
        FaultCase{"NegativeOffset", "-32769,EASTER,x", ErrorKind::RuleNumberTooLarge, "-32769"},
        FaultCase{"Huge", "1e400,EASTER,x", ErrorKind::RuleNumberTooLarge, "1e400"},
        FaultCase{"RoundedUp", "32767.5,EASTER WED,x", ErrorKind::RuleNumberTooLarge, "32767.5"},
        FaultCase{"Date", "2147483648,DAY,x", ErrorKind::RuleNumberTooLarge, "2147483648"},
        FaultCase{"Weekday", "1e10,MON,x", ErrorKind::RuleNumberTooLarge, "1e10"},
        FaultCase{"NegativeHuge", "-1e400,DAY,x", ErrorKind::RuleNumberTooLarge, "-1e400"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ParseHolidayLine, ReadsOffsetsOfSixteenBits)
{
    const auto offset = [](std::string_view line) {
        return std::get<HolidayDef>(ParseHolidayLine(line)).DateCode;
    };
    EXPECT_EQ(offset("32767,EASTER,x"), 32767);
    EXPECT_EQ(offset("-32768,EASTER,x"), -32768);
}

TEST(RuleErrors, HaveOneMessageEach)
{
    test::ExpectSentences(ErrorKind::RefinementWithoutRule, {});
    test::ExpectNoEmptyName(ErrorKind::RuleDateNotNumeric);
}

TEST(HolidayList, IgnoresRulesBeyondItsCapacity)
{
    HolidayList list;
    for (int i = 0; i < 1030; ++i)
        list.Append({static_cast<std::int16_t>(i), kEaster, "x"});
    EXPECT_TRUE(list.IsFull());
    EXPECT_EQ(list.Count(), 1025);
    EXPECT_EQ(list[1024].DateCode, 1024);
    list.Clear();
    EXPECT_EQ(list.Count(), 0);
}

} // namespace
} // namespace orrery::holidays
