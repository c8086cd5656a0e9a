#include "engines/builtin/xls/look/drawing/header_pictures.h"

#include "xls/look/sheet_drawing_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;
using namespace std::string_literals;

const std::string kPng =
    ArtOf(0xF007, std::string(36, '\0') + ArtOf(0xF01E, std::string(17, 'd') + "png", 0x6E0), 6, 2);
const std::string kSize = ArtOf(0xF010, LongNumbers({40, 20}));

/// A picture frame with the number of its picture and its name, and what else is in it.
std::string FrameOf(std::uint32_t picture, std::string_view name, std::string_view more)
{
    std::string text;
    for (const char letter : name)
        text += letter + "\0"s;
    text += "\0\0"s;
    std::string table = Numbers({0x4104}) + LongNumbers({picture}) + Numbers({0x8380}) +
                        LongNumbers({static_cast<std::uint32_t>(text.size())}) + text;
    return ShapeOf(1025, ArtOf(0xF00B, table, 2, 3) + std::string(more));
}

std::string DrawingWith(std::string_view shapes)
{
    return DrawingOf(1, 2, 1025, ContainerOf(0xF003, ShapeOf(1024) + std::string(shapes)));
}

class ReadHeaderPicturesTest : public testing::Test {
protected:
    std::vector<book::HeaderPicture> Read(std::string_view records)
    {
        const std::string group =
            HeaderPictureOf(ContainerOf(0xF000, ContainerOf(0xF001, kPng)), 2);
        Pictures pictures(DrawingKind::HeaderFooter, group);
        return ReadHeaderPictures(SheetOf(records), 0, pictures, unreadable_);
    }

    std::size_t unreadable_ = 0;
};

TEST_F(ReadHeaderPicturesTest, HaveTheirPlaceAndSize)
{
    const auto found = Read(HeaderPictureOf(DrawingWith(FrameOf(1, "RFEVEN", kSize))));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].slot,
              (book::HeaderSlot{book::HeaderPages::Even, book::HeaderPart::Right, true}));
    EXPECT_EQ(found[0].width, 30);
    EXPECT_EQ(found[0].height, 15);
    EXPECT_EQ(found[0].drawing.kind, book::DrawingKind::Picture);
    EXPECT_EQ(found[0].drawing.pictureType, "png");
    ASSERT_NE(found[0].drawing.picture, nullptr);
    EXPECT_EQ(*found[0].drawing.picture, "png");
    EXPECT_EQ(unreadable_, 0U);
}

TEST_F(ReadHeaderPicturesTest, AreContinuedInTheNextRecord)
{
    const std::string art = DrawingWith(FrameOf(1, "LH", kSize) + FrameOf(1, "CH", kSize));
    const auto found =
        Read(HeaderPictureOf(art.substr(0, 100)) + HeaderPictureOf(art.substr(100), 5));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[1].slot.part, book::HeaderPart::Middle);
}

TEST_F(ReadHeaderPicturesTest, NeedAPlaceASizeAndAPicture)
{
    EXPECT_TRUE(Read({}).empty());
    EXPECT_TRUE(Read(HeaderPictureOf(DrawingWith(FrameOf(1, "Logo", kSize)))).empty());
    EXPECT_TRUE(Read(HeaderPictureOf(DrawingWith(FrameOf(1, "LH", {})))).empty());
    EXPECT_TRUE(Read(HeaderPictureOf("no art")).empty());
    EXPECT_EQ(unreadable_, 0U);
    EXPECT_TRUE(Read(HeaderPictureOf(DrawingWith(FrameOf(2, "LH", kSize)))).empty());
    EXPECT_EQ(unreadable_, 1U);
}

} // namespace
} // namespace orrery::xls
