#include "engines/builtin/theme/built_in_table_styles.h"

#include "engines/builtin/common/tint.h"

#include <gtest/gtest.h>
#include <string>

namespace orrery::builtin {
namespace {

using book::Color;
using book::LineStyle;
using book::TablePart;

// ECMA-376 lists the styles (presetTableStyles).

constexpr Color kAccent1{0x4F, 0x81, 0xBD};
constexpr Color kAccent2{0xC0, 0x50, 0x4D};

book::TableStyle BuiltIn(std::string_view name)
{
    return BuiltInTableStyle(name, ThemeColors()).value();
}

TEST(BuiltInTableStyle, KnowsEveryName)
{
    const ThemeColors theme;
    const auto count = [&](const std::string& prefix) {
        std::size_t number = 0;
        for (std::size_t at = 1; at <= 40; ++at)
            number += BuiltInTableStyle(prefix + std::to_string(at), theme) ? 1U : 0U;
        return number;
    };
    EXPECT_EQ(count("TableStyleLight"), 21U);
    EXPECT_EQ(count("TableStyleMedium"), 28U);
    EXPECT_EQ(count("TableStyleDark"), 11U);
    EXPECT_EQ(count("PivotStyleLight"), 28U);
    EXPECT_EQ(count("PivotStyleMedium"), 28U);
    for (const char* name : {"", "TableStyleLight", "TableStyleLight0", "TableStyleLight-1", "x"})
        EXPECT_FALSE(BuiltInTableStyle(name, theme).has_value()) << name;
}

TEST(BuiltInTableStyle, Medium2HasTheFirstAccent)
{
    const auto style = BuiltIn("TableStyleMedium2");
    const auto& header = style.parts.at(TablePart::HeaderRow);
    EXPECT_EQ(header.bold, true);
    EXPECT_EQ(header.fontColor, book::kWhite);
    EXPECT_EQ(header.fill->pattern, book::FillPattern::Solid);
    EXPECT_EQ(header.fill->foreground, kAccent1);
    const auto& whole = style.parts.at(TablePart::WholeTable);
    const book::BorderLine line{LineStyle::Thin, ApplyTint(kAccent1, 0.39997558519241921)};
    EXPECT_EQ(whole.left, line);
    EXPECT_EQ(whole.innerHorizontal, line);
    EXPECT_EQ(whole.innerVertical, std::nullopt);
    EXPECT_EQ(whole.fontColor, book::kBlack);
    EXPECT_EQ(style.parts.at(TablePart::FirstRowStripe).fill->foreground,
              ApplyTint(kAccent1, 0.79998168889431442));
    EXPECT_EQ(style.parts.at(TablePart::TotalRow).top,
              (book::BorderLine{LineStyle::Double, kAccent1}));
}

TEST(BuiltInTableStyle, TheFirstOfAFamilyIsGrey)
{
    const auto light = BuiltIn("TableStyleLight1");
    EXPECT_EQ(light.parts.at(TablePart::WholeTable).top,
              (book::BorderLine{LineStyle::Thin, book::kBlack}));
    EXPECT_EQ(light.parts.at(TablePart::FirstRowStripe).fill->foreground, (Color{217, 217, 217}));
    const auto medium = BuiltIn("TableStyleMedium8");
    EXPECT_EQ(medium.parts.at(TablePart::FirstColumnStripe).fill->foreground,
              (Color{166, 166, 166}));
    EXPECT_EQ(medium.parts.at(TablePart::HeaderRow).bottom,
              (book::BorderLine{LineStyle::Thick, book::kWhite}));
    const auto dark = BuiltIn("TableStyleDark1");
    EXPECT_EQ(dark.parts.at(TablePart::WholeTable).fill->foreground, (Color{115, 115, 115}));
    EXPECT_EQ(dark.parts.at(TablePart::TotalRow).fill->foreground, (Color{38, 38, 38}));
}

TEST(BuiltInTableStyle, DarkStylesFrom8OnHaveTwoAccents)
{
    const auto style = BuiltIn("TableStyleDark9");
    EXPECT_EQ(style.parts.at(TablePart::HeaderRow).fill->foreground, kAccent2);
    EXPECT_EQ(style.parts.at(TablePart::WholeTable).fill->foreground,
              ApplyTint(kAccent1, 0.79998168889431442));
    EXPECT_EQ(BuiltIn("TableStyleDark8").parts.at(TablePart::HeaderRow).fill->foreground,
              book::kBlack);
    EXPECT_EQ(BuiltIn("TableStyleDark11").parts.at(TablePart::HeaderRow).fill->foreground,
              (Color{0xF7, 0x96, 0x46}));
}

TEST(BuiltInTableStyle, Light9DrawsLinesBetweenRows)
{
    const auto style = BuiltIn("TableStyleLight9");
    const book::BorderLine line{LineStyle::Thin, kAccent1};
    EXPECT_EQ(style.parts.at(TablePart::FirstRowStripe).top, line);
    EXPECT_EQ(style.parts.at(TablePart::SecondRowStripe).top, line);
    EXPECT_EQ(style.parts.at(TablePart::SecondColumnStripe).left, line);
}

TEST(BuiltInTableStyle, Medium16And21HaveTheFirstAndTheLastAccent)
{
    EXPECT_EQ(BuiltIn("TableStyleMedium16").parts.at(TablePart::HeaderRow).fill->foreground,
              kAccent1);
    EXPECT_EQ(BuiltIn("TableStyleMedium21").parts.at(TablePart::HeaderRow).fill->foreground,
              (Color{0xF7, 0x96, 0x46}));
}

TEST(BuiltInTableStyle, PivotLight16HasAPaleHeader)
{
    const auto style = BuiltIn("PivotStyleLight16");
    const auto& header = style.parts.at(TablePart::HeaderRow);
    EXPECT_EQ(header.bold, true);
    EXPECT_EQ(header.fill->foreground, ApplyTint(kAccent1, 0.79998168889431442));
    EXPECT_EQ(header.bottom,
              (book::BorderLine{LineStyle::Thin, ApplyTint(kAccent1, 0.39997558519241921)}));
    EXPECT_EQ(style.parts.count(TablePart::WholeTable), 0U);
}

} // namespace
} // namespace orrery::builtin
