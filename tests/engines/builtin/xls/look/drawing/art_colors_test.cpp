#include "engines/builtin/xls/look/drawing/art_colors.h"

#include "xls/art_builder.h"
#include "xls/look/test_styles.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using book::Color;

struct ColorCase {
    const char* name;
    std::uint32_t value;
    Color expected;
};
class ArtColorsTest : public testing::TestWithParam<ColorCase> {
protected:
    ArtColorsTest() { properties_.Add(std::string_view(bytes_).substr(8), 2); }

private:
    std::string bytes_ =
        test::PropertiesOf({{0x0181, 0x0000C896}, {0x01C0, 0x00302010}}); // fill, line

protected:
    ShapeProperties properties_;
    DrawingStyles styles_ = test::StylesForTests();
};

TEST_P(ArtColorsTest, ResolvesValue)
{
    EXPECT_EQ(ArtColors(properties_, styles_).Resolve(GetParam().value), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Values, ArtColorsTest,
    testing::Values(ColorCase{"Rgb", 0x00030201, {1, 2, 3}},
                    ColorCase{"RgbOfSystem", 0x04030201, {1, 2, 3}},
                    ColorCase{"Scheme", 0x0800000D, {13, 1, 2}},
                    ColorCase{"Palette", 0x0100000D, {13, 1, 2}},
                    ColorCase{"WindowText", 0x08000040, book::kBlack},
                    ColorCase{"Window", 0x08000041, book::kWhite},
                    ColorCase{"ToolTip", 0x08000050, {0xFF, 0xFF, 0xE1}},
                    ColorCase{"SystemWindow", 0x10000011, book::kWhite},
                    ColorCase{"SystemHighlight", 0x10000003, {0x00, 0x78, 0xD7}},
                    ColorCase{"UnknownOfSystem", 0x100000C0, book::kBlack},
                    ColorCase{"Fill", 0x100000F0, {0x96, 0xC8, 0}},
                    ColorCase{"Line", 0x100000F2, {0x10, 0x20, 0x30}},
                    // 150 * 51 / 255 = 30, 200 * 51 / 255 = 40
                    ColorCase{"DarkerFill", 0x103301F0, {30, 40, 0}},
                    // 255 - (255 - 150) * 51 / 255 = 234, 255 - 55 * 51 / 255 = 244, 255 - 51
                    ColorCase{"LighterFill", 0x103302F0, {234, 244, 204}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ArtColorsOfThemselvesTest, End)
{
    const std::string bytes = test::PropertiesOf({{0x0181, 0x100000F5}, {0x0183, 0x100000F0}});
    ShapeProperties properties;
    properties.Add(std::string_view(bytes).substr(8), 2);
    const DrawingStyles styles = test::StylesForTests();
    EXPECT_EQ(ArtColors(properties, styles).Find(ShapeProperty::FillColor, book::kWhite),
              book::kBlack);
}

} // namespace
} // namespace orrery::xls
