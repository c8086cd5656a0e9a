#include "look/layout/fit_number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace orrery::look {
namespace {

struct NumberCase {
    const char* name;
    double number;
    std::size_t room; ///< characters
    std::string expected;
};

class FitGeneralNumberTest : public testing::TestWithParam<NumberCase> {};

TEST_P(FitGeneralNumberTest, DropsDigits)
{
    const auto fits = [](std::string_view text) { return text.size() <= GetParam().room; };
    EXPECT_EQ(FitGeneralNumber(GetParam().number, fits), GetParam().expected);
}

// What Excel shows in columns that are so many digits wide.
INSTANTIATE_TEST_SUITE_P(
    Numbers, FitGeneralNumberTest,
    testing::Values(NumberCase{"Decimals", 3.14159265358979, 6, "3.1416"},
                    NumberCase{"NoDecimals", 1234.5678, 4, "1235"},
                    NumberCase{"NoRoomForTheComma", 1234.5678, 5, "1235"},
                    NumberCase{"Negative", -0.123456, 5, "-0.12"},
                    NumberCase{"PowerOfTen", 123456789, 7, "1.2E+08"},
                    NumberCase{"PowerOfTenAlone", 123456789, 5, "1E+08"},
                    NumberCase{"TooNarrow", 123456789, 4, ""},
                    NumberCase{"Small", 0.0000123456, 8, "1.23E-05"},
                    NumberCase{"SmallIsNothing", 0.0000123456, 1, "0"},
                    NumberCase{"NoMinusZero", -0.0004, 3, "0"},
                    NumberCase{"Huge", 1.5e300, 9, "1.5E+300"},
                    NumberCase{"NoNumber", std::numeric_limits<double>::quiet_NaN(), 9, ""}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(NumberSigns, FillTheRoom)
{
    EXPECT_EQ(NumberSigns(35, 10), "###");
    EXPECT_EQ(NumberSigns(5, 10), "#");
    EXPECT_EQ(NumberSigns(5, 0), "#");
    EXPECT_LE(NumberSigns(1e300, 1).size(), 1000U);
}

} // namespace
} // namespace orrery::look
