#include "engines/builtin/theme/theme.h"

#include <gtest/gtest.h>

namespace orrery::builtin {
namespace {

constexpr std::string_view kTheme =
    R"(<a:theme xmlns:a="urn:a"><a:themeElements><a:clrScheme name="x">
<a:dk1><a:sysClr val="windowText" lastClr="010203"/></a:dk1><a:lt1><a:sysClr val="window"/></a:lt1>
<a:dk2><a:srgbClr val="44546A"/></a:dk2><a:lt2><a:srgbClr val="nonsense"/></a:lt2>
<a:accent1><a:srgbClr val="4472C4"/></a:accent1><a:folHlink><a:srgbClr val="954F72"/></a:folHlink>
</a:clrScheme><a:fontScheme name="x"><a:majorFont><a:latin typeface="Big"/><a:ea typeface="Other"/></a:majorFont>
<a:minorFont><a:latin typeface="Small &amp; thin"/></a:minorFont></a:fontScheme></a:themeElements></a:theme>)";

TEST(ParseTheme, OrdersColorsAsStylesCountThem)
{
    const ThemeColors theme = ParseTheme(kTheme);
    EXPECT_EQ(theme.ByIndex(0), book::kWhite);
    EXPECT_EQ(theme.ByIndex(1), (book::Color{1, 2, 3}));
    EXPECT_EQ(theme.ByIndex(3), (book::Color{0x44, 0x54, 0x6A}));
    EXPECT_EQ(theme.ByIndex(4), (book::Color{0x44, 0x72, 0xC4}));
    EXPECT_EQ(theme.ByIndex(11), (book::Color{0x95, 0x4F, 0x72}));
    EXPECT_EQ(theme.ByIndex(12), std::nullopt);
}

TEST(ParseTheme, KeepsTheDefaultOfWhatIsMissingOrDamaged)
{
    const ThemeColors theme = ParseTheme(kTheme);
    EXPECT_EQ(theme.ByIndex(2), ThemeColors().ByIndex(2));
    EXPECT_EQ(theme.ByIndex(5), (book::Color{0xC0, 0x50, 0x4D}));
}

TEST(ParseTheme, ReadsFonts)
{
    const ThemeColors theme = ParseTheme(kTheme);
    EXPECT_EQ(*theme.FontOf("major"), "Big");
    EXPECT_EQ(*theme.FontOf("+mn-lt"), "Small & thin");
    EXPECT_EQ(theme.FontOf("none"), nullptr);
}

TEST(ThemeColors, FindsColorsByTheNamesOfDrawings)
{
    const ThemeColors theme = ParseTheme(kTheme);
    EXPECT_EQ(theme.ByName("bg1"), book::kWhite);
    EXPECT_EQ(theme.ByName("tx1"), (book::Color{1, 2, 3}));
    EXPECT_EQ(theme.ByName("dk2"), theme.ByName("tx2"));
    EXPECT_EQ(theme.ByName("accent1"), theme.ByIndex(4));
    EXPECT_EQ(theme.ByName("phClr"), std::nullopt);
}

TEST(ParseHexColor, ReadsWithAndWithoutOpacity)
{
    EXPECT_EQ(ParseHexColor("1F497d"), (book::Color{0x1F, 0x49, 0x7D}));
    EXPECT_EQ(ParseHexColor("001F497D"), (book::Color{0x1F, 0x49, 0x7D}));
    EXPECT_EQ(ParseHexColor("1F497"), std::nullopt);
    EXPECT_EQ(ParseHexColor("-F497D"), std::nullopt);
    EXPECT_EQ(ParseHexColor(""), std::nullopt);
}

} // namespace
} // namespace orrery::builtin
