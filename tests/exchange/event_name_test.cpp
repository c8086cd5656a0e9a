#include "exchange/event_name.h"

#include "util/text.h"

#include <gtest/gtest.h>

namespace orrery::exchange {
namespace {

struct NameCase {
    const char* name;
    std::string_view text;
    std::string_view expected;
};
class CleanNameTest : public testing::TestWithParam<NameCase> {};

TEST_P(CleanNameTest, MakesOneTrimmedLine)
{
    EXPECT_EQ(CleanName(GetParam().text), GetParam().expected);
    EXPECT_EQ(CleanName(GetParam().expected), GetParam().expected);
}

using namespace std::string_view_literals;

INSTANTIATE_TEST_SUITE_P(
    Texts, CleanNameTest,
    testing::Values(NameCase{"Plain", "Summer party, late", "Summer party, late"},
                    NameCase{"Blanks", " \t Ben\t ", "Ben"},
                    NameCase{"BlanksInside", "Ben  and Anna", "Ben  and Anna"},
                    NameCase{"WideBlanks",
                             "\xC2\xA0\xE3\x80\x80"
                             "Ben\xC2\xA0\xEF\xBB\xBF",
                             "Ben"},
                    NameCase{"Lines", "Summer\r\nparty\n", "Summer party"},
                    NameCase{"Separators", "Summer\xE2\x80\xA8party", "Summer party"},
                    NameCase{"Controls",
                             "a\0b\x1B\x7F\xC2\x85"
                             "c"sv,
                             "a b c"},
                    NameCase{"OnlyBlanks", " \r\n\t\xC2\xA0", ""},
                    NameCase{"NotUtf8", "Caf\xE9", "Caf\xC3\xA9"}),
    [](const auto& parameter) { return std::string(parameter.param.name); });

TEST(CleanName, EndsAfterTheMostCharacters)
{
    const std::string umlauts = [] {
        std::string text;
        for (int i = 0; i < 400; ++i)
            text += "\xC3\xA4";
        return text;
    }();
    const std::string name = CleanName(umlauts);
    EXPECT_EQ(name.size(), 2 * kMostNameCharacters);
    EXPECT_TRUE(util::IsValidUtf8(name));
}

} // namespace
} // namespace orrery::exchange
