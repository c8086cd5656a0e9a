#include "look/layout/pages/paper.h"

#include <gtest/gtest.h>

namespace orrery::look {
namespace {

void ExpectInches(PaperSize paper, double width, double height)
{
    EXPECT_NEAR(paper.width / 96, width, 1e-9);
    EXPECT_NEAR(paper.height / 96, height, 1e-9);
}

TEST(PaperOfNumber, KnowsTheNumbersOfTheFormat)
{
    ExpectInches(PaperOfNumber(1), 8.5, 11);
    ExpectInches(PaperOfNumber(5), 8.5, 14);
    ExpectInches(PaperOfNumber(8), 297 / 25.4, 420 / 25.4);
    ExpectInches(PaperOfNumber(9), 210 / 25.4, 297 / 25.4);
    ExpectInches(PaperOfNumber(70), 105 / 25.4, 148 / 25.4);
    ExpectInches(PaperOfNumber(90), 12, 11);
}

TEST(PaperOfNumber, AnUnknownOneIsLetter)
{
    ExpectInches(PaperOfNumber(0), 8.5, 11);
    ExpectInches(PaperOfNumber(48), 8.5, 11);
    ExpectInches(PaperOfNumber(-7), 8.5, 11);
    ExpectInches(PaperOfNumber(65535), 8.5, 11);
}

TEST(PaperOf, IsTurnedForLandscape)
{
    book::PageSetup setup;
    setup.isLandscape = true;
    ExpectInches(PaperOf(setup), 11, 8.5);
}

TEST(PaperOf, MayHaveASizeOfItsOwn)
{
    book::PageSetup setup;
    setup.paperWidth = 5;
    setup.paperHeight = 7;
    ExpectInches(PaperOf(setup), 5, 7);
    setup.paperHeight = 1e300;
    ExpectInches(PaperOf(setup), 8.5, 11);
}

} // namespace
} // namespace orrery::look
