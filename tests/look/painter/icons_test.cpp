#include "look/painter/icons.h"
#include "recording_canvas.h"

#include <gmock/gmock.h>

#include <set>

namespace orrery::look {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr Box kIconBox{0, 0, 100, 100};

struct IconSetCase {
    const char* name;
    int count;
};
class IconSetTest : public testing::TestWithParam<IconSetCase> {};

/// ECMA-376 18.18.42: the number of icons begins each name.
TEST_P(IconSetTest, HasItsIconsAllDifferent)
{
    std::set<std::vector<std::string>> seen;
    for (int i = 0; i < GetParam().count; ++i) {
        RecordingCanvas canvas;
        PaintIcon({GetParam().name, i}, kIconBox, canvas);
        EXPECT_THAT(canvas.lines, Contains(HasSubstr("path"))) << i;
        EXPECT_TRUE(seen.insert(canvas.lines).second) << i;
    }
    for (const int outside : {-1, GetParam().count}) {
        RecordingCanvas canvas;
        PaintIcon({GetParam().name, outside}, kIconBox, canvas);
        EXPECT_TRUE(canvas.lines.empty());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Names, IconSetTest,
    testing::Values(
        IconSetCase{"3Arrows", 3}, IconSetCase{"3ArrowsGray", 3}, IconSetCase{"3Flags", 3},
        IconSetCase{"3TrafficLights1", 3}, IconSetCase{"3TrafficLights2", 3},
        IconSetCase{"3Signs", 3}, IconSetCase{"3Symbols", 3}, IconSetCase{"3Symbols2", 3},
        IconSetCase{"3Stars", 3}, IconSetCase{"3Triangles", 3}, IconSetCase{"4Arrows", 4},
        IconSetCase{"4ArrowsGray", 4}, IconSetCase{"4RedToBlack", 4}, IconSetCase{"4Rating", 4},
        IconSetCase{"4TrafficLights", 4}, IconSetCase{"5Arrows", 5}, IconSetCase{"5ArrowsGray", 5},
        IconSetCase{"5Rating", 5}, IconSetCase{"5Quarters", 5}, IconSetCase{"5Boxes", 5}),
    [](const auto& test) { return "Set" + std::string(test.param.name); });

TEST(PaintIconTest, TheWorstArrowPointsDown)
{
    RecordingCanvas canvas;
    PaintIcon({"3Arrows", 0}, kIconBox, canvas);
    EXPECT_EQ(canvas.lines.front(), "rotate 50 50 180");
    PaintIcon({"3Arrows", 1}, kIconBox, canvas);
    EXPECT_EQ(canvas.All("rotate").back(), "rotate 50 50 90"); // to the right
}

TEST(PaintIconTest, RatingsFillMoreAndMoreBars)
{
    for (int i = 0; i < 5; ++i) {
        RecordingCanvas canvas;
        PaintIcon({"5Rating", i}, kIconBox, canvas);
        int full = 0;
        for (const auto& line : canvas.All("path"))
            full += line.find("#d0d0d0") == std::string::npos ? 1 : 0;
        EXPECT_EQ(full, i);
    }
}

TEST(PaintIconTest, AnUnknownSetIsNothing)
{
    RecordingCanvas canvas;
    PaintIcon({"NoIcons", 0}, kIconBox, canvas);
    EXPECT_TRUE(canvas.lines.empty());
}

} // namespace
} // namespace orrery::look
