#include "engines/builtin/xls/look/drawing/pictures.h"

#include "xls/art_builder.h"
#include "xls/stream_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;

/// A PNG in an entry of the list of pictures, which may have a name.
std::string EntryOf(std::string_view png, std::string_view name = {})
{
    std::string head(36, '\0');
    head[33] = static_cast<char>(name.size());
    return ArtOf(0xF007,
                 head + std::string(name) +
                     ArtOf(0xF01E, std::string(17, 'd') + std::string(png), 0x6E0),
                 6, 2);
}

std::string GroupRecord(std::string_view pictures, std::string_view more = {})
{
    return RecordOf(RecordType::MsoDrawingGroup,
                    ContainerOf(0xF000, ContainerOf(0xF001, pictures) + std::string(more)));
}

TEST(PicturesTest, FindsPicturesByTheirNumber)
{
    const auto records = GroupRecord(EntryOf("one") + ArtOf(0xF007, std::string(36, '\0'), 0, 2) +
                                     EntryOf("three", "a name"));
    Pictures pictures(DrawingKind::Sheet, records);
    ASSERT_NE(pictures.Find(1).bytes, nullptr);
    EXPECT_EQ(*pictures.Find(1).bytes, "one");
    EXPECT_EQ(pictures.Find(2).bytes, nullptr) << "a deleted picture";
    ASSERT_NE(pictures.Find(3).bytes, nullptr);
    EXPECT_EQ(*pictures.Find(3).bytes, "three");
    EXPECT_EQ(pictures.Find(3).bytes, pictures.Find(3).bytes) << "kept once";
    EXPECT_EQ(pictures.Find(0).bytes, nullptr);
    EXPECT_EQ(pictures.Find(4).bytes, nullptr);
}

TEST(PicturesTest, JoinsContinuedPictures)
{
    const std::string png(20000, 'p');
    const auto records = GroupRecord(EntryOf(png));
    ASSERT_GT(records.size(), 2 * kMaxRecordSize);
    Pictures pictures(DrawingKind::Sheet, records);
    ASSERT_NE(pictures.Find(1).bytes, nullptr);
    EXPECT_EQ(*pictures.Find(1).bytes, png);
}

TEST(PicturesTest, KnowsThePropertiesOfShapesThatDoNotSayOtherwise)
{
    const auto records = GroupRecord({}, PropertiesOf({{0x0181, 0x08000041}}));
    const Pictures pictures(DrawingKind::Sheet, records);
    EXPECT_EQ(pictures.Defaults().Find(ShapeProperty::FillColor), 0x08000041U);
}

TEST(PicturesTest, StopsAtTheirMostBytes)
{
    const std::string half(Pictures::kMostBytes / 2 + 1, 'p');
    const auto records = GroupRecord(EntryOf(half) + EntryOf(half) + EntryOf("small"));
    Pictures pictures(DrawingKind::Sheet, records);
    EXPECT_NE(pictures.Find(1).bytes, nullptr);
    EXPECT_EQ(pictures.Find(2).bytes, nullptr);
    EXPECT_TRUE(pictures.Find(2).isTooLarge);
    EXPECT_NE(pictures.Find(3).bytes, nullptr);
}

TEST(PicturesTest, TrustsNoSizes)
{
    const auto entry = EntryOf("picture", "name");
    for (std::size_t size = 8; size < entry.size(); ++size) {
        std::string cut = entry.substr(0, size);
        PutU32(cut, 4, static_cast<std::uint32_t>(size - 8));
        const auto records = GroupRecord(cut);
        EXPECT_EQ(Pictures(DrawingKind::Sheet, records).Find(1).bytes, nullptr) << size;
    }
    EXPECT_EQ(Pictures(DrawingKind::Sheet, "").Find(1).bytes, nullptr);
}

} // namespace
} // namespace orrery::xls
