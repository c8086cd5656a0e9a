#include "look/chart/axis_scale.h"

#include <gtest/gtest.h>
#include <string>

namespace orrery::look {
namespace {

struct ScaleCase {
    const char* name;
    double low;
    double high;
    double room;
    double minimum;
    double maximum;
    double unit;
};

class ChooseScaleTest : public testing::TestWithParam<ScaleCase> {};

TEST_P(ChooseScaleTest, RoundsAsExcelDoes)
{
    ValueRange range;
    range.Add(GetParam().low);
    range.Add(GetParam().high);
    const AxisScale scale = ChooseScale(range, {}, GetParam().room);
    EXPECT_NEAR(scale.minimum, GetParam().minimum, 1e-9);
    EXPECT_NEAR(scale.maximum, GetParam().maximum, 1e-9);
    EXPECT_NEAR(scale.majorUnit, GetParam().unit, 1e-9);
}

// The rules of Microsoft's note on automatic axes: 5 % above the highest value; zero, unless the
// values differ by less than a sixth of the highest, then half their distance below the lowest.
INSTANTIATE_TEST_SUITE_P(Ranges, ChooseScaleTest,
                         testing::Values(ScaleCase{"FromZero", 1, 9, 10, 0, 10, 1},
                                         ScaleCase{"FivePercentAbove", 1, 10, 10, 0, 12, 2},
                                         ScaleCase{"Hundreds", 20, 95, 10, 0, 100, 10},
                                         ScaleCase{"LittleRoom", 20, 95, 5, 0, 100, 20},
                                         ScaleCase{"CloseValues", 100, 110, 10, 94, 112, 2},
                                         ScaleCase{"ZeroAtAFifth", 80, 100, 10, 0, 120, 20},
                                         ScaleCase{"Negative", -9, -1, 10, -10, 0, 1},
                                         ScaleCase{"BothSigns", -40, 50, 10, -50, 60, 10},
                                         ScaleCase{"Fractions", 0.1, 0.42, 10, 0, 0.45, 0.05},
                                         ScaleCase{"OneValue", 5, 5, 10, 0, 6, 1},
                                         ScaleCase{"OneNegativeValue", -5, -5, 10, -6, 0, 1},
                                         ScaleCase{"Zeros", 0, 0, 10, 0, 1.2, 0.2}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ChooseScale, GivenEndsAndUnitCount)
{
    ValueRange range;
    range.Add(3);
    book::ChartAxis axis;
    axis.minimum = -1;
    axis.maximum = 7;
    axis.majorUnit = 4;
    const AxisScale scale = ChooseScale(range, axis, 10);
    EXPECT_EQ(scale.Ticks(), (std::vector<double>{-1, 3, 7}));
    EXPECT_EQ(scale.Share(3), 0.5);
    EXPECT_EQ(scale.Crossing(), 0);
}

TEST(ChooseScale, ReversedAxisCountsFromTheOtherEnd)
{
    ValueRange range;
    range.Add(9);
    book::ChartAxis axis;
    axis.isReversed = true;
    const AxisScale scale = ChooseScale(range, axis, 10);
    EXPECT_EQ(scale.Share(0), 1);
    EXPECT_EQ(scale.Share(10), 0);
}

TEST(ChooseScale, LogarithmicAxisHasPowersOfTen)
{
    ValueRange range;
    range.Add(20);
    range.Add(3000);
    book::ChartAxis axis;
    axis.isLogarithmic = true;
    const AxisScale scale = ChooseScale(range, axis, 10);
    EXPECT_EQ(scale.Ticks(), (std::vector<double>{10, 100, 1000, 10000}));
    EXPECT_NEAR(scale.Share(100), 1.0 / 3, 1e-12);
}

struct BadAxis {
    const char* name;
    double low;
    double high;
    std::optional<double> minimum;
    std::optional<double> maximum;
    std::optional<double> unit;
};

class HostileAxisTest : public testing::TestWithParam<BadAxis> {};

TEST_P(HostileAxisTest, StaysUsable)
{
    ValueRange range;
    range.Add(GetParam().low);
    range.Add(GetParam().high);
    for (const bool isLogarithmic : {false, true}) {
        book::ChartAxis axis;
        axis.isLogarithmic = isLogarithmic;
        axis.minimum = GetParam().minimum;
        axis.maximum = GetParam().maximum;
        axis.majorUnit = GetParam().unit;
        const AxisScale scale = ChooseScale(range, axis, 10);
        EXPECT_LT(scale.minimum, scale.maximum);
        EXPECT_LE(scale.Ticks().size(), 1000U);
        EXPECT_GE(scale.Share(range.high), -100);
        EXPECT_LE(scale.Share(range.high), 100);
    }
}

INSTANTIATE_TEST_SUITE_P(Bad, HostileAxisTest,
                         testing::Values(BadAxis{"Huge", -1e308, 1e308, {}, {}, {}},
                                         BadAxis{"Tiny", 1e-300, 2e-300, {}, {}, {}},
                                         BadAxis{"FarFromZero", 1e15, 1e15 + 1, {}, {}, {}},
                                         BadAxis{"Swapped", 0, 5, 10, -10, {}},
                                         BadAxis{"SmallUnit", 0, 1e9, {}, {}, 1e-9},
                                         BadAxis{"LargeUnit", 0, 1, {}, {}, 1e9},
                                         BadAxis{"Equal", 0, 1, 3, 3, 1}),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace orrery::look
