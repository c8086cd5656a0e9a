#include "look/layout/pages/page_breaks.h"

#include <gtest/gtest.h>

namespace orrery::look {
namespace {

using Pages = std::vector<PageSpan>;

PageDivision Division(std::int32_t first, std::vector<double> sizes)
{
    PageDivision division;
    division.first = first;
    division.sizes = std::move(sizes);
    return division;
}

TEST(DivideIntoPages, FillsPages)
{
    EXPECT_EQ(DivideIntoPages(Division(2, {40, 40, 40, 40, 40}), 100, 9),
              (Pages{{2, 3}, {4, 5}, {6, 6}}));
    EXPECT_EQ(DivideIntoPages(Division(1, {50, 50}), 100, 9), (Pages{{1, 2}}));
}

TEST(DivideIntoPages, APageHasAtLeastOne)
{
    EXPECT_EQ(DivideIntoPages(Division(1, {400, 10, 400}), 100, 9),
              (Pages{{1, 1}, {2, 2}, {3, 3}}));
}

TEST(DivideIntoPages, HiddenOnesTakeNoRoom)
{
    EXPECT_EQ(DivideIntoPages(Division(1, {0, 100, 0, 100}), 100, 9), (Pages{{1, 3}, {4, 4}}));
    EXPECT_EQ(DivideIntoPages(Division(1, {0, 0}), 100, 9), Pages());
}

TEST(DivideIntoPages, BreaksBeginPages)
{
    PageDivision division = Division(3, {10, 10, 10, 10});
    division.breaks = {1, 3, 5, 6, 90};
    EXPECT_EQ(DivideIntoPages(division, 100, 9), (Pages{{3, 4}, {5, 5}, {6, 6}}));
}

TEST(DivideIntoPages, TitlesTakeRoomOnLaterPages)
{
    PageDivision division = Division(1, {40, 30, 30, 30, 30, 30});
    division.lastTitle = 1;
    division.titleSize = 40;
    EXPECT_EQ(DivideIntoPages(division, 100, 9), (Pages{{1, 3}, {4, 5}, {6, 6}}));
}

TEST(DivideIntoPages, EndsAfterTheMostPages)
{
    EXPECT_EQ(DivideIntoPages(Division(1, std::vector<double>(1000, 60)), 100, 3),
              (Pages{{1, 1}, {2, 2}, {3, 3}}));
}

} // namespace
} // namespace orrery::look
