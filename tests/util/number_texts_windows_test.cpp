#include "util/numbers.h"

#include <clocale>
#include <gtest/gtest.h>

namespace orrery::util {
namespace {

TEST(NumberTextsWindowsTest, ThePointIsNoCommaInAnyLocale)
{
    ASSERT_NE(std::setlocale(LC_NUMERIC, "German_Germany.1252"), nullptr);
    EXPECT_STREQ(std::localeconv()->decimal_point, ",");
    EXPECT_EQ(DecimalText(2.5, 2), "2.50");
    EXPECT_EQ(ScientificText(RoundToDigits(2.5, 2)), "2.5e+00");
    std::setlocale(LC_NUMERIC, "C");
}

} // namespace
} // namespace orrery::util
