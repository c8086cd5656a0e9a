#include "engines/builtin/xlsx/look/drawing/values/colors.h"
#include "engines/builtin/xml/reading.h"

#include <gtest/gtest.h>

namespace orrery::xlsx::drawing {
namespace {

struct ColorCase {
    const char* name;
    std::string xml;
    std::optional<book::Color> color;
    double opacity = 1;
};

class ReadColorTest : public testing::TestWithParam<ColorCase> {};

TEST_P(ReadColorTest, GivesTheColorThatIsMeant)
{
    const std::string text = "<fill>" + GetParam().xml + "</fill>";
    xml::Scanner scanner(text);
    xml::EnterRoot(scanner);
    const xml::Tree tree(
        scanner, [](std::string_view) { return false; }, 100);
    const builtin::ThemeColors theme;
    const auto color = ReadColor(tree.Root(), {theme, ShapeColor{{10, 20, 30}, 0.5}});
    ASSERT_EQ(color.has_value(), GetParam().color.has_value());
    if (!color)
        return;
    EXPECT_NEAR(color->color.red, GetParam().color->red, 1);
    EXPECT_NEAR(color->color.green, GetParam().color->green, 1);
    EXPECT_NEAR(color->color.blue, GetParam().color->blue, 1);
    EXPECT_DOUBLE_EQ(color->opacity, GetParam().opacity);
}

// Of the mixed ones: HSL of 4F81BD is 212.7 degrees, 45.5 % and 52.5 %, so that twice a fifth of
// its luminance and three fifths more is B8CCE4, as Excel shows "Accent 1, Lighter 60%".
INSTANTIATE_TEST_SUITE_P(
    Forms, ReadColorTest,
    testing::Values(
        ColorCase{"Rgb", R"(<srgbClr val="0A141e"/>)", book::Color{10, 20, 30}},
        ColorCase{"RgbTooShort", R"(<srgbClr val="FFF"/>)", std::nullopt},
        ColorCase{"Nothing", "", std::nullopt},
        ColorCase{"SystemAsLastSeen", R"(<sysClr val="window" lastClr="F0F0F0"/>)",
                  book::Color{240, 240, 240}},
        ColorCase{"SystemText", R"(<sysClr val="windowText"/>)", book::kBlack},
        ColorCase{"Preset", R"(<prstClr val="cornflowerBlue"/>)", book::Color{100, 149, 237}},
        ColorCase{"PresetShort", R"(<prstClr val="ltGrey"/>)", book::Color{211, 211, 211}},
        ColorCase{"PresetUnknown", R"(<prstClr val="zebra"/>)", std::nullopt},
        ColorCase{"Hsl", R"(<hslClr hue="7200000" sat="100000" lum="50000"/>)",
                  book::Color{0, 255, 0}},
        ColorCase{"LinearShares", R"(<scrgbClr r="100000" g="0" b="21404"/>)",
                  book::Color{255, 0, 127}},
        ColorCase{"Placeholder", R"(<schemeClr val="phClr"/>)", book::Color{10, 20, 30}, 0.5},
        ColorCase{"UnknownScheme", R"(<schemeClr val="accent9"/>)", std::nullopt},
        ColorCase{"Lighter60",
                  R"(<srgbClr val="4F81BD"><lumMod val="40000"/><lumOff val="60000"/></srgbClr>)",
                  book::Color{0xB8, 0xCC, 0xE4}},
        ColorCase{"Darker25", R"(<srgbClr val="4F81BD"><lumMod val="75000"/></srgbClr>)",
                  book::Color{0x36, 0x60, 0x92}},
        ColorCase{"ShadeHalvesLight", R"(<srgbClr val="FFFFFF"><shade val="50000"/></srgbClr>)",
                  book::Color{188, 188, 188}},
        ColorCase{"TintMixesWithWhite", R"(<srgbClr val="000000"><tint val="50000"/></srgbClr>)",
                  book::Color{188, 188, 188}},
        ColorCase{"Opacity", R"(<srgbClr val="000000"><alpha val="25000"/></srgbClr>)",
                  book::kBlack, 0.25},
        ColorCase{"StrictPercent", R"(<srgbClr val="000000"><alpha val="25%"/></srgbClr>)",
                  book::kBlack, 0.25},
        ColorCase{"Inverse", R"(<srgbClr val="FF0000"><inv/></srgbClr>)", book::Color{0, 255, 255}},
        ColorCase{"Complement", R"(<srgbClr val="FF0000"><comp/></srgbClr>)",
                  book::Color{0, 255, 255}},
        ColorCase{"GrayHasNoHue", R"(<srgbClr val="808080"><satMod val="300000"/></srgbClr>)",
                  book::Color{128, 128, 128}}),
    [](const auto& shape) { return std::string(shape.param.name); });

TEST(ReadColor, SchemeNamesOfSheets)
{
    const std::string text = R"(<fill><schemeClr val="tx1"/></fill>)";
    xml::Scanner scanner(text);
    xml::EnterRoot(scanner);
    const xml::Tree tree(
        scanner, [](std::string_view) { return false; }, 100);
    const builtin::ThemeColors theme;
    const auto color = ReadColor(tree.Root(), {theme, std::nullopt});
    ASSERT_TRUE(color);
    EXPECT_EQ(color->color, theme.ByName("dk1"));
}

} // namespace
} // namespace orrery::xlsx::drawing
