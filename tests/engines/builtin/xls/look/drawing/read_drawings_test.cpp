#include "engines/builtin/xls/look/drawing/read_drawings.h"

#include "engines/builtin/xls/look/drawing/art_tree.h"

#include "xls/look/sheet_drawing_builder.h"
#include "xls/look/test_styles.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;
using namespace std::string_literals;

const std::string kAnchor = AnchorOf({1, 512, 2, 64, 5, 1024, 6, 0});

class ReadDrawingsTest : public testing::Test {
protected:
    std::vector<book::Drawing> Read(const ArtPieces& shapes, std::string_view group = {})
    {
        stream_ = WorkbookWith(group, SheetWith(shapes));
        const Globals globals(stream_);
        const FormulaNames names(globals);
        return DrawingReader(globals, names, StylesForTests())
            .Read(globals.Sheets()[0].Offset, leftOut_);
    }

    /// The records of a drawing group with a PNG.
    static std::string OnePicture()
    {
        const auto entry =
            ArtOf(0xF007,
                  std::string(36, '\0') + ArtOf(0xF01E, std::string(17, 'd') + "png", 0x6E0), 6, 2);
        return RecordOf(RecordType::MsoDrawingGroup,
                        ContainerOf(0xF000, ContainerOf(0xF001, entry)));
    }

    std::string stream_;
    std::vector<book::LeftOut> leftOut_;
};

TEST_F(ReadDrawingsTest, PlacesShapesOnTheSheet)
{
    const auto drawings = Read(ShapePieces(3, kAnchor, ObjectOf(3, 4)));
    ASSERT_EQ(drawings.size(), 1U);
    const book::Drawing& drawing = drawings[0];
    EXPECT_EQ(drawing.kind, book::DrawingKind::Shape);
    EXPECT_EQ(drawing.geometry, "ellipse");
    EXPECT_EQ(drawing.name, "AutoShape 4");
    EXPECT_EQ(drawing.anchor.from.cell, (book::CellAddress{3, 2}));
    EXPECT_EQ(drawing.anchor.from.shareX, 0.5);
    EXPECT_EQ(drawing.anchor.from.shareY, 0.25);
    ASSERT_TRUE(drawing.anchor.to);
    EXPECT_EQ(drawing.anchor.to->cell, (book::CellAddress{7, 6}));
    EXPECT_EQ(drawing.anchor.to->shareX, 1);
    EXPECT_FALSE(drawing.isAnchorTurned);
    EXPECT_TRUE(leftOut_.empty());
}

TEST_F(ReadDrawingsTest, SaysThatAnAnchorIsTurned)
{
    const auto drawings =
        Read(ShapePieces(1, kAnchor + PropertiesOf({{0x0004, 0x005A0000}}), ObjectOf(2)));
    ASSERT_EQ(drawings.size(), 1U);
    EXPECT_EQ(drawings[0].rotation, 90);
    EXPECT_TRUE(drawings[0].isAnchorTurned);
}

TEST_F(ReadDrawingsTest, ResolvesTheCoordinatesOfGroups)
{
    const auto turned = ChildAnchorOf({100, 100, 140, 120}) + PropertiesOf({{0x0004, 0x005A0000}});
    const auto inner = GroupPieces({0, 0, 8, 8}, ChildAnchorOf({200, 100, 300, 200}),
                                   ShapePieces(1, ChildAnchorOf({2, 4, 6, 8}), ObjectOf(2)));
    const auto drawings =
        Read(GroupPieces({100, 100, 300, 300}, kAnchor,
                         ShapePieces(1, ChildAnchorOf({100, 150, 150, 300}), ObjectOf(2)) + inner +
                             ShapePieces(1, turned, ObjectOf(2))));
    ASSERT_EQ(drawings.size(), 1U);
    EXPECT_EQ(drawings[0].kind, book::DrawingKind::Group);
    EXPECT_FALSE(drawings[0].fill);
    ASSERT_EQ(drawings[0].children.size(), 3U);
    EXPECT_EQ(drawings[0].children[0].place, (book::ShareBox{0, 0.25, 0.25, 1}));
    EXPECT_EQ(drawings[0].children[1].place, (book::ShareBox{0.5, 0, 1, 0.5}));
    ASSERT_EQ(drawings[0].children[1].children.size(), 1U);
    EXPECT_EQ(drawings[0].children[1].children[0].place, (book::ShareBox{0.25, 0.5, 0.75, 1}));
    // 40 by 20 as it lies on its side, so 20 by 40 around (120, 110)
    EXPECT_EQ(drawings[0].children[2].place, (book::ShareBox{0.05, -0.05, 0.15, 0.15}));
}

TEST_F(ReadDrawingsTest, ReadsTextsWithRunsAndAlignment)
{
    const auto drawings =
        Read(ShapePieces(202, kAnchor + PropertiesOf({{0x0081, 12700}}), ObjectOf(6),
                         TextOf("one\ntwo three", 2 << 1 | 3 << 4, {{0, 5}, {8, 6}}, 3)));
    ASSERT_EQ(drawings.size(), 1U);
    EXPECT_EQ(drawings[0].name, "Text Box 1");
    ASSERT_TRUE(drawings[0].text);
    const book::TextBody& body = *drawings[0].text;
    EXPECT_EQ(body.vertical, book::VerticalAlignment::Bottom);
    EXPECT_EQ(body.rotation, 90);
    EXPECT_EQ(body.left, 1);
    EXPECT_EQ(body.right, 7.2);
    ASSERT_EQ(body.paragraphs.size(), 2U);
    EXPECT_EQ(body.paragraphs[0].alignment, book::HorizontalAlignment::Center);
    ASSERT_EQ(body.paragraphs[0].runs.size(), 1U);
    EXPECT_EQ(body.paragraphs[0].runs[0].text, "one");
    EXPECT_EQ(body.paragraphs[0].runs[0].font.size, 5);
    ASSERT_EQ(body.paragraphs[1].runs.size(), 2U);
    EXPECT_EQ(body.paragraphs[1].runs[0].text, "two ");
    EXPECT_EQ(body.paragraphs[1].runs[1].text, "three");
    EXPECT_EQ(body.paragraphs[1].runs[1].font.size, 6);
}

TEST_F(ReadDrawingsTest, ShowsPicturesAndWhatCannotBeShown)
{
    const auto with = [](std::uint32_t number) {
        return kAnchor + PropertiesOf({{0x4104, number}, {0x0102, 0x8000}});
    };
    const auto drawings =
        Read(ShapePieces(75, with(1), ObjectOf(8)) + ShapePieces(75, with(2), ObjectOf(8, 2)) +
                 ShapePieces(75, kAnchor, ObjectOf(8, 3)),
             OnePicture());
    ASSERT_EQ(drawings.size(), 3U);
    EXPECT_EQ(drawings[0].kind, book::DrawingKind::Picture);
    ASSERT_NE(drawings[0].picture, nullptr);
    EXPECT_EQ(*drawings[0].picture, "png");
    EXPECT_EQ(drawings[0].pictureType, "png");
    EXPECT_EQ(drawings[0].crop.left, 0.5);
    EXPECT_FALSE(drawings[0].outline.isVisible);
    EXPECT_EQ(drawings[1].kind, book::DrawingKind::Placeholder);
    EXPECT_EQ(drawings[1].description, "picture");
    EXPECT_EQ(drawings[2].kind, book::DrawingKind::Placeholder);
    EXPECT_EQ(drawings[2].description, "object");
    ASSERT_EQ(leftOut_.size(), 1U);
    EXPECT_EQ(leftOut_[0].what, "picture");
}

TEST_F(ReadDrawingsTest, LeavesOutWhatIsNotShown)
{
    const auto hidden = kAnchor + PropertiesOf({{0x03BF, 0x00020002}});
    const auto drawings =
        Read(ShapePieces(202, kAnchor, ObjectOf(0x19), TextOf("a note")) +
             ShapePieces(201, kAnchor, ObjectOf(0x14, 2, 0x0100)) +
             ShapePieces(1, hidden, ObjectOf(2, 3)) +
             ShapePieces(1, kAnchor, ObjectOf(2, 4), {}, ArtShape::kDeleted) +
             ShapePieces(1, {}, ObjectOf(2, 5)) + ShapePieces(20, kAnchor, ObjectOf(1, 6)));
    ASSERT_EQ(drawings.size(), 1U);
    EXPECT_EQ(drawings[0].kind, book::DrawingKind::Line);
    EXPECT_TRUE(leftOut_.empty());
}

TEST_F(ReadDrawingsTest, ShowsControlsWithTheirTexts)
{
    const auto drawings = Read(ShapePieces(201, kAnchor, ObjectOf(7), TextOf("Go")) +
                               ShapePieces(201, kAnchor, ObjectOf(0x0B, 2)));
    ASSERT_EQ(drawings.size(), 2U);
    EXPECT_EQ(drawings[0].kind, book::DrawingKind::Control);
    EXPECT_EQ(drawings[0].description, "button");
    EXPECT_FALSE(drawings[0].fill) << "a control has the look of the system";
    EXPECT_EQ(drawings[0].text->paragraphs[0].runs[0].text, "Go");
    EXPECT_EQ(drawings[1].description, "check box");
}

TEST_F(ReadDrawingsTest, WritesWordArtAsText)
{
    const std::string text = "A\0r\0t\0\0\0"s;
    std::string table;
    AppendU16(table, 0x80C0);
    AppendU32(table, 8);
    AppendU16(table, 0x00C3);
    AppendU32(table, 20 << 16);
    AppendU16(table, 0x0181);
    AppendU32(table, 0x0000FF);
    const auto drawings =
        Read(ShapePieces(136, kAnchor + ArtOf(0xF00B, table + text, 3, 3), ObjectOf(0x1E)));
    ASSERT_EQ(drawings.size(), 1U);
    EXPECT_FALSE(drawings[0].fill);
    EXPECT_FALSE(drawings[0].outline.isVisible);
    ASSERT_TRUE(drawings[0].text);
    const book::ParagraphRun& run = drawings[0].text->paragraphs[0].runs[0];
    EXPECT_EQ(run.text, "Art");
    EXPECT_EQ(run.font.size, 20);
    EXPECT_EQ(run.font.color, (book::Color{0xFF, 0, 0}));
}

TEST_F(ReadDrawingsTest, ReadsCharts)
{
    const auto chart = BofOf(0x20) + RecordOf(static_cast<RecordType>(0x1002), "") + EofRecord();
    const auto drawings = Read(ShapePieces(201, kAnchor, ObjectOf(5, 3) + chart) +
                               ShapePieces(201, kAnchor, ObjectOf(5, 4)));
    ASSERT_EQ(drawings.size(), 2U);
    EXPECT_EQ(drawings[0].kind, book::DrawingKind::Chart);
    EXPECT_NE(drawings[0].chart, nullptr);
    EXPECT_EQ(drawings[0].name, "Chart 3");
    EXPECT_EQ(drawings[1].kind, book::DrawingKind::Placeholder);
    ASSERT_EQ(leftOut_.size(), 1U);
    EXPECT_EQ(leftOut_[0].what, "chart");
}

TEST_F(ReadDrawingsTest, ReportsWhatIsTooMuch)
{
    ArtPieces many;
    for (std::size_t i = 0; i < ArtTree::kMaxShapes + 1; ++i)
        many.push_back(ShapePieces(1, kAnchor, ObjectOf(2)).front());
    EXPECT_EQ(Read(many).size(), ArtTree::kMaxShapes);
    ASSERT_EQ(leftOut_.size(), 1U);
    EXPECT_EQ(leftOut_[0].what, "drawing");
}

TEST_F(ReadDrawingsTest, CutsTextsOfVeryManyParagraphs)
{
    const std::string lines(8000, '\n');
    ArtPieces many;
    for (int i = 0; i < 20; ++i)
        many = many + ShapePieces(202, kAnchor, ObjectOf(6), TextOf(lines));
    std::size_t count = 0;
    for (const book::Drawing& drawing : Read(many))
        count += drawing.text ? drawing.text->paragraphs.size() : 0;
    EXPECT_GE(count, 90000U);
    EXPECT_LE(count, 101000U);
    ASSERT_EQ(leftOut_.size(), 1U);
    EXPECT_EQ(leftOut_[0].what, "text");
}

TEST_F(ReadDrawingsTest, ReadsWhatIsThereOfDamagedSheets)
{
    const auto shapes = ShapePieces(202, kAnchor, ObjectOf(6), TextOf("abc")) +
                        GroupPieces({0, 0, 1, 1}, kAnchor,
                                    ShapePieces(1, ChildAnchorOf({0, 0, 1, 1}), ObjectOf(2)));
    EXPECT_EQ(Read(shapes).size(), 2U);
    const std::string whole = stream_;
    const Globals globals(whole);
    const FormulaNames names(globals);
    for (std::size_t at = globals.Sheets()[0].Offset; at < whole.size(); ++at) {
        for (const char value : {'\0', '\xFF'}) {
            std::string damaged = whole;
            damaged[at] = value;
            const Globals sameGlobals(damaged);
            const FormulaNames sameNames(sameGlobals);
            std::vector<book::LeftOut> leftOut;
            const auto drawings = DrawingReader(sameGlobals, sameNames, StylesForTests())
                                      .Read(sameGlobals.Sheets()[0].Offset, leftOut);
            EXPECT_LE(drawings.size(), 3U) << at;
        }
    }
}

} // namespace
} // namespace orrery::xls
