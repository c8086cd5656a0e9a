#include "engines/builtin/xlsx/look/sheet/merge_reader.h"

#include "xlsx/look/sheet/read_sheet.h"

#include <chrono>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace orrery::xlsx {
namespace {

using book::CellRange;

bool Overlap(const CellRange& a, const CellRange& b)
{
    return a.first.row <= b.last.row && b.first.row <= a.last.row &&
           a.first.column <= b.last.column && b.first.column <= a.last.column;
}

TEST(Merges, SortsThemAndLeavesOverlapsOut)
{
    const auto look = ReadSheet("<mergeCells><mergeCell ref=\"D4:E5\"/><mergeCell ref=\"A1:B2\"/>"
                                "<mergeCell ref=\"B2:C3\"/><mergeCell ref=\"F6:F6\"/>"
                                "<mergeCell ref=\"A1:XFE1\"/><mergeCell ref=\"C1:C1048576\"/>"
                                "</mergeCells>");
    ASSERT_EQ(look.merges.size(), 3U);
    EXPECT_EQ(look.merges[0], (CellRange{{1, 1}, {2, 2}}));
    EXPECT_EQ(look.merges[1], (CellRange{{1, 3}, {1048576, 3}}));
    EXPECT_EQ(look.merges[2], (CellRange{{4, 4}, {5, 5}}));
    ASSERT_EQ(look.leftOut.size(), 2U);
    EXPECT_EQ(look.leftOut[0].where, "A1:XFE1");
    EXPECT_EQ(look.leftOut[1], (book::LeftOut{"merged cells", "B2:C3", "they overlap others"}));
}

TEST(Merges, KeepsExactlyThoseThatOverlapNoEarlierOne)
{
    std::mt19937 random(1);
    const auto upTo = [&](int most) {
        return std::uniform_int_distribution<std::int32_t>(1, most)(random);
    };
    for (int round = 0; round < 300; ++round) {
        std::vector<CellRange> ranges;
        for (int i = 0; i < 20; ++i) {
            const book::CellAddress first{upTo(12), upTo(12)};
            ranges.push_back({first, {first.row + upTo(4) - 1, first.column + upTo(4) - 1}});
        }
        std::vector<CellRange> sorted = ranges;
        std::stable_sort(sorted.begin(), sorted.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        std::vector<CellRange> expected;
        for (const CellRange& range : sorted) {
            bool isFree = true;
            for (const CellRange& kept : expected)
                isFree = isFree && !Overlap(kept, range);
            if (isFree)
                expected.push_back(range);
        }
        RemoveOverlaps(ranges);
        ASSERT_EQ(ranges, expected) << "round " << round;
    }
}

TEST(Merges, TakesTensOfThousandsOfThem)
{
    std::vector<CellRange> ranges;
    for (std::int32_t row = 1; row <= 100000; ++row)
        ranges.push_back({{row, 1}, {1048576, 16384}});
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(RemoveOverlaps(ranges).size(), 99999U);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

} // namespace
} // namespace orrery::xlsx
