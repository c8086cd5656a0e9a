#include "book/error.h"
#include "engines/builtin/xls/drawing/drawing_group.h"
#include "util/error.h"
#include "xls/art_builder.h"
#include "xls/stream_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;

std::string SheetWithArt(std::string_view art)
{
    return BofOf(0x10) + RecordOf(RecordType::MsoDrawing, art) + EofRecord();
}

std::string GroupRecords(std::string_view art)
{
    return RecordOf(RecordType::MsoDrawingGroup, art);
}

/// The art in records, without their headers.
std::string Joined(std::string_view records, std::size_t skip = 0)
{
    std::string art;
    RecordReader reader(records);
    while (const auto record = reader.Next())
        art += record->data.substr(skip);
    return art;
}

std::string RecordsOf(const DrawingGroup& group)
{
    std::string records;
    group.AppendTo(records);
    return records;
}

/// Copies a sheet that many times; returns the bytes of the last copy.
std::string Copied(DrawingGroup& group, std::string_view sheet, int times = 1)
{
    const auto places = FindDrawings(sheet);
    std::string copy;
    for (int i = 0; i < times; ++i) {
        copy = sheet;
        PutDrawingIds(copy, places, group.AddCopy(places));
    }
    return copy;
}

TEST(DrawingGroupTest, StaysAsItIsWithoutCopies)
{
    const auto records = GroupRecords(GroupOf({0x402, 2, 2, 1, 1, 2}));
    DrawingGroup group(DrawingKind::Sheet, records);
    group.Reserve(FindDrawings(SheetWithArt(DrawingOf(1, 2, 0x401, ShapeOf(0x400)))));
    EXPECT_FALSE(group.Changed());
    EXPECT_EQ(RecordsOf(group), records);
}

TEST(DrawingGroupTest, ACopyGetsADrawingIdAndClustersOfItsOwn)
{
    const auto records = GroupRecords(GroupOf({0xC01, 3, 5, 2, 1, 3, 2, 2}));
    const auto sheet = SheetWithArt(DrawingOf(2, 3, 0x805, ShapeOf(0x800) + ShapeOf(0x805)));
    DrawingGroup group(DrawingKind::Sheet, records);
    group.Reserve(FindDrawings(sheet));

    const auto copy = FindDrawings(Copied(group, sheet)).drawings.at(0);
    EXPECT_EQ(copy.Id(), 3U);
    EXPECT_EQ(copy.lastShape.value, 0xC01U);
    EXPECT_EQ(copy.shapes.at(0).value, 0xC00U);
    EXPECT_EQ(copy.shapes.at(1).value, 0xC01U);
    EXPECT_TRUE(group.Changed());
    EXPECT_EQ(RecordsOf(group), GroupRecords(GroupOf({0x1001, 4, 8, 3, 1, 3, 2, 2, 3, 2})));
}

TEST(DrawingGroupTest, ReadsContainersWhateverTheirVersion)
{
    const auto recordsOf = [](const std::vector<std::uint32_t>& table, std::uint32_t uses) {
        const auto pictures = ArtOf(0xF001, PictureOf(uses));
        return GroupRecords(ArtOf(0xF000, ArtOf(0xF006, LongNumbers(table)) + pictures));
    };
    const auto sheet = SheetWithArt(
        DrawingOf(1, 2, 0x401, ShapeOf(0x400, PropertiesOf({{0x4104, 1}})) + ShapeOf(0x401)));
    const auto records = recordsOf({0x402, 2, 2, 1, 1, 2}, 1);
    DrawingGroup group(DrawingKind::Sheet, records);
    const auto copy = FindDrawings(Copied(group, sheet)).drawings.at(0);
    EXPECT_EQ(copy.Id(), 2U);
    EXPECT_EQ(copy.shapes.at(0).value, 0x800U);
    EXPECT_EQ(RecordsOf(group), recordsOf({0xC01, 3, 4, 2, 1, 2, 2, 2}, 2));
}

TEST(DrawingGroupTest, EveryCopyGetsNewIdsThatAreTheSameInEveryRun)
{
    const auto records = GroupRecords(GroupOf({0x402, 2, 2, 1, 1, 2}));
    const auto sheet = SheetWithArt(DrawingOf(1, 2, 0x401, ShapeOf(0x400) + ShapeOf(0x401)));
    const DrawingGroup group(DrawingKind::Sheet, records);
    DrawingGroup first = group;
    DrawingGroup second = group;
    const auto copy = Copied(first, sheet, 3);
    EXPECT_EQ(Copied(second, sheet, 3), copy);
    EXPECT_EQ(FindDrawings(copy).drawings.at(0).Id(), 4U);
    EXPECT_EQ(FindDrawings(copy).drawings.at(0).shapes.at(1).value, 0x1001U);
    EXPECT_EQ(RecordsOf(first), RecordsOf(second));
    EXPECT_FALSE(group.Changed());
}

TEST(DrawingGroupTest, ReferencesToShapesGetTheNewIds)
{
    const auto rules =
        ContainerOf(0xF005, ArtOf(0xF012, LongNumbers({2, 0x401, 0x802, 0x401, 5, 6})) +
                                ArtOf(0xF017, LongNumbers({4, 0}))); // unknown ids
    const auto sheet =
        SheetWithArt(DrawingOf(1, 3, 0x802,
                               ShapeOf(0x401, PropertiesOf({{0x008A, 0x802}, {0x0301, 0x9000}})) +
                                   ShapeOf(0x802) + rules));
    const auto records = GroupRecords(GroupOf({0xC01, 3, 3, 1, 1, 2, 1, 3}));
    DrawingGroup group(DrawingKind::Sheet, records);

    const auto copy = FindDrawings(Copied(group, sheet)).drawings.at(0);
    std::vector<std::uint32_t> named;
    for (const auto& reference : copy.references)
        named.push_back(reference.id.value);
    EXPECT_EQ(copy.shapes.at(0).value, 0xC00U);
    EXPECT_EQ(copy.shapes.at(1).value, 0xC01U);
    EXPECT_EQ(named, (std::vector<std::uint32_t>{0xC01, 0xC00, 0xC01, 0xC00}));
}

TEST(DrawingGroupTest, ManyShapesFillSeveralClusters)
{
    std::string shapes;
    for (std::uint32_t i = 0; i < 1030; ++i)
        shapes += ShapeOf(0x77); // a program that gives all of them the same id
    const auto sheet = SheetWithArt(DrawingOf(1, 1030, 0x77, shapes));
    const auto records = GroupRecords(GroupOf({0x78, 1, 1030, 1}));
    DrawingGroup group(DrawingKind::Sheet, records);
    group.Reserve(FindDrawings(sheet));
    const auto copy = FindDrawings(Copied(group, sheet)).drawings.at(0);
    for (std::uint32_t i = 0; i < 1030; ++i)
        EXPECT_EQ(copy.shapes.at(i).value, 0x400U + i);
    EXPECT_EQ(copy.lastShape.value, 0x805U);
    EXPECT_EQ(RecordsOf(group), GroupRecords(GroupOf({0xC01, 3, 2060, 2, 2, 1024, 2, 6})));
}

TEST(DrawingGroupTest, ClustersThatTheTableLacksAreListed)
{
    const auto records = GroupRecords(GroupOf({0x402, 2, 1, 1, 1, 1}));
    const auto model = SheetWithArt(DrawingOf(1, 1, 0x400, ShapeOf(0x400)));
    DrawingGroup group(DrawingKind::Sheet, records);
    group.Reserve(FindDrawings(model));
    group.Reserve(FindDrawings(SheetWithArt(DrawingOf(9, 1, 0x80A, ShapeOf(0x80A)))));

    EXPECT_EQ(FindDrawings(Copied(group, model)).drawings.at(0).shapes.at(0).value, 0xC00U);
    EXPECT_EQ(RecordsOf(group), GroupRecords(GroupOf({0x1001, 4, 2, 2, 1, 1, 9, 11, 2, 1})));
}

TEST(DrawingGroupTest, PicturesAreCountedNotCopied)
{
    const auto pictures = PictureOf(1, 9000) + PictureOf(4, 20) + PictureOf(0, 30);
    const auto art = GroupOf({0x402, 2, 2, 1, 1, 2}, pictures);
    const auto sheet =
        SheetWithArt(DrawingOf(1, 2, 0x401,
                               ShapeOf(0x400, PropertiesOf({{0x4104, 2}, {0x4186, 1}})) +
                                   ShapeOf(0x401, PropertiesOf({{0x4104, 2}, {0x4104, 99}}))));
    const auto records = GroupRecords(art);
    DrawingGroup group(DrawingKind::Sheet, records);
    Copied(group, sheet, 5);
    const auto expected = GroupOf({0x1C01, 7, 12, 6, 1, 2, 2, 2, 3, 2, 4, 2, 5, 2, 6, 2},
                                  PictureOf(6, 9000) + PictureOf(14, 20) + PictureOf(0, 30));
    EXPECT_TRUE(RecordsOf(group) == GroupRecords(expected));
}

TEST(DrawingGroupTest, ASecondRecordOfTheSameTypeStays)
{
    const auto art = GroupOf({0x402, 2, 2, 1, 1, 2}, PictureOf(1, 30'000));
    std::string records;
    for (std::size_t i = 0; i * kMaxRecordSize < art.size(); ++i)
        records += RecordOf(i < 2 ? RecordType::MsoDrawingGroup : RecordType::Continue,
                            art.substr(i * kMaxRecordSize, kMaxRecordSize));
    DrawingGroup group(DrawingKind::Sheet, records);
    Copied(group, SheetWithArt(DrawingOf(1, 1, 0x400, ShapeOf(0x400))));
    const auto changed = RecordsOf(group);
    std::vector<RecordType> types;
    RecordReader reader(changed);
    while (const auto record = reader.Next())
        types.push_back(record->type);
    EXPECT_EQ(types, (std::vector{RecordType::MsoDrawingGroup, RecordType::MsoDrawingGroup,
                                  RecordType::Continue, RecordType::Continue}));
    EXPECT_TRUE(Joined(changed) == GroupOf({0xC01, 3, 3, 2, 1, 2, 2, 1}, PictureOf(1, 30'000)));
}

TEST(DrawingGroupTest, HeaderPicturesHaveAGroupOfTheirOwn)
{
    constexpr std::size_t kHead = 14;
    const auto art = GroupOf({0xC01, 3, 4, 1, 1, 2, 1, 2}, PictureOf(2, 12'000));
    const auto records =
        HeaderPictureOf(art.substr(0, 8000), 2) + HeaderPictureOf(art.substr(8000), 2 | 4);
    const auto sheet =
        BofOf(0x10) +
        HeaderPictureOf(DrawingOf(1, 2, 0x801, ShapeOf(0x800, PropertiesOf({{0x4104, 1}})))) +
        RecordOf(RecordType::MsoDrawing, DrawingOf(1, 1, 0x400, ShapeOf(0x400))) + EofRecord();
    DrawingGroup group(DrawingKind::HeaderFooter, records);
    const auto copy = FindDrawings(Copied(group, sheet));
    ASSERT_EQ(copy.drawings.size(), 2U);
    EXPECT_EQ(copy.drawings[0].shapes.at(0).value, 0x400U) << "of the other group";
    EXPECT_EQ(copy.drawings[1].Id(), 2U);
    EXPECT_EQ(copy.drawings[1].shapes.at(0).value, 0xC00U);
    EXPECT_EQ(copy.drawings[1].lastShape.value, 0xC00U);

    const auto changed = RecordsOf(group);
    EXPECT_TRUE(Joined(changed, kHead) ==
                GroupOf({0x1001, 4, 6, 2, 1, 2, 1, 2, 2, 1}, PictureOf(3, 12'000)));
    RecordReader reader(changed);
    EXPECT_EQ(reader.Next()->data.substr(0, kHead),
              std::string("\x66\x08\0\0\0\0\0\0\0\0\0\0\x02\0", kHead));
    const auto second = reader.Next();
    EXPECT_EQ(second->type, RecordType::HeaderFooterPicture);
    EXPECT_EQ(second->data[12], '\x06');
    EXPECT_FALSE(reader.Next());
}

TEST(DrawingGroupTest, DoesNotCreateAMissingGroup)
{
    const auto sheet = SheetWithArt(DrawingOf(1, 1, 0x400, ShapeOf(0x400)));
    DrawingGroup group(DrawingKind::Sheet, {});
    group.Reserve(FindDrawings(sheet));
    const auto copy = FindDrawings(Copied(group, sheet));
    EXPECT_EQ(copy.drawings.at(0).Id(), 2U);
    EXPECT_EQ(copy.drawings.at(0).shapes.at(0).value, 0x800U);
    EXPECT_FALSE(group.Changed());
    EXPECT_EQ(RecordsOf(group), "");
}

void ExpectNotCopied(DrawingGroup group, const DrawingPlaces& places, std::string_view cause)
{
    try {
        group.AddCopy(places);
        FAIL() << cause;
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), book::ErrorKind::SheetNotCopied);
        EXPECT_EQ(error.Cause(), cause);
    }
}

TEST(DrawingGroupTest, ReportsDamage)
{
    const auto whole = GroupRecords(GroupOf({0x402, 2, 2, 1, 1, 2}));
    const auto places = FindDrawings(SheetWithArt(DrawingOf(1, 1, 0x400, ShapeOf(0x400))));
    ExpectNotCopied(DrawingGroup(DrawingKind::Sheet, whole), FindDrawings(SheetWithArt("bad art")),
                    "its drawing is damaged");
    for (const auto& art : {GroupOf({0x402}), ContainerOf(0xF000, ""), ContainerOf(0xF002, ""),
                            std::string("art"), GroupOf({0x402, 2, 2, 1, 1, 2}).substr(0, 30)}) {
        const auto records = GroupRecords(art);
        ExpectNotCopied(DrawingGroup(DrawingKind::Sheet, records), places,
                        "the list of the workbook's drawings is damaged");
    }
}

TEST(DrawingGroupTest, ReportsWhenIdsRunOut)
{
    const auto sheet = SheetWithArt(DrawingOf(1, 1, 0x400, ShapeOf(0x400)));
    const auto places = FindDrawings(sheet);
    const auto records = GroupRecords(GroupOf({0x402, 2, 2, 1, 1, 2}));
    DrawingGroup group(DrawingKind::Sheet, records);
    Copied(group, sheet, 4093);
    ExpectNotCopied(group, places, "the workbook holds as many drawings as its format allows");
    std::vector<std::uint32_t> table{0, 65525, 1, 1};
    table.resize(4 + 2 * 65524, 0);
    const auto full = GroupRecords(GroupOf(table));
    ExpectNotCopied(DrawingGroup(DrawingKind::Sheet, full), places,
                    "the workbook holds as many shapes as its format allows");
}

} // namespace
} // namespace orrery::xls
