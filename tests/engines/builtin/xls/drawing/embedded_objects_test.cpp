#include "engines/builtin/xls/drawing/embedded_objects.h"
#include "xls/art_builder.h"
#include "xls/stream_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;

/// The part of an OBJ record that gives the place of a picture's data, with a token and the data
/// after the formula.
std::string PicturePart(std::uint8_t token, std::string_view more)
{
    std::string formula = Numbers({5, 0, 0}); // the expression's size, four unused bytes
    AppendU8(formula, token);
    formula += std::string("\0\0\0\0\x03\x03\0\0Pic", 11); // and the object's class
    std::string part =
        Numbers({static_cast<std::uint16_t>(formula.size())}) + formula + std::string(more);
    return Numbers({9, static_cast<std::uint16_t>(part.size())}) + part;
}

std::string ObjectOf(std::uint16_t flags, std::string_view picture)
{
    return RecordOf(RecordType::Obj, Numbers({0x15, 0x12, 8, 1, 0, 0, 0, 0, 0, 0, 0}) +
                                         Numbers({7, 2, 0xFFFF, 8, 2, flags}) +
                                         std::string(picture) + Numbers({0, 0}));
}

TEST(EmbeddedObjectsTest, AnObjectNamesItsStorage)
{
    const auto sheet = SheetOf(ObjectOf(1, PicturePart(2, LongNumbers({0x63FA15}))));
    const auto places = FindEmbedded(sheet);
    ASSERT_EQ(places.objects.size(), 1U);
    EXPECT_TRUE(places.controls.empty());
    EXPECT_EQ(places.objects[0].number, 0x63FA15U);
    EXPECT_EQ(ReadU32(sheet, places.objects[0].place), 0x63FA15U);
    EXPECT_EQ(StorageName(0x63FA15), "MBD0063FA15");
    EXPECT_EQ(StorageName(0), "MBD00000000");
    EXPECT_EQ(StorageName(0xFEDCBA98), "MBDFEDCBA98");
}

TEST(EmbeddedObjectsTest, AControlNamesItsPlaceInTheStream)
{
    const auto sheet = SheetOf(ObjectOf(0x31, PicturePart(2, LongNumbers({0x74, 0x10, 0}))));
    const auto places = FindEmbedded(sheet);
    ASSERT_EQ(places.controls.size(), 1U);
    EXPECT_TRUE(places.objects.empty());
    EXPECT_EQ(places.controls[0].begin, 0x74U);
    EXPECT_EQ(places.controls[0].size, 0x10U);
}

TEST(EmbeddedObjectsTest, IgnoresObjectsOutsideTheFile)
{
    const auto sheet = SheetOf(ObjectOf(1, PicturePart(0x3A, LongNumbers({0x74}))) + // linked
                               ObjectOf(1, PicturePart(2, "ab")) +                   // cut off
                               ObjectOf(0x31, PicturePart(2, LongNumbers({0x74}))) + // cut off
                               ObjectOf(1, Numbers({9, 0})) + ObjectOf(1, Numbers({9, 400})) +
                               ObjectOf(1, {}) + RecordOf(RecordType::Obj, "ab"));
    EXPECT_TRUE(FindEmbedded(sheet).Empty());
}

TEST(EmbeddedObjectsTest, EveryCopyGetsAStorageOfItsOwn)
{
    const auto model = SheetOf(ObjectOf(1, PicturePart(2, LongNumbers({0x0A}))) +
                               ObjectOf(1, PicturePart(2, LongNumbers({0x70}))));
    const auto places = FindEmbedded(model);
    EmbeddedCopies copies({"mbd0000000a"}, {"Workbook", "MBD0000000B"}, {});
    const auto first = copies.AddCopy(places);
    EXPECT_EQ(first.objects, (std::vector<std::uint32_t>{0x0C, 0x70})) << "the second has no data";
    EXPECT_EQ(copies.AddCopy(places).objects, (std::vector<std::uint32_t>{0x0D, 0x70}));
    EXPECT_EQ(copies.Storages(),
              (std::vector<std::pair<std::string, std::string>>{{"MBD0000000A", "MBD0000000C"},
                                                                {"MBD0000000A", "MBD0000000D"}}));
    auto copy = model;
    PutEmbedding(copy, places, first);
    EXPECT_EQ(FindEmbedded(copy).objects.at(0).number, 0x0CU);
    EXPECT_EQ(copy.size(), model.size());
}

TEST(EmbeddedObjectsTest, EveryCopyGetsControlsOfItsOwn)
{
    const auto model = SheetOf(ObjectOf(0x31, PicturePart(2, LongNumbers({2, 3, 0}))) +
                               ObjectOf(0x31, PicturePart(2, LongNumbers({6, 3, 0}))));
    const auto places = FindEmbedded(model);
    EmbeddedCopies copies({}, {}, "abcdefg");
    EXPECT_FALSE(copies.ControlsChanged());
    const auto first = copies.AddCopy(places);
    EXPECT_EQ(first.controls, (std::vector<std::uint32_t>{7, 6})) << "the second runs past the end";
    EXPECT_EQ(copies.AddCopy(places).controls, (std::vector<std::uint32_t>{10, 6}));
    EXPECT_TRUE(copies.ControlsChanged());
    EXPECT_EQ(copies.Controls(), "abcdefgcdecde");
    auto copy = model;
    PutEmbedding(copy, places, first);
    EXPECT_EQ(FindEmbedded(copy).controls.at(0).begin, 7U);
    EXPECT_EQ(FindEmbedded(copy).controls.at(0).size, 3U);
}

} // namespace
} // namespace orrery::xls
