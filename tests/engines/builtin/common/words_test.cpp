#include "engines/builtin/common/words.h"

#include <gtest/gtest.h>

namespace orrery::builtin {
namespace {

enum class Side { Left, Right };

constexpr Words<Side, 2> kSides{{{"left", Side::Left}, {"right", Side::Right}}};

TEST(ValueOfWord, FindsTheWholeWord)
{
    EXPECT_EQ(ValueOfWord(kSides, "left"), Side::Left);
    EXPECT_EQ(ValueOfWord(kSides, "right"), Side::Right);
}

TEST(ValueOfWord, IsNothingForOthers)
{
    EXPECT_EQ(ValueOfWord(kSides, "Left"), std::nullopt);
    EXPECT_EQ(ValueOfWord(kSides, "rightmost"), std::nullopt);
    EXPECT_EQ(ValueOfWord(kSides, ""), std::nullopt);
}

} // namespace
} // namespace orrery::builtin
