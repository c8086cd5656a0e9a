#include "engines/builtin/common/tint.h"

#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>

namespace orrery::builtin {
namespace {

struct TintCase {
    const char* name;
    book::Color color;
    double tint;
    book::Color expected;
    int tolerance = 0; ///< Excel rounds on the way, which no document describes
};

class TintTest : public testing::TestWithParam<TintCase> {};

TEST_P(TintTest, Applies)
{
    const auto& [name, color, tint, expected, tolerance] = GetParam();
    const book::Color tinted = ApplyTint(color, tint);
    EXPECT_LE(std::abs(tinted.red - expected.red), tolerance) << int{tinted.red};
    EXPECT_LE(std::abs(tinted.green - expected.green), tolerance) << int{tinted.green};
    EXPECT_LE(std::abs(tinted.blue - expected.blue), tolerance) << int{tinted.blue};
}

// The expected colours are those that Excel's palette of the first Office theme shows.
INSTANTIATE_TEST_SUITE_P(
    Colors, TintTest,
    testing::Values(
        TintCase{"NoneKeepsTheColor", {0x4F, 0x81, 0xBD}, 0, {0x4F, 0x81, 0xBD}},
        TintCase{"White5PercentDarker", book::kWhite, -0.049989318521683403, {242, 242, 242}},
        TintCase{"White15PercentDarker", book::kWhite, -0.149998474074526, {217, 217, 217}},
        TintCase{"White25PercentDarker", book::kWhite, -0.249977111117893, {191, 191, 191}},
        TintCase{"White35PercentDarker", book::kWhite, -0.34998626667073579, {166, 166, 166}},
        TintCase{"White50PercentDarker", book::kWhite, -0.499984740745262, {128, 128, 128}},
        TintCase{"Black35PercentLighter", book::kBlack, 0.34998626667073579, {89, 89, 89}},
        TintCase{"Black15PercentLighter", book::kBlack, 0.14999847407452621, {38, 38, 38}},
        TintCase{
            "Accent1Lighter80", {0x4F, 0x81, 0xBD}, 0.79998168889431442, {0xDC, 0xE6, 0xF1}, 2},
        TintCase{"Accent1Darker25", {0x4F, 0x81, 0xBD}, -0.249977111117893, {0x36, 0x60, 0x92}, 2},
        TintCase{
            "Accent2Lighter60", {0xC0, 0x50, 0x4D}, 0.59999389629810485, {0xE6, 0xB8, 0xB7}, 2},
        TintCase{"Accent6Darker50", {0xF7, 0x96, 0x46}, -0.499984740745262, {0x97, 0x47, 0x06}, 2},
        TintCase{
            "DarkBlueLighter40", {0x1F, 0x49, 0x7D}, 0.39997558519241921, {0x53, 0x8D, 0xD5}, 2},
        TintCase{"LowestIsBlack", {0x4F, 0x81, 0xBD}, -1, book::kBlack},
        TintCase{"HighestIsWhite", {0x4F, 0x81, 0xBD}, 1, book::kWhite},
        TintCase{"BeyondIsWhite", {0x4F, 0x81, 0xBD}, 7, book::kWhite},
        TintCase{"NoNumberKeepsTheColor",
                 {0x4F, 0x81, 0xBD},
                 std::numeric_limits<double>::quiet_NaN(),
                 {0x4F, 0x81, 0xBD}}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace orrery::builtin
