#include "engines/builtin/xlsx/shape_ids.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace orrery::xlsx {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct BlocksCase {
    const char* name;
    const char* vml;
    std::set<std::uint32_t> blocks;
};
class FindShapeBlocksTest : public testing::TestWithParam<BlocksCase> {};
TEST_P(FindShapeBlocksTest, ReadsListsAndShapes)
{
    EXPECT_EQ(FindShapeBlocks(GetParam().vml), GetParam().blocks);
}
INSTANTIATE_TEST_SUITE_P(
    Drawings, FindShapeBlocksTest,
    testing::Values(
        BlocksCase{"Listed", R"(<o:idmap v:ext="edit" data="1"/>)", {1}},
        BlocksCase{"Several", R"(<o:idmap v:ext="edit" data='2,5, 7'/>)", {2, 5, 7}},
        BlocksCase{"OfAShape", R"(<v:shape id="_x0000_s3073"/>)", {3}},
        BlocksCase{"Both", R"(<o:idmap data="1"/><v:shape o:spid="_x0000_s2049"/>)", {1, 2}},
        BlocksCase{"NumberedFrom1", R"(<o:idmap data="1"/><v:shape id="_x0000_s0001"/>)", {1}},
        BlocksCase{"ShapeTypesHaveNone", R"(<v:shapetype id="_x0000_t2049"/>)", {}},
        BlocksCase{"BeyondTheLast", R"(<o:idmap data="65526,4294967295,99999999999"/>)", {}},
        BlocksCase{"CutOff", R"(<o:idmap data="4)", {4}},
        BlocksCase{"NoList", "<o:idmap data=", {}},
        BlocksCase{"DataOfAnotherTag", R"(<o:idmap v:ext="edit"/><x data="4"/>)", {}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ShapeBlocksTest, ListsWithoutAnEndAreReadOnce)
{
    std::string vml;
    for (int i = 0; i < 1'000'000; ++i)
        vml += "<o:idmap ";
    EXPECT_THAT(FindShapeBlocks(vml), IsEmpty()) << "and not in hours";
}

TEST(MoveShapesTest, ReplacesNumbersOfTheBlocksAndTheirList)
{
    const std::string vml =
        R"(<o:idmap v:ext="edit" data="1,4"/><v:shapetype id="_x0000_t202"/>)"
        R"(<v:shape id="_x0000_s1025" type="#_x0000_t202"/><v:shape id="LH" o:spid="_x0000_s5119"/>)"
        R"(<o:r idref="#_x0000_s1025"/><v:shape id="_x0000_s0001"/><v:shape id="_x0000_s2049"/>)";
    EXPECT_EQ(
        MoveShapes(vml, {{1, 9}, {4, 10}}).Apply(vml),
        R"(<o:idmap v:ext="edit" data="9,10"/><v:shapetype id="_x0000_t202"/>)"
        R"(<v:shape id="_x0000_s9217" type="#_x0000_t202"/><v:shape id="LH" o:spid="_x0000_s11263"/>)"
        R"(<o:r idref="#_x0000_s9217"/><v:shape id="_x0000_s0001"/><v:shape id="_x0000_s2049"/>)");
}

TEST(MoveShapesTest, FindsTheShapesOfADrawingPart)
{
    const std::string xml = R"(<d><cNvPr id="1025"><compatExt spid="_x0000_s1025"/></cNvPr>)"
                            R"(<cNvPr id="1026"/><stCxn id="1025"/><endCxn id="2"/></d>)";
    EXPECT_EQ(MoveShapesOfDrawing(xml, "/drawing1.xml", {{1, 3}}).Apply(xml),
              R"(<d><cNvPr id="3073"><compatExt spid="_x0000_s3073"/></cNvPr>)"
              R"(<cNvPr id="1026"/><stCxn id="3073"/><endCxn id="2"/></d>)");
    EXPECT_TRUE(MoveShapesOfDrawing(xml, "/drawing1.xml", {{2, 3}}).Empty());
}

} // namespace
} // namespace orrery::xlsx
