#include "engines/builtin/common/default_palette.h"

#include <gtest/gtest.h>

namespace orrery::builtin {
namespace {

TEST(DefaultPalette, BeginsWithTheFixedColorsTwice)
{
    const Palette& palette = DefaultPalette();
    for (std::size_t index = 0; index < 8; ++index)
        EXPECT_EQ(palette[index], palette[index + 8]) << index;
    EXPECT_EQ(palette[0], book::kBlack);
    EXPECT_EQ(palette[1], book::kWhite);
    EXPECT_EQ(palette[10], (book::Color{0xFF, 0, 0}));
    EXPECT_EQ(palette[22], (book::Color{0xC0, 0xC0, 0xC0}));
    EXPECT_EQ(palette[43], (book::Color{0xFF, 0xFF, 0x99}));
    EXPECT_EQ(palette[63], (book::Color{0x33, 0x33, 0x33}));
}

TEST(PaletteColor, HasNoneForTheSystemsColors)
{
    EXPECT_EQ(PaletteColor(DefaultPalette(), 63), DefaultPalette()[63]);
    EXPECT_EQ(PaletteColor(DefaultPalette(), 64), std::nullopt);
    EXPECT_EQ(PaletteColor(DefaultPalette(), 65), std::nullopt);
    EXPECT_EQ(PaletteColor(DefaultPalette(), 0x7FFF), std::nullopt);
}

} // namespace
} // namespace orrery::builtin
