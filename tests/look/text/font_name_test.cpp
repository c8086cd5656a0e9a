#include "look/text/font_name.h"

#include <gtest/gtest.h>

namespace orrery::look {
namespace {

struct MatchCase {
    const char* name;
    std::string_view font;
    OpenFont expected;
};

class MatchFontTest : public testing::TestWithParam<MatchCase> {};

TEST_P(MatchFontTest, FindsTheNearestOpenFont)
{
    EXPECT_EQ(MatchFont(GetParam().font).font, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Fonts, MatchFontTest,
    testing::Values(MatchCase{"AsWideAsCalibri", "Calibri", OpenFont::Carlito},
                    MatchCase{"WithoutCase", "CALIBRI light", OpenFont::Carlito},
                    MatchCase{"AsWideAsCambria", "Cambria", OpenFont::Caladea},
                    MatchCase{"AsWideAsArial", "arial", OpenFont::LiberationSans},
                    MatchCase{"StyleInTheName", "Arial Bold", OpenFont::LiberationSans},
                    MatchCase{"NarrowOne", "Arial Narrow", OpenFont::LiberationSansNarrow},
                    MatchCase{"AsWideAsTimes", "Times New Roman", OpenFont::LiberationSerif},
                    MatchCase{"AsWideAsCourier", "Courier New", OpenFont::LiberationMono},
                    MatchCase{"Verdana", "Verdana", OpenFont::DejaVuSans},
                    MatchCase{"Georgia", "Georgia", OpenFont::DejaVuSerif},
                    MatchCase{"Consolas", "Consolas", OpenFont::DejaVuSansMono},
                    MatchCase{"Unknown", "No such font", OpenFont::DejaVuSans},
                    MatchCase{"First", "andale mono", OpenFont::DejaVuSansMono},
                    MatchCase{"Empty", "", OpenFont::DejaVuSans}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(MatchFont, KnowsEastAsianFonts)
{
    EXPECT_TRUE(MatchFont("MS PGothic").isEastAsian);
    EXPECT_TRUE(MatchFont("@MS Gothic").isEastAsian);
    EXPECT_TRUE(MatchFont("宋体").isEastAsian);
    EXPECT_TRUE(MatchFont("ＭＳ Ｐゴシック").isEastAsian);
    EXPECT_TRUE(MatchFont("未知の書体").isEastAsian);
    EXPECT_FALSE(MatchFont("Arial").isEastAsian);
}

TEST(FontFamilies, NamesTheFontItsSubstituteAndTheKind)
{
    EXPECT_EQ(FontFamilies("Calibri"), "Calibri, Carlito, sans-serif");
    EXPECT_EQ(FontFamilies("Times New Roman"), "'Times New Roman', 'Liberation Serif', serif");
    EXPECT_EQ(FontFamilies("DejaVu Sans Mono"), "'DejaVu Sans Mono', monospace");
}

TEST(FontFamilies, LeavesOutWhatCouldEndTheName)
{
    EXPECT_EQ(FontFamilies("a'; x\"<b>"), "'a xb', 'DejaVu Sans', sans-serif");
    EXPECT_EQ(FontFamilies(""), "'DejaVu Sans', sans-serif");
    EXPECT_EQ(FontFamilies(std::string(100000, 'x')), "'DejaVu Sans', sans-serif");
}

} // namespace
} // namespace orrery::look
