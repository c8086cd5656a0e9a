#include "engines/builtin/common/text_patch.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orrery::builtin {
namespace {

struct Edit {
    std::size_t begin;
    std::size_t end;
    std::string text;
};

struct PatchCase {
    const char* name;
    std::vector<Edit> edits;
    std::string expected;
};

constexpr std::string_view kText = "0123456789";

class TextPatchTest : public testing::TestWithParam<PatchCase> {};

TEST_P(TextPatchTest, Applies)
{
    TextPatch patch;
    for (const Edit& edit : GetParam().edits)
        patch.Replace(edit.begin, edit.end, edit.text);
    EXPECT_EQ(patch.Apply(kText), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Edits, TextPatchTest,
    testing::Values(
        PatchCase{"NothingKeepsTheText", {}, "0123456789"},
        PatchCase{"Replaces", {{2, 4, "ab"}}, "01ab456789"},
        PatchCase{"Removes", {{2, 4, ""}}, "01456789"},
        PatchCase{"InsertsAtTheBeginning", {{0, 0, "a"}}, "a0123456789"},
        PatchCase{"InsertsAtTheEnd", {{10, 10, "a"}}, "0123456789a"},
        PatchCase{"ReplacesAll", {{0, 10, "a"}}, "a"},
        PatchCase{"OrderOfAddingDoesNotMatter", {{6, 7, "b"}, {2, 3, "a"}}, "01a345b789"},
        PatchCase{"NeighboursBothCount", {{2, 4, "a"}, {4, 6, "b"}}, "01ab6789"},
        PatchCase{
            "InsertionsKeepTheirOrder", {{5, 5, "a"}, {5, 5, "b"}, {5, 5, "c"}}, "01234abc56789"},
        PatchCase{"InsertionComesBeforeReplacement", {{5, 6, "r"}, {5, 5, "i"}}, "01234ir6789"},
        PatchCase{"InsertionComesAfterReplacementThatEndsThere",
                  {{5, 5, "i"}, {3, 5, "r"}},
                  "012ri56789"},
        PatchCase{"OuterWins", {{3, 4, "in"}, {2, 6, "out"}}, "01out6789"},
        PatchCase{"OuterWinsFromTheSameBegin", {{2, 4, "in"}, {2, 6, "out"}}, "01out6789"},
        PatchCase{"OuterWinsToTheSameEnd", {{4, 6, "in"}, {2, 6, "out"}}, "01out6789"},
        PatchCase{"OuterSwallowsInsertion", {{4, 4, "in"}, {2, 6, "out"}}, "01out6789"},
        PatchCase{"InsertionAtTheOutersBeginStays", {{2, 2, "i"}, {2, 6, "out"}}, "01iout6789"},
        PatchCase{"LastOfEqualRangesWins", {{2, 4, "a"}, {2, 4, "b"}}, "01b456789"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(TextPatch, AddsAnotherPatch)
{
    TextPatch patch;
    patch.Insert(5, "a");
    TextPatch other;
    other.Insert(5, "b");
    other.Remove(0, 1);
    patch.Add(std::move(other));
    EXPECT_EQ(patch.Apply(kText), "1234ab56789");
}

TEST(TextPatch, MapsAnOffsetToTheResult)
{
    TextPatch patch;
    patch.Replace(1, 3, "abcd");
    patch.Remove(2, 3); // inside
    patch.Insert(5, "ef");
    patch.Replace(5, 7, "g");
    EXPECT_EQ(patch.Apply(kText), "0abcd34efg789");
    EXPECT_EQ(patch.PlaceOf(0), 0U);
    EXPECT_EQ(patch.PlaceOf(1), 1U);
    EXPECT_EQ(patch.PlaceOf(3), 5U);
    EXPECT_EQ(patch.PlaceOf(4), 6U);
    EXPECT_EQ(patch.PlaceOf(5), 9U);
    EXPECT_EQ(patch.PlaceOf(7), 10U);
    EXPECT_EQ(patch.PlaceOf(10), 13U);
}

TEST(TextPatch, KnowsWhetherItIsEmpty)
{
    TextPatch patch;
    EXPECT_TRUE(patch.Empty());
    patch.Add(TextPatch());
    EXPECT_TRUE(patch.Empty());
    patch.Insert(0, "");
    EXPECT_FALSE(patch.Empty());
}

} // namespace
} // namespace orrery::builtin
