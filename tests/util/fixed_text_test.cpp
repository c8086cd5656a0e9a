#include "util/fixed_text.h"

#include <gtest/gtest.h>

#include <array>

namespace orrery::util {
namespace {

struct Row {
    int number;
    FixedText<5> name;
};

constexpr std::array<Row, 3> kRows{{{1, "first"}, {2, "b"}, {3, ""}}};

TEST(FixedText, IsTheTextThatItWasMadeOf)
{
    EXPECT_EQ(std::string_view(kRows[0].name), "first");
    EXPECT_EQ(std::string_view(kRows[1].name), "b");
    EXPECT_EQ(std::string_view(kRows[2].name), "");
}

TEST(FixedText, IsComparedByItsWholeText)
{
    EXPECT_TRUE(kRows[1].name == "b");
    EXPECT_FALSE(kRows[1].name == "bc");
    EXPECT_FALSE(kRows[0].name == "firs");
}

TEST(FixedText, LiesWhereItIsDeclared)
{
    const std::string_view text = kRows[0].name;
    const auto* const row = reinterpret_cast<const char*>(kRows.data());
    EXPECT_GE(text.data(), row);
    EXPECT_LE(text.data() + text.size(), row + sizeof(Row));
}

} // namespace
} // namespace orrery::util
