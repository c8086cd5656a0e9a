#include "engines/builtin/xls/look/drawing/geometry_names.h"

#include "xls/art_builder.h"

#include <gtest/gtest.h>
#include <set>

namespace orrery::xls {
namespace {

TEST(GeometryNameTest, NamesTypes)
{
    EXPECT_EQ(GeometryName(0), "custom");
    EXPECT_EQ(GeometryName(1), "rect");
    EXPECT_EQ(GeometryName(2), "roundRect");
    EXPECT_EQ(GeometryName(3), "ellipse");
    EXPECT_EQ(GeometryName(20), "line");
    EXPECT_EQ(GeometryName(33), "bentConnector2");
    EXPECT_EQ(GeometryName(61), "wedgeRectCallout");
    EXPECT_EQ(GeometryName(67), "downArrow");
    EXPECT_EQ(GeometryName(74), "heart");
    EXPECT_EQ(GeometryName(109), "flowChartProcess");
    EXPECT_EQ(GeometryName(187), "star4");
    EXPECT_EQ(GeometryName(200), "actionButtonMovie");
    EXPECT_EQ(GeometryName(kTextBox), "rect");
    EXPECT_EQ(GeometryName(0xFFF), "rect");
}

TEST(GeometryNameTest, KnowsNearlyAllTypes)
{
    std::set<std::string_view> names;
    for (std::uint16_t type = 0; type <= 202; ++type)
        names.insert(GeometryName(type));
    EXPECT_GT(names.size(), 140U); // some are the same in the other format
}

TEST(LineTypeTest, IsALineOrAConnector)
{
    EXPECT_TRUE(IsLineType(20));
    EXPECT_TRUE(IsLineType(32));
    EXPECT_TRUE(IsLineType(40));
    EXPECT_FALSE(IsLineType(19));
    EXPECT_FALSE(IsLineType(41));
}

std::vector<double> Adjusted(std::uint16_t type, std::uint32_t first, std::uint32_t second)
{
    const std::string table = test::PropertiesOf({{0x0147, first}, {0x0148, second}}).substr(8);
    ShapeProperties properties;
    properties.Add(table, 2);
    return AdjustmentsOf(type, properties);
}

TEST(AdjustmentsTest, AreThoseOfTheOtherFormatWhereTheyMeanTheSame)
{
    EXPECT_EQ(Adjusted(2, 10800, 0), std::vector<double>{50000});
    EXPECT_EQ(Adjusted(5, 5400, 0), std::vector<double>{25000});
    EXPECT_EQ(Adjusted(61, 0, 32400), (std::vector<double>{-50000, 100000}));
    EXPECT_EQ(Adjusted(13, 16200, 5400), std::vector<double>());
    EXPECT_EQ(AdjustmentsOf(2, ShapeProperties()), std::vector<double>());
}

} // namespace
} // namespace orrery::xls
