#include "model/name_lists.h"
#include "util/error.h"

#include <gtest/gtest.h>

namespace orrery::model {
namespace {

WeekdayNameList::Names Numbered(int number)
{
    WeekdayNameList::Names names;
    for (std::string& name : names)
        name = "w" + std::to_string(number);
    return names;
}

TEST(NameLists, StartsEmpty)
{
    const WeekdayNameList lists;
    EXPECT_EQ(lists.Count(), 0);
    EXPECT_EQ(lists.Name(256, 6), "");
    EXPECT_LT(lists.Find(Numbered(0)), 0);
}

TEST(NameLists, CountsStoredListsAndKeepsGaps)
{
    WeekdayNameList lists;
    lists.Store(0, Numbered(0));
    lists.Store(2, Numbered(2));
    EXPECT_EQ(lists.Count(), 2);
    EXPECT_EQ(lists.Name(1, 0), "");
    EXPECT_EQ(lists.Name(2, 6), "w2");
    EXPECT_EQ(lists.Find(Numbered(2)), 2) << "also beyond the count";
    EXPECT_LT(lists.Find({}), 0) << "a gap is no list of empty names";
}

TEST(NameLists, AddsAtTheCountOverExistingLists)
{
    WeekdayNameList lists;
    lists.Store(0, Numbered(0));
    lists.Store(2, Numbered(2));
    EXPECT_EQ(lists.Add(Numbered(7)), 2);
    EXPECT_EQ(lists.Count(), 3);
    EXPECT_EQ(lists.Name(2, 0), "w7");
    EXPECT_LT(lists.Find(Numbered(2)), 0);
}

TEST(NameLists, AListThatTakesAnothersPlaceHasNotItsTitle)
{
    WeekdayNameList lists;
    lists.Store(0, Numbered(0));
    lists.Store(2, Numbered(2));
    lists.SetTitle(0, "Zero");
    lists.SetTitle(2, "Two");
    ASSERT_EQ(lists.Add(Numbered(7)), 2);
    EXPECT_EQ(lists.Title(2), "");
    EXPECT_EQ(lists.Title(0), "Zero");
}

TEST(NameLists, FindsTheFirstEqualList)
{
    WeekdayNameList lists;
    for (const int number : {1, 2, 2})
        lists.Add(Numbered(number));
    EXPECT_EQ(lists.Find(Numbered(2)), 1);
    auto names = Numbered(2);
    names[6] = "W2";
    EXPECT_LT(lists.Find(names), 0) << "case matters";
}

TEST(NameLists, Holds257Lists)
{
    WeekdayNameList lists;
    for (int i = 0; i < 257; ++i)
        EXPECT_EQ(lists.Add(Numbered(i)), i);
    EXPECT_THROW(lists.Add(Numbered(257)), util::OutOfRangeError);
    EXPECT_EQ(lists.Count(), 257);
    EXPECT_EQ(lists.Name(256, 0), "w256");
}

TEST(NameLists, HasLimits)
{
    WeekdayNameList lists;
    EXPECT_THROW(lists.At(257), util::OutOfRangeError);
    EXPECT_THROW(lists.At(-1), util::OutOfRangeError);
    EXPECT_THROW(lists.Name(0, 7), util::OutOfRangeError);
    EXPECT_THROW(lists.Name(0, -1), util::OutOfRangeError);
    EXPECT_THROW(lists.Store(257, {}), util::OutOfRangeError);
    EXPECT_EQ(lists.Count(), 0);
}

TEST(NameLists, AppendsBehindAllLists)
{
    WeekdayNameList lists;
    lists.Store(0, Numbered(1));
    lists.Store(4, Numbered(2));
    EXPECT_EQ(lists.Append(Numbered(3), "Mine"), 5);
    EXPECT_EQ(lists.Count(), 6);
    EXPECT_EQ(lists.At(4), Numbered(2));
    EXPECT_EQ(lists.Title(5), "Mine");
    while (lists.HasRoom())
        lists.Append(Numbered(4), "");
    EXPECT_EQ(lists.Count(), 257);
    EXPECT_THROW(lists.Append(Numbered(5), ""), util::OutOfRangeError);
}

TEST(NameLists, RemovesAllLists)
{
    WeekdayNameList lists;
    lists.Add(Numbered(1));
    lists.Clear();
    EXPECT_EQ(lists.Count(), 0);
    EXPECT_EQ(lists.Name(0, 0), "");
}

TEST(SplitNames, TrimsTheFirstNames)
{
    EXPECT_EQ(SplitNames<7>(" a,b , c,d,e,f,g g,h"),
              (WeekdayNameList::Names{"a", "b", "c", "d", "e", "f", "g g"}));
    EXPECT_EQ(SplitNames<7>(",,,,,,"), WeekdayNameList::Names{});
    EXPECT_EQ(SplitNames<7>("a,b,c,d,e,f"), std::nullopt);
    EXPECT_EQ(SplitNames<7>(""), std::nullopt);
    EXPECT_EQ(SplitNames<12>("1,2,3,4,5,6,7,8,9,10,11,12")->back(), "12");
    EXPECT_EQ(SplitNames<12>("1,2,3,4,5,6,7,8,9,10,11"), std::nullopt);
}

} // namespace
} // namespace orrery::model
