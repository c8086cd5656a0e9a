#include "engines/builtin/xls/look/drawing/shape_properties.h"

#include "xls/art_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace std::string_literals;

/// The data of a table of properties, without its header.
std::string TableOf(const std::vector<std::pair<std::uint16_t, std::uint32_t>>& values)
{
    return test::PropertiesOf(values).substr(8);
}

TEST(ShapePropertiesTest, ReadsNumbers)
{
    const auto table = TableOf({{0x0004, 0xFFD30000}, {0x4104, 7}, {0x01CB, 12700}});
    ShapeProperties properties;
    properties.Add(table, 3);
    EXPECT_EQ(properties.Fixed(ShapeProperty::Rotation, 0), -45);
    EXPECT_EQ(properties.Find(ShapeProperty::Picture), 7U);
    EXPECT_EQ(properties.Value(ShapeProperty::LineWidth, 1), 12700U);
    EXPECT_EQ(properties.Find(ShapeProperty::FillColor), std::nullopt);
    EXPECT_EQ(properties.Value(ShapeProperty::FillColor, 1), 1U);
}

TEST(ShapePropertiesTest, FindsDataBehindTheTable)
{
    const auto table = TableOf({{0x80C0, 6}, {0x8380, 8}}) + "a\0b\0\0\0"s + "c\0d\0e\0\0\0"s;
    ShapeProperties properties;
    properties.Add(table, 2);
    EXPECT_EQ(properties.Text(ShapeProperty::ArtText), "ab");
    EXPECT_EQ(properties.Text(ShapeProperty::Name), "cde");
    EXPECT_EQ(properties.Text(ShapeProperty::ArtTextFont), "");
}

TEST(ShapePropertiesTest, TrustsNoSizes)
{
    const auto table = TableOf({{0x80C0, 0xFFFFFFFF}, {0x8380, 8}}) + "a\0"s;
    ShapeProperties properties;
    properties.Add(table, 4095);
    EXPECT_EQ(properties.Text(ShapeProperty::ArtText), "a");
    EXPECT_EQ(properties.Text(ShapeProperty::Name), "");
    properties.Add("", 1);
}

TEST(ShapePropertiesTest, KnowsFlagsThatAreUsed)
{
    const auto table = TableOf({{0x01FF, 0x00080000}, {0x01BF, 0x00000010}});
    ShapeProperties properties;
    properties.Add(table, 2);
    EXPECT_FALSE(properties.Flag(ShapeProperty::LineFlags, 3, true));
    EXPECT_TRUE(properties.Flag(ShapeProperty::FillFlags, 4, true)) << "not used: the default";
    EXPECT_FALSE(properties.Flag(ShapeProperty::FillFlags, 4, false));
}

TEST(ShapePropertiesTest, FallsBackToTheDefaultsOfTheWorkbook)
{
    const auto common = TableOf({{0x0181, 5}, {0x01FF, 0x00080000}});
    ShapeProperties defaults;
    defaults.Add(common, 2);
    ShapeProperties properties;
    properties.SetDefaults(&defaults);
    EXPECT_EQ(properties.Find(ShapeProperty::FillColor), 5U);
    EXPECT_FALSE(properties.Flag(ShapeProperty::LineFlags, 3, true));
    const auto own = TableOf({{0x0181, 6}});
    properties.Add(own, 1);
    EXPECT_EQ(properties.Find(ShapeProperty::FillColor), 6U);
}

TEST(ShapePropertiesTest, ListsAdjustments)
{
    const auto table = TableOf({{0x0148, 0xFFFFFFFF}});
    ShapeProperties properties;
    properties.Add(table, 1);
    EXPECT_EQ(properties.Adjustment(0), std::nullopt);
    EXPECT_EQ(properties.Adjustment(1), -1);
}

} // namespace
} // namespace orrery::xls
