#include "engines/builtin/xls/look/drawing/sheet_art.h"

#include "util/error.h"

#include "xls/look/sheet_drawing_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;
using namespace std::string_literals;

TEST(SheetArtTest, JoinsTheArtAndFindsObjectsAndTexts)
{
    const auto sheet =
        SheetWith(ShapePieces(1, {}, ObjectOf(2, 7), TextOf("abc", 0x0212, {{1, 5}})) +
                  ShapePieces(201, {}, ObjectOf(0x14, 8, 0x0100)));
    const SheetArt art = ReadSheetArt(sheet, 0);
    EXPECT_TRUE(art.isWhole);
    ASSERT_EQ(art.objects.size(), 2U);
    EXPECT_EQ(art.objects.begin()->second.id, 7);
    EXPECT_FALSE(art.objects.begin()->second.isOwnControl);
    EXPECT_EQ(art.objects.rbegin()->first, art.art.size());
    EXPECT_EQ(art.objects.rbegin()->second.kind, ObjectKind::DropDown);
    EXPECT_TRUE(art.objects.rbegin()->second.isOwnControl);
    ASSERT_EQ(art.texts.size(), 1U);
    const ObjectText& text = art.texts.begin()->second;
    EXPECT_EQ(art.texts.begin()->first, art.objects.begin()->first + 8);
    EXPECT_EQ(text.text, u"abc");
    ASSERT_EQ(text.runs.size(), 2U);
    EXPECT_EQ(text.runs[0].begin, 1);
    EXPECT_EQ(text.runs[0].font, 5);
}

TEST(SheetArtTest, JoinsTextsOfBothWidths)
{
    std::string text = RecordOf(RecordType::TextObject, Numbers({0x0212, 0, 0, 0, 0, 4, 8, 0, 0})) +
                       RecordOf(RecordType::Continue, "\0ab"s) +
                       RecordOf(RecordType::Continue, "\x01\xE5\x65"
                                                      "c\0"s) +
                       RecordOf(RecordType::Continue, Numbers({0, 6, 0, 0}));
    const auto sheet =
        SheetWith(ShapePieces(1, {}, ObjectOf(2), text) + ShapePieces(1, {}, ObjectOf(2, 9)));
    const SheetArt art = ReadSheetArt(sheet, 0);
    ASSERT_EQ(art.texts.size(), 1U);
    EXPECT_EQ(art.texts.begin()->second.text, u"ab\u65E5c");
    ASSERT_EQ(art.texts.begin()->second.runs.size(), 1U);
    EXPECT_EQ(art.texts.begin()->second.runs[0].font, 6);
    EXPECT_EQ(art.objects.size(), 2U);
}

TEST(SheetArtTest, FindsTheSubstreamOfAChart)
{
    const auto chart = BofOf(0x20) + RecordOf(RecordType::MsoDrawing, "other art") + EofRecord();
    const auto stream = "before"s + SheetWith(ShapePieces(201, {}, ObjectOf(5) + chart) +
                                              ShapePieces(1, {}, ObjectOf(2)));
    const SheetArt art = ReadSheetArt(stream, 6);
    ASSERT_EQ(art.objects.size(), 2U);
    const Span& place = art.objects.begin()->second.chart;
    EXPECT_EQ(place.In(stream), chart);
    EXPECT_TRUE(art.objects.rbegin()->second.chart.Empty());
    EXPECT_EQ(art.art.find("other"), std::string::npos);
}

TEST(SheetArtTest, HasNothingOfChartSheets)
{
    const auto stream =
        BofOf(0x20) + RecordOf(RecordType::MsoDrawing, "art") + ObjectOf(5) + EofRecord();
    EXPECT_TRUE(ReadSheetArt(stream, 0).art.empty());
}

TEST(SheetArtTest, EndsWhereRecordsEnd)
{
    const auto sheet =
        SheetWith(ShapePieces(1, {}, ObjectOf(2, 7), TextOf("abc")) + ShapePieces(1, {}, ""));
    for (std::size_t size = 0; size < sheet.size(); ++size) {
        const SheetArt art = ReadSheetArt(std::string_view(sheet).substr(0, size), 0);
        EXPECT_FALSE(art.isWhole);
        EXPECT_LE(art.objects.size(), 1U);
    }
}

TEST(ArtBytesTest, ReadsAcrossPieces)
{
    ArtStream art;
    art.Append("abc", 0);
    art.Append("de", 10);
    art.Append("f", 20);
    EXPECT_EQ(ArtBytes(art, 0, 6), "abcdef");
    EXPECT_EQ(ArtBytes(art, 2, 3), "cde");
    EXPECT_EQ(ArtBytes(art, 3, 1), "d");
    EXPECT_EQ(ArtBytes(art, 6, 0), "");
    EXPECT_THROW(ArtBytes(art, 5, 2), util::Error);
}

} // namespace
} // namespace orrery::xls
