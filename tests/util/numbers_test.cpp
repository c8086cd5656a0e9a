#include "util/error.h"
#include "util/numbers.h"

#include <clocale>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace orrery::util {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct NumberCase {
    const char* name;
    std::string_view text;
    std::optional<double> expected;
};
class ReadNumberTest : public testing::TestWithParam<NumberCase> {};
TEST_P(ReadNumberTest, ReadsShape)
{
    EXPECT_EQ(ReadNumber(GetParam().text), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Shapes, ReadNumberTest,
    testing::Values(
        NumberCase{"Digits", "12", 12.0}, NumberCase{"LeadingZeros", "0101", 101.0},
        NumberCase{"Plus", "+7", 7.0}, NumberCase{"Minus", "-47", -47.0},
        NumberCase{"Fraction", "12.5", 12.5}, NumberCase{"Exponent", "1e3", 1000.0},
        NumberCase{"UpperExponent", "2E+2", 200.0}, NumberCase{"NegativeExponent", "5e-1", 0.5},
        NumberCase{"Everything", " -3.5e2 ", -350.0}, NumberCase{"Tabs", "\t4\t", 4.0},
        NumberCase{"Empty", "", std::nullopt}, NumberCase{"Blank", "  ", std::nullopt},
        NumberCase{"SignOnly", "-", std::nullopt}, NumberCase{"TwoSigns", "+-1", std::nullopt},
        NumberCase{"BlankAfterSign", "- 1", std::nullopt},
        NumberCase{"Thousands", "1,000", std::nullopt}, NumberCase{"Hex", "0x1F", std::nullopt},
        NumberCase{"TwoNumbers", "1 2", std::nullopt}, NumberCase{"Unit", "12px", std::nullopt},
        NumberCase{"NoWhole", ".5", std::nullopt}, NumberCase{"NoFraction", "5.", std::nullopt},
        NumberCase{"NoExponent", "5e", std::nullopt},
        NumberCase{"ExponentSign", "5e+", std::nullopt},
        NumberCase{"ExponentTwoSigns", "5e+-1", std::nullopt},
        NumberCase{"ExponentFraction", "5e1.5", std::nullopt},
        NumberCase{"Infinity", "inf", std::nullopt}, NumberCase{"NotANumber", "nan", std::nullopt},
        NumberCase{"Nul", std::string_view("1\0", 2), std::nullopt},
        NumberCase{"WideDigits", "\xEF\xBC\x91", std::nullopt}),
    [](const auto& row) { return std::string(row.param.name); });
INSTANTIATE_TEST_SUITE_P(
    Extremes, ReadNumberTest,
    testing::Values(NumberCase{"Largest", "1e308", 1e308},
                    NumberCase{"TooLarge", "1e309", kInfinity},
                    NumberCase{"TooLargeNegative", "-1e400", -kInfinity},
                    NumberCase{"TooSmall", "1e-400", 0.0},
                    NumberCase{"HugeExponent", "1e99999999999999999999999", kInfinity},
                    NumberCase{"TinyExponent", "1e-99999999999999999999999", 0.0},
                    NumberCase{"FractionOnlyTooLarge", "0.001e500", kInfinity},
                    NumberCase{"FractionOnlyTooSmall", "0.001e-500", 0.0},
                    NumberCase{"ZeroStaysZero", "0.000e99999999999999999999", 0.0}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ReadNumber, DistinguishesLongNumbers)
{
    const std::string zeros(400, '0');
    EXPECT_EQ(ReadNumber("1" + zeros), kInfinity);
    EXPECT_EQ(ReadNumber("0." + zeros + "1"), 0.0);
    EXPECT_EQ(ReadNumber(zeros + "7"), 7.0);
    EXPECT_EQ(ReadNumber("0." + zeros + "1e401"), 1.0);
}

TEST(ReadNumber, IgnoresTheLocale)
{
    const std::string old = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "C.UTF-8"}) {
        if (std::setlocale(LC_ALL, name))
            break;
    }
    EXPECT_EQ(ReadNumber("12.5"), 12.5);
    EXPECT_EQ(ReadNumber("12,5"), std::nullopt);
    std::setlocale(LC_ALL, old.c_str());
}

struct RoundCase {
    double value;
    int expected;
};
class RoundTest : public testing::TestWithParam<RoundCase> {};
TEST_P(RoundTest, RoundsHalvesToEven)
{
    EXPECT_EQ(RoundTo16(GetParam().value), GetParam().expected);
    EXPECT_EQ(RoundTo32(GetParam().value), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(Halves, RoundTest,
                         testing::Values(RoundCase{0.5, 0}, RoundCase{1.5, 2}, RoundCase{2.5, 2},
                                         RoundCase{12.5, 12}, RoundCase{12.51, 13},
                                         RoundCase{-0.5, 0}, RoundCase{-1.5, -2},
                                         RoundCase{-2.5, -2}, RoundCase{0.49999999999999994, 0},
                                         RoundCase{32767.4, 32767}, RoundCase{-32768.5, -32768}));

TEST(RoundTo16, ThrowsBeyondItsWidth)
{
    for (const double value : {32767.5, 32768.0, 40000.0, -32769.0, 1e300, kInfinity, -kInfinity,
                               std::numeric_limits<double>::quiet_NaN()})
        EXPECT_THROW(RoundTo16(value), OverflowError) << value;
}

TEST(RoundTo32, ThrowsBeyondItsWidth)
{
    EXPECT_EQ(RoundTo32(2147483647.4), 2147483647);
    EXPECT_EQ(RoundTo32(-2147483648.0), std::numeric_limits<std::int32_t>::min());
    for (const double value : {2147483647.5, 2147483648.0, -2147483649.0, 1e300, kInfinity,
                               std::numeric_limits<double>::quiet_NaN()})
        EXPECT_THROW(RoundTo32(value), OverflowError) << value;
}

} // namespace
} // namespace orrery::util
