#include "util/numbers.h"

#include <cfloat>
#include <charconv>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace orrery::util {
namespace {

double Read(const std::string& text)
{
    double number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

TEST(NumberTextsTest, RoundsToSoManyDigits)
{
    const Digits pi = RoundToDigits(-3.14159265, 4);
    EXPECT_TRUE(pi.isNegative);
    EXPECT_EQ(pi.digits, "3142");
    EXPECT_EQ(pi.exponent, 0);
    EXPECT_EQ(RoundToDigits(99.96, 3).digits, "100");
    EXPECT_EQ(RoundToDigits(99.96, 3).exponent, 2);
    EXPECT_EQ(RoundToDigits(0.000123, 1).exponent, -4);
    EXPECT_EQ(RoundToDigits(0, 3).digits, "000");
}

TEST(NumberTextsTest, FindsTheFewestDigits)
{
    EXPECT_EQ(ShortestDigits(0.1).digits, "1");
    EXPECT_EQ(ShortestDigits(0.1 + 0.2).digits, "30000000000000004");
    EXPECT_EQ(ShortestDigits(1.0 / 3).digits, "3333333333333333");
    EXPECT_EQ(ShortestDigits(1e23).digits, "1");
    EXPECT_EQ(ShortestDigits(0).digits, "0");
    EXPECT_EQ(ShortestDigits(-2500).digits, "25");
}

TEST(NumberTextsTest, PowersOfTwoHaveTheFewestDigitsToo)
{
    char text[64];
    for (int power = -1074; power < 1024; ++power) {
        const double number = std::ldexp(1, power);
        const auto end =
            std::to_chars(text, text + sizeof text, number, std::chars_format::scientific);
        EXPECT_EQ(ScientificText(ShortestDigits(number)), std::string(text, end.ptr));
    }
}

TEST(NumberTextsTest, WritesNumbers)
{
    EXPECT_EQ(DecimalText(2.5, 2), "2.50");
    EXPECT_EQ(DecimalText(-1234.5678, 1), "-1234.6");
    EXPECT_EQ(DecimalText(0.04, 1), "0.0");
    EXPECT_EQ(DecimalText(41.5, 0), "42");
    EXPECT_EQ(ScientificText(RoundToDigits(1234.5678, 3)), "1.23e+03");
    EXPECT_EQ(ScientificText(ShortestDigits(-1e-7)), "-1e-07");
    EXPECT_EQ(ScientificText(ShortestDigits(1e300)), "1e+300");
    EXPECT_EQ(PlainText(ShortestDigits(1500)), "1500");
    EXPECT_EQ(PlainText(ShortestDigits(15.25)), "15.25");
    EXPECT_EQ(PlainText(ShortestDigits(-0.0125)), "-0.0125");
    EXPECT_EQ(PlainText(ShortestDigits(0)), "0");
    EXPECT_EQ(ShortestText(2.5), "2.5");
    EXPECT_EQ(ShortestText(0.001), "0.001");
    EXPECT_EQ(ShortestText(1e5), "1e+05");
}

TEST(NumberTextsTest, EveryNumberIsReadBack)
{
    std::mt19937_64 bits(1);
    std::uniform_real_distribution<double> mantissa(-10, 10);
    std::uniform_int_distribution<int> exponent(-300, 300);
    for (int i = 0; i < 20'000; ++i) {
        const double number = mantissa(bits) * std::pow(10.0, exponent(bits));
        EXPECT_EQ(Read(ScientificText(ShortestDigits(number))), number);
    }
    for (const double number : {DBL_MAX, DBL_MIN, DBL_TRUE_MIN, -DBL_MAX, std::ldexp(1, -44)}) {
        EXPECT_EQ(Read(ScientificText(ShortestDigits(number))), number);
        EXPECT_EQ(Read(PlainText(ShortestDigits(number))), number);
    }
    EXPECT_EQ(Read(DecimalText(DBL_MAX, 3)), DBL_MAX);
}

/// The standard library's own texts, of which these are to be the same.
TEST(NumberTextsTest, TextsAreThoseOfTheStandardLibrary)
{
    std::mt19937_64 random(2);
    std::uniform_real_distribution<double> mantissa(-10, 10);
    std::uniform_int_distribution<int> exponent(-30, 30);
    std::uniform_int_distribution<int> decimals(0, 12);
    char text[400];
    for (int i = 0; i < 20'000; ++i) {
        const double number = mantissa(random) * std::pow(10.0, exponent(random));
        const int places = decimals(random);
        const auto end = text + sizeof text;
        using enum std::chars_format;
        EXPECT_EQ(DecimalText(number, places),
                  std::string(text, std::to_chars(text, end, number, fixed, places).ptr));
        EXPECT_EQ(ScientificText(RoundToDigits(number, places + 1)),
                  std::string(text, std::to_chars(text, end, number, scientific, places).ptr));
        EXPECT_EQ(ScientificText(ShortestDigits(number)),
                  std::string(text, std::to_chars(text, end, number, scientific).ptr));
        if (std::abs(number) < 1e15) {
            EXPECT_EQ(ShortestText(number),
                      std::string(text, std::to_chars(text, end, number).ptr));
        }
    }
}

} // namespace
} // namespace orrery::util
