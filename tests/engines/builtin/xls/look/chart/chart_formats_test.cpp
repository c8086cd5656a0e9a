#include "engines/builtin/xls/look/chart/chart_formats.h"

#include "util/error.h"

#include "xls/stream_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace std::string_literals;
using book::Color;
using test::Numbers;

TEST(AreaFormatTest, ReadsColorAndPattern)
{
    const AreaFormat solid =
        ReadAreaFormat("\x10\x20\x30\0\xFF\xFF\xFF\0"s + Numbers({1, 0, 0, 0}));
    EXPECT_FALSE(solid.isAutomatic);
    EXPECT_TRUE(solid.isVisible);
    EXPECT_EQ(solid.color, (Color{0x10, 0x20, 0x30}));
    const AreaFormat none = ReadAreaFormat("\x10\x20\x30\0\0\0\0\0"s + Numbers({0, 0, 0, 0}));
    EXPECT_FALSE(none.isVisible);
    const AreaFormat automatic = ReadAreaFormat("\0\0\0\0\0\0\0\0"s + Numbers({0, 1, 0, 0}));
    EXPECT_TRUE(automatic.isAutomatic);
    EXPECT_TRUE(automatic.isVisible);
    const AreaFormat hatched = ReadAreaFormat("\0\0\0\0\xFF\xFF\xFF\0"s + Numbers({5, 0, 0, 0}));
    EXPECT_EQ(hatched.color, (Color{0x7F, 0x7F, 0x7F}));
    EXPECT_THROW(ReadAreaFormat("\0\0\0\0"s), util::Error);
}

TEST(LineFormatTest, ReadsColorWidthAndStyle)
{
    const LineFormat line = ReadLineFormat("\x10\x20\x30\0"s + Numbers({1, 2, 0, 0}));
    EXPECT_FALSE(line.isAutomatic);
    EXPECT_TRUE(line.outline.isVisible);
    EXPECT_EQ(line.outline.color, (Color{0x10, 0x20, 0x30}));
    EXPECT_EQ(line.outline.width, 2.25);
    EXPECT_EQ(line.outline.style, book::LineStyle::Dashed);
    const LineFormat hair = ReadLineFormat("\0\0\0\0"s + Numbers({0, 0xFFFF, 0, 0}));
    EXPECT_EQ(hair.outline.width, 0.25);
    EXPECT_FALSE(ReadLineFormat("\0\0\0\0"s + Numbers({5, 0, 0, 0})).outline.isVisible);
    EXPECT_TRUE(ReadLineFormat("\0\0\0\0"s + Numbers({5, 0, 1, 0})).outline.isVisible);
}

TEST(MarkerFormatTest, HasTheColorOfItsInsideOrBorder)
{
    const std::string colors = "\x01\x02\x03\0\x04\x05\x06\0"s;
    EXPECT_EQ(ReadMarkerFormat(colors + Numbers({1, 0})).color, (Color{4, 5, 6}));
    EXPECT_EQ(ReadMarkerFormat(colors + Numbers({1, 0x10})).color, (Color{1, 2, 3}));
    EXPECT_FALSE(ReadMarkerFormat(colors + Numbers({0, 0})).isVisible);
    EXPECT_TRUE(ReadMarkerFormat(colors + Numbers({0, 1})).isVisible);
}

} // namespace
} // namespace orrery::xls
