#include "look/layout/bidi.h"

#include <gtest/gtest.h>

#include <string>

namespace orrery::look {
namespace {

/// The runs from left to right, those that are read from right to left in brackets.
std::string Seen(const std::string& text, bool isRightToLeft)
{
    std::string seen;
    for (const DirectionalRun& run : VisualRuns(text, {0, text.size()}, isRightToLeft)) {
        const std::string part = text.substr(run.span.begin, run.span.end - run.span.begin);
        seen += run.isRightToLeft ? "<" + part + ">" : part + "|";
    }
    return seen;
}

// As the bidirectional algorithm orders them: UAX #9, with alef and bet as letters.
TEST(VisualRuns, OrdersTextFromLeftToRight)
{
    EXPECT_EQ(Seen("abc", false), "abc|");
    EXPECT_EQ(Seen("ab אב cd", false), "ab |<אב> cd|");
    EXPECT_EQ(Seen("ab אב בא", false), "ab |<אב בא>");
    EXPECT_EQ(Seen("אב 12 בא", false), "< בא>12|<אב >");
}

TEST(VisualRuns, OrdersTextFromRightToLeft)
{
    EXPECT_EQ(Seen("אב", true), "<אב>");
    EXPECT_EQ(Seen("אב cd", true), "cd|<אב >");
    EXPECT_EQ(Seen("אב 31 cd", true), "31 cd|<אב >");
    EXPECT_EQ(Seen("12", true), "12|");
    EXPECT_EQ(Seen("", true), "");
}

} // namespace
} // namespace orrery::look
