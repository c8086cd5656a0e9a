#include "engines/builtin/xls/look/drawing/art_tree.h"

#include "xls/look/sheet_drawing_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;

std::string ArtIn(const ArtPieces& pieces)
{
    std::string art;
    for (const ArtPiece& piece : pieces)
        art += piece.art;
    return art;
}

/// A drawing's groups and shapes, the first shape standing for the sheet.
std::string Sheet(const ArtPieces& shapes)
{
    return ArtIn(InContainer(0xF002, InContainer(0xF003, ShapePieces(0, {}, {}, {}, 5) + shapes)));
}

TEST(ArtTreeTest, ListsShapesInOrder)
{
    const auto art = Sheet(ShapePieces(1, AnchorOf({1, 2, 3, 4, 5, 6, 7, 8}), {}) +
                           ShapePieces(3, {}, {}, "text", 0x40));
    const ArtTree tree = ReadArtTree(art);
    EXPECT_TRUE(tree.isWhole);
    ASSERT_EQ(tree.shapes.size(), 3U);
    EXPECT_EQ(tree.shapes[0].children, (std::vector<std::size_t>{1, 2}));
    EXPECT_EQ(tree.shapes[1].type, 1);
    ASSERT_TRUE(tree.shapes[1].anchor);
    EXPECT_EQ(tree.shapes[1].anchor->fields[7], 8);
    EXPECT_FALSE(tree.shapes[1].textAt);
    EXPECT_EQ(tree.shapes[2].flags, 0x40U);
    EXPECT_EQ(tree.shapes[2].textAt, art.size());
    EXPECT_EQ(tree.shapes[2].objectAt, art.size() - 8);
}

TEST(ArtTreeTest, NestsGroups)
{
    const auto inner = GroupPieces({0, 0, 10, 10}, ChildAnchorOf({1, 2, 3, 4}),
                                   ShapePieces(5, ChildAnchorOf({5, 6, 7, 8}), {}));
    const auto art = Sheet(GroupPieces({0, 0, 100, 100}, AnchorOf({0, 0, 0, 0, 1, 0, 1, 0}),
                                       inner + ShapePieces(6, {}, {})) +
                           ShapePieces(7, {}, {}));
    const ArtTree tree = ReadArtTree(art);
    ASSERT_EQ(tree.shapes.size(), 6U);
    EXPECT_EQ(tree.shapes[0].children, (std::vector<std::size_t>{1, 5}));
    EXPECT_EQ(tree.shapes[1].children, (std::vector<std::size_t>{2, 4}));
    EXPECT_EQ(tree.shapes[2].children, (std::vector<std::size_t>{3}));
    EXPECT_TRUE(tree.shapes[1].isGroup);
    ASSERT_TRUE(tree.shapes[1].space);
    EXPECT_EQ(tree.shapes[1].space->right, 100);
    ASSERT_TRUE(tree.shapes[3].place);
    EXPECT_EQ(tree.shapes[3].place->bottom, 8);
}

TEST(ArtTreeTest, StopsAtTooManyShapes)
{
    ArtPieces shapes;
    for (std::size_t i = 0; i < ArtTree::kMaxShapes + 5; ++i)
        shapes.push_back(ShapePieces(1, {}, {}).front());
    const auto art = Sheet(shapes);
    const ArtTree tree = ReadArtTree(art);
    EXPECT_TRUE(tree.hasTooMany);
    EXPECT_EQ(tree.shapes[0].children.size(), ArtTree::kMaxShapes);
}

TEST(ArtTreeTest, StopsAtTooManyGroups)
{
    ArtPieces nested = ShapePieces(1, {}, {});
    for (std::size_t i = 0; i < 2000; ++i)
        nested = GroupPieces({0, 0, 1, 1}, {}, nested);
    const auto art = Sheet(nested);
    const ArtTree tree = ReadArtTree(art);
    EXPECT_TRUE(tree.isTooDeep);
    EXPECT_EQ(tree.shapes.size(), ArtTree::kMaxDepth + 1);
}

TEST(ArtTreeTest, ReadsWhatIsThereOfDamagedArt)
{
    const auto art = Sheet(ShapePieces(1, {}, {}) + ShapePieces(2, {}, {}));
    EXPECT_TRUE(ReadArtTree(art).isWhole);
    for (std::size_t size = 0; size < art.size(); ++size) {
        const ArtTree tree = ReadArtTree(std::string_view(art).substr(0, size));
        EXPECT_LE(tree.shapes.size(), 3U);
    }
    EXPECT_TRUE(ReadArtTree("").shapes.empty());
}

} // namespace
} // namespace orrery::xls
