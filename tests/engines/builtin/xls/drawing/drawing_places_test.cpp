#include "engines/builtin/xls/drawing/drawing_places.h"
#include "xls/art_builder.h"
#include "xls/stream_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;

std::string DrawingRecord(std::string_view art)
{
    return RecordOf(RecordType::MsoDrawing, art);
}

std::string ContinueRecord(std::string_view data)
{
    return RecordOf(RecordType::Continue, data);
}

std::string ObjectRecord()
{
    return RecordOf(RecordType::Obj, Numbers({0x15, 0x12, 2, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

/// TXO with its continuations: characters of one byte, and formatting.
std::string TextRecords(std::string_view text)
{
    const auto length = static_cast<std::uint16_t>(text.size());
    std::string records =
        RecordOf(RecordType::TextObject, Numbers({0x212, 0, 0, 0, 0, length, 16, 0, 0}));
    return records + ContinueRecord('\0' + std::string(text)) +
           ContinueRecord(std::string(16, '\0'));
}

std::vector<std::uint32_t> Values(const std::vector<ArtNumber>& numbers)
{
    std::vector<std::uint32_t> values;
    for (const auto& number : numbers)
        values.push_back(number.value);
    return values;
}

/// References to shapes, as indexes of the shapes.
std::vector<std::uint32_t> Named(const Drawing& drawing)
{
    std::vector<std::uint32_t> shapes;
    for (const auto& reference : drawing.references) {
        EXPECT_EQ(reference.id.value, drawing.shapes.at(reference.shape).value);
        shapes.push_back(static_cast<std::uint32_t>(reference.shape));
    }
    return shapes;
}

using Ids = std::vector<std::uint32_t>;

TEST(DrawingPlacesTest, FindsNothingInASheetWithoutDrawing)
{
    const auto places = FindDrawings(SheetOf({}));
    EXPECT_TRUE(places.understood);
    EXPECT_TRUE(places.drawings.empty());
}

TEST(DrawingPlacesTest, FindsTheIdsOfADrawing)
{
    const auto art = DrawingOf(7, 2, 0x402, ContainerOf(0xF003, ShapeOf(0x400) + ShapeOf(0x402)));
    const auto places = FindDrawings(SheetOf(DrawingRecord(art)));
    ASSERT_TRUE(places.understood);
    ASSERT_EQ(places.drawings.size(), 1U);
    const auto& drawing = places.drawings[0];
    EXPECT_EQ(drawing.kind, DrawingKind::Sheet);
    EXPECT_EQ(drawing.Id(), 7U);
    EXPECT_EQ(drawing.shapeCount, 2U);
    EXPECT_EQ(drawing.lastShape.value, 0x402U);
    EXPECT_EQ(Values(drawing.shapes), (Ids{0x400, 0x402}));
}

TEST(DrawingPlacesTest, ReadsContainersWhateverTheirVersion)
{
    for (const std::uint16_t version : std::vector<std::uint16_t>{0, 1, 15}) {
        const auto container = [version](std::uint16_t type, const std::string& content) {
            return ArtOf(type, content, 0, version);
        };
        const auto shape = container(0xF004, ArtOf(0xF00A, LongNumbers({0x400, 0}), 1, 2));
        const auto data = ArtOf(0xF008, LongNumbers({2, 0x402}), 7);
        const auto art = container(0xF002, data + container(0xF003, shape + ShapeOf(0x402)));
        const auto places = FindDrawings(SheetOf(DrawingRecord(art)));
        ASSERT_TRUE(places.understood) << version;
        ASSERT_EQ(places.drawings.size(), 1U) << version;
        EXPECT_EQ(places.drawings[0].Id(), 7U) << version;
        EXPECT_EQ(Values(places.drawings[0].shapes), (Ids{0x400, 0x402})) << version;
    }
}

TEST(DrawingPlacesTest, FindsTheIdsInRulesAndProperties)
{
    const auto rules =
        ContainerOf(0xF005, ArtOf(0xF012, LongNumbers({2, 0x401, 0x402, 0x403, 0, 0})) +
                                ArtOf(0xF014, LongNumbers({4, 0x404})) +
                                ArtOf(0xF017, LongNumbers({6, 0x405})));
    const auto former = ArtOf(0xF11D, LongNumbers({0x406}));
    const auto properties =
        PropertiesOf({{0x008A, 0x407}, {0x00BF, 0x401}, {0x0301, 0x408}}) +
        PropertiesOf({{0x808A, 0x401}}, 0xF122); // complex: this is the size of its data
    std::string shapes = ShapeOf(0x400, former + properties);
    for (std::uint32_t id = 0x401; id <= 0x408; ++id)
        shapes += ShapeOf(id);
    const auto places =
        FindDrawings(SheetOf(DrawingRecord(DrawingOf(1, 9, 0x408, shapes + rules))));
    ASSERT_TRUE(places.understood);
    EXPECT_EQ(Named(places.drawings[0]), (Ids{6, 7, 8, 1, 2, 3, 4, 5}));
}

TEST(DrawingPlacesTest, IgnoresReferencesToMissingShapes)
{
    const auto rules = ContainerOf(0xF005, ArtOf(0xF014, LongNumbers({4, 0})) +
                                               ArtOf(0xF017, LongNumbers({6, 0x905})));
    const auto shapes = ShapeOf(0x400) + ShapeOf(0x400); // the same id twice
    const auto art =
        DrawingOf(1, 2, 0x400, shapes + rules) + DrawingOf(2, 1, 0x905, ShapeOf(0x905));
    const auto places = FindDrawings(SheetOf(DrawingRecord(art)));
    ASSERT_TRUE(places.understood);
    EXPECT_EQ(Named(places.drawings[0]), Ids{});
    EXPECT_EQ(places.drawings[1].Id(), 2U);
}

TEST(DrawingPlacesTest, CountsPicturesWhereverTheyAreUsed)
{
    const auto properties = PropertiesOf({{0x4104, 3}, {0x4186, 3}, {0x41C5, 1}, {0x0104, 2}}) +
                            PropertiesOf({{0x4545, 4}, {0x4104, 0}}, 0xF121) +
                            PropertiesOf({{0xC186, 40}}, 0xF122);
    const auto art = DrawingOf(1, 1, 0x400, ShapeOf(0x400, properties));
    EXPECT_EQ(FindDrawings(SheetOf(DrawingRecord(art))).drawings.at(0).pictures, (Ids{3, 3, 1, 4}));
}

TEST(DrawingPlacesTest, ContinuesAfterObjectsAndTheirTexts)
{
    const auto art = DrawingOf(
        1, 4, 0x403, ContainerOf(0xF003, ShapeOf(0x401) + ShapeOf(0x402) + ShapeOf(0x403)));
    const std::size_t first = 40;
    const std::size_t second = 60;
    const std::size_t third = 85;
    const auto sheet =
        SheetOf(DrawingRecord(art.substr(0, first)) + ObjectRecord() +
                ContinueRecord(art.substr(first, second - first)) + TextRecords("Text") +
                ContinueRecord(art.substr(second, third - second)) + ObjectRecord() +
                DrawingRecord(art.substr(third)) + ObjectRecord());
    const auto places = FindDrawings(sheet);
    ASSERT_TRUE(places.understood);
    EXPECT_EQ(Values(places.drawings.at(0).shapes), (Ids{0x401, 0x402, 0x403}));
}

TEST(DrawingPlacesTest, WritesNumbersThatAreSplitOverTwoRecords)
{
    const auto art = DrawingOf(1, 1, 0x12345, ShapeOf(0x12345));
    for (std::size_t cut = 1; cut < art.size(); ++cut) {
        auto sheet = SheetOf(DrawingRecord(art.substr(0, cut)) + ContinueRecord(art.substr(cut)));
        const auto places = FindDrawings(sheet);
        ASSERT_TRUE(places.understood) << cut;
        places.drawings.at(0).shapes.at(0).Put(sheet, 0xA1B2C3D4);
        places.drawings.at(0).lastShape.Put(sheet, 0x0F1E2D3C);
        const auto changed = FindDrawings(sheet);
        EXPECT_EQ(changed.drawings.at(0).shapes.at(0).value, 0xA1B2C3D4U) << cut;
        EXPECT_EQ(changed.drawings.at(0).lastShape.value, 0x0F1E2D3CU) << cut;
    }
}

TEST(DrawingPlacesTest, ChartsHaveDrawingsOfTheirOwn)
{
    const auto art = DrawingOf(1, 2, 0x401, ShapeOf(0x400) + ShapeOf(0x401));
    const std::size_t cut = art.size() - 10;
    const auto chart =
        BofOf(0x20) + DrawingRecord(DrawingOf(2, 1, 0x800, ShapeOf(0x800))) + EofRecord();
    const auto places =
        FindDrawings(SheetOf(DrawingRecord(art.substr(0, cut)) + ObjectRecord() + chart +
                             ContinueRecord(art.substr(cut)) + ObjectRecord()));
    ASSERT_TRUE(places.understood);
    ASSERT_EQ(places.drawings.size(), 2U);
    EXPECT_EQ(places.drawings[0].Id(), 1U);
    EXPECT_EQ(Values(places.drawings[0].shapes), (Ids{0x400, 0x401}));
    EXPECT_EQ(places.drawings[1].Id(), 2U);
    EXPECT_EQ(Values(places.drawings[1].shapes), (Ids{0x800}));
}

TEST(DrawingPlacesTest, TheSelectionRefersToShapesOfItsSheet)
{
    const auto selection = RecordOf(RecordType::MsoDrawingSelection,
                                    ArtOf(0xF119, LongNumbers({2, 0, 0x401, 0x401, 0x402})));
    const auto art = DrawingOf(1, 3, 0x402, ShapeOf(0x400) + ShapeOf(0x401) + ShapeOf(0x402));
    const auto sheet = SheetOf(DrawingRecord(art) + selection);
    EXPECT_EQ(Named(FindDrawings(sheet).drawings.at(0)), (Ids{1, 1, 2}));
}

TEST(DrawingPlacesTest, HeaderPicturesAreDrawingsOfTheOtherGroup)
{
    const auto art = DrawingOf(1, 2, 0x801, ShapeOf(0x800) + ShapeOf(0x801));
    const std::size_t cut = 41;
    const auto sheet =
        SheetOf(HeaderPictureOf(art.substr(0, cut)) + HeaderPictureOf(art.substr(cut), 1 | 4) +
                HeaderPictureOf(DrawingOf(2, 1, 0xC00, ShapeOf(0xC00))));
    const auto places = FindDrawings(sheet);
    ASSERT_TRUE(places.understood);
    ASSERT_EQ(places.drawings.size(), 2U);
    EXPECT_EQ(places.drawings[0].kind, DrawingKind::HeaderFooter);
    EXPECT_EQ(Values(places.drawings[0].shapes), (Ids{0x800, 0x801}));
    EXPECT_EQ(places.drawings[1].Id(), 2U);
}

struct BadArtCase {
    const char* name;
    std::string art;
};
class BadArtTest : public testing::TestWithParam<BadArtCase> {};

TEST_P(BadArtTest, IsNotUnderstood)
{
    EXPECT_FALSE(FindDrawings(SheetOf(DrawingRecord(GetParam().art))).understood);
}

std::string NestedTooDeep()
{
    std::string art;
    for (int i = 0; i < 1000; ++i)
        art += LongNumbers({0xF003000F, 0x7FFFFFFF});
    return art;
}

INSTANTIATE_TEST_SUITE_P(
    Cases, BadArtTest,
    testing::Values(
        BadArtCase{"HeaderCutOff", "\x0F"},
        BadArtCase{"FiftyMegabytes", LongNumbers({0xF002000F, 50'000'000}) + "rest"},
        BadArtCase{"NestedBeyondItsEnd", NestedTooDeep()},
        BadArtCase{"NoDrawingAround", ShapeOf(0x400)},
        BadArtCase{"NoDataOfTheDrawing", ContainerOf(0xF002, ShapeOf(0x400))},
        BadArtCase{"ChildBeyondItsContainer",
                   DrawingOf(1, 1, 0x400, LongNumbers({0xF00A0012, 80})) + std::string(90, 'x')},
        BadArtCase{"ShapeWithoutId", DrawingOf(1, 1, 0x400, ArtOf(0xF00A, "abc"))},
        BadArtCase{"RuleWithoutShapes", DrawingOf(1, 1, 0x400, ArtOf(0xF012, "abcdefgh"))},
        BadArtCase{"MorePropertiesThanBytes", DrawingOf(1, 1, 0x400, ArtOf(0xF00B, "abcdef", 2))},
        BadArtCase{"TwoDrawingDatas", DrawingOf(1, 1, 0x400, ArtOf(0xF008, "abcdefgh"))}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST(DrawingPlacesTest, ContainersInContainersAreReadWithoutRecursion)
{
    std::string nested;
    for (std::uint32_t i = 20'000; i-- > 0;)
        nested += LongNumbers({0xF003000F, 8 * i});
    const auto sheet = SheetOf(DrawingRecord(DrawingOf(1, 0, 0x400, nested)));
    EXPECT_TRUE(FindDrawings(sheet).understood);
}

} // namespace
} // namespace orrery::xls
